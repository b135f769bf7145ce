// When the record of one entry is written, and when its key is marked instead.

#include "Log.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using FlowOut = Zel::NboAttrLog::FlowOut;
using Group::GroupKey;
using testing::IsEmpty;

struct FlowOutCollections : testing::Test {
  auto flow() const { return writer.adapter->flowOut(); }
  std::size_t dirty() const { return flow()->zelIsGroupDirtyMap().count(); }
  static GroupKey key(const char* name) { return {Group::groupTypeBgp, name}; }

  Writer<Status> writer{statusFactory("System")};
  const Ptr<Status> unit = writer.entity;
};

TEST_F(FlowOutCollections, AnEntryIsItsKeyAndValueAtOnce) {
  unit->groupIs(key("peers"), true);
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"260"});
  EXPECT_EQ(hex(seen[0].payload), "00000001000000057065657273"
                                  "01");
  EXPECT_FALSE(flow());
}

TEST_F(FlowOutCollections, ADeletionIsTheKeyUnderTheNegatedId) {
  unit->groupIs(key("peers"), true);
  writer.sent();
  unit->groupDel(key("peers"));
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"-260"});
  EXPECT_EQ(hex(seen[0].payload), "00000001000000057065657273");
}

TEST_F(FlowOutCollections, RoomForAnyRecordIsWhatCounts) {
  writer.freeIs(32768);
  unit->groupIs(key("peers"), true);
  EXPECT_FALSE(flow());
  EXPECT_EQ(writer.sent(), Briefs{"260"});
  writer.freeIs(32767);
  unit->groupIs(key("peers"), false);
  ASSERT_TRUE(flow());
  EXPECT_EQ(flow()->attrId(), Attr::group);
  EXPECT_EQ(dirty(), 1U);
  EXPECT_TRUE(flow()->hasDirtyAttributes());
  EXPECT_EQ(flow()->zelDirtyBitSet0().word(), 0x4U | 0x200 | 0x2000);
  EXPECT_THAT(writer.sent(), IsEmpty());
  const auto seen = writer.seenWorked();
  ASSERT_EQ(briefs(seen), Briefs{"260"});
  EXPECT_EQ(seen[0].payload.back(), '\0');
  EXPECT_FALSE(flow());
}

TEST_F(FlowOutCollections, WithForceEvenWithRoomAKeyIsMarked) {
  writer.adapter->flagsIs(Adapter::flagForceFlowOut, true);
  unit->groupIs(key("peers"), true);
  ASSERT_TRUE(flow());
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.worked(), Briefs{"260"});
}

TEST_F(FlowOutCollections, InARunWithoutAFlowOutIsWrittenWithoutRoomToo) {
  writer.freeIs(100);
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, true);
  unit->groupIs(key("peers"), true);
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, false);
  EXPECT_FALSE(flow());
  EXPECT_EQ(writer.sent(), Briefs{"260"});
}

TEST_F(FlowOutCollections, BesideAFlowOutARecordTakesItsMarkAway) {
  writer.freeIs(0);
  unit->groupIs(key("peers"), true);
  unit->groupIs(key("others"), true);
  unit->groupIs(key("peers"), false);
  EXPECT_EQ(dirty(), 2U); // a key is marked once
  EXPECT_THAT(writer.sent(), IsEmpty());
  unit->groupIs(key("peers"), true);
  EXPECT_EQ(dirty(), 1U);
  EXPECT_EQ(writer.sent(), Briefs{"260"});
  writer.freeIs(0);
  unit->groupDel(key("peers"));
  unit->groupDel(key("others"));
  EXPECT_EQ(dirty(), 2U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.worked(), (Briefs{"-260", "-260"}));
}

TEST_F(FlowOutCollections, BeforeItsWalkIsDoneAKeyIsOnlyMarked) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Attr::group);
  unit->groupIs(key("peers"), true);
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  const Briefs sent = writer.worked();
  EXPECT_EQ(Briefs(sent.begin(), sent.begin() + 4), (Briefs{"begin 260", "260", "end 260", "261"}));
}

TEST_F(FlowOutCollections, WhatCameAndWentMeanwhileIsADeletion) {
  writer.freeIs(0);
  unit->groupIs(key("peers"), true);
  unit->groupDel(key("peers"));
  EXPECT_EQ(dirty(), 1U);
  EXPECT_EQ(writer.worked(), Briefs{"-260"});
}

TEST_F(FlowOutCollections, KeysAreSentInTheOrderOfTheirTable) {
  writer.freeIs(0);
  for (unsigned i = 0; i < 20; ++i) {
    unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId(0x01010000, 19 - i), true);
    unit->historyIs(20.0 - i, "line");
  }
  std::vector<unsigned> order;
  for (Status::IntfsViolatingTrafficThresholdMap::IteratorConst at(
           unit->intfsViolatingTrafficThresholdMap());
       at; at.advance()) {
    order.push_back(at->zelKey().second());
  }
  std::vector<unsigned> interfaces;
  std::vector<double> times;
  for (const Seen& one : writer.seenWorked()) {
    if (one.attr == Attr::history) {
      const std::uint64_t bits = std::uint64_t{number(one.payload)} << 32 | number(one.payload, 4);
      times.push_back(std::bit_cast<double>(bits));
    } else {
      ASSERT_EQ(one.attr, Attr::intfsViolatingTrafficThreshold);
      interfaces.push_back(number(one.payload, 4));
    }
  }
  EXPECT_EQ(interfaces, order); // hash order, which is that of the map
  ASSERT_EQ(times.size(), 20U);
  EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
}

TEST_F(FlowOutCollections, AStepWithoutRoomLeavesTheKeys) {
  writer.freeIs(0);
  unit->groupIs(key("peers"), true);
  unit->groupIs(key("others"), true);
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(Attr::group), Attr::group);
  EXPECT_EQ(dirty(), 2U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(Attr::group), 0);
  EXPECT_EQ(dirty(), 0U);
  EXPECT_EQ(writer.sent(), (Briefs{"260", "260"}));
}

TEST_F(FlowOutCollections, TheHandlerOfOneEntrySendsWhatItIsTold) {
  writer.adapter->zelHandleGroupSerializeSing(key("peers"), true, false);
  writer.adapter->zelHandleGroupSerializeSing(key("peers"), true, true);
  EXPECT_TRUE(writer.adapter->zelHandleHistorySerializeSing(1.0, "line", false));
  EXPECT_TRUE(writer.adapter->zelHandleHistorySerializeSing(1.0, "", true));
  EXPECT_EQ(writer.sent(), (Briefs{"260", "-260", "268", "-268"}));
  EXPECT_EQ(unit->groupMap().count(), 0U);
}

TEST_F(FlowOutCollections, TheGateOfAStepKeepsTheMarkOfTheEcho) {
  writer.adapter->flagsIs(Adapter::flagReactorActive, true);
  EXPECT_TRUE(writer.adapter->zelHandleGroupSerializeColl());
  EXPECT_TRUE(writer.has(Adapter::flagReactorActive));
  unit->groupIs(key("peers"), true);
  EXPECT_FALSE(writer.has(Adapter::flagReactorActive));
  EXPECT_THAT(writer.sent(), IsEmpty());
  writer.adapter->flagsIs(Adapter::flagSyncFanOut, true);
  EXPECT_FALSE(writer.adapter->zelHandleGroupSerializeColl());
  EXPECT_FALSE(writer.adapter->zelHandleHistorySerializeSing(1.0, "line", false));
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(FlowOutCollections, AKeyThatIsTooLongTakesTheConnectionDownAndNotTheMutator) {
  unit->groupIs(GroupKey(Group::groupTypeBgp, String8(std::string(16001, 'x'))), true);
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_FALSE(writer.connection->isUp());
  EXPECT_STREQ(writer.connection->failure().charPtr(),
               "group of System: string of 16001 bytes where at most 16000 are sent");
}

} // namespace
