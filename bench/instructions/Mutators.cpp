#include "Operation.h"

#include <model/Mapping/MemberToGroup.h>
#include <model/Unit/StatusDir.h>

#include <string>
#include <vector>

namespace Instructions {

namespace {

using namespace Maintenance;
using Unit::Status;
using Unit::StatusDir;
using Zel::Name;
using Zel::Ptr;
using Zel::String8;

/// A number with a prefix, so that the texts of two numbers differ.
template <class Text>
std::vector<Text> textsOf(const char* prefix) {
  std::vector<Text> texts;
  for (unsigned i = 0; i != 2 * times; ++i) {
    texts.emplace_back(prefix + std::to_string(1000 + i));
  }
  return texts;
}

std::vector<Group::GroupKey> groups() {
  std::vector<Group::GroupKey> keys;
  for (const String8& name : textsOf<String8>("group")) {
    keys.emplace_back(Group::groupTypeBgp, name);
  }
  return keys;
}

struct Listener : Status::Notifiee {
  void onProfileName() override { ++heard; }
  void onState() override { ++heard; }
  void onTimeOfStateChange() override { ++heard; }
  void onAggTrafficRate() override { ++heard; }
  void onGenId() override { ++heard; }
  using Status::Notifiee::onGroup;
  void onGroup(const Group::GroupKey& /*key*/) override { ++heard; }
  using Status::Notifiee::onHistory;
  void onHistory(const double& /*time*/) override { ++heard; }
  unsigned heard = 0;
};

struct DirListener : StatusDir::Notifiee {
  using StatusDir::Notifiee::onStatus;
  void onStatus(Name /*unit*/) override { ++heard; }
  unsigned heard = 0;
};

struct MapListener : MemberToGroup::Notifiee {
  using MemberToGroup::Notifiee::onSelectedProfile;
  void onSelectedProfile(Profile::ProfileType /*type*/) override { ++heard; }
  unsigned heard = 0;
};

/// An object and those who hear of it.
template <class T, class L>
struct Heard {
  Heard(Ptr<T> heardOf, unsigned count) : object(std::move(heardOf)) {
    for (unsigned i = 0; i != count; ++i) {
      listeners.push_back(Zel::makeObject<L>());
      listeners.back()->isRegisteredNotifieeIs(true);
      listeners.back()->notifierIs(object);
    }
  }
  const Ptr<T> object;
  std::vector<Ptr<L>> listeners;
};

/// Counts a mutator with each number of notifiees, each of which is to hear of every change.
template <class L, class Make, class Change>
void mutator(const std::string& what, const Make& make, const Change& change,
             unsigned callbacks = 1) {
  for (const unsigned count : {0U, 1U, 8U}) {
    const Heard<std::remove_reference_t<decltype(*make())>, L> heard(make(), count);
    auto& object = *heard.object;
    const std::string name = what + ", " + std::to_string(count) + " notifiees";
    operation(name.c_str(), [&](unsigned i) { change(object, i); });
    for (const auto& listener : heard.listeners) {
      expect(listener->heard == callbacks * 2 * times, name.c_str());
    }
  }
}

} // namespace

void mutators() {
  const auto unit = [] { return Unit::statusFactory("unit"); };
  const auto ofUnit = [&](const char* what, auto&& change, unsigned callbacks = 1) {
    mutator<Listener>(what, unit, change, callbacks);
  };
  const auto texts = textsOf<String8>("text");
  const auto keys = groups();
  ofUnit("number", [](Status& to, unsigned i) { to.genIdIs(i + 1); });
  ofUnit("enumeration", [](Status& to, unsigned i) {
    to.stateIs(i % 2 == 0 ? Unit::active : Unit::underMaintenance);
  });
  ofUnit(
      "equal enumeration", [](Status& to, unsigned /*i*/) { to.stateIs(Unit::init); }, 0);
  ofUnit("time", [](Status& to, unsigned i) { to.timeOfStateChangeIs(i + 0.5); });
  ofUnit("text", [&](Status& to, unsigned i) { to.profileNameIs(texts[i]); });
  ofUnit("value of several", [](Status& to, unsigned i) {
    Unit::TrafficRates rates;
    rates.inBitsRateIs(i + 1);
    to.aggTrafficRateIs(rates);
  });
  ofUnit("counter", [](Status& to, unsigned /*i*/) { use(to.genIdInc(1)); });
  ofUnit("entry of a set made", [&](Status& to, unsigned i) { to.groupIs(keys[i], true); });
  ofUnit("entry of a set changed",
         [&](Status& to, unsigned i) { to.groupIs(keys[0], i % 2 == 0); });
  ofUnit(
      "entry of a set made and deleted",
      [&](Status& to, unsigned i) {
        to.groupIs(keys[i], true);
        to.groupDel(keys[i]);
      },
      2);
  ofUnit("line of history made", [&](Status& to, unsigned i) { to.historyIs(i, texts[i]); });
  ofUnit("line of history changed", [&](Status& to, unsigned i) { to.historyIs(1.0, texts[i]); });
  ofUnit(
      "line of history made and deleted",
      [&](Status& to, unsigned i) {
        to.historyIs(i, texts[i]);
        to.historyDel(i);
      },
      2);
  const Profile::ProfileKey profiles[] = {{Profile::profileTypeBgp, "one"},
                                          {Profile::profileTypeBgp, "other"}};
  mutator<MapListener>(
      "entry of a map changed", [] { return Zel::makeObject<MemberToGroup>("member"); },
      [&](MemberToGroup& to, unsigned i) {
        to.selectedProfileIs(Profile::profileTypeBgp, profiles[i % 2]);
      });
  const auto names = textsOf<Name>("unit");
  const auto dir = [] { return Unit::statusDirFactory("units"); };
  mutator<DirListener>("member made", dir,
                       [&](StatusDir& to, unsigned i) { to.statusIs(names[i]); });
  mutator<DirListener>(
      "member made and deleted", dir,
      [&](StatusDir& to, unsigned i) {
        to.statusIs(names[i]);
        to.statusDel(names[i]);
      },
      2);
}

void lookUps() {
  const auto dir = Unit::statusDirFactory("units");
  const auto unit = Unit::statusFactory("unit");
  const auto names = textsOf<Name>("unit");
  const auto others = textsOf<Name>("other");
  const auto keys = groups();
  for (unsigned i = 0; i != 2 * times; ++i) {
    dir->statusIs(names[i]);
    unit->groupIs(keys[i], true);
    unit->historyIs(i, "line");
  }
  operation("member looked up", [&](unsigned i) { use(dir->status(names[i])); });
  operation("member that is not there looked up", [&](unsigned i) { use(dir->status(others[i])); });
  operation("entry of a set looked up", [&](unsigned i) { use(unit->group(keys[i])); });
  operation("line of history looked up", [&](unsigned i) { use(unit->history(i)); });
  operation("number read", [&](unsigned /*i*/) { use(unit->genId()); });
  StatusDir::StatusMap::IteratorConst member(dir->statusMap());
  operation("step over members", [&](unsigned /*i*/) { member.advance(); });
  Status::GroupMap::IteratorConst entry(unit->groupMap());
  operation("step over a set", [&](unsigned /*i*/) { entry.advance(); });
  Status::HistoryMap::IteratorConst line(unit->historyMap());
  operation("step over history", [&](unsigned /*i*/) { line.advance(); });
  expect(!member && !entry && !line, "the steps have come to their ends");
}

} // namespace Instructions
