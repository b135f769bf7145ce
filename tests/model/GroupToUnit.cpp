#include "Listeners.h"

#include "support/Failure.h"
#include "support/OneAtATime.h"

#include <model/Mapping.h>

#include <algorithm>

namespace {

using namespace Maintenance;
using namespace TestModel;
using Group::GroupKey;

const GroupKey peers(Group::groupTypeBgp, "peers");
const GroupKey uplinks(Group::groupTypeInterface, "peers");

class UnitsListener : public Listener<GroupToUnit::Notifiee> {
public:
  using Listener::Listener;
  void onUnitName(Zel::Name name) override { hear(joined("onUnitName ", textOf(name))); }
  void onUnitNamezelImmediate() override { hear("immediate"); }
  void onUnitName() override { hear("on any"); }
};

TEST(GroupToUnits, ANewOneHasItsKeyAndAnEmptyNameWhateverTheKey) {
  for (const GroupKey& key : {GroupKey(), peers, uplinks}) {
    const auto units = Zel::makeObject<GroupToUnit>(key);
    EXPECT_EQ(units->name(), "");
    EXPECT_EQ(units->key(), key);
    EXPECT_EQ(units->fwkKey(), key);
    EXPECT_EQ(units->unitNameMap().count(), 0U);
    EXPECT_EQ(units->versionCounter(), 0U);
  }
}

TEST(GroupToUnits, AGroupMayBelongToSeveralUnits) {
  Log log;
  const auto units = Zel::makeObject<GroupToUnit>(peers);
  const auto listener = listen<UnitsListener>(units, log);
  expectMoves(*units, 1, 0, [&] { units->unitNameIs("System", true); });
  expectMoves(*units, 0, 0, [&] { units->unitNameIs("System", true); });
  expectMoves(*units, 1, 0, [&] { units->unitNameIs("Linecard3", false); });
  expectMoves(*units, 0, 1, [&] { EXPECT_TRUE(units->unitName("System")); });
  EXPECT_FALSE(units->unitName("Linecard3"));
  EXPECT_EQ(units->unitNameMap().count(), 2U);
  expectMoves(*units, 1, 0, [&] { EXPECT_TRUE(units->unitNameDel("System")); });
  expectMoves(*units, 0, 0, [&] { EXPECT_FALSE(units->unitNameDel("System")); });
  units->unitNameNotify("nothing");
  units->unitNameDelAll();
  EXPECT_EQ(log, Log({"onUnitName System", "onUnitName Linecard3", "onUnitName System",
                      "onUnitName nothing", "onUnitName Linecard3"}));
}

TEST(GroupToUnits, AUnitThatIsMadeAnewTellsNobodyAndIsMadeOnce) {
  Log log;
  const auto units = Zel::makeObject<GroupToUnit>(peers);
  const auto listener = listen<UnitsListener>(units, log);
  expectMoves(*units, 0, 0, [&] { units->newUnitName("System", false); });
  EXPECT_THROW(units->newUnitName("System", true), Zel::NameInUseException);
  EXPECT_EQ(log, Log());
}

class GroupToUnitDirs : public testing::Test {
protected:
  Log log;
  const Ptr<GroupToUnitDir> dir = groupToUnitDirFactory("groups");
  const Ptr<GroupToUnitDirListener> listener = listen<GroupToUnitDirListener>(dir, log);
};

TEST_F(GroupToUnitDirs, AMemberIsMadeUnderItsKeyAndNotUnderItsName) {
  expectMoves(*dir, 1, 0, [&] { dir->groupToUnitIs(peers); });
  const auto member = dir->groupToUnit(peers);
  ASSERT_TRUE(member);
  EXPECT_EQ(member->key(), peers);
  EXPECT_EQ(member->name(), "");
  EXPECT_EQ(member->parent(), dir);
  EXPECT_EQ(member->parentAttrId(), 258);
  EXPECT_EQ(log, Log({"on 1:peers"}));
}

TEST_F(GroupToUnitDirs, AKeyThatIsThereIsCountedButNotTold) {
  const auto member = dir->groupToUnitIs(peers);
  log.clear();
  expectMoves(*dir, 1, 0, [&] { EXPECT_EQ(dir->groupToUnitIs(peers), member); });
  EXPECT_EQ(log, Log());
}

TEST_F(GroupToUnitDirs, GroupsOfOneNameAndTwoTypesAreTwo) {
  const auto one = dir->groupToUnitIs(peers);
  EXPECT_FALSE(one == dir->groupToUnitIs(uplinks));
  EXPECT_EQ(dir->groupToUnitMap().count(), 2U);
}

TEST_F(GroupToUnitDirs, AMemberIsMadeAnewOnceWithoutAnybodyBeingTold) {
  const auto member = dir->newGroupToUnit(peers);
  EXPECT_EQ(member->parent(), dir);
  EXPECT_THROW(dir->newGroupToUnit(peers), Zel::NameInUseException);
  EXPECT_EQ(dir->groupToUnit(peers), member);
  EXPECT_EQ(dir->versionCounter(), 0U);
  EXPECT_EQ(log, Log());
}

TEST_F(GroupToUnitDirs, AMemberThatIsTakenOutHasNoParent) {
  const auto member = dir->groupToUnitIs(peers);
  log.clear();
  listener->onCall = [&] { EXPECT_FALSE(dir->groupToUnit(peers)); };
  EXPECT_EQ(dir->groupToUnitDel(peers), member);
  EXPECT_FALSE(member->parent());
  EXPECT_EQ(member->parentAttrId(), 258);
  EXPECT_FALSE(dir->groupToUnitDel(peers));
  EXPECT_EQ(log, Log({"on 1:peers"}));
}

TEST_F(GroupToUnitDirs, AllMembersAreTakenOutWithOneCallEach) {
  dir->groupToUnitIs(peers);
  dir->groupToUnitIs(uplinks);
  log.clear();
  expectMoves(*dir, 2, 0, [&] { dir->groupToUnitDelAll(); });
  EXPECT_EQ(dir->groupToUnitMap().count(), 0U);
  std::sort(log.begin(), log.end());
  EXPECT_EQ(log, Log({"on 1:peers", "on 2:peers"}));
}

TEST(GroupToUnitDirEnds, ADirectoryThatGoesTellsOfItsMembers) {
  Log log;
  auto dir = groupToUnitDirFactory("groups");
  const auto member = dir->groupToUnitIs(peers);
  const auto listener = listen<GroupToUnitDirListener>(dir, log);
  listener->isWeakReferenceIs(true);
  dir = nullptr;
  EXPECT_EQ(log, Log({"zero", "on 1:peers"}));
  EXPECT_FALSE(member->parent());
}

TEST(GroupToUnitDirOrder, IsThatOfTheHashesOfTheKeys) {
  const auto dir = groupToUnitDirFactory("groups");
  for (int number = 0; number < 100; ++number) {
    dir->groupToUnitIs(
        GroupKey(Group::GroupType(number % 3), Zel::String8(joined("g", std::to_string(number)))));
  }
  std::vector<unsigned> hashes;
  for (GroupToUnitDir::GroupToUnitMap::IteratorConst at(dir->groupToUnitMap()); at; at.advance()) {
    const GroupKey& key = at->key();
    hashes.push_back(Support::reversed(Support::OneAtATime()
                                           .add(Support::bytesOf(static_cast<unsigned>(key.type())))
                                           .mix(key.name().hash())
                                           .end()));
  }
  EXPECT_EQ(hashes.size(), 100U);
  EXPECT_TRUE(std::is_sorted(hashes.begin(), hashes.end()));
}

} // namespace
