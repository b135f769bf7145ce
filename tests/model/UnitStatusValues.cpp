#include "Listeners.h"

#include <cmath>
#include <limits>

namespace {

using namespace Maintenance::Unit;
using namespace TestModel;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct UnitStatusValues : testing::Test {
  const Ptr<Status> unit = statusFactory("unit");
  Log log;
  const Ptr<StatusListener> listener = listen<StatusListener>(unit, log);
};

TEST(UnitStatusFactory, MakesOneWithOneReferenceAndNothingElse) {
  const auto unit = statusFactory("Linecard3");
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(unit->name(), "Linecard3");
  EXPECT_FALSE(unit->parent());
  EXPECT_EQ(unit->parentAttrId(), 0);
  EXPECT_EQ(unit->versionCounter(), 0U);
  EXPECT_EQ(unit->readCounter(), 0U);
}

TEST_F(UnitStatusValues, ANewOneHasItsNameAndItsDefaults) {
  EXPECT_EQ(unit->unitName(), "unit");
  EXPECT_EQ(unit->fwkKey(), "unit");
  EXPECT_EQ(unit->state(), init);
  EXPECT_EQ(unit->reason(), srcUnknown);
  EXPECT_EQ(unit->unitType(), userConfigured);
  EXPECT_EQ(unit->historySize(), 12U);
  EXPECT_EQ(unit->defaultHistorySize(), 12U);
  EXPECT_FALSE(std::signbit(unit->timeOfStateChange()));
  EXPECT_FALSE(std::signbit(unit->onBootMaintExitTime()));
  EXPECT_EQ(&unit->profileName().data(), &Zel::String8::nullStringData_);
  EXPECT_EQ(&unit->maintEnterInstance().data(), &Zel::String8::nullStringData_);
  EXPECT_EQ(&unit->maintExitInstance().data(), &Zel::String8::nullStringData_);
}

TEST_F(UnitStatusValues, ReadingAnAttributeThatNobodyWritesMovesTheReadCounterByOne) {
  expectMoves(*unit, 0, 1, [&] { unit->unitName(); });
  expectMoves(*unit, 0, 1, [&] { unit->fwkKey(); });
  expectMoves(*unit, 0, 1, [&] { unit->defaultHistorySize(); });
}

TEST_F(UnitStatusValues, AnyStateMayFollowAnyOther) {
  unit->stateIs(failedExit);
  EXPECT_EQ(unit->state(), failedExit);
  for (unsigned from = 0; from < 7; ++from) {
    for (unsigned to = 0; to < 7; ++to) {
      unit->stateIs(StateInstance(from));
      expectMoves(*unit, from != to, 0, [&] { unit->stateIs(StateInstance(to)); });
      EXPECT_EQ(unit->state(), StateInstance(to));
    }
  }
}

TEST_F(UnitStatusValues, NotANumberOverItselfIsAlwaysAChange) {
  expectMoves(*unit, 2, 0, [&] {
    unit->timeOfStateChangeIs(nan);
    unit->timeOfStateChangeIs(nan);
  });
  expectMoves(*unit, 2, 0, [&] {
    unit->onBootMaintExitTimeIs(nan);
    unit->onBootMaintExitTimeIs(nan);
  });
  TrafficRates rates;
  rates.statsUpdateTimeIs(nan);
  expectMoves(*unit, 2, 0, [&] {
    unit->aggTrafficRateIs(rates);
    unit->aggTrafficRateIs(rates);
  });
  EXPECT_EQ(log, Log({"onTimeOfStateChange", "onTimeOfStateChange", "onOnBootMaintExitTime",
                      "onOnBootMaintExitTime", "onAggTrafficRate", "onAggTrafficRate"}));
}

TEST_F(UnitStatusValues, ZeroOverMinusZeroIsNoChangeAndNotWritten) {
  unit->timeOfStateChangeIs(1.0);
  unit->timeOfStateChangeIs(-0.0);
  log.clear();
  expectMoves(*unit, 0, 0, [&] { unit->timeOfStateChangeIs(0.0); });
  EXPECT_TRUE(std::signbit(unit->timeOfStateChange()));
  expectMoves(*unit, 0, 0, [&] { unit->onBootMaintExitTimeIs(-0.0); });
  EXPECT_FALSE(std::signbit(unit->onBootMaintExitTime()));
  TrafficRates rates;
  rates.statsUpdateTimeIs(-0.0);
  expectMoves(*unit, 0, 0, [&] { unit->aggTrafficRateIs(rates); });
  EXPECT_EQ(log, Log());
}

TEST_F(UnitStatusValues, ASampleWithOnlyANewTimeIsAChange) {
  TrafficRates rates;
  rates.outBitsRateIs(1);
  rates.inBitsRateIs(2);
  rates.statsUpdateTimeIs(3);
  expectMoves(*unit, 1, 0, [&] { unit->aggTrafficRateIs(rates); });
  expectMoves(*unit, 0, 0, [&] { unit->aggTrafficRateIs(rates); });
  rates.statsUpdateTimeIs(4);
  expectMoves(*unit, 1, 0, [&] { unit->aggTrafficRateIs(rates); });
  EXPECT_EQ(log, Log({"onAggTrafficRate", "onAggTrafficRate"}));
  EXPECT_TRUE(unit->aggTrafficRate() == rates);
}

TEST_F(UnitStatusValues, ATextIsSharedAndAnEqualOneIsNotTaken) {
  const Zel::String8 first = "text";
  const Zel::String8 second = "text";
  unit->profileNameIs(first);
  unit->profileNameIs(second);
  EXPECT_EQ(&unit->profileName().data(), &first.data());
}

TEST_F(UnitStatusValues, AMutatorInsideACallbackTellsOfItsChangeFirst) {
  const auto second = listen<StatusListener>(unit, log, "second ");
  listener->onCall = [&] {
    if (unit->state() == active) {
      unit->stateIs(failedEnter);
    }
  };
  std::vector<State> seen;
  second->onCall = [&] { seen.push_back(unit->state()); };
  unit->stateIs(active);
  EXPECT_EQ(log, Log({"onState", "onState", "second onState", "second onState"}));
  EXPECT_EQ(seen, std::vector<State>({failedEnter, failedEnter}));
  EXPECT_EQ(unit->versionCounter(), 2U);
}

TEST_F(UnitStatusValues, TheFrameworksIdsAndUnknownOnesAreNamedByTheBase) {
  EXPECT_EQ(unit->attributeString(258), "unitName");
  EXPECT_EQ(unit->attributeString(260), "group");
  EXPECT_EQ(unit->attributeString(266), "defaultHistorySize");
  EXPECT_EQ(unit->attributeString(268), "history");
  EXPECT_EQ(unit->attributeString(272), "intfsViolatingTrafficThreshold");
  EXPECT_EQ(unit->attributeString(0), "fwkKey");
  EXPECT_EQ(unit->attributeString(154), "zelHasAttrLogInterface");
  for (const int id : {-262, -1, 2, 257, 275, 386}) {
    EXPECT_EQ(unit->attributeString(id), "unknown") << id;
  }
}

TEST(UnitStatusEnd, IsToldToAWeakNotifieeAndOfItsCollectionsNothingIs) {
  Log log;
  auto unit = statusFactory("unit");
  unit->groupIs(Group::GroupKey(Group::groupTypeBgp, "a"), true);
  unit->historyIs(1.0, "a");
  unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId("Vlan1"), true);
  const auto listener = listen<StatusListener>(unit, log);
  listener->isWeakReferenceIs(true);
  unit = nullptr;
  EXPECT_EQ(log, Log({"zero"}));
  EXPECT_FALSE(listener->notifier());
}

} // namespace
