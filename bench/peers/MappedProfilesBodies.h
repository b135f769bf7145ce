#pragma once

#include "peers/MappedProfiles.h"

namespace Bench {

template <class Map>
MappedProfiles<Map>::~MappedProfiles() {
  if (owning_) {
    for (const auto& [key, entity] : map_) {
      delete entity;
    }
  }
}

template <class Map>
void MappedProfiles<Map>::insert(Entity& entity) {
  map_.emplace(entity.key(), &entity);
}

template <class Map>
void MappedProfiles<Map>::insertNew(const Key& key) {
  owning_ = true;
  insert(*new Entity(key));
}

template <class Map>
void MappedProfiles<Map>::erase(const Key& key) {
  map_.erase(key);
}

template <class Map>
auto MappedProfiles<Map>::member(const Key& key) const -> const Entity* {
  return find(key);
}

} // namespace Bench
