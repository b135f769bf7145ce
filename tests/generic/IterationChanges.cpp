#include "IterationFixture.h"

#include <algorithm>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Unit::Status;
using At = GenericIf::AttributeIteratorConst;

TEST_F(Iteration, StaysOnAMemberThatIsDeletedAndGoesOnBehindIt) {
  groupsIs(20);
  const std::vector<GroupKey> all = groups();
  std::vector<GroupKey> seen;
  for (At at = object->attributeIteratorConst(group); at; ++at) {
    const GroupKey key = Zel::value<GroupKey>(at.key());
    unit->groupDel(key);
    EXPECT_EQ(Zel::value<GroupKey>(at.key()), key) << "still readable";
    EXPECT_NE(at.obj(), nullptr);
    seen.push_back(key);
  }
  EXPECT_EQ(seen, all);
  EXPECT_EQ(unit->groupMap().count(), 0U);
}

TEST_F(Iteration, GoesOnBehindAMemberOfHistoryThatIsDeleted) {
  for (const double time : {1.0, 2.0, 3.0, 4.0}) {
    unit->historyIs(time, "line");
  }
  At at = object->attributeIteratorConst(history);
  ++at;
  unit->historyDel(2.0);
  unit->historyDel(3.0);
  EXPECT_EQ(Zel::value<double>(at.key()), 2.0);
  ++at;
  EXPECT_EQ(Zel::value<double>(at.key()), 4.0);
}

TEST_F(Iteration, SeesAMemberThatIsAddedAheadAndNoneBehind) {
  groupsIs(20);
  std::vector<GroupKey> seen;
  for (At at = object->attributeIteratorConst(group); at; ++at) {
    seen.push_back(Zel::value<GroupKey>(at.key()));
    if (seen.size() == 10) {
      for (int number = 20; number < 120; ++number) { // the table is doubled meanwhile
        unit->groupIs(groupKey(number), true);
      }
    }
  }
  const std::vector<GroupKey> all = groups();
  EXPECT_EQ(std::vector<GroupKey>(seen.end() - 10, seen.end()),
            std::vector<GroupKey>(all.end() - 10, all.end()));
  const auto reached = std::find(all.begin(), all.end(), seen[9]);
  EXPECT_EQ(std::vector<GroupKey>(seen.begin() + 9, seen.end()),
            std::vector<GroupKey>(reached, all.end()))
      << "from where the walk stood, it sees what is there now";
}

TEST_F(Iteration, OfAllSurvivesTheEndOfAll) {
  groupsIs(20);
  At at = object->attributeIteratorConst(group);
  ++at;
  unit->groupDelAll();
  EXPECT_TRUE(at);
  ++at;
  EXPECT_FALSE(at);
  ++at;
  EXPECT_FALSE(at) << "the end stays the end";
}

TEST_F(Iteration, GoesOnIndependentlyInACopy) {
  groupsIs(5);
  const std::vector<GroupKey> all = groups();
  At at = object->attributeIteratorConst(group);
  ++at;
  At copy = at;
  ++copy;
  ++copy;
  EXPECT_EQ(Zel::value<GroupKey>(at.key()), all[1]);
  EXPECT_EQ(Zel::value<GroupKey>(copy.key()), all[3]);
  unit->groupDel(all[3]);
  at = copy;
  ++at;
  EXPECT_EQ(Zel::value<GroupKey>(at.key()), all[4]);
  EXPECT_EQ(Zel::value<GroupKey>(copy.key()), all[3]);
  const At moved = std::move(copy);
  EXPECT_EQ(Zel::value<GroupKey>(moved.key()), all[3]);
}

TEST_F(Iteration, OfACopyOfHistoryGoesOnIndependently) {
  for (const double time : {1.0, 2.0, 3.0}) {
    unit->historyIs(time, "line");
  }
  At at = object->attributeIteratorConst(history);
  At copy = at;
  ++copy;
  EXPECT_EQ(Zel::value<double>(at.key()), 1.0);
  EXPECT_EQ(keysFrom<double>(copy), (std::vector{2.0, 3.0}));
}

TEST_F(Iteration, OfHistoryStaysAtItsEnd) {
  unit->historyIs(1.0, "line");
  At at = object->attributeIteratorConst(history);
  ++at;
  EXPECT_FALSE(at);
  ++at;
  EXPECT_FALSE(at);
  EXPECT_EQ(at.key(), nullptr);
  EXPECT_EQ(at.obj(), nullptr);
}

TEST_F(Iteration, PinsTheMemberItStandsOnAndNoOther) {
  const auto dir = Unit::statusDirFactory("units");
  const Ptr<Status> a = dir->statusIs("a");
  const unsigned before = a->references();
  const Handle units = Zel::generic(dir);
  {
    At at = units->attributeIteratorConst(258);
    EXPECT_EQ(a->references(), before + 1);
    const At copy = at;
    EXPECT_EQ(a->references(), before + 2);
    ++at;
    EXPECT_EQ(a->references(), before + 1);
  }
  EXPECT_EQ(a->references(), before);
}

TEST_F(Iteration, KeepsTheObjectAlive) {
  At at = [] {
    const Ptr<Status> short_ = Unit::statusFactory("short");
    short_->groupIs(groupKey(1), true);
    return Zel::generic(short_)->attributeIteratorConst(group);
  }();
  EXPECT_EQ(Zel::value<GroupKey>(at.key()), groupKey(1));
  ++at;
  EXPECT_FALSE(at);
}

TEST_F(Iteration, TakesAPositionWithoutAStateForTheEnd) {
  const At at(object, group, nullptr);
  const At copy = at;
  EXPECT_FALSE(copy);
  EXPECT_EQ(copy.key(), nullptr);
  EXPECT_EQ(copy.obj(), nullptr);
  EXPECT_EQ(object->attributeIterator_iterInc(at), nullptr);
  const At nowhere(object, 262, nullptr);
  EXPECT_FALSE(At(nowhere));
  EXPECT_EQ(nowhere.key(), nullptr);
  EXPECT_EQ(nowhere.obj(), nullptr);
  EXPECT_EQ(object->attributeIterator_iterInc(nowhere), nullptr);
}

TEST_F(Iteration, StepsByTheOperationsOfTheObject) {
  groupsIs(2);
  const At at = object->attributeIteratorConst(group);
  EXPECT_TRUE(object->attributeIterator_nonNull(at));
  EXPECT_EQ(object->attributeIterator_iterInc(at), nullptr);
  EXPECT_EQ(Zel::value<GroupKey>(object->attributeIterator_iterKey(at)), groups()[1]);
  EXPECT_FALSE(object->attributeIterator_iterObj(at)->isConst());
  object->attributeIterator_iterInc(at);
  EXPECT_FALSE(object->attributeIterator_nonNull(at));
}

} // namespace
