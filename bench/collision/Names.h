#pragma once

#include "Keyed.h"

#include <model/Profile/ProfileKey.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace Bench {

/// Names of eight bytes that all have the same hash. The hash of a name is not keyed and each of
/// its steps can be undone: start from inner states that differ only in the bits that the result
/// leaves out, and go backwards.
class CollidingNames {
public:
  static Zel::String8 name(std::uint32_t number) {
    const std::uint64_t state =
        fold((resultBits | number) * inverse(finalizer)) * inverse(finalizer);
    const std::uint64_t word =
        fold(state) * inverse(multiplier) ^ fold((finalizer ^ 8) * multiplier);
    char bytes[sizeof word];
    for (unsigned i = 0; i < sizeof word; ++i) {
      bytes[i] = static_cast<char>(word >> 8 * i);
    }
    const Zel::String8 text(std::string_view(bytes, sizeof bytes));
    if (text.hash() != resultBits >> 32) {
      throw std::logic_error("the hash of strings has changed, and the collisions with it");
    }
    return text;
  }

private:
  static constexpr std::uint64_t multiplier = 0x9fb21c651e98df25;
  static constexpr std::uint64_t finalizer = 0xd6e8feb86659fd93;
  static constexpr std::uint64_t resultBits = std::uint64_t{0x12345678} << 32;

  /// Folds the upper half onto the lower; its own inverse.
  static constexpr std::uint64_t fold(std::uint64_t word) { return word ^ word >> 32; }

  /// The inverse of an odd number, modulo 2^64.
  static constexpr std::uint64_t inverse(std::uint64_t number) {
    std::uint64_t result = number;
    for (int step = 0; step < 6; ++step) {
      result *= 2 - number * result;
    }
    return result;
  }
};

/// What one operation costs among as many keys that all hash alike. `Directory` offers
/// `insertNew(key)`, `member(key)` and `erase(key)`, which stand in a shared library.
template <class Directory>
void collisionOperations() {
  using Maintenance::Profile::ProfileKey;
  const auto key = [](std::size_t number) {
    return ProfileKey(Maintenance::Profile::profileTypeBgp,
                      CollidingNames::name(static_cast<std::uint32_t>(number)));
  };
  for (const std::size_t size : {std::size_t{1'000}, std::size_t{10'000}, std::size_t{100'000}}) {
    const auto filled = [=]() -> Directory& {
      static auto* const all = new std::map<std::size_t, Directory*>;
      auto& directory = (*all)[size];
      if (directory == nullptr) {
        directory = new Directory;
        // In descending order, each key finds its place at the head of the chain.
        std::vector<ProfileKey> keys;
        for (std::size_t i = 0; i < size; ++i) {
          keys.push_back(key(i));
        }
        std::sort(keys.begin(), keys.end(), [](const auto& a, const auto& b) { return b < a; });
        for (const auto& each : keys) {
          directory->insertNew(each);
        }
      }
      return *directory;
    };
    const auto looks = [=](benchmark::State& state, std::size_t first, bool there) {
      auto& directory = filled();
      std::mt19937_64 random(size);
      std::vector<ProfileKey> probes;
      for (int i = 0; i < 256; ++i) {
        probes.push_back(key(first + random() % size));
      }
      std::size_t at = 0;
      for (auto _ : state) {
        if ((directory.member(probes[at++ % probes.size()]) != nullptr) != there) {
          state.SkipWithError("wrong result");
        }
      }
      state.SetItemsProcessed(state.iterations());
    };
    operation(sized("find hit", size), [=](benchmark::State& state) { looks(state, 0, true); });
    operation(sized("find miss", size),
              [=](benchmark::State& state) { looks(state, size, false); });
    operation(sized("insert and erase", size), [=](benchmark::State& state) {
      auto& directory = filled();
      std::mt19937_64 random(size);
      for (auto _ : state) {
        state.PauseTiming();
        const ProfileKey fresh = key(size + random() % size);
        state.ResumeTiming();
        directory.insertNew(fresh);
        directory.erase(fresh);
      }
      state.SetItemsProcessed(state.iterations());
    });
  }
}

} // namespace Bench
