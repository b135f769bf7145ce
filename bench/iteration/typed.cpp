#include "iteration/Collections.h"

namespace {

template <class Map>
unsigned steps(const Map& map) {
  unsigned met = 0;
  for (typename Map::IteratorConst at(map); at; at.advance()) {
    ++met;
  }
  return met;
}

} // namespace

void Bench::registerAll() {
  walkOperation("step groups", [] { return steps(groups().groupMap()); });
  walkOperation("step profiles", [] { return steps(profiles().configMap()); });
  walkOperation("member groups", [] {
    unsigned met = 0;
    using Map = Maintenance::Unit::Status::GroupMap;
    for (Map::IteratorConst at(groups().groupMap()); at; at.advance()) {
      const Group::GroupKey key = at->zelKey();
      met += key.type() == Group::groupTypeBgp && at->zelValue();
    }
    return met;
  });
  walkOperation("member profiles", [] {
    unsigned met = 0;
    using Map = Maintenance::Profile::ConfigDir::ConfigMap;
    for (Map::IteratorConst at(profiles().configMap()); at; at.advance()) {
      const Maintenance::Profile::ProfileKey key = at->zelKey();
      const Zel::Ptr<const Maintenance::Profile::Config> member = at.ptr();
      met += key.type() == Maintenance::Profile::profileTypeBgp && member->name().empty();
    }
    return met;
  });
}
