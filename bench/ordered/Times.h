#pragma once

#include "Keyed.h"

#include <Zel/String>

namespace Bench {

/// Times in seconds; those that are not there lie half-way between two that are.
inline double timeKey(std::size_t number, bool there) {
  return 1.75e9 + static_cast<double>(number) + (there ? 0.0 : 0.5);
}

inline const KeyPool<double>& timePool(std::size_t size) { return keyPool<double>(size, timeKey); }

/// Reads the key of an entity: true for each.
inline bool timeMark(double time) { return time >= 1.75e9; }

/// The text under every time.
inline const Zel::String8& line() {
  static const Zel::String8 text("entered maintenance");
  return text;
}

/// The operations of a collection by time, and those of an entity that has one: `Owner` offers
/// `pool` and `insertNew` as `Tree` does, and `text(time)`, which stands in a shared library and
/// yields the text under a time, empty if it is not there.
template <class Tree, class Owner = Tree>
void timeOperations() {
  for (const std::size_t size : {std::size_t{100}, std::size_t{10'000}, std::size_t{1'000'000}}) {
    KeyedOperations<Tree>::add(size);
    operation(sized("text hit", size), [=](benchmark::State& state) {
      KeyedOperations<Owner>::hits(
          state, size, [](const auto& owner, double time) { return !owner.text(time).empty(); });
    });
    operation(sized("text miss", size), [=](benchmark::State& state) {
      KeyedOperations<Owner>::misses(
          state, size, [](const auto& owner, double time) { return owner.text(time).empty(); });
    });
  }
}

} // namespace Bench
