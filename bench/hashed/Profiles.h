#pragma once

#include "Keyed.h"

#include <model/Profile/ProfileKey.h>

#include <cstdio>

namespace Bench {

/// A key with a name of 20 bytes; those that are not there differ in one byte near the end.
inline Maintenance::Profile::ProfileKey profileKey(std::size_t number, bool there) {
  char name[32];
  std::snprintf(name, sizeof name, "profile-%07zu-%c%03zu", number, there ? 'p' : 'q', number % 8);
  return {static_cast<Maintenance::Profile::ProfileType>(number % 4), name};
}

inline const KeyPool<Maintenance::Profile::ProfileKey>& profilePool(std::size_t size) {
  return keyPool<Maintenance::Profile::ProfileKey>(size, profileKey);
}

/// Reads the key of an entity: true for each.
inline bool profileMark(const Maintenance::Profile::ProfileKey& key) {
  return key.type() <= Maintenance::Profile::profileTypeUnit;
}

/// The operations of a collection of profiles, and those of a directory of them: `Directory` offers
/// `pool`, `insertNew` and `mark` as `Map` does, and `member(key)`, a look-up that stands in a
/// shared library.
template <class Map, class Directory = Map>
void profileOperations() {
  for (const std::size_t size : {std::size_t{100}, std::size_t{10'000}, std::size_t{1'000'000}}) {
    KeyedOperations<Map>::add(size);
    operation(sized("member hit", size), [=](benchmark::State& state) {
      KeyedOperations<Directory>::hits(state, size, [](const auto& directory, const auto& key) {
        return Directory::mark(*directory.member(key));
      });
    });
    operation(sized("member miss", size), [=](benchmark::State& state) {
      KeyedOperations<Directory>::misses(state, size, [](const auto& directory, const auto& key) {
        return directory.member(key) == nullptr;
      });
    });
  }
}

} // namespace Bench
