// Trees that may not be written: each mutator throws before anything has changed.

#include "support/Failure.h"

#include <generic/Client.h>
#include <model/MaintenanceAgentInfo.h>
#include <model/Mapping.h>
#include <model/Unit.h>

#include <gmock/gmock.h>

#include <functional>
#include <limits>

namespace {

using namespace Maintenance::Unit;
using Group::GroupKey;
using Support::messageOf;
using testing::ElementsAre;
using testing::IsEmpty;
using Zel::Ptr;
using Zel::ReadOnlyException;
using Zel::String8;

/// The text of a refusal.
template <class Work>
std::string refusal(Work&& work) {
  return messageOf<ReadOnlyException>(std::forward<Work>(work));
}

struct UnitEar : Status::Notifiee {
  void onState() override { hear("state"); }
  void onProfileName() override { hear("profileName"); }
  void onAggTrafficRate() override { hear("aggTrafficRate"); }
  void onTimeOfStateChange() override { hear("timeOfStateChange"); }
  void onGenId() override { hear("genId"); }
  void onGroup(const GroupKey& key) override { hear("group " + key.name()); }
  void onHistory(const double& time) override {
    hear("history " + String8(time == time ? std::to_string(static_cast<int>(time)) : "nan"));
  }
  void hear(const String8& what) {
    heard.push_back(what.charPtr());
    if (const auto call = onCall) {
      call();
    }
  }
  std::vector<std::string> heard;
  std::function<void()> onCall;
};

struct DirEar : StatusDir::Notifiee {
  void onStatus(Zel::Name name) override {
    heard.push_back(name.charPtr());
    if (const auto call = onCall) {
      call();
    }
  }
  std::vector<std::string> heard;
  std::function<void()> onCall;
};

template <class Ear, class Owner>
Ptr<Ear> listen(const Ptr<Owner>& owner) {
  const auto ear = Zel::makeObject<Ear>();
  ear->isRegisteredNotifieeIs(true);
  ear->notifierIs(owner);
  return ear;
}

/// A directory with a unit that has something of each kind, made as a mirror is: mirrored before
/// it has members. All of it is frozen then.
struct FrozenTrees : testing::Test {
  FrozenTrees() {
    dir->zelFrozenIs(true);
    dir->zelFrozenIs(false);
    unit = dir->statusIs("System");
    unit->stateIs(active);
    unit->profileNameIs("fast");
    unit->timeOfStateChangeIs(1.5);
    unit->genIdIs(3);
    unit->groupIs(peers, true);
    unit->groupIs(ports, true);
    unit->historyIs(1.0, "one");
    unit->historyIs(2.0, "two");
    dir->zelFrozenIs(true);
    ear = listen<UnitEar>(unit);
    dirEar = listen<DirEar>(dir);
    version = unit->versionCounter();
    dirVersion = dir->versionCounter();
    reads = unit->readCounter();
  }

  /// Nothing was counted and nobody told, of the unit and its directory.
  void expectUntouched() const {
    EXPECT_EQ(unit->readCounter(), reads);
    EXPECT_EQ(unit->versionCounter(), version);
    EXPECT_EQ(dir->versionCounter(), dirVersion);
    EXPECT_THAT(ear->heard, IsEmpty());
    EXPECT_THAT(dirEar->heard, IsEmpty());
    EXPECT_EQ(unit->groupMap().count(), 2U);
    EXPECT_EQ(unit->historyMap().count(), 2U);
    EXPECT_EQ(dir->statusMap().count(), 1U);
    EXPECT_EQ(unit->parent(), dir);
  }

  const GroupKey peers{Group::groupTypeBgp, "peers"};
  const GroupKey ports{Group::groupTypeInterface, "ports"};
  const GroupKey more{Group::groupTypeBgp, "more"};
  const Ptr<StatusDir> dir = statusDirFactory("units");
  Ptr<Status> unit;
  Ptr<UnitEar> ear;
  Ptr<DirEar> dirEar;
  unsigned version = 0;
  unsigned dirVersion = 0;
  unsigned reads = 0;
};

TEST_F(FrozenTrees, RefuseValuesOfAllKinds) {
  TrafficRates rates;
  rates.inBitsRateIs(1);
  EXPECT_EQ(refusal([&] { unit->stateIs(failedExit); }),
            "read-only attribute: state of units/System");
  EXPECT_EQ(refusal([&] { unit->profileNameIs("slow"); }),
            "read-only attribute: profileName of units/System");
  EXPECT_EQ(refusal([&] { unit->timeOfStateChangeIs(std::numeric_limits<double>::quiet_NaN()); }),
            "read-only attribute: timeOfStateChange of units/System");
  EXPECT_EQ(refusal([&] { unit->aggTrafficRateIs(rates); }),
            "read-only attribute: aggTrafficRate of units/System");
  EXPECT_EQ(refusal([&] { unit->genIdIs(4); }), "read-only attribute: genId of units/System");
  expectUntouched();
  EXPECT_EQ(unit->state(), active);
  EXPECT_EQ(unit->profileName(), "fast");
  EXPECT_EQ(unit->timeOfStateChange(), 1.5);
  EXPECT_EQ(unit->aggTrafficRate(), TrafficRates());
  EXPECT_EQ(unit->genId(), 3U);
}

TEST_F(FrozenTrees, RefuseAnIncrementBeforeItCountsARead) {
  EXPECT_EQ(refusal([&] { unit->genIdInc(2); }), "read-only attribute: genId of units/System");
  expectUntouched();
  EXPECT_EQ(unit->genId(), 3U);
}

TEST_F(FrozenTrees, TakeAnIncrementByNothing) {
  EXPECT_EQ(unit->genIdInc(0), 3U);
  EXPECT_EQ(unit->readCounter(), reads + 1);
  EXPECT_THAT(ear->heard, IsEmpty());
}

TEST_F(FrozenTrees, TakeEqualValuesInSilence) {
  unit->stateIs(active);
  unit->profileNameIs("fast");
  unit->genIdIs(3);
  unit->groupIs(peers, true);
  unit->historyIs(1.0, "one");
  expectUntouched();
}

TEST_F(FrozenTrees, RefuseEntriesThatAreNewOrOther) {
  EXPECT_EQ(refusal([&] { unit->groupIs(more, true); }),
            "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { unit->groupIs(peers, false); }),
            "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { unit->historyIs(3.0, "three"); }),
            "read-only attribute: history of units/System");
  EXPECT_EQ(refusal([&] { unit->historyIs(1.0, "uno"); }),
            "read-only attribute: history of units/System");
  expectUntouched();
  EXPECT_TRUE(unit->group(peers));
  EXPECT_EQ(unit->history(1.0), "one");
}

TEST_F(FrozenTrees, RefuseEntriesThatAreMadeDirectly) {
  const unsigned groups = unit->groupMap().mapVersion();
  const unsigned lines = unit->historyMap().treeVersion();
  EXPECT_EQ(refusal([&] { unit->newGroup(more, true); }),
            "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { unit->newGroup(peers, true); }),
            "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { unit->newHistory(3.0, "three"); }),
            "read-only attribute: history of units/System");
  EXPECT_EQ(refusal([&] { unit->newHistory(1.0, "one"); }), // would replace the entry
            "read-only attribute: history of units/System");
  EXPECT_EQ(unit->groupMap().mapVersion(), groups);
  EXPECT_EQ(unit->historyMap().treeVersion(), lines);
  expectUntouched();
}

TEST_F(FrozenTrees, RefuseTheDeletionOfAKey) {
  EXPECT_EQ(refusal([&] { unit->groupDel(peers); }), "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { unit->historyDel(2.0); }),
            "read-only attribute: history of units/System");
  expectUntouched();
  EXPECT_TRUE(unit->group(peers));
  EXPECT_EQ(unit->history(2.0), "two");
}

TEST_F(FrozenTrees, DeleteWhatIsNotThereInSilence) {
  EXPECT_FALSE(unit->groupDel(more));
  EXPECT_EQ(unit->historyDel(3.0), "");
  EXPECT_EQ(dir->statusDel("nobody"), nullptr);
  expectUntouched();
}

TEST_F(FrozenTrees, RefuseTheDeletionUnderAnIterator) {
  Status::GroupMap::Iterator group(unit->groupMap());
  const GroupKey first = group->zelKey();
  EXPECT_EQ(refusal([&] { unit->groupDel(group); }), "read-only attribute: group of units/System");
  Status::HistoryMap::Iterator line(unit->historyMap());
  EXPECT_EQ(refusal([&] { unit->historyDel(line); }),
            "read-only attribute: history of units/System");
  StatusDir::StatusMap::Iterator member(dir->statusMap());
  EXPECT_EQ(refusal([&] { dir->statusDel(member); }), "read-only attribute: status of units");
  expectUntouched();
  EXPECT_EQ(group->zelKey(), first);
  EXPECT_EQ(line->zelKey(), 1.0);
}

TEST_F(FrozenTrees, DeleteInSilenceUnderAnIteratorWhatHasLeft) {
  dir->zelFrozenIs(false);
  Status::GroupMap::Iterator group(unit->groupMap());
  Status::HistoryMap::Iterator line(unit->historyMap());
  StatusDir::StatusMap::Iterator member(dir->statusMap());
  unit->groupDel(GroupKey(group->zelKey()));
  unit->historyDel(1.0);
  dir->statusDel("System");
  ear->heard.clear();
  dirEar->heard.clear();
  unit->zelFrozenIs(true); // which is a root now
  dir->zelFrozenIs(true);
  EXPECT_FALSE(unit->groupDel(group));
  EXPECT_EQ(unit->historyDel(line), "");
  EXPECT_EQ(dir->statusDel(member), nullptr);
  EXPECT_THAT(ear->heard, IsEmpty());
  EXPECT_THAT(dirEar->heard, IsEmpty());
}

TEST_F(FrozenTrees, RefuseTheDeletionOfAllAtTheFirst) {
  EXPECT_EQ(refusal([&] { unit->groupDelAll(); }), "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { unit->historyDelAll(); }),
            "read-only attribute: history of units/System");
  EXPECT_EQ(refusal([&] { dir->statusDelAll(); }), "read-only attribute: status of units");
  expectUntouched();
}

TEST_F(FrozenTrees, RefuseAKeyThatEqualsNothing) {
  dir->zelFrozenIs(false);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  unit->historyIs(nan, "never");
  dir->zelFrozenIs(true);
  EXPECT_EQ(unit->historyDel(nan), ""); // which no search finds
  EXPECT_EQ(refusal([&] { unit->historyIs(nan, "never"); }),
            "read-only attribute: history of units/System");
  EXPECT_EQ(refusal([&] { unit->historyDelAll(); }),
            "read-only attribute: history of units/System");
  EXPECT_EQ(unit->historyMap().count(), 3U);
}

TEST_F(FrozenTrees, RefuseANewMemberAndYieldTheOneThatIsThere) {
  EXPECT_EQ(refusal([&] { dir->statusIs("other"); }), "read-only attribute: status of units");
  EXPECT_EQ(refusal([&] { dir->newStatus("other"); }), "read-only attribute: status of units");
  EXPECT_EQ(refusal([&] { dir->newStatus("System"); }), "read-only attribute: status of units");
  EXPECT_EQ(refusal([&] { dir->statusDel("System"); }), "read-only attribute: status of units");
  expectUntouched();
  EXPECT_EQ(Ptr<Status>(dir->statusIs("System")), unit);
  EXPECT_EQ(dir->versionCounter(), dirVersion + 1); // as ever
  EXPECT_THAT(dirEar->heard, IsEmpty());
}

TEST_F(FrozenTrees, RefuseWhatAMemberThatIsThereWouldBeMadeWith) {
  const Ptr<MergedInputDir> inputs = mergedInputDirFactory("inputs");
  inputs->zelFrozenIs(true);
  inputs->zelFrozenIs(false);
  const Ptr<MergedInput> input = inputs->unitIs("System", srcCli);
  inputs->zelFrozenIs(true);
  const unsigned before = inputs->versionCounter();
  EXPECT_EQ(refusal([&] { inputs->unitIs("System", srcOnBoot); }),
            "read-only attribute: priority of inputs/System");
  EXPECT_EQ(input->priority(), srcCli);
  EXPECT_EQ(inputs->versionCounter(), before);
  EXPECT_EQ(Ptr<MergedInput>(inputs->unitIs("System", srcCli)), input);
}

TEST_F(FrozenTrees, RefuseValuesThatBringTheirKey) {
  const auto agent = Maintenance::agentInfoFactory("agent");
  agent->onBootMaintEnterIs({"System", srcCli});
  agent->zelFrozenIs(true);
  const unsigned before = agent->versionCounter();
  const std::string message = "read-only attribute: onBootMaintEnter of agent";
  EXPECT_EQ(refusal([&] { agent->onBootMaintEnterIs({"System", srcOnBoot}); }), message);
  EXPECT_EQ(refusal([&] { agent->onBootMaintEnterIs({"Linecard3", srcCli}); }), message);
  EXPECT_EQ(refusal([&] { agent->newOnBootMaintEnter({"Linecard3", srcCli}); }), message);
  EXPECT_EQ(refusal([&] { agent->onBootMaintEnterDel("System"); }), message);
  agent->onBootMaintEnterIs({"System", srcCli});
  EXPECT_EQ(agent->versionCounter(), before);
  EXPECT_EQ(agent->onBootMaintEnterMap().count(), 1U);
  EXPECT_EQ(agent->onBootMaintEnter("System").reason(), srcCli);
}

TEST_F(FrozenTrees, RefuseVirtualMutators) {
  const auto member = Zel::makeObject<Maintenance::MemberToGroup>("member");
  member->groupIs(peers, true);
  member->zelFrozenIs(true);
  EXPECT_EQ(refusal([&] { member->groupIs(more, true); }), "read-only attribute: group of member");
  EXPECT_EQ(refusal([&] { member->groupDel(peers); }), "read-only attribute: group of member");
  EXPECT_EQ(refusal([&] { member->partOfDynamicUnitIs(true); }),
            "read-only attribute: partOfDynamicUnit of member");
  EXPECT_EQ(member->groupMap().count(), 1U);
  EXPECT_FALSE(member->partOfDynamicUnit());
}

TEST_F(FrozenTrees, RefuseTheGenericInterfaceAsTheyDoTheTyped) {
  const auto generic = Zel::generic(unit);
  EXPECT_EQ(refusal([&] {
              Zel::writeText(generic, generic->attributeId("state"), "'underMaintenance'");
            }),
            "read-only attribute: state of units/System");
  EXPECT_EQ(unit->versionCounter(), version);
  EXPECT_THAT(ear->heard, IsEmpty());
  EXPECT_EQ(unit->state(), active);
}

TEST_F(FrozenTrees, AreAnnouncedAsEver) {
  unit->groupNotify(peers);
  EXPECT_THAT(ear->heard, ElementsAre("group peers"));
}

TEST_F(FrozenTrees, ThawByOneWriteWhateverTheirSize) {
  dir->zelFrozenIs(false);
  for (int i = 0; i < 100; ++i) {
    dir->statusIs(Zel::Name(std::to_string(i)))->stateIs(active);
  }
  dir->zelFrozenIs(true);
  for (int i = 0; i < 100; ++i) {
    const Ptr<Status> member = dir->status(Zel::Name(std::to_string(i)));
    EXPECT_TRUE(member->zelIsMirrored());
    EXPECT_FALSE(member->zelIsFrozen());
    EXPECT_EQ(refusal([&] { member->stateIs(failedExit); }),
              "read-only attribute: state of units/" + std::to_string(i));
  }
  const unsigned before = dir->versionCounter();
  dir->zelFrozenIs(false);
  EXPECT_EQ(dir->versionCounter(), before);
  for (int i = 0; i < 100; ++i) {
    dir->status(Zel::Name(std::to_string(i)))->stateIs(failedExit);
  }
  EXPECT_EQ(dir->status("99")->state(), failedExit);
}

TEST_F(FrozenTrees, ThawedAreMirroredStill) {
  EXPECT_TRUE(dir->zelIsMirrored());
  EXPECT_TRUE(dir->zelIsFrozen());
  dir->zelFrozenIs(false);
  EXPECT_TRUE(dir->zelIsMirrored());
  EXPECT_FALSE(dir->zelIsFrozen());
  const auto other = statusDirFactory("others");
  EXPECT_FALSE(other->zelIsMirrored());
  EXPECT_FALSE(other->zelIsFrozen());
  EXPECT_FALSE(other->statusIs("System")->zelIsMirrored());
  other->zelFrozenIs(false);
  EXPECT_FALSE(other->zelIsMirrored());
}

TEST_F(FrozenTrees, SetWhatLeavesThemFree) {
  dir->zelFrozenIs(false);
  dir->statusDel("System");
  dir->zelFrozenIs(true);
  unit->stateIs(failedExit);
  unit->groupDel(peers);
  EXPECT_EQ(unit->state(), failedExit);
  EXPECT_THAT(ear->heard, ElementsAre("state", "group peers"));
}

/// A directory of directories.
struct Shelf : Zel::Entity {
  explicit Shelf(Zel::Name name) : Entity(std::move(name)) {}
};

TEST_F(FrozenTrees, AreWhatTheirRootSays) {
  const auto shelf = Zel::makeObject<Shelf>("shelf");
  dir->parentIs(shelf);
  unit->stateIs(failedExit); // it is no root that says it is frozen
  shelf->zelFrozenIs(true);
  EXPECT_EQ(refusal([&] { unit->stateIs(active); }),
            "read-only attribute: state of shelf/units/System");
  EXPECT_EQ(refusal([&] { dir->statusDel("System"); }),
            "read-only attribute: status of shelf/units");
  dir->parentIs(nullptr);
}

// Destruction.

TEST_F(FrozenTrees, AreDestroyedAsEverAndWhoHearsOfItMayWrite) {
  Ptr<StatusDir> last = statusDirFactory("last");
  last->zelFrozenIs(true);
  last->zelFrozenIs(false);
  const Ptr<Status> a = last->statusIs("a");
  const Ptr<Status> b = last->statusIs("b");
  last->zelFrozenIs(true);
  const auto listener = listen<DirEar>(last);
  listener->isWeakReferenceIs(true);
  listener->onCall = [&] {
    a->genIdInc(1); // in the directory still or taken out already
    b->genIdInc(1);
  };
  last = nullptr;
  EXPECT_THAT(listener->heard, testing::UnorderedElementsAre("a", "b"));
  EXPECT_FALSE(a->parent());
  EXPECT_EQ(a->genId(), 2U);
  EXPECT_EQ(b->genId(), 2U);
}

struct LastWords : StatusDir::Notifiee {
  void onZeroReferences() override { onZero(); }
  std::function<void()> onZero;
};

TEST_F(FrozenTrees, MayBeWrittenByWhoIsToldOfTheirEndAndByNobodyOnceTheyAreKept) {
  auto last = statusDirFactory("last");
  last->zelFrozenIs(true);
  StatusDir* const raw = last.ptr();
  const auto listener = listen<LastWords>(last);
  listener->isWeakReferenceIs(true);
  Ptr<StatusDir> kept;
  int writes = 0;
  listener->onZero = [&] {
    if (!kept) {
      raw->statusIs("late")->stateIs(active);
      ++writes;
      kept = Ptr<StatusDir>(raw);
    }
  };
  last = nullptr;
  EXPECT_EQ(writes, 1);
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->statusMap().count(), 1U);
  EXPECT_EQ(refusal([&] { kept->status("late")->stateIs(failedExit); }),
            "read-only attribute: state of last/late");
  EXPECT_EQ(refusal([&] { kept->statusDel("late"); }), "read-only attribute: status of last");
  listener->onZero = [] {}; // when it goes for good
}

// Permission.

using Permission = Zel::WritePermission;
using Attr = Status::Attr;

TEST_F(FrozenTrees, TakeOneWriteByPermission) {
  {
    const Permission permission(*unit, Attr::state);
    unit->stateIs(failedExit);
    EXPECT_EQ(refusal([&] { unit->stateIs(active); }),
              "read-only attribute: state of units/System");
  }
  EXPECT_EQ(unit->state(), failedExit);
  EXPECT_EQ(unit->versionCounter(), version + 1);
  EXPECT_THAT(ear->heard, ElementsAre("state"));
}

TEST_F(FrozenTrees, KeepAPermissionThatAnEqualValueDoesNotNeed) {
  const Permission permission(*unit, Attr::state);
  unit->stateIs(active);
  unit->stateIs(failedExit);
  EXPECT_EQ(unit->state(), failedExit);
}

TEST_F(FrozenTrees, TakeNoWriteOfAnotherAttributeOrEntityByPermission) {
  const Permission permission(*unit, Attr::state);
  EXPECT_EQ(refusal([&] { unit->genIdIs(9); }), "read-only attribute: genId of units/System");
  EXPECT_EQ(refusal([&] { dir->statusIs("other"); }), "read-only attribute: status of units");
  unit->stateIs(failedExit); // it is there still
  EXPECT_EQ(unit->state(), failedExit);
}

TEST_F(FrozenTrees, TakeNothingByAPermissionThatIsOver) {
  { const Permission permission(*unit, Attr::state); }
  EXPECT_EQ(refusal([&] { unit->stateIs(failedExit); }),
            "read-only attribute: state of units/System");
}

TEST_F(FrozenTrees, RefuseANotifieeThatWritesWhatItIsToldOf) {
  ear->onCall = [&] {
    EXPECT_EQ(refusal([&] { unit->stateIs(active); }),
              "read-only attribute: state of units/System");
  };
  {
    const Permission permission(*unit, Attr::state);
    unit->stateIs(failedExit);
  }
  EXPECT_EQ(unit->state(), failedExit);
  EXPECT_THAT(ear->heard, ElementsAre("state"));
}

TEST_F(FrozenTrees, RefuseANotifieeOfAWriteThatNeededNoPermission) {
  dir->zelFrozenIs(false);
  ear->onCall = [&] {
    dir->zelFrozenIs(true);
    EXPECT_EQ(refusal([&] { unit->stateIs(active); }),
              "read-only attribute: state of units/System");
  };
  const Permission permission(*unit, Attr::state);
  unit->stateIs(failedExit);
  EXPECT_EQ(unit->state(), failedExit);
  EXPECT_THAT(ear->heard, ElementsAre("state"));
}

TEST_F(FrozenTrees, TakeEntriesAndDeletionsByPermission) {
  const auto permitted = [&](Zel::AttributeId id, auto&& work) {
    const Permission permission(*unit, id);
    work();
  };
  permitted(Attr::group, [&] { unit->groupIs(more, true); });
  permitted(Attr::group, [&] { unit->groupIs(peers, false); });
  permitted(Attr::group, [&] { unit->groupDel(ports); });
  permitted(Attr::history, [&] { unit->historyIs(3.0, "three"); });
  permitted(Attr::history, [&] {
    Status::HistoryMap::Iterator at(unit->historyMap());
    EXPECT_EQ(unit->historyDel(at), "one");
  });
  permitted(Attr::genId, [&] { EXPECT_EQ(unit->genIdInc(2), 5U); });
  EXPECT_EQ(unit->groupMap().count(), 2U);
  EXPECT_EQ(unit->historyMap().count(), 2U);
  EXPECT_THAT(ear->heard, ElementsAre("group more", "group peers", "group ports", "history 3",
                                      "history 1", "genId"));
}

TEST_F(FrozenTrees, RefuseANotifieeOfANewEntryTheNext) {
  ear->onCall = [&] {
    EXPECT_EQ(refusal([&] { unit->groupDel(ports); }),
              "read-only attribute: group of units/System");
  };
  const Permission permission(*unit, Attr::group);
  unit->groupIs(more, true);
  EXPECT_THAT(ear->heard, ElementsAre("group more"));
  EXPECT_EQ(unit->groupMap().count(), 3U);
}

TEST_F(FrozenTrees, RefuseTheDeletionOfAllBehindTheFirst) {
  const Permission permission(*unit, Attr::group);
  EXPECT_EQ(refusal([&] { unit->groupDelAll(); }), "read-only attribute: group of units/System");
  EXPECT_EQ(unit->groupMap().count(), 1U);
}

TEST_F(FrozenTrees, TakeAMemberByPermissionWhichIsFrozenThen) {
  dirEar->onCall = [&] {
    EXPECT_EQ(refusal([&] { dir->status("other")->stateIs(active); }),
              "read-only attribute: state of units/other");
    EXPECT_EQ(refusal([&] { dir->statusDel("System"); }), "read-only attribute: status of units");
  };
  {
    const Permission permission(*dir, StatusDir::Attr::status);
    dir->statusIs("other");
  }
  EXPECT_THAT(dirEar->heard, ElementsAre("other"));
  EXPECT_TRUE(dir->status("other")->zelIsMirrored());
  dirEar->onCall = nullptr;
  {
    const Permission permission(*dir, StatusDir::Attr::status);
    EXPECT_EQ(dir->statusDel("System"), unit);
  }
  EXPECT_THAT(dirEar->heard, ElementsAre("other", "System"));
}

TEST_F(FrozenTrees, HaveTheInnermostPermissionAndThenTheOneAroundIt) {
  const Permission outer(*unit, Attr::state);
  {
    const Permission inner(*unit, Attr::genId);
    EXPECT_EQ(refusal([&] { unit->stateIs(failedExit); }),
              "read-only attribute: state of units/System");
    unit->genIdIs(9);
  }
  unit->stateIs(failedExit);
  EXPECT_EQ(unit->state(), failedExit);
  EXPECT_EQ(unit->genId(), 9U);
}

TEST_F(FrozenTrees, RefuseAnOverrideWhatItWritesBesides) {
  struct Eager : Maintenance::MemberToGroup {
    using MemberToGroup::MemberToGroup;
    void groupIs(const GroupKey& key, bool value) override {
      MemberToGroup::groupIs(key, value);
      partOfDynamicUnitIs(true);
    }
  };
  const auto member = Zel::makeObject<Eager>("member");
  member->zelFrozenIs(true);
  const Permission permission(*member, Maintenance::MemberToGroup::Attr::group);
  EXPECT_EQ(refusal([&] { member->groupIs(peers, true); }),
            "read-only attribute: partOfDynamicUnit of member");
  EXPECT_TRUE(member->group(peers));
  EXPECT_FALSE(member->partOfDynamicUnit());
}

} // namespace
