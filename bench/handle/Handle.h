#pragma once

#include "Bench.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <random>
#include <vector>

namespace Bench {

/// Copies one handle and drops the copy, always the same object. Several times in a row, so that
/// the figure does not hang on where the compiler has put a loop of a dozen instructions.
template <class Make>
void copyHot(benchmark::State& state, Make&& make) {
  constexpr int inARow = 16;
  const auto held = make();
  for (auto _ : state) {
#pragma GCC unroll 16
    for (int i = 0; i < inARow; ++i) {
      auto copy = held;
      benchmark::DoNotOptimize(copy);
      benchmark::ClobberMemory();
    }
  }
  state.SetItemsProcessed(state.iterations() * inARow);
}

/// Copies 1024 handles over 1024 others, whose objects lie scattered over memory: each step takes a
/// reference of one object and drops one of another. No step assigns what is there already.
template <class Make>
void copyScattered(benchmark::State& state, Make&& make) {
  constexpr std::size_t count = 1024;
  using Handle = decltype(make());
  std::mt19937_64 random(1024);
  std::vector<Handle> objects;
  std::vector<std::unique_ptr<char[]>> gaps;
  for (std::size_t i = 0; i < count; ++i) {
    objects.push_back(make());
    gaps.push_back(std::make_unique<char[]>(random() % 256));
  }
  std::shuffle(objects.begin(), objects.end(), random);
  std::vector<Handle> slots(objects.rbegin(), objects.rend());
  for (auto _ : state) {
    for (std::size_t i = 0; i < count; ++i) {
      slots[i] = objects[i];
    }
    benchmark::ClobberMemory();
    for (std::size_t i = 0; i < count; ++i) {
      slots[i] = objects[count - 1 - i];
    }
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(2 * count));
}

/// The two together, as `hot/SUFFIX` and `scattered/SUFFIX`; `around` makes a guard that stands
/// while one of them runs.
template <class Make, class Around>
void handleOperations(const std::string& suffix, Make make, Around around) {
  operation("hot/" + suffix, [=](benchmark::State& state) {
    [[maybe_unused]] const auto guard = around();
    copyHot(state, make);
  });
  operation("scattered/" + suffix, [=](benchmark::State& state) {
    [[maybe_unused]] const auto guard = around();
    copyScattered(state, make);
  });
}

} // namespace Bench
