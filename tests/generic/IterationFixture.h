#pragma once

#include "GenericFixture.h"

#include <vector>

namespace TestGeneric {

inline constexpr Zel::AttributeId group = Maintenance::Unit::Status::Attr::group;
inline constexpr Zel::AttributeId history = Maintenance::Unit::Status::Attr::history;
inline constexpr Zel::AttributeId interfaces =
    Maintenance::Unit::Status::Attr::intfsViolatingTrafficThreshold;

inline Group::GroupKey groupKey(int number) {
  return Group::GroupKey(Group::groupTypeBgp, Zel::String8(std::to_string(number)));
}

template <class Key>
std::vector<Key> keysFrom(GenericIf::AttributeIteratorConst at) {
  std::vector<Key> keys;
  for (; at; ++at) {
    keys.push_back(Zel::value<Key>(at.key()));
  }
  return keys;
}

class Iteration : public testing::Test {
protected:
  const Ptr<Maintenance::Unit::Status> unit = Maintenance::Unit::statusFactory("System");
  const Handle object = Zel::generic(unit);
  const Handle constant = Zel::generic(unit, true);

  void groupsIs(int count) {
    for (int number = 0; number < count; ++number) {
      unit->groupIs(groupKey(number), number % 2 == 0);
    }
  }

  /// The order of the typed iterator.
  std::vector<Group::GroupKey> groups() const {
    std::vector<Group::GroupKey> keys;
    for (Maintenance::Unit::Status::GroupMap::IteratorConst at(unit->groupMap()); at;
         at.advance()) {
      keys.push_back(at->zelKey());
    }
    return keys;
  }
};

} // namespace TestGeneric
