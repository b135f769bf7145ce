// Entries whose value is a text: when they are begun, how they go on, and what becomes of them if
// they change on their way.

#include "HistoryOut.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using testing::IsEmpty;

using History = HistoryOut;

TEST_F(History, AnEntryIsKeyAndChunkAndItsDeletionTheKeyAlone) {
  unit->historyIs(1.5, "line");
  unit->historyDel(1.5);
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), (Briefs{"268", "-268"}));
  EXPECT_EQ(hex(seen[0].payload), "3ff8000000000000000000046c696e65");
  EXPECT_EQ(hex(seen[1].payload), "3ff8000000000000");
  EXPECT_EQ(seen[1].bytes.size(), 36U);
}

TEST_F(History, AnEmptyTextIsAnEmptyChunk) {
  unit->historyIs(1.5, "");
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"268"});
  EXPECT_EQ(hex(seen[0].payload), "3ff800000000000000000000");
}

// Without a FlowOut.

TEST_F(History, IsBegunInAGoodDealOfRoom) {
  writer.freeIs(49152);
  unit->historyIs(1.0, "line");
  EXPECT_FALSE(flow());
  EXPECT_EQ(writer.sent(), Briefs{"268"});
}

TEST_F(History, WithOneByteLessItWaitsWithKeyAndPosition) {
  writer.freeIs(49151);
  unit->historyIs(1.0, "line");
  ASSERT_TRUE(flow());
  EXPECT_EQ(flow()->attrId(), Attr::history);
  EXPECT_EQ(flow()->outstandingKeys(), 1U);
  EXPECT_EQ(dirty(), 1U);
  EXPECT_EQ(keyUnderWay(), 1.0);
  EXPECT_EQ(place(), 0);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.worked(), Briefs{"268"});
  EXPECT_FALSE(flow());
}

TEST_F(History, AMarkedEntryThatChangesWithRoomGoesOnceAndAtOnce) {
  flowIs();
  writer.freeIs(0);
  unit->historyIs(1.0, "line");
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty()); // but from here on there is room
  unit->historyIs(1.0, "other");
  EXPECT_EQ(dirty(), 0U);
  EXPECT_EQ(textOf(writer.seen()), "other");
  EXPECT_THAT(writer.worked(), IsEmpty());
}

TEST_F(History, ADeletionAsksForItsOwnBytesBesides) {
  unit->historyIs(1.0, "line");
  unit->historyIs(2.0, "line");
  writer.sent();
  writer.freeIs(49152 + 37);
  unit->historyDel(1.0);
  EXPECT_FALSE(flow());
  EXPECT_EQ(writer.sent(), Briefs{"-268"});
  writer.freeIs(49152 + 36);
  unit->historyDel(2.0);
  ASSERT_TRUE(flow());
  EXPECT_EQ(dirty(), 1U);
  EXPECT_EQ(flow()->valueIterKey(), nullptr);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.worked(), Briefs{"-268"});
}

TEST_F(History, ALongEntryIsBegunAndEachRecordNamesTheKey) {
  unit->historyIs(1.5, text(100000));
  auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"268+"});
  EXPECT_EQ(place(), 32727);
  EXPECT_EQ(seen[0].bytes.size(), 32767U);
  for (const Seen& one : writer.seenWorked()) {
    seen.push_back(one);
  }
  EXPECT_EQ(briefs(seen), (Briefs{"268+", "268+", "268+", "268"}));
  for (const Seen& one : seen) {
    EXPECT_EQ(hex(one.payload.substr(0, 8)), "3ff8000000000000");
  }
  EXPECT_TRUE(textOf(seen) == text(100000).view());
  EXPECT_FALSE(flow());
}

TEST_F(History, InARunWithoutAFlowOutADeletionIsWrittenWithoutRoom) {
  unit->historyIs(1.0, "line");
  writer.sent();
  writer.freeIs(100);
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, true);
  unit->historyDel(1.0);
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, false);
  EXPECT_FALSE(flow());
  EXPECT_EQ(writer.sent(), Briefs{"-268"});
}

// Beside a FlowOut.

TEST_F(History, BesideAFlowOutAnEntryGoesOutInItsBytesAndAGoodDealMore) {
  for (const bool fits : {false, true}) {
    flowIs();
    writer.freeIs(49152 + 41 + 4 - (fits ? 0 : 1));
    unit->historyIs(fits ? 2.0 : 1.0, "line");
    EXPECT_EQ(dirty(), fits ? 0U : 1U);
    EXPECT_EQ(writer.sent(), fits ? Briefs{"268"} : Briefs{});
    writer.worked();
  }
}

TEST_F(History, BesideAFlowOutADeletionGoesOutInItsBytesAndAGoodDealMore) {
  unit->historyIs(1.0, "line");
  unit->historyIs(2.0, "line");
  for (const bool fits : {false, true}) {
    flowIs();
    writer.freeIs(49152 + 37 - (fits ? 0 : 1));
    unit->historyDel(fits ? 2.0 : 1.0);
    EXPECT_EQ(dirty(), fits ? 0U : 1U);
    writer.worked();
  }
}

TEST_F(History, BesideAFlowOutWhatTakesMoreThanOneRecordIsMarked) {
  flowIs();
  unit->historyIs(1.0, text(32768 - 41));
  EXPECT_EQ(dirty(), 0U);
  EXPECT_EQ(writer.sent(), Briefs{"268"});
  unit->historyIs(2.0, text(32768 - 40));
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.worked(), (Briefs{"268+", "268"}));
}

TEST_F(History, BeforeItsWalkIsDoneAnEntryIsMarked) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Attr::history);
  unit->historyIs(1.0, "line");
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(History, AnEntryThatChangesOnItsWayIsGivenUpAndBegunAnew) {
  unit->historyIs(1.0, text(100000));
  EXPECT_EQ(writer.sent(), Briefs{"268+"});
  unit->historyIs(1.0, text(50000, 'y'));
  EXPECT_NE(flow()->pendingAbort()[Attr::history], nullptr);
  EXPECT_EQ(keyUnderWay(), 1.0);
  EXPECT_EQ(place(), 0);
  EXPECT_THAT(writer.sent(), IsEmpty());
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"abort 268", "268+", "268"}));
  EXPECT_TRUE(textOf(seen) == text(50000, 'y').view());
}

TEST_F(History, AnEntryThatGoesOnItsWayIsGivenUpAndDeleted) {
  unit->historyIs(1.0, text(100000));
  EXPECT_EQ(writer.sent(), Briefs{"268+"});
  unit->historyDel(1.0);
  EXPECT_EQ(flow()->valueIterKey(), nullptr);
  EXPECT_EQ(flow()->valueIter(), nullptr);
  EXPECT_EQ(writer.worked(), (Briefs{"abort 268", "-268"}));
  EXPECT_FALSE(flow());
}

TEST_F(History, AnotherEntryWaitsBehindTheOneOnItsWay) {
  unit->historyIs(2.0, text(100000));
  writer.sent();
  unit->historyIs(1.0, text(40000, 'y'));
  unit->historyIs(3.0, text(40000, 'z'));
  EXPECT_EQ(dirty(), 3U);
  EXPECT_EQ(keyUnderWay(), 2.0);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"268+", "268+", "268", "268+", "268", "268+", "268"}));
  EXPECT_EQ(hex(seen[3].payload.substr(0, 8)), "3ff0000000000000");
  EXPECT_EQ(hex(seen[5].payload.substr(0, 8)), "4008000000000000");
  EXPECT_FALSE(flow());
}

} // namespace
