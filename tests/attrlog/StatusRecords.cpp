#include "Channel.h"

#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// One record of each attribute of a unit, byte for byte, and what the mirror makes of it.

namespace {

using namespace Maintenance::Unit;

class StatusRecords : public ::testing::Test {
protected:
  Channel<Status> channel{statusFactory("u")};
  const Zel::Ptr<Status>& unit = channel.original;
  const Zel::Ptr<Status>& mirror = channel.mirror;
};

TEST_F(StatusRecords, UnitType) {
  unit->unitTypeIs(builtin);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  EXPECT_EQ(mirror->unitType(), builtin);
}

TEST_F(StatusRecords, Group) {
  const Group::GroupKey key(Group::groupTypeInterface, "x");
  unit->groupIs(key, true);
  channel.expectWritten("00 00 00 26 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 01 03");
  EXPECT_TRUE(mirror->group(key));
  unit->groupIs(key, false);
  channel.expectWritten("00 00 00 26 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 00 03");
  EXPECT_EQ(mirror->groupMap().count(), 1U);
  EXPECT_FALSE(mirror->group(key));
  unit->groupDel(key);
  channel.expectWritten("00 00 00 25 02 00 00 00 00 00 00 00 "
                        "ff ff fe fc 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 03");
  EXPECT_EQ(mirror->groupMap().count(), 0U);
}

TEST_F(StatusRecords, ProfileName) {
  unit->profileNameIs("fast");
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 04 66 61 73 74 03");
  EXPECT_EQ(mirror->profileName(), "fast");
  unit->profileNameIs("");
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 00 03");
  EXPECT_EQ(mirror->profileName(), "");
}

TEST_F(StatusRecords, State) {
  unit->stateIs(failedExit);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 06 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 06 03");
  EXPECT_EQ(mirror->state(), failedExit);
}

TEST_F(StatusRecords, Reason) {
  unit->reasonIs(srcCli);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 07 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 03");
  EXPECT_EQ(mirror->reason(), srcCli);
}

TEST_F(StatusRecords, TimeOfStateChange) {
  unit->timeOfStateChangeIs(-0.25);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "00 00 01 08 01 00 00 00 00 00 00 00 00 00 01 "
                        "bf d0 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->timeOfStateChange(), -0.25);
}

TEST_F(StatusRecords, OnBootMaintExitTime) {
  unit->onBootMaintExitTimeIs(1e300);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "00 00 01 09 01 00 00 00 00 00 00 00 00 00 01 "
                        "7e 37 e4 3c 88 00 75 9c 03");
  EXPECT_EQ(mirror->onBootMaintExitTime(), 1e300);
}

TEST_F(StatusRecords, HistorySize) {
  unit->historySizeIs(0x01020304);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 0b 00 00 00 00 04 00 00 00 00 00 01 "
                        "01 02 03 04 03");
  EXPECT_EQ(mirror->historySize(), 0x01020304U);
}

TEST_F(StatusRecords, History) {
  unit->historyIs(3.0, "a");
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 0c 01 00 00 00 00 00 00 00 00 00 01 "
                        "40 08 00 00 00 00 00 00 00 00 00 01 61 03");
  EXPECT_EQ(mirror->history(3.0), "a");
  unit->historyIs(3.0, "");
  channel.expectWritten("00 00 00 28 02 00 00 00 00 00 00 00 "
                        "00 00 01 0c 01 00 00 00 00 00 00 00 00 00 01 "
                        "40 08 00 00 00 00 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->historyMap().count(), 1U);
  EXPECT_EQ(mirror->history(3.0), "");
}

TEST_F(StatusRecords, ADeletionInTheHistoryCarriesTheTimeAndNoText) {
  unit->historyIs(3.0, "a");
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 0c 01 00 00 00 00 00 00 00 00 00 01 "
                        "40 08 00 00 00 00 00 00 00 00 00 01 61 03");
  unit->historyDel(3.0);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "ff ff fe f4 01 00 00 00 00 00 00 00 00 00 01 "
                        "40 08 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->historyMap().count(), 0U);
}

TEST_F(StatusRecords, MaintEnterInstance) {
  unit->maintEnterInstanceIs("u#1");
  channel.expectWritten("00 00 00 23 02 00 00 00 00 00 00 00 "
                        "00 00 01 0d 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 75 23 31 03");
  EXPECT_EQ(mirror->maintEnterInstance(), "u#1");
}

TEST_F(StatusRecords, MaintExitInstance) {
  unit->maintExitInstanceIs("u#2");
  channel.expectWritten("00 00 00 23 02 00 00 00 00 00 00 00 "
                        "00 00 01 0e 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 75 23 32 03");
  EXPECT_EQ(mirror->maintExitInstance(), "u#2");
}

TEST_F(StatusRecords, AggTrafficRate) {
  TrafficRates rates;
  rates.outBitsRateIs(0x0102030405060708);
  rates.inBitsRateIs(9);
  rates.statsUpdateTimeIs(2.0);
  unit->aggTrafficRateIs(rates);
  channel.expectWritten(
      "00 00 00 34 02 00 00 00 00 00 00 00 "
      "00 00 01 0f 01 00 00 00 00 00 00 00 00 00 01 "
      "01 02 03 04 05 06 07 08 00 00 00 00 00 00 00 09 40 00 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->aggTrafficRate(), rates);
}

TEST_F(StatusRecords, IntfsViolatingTrafficThreshold) {
  unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId("Ethernet3/1"), true);
  channel.expectWritten("00 00 00 25 02 00 00 00 00 00 00 00 "
                        "00 00 01 10 01 00 00 00 00 00 00 00 00 00 01 "
                        "01 02 00 00 00 03 00 01 01 03");
  EXPECT_TRUE(mirror->intfsViolatingTrafficThreshold(Vexil::IntfId("Ethernet3/1")));
  unit->intfsViolatingTrafficThresholdDel(Vexil::IntfId("Ethernet3/1"));
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "ff ff fe f0 01 00 00 00 00 00 00 00 00 00 01 "
                        "01 02 00 00 00 03 00 01 03");
  EXPECT_EQ(mirror->intfsViolatingTrafficThresholdMap().count(), 0U);
}

TEST_F(StatusRecords, TotalIntfTrafficViolations) {
  unit->totalIntfTrafficViolationsIs(4294967295U);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 11 00 00 00 00 04 00 00 00 00 00 01 "
                        "ff ff ff ff 03");
  EXPECT_EQ(mirror->totalIntfTrafficViolations(), 4294967295U);
  unit->totalIntfTrafficViolationsInc(1);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 11 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 00 00 03");
  EXPECT_EQ(mirror->totalIntfTrafficViolations(), 0U);
}

TEST_F(StatusRecords, GenId) {
  unit->genIdIs(256);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 12 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 01 00 03");
  EXPECT_EQ(mirror->genId(), 256U);
}

TEST_F(StatusRecords, AWriteOfTheSameValueIsNoChange) {
  unit->genIdIs(0);
  unit->stateIs(init);
  unit->profileNameIs("");
  channel.expectWritten("");
  EXPECT_EQ(mirror->versionCounter(), 0U);
}

} // namespace
