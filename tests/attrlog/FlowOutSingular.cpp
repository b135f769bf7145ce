// When the record of a single value is written, and when a mark is left instead.

#include "Log.h"

#include "support/Failure.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using FlowOut = Zel::NboAttrLog::FlowOut;
using testing::ElementsAre;
using testing::IsEmpty;

struct FlowOutSingular : testing::Test {
  /// The word of marks; all collections have their bits set.
  static constexpr unsigned nothingOwed = 0x4 | 0x200 | 0x2000;
  unsigned word() const { return writer.adapter->flowOut()->zelDirtyBitSet0().word(); }

  Writer<Status> writer{statusFactory("System")};
  const Ptr<Status> unit = writer.entity;
};

TEST_F(FlowOutSingular, AChangeWithRoomIsWrittenAtOnceAndLeavesNothing) {
  unit->stateIs(underMaintenance);
  EXPECT_FALSE(writer.adapter->flowOut());
  EXPECT_TRUE(writer.has(Adapter::flagNoFlowOut));
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"262"});
  EXPECT_EQ(seen[0].entity, writer.adapter->entityId());
  EXPECT_EQ(hex(seen[0].payload), "00000003");
  EXPECT_EQ(writer.connection->demuxer()->scheduled(), 0U);
}

TEST_F(FlowOutSingular, TheValueIsReadWhenItIsWritten) {
  const unsigned reads = unit->readCounter();
  unit->stateIs(active);
  EXPECT_EQ(unit->readCounter(), reads + 1);
  writer.freeIs(0);
  unit->stateIs(underMaintenance);
  EXPECT_EQ(unit->readCounter(), reads + 1);
  writer.worked();
  EXPECT_EQ(unit->readCounter(), reads + 2);
}

TEST_F(FlowOutSingular, TwoChangesDuringAFullBufferAreOneRecord) {
  writer.freeIs(0);
  unit->stateIs(active);
  unit->stateIs(failedEnter);
  ASSERT_TRUE(writer.adapter->flowOut());
  EXPECT_EQ(writer.adapter->flowOut()->attrId(), Attr::state);
  EXPECT_EQ(word(), nothingOwed | 0x10);
  EXPECT_THAT(writer.sent(), IsEmpty());
  const auto seen = writer.seenWorked();
  ASSERT_EQ(briefs(seen), Briefs{"262"});
  EXPECT_EQ(hex(seen[0].payload), "00000004");
  EXPECT_FALSE(writer.adapter->flowOut());
  EXPECT_TRUE(writer.has(Adapter::flagNoFlowOut));
}

TEST_F(FlowOutSingular, RoomForAnyRecordIsWhatCounts) {
  writer.freeIs(32768);
  unit->stateIs(active);
  EXPECT_FALSE(writer.adapter->flowOut());
  EXPECT_EQ(writer.sent(), Briefs{"262"});
  writer.freeIs(32767);
  unit->stateIs(init);
  ASSERT_TRUE(writer.adapter->flowOut());
  EXPECT_EQ(word(), nothingOwed | 0x10);
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(FlowOutSingular, WithForceEvenWithRoomAMarkIsLeft) {
  writer.adapter->flagsIs(Adapter::flagForceFlowOut, true);
  unit->genIdIs(9);
  ASSERT_TRUE(writer.adapter->flowOut());
  EXPECT_EQ(word(), nothingOwed | 0x8000);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.worked(), Briefs{"274"});
}

TEST_F(FlowOutSingular, InARunWithoutAFlowOutIsWrittenWithoutRoomToo) {
  writer.freeIs(100);
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut | Adapter::flagForceFlowOut, true);
  unit->stateIs(active);
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut | Adapter::flagForceFlowOut, false);
  EXPECT_FALSE(writer.adapter->flowOut());
  EXPECT_EQ(writer.connection->out()->freeSpace(), 100U - 32);
  EXPECT_EQ(writer.sent(), Briefs{"262"});
}

TEST_F(FlowOutSingular, BesideAFlowOutAChangeGoesOutWithRoomAndIsMarkedWithout) {
  writer.freeIs(0);
  unit->stateIs(active);
  unit->reasonIs(srcOnBoot);
  EXPECT_EQ(word(), nothingOwed | 0x30);
  EXPECT_THAT(writer.sent(), IsEmpty()); // and now there is room
  unit->reasonIs(srcCli);
  EXPECT_EQ(word(), nothingOwed | 0x10);
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"263"});
  EXPECT_EQ(number(seen[0].payload), static_cast<unsigned>(srcCli));
  EXPECT_EQ(writer.worked(), Briefs{"262"});
}

TEST_F(FlowOutSingular, ADownConnectionLeavesAMark) {
  writer.connection->fail("cut");
  const auto written = writer.connection->out()->recordsWritten();
  unit->stateIs(active);
  ASSERT_TRUE(writer.adapter->flowOut());
  EXPECT_EQ(word(), nothingOwed | 0x10);
  EXPECT_EQ(writer.connection->out()->recordsWritten(), written);
}

// The gate, step by step.

TEST_F(FlowOutSingular, WhileSyncModesAreHandedRoundNothingIsTouched) {
  writer.adapter->flagsIs(Adapter::flagSyncFanOut | Adapter::flagReactorActive, true);
  unit->stateIs(active);
  EXPECT_FALSE(writer.adapter->zelHandleProfileNameSerialize());
  EXPECT_TRUE(writer.has(Adapter::flagReactorActive));
  EXPECT_FALSE(writer.adapter->flowOut());
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(FlowOutSingular, WhatIsBeingReceivedInATransactionIsNotSentBeforeItsEnd) {
  feed(*writer.connection, marker(writer.adapter->entityId(), Attr::group, 0));
  EXPECT_TRUE(writer.adapter->handlingFlowInFor(Attr::group));
  EXPECT_FALSE(writer.adapter->handlingFlowInFor(Attr::history));
  const Group::GroupKey key(Group::groupTypeBgp, "peers");
  unit->groupIs(key, true);
  EXPECT_FALSE(writer.adapter->zelHandleGroupSerializeColl());
  unit->stateIs(active);
  EXPECT_EQ(writer.sent(), Briefs{"262"});
  feed(*writer.connection, marker(writer.adapter->entityId(), Attr::group, 2));
  EXPECT_EQ(writer.sent(), Briefs{"260"}); // behind the end marker
  EXPECT_FALSE(writer.adapter->flowOut());
  unit->groupIs(key, false);
  EXPECT_EQ(writer.sent(), Briefs{"260"});
}

TEST_F(FlowOutSingular, TheEchoOfARecordEndsAtTheFirstNotification) {
  writer.adapter->flagsIs(Adapter::flagReactorActive, true);
  unit->stateIs(active);
  EXPECT_FALSE(writer.has(Adapter::flagReactorActive));
  EXPECT_THAT(writer.sent(), IsEmpty());
  unit->stateIs(init);
  EXPECT_EQ(writer.sent(), Briefs{"262"});
}

TEST_F(FlowOutSingular, AnAdapterThatIsPendingMutedOrNotStreamingDropsAChangeAsDone) {
  const auto silent = [&](unsigned flag, bool value) {
    writer.adapter->flagsIs(flag, value);
    writer.adapter->flagsIs(Adapter::flagReactorActive, true);
    unit->genIdInc(1);
    EXPECT_TRUE(writer.adapter->zelHandleProfileNameSerialize());
    EXPECT_TRUE(writer.adapter->zelHandleGroupSerializeColl());
    EXPECT_FALSE(writer.has(Adapter::flagReactorActive));
    writer.adapter->flagsIs(flag, !value);
    EXPECT_THAT(writer.worked(), IsEmpty()) << flag;
  };
  silent(Adapter::flagChildPending, true);
  silent(Adapter::flagMuted, true);
  silent(Adapter::flagStreaming, false);
}

TEST(FlowOutGate, WithoutAConnectionAChangeIsDropped) {
  const auto unit = statusFactory("System");
  const auto adapter =
      Zel::makeObject<Status::ZelNboAttrLogSa>(Flags(), unit, 1U, nullptr, nullptr);
  adapter->hasNotificationActiveIs(true);
  adapter->flagsIs(Adapter::flagReactorActive, true);
  unit->stateIs(active);
  EXPECT_FALSE(adapter->hasFlag(Adapter::flagReactorActive));
  unit->stateIs(init);
  unit->historyIs(1.0, "line");
  EXPECT_TRUE(adapter->zelHandleProfileNameSerialize());
  EXPECT_TRUE(adapter->zelHandleHistorySerializeColl());
  EXPECT_FALSE(adapter->flowOut());
}

TEST_F(FlowOutSingular, AReadOnlyAdapterRefusesWhatIsNotAnEcho) {
  writer.adapter->flagsIs(Adapter::flagReadOnly, true);
  const unsigned version = unit->versionCounter();
  EXPECT_EQ(Support::messageOf<Zel::ReadOnlyException>([&] { unit->stateIs(active); }),
            "read-only attribute: state of System");
  EXPECT_EQ(unit->versionCounter(), version + 1);
  EXPECT_THAT(writer.sent(), IsEmpty());
  writer.adapter->flagsIs(Adapter::flagReactorActive, true);
  unit->stateIs(init);
  EXPECT_THAT(writer.sent(), IsEmpty());
}

// What may pass beside a FlowOut.

TEST_F(FlowOutSingular, WithoutAFlowOutImmediateTransmissionIsAMatterOfRoom) {
  EXPECT_TRUE(writer.adapter->prepareImmediateTransmission(Attr::state, false));
  EXPECT_FALSE(writer.adapter->prepareImmediateTransmission(Attr::state, true));
  EXPECT_EQ(writer.connection->demuxer()->scheduled(), 0U);
}

TEST_F(FlowOutSingular, BesideAFlowOutAnUnsyncedCollectionHasToWait) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Attr::history);
  EXPECT_TRUE(writer.adapter->prepareImmediateTransmission(Attr::group, false));
  EXPECT_FALSE(writer.adapter->prepareImmediateTransmission(Attr::group, true));
  EXPECT_FALSE(writer.adapter->prepareImmediateTransmission(Attr::history, false));
  EXPECT_TRUE(writer.adapter->prepareImmediateTransmission(Attr::state, false));
  EXPECT_FALSE(writer.adapter->prepareImmediateTransmission(Attr::state, true));
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, true);
  EXPECT_TRUE(writer.adapter->prepareImmediateTransmission(Attr::history, false));
  EXPECT_FALSE(writer.adapter->prepareImmediateTransmission(Attr::history, true));
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, false);
}

} // namespace
