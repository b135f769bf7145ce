#include "Pair.h"

#include <Zel/StateDigest>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Maintenance::Unit;
using Zel::stateDigest;

const Group::GroupKey peers(Group::groupTypeBgp, "peers");

TEST(StateDigest, IsTheSameForTheSameStateWhateverTheHistory) {
  const auto a = statusFactory("System");
  const auto b = statusFactory("System");
  EXPECT_EQ(stateDigest(*a), stateDigest(*b));
  a->stateIs(underMaintenance);
  a->groupIs(peers, true);
  EXPECT_NE(stateDigest(*a), stateDigest(*b));
  b->groupIs(Group::GroupKey(Group::groupTypeInterface, "uplinks"), false);
  b->groupIs(peers, false);
  b->stateIs(failedEnter);
  b->groupDelAll();
  b->groupIs(peers, true);
  b->stateIs(underMaintenance);
  EXPECT_EQ(stateDigest(*a), stateDigest(*b));
}

TEST(StateDigest, SeesEachAttributeKeyAndValue) {
  const auto unit = statusFactory("System");
  std::uint64_t last = stateDigest(*unit);
  const auto changed = [&] {
    const std::uint64_t next = stateDigest(*unit);
    const bool differs = next != last;
    last = next;
    return differs;
  };
  unit->unitTypeIs(dynamic);
  EXPECT_TRUE(changed());
  unit->profileNameIs("fast");
  EXPECT_TRUE(changed());
  unit->timeOfStateChangeIs(2.5);
  EXPECT_TRUE(changed());
  unit->historyIs(1.0, "entered");
  EXPECT_TRUE(changed());
  unit->historyIs(1.0, "entereD");
  EXPECT_TRUE(changed());
  unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId(1, 2), true);
  EXPECT_TRUE(changed());
  unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId(1, 2), false);
  EXPECT_TRUE(changed());
  TrafficRates rates;
  rates.inBitsRateIs(1);
  unit->aggTrafficRateIs(rates);
  EXPECT_TRUE(changed());
  unit->genIdInc(1);
  EXPECT_TRUE(changed());
}

TEST(StateDigest, TellsOneKeyFromAnotherUnderTheSameValue) {
  const auto a = statusFactory("System");
  const auto b = statusFactory("System");
  a->groupIs(peers, true);
  b->groupIs(Group::GroupKey(Group::groupTypeBgp, "other"), true);
  EXPECT_NE(stateDigest(*a), stateDigest(*b));
  a->groupDelAll();
  b->groupDelAll();
  EXPECT_EQ(stateDigest(*a), stateDigest(*b));
  a->historyIs(1.0, "line");
  b->historyIs(2.0, "line");
  EXPECT_NE(stateDigest(*a), stateDigest(*b));
  const auto units = statusDirFactory("units");
  const auto others = statusDirFactory("units");
  units->statusIs("a");
  others->statusIs("b");
  EXPECT_NE(stateDigest(*units), stateDigest(*others));
}

TEST(StateDigest, TellsATextInOneAttributeFromThatInAnother) {
  const auto a = statusFactory("System");
  const auto b = statusFactory("System");
  a->maintEnterInstanceIs("x");
  b->maintExitInstanceIs("x");
  EXPECT_NE(stateDigest(*a), stateDigest(*b));
}

TEST(StateDigest, TakesZerosForEqualAndNaNsToo) {
  const auto a = statusFactory("System");
  const auto b = statusFactory("System");
  a->timeOfStateChangeIs(1.0);
  a->timeOfStateChangeIs(-0.0);
  EXPECT_EQ(stateDigest(*a), stateDigest(*b));
  a->timeOfStateChangeIs(std::numeric_limits<double>::quiet_NaN());
  b->timeOfStateChangeIs(-std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(stateDigest(*a), stateDigest(*b));
}

TEST(StateDigest, GoesThroughAllMembersOfADirectory) {
  const auto a = statusDirFactory("units");
  const auto b = statusDirFactory("others"); // names of roots leave no trace
  EXPECT_EQ(stateDigest(*a), stateDigest(*b));
  a->statusIs("System");
  EXPECT_NE(stateDigest(*a), stateDigest(*b));
  b->statusIs("System");
  EXPECT_EQ(stateDigest(*a), stateDigest(*b));
  a->status("System")->genIdIs(1);
  EXPECT_NE(stateDigest(*a), stateDigest(*b));
}

TEST(StateDigest, IsEqualOnBothEndsOfAConnection) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  dir->statusIs("System")->historyIs(3.0, "a line");
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  EXPECT_EQ(stateDigest(*pair.mirror<StatusDir>("units")), stateDigest(*dir));
}

} // namespace
