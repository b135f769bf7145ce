#include "Listeners.h"

#include "support/Failure.h"
#include "support/OneAtATime.h"

#include <model/Mapping.h>

#include <algorithm>

namespace {

using namespace Maintenance;
using namespace TestModel;

const GroupProfileSelKey first(Group::groupTypeBgp, 1);
const GroupProfileSelKey second(Group::groupTypeBgp, 2);
const UnitProfileSelKey system("System", userConfigChange);
const UnitProfileSelKey created("System", initialCreation);

std::string shown(const char* head, const GroupProfileSelKey& key) {
  return joined(head,
                std::to_string(key.groupType()) + ':' + std::to_string(key.profileSelReqId()));
}

class InListener : public Listener<GroupProfileSelectionIn::Notifiee> {
public:
  using Listener::Listener;
  void onTrigger() override { hear("onTrigger"); }
  void onGroupName(Zel::String8 name) override { hear(joined("onGroupName ", textOf(name))); }
  void onGroupNamezelImmediate() override { hear("immediate"); }
  void onGroupName() override { hear("on any"); }
};

class UnitListener : public Listener<UnitProfileSelection::Notifiee> {
public:
  using Listener::Listener;
  void onGenId() override { hear("onGenId"); }
  void onComplete() override { hear("onComplete"); }
  void onConsiderUnitState() override { hear("onConsiderUnitState"); }
  void onGroupProfileSelectionIn(const GroupProfileSelKey& key) override {
    hear(shown("in ", key));
  }
  void onGroupProfileSelectionOut(const GroupProfileSelKey& key) override {
    hear(shown("out ", key));
  }
};

class SelectionListener : public Listener<ProfileSelection::Notifiee> {
public:
  using Listener::Listener;
  void onUnitProfileSelection(const UnitProfileSelKey& key) override {
    hear(joined("unit ", textOf(key.unitName()) + ' ' + std::to_string(key.profileChangeCause())));
  }
};

TEST(GroupSelections, WhatGoesInIsNotTriggeredAtFirst) {
  const auto in = groupProfileSelectionInFactory(first);
  EXPECT_FALSE(in->trigger());
  EXPECT_EQ(in->groupProfileSelKey(), first);
  EXPECT_EQ(in->fwkKey(), first);
  EXPECT_EQ(in->groupNameMap().count(), 0U);
  EXPECT_EQ(in->references(), 1U);
  EXPECT_EQ(in->fwkType(), GroupProfileSelectionIn::_fwkType());
}

TEST(GroupSelections, WhatGoesInTellsItsChangesOnce) {
  Log log;
  const auto in = groupProfileSelectionInFactory(first);
  const auto listener = listen<InListener>(in, log);
  in->triggerIs(true);
  in->triggerIs(true);
  in->groupNameIs("peers", false);
  in->groupNameIs("peers", false);
  in->groupNameIs("peers", true);
  EXPECT_TRUE(in->groupName("peers"));
  EXPECT_FALSE(in->groupName("others"));
  EXPECT_TRUE(in->groupNameDel("peers"));
  EXPECT_FALSE(in->groupNameDel("peers"));
  in->groupNameNotify("nothing");
  in->newGroupName("quiet", true);
  EXPECT_THROW(in->newGroupName("quiet", true), Zel::NameInUseException);
  in->groupNameDelAll();
  EXPECT_EQ(log, Log({"onTrigger", "onGroupName peers", "onGroupName peers", "onGroupName peers",
                      "onGroupName nothing", "onGroupName quiet"}));
}

TEST(GroupSelections, WhatCameOutHoldsItsKeyAlone) {
  const auto out = groupProfileSelectionOutFactory(second);
  EXPECT_EQ(out->groupProfileSelKey(), second);
  EXPECT_EQ(out->fwkKey(), second);
  EXPECT_EQ(out->references(), 1U);
}

class UnitSelections : public testing::Test {
protected:
  Log log;
  const Ptr<UnitProfileSelection> unit = unitProfileSelectionFactory(system);
  const Ptr<UnitListener> listener = listen<UnitListener>(unit, log);
};

TEST_F(UnitSelections, ANewOneHasItsKeyAndNothingElse) {
  EXPECT_EQ(unit->unitProfileSelKey(), system);
  EXPECT_EQ(unit->fwkKey(), system);
  EXPECT_EQ(unit->genId(), 0U);
  EXPECT_FALSE(unit->complete());
  EXPECT_FALSE(unit->considerUnitState());
  EXPECT_EQ(unit->groupProfileSelectionInMap().count(), 0U);
  EXPECT_EQ(unit->groupProfileSelectionOutMap().count(), 0U);
}

TEST_F(UnitSelections, TheGenerationIsAddedToAndWraps) {
  EXPECT_EQ(unit->genIdInc(0), 0U);
  EXPECT_EQ(unit->genIdInc(2), 2U);
  unit->genIdIs(2);
  unit->genIdIs(~0U);
  EXPECT_EQ(unit->genIdInc(3), 2U);
  EXPECT_EQ(unit->genId(), 2U);
  EXPECT_EQ(log, Log({"onGenId", "onGenId", "onGenId"}));
}

TEST_F(UnitSelections, FlagsAreTold) {
  unit->completeIs(true);
  unit->considerUnitStateIs(true);
  unit->completeIs(true);
  EXPECT_TRUE(unit->complete());
  EXPECT_TRUE(unit->considerUnitState());
  EXPECT_EQ(log, Log({"onComplete", "onConsiderUnitState"}));
}

TEST_F(UnitSelections, AMemberIsMadeOnceAndFoundAgainWithoutAnybodyBeingTold) {
  const auto in = unit->groupProfileSelectionInIs(first);
  const auto out = unit->groupProfileSelectionOutIs(first);
  EXPECT_EQ(in->groupProfileSelKey(), first);
  EXPECT_EQ(out->groupProfileSelKey(), first);
  EXPECT_EQ(unit->groupProfileSelectionInIs(first), in);
  EXPECT_EQ(unit->groupProfileSelectionOutIs(first), out);
  EXPECT_EQ(unit->groupProfileSelectionIn(first), in);
  EXPECT_EQ(unit->groupProfileSelectionOut(first), out);
  EXPECT_FALSE(unit->groupProfileSelectionIn(second));
  EXPECT_EQ(log, Log({"in 1:1", "out 1:1"}));
}

TEST_F(UnitSelections, AMemberIsMadeAnewQuietlyAndNeverTwice) {
  const auto in = unit->newGroupProfileSelectionIn(first);
  const auto out = unit->newGroupProfileSelectionOut(first);
  EXPECT_THROW(unit->newGroupProfileSelectionIn(first), Zel::NameInUseException);
  EXPECT_THROW(unit->newGroupProfileSelectionOut(first), Zel::NameInUseException);
  EXPECT_EQ(unit->groupProfileSelectionIn(first), in);
  EXPECT_EQ(unit->groupProfileSelectionOut(first), out);
  EXPECT_EQ(log, Log());
}

TEST_F(UnitSelections, MembersAreTakenOutByKeyByIteratorAndAllAtOnce) {
  const auto in = unit->newGroupProfileSelectionIn(first);
  const auto out = unit->newGroupProfileSelectionOut(first);
  EXPECT_EQ(unit->groupProfileSelectionInDel(first), in);
  EXPECT_FALSE(unit->groupProfileSelectionInDel(first));
  UnitProfileSelection::GroupProfileSelectionOutMap::Iterator at(
      unit->groupProfileSelectionOutMap(), first);
  EXPECT_EQ(unit->groupProfileSelectionOutDel(at), out);
  EXPECT_FALSE(unit->groupProfileSelectionOutDel(at));
  EXPECT_EQ(log, Log({"in 1:1", "out 1:1"}));
  log.clear();
  unit->newGroupProfileSelectionIn(second);
  unit->newGroupProfileSelectionOut(second);
  unit->groupProfileSelectionInDelAll();
  unit->groupProfileSelectionOutDelAll();
  unit->groupProfileSelectionInNotify(first);
  unit->groupProfileSelectionOutNotify(first);
  EXPECT_EQ(log, Log({"in 1:2", "out 1:2", "in 1:1", "out 1:1"}));
}

TEST(UnitSelectionEnds, OneThatGoesTellsOfItsMembersWhichMayLiveOn) {
  Log log;
  auto unit = unitProfileSelectionFactory(system);
  unit->groupProfileSelectionOutIs(second);
  const Ptr<GroupProfileSelectionIn> in = unit->groupProfileSelectionInIs(first);
  const auto listener = listen<UnitListener>(unit, log);
  listener->isWeakReferenceIs(true);
  unit = nullptr;
  EXPECT_EQ(log, Log({"zero", "in 1:1", "out 1:2"}));
  EXPECT_EQ(in->references(), 1U);
  EXPECT_FALSE(listener->notifier());
}

TEST(ProfileSelections, HoldOneForEachUnitAndCause) {
  Log log;
  const auto all = profileSelectionFactory();
  const auto listener = listen<SelectionListener>(all, log);
  const auto one = all->unitProfileSelectionIs(system);
  const auto other = all->unitProfileSelectionIs(created);
  EXPECT_FALSE(one == other);
  EXPECT_EQ(all->unitProfileSelectionIs(system), one);
  EXPECT_EQ(all->unitProfileSelection(created), other);
  EXPECT_EQ(all->unitProfileSelectionDel(system), one);
  EXPECT_FALSE(all->unitProfileSelectionDel(system));
  EXPECT_FALSE(all->unitProfileSelection(system));
  const auto again = all->newUnitProfileSelection(system);
  EXPECT_THROW(all->newUnitProfileSelection(system), Zel::NameInUseException);
  all->unitProfileSelectionNotify(system);
  ProfileSelection::UnitProfileSelectionMap::Iterator at(all->unitProfileSelectionMap(), created);
  EXPECT_EQ(all->unitProfileSelectionDel(at), other);
  all->unitProfileSelectionDelAll();
  EXPECT_EQ(log, Log({"unit System 2", "unit System 0", "unit System 2", "unit System 2",
                      "unit System 0", "unit System 2"}));
  EXPECT_EQ(again->references(), 1U);
}

TEST(ProfileSelections, OneThatGoesTellsOfItsMembers) {
  Log log;
  auto all = profileSelectionFactory();
  all->unitProfileSelectionIs(system);
  const auto listener = listen<SelectionListener>(all, log);
  listener->isWeakReferenceIs(true);
  all = nullptr;
  EXPECT_EQ(log, Log({"zero", "unit System 2"}));
}

/// The hashes of the keys of a collection as its index has them, in the order of iteration.
template <class Map, class HashOf>
std::vector<unsigned> indexHashes(const Map& map, HashOf&& hashOf) {
  std::vector<unsigned> hashes;
  for (typename Map::IteratorConst at(map); at; at.advance()) {
    hashes.push_back(Support::reversed(hashOf(at->zelKey()).end()));
  }
  return hashes;
}

TEST(SelectionOrder, OfWhatGoesInAndCameOutIsThatOfTheHashesOfTheKeys) {
  const auto unit = unitProfileSelectionFactory(system);
  for (unsigned number = 0; number < 100; ++number) {
    const GroupProfileSelKey key(static_cast<Group::GroupType>(number % 3), number);
    unit->groupProfileSelectionInIs(key);
    unit->groupProfileSelectionOutIs(key);
  }
  const auto hashOf = [](const GroupProfileSelKey& key) {
    return Support::OneAtATime()
        .add(Support::bytesOf(static_cast<unsigned>(key.groupType())))
        .add(Support::bytesOf(key.profileSelReqId()));
  };
  const auto in = indexHashes(unit->groupProfileSelectionInMap(), hashOf);
  EXPECT_EQ(in.size(), 100U);
  EXPECT_TRUE(std::is_sorted(in.begin(), in.end()));
  EXPECT_EQ(indexHashes(unit->groupProfileSelectionOutMap(), hashOf), in);
}

TEST(SelectionOrder, OfAllSelectionsIsThatOfTheHashesOfTheKeys) {
  const auto all = profileSelectionFactory();
  for (unsigned number = 0; number < 100; ++number) {
    all->unitProfileSelectionIs(UnitProfileSelKey(Zel::String8(joined("u", std::to_string(number))),
                                                  static_cast<ProfileChangeCause>(number % 3)));
  }
  const auto hashes = indexHashes(all->unitProfileSelectionMap(), [](const UnitProfileSelKey& key) {
    return Support::OneAtATime()
        .mix(key.unitName().hash())
        .add(Support::bytesOf(static_cast<unsigned>(key.profileChangeCause())));
  });
  EXPECT_EQ(hashes.size(), 100U);
  EXPECT_TRUE(std::is_sorted(hashes.begin(), hashes.end()));
}

TEST(ProfileSelections, HaveNeitherCountersNorAttributeLog) {
  EXPECT_FALSE((std::is_base_of_v<Zel::Entity, ProfileSelection>));
  EXPECT_FALSE((std::is_base_of_v<Zel::Entity, UnitProfileSelection>));
  EXPECT_FALSE((std::is_base_of_v<Zel::Entity, GroupProfileSelectionIn>));
  EXPECT_FALSE((std::is_base_of_v<Zel::Entity, GroupProfileSelectionOut>));
  EXPECT_FALSE((std::is_base_of_v<Zel::Entity, ProfileKeySet>));
}

} // namespace
