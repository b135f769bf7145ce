// How entries whose value is a text are sent anew.

#include "HistoryOut.h"

#include <gmock/gmock.h>

namespace {

using namespace Wiretap;
using FlowOut = Zel::NboAttrLog::FlowOut;

struct HistoryWalks : HistoryOut {
  HistoryWalks() {
    for (const double time : {3.0, 1.0, 2.0}) {
      unit->historyIs(time, text(20000 + static_cast<unsigned>(time)));
    }
    writer.worked();
    writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Attr::history);
  }
  AttributeId run() { return writer.adapter->handleAttrFlowOut(Attr::history); }
  void roomFor(std::size_t bytes) { writer.freeIs(Out::maxRecordSize + 4096 + bytes); }
};

const Briefs restOfAll = {"269", "270", "271", "begin 272", "end 272", "273", "274"};

TEST_F(HistoryWalks, SendEntriesByAscendingTime) {
  const auto seen = writer.seenWorked();
  Briefs expected = {"begin 268", "268", "268", "268", "end 268"};
  expected.insert(expected.end(), restOfAll.begin(), restOfAll.end());
  EXPECT_EQ(briefs(seen), expected);
  for (std::size_t i = 1; i <= 3; ++i) {
    EXPECT_EQ(seen[i].payload.size(), 20000 + 12 + i);
  }
}

TEST_F(HistoryWalks, ThatStopKeepTheTimeOfTheNextEntry) {
  roomFor(20000);
  EXPECT_EQ(run(), Attr::history);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 268", "268"}));
  EXPECT_EQ(*static_cast<double*>(flow()->bookmark()), 2.0);
  unit->historyDel(2.0);
  unit->historyIs(2.5, "new");
  EXPECT_EQ(dirty(), 2U);
  Briefs expected = {"268", "268", "end 268", "-268"};
  expected.insert(expected.end(), restOfAll.begin(), restOfAll.end());
  EXPECT_EQ(writer.worked(), expected);
}

TEST_F(HistoryWalks, DeferTheirEndUntilTheTextOfTheLastEntryIsOut) {
  unit->historyIs(3.0, text(100000));
  roomFor(2 * 20100); // and for a first record of it, no more
  EXPECT_EQ(run(), Attr::history);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 268", "268", "268", "268+"}));
  EXPECT_TRUE(flow()->hasDataBit(FlowOut::dataBitEndDeferred));
  EXPECT_EQ(flow()->bookmark(), nullptr);
  EXPECT_EQ(dirty(), 1U);
  EXPECT_EQ(keyUnderWay(), 3.0);
  EXPECT_FALSE(isSynced());
  Briefs expected = {"268+", "268+", "268", "end 268"};
  expected.insert(expected.end(), restOfAll.begin(), restOfAll.end());
  EXPECT_EQ(writer.worked(), expected);
}

TEST_F(HistoryWalks, WhoseLastEntryChangesOnItsWayEndBehindTheNewerText) {
  unit->historyIs(3.0, text(100000));
  roomFor(2 * 20100 + 20000);
  run();
  writer.sent();
  ASSERT_TRUE(flow()->hasDataBit(FlowOut::dataBitEndDeferred));
  unit->historyIs(3.0, "newer");
  unit->historyIs(1.0, "first");
  const auto seen = writer.seenWorked();
  Briefs expected = {"abort 268", "268", "268", "end 268"};
  expected.insert(expected.end(), restOfAll.begin(), restOfAll.end());
  EXPECT_EQ(briefs(seen), expected);
  EXPECT_EQ(textOf(seen), "newerfirst");
}

TEST_F(HistoryWalks, WhoseLastEntryGoesOnItsWayEndToo) {
  unit->historyIs(3.0, text(100000));
  roomFor(2 * 20100 + 20000);
  run();
  writer.sent();
  ASSERT_TRUE(flow()->hasDataBit(FlowOut::dataBitEndDeferred));
  unit->historyDel(3.0);
  Briefs expected = {"abort 268", "-268", "end 268"};
  expected.insert(expected.end(), restOfAll.begin(), restOfAll.end());
  EXPECT_EQ(writer.worked(), expected);
  EXPECT_FALSE(flow());
}

TEST_F(HistoryWalks, OneThatIsNotTheLastHoldsTheWalkUp) {
  unit->historyIs(1.0, text(100000));
  roomFor(10000);
  EXPECT_EQ(run(), Attr::history);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 268", "268+"}));
  EXPECT_EQ(*static_cast<double*>(flow()->bookmark()), 2.0);
  EXPECT_EQ(keyUnderWay(), 1.0);
  EXPECT_FALSE(flow()->hasDataBit(FlowOut::dataBitEndDeferred));
  const auto seen = writer.seenWorked();
  Briefs expected = {"268+", "268+", "268", "268", "268", "end 268"};
  expected.insert(expected.end(), restOfAll.begin(), restOfAll.end());
  EXPECT_EQ(briefs(seen), expected);
}

} // namespace
