#pragma once

#include "hashed/Profiles.h"

namespace Bench {

/// Subject over an instance of `MappedProfiles`.
template <class Profiles>
class MappedSubject : public Profiles {
public:
  using Entity = typename Profiles::Entity;
  using Holder = std::unique_ptr<Entity>;

  static const auto& pool(std::size_t size) { return profilePool(size); }
  static Holder make(const Maintenance::Profile::ProfileKey& key) {
    return std::make_unique<Entity>(key);
  }
  static bool mark(const Entity& entity) { return profileMark(entity.key()); }

  void insert(const Holder& holder) { Profiles::insert(*holder); }
  std::size_t sum() const {
    std::size_t all = 0;
    for (const auto& [key, entity] : *this) {
      all += mark(*entity);
    }
    return all;
  }
};

} // namespace Bench
