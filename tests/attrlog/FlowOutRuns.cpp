// What a run of the flow-out does from each attribute on, and where it says to go on.

#include "Log.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using FlowOut = Zel::NboAttrLog::FlowOut;
using testing::IsEmpty;

struct FlowOutRuns : testing::Test {
  static constexpr AttributeId steps[] = {259, 260, 261, 262, 263, 264, 265, 267,
                                          268, 269, 270, 271, 272, 273, 274};

  /// What is owed from an attribute on.
  void owe(AttributeId start) {
    writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, start);
  }
  AttributeId run(AttributeId start) { return writer.adapter->handleAttrFlowOut(start); }
  auto flow() const { return writer.adapter->flowOut(); }

  Writer<Status> writer{statusFactory("System")};
  const Ptr<Status> unit = writer.entity;
};

const Briefs everything = {"259", "begin 260", "end 260",   "261",       "262",     "263",
                           "264", "265",       "267",       "begin 268", "end 268", "269",
                           "270", "271",       "begin 272", "end 272",   "273",     "274"};

TEST_F(FlowOutRuns, FromZeroEveryStepIsTaken) {
  owe(0);
  EXPECT_EQ(run(0), 0);
  EXPECT_EQ(writer.sent(), everything);
  EXPECT_FALSE(flow()->hasDirtyAttributes());
}

TEST_F(FlowOutRuns, BelowTheFirstAttributeIsAsFromZero) {
  owe(0);
  EXPECT_EQ(run(257), 0);
  EXPECT_EQ(writer.sent(), everything);
}

TEST_F(FlowOutRuns, WithRoomEveryStartEndsWithZero) {
  for (const AttributeId start : steps) {
    owe(start);
    EXPECT_EQ(run(start), 0) << start;
    EXPECT_FALSE(flow()->hasDirtyAttributes()) << start;
    const Briefs sent = writer.sent();
    EXPECT_EQ(sent.back(), "274") << start;
    EXPECT_EQ(sent.size(),
              everything.size() - static_cast<std::size_t>(
                                      std::find_if(everything.begin(), everything.end(),
                                                   [&](const std::string& one) {
                                                     return one.ends_with(std::to_string(start));
                                                   }) -
                                      everything.begin()))
        << start;
  }
}

TEST_F(FlowOutRuns, AnIdWithoutAStepEndsTheFlow) {
  owe(0);
  EXPECT_EQ(run(266), 0);
  EXPECT_EQ(run(275), 0);
  EXPECT_EQ(run(386), 0);
  EXPECT_EQ(run(Zel::attrIdFlowEnd), 0);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_TRUE(flow()->hasDirtyAttributes());
}

TEST_F(FlowOutRuns, WithoutAFlowOutAPlainStepDoesNothing) {
  EXPECT_EQ(run(273), 0);
  EXPECT_EQ(run(Attr::genId), 0);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_FALSE(writer.has(Adapter::flagScheduledFlowOut));
}

TEST_F(FlowOutRuns, ARunIsMarkedAndTheMarkIsPutBack) {
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, true);
  EXPECT_EQ(run(Attr::genId), 0);
  EXPECT_TRUE(writer.has(Adapter::flagScheduledFlowOut));
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, false);
  owe(Attr::genId);
  EXPECT_EQ(run(Attr::genId), 0);
  EXPECT_FALSE(writer.has(Adapter::flagScheduledFlowOut));
}

TEST_F(FlowOutRuns, ThatCannotGoOnEndsAtTheBorderOfAnAttribute) {
  unit->profileNameIs("fast");
  writer.sent();
  // A plain step yields the next, whatever is left; the last one yields 0.
  const std::vector<std::pair<AttributeId, AttributeId>> plain = {
      {259, 260}, {262, 263}, {263, 264}, {264, 265}, {265, 267},
      {267, 268}, {271, 272}, {273, 274}, {274, 0}};
  for (const auto& [start, next] : plain) {
    owe(start);
    writer.freeIs(5000);
    EXPECT_EQ(run(start), next) << start;
    EXPECT_TRUE(flow()->hasDirtyAttributes());
    EXPECT_THAT(writer.sent(), IsEmpty()) << start;
  }
  // A text that is not done yields itself.
  for (const AttributeId start : {261, 269, 270}) {
    owe(start);
    flow()->pendingAbort().emptyAllBuckets(); // of the text before
    writer.freeIs(5000);
    EXPECT_EQ(run(start), start);
    EXPECT_NE(flow()->valueIter(), nullptr) << start;
    EXPECT_THAT(writer.sent(), IsEmpty()) << start;
  }
}

TEST_F(FlowOutRuns, AStepThatIsDoneAsksWhetherAnythingIsLeft) {
  // An empty collection is done, with its two markers, where no record fits.
  owe(272);
  flow()->zelDirtyBitSet0().zelIsTotalIntfTrafficViolationsDirtyIs(false);
  flow()->zelDirtyBitSet0().zelIsGenIdDirtyIs(false);
  writer.freeIs(5000);
  EXPECT_EQ(run(272), 0);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 272", "end 272"}));
  owe(272);
  writer.freeIs(5000);
  EXPECT_EQ(run(272), 273);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 272", "end 272"}));
  // So does a text that is clean.
  owe(Zel::attrIdFlowEnd);
  writer.freeIs(5000);
  EXPECT_EQ(run(270), 0);
  flow()->zelDirtyBitSet0().zelIsStateDirtyIs(true);
  EXPECT_EQ(run(270), 271);
  EXPECT_EQ(run(271), 272);
  EXPECT_EQ(run(272), 273);
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(FlowOutRuns, ACleanStepWritesNothing) {
  owe(Zel::attrIdFlowEnd);
  EXPECT_FALSE(flow()->hasDirtyAttributes());
  EXPECT_EQ(run(0), 0);
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(FlowOutRuns, BeginWithTheAbortsThatAreOwed) {
  owe(Attr::genId);
  flow()->pendingAbortIs(Attr::history, true);
  flow()->pendingAbortIs(Attr::profileName, true);
  EXPECT_EQ(run(Attr::genId), 0);
  EXPECT_EQ(writer.sent(), (Briefs{"abort 268", "abort 261", "274"}));
  EXPECT_TRUE(flow()->pendingAbort().count() == 0);
}

TEST_F(FlowOutRuns, GoOnWhereTheLastOneEnded) {
  owe(0);
  writer.freeIs(40000); // which a first run leaves not enough of for long
  unit->profileNameIs(String8(std::string(20000, 'x')));
  writer.connection->service();
  const Briefs first = writer.sent();
  EXPECT_EQ(first, (Briefs{"259", "begin 260", "end 260", "261"}));
  EXPECT_EQ(flow()->attrId(), Attr::profileName);
  EXPECT_EQ(writer.worked(), Briefs(everything.begin() + 4, everything.end()));
  EXPECT_FALSE(flow());
}

TEST_F(FlowOutRuns, AFlowOutIsDroppedWhenNothingIsLeft) {
  owe(Attr::genId);
  EXPECT_EQ(writer.connection->demuxer()->scheduled(), 1U);
  EXPECT_FALSE(writer.has(Adapter::flagNoFlowOut));
  EXPECT_EQ(writer.worked(), Briefs{"274"});
  EXPECT_FALSE(flow());
  EXPECT_TRUE(writer.has(Adapter::flagNoFlowOut));
  EXPECT_EQ(writer.connection->demuxer()->scheduled(), 0U);
  EXPECT_EQ(writer.connection->demuxer()->parked(), 0U);
}

TEST_F(FlowOutRuns, OneThatCanDoNothingIsParkedUntilSomethingHappens) {
  writer.adapter->flagsIs(Adapter::flagMuted, true);
  owe(Attr::history);
  writer.connection->demuxer()->outputWrite(1000);
  Demuxer& demuxer = *writer.connection->demuxer();
  while (writer.connection->service()) {
  }
  EXPECT_EQ(demuxer.scheduled(), 0U);
  EXPECT_EQ(demuxer.parked(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  writer.adapter->flagsIs(Adapter::flagMuted, false);
  EXPECT_EQ(demuxer.parked(), 0U);
  // A text counted as done while the adapter was mute; a plain attribute keeps its mark.
  EXPECT_EQ(writer.worked(),
            (Briefs{"begin 268", "end 268", "271", "begin 272", "end 272", "273", "274"}));
  EXPECT_EQ(demuxer.parked(), 0U);
}

// One that waits for the peer.

TEST(FlowOutWaits, ForTheEndOfATransactionThatTheCollectionIsReceivedIn) {
  Reader<Status> reader;
  const Demuxer& demuxer = *reader.connection->demuxer();
  reader.feed(marker(reader.id, Attr::history, Adapter::attrTransactionBegin));
  reader.adapter->doThis();
  while (reader.connection->service()) {
  }
  EXPECT_EQ(demuxer.parked(), 1U);
  EXPECT_EQ(demuxer.scheduled(), 0U);
  reader.sent();
  reader.feed(marker(reader.id, Attr::history, Adapter::attrTransactionEnd));
  while (reader.connection->service()) {
  }
  EXPECT_THAT(reader.sent(), testing::IsSupersetOf({"begin 268", "end 268"}));
  EXPECT_EQ(demuxer.parked(), 0U);
  EXPECT_FALSE(reader.adapter->flowOut());
}

// Several that owe much.

TEST(FlowOutTurns, WhoOwesWritesHalfARecordsSizeAndGoesToTheEndOfTheQueue) {
  Writer<Status> writer(statusFactory("one"));
  const auto other = statusFactory("other");
  const auto second = writer.connection->demuxer()->exportIs(other);
  writer.worked();
  for (int i = 0; i < 200; ++i) {
    writer.entity->historyIs(i, String8(std::string(1000, 'x')));
    other->historyIs(i, String8(std::string(1000, 'x')));
  }
  writer.worked();
  writer.adapter->doThis();
  second->doThis();
  std::vector<std::pair<EntityId, std::size_t>> turns;
  for (const Seen& one : writer.seenWorked()) {
    if (turns.empty() || !(turns.back().first == one.entity)) {
      turns.emplace_back(one.entity, 0);
    }
    turns.back().second += one.bytes.size();
  }
  EXPECT_EQ(turns.size(), 26U);
  EXPECT_EQ(turns.front().first, writer.adapter->entityId());
  turns.resize(turns.size() - 2); // which had less left
  for (const auto& [entity, bytes] : turns) {
    EXPECT_GE(bytes, 16384U);
    EXPECT_LT(bytes, 16384U + 1040);
  }
}

} // namespace
