// Counts the allocations of the operations that are to make none: prints a line for each, with the
// name, a tab and the number of calls in a thousand operations.

#include "Allocations.h"

#include <model/Profile.h>
#include <model/Unit.h>

#include <iostream>
#include <vector>

namespace {

using namespace Maintenance;

struct Recorder : Unit::Status::Notifiee {
  void onState() override { ++heard; }
  unsigned heard = 0;
};

template <class Work>
void count(const char* name, Work&& work) {
  work(0U); // what is made once, at the first use
  const std::size_t before = Bench::Allocations::calls;
  for (unsigned i = 1; i <= 1000; ++i) {
    work(i);
  }
  std::cout << name << '\t' << Bench::Allocations::calls - before << '\n';
}

} // namespace

int main() {
  const auto unit = Unit::statusFactory("unit");
  const auto setState = [&](unsigned i) {
    unit->stateIs(i % 2 == 0 ? Unit::active : Unit::underMaintenance);
  };
  count("handle copy", [&](unsigned) { const Zel::Ptr<Unit::Status> copy = unit; });
  const Zel::String8 text = "entered maintenance";
  count("string copy", [&](unsigned) { const Zel::String8 copy = text; });
  count("mutator, equal value", [&](unsigned) { unit->stateIs(Unit::init); });
  count("mutator, changed, no notifiee", setState);
  std::vector<Zel::Ptr<Recorder>> recorders;
  for (int i = 0; i < 8; ++i) {
    recorders.push_back(Zel::makeObject<Recorder>());
    recorders.back()->isRegisteredNotifieeIs(true);
    recorders.back()->notifierIs(unit);
    if (i == 0) {
      count("mutator, changed, 1 notifiee", setState);
    }
  }
  count("mutator, changed, 8 notifiees", setState);

  const auto profiles = Profile::configDirFactory("profiles");
  std::vector<Profile::ProfileKey> keys;
  for (unsigned i = 0; i <= 1000; ++i) {
    const std::string name = "profile-" + std::to_string(i);
    keys.emplace_back(Profile::profileTypeBgp, Zel::String8(name));
    if (i % 2 == 0) {
      profiles->configIs(keys.back());
    }
    unit->historyIs(i, "line");
  }
  count("look-up, config(key)", [&](unsigned i) { profiles->config(keys[i]); });
  count("look-up, configMap()[key]", [&](unsigned i) { (void)profiles->configMap()[keys[i]]; });
  count("look-up, history(time)", [&](unsigned i) { unit->history(i); });
  Profile::ConfigDir::ConfigMap::IteratorConst profile(profiles->configMap());
  count("iteration, profiles", [&](unsigned) {
    profile.advance();
    if (!profile) {
      profile = Profile::ConfigDir::ConfigMap::IteratorConst(profiles->configMap());
    }
  });
  Unit::Status::HistoryMap::IteratorConst line(unit->historyMap());
  count("iteration, history", [&](unsigned) { line.advance(); });
  return recorders.back()->heard == 1000 ? 0 : 1; // that the callbacks were there to count
}
