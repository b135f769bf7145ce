// Markers around a collection that is sent anew, and what the reading end does at each.

#include "Ear.h"
#include "Log.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using Group::GroupKey;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr unsigned begin = Adapter::attrTransactionBegin;
constexpr unsigned abort = Adapter::attrTransactionAbort;
constexpr unsigned end = Adapter::attrTransactionEnd;

struct Transactions : testing::Test {
  static GroupKey key(const char* name) { return {Group::groupTypeBgp, name}; }
  static std::string group(const char* name, bool value) {
    return letter(Reader<Status>::id, Attr::group, [&](Out& out) {
      Zel::encode(key(name), out);
      out.put8(value ? 1 : 0);
    });
  }
  void mark(AttributeId attr, unsigned type) { reader.feed(marker(reader.id, attr, type)); }
  bool isMarked(const char* name) const {
    return unit->groupMap()[key(name)]->zelMarkedForDeletion();
  }

  Reader<Status> reader;
  const Ptr<Status> unit = reader.entity;
  Ptr<Ear> ear;
  Transactions() {
    for (const char* const name : {"a", "b", "c"}) {
      unit->groupIs(key(name), true);
      unit->historyIs(name[0], "line");
      unit->intfsViolatingTrafficThresholdIs(
          Vexil::IntfId(0x01010000, static_cast<std::uint32_t>(name[0])), true);
    }
    reader.sent();
    ear = listen<Ear>(unit);
  }
};

TEST_F(Transactions, OfOneResync) {
  mark(Attr::group, begin);
  ASSERT_NE(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.flowIn()->aid(), Attr::group);
  EXPECT_TRUE(reader.flowIn()->isTransaction());
  EXPECT_TRUE(reader.adapter->handlingFlowInFor(Attr::group));
  EXPECT_TRUE(isMarked("a") && isMarked("b") && isMarked("c"));
  reader.feed(group("b", true) + group("d", false));
  EXPECT_FALSE(isMarked("b"));
  EXPECT_TRUE(isMarked("a") && isMarked("c"));
  reader.feed(letter(reader.id, -Attr::group, [](Out& out) { Zel::encode(key("c"), out); }));
  EXPECT_EQ(unit->groupMap().count(), 3U);
  mark(Attr::group, end);
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_FALSE(reader.adapter->handlingFlowInFor(Attr::group));
  EXPECT_EQ(unit->groupMap().count(), 2U);
  EXPECT_TRUE(unit->group(key("b")));
  EXPECT_NE(unit->groupMap()[key("d")], nullptr);
  EXPECT_THAT(ear->heard, ElementsAre("group d", "group c", "group a"));
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST_F(Transactions, WithoutARecordBetweenDeleteEveryEntry) {
  mark(Attr::group, begin);
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 0U);
  EXPECT_THAT(ear->heard, UnorderedElementsAre("group a", "group b", "group c"));
  mark(Attr::history, begin);
  mark(Attr::history, end);
  EXPECT_EQ(unit->historyMap().count(), 0U);
  EXPECT_EQ(unit->intfsViolatingTrafficThresholdMap().count(), 3U);
  EXPECT_THAT(reader.sent(), IsEmpty()); // a sweep writes no deletions
  EXPECT_FALSE(reader.adapter->hasFlag(Adapter::flagReactorActive));
}

TEST_F(Transactions, AbortOfACollectionLeavesTheMarks) {
  mark(Attr::group, begin);
  mark(Attr::group, abort);
  EXPECT_TRUE(isMarked("a") && isMarked("b") && isMarked("c"));
  EXPECT_NE(reader.flowIn(), nullptr);
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 0U);
}

TEST_F(Transactions, ASecondBeginMarksAgain) {
  mark(Attr::group, begin);
  reader.feed(group("a", true));
  mark(Attr::group, begin);
  EXPECT_TRUE(isMarked("a") && isMarked("b") && isMarked("c"));
  EXPECT_EQ(reader.flowIn()->aid(), Attr::group);
  reader.feed(group("b", true));
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_NE(unit->groupMap()[key("b")], nullptr);
}

TEST_F(Transactions, AnEndWithoutABeginSweepsWhatIsMarked) {
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 3U);
  unit->groupMap()[key("b")]->zelMarkedForDeletionIs(true);
  ASSERT_EQ(reader.flowIn(), nullptr);
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 2U);
  EXPECT_EQ(unit->groupMap()[key("b")], nullptr);
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST_F(Transactions, WhileSyncModesAreHandedRoundABeginMakesNoFlowIn) {
  reader.adapter->flagsIs(Adapter::flagSyncFanOut, true);
  reader.adapter->handleAttrTransaction(Attr::group, Adapter::attrTransactionBegin, 0);
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_TRUE(isMarked("a") && isMarked("b") && isMarked("c"));
  reader.adapter->flagsIs(Adapter::flagSyncFanOut, false);
}

TEST_F(Transactions, LocalChangesMeanwhileStayHere) {
  mark(Attr::group, begin);
  unit->groupIs(key("mine"), true);
  unit->historyIs(5.0, "mine");
  EXPECT_EQ(reader.sent(), Briefs{"268"});
  mark(Attr::group, end);
  EXPECT_TRUE(unit->group(key("mine"))); // it came after the marks
}

TEST_F(Transactions, OfAnAttributeThatIsNoneOrPlainChangeNothing) {
  for (const AttributeId attr : {258, 262, 266, 275, -260, 1}) {
    mark(attr, begin);
    mark(attr, abort);
    mark(attr, end);
  }
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_EQ(unit->groupMap().count(), 3U);
  EXPECT_THAT(ear->heard, IsEmpty());
  mark(Attr::group, 3);
  EXPECT_EQ(reader.counts().badValues, 1U);
  EXPECT_EQ(reader.failure(), "");
}

TEST_F(Transactions, ASweepGoesOnWhereANotifieeChangesTheCollection) {
  mark(Attr::group, begin);
  reader.feed(group("a", true));
  ear->onHeard = [&](const std::string& word) {
    if (word == "group b" || word == "group c") {
      unit->groupDel(key("a"));
      unit->groupIs(key("x"), true);
    }
  };
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_NE(unit->groupMap()[key("x")], nullptr);
}

TEST_F(Transactions, WhoMayNotWriteMayNotSweepEither) {
  reader.adapter->flagsIs(Adapter::flagRemoteReadOnly, true);
  mark(Attr::group, begin);
  EXPECT_FALSE(isMarked("a"));
  unit->groupMap()[key("b")]->zelMarkedForDeletionIs(true);
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 3U);
  EXPECT_EQ(reader.counts().refused, 2U);
}

TEST_F(Transactions, SyncModesDriveTheSameOnAllCollectionsWhileARecordIsApplied) {
  reader.adapter->syncModeIs(Adapter::syncModeResync);
  EXPECT_FALSE(isMarked("a")); // no record is being applied
  reader.adapter->flagsIs(Adapter::flagReactorActive, true);
  reader.adapter->syncModeIs(Adapter::syncModeResync);
  EXPECT_TRUE(isMarked("a"));
  EXPECT_TRUE(unit->historyMap()['b']->zelMarkedForDeletion());
  unit->groupMap()[key("b")]->zelMarkedForDeletionIs(false);
  reader.adapter->flagsIs(Adapter::flagReactorActive, true);
  reader.adapter->syncModeIs(Adapter::syncModeSynced);
  reader.adapter->flagsIs(Adapter::flagReactorActive, false);
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_EQ(reader.adapter->syncMode(), Adapter::syncModeSynced);
}

// Members.

struct TransactionsOfMembers : testing::Test {
  static std::string member(const char* name, EntityId id) {
    return letter(
        Reader<StatusDir>::id, 258,
        [&](Out& out) {
          out.putString(name);
          out.putEntityId(id);
        },
        Zel::NboAttrLog::childRecordTag);
  }
  TransactionsOfMembers() { reader.feed(member("a", {4, 0}) + member("b", {6, 0})); }
  bool isMarked(const char* name) const {
    return reader.adapter->statusNboAttrLogAdapter(dir->status(name))
        ->hasFlag(Adapter::flagChildPending);
  }
  void mark(unsigned type) { reader.feed(marker(reader.id, 258, type)); }

  Reader<StatusDir> reader;
  const Ptr<StatusDir> dir = reader.entity;
};

TEST_F(TransactionsOfMembers, MarkAdaptersAndSweepWhatWasNotAnnounced) {
  const auto kept = dir->status("b");
  mark(begin);
  EXPECT_TRUE(isMarked("a") && isMarked("b"));
  EXPECT_FALSE(dir->status("a")->zelMarkedForDeletion());
  reader.feed(member("b", {6, 0}) + member("c", {8, 0}));
  EXPECT_FALSE(isMarked("b") || isMarked("c"));
  mark(end);
  EXPECT_FALSE(dir->status("a"));
  EXPECT_TRUE(dir->status("b") == kept);
  EXPECT_TRUE(dir->status("c"));
  EXPECT_EQ(reader.connection->demuxer()->adapters(), 3U);
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST_F(TransactionsOfMembers, AMarkedMemberIsMuteUntilItIsAnnounced) {
  mark(begin);
  dir->status("b")->genIdIs(5);
  EXPECT_THAT(reader.sent(), IsEmpty());
  reader.feed(member("b", {6, 0}));
  dir->status("b")->genIdIs(6);
  EXPECT_EQ(reader.sent(), Briefs{"274"});
}

TEST_F(TransactionsOfMembers, OneThatTheConnectionDoesNotKnowIsDeletedAtTheEnd) {
  dir->newStatus("unknown");
  mark(begin);
  EXPECT_TRUE(dir->status("unknown"));
  reader.feed(member("a", {4, 0}));
  mark(end);
  EXPECT_FALSE(dir->status("unknown"));
  EXPECT_FALSE(dir->status("b"));
  EXPECT_TRUE(dir->status("a"));
}

TEST_F(TransactionsOfMembers, AnAbortChangesNothing) {
  mark(begin);
  mark(abort);
  EXPECT_TRUE(isMarked("a") && isMarked("b"));
  EXPECT_EQ(dir->statusMap().count(), 2U);
}

} // namespace
