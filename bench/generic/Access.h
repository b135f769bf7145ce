#pragma once

#include "Bench.h"

#include <cstdint>

namespace Bench {

/// What it costs to read and write one attribute of an object whose type is not known at compile
/// time. `Subject` has an object with a number, an attribute that is known by its id, is made with
/// a number of listeners, each of which counts its calls, and offers
/// - `read()`, which reads the attribute and takes the number out of what it got;
/// - `write(second)`, which writes one of two values made in advance, the second being greater by
///   one;
/// - `heard()`, the calls that all listeners have counted.
template <class Subject>
void readAttribute(benchmark::State& state) {
  Subject subject(0);
  subject.write(true);
  std::uint64_t sum = subject.read();
  subject.write(false);
  const std::uint64_t first = subject.read();
  if (sum != first + 1) {
    state.SkipWithError("nothing was written");
  }
  sum = 0;
  for (auto _ : state) {
    sum += subject.read();
    benchmark::ClobberMemory();
  }
  if (sum != static_cast<std::uint64_t>(state.iterations()) * first) {
    state.SkipWithError("a wrong value was read");
  }
  state.SetItemsProcessed(state.iterations());
}

template <class Subject>
void writeAttribute(benchmark::State& state, unsigned listeners) {
  Subject subject(listeners);
  bool second = false;
  subject.write(second);
  const std::uint64_t before = subject.heard();
  for (auto _ : state) {
    second = !second;
    subject.write(second);
    benchmark::ClobberMemory();
  }
  if (subject.heard() - before != static_cast<std::uint64_t>(state.iterations()) * listeners) {
    state.SkipWithError("a listener missed a change");
  }
  state.SetItemsProcessed(state.iterations());
}

/// Looks a name up with `look`, which yields the number of the attribute.
template <class Look>
void lookUpAttribute(benchmark::State& state, Look look) {
  const auto expected = look();
  for (auto _ : state) {
    auto found = look();
    benchmark::DoNotOptimize(found);
    benchmark::ClobberMemory();
    if (found != expected) {
      state.SkipWithError("a wrong attribute was found");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations());
}

} // namespace Bench
