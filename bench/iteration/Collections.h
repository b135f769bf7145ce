#pragma once

#include "Bench.h"

#include <model/Profile.h>
#include <model/Unit.h>

#include <cstdio>

/// The collections that both sides walk: plain values and members that are entities. They are made
/// once in a process.
namespace Bench {

constexpr unsigned memberCount = 10'000;

inline Zel::String8 memberName(unsigned number) {
  char name[32];
  std::snprintf(name, sizeof name, "profile-%07u-p%03u", number, number % 8);
  return name;
}

inline Maintenance::Unit::Status& groups() {
  static const auto status = [] {
    const auto made = Maintenance::Unit::statusFactory("unit");
    for (unsigned i = 0; i < memberCount; ++i) {
      made->groupIs({Group::groupTypeBgp, memberName(i)}, true);
    }
    return made;
  }();
  return *status;
}

inline Maintenance::Profile::ConfigDir& profiles() {
  static const auto directory = [] {
    const auto made = Maintenance::Profile::configDirFactory("profiles");
    for (unsigned i = 0; i < memberCount; ++i) {
      made->newConfig({Maintenance::Profile::profileTypeBgp, memberName(i)});
    }
    return made;
  }();
  return *directory;
}

/// Times one step of `walk`, which goes over the whole collection and yields the number of members
/// that it met.
template <class Walk>
void walkOperation(const std::string& name, Walk walk) {
  operation(name, [=](benchmark::State& state) {
    for (auto _ : state) {
      unsigned met = walk();
      benchmark::DoNotOptimize(met);
      if (met != memberCount) {
        state.SkipWithError("not all members were met");
        break;
      }
    }
    state.SetItemsProcessed(state.iterations() * memberCount);
  });
}

} // namespace Bench
