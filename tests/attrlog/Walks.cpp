// How a collection is sent anew, entry by entry, and what happens to it on the way.

#include "Log.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using testing::IsEmpty;
using Vexil::IntfId;

/// Interfaces in the order of the map.
std::vector<IntfId> inOrder(const Status& unit) {
  std::vector<IntfId> keys;
  for (Status::IntfsViolatingTrafficThresholdMap::IteratorConst at(
           unit.intfsViolatingTrafficThresholdMap());
       at; at.advance()) {
    keys.push_back(at->zelKey());
  }
  return keys;
}

IntfId keyOf(const Seen& seen) { return {number(seen.payload), number(seen.payload, 4)}; }

/// Beside any record, markers have to fit.
constexpr std::size_t roomForStep = Out::maxRecordSize + 4096;

/// Sizes of free space around those at which something is decided.
std::vector<std::size_t> borders() {
  std::vector<std::size_t> sizes;
  for (const std::size_t at : {Out::maxRecordSize, roomForStep}) {
    for (std::size_t size = at - 1; size < at + 130; ++size) {
      sizes.push_back(size);
    }
  }
  return sizes;
}

struct Walks : testing::Test {
  static constexpr AttributeId attr = Attr::intfsViolatingTrafficThreshold;

  explicit Walks(unsigned interfaces = 5) {
    for (unsigned i = 0; i < interfaces; ++i) {
      unit->intfsViolatingTrafficThresholdIs(key(i), true);
    }
    writer.worked();
    keys = inOrder(*unit);
  }
  static IntfId key(unsigned i) { return {0x01020000, i}; }
  auto flow() const { return writer.adapter->flowOut(); }
  /// Everything from the collection on is owed, with room for `records` of its entries.
  void begin(std::size_t records) {
    writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, attr);
    roomFor(records);
    EXPECT_EQ(writer.adapter->handleAttrFlowOut(attr), attr);
  }
  /// Until 1 byte too little for another step is left after `records` of 37 bytes and a marker.
  void roomFor(std::size_t records) {
    writer.freeIs(roomForStep + (flow()->bookmark() == nullptr ? 40 : 0) + 37 * records - 1);
  }
  IntfId bookmark() const { return *static_cast<IntfId*>(flow()->bookmark()); }
  std::size_t dirty() const {
    return flow()->zelIsIntfsViolatingTrafficThresholdDirtyMap().count();
  }
  /// The keys of the records for the collection.
  static std::vector<IntfId> keysOf(const std::vector<Seen>& seen, AttributeId of) {
    std::vector<IntfId> result;
    for (const Seen& one : seen) {
      if (one.attr == of) {
        result.push_back(keyOf(one));
      }
    }
    return result;
  }

  Writer<Status> writer{statusFactory("System")};
  const Ptr<Status> unit = writer.entity;
  std::vector<IntfId> keys;
};

TEST_F(Walks, SendEntriesInTheOrderOfTheMapBetweenMarkers) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, attr);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen),
            (Briefs{"begin 272", "272", "272", "272", "272", "272", "end 272", "273", "274"}));
  EXPECT_EQ(keysOf(seen, attr), keys);
  EXPECT_EQ(hex(seen[1].payload.substr(8)), "01");
}

TEST_F(Walks, OfAnEmptyCollectionIsTwoMarkersAndDone) {
  unit->intfsViolatingTrafficThresholdDelAll();
  writer.worked();
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, attr);
  flow()->attrIdIs(attr);
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, true);
  EXPECT_TRUE(writer.adapter->zelHandleIntfsViolatingTrafficThresholdSerializeColl());
  writer.adapter->flagsIs(Adapter::flagScheduledFlowOut, false);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 272", "end 272"}));
  EXPECT_NE(flow()->zelDirtyBitSet0().word() & 0x2000, 0U);
}

TEST_F(Walks, ThatStopKeepTheKeyOfTheNextEntry) {
  begin(2);
  const auto seen = writer.seen();
  EXPECT_EQ(briefs(seen), (Briefs{"begin 272", "272", "272"}));
  ASSERT_NE(flow()->bookmark(), nullptr);
  EXPECT_EQ(bookmark(), keys[2]);
  EXPECT_EQ(flow()->zelDirtyBitSet0().word() & 0x2000, 0U);
  EXPECT_EQ(keysOf(writer.seenWorked(), attr), std::vector<IntfId>(keys.begin() + 2, keys.end()));
}

TEST_F(Walks, ThatStopWithOneEntryLeftHaveNotEnded) {
  begin(4);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 272", "272", "272", "272", "272"}));
  EXPECT_EQ(bookmark(), keys[4]);
  EXPECT_EQ(writer.worked(), (Briefs{"272", "end 272", "273", "274"}));
}

TEST_F(Walks, ThatStopAtTheLastEntryHaveEnded) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, attr);
  roomFor(5);
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(attr), 273);
  EXPECT_EQ(flow()->bookmark(), nullptr);
  EXPECT_NE(flow()->zelDirtyBitSet0().word() & 0x2000, 0U);
  EXPECT_EQ(writer.sent(), (Briefs{"begin 272", "272", "272", "272", "272", "272", "end 272"}));
}

TEST_F(Walks, ThatStopAtTheLastEntryWithAKeyMarkedAreNotDone) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, attr);
  roomFor(5);
  flow()->zelIsIntfsViolatingTrafficThresholdDirtyIs(key(77), true);
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(attr), attr);
  EXPECT_NE(flow()->zelDirtyBitSet0().word() & 0x2000, 0U);
  EXPECT_EQ(writer.sent().back(), "end 272");
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"-272", "273", "274"}));
  EXPECT_EQ(keyOf(seen[0]), key(77));
}

TEST_F(Walks, GoOnBehindABookmarkThatHasGone) {
  begin(2);
  writer.seen();
  unit->intfsViolatingTrafficThresholdDel(keys[2]);
  EXPECT_EQ(dirty(), 1U);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"272", "272", "end 272", "-272", "273", "274"}));
  EXPECT_EQ(keysOf(seen, attr), (std::vector<IntfId>{keys[3], keys[4]}));
  EXPECT_EQ(keysOf(seen, -attr), std::vector<IntfId>{keys[2]});
}

TEST_F(Walks, TakeAKeyThatChangedAheadOfThemFromTheTable) {
  begin(2);
  writer.seen();
  unit->intfsViolatingTrafficThresholdIs(keys[4], false);
  EXPECT_EQ(dirty(), 1U);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"272", "272", "272", "end 272", "273", "274"}));
  EXPECT_EQ(keyOf(seen[2]), keys[4]);
  EXPECT_EQ(hex(seen[2].payload.substr(8)), "00");
}

TEST_F(Walks, LeaveAKeyThatChangedBehindThemToTheTable) {
  begin(2);
  writer.seen();
  unit->intfsViolatingTrafficThresholdIs(keys[0], false);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"272", "272", "272", "end 272", "272", "273", "274"}));
  EXPECT_EQ(keyOf(seen[4]), keys[0]);
  EXPECT_EQ(hex(seen[4].payload.substr(8)), "00");
}

TEST_F(Walks, LeaveAKeyThatWentBehindThemToTheTable) {
  begin(2);
  writer.seen();
  unit->intfsViolatingTrafficThresholdDel(keys[0]);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"272", "272", "272", "end 272", "-272", "273", "274"}));
  EXPECT_EQ(seen[4].payload.size(), 8U);
  EXPECT_EQ(keyOf(seen[4]), keys[0]);
}

TEST_F(Walks, SendAKeyThatCameMeanwhileOnce) {
  begin(2);
  writer.seen();
  for (unsigned i = 100; i < 110; ++i) {
    unit->intfsViolatingTrafficThresholdIs(key(i), true);
  }
  EXPECT_EQ(dirty(), 10U);
  auto sent = keysOf(writer.seenWorked(), attr);
  EXPECT_EQ(sent.size(), 13U);
  std::sort(sent.begin(), sent.end());
  EXPECT_EQ(std::unique(sent.begin(), sent.end()), sent.end());
}

TEST_F(Walks, LoseNothingWhereTheirFirstMarkerTakesTheLastRoom) {
  for (const std::size_t free : borders()) {
    writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, attr);
    writer.freeIs(free);
    writer.connection->service();
    const auto sent = keysOf(writer.seenWorked(), attr);
    ASSERT_EQ(sent, keys) << free;
  }
}

TEST_F(Walks, LoseNothingWhereAnAbortTakesTheLastRoom) {
  for (const std::size_t free : borders()) {
    begin(2);
    writer.seen();
    flow()->pendingAbortIs(Attr::profileName, true);
    writer.freeIs(free);
    writer.connection->service();
    ASSERT_EQ(keysOf(writer.seenWorked(), attr), std::vector<IntfId>(keys.begin() + 2, keys.end()))
        << free;
  }
}

TEST_F(Walks, NeverMakeTheRingGrow) {
  const std::size_t capacity = writer.connection->out()->capacity();
  unit->historyIs(1.0, String8(std::string(32727, 'x'))); // one record, the largest there is
  writer.worked();
  for (const std::size_t free : borders()) {
    writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Attr::history);
    writer.freeIs(free);
    writer.connection->service();
    ASSERT_EQ(writer.connection->out()->capacity(), capacity) << free;
    writer.worked();
  }
}

TEST_F(Walks, OutsideOfAFlowSendEveryEntryWithoutMarkers) {
  EXPECT_TRUE(writer.adapter->zelHandleIntfsViolatingTrafficThresholdSerializeColl());
  const auto seen = writer.seen();
  EXPECT_EQ(briefs(seen), Briefs(5, "272"));
  EXPECT_EQ(keysOf(seen, attr), keys);
}

TEST_F(Walks, AStepCalledByAnybodyButTheFlowLeavesTheKeysAlone) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Zel::attrIdFlowEnd);
  flow()->zelIsIntfsViolatingTrafficThresholdDirtyIs(keys[0], true);
  flow()->attrIdIs(Attr::state);
  EXPECT_TRUE(writer.adapter->zelHandleIntfsViolatingTrafficThresholdSerializeColl());
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(Walks, ThatAreGivenUpFreeTheirBookmarkAndBeginAnew) {
  begin(2);
  writer.seen();
  ASSERT_NE(flow()->bookmark(), nullptr);
  writer.adapter->doThis();
  EXPECT_EQ(flow()->bookmark(), nullptr);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(keysOf(seen, attr), keys);
  const Briefs all = briefs(seen);
  EXPECT_EQ(std::count(all.begin(), all.end(), "begin 272"), 1);
  EXPECT_EQ(std::count(all.begin(), all.end(), "end 272"), 1);
}

} // namespace
