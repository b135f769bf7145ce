#pragma once

#include "peers/ProfileEntity.h"

namespace Bench {

/// A map that stores keys and pointers: `Map` takes a `ProfileKey` to a `Entity*`. Each peer makes
/// one instance of it, in a library of its own.
template <class Map>
class MappedProfiles {
  using Key = Maintenance::Profile::ProfileKey;

public:
  using Entity = ProfileEntity<NoHook>;

  MappedProfiles() = default;
  /// Deletes the members if `insertNew` has made them, and lets go of them otherwise.
  ~MappedProfiles();
  MappedProfiles(const MappedProfiles&) = delete;
  MappedProfiles& operator=(const MappedProfiles&) = delete;

  void insert(Entity& entity);
  void insertNew(const Key& key);
  void erase(const Key& key);
  std::size_t count() const { return map_.size(); }

  /// The same look-up, outside the library and in it.
  const Entity* find(const Key& key) const {
    const auto at = map_.find(key);
    return at == map_.end() ? nullptr : at->second;
  }
  const Entity* member(const Key& key) const;

  auto begin() const { return map_.begin(); }
  auto end() const { return map_.end(); }

private:
  Map map_;
  bool owning_ = false;
};

struct ProfileHash {
  std::size_t operator()(const Maintenance::Profile::ProfileKey& key) const noexcept {
    return key.hash();
  }
};

} // namespace Bench
