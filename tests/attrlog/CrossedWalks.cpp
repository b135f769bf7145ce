// Two ends that walk the same collection at once, and what a program writes between the markers of
// the other end's walk.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include <Zel/StateDigest>
#include <model/Unit.h>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using Group::GroupKey;
using testing::ElementsAre;
using testing::IsEmpty;
using Vexil::IntfId;

constexpr unsigned begin = Adapter::attrTransactionBegin;
constexpr unsigned end = Adapter::attrTransactionEnd;

/// Two ends whose directories hold a unit that has much in each collection.
struct CrossedWalks : testing::Test {
  static constexpr unsigned many = 1500; // records of which no run holds half

  CrossedWalks() {
    for (unsigned i = 0; i < many; ++i) {
      unit->intfsViolatingTrafficThresholdIs(IntfId(0x01020000, i), true);
      unit->historyIs(i, "a line of history");
      dir->statusIs(String8("unit " + std::to_string(i)));
    }
    pair.here->demuxer()->exportIs(dir);
    pair.settle();
    mirrors = pair.mirror<StatusDir>("units");
    mirror = mirrors->status("System");
  }
  ~CrossedWalks() override = default;

  static std::size_t owed(const Connection& at) {
    return at.demuxer()->scheduled() + at.demuxer()->parked();
  }
  /// Both ends walk an entity. Each begins before it has anything of the other's.
  void cross(const Ptr<Zel::Entity>& exported, const Ptr<Zel::Entity>& mirrored, unsigned runs) {
    const Ptr<Adapter> here = Pair::adapterOf(exported, pair.here);
    const Ptr<Adapter> there = Pair::adapterOf(mirrored, pair.there);
    here->doThis();
    there->doThis();
    for (unsigned run = 0; run < runs; ++run) {
      pair.here->service(1);
      pair.there->service(1);
    }
    ASSERT_TRUE(here->flowOut() && there->flowOut());
    ASSERT_NE(here->flowOut()->bookmark(), nullptr);
    ASSERT_NE(there->flowOut()->bookmark(), nullptr);
    pair.settle();
    EXPECT_EQ(owed(*pair.here), 0U);
    EXPECT_EQ(owed(*pair.there), 0U);
    EXPECT_STREQ(pair.here->failure().charPtr(), "");
    EXPECT_STREQ(pair.there->failure().charPtr(), "");
  }
  void expectEqual() {
    EXPECT_EQ(Zel::stateDigest(*dir), Zel::stateDigest(*mirrors));
    EXPECT_EQ(unit->intfsViolatingTrafficThresholdMap().count(), many);
    EXPECT_EQ(unit->historyMap().count(), many);
    EXPECT_EQ(dir->statusMap().count(), many + 1);
  }

  Pair pair;
  const Ptr<StatusDir> dir = statusDirFactory("units");
  const Ptr<Status> unit = dir->statusIs("System");
  Ptr<StatusDir> mirrors;
  Ptr<Status> mirror;
};

TEST_F(CrossedWalks, OfEntriesComeToTheirEnd) {
  cross(unit, mirror, 1); // both are in the history
  expectEqual();
}

TEST_F(CrossedWalks, OfMembersComeToTheirEnd) {
  cross(dir, mirrors, 1);
  expectEqual();
}

TEST_F(CrossedWalks, OfDifferentCollectionsComeToTheirEnd) {
  const Ptr<Adapter> there = Pair::adapterOf(mirror, pair.there);
  pair.there->demuxer()->createFlowOut(there, {}, false, Attr::intfsViolatingTrafficThreshold);
  Pair::adapterOf(unit, pair.here)->doThis();
  pair.there->service(1);
  pair.here->service(1);
  pair.settle();
  EXPECT_EQ(owed(*pair.here) + owed(*pair.there), 0U);
  expectEqual();
}

TEST_F(CrossedWalks, ComeToTheirEndThoughTheExportersBeginsAnew) {
  const Ptr<Adapter> here = Pair::adapterOf(dir, pair.here);
  here->doThis();
  pair.here->service(1);
  here->doThis(); // the begin marker is on its way all the same
  Pair::adapterOf(mirrors, pair.there)->doThis();
  pair.there->service(1);
  Pair::move(*pair.there, *pair.here);
  pair.settle();
  EXPECT_EQ(owed(*pair.here) + owed(*pair.there), 0U);
  expectEqual();
}

TEST_F(CrossedWalks, WhatTheExporterHasDeletedMeanwhileStaysSo) {
  Pair::adapterOf(mirrors, pair.there)->doThis();
  std::string walk;
  for (bool more = true; more;) {
    more = pair.there->service();
    const std::string bytes = taken(*pair.there);
    more = more || !bytes.empty();
    walk += bytes;
  }
  dir->statusDel("System"); // and `unit` holds it still
  dir->statusDel("unit 1");
  feed(*pair.here, walk);
  pair.settle();
  EXPECT_STREQ(pair.here->failure().charPtr(), "");
  EXPECT_EQ(pair.here->demuxer()->counts().refused, 2U);
  EXPECT_EQ(dir->statusMap().count(), many - 1);
  EXPECT_EQ(Zel::stateDigest(*dir), Zel::stateDigest(*mirrors));
}

/// An exporter in the midst of the walk of a collection, with nobody at the other end.
struct WalksAhead : testing::Test {
  static IntfId key(unsigned i) { return {0x01020000, i}; }
  static constexpr AttributeId attr = Attr::intfsViolatingTrafficThreshold;

  WalksAhead() {
    for (unsigned i = 0; i < 1500; ++i) {
      unit->intfsViolatingTrafficThresholdIs(key(i), true);
    }
    writer.worked();
    writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, attr);
  }
  void mark(unsigned type) {
    feed(*writer.connection, marker(writer.adapter->entityId(), attr, type));
  }
  void put(unsigned i) {
    feed(*writer.connection, letter(writer.adapter->entityId(), attr, [&](Out& out) {
      Zel::encode(key(i), out);
      out.put8(1);
    }));
  }

  Writer<Status> writer{statusFactory("System")};
  const Ptr<Status> unit = writer.entity;
};

TEST_F(WalksAhead, TakeTheOtherWithoutItsMarkers) {
  writer.connection->service(1);
  Briefs sent = writer.sent();
  ASSERT_EQ(sent[0], "begin 272");
  mark(begin);
  EXPECT_FALSE(writer.adapter->handlingFlowInFor(attr));
  put(9000);
  mark(end);
  EXPECT_EQ(unit->intfsViolatingTrafficThresholdMap().count(), 1501U);
  EXPECT_TRUE(unit->intfsViolatingTrafficThreshold(key(9000)));
  EXPECT_EQ(writer.connection->demuxer()->flowIn(writer.adapter->entityId()), nullptr);
  sent = writer.worked();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "begin 272"), 0);
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "end 272"), 1);
}

TEST_F(WalksAhead, TakeItsEndMarkerSoTooThoughTheirOwnIsOver) {
  writer.connection->service(1);
  mark(begin);
  writer.worked();
  EXPECT_FALSE(writer.adapter->flowOut());
  put(9000);
  unit->intfsViolatingTrafficThresholdIs(key(9001), true); // is not held back either
  EXPECT_EQ(writer.sent(), Briefs{"272"});
  mark(end);
  EXPECT_EQ(unit->intfsViolatingTrafficThresholdMap().count(), 1502U);
  mark(begin); // this one has crossed nothing
  EXPECT_TRUE(writer.adapter->handlingFlowInFor(attr));
  put(3);
  mark(end);
  EXPECT_EQ(unit->intfsViolatingTrafficThresholdMap().count(), 1U);
}

TEST_F(WalksAhead, AreThoseThatHaveBegun) {
  mark(begin);
  EXPECT_TRUE(writer.adapter->handlingFlowInFor(attr));
  EXPECT_THAT(writer.worked(), testing::Not(testing::Contains("begin 272")));
  for (unsigned i = 0; i < 1500; ++i) {
    put(i);
  }
  mark(end);
  const Briefs sent = writer.worked();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "begin 272"), 1);
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "272"), 1500);
}

TEST(CrossedWalk, OfAMirrorWaitsForTheExportersEndMarker) {
  Reader<Status> reader;
  const Ptr<Status> unit = reader.entity;
  for (unsigned i = 0; i < 1500; ++i) {
    unit->intfsViolatingTrafficThresholdIs(WalksAhead::key(i), true);
  }
  reader.connection->service();
  reader.sent();
  reader.connection->demuxer()->createFlowOut(reader.adapter, {}, false, WalksAhead::attr);
  reader.connection->service(1);
  EXPECT_EQ(reader.sent()[0], "begin 272");
  reader.feed(marker(reader.id, WalksAhead::attr, begin));
  EXPECT_TRUE(reader.adapter->handlingFlowInFor(WalksAhead::attr));
  reader.connection->service();
  EXPECT_THAT(reader.sent(), IsEmpty());
  reader.feed(marker(reader.id, WalksAhead::attr, end));
  EXPECT_EQ(reader.sent(), (Briefs{"end 272", "273", "274"}));
  EXPECT_EQ(unit->intfsViolatingTrafficThresholdMap().count(), 0U);
}

/// A mirror between the markers of its exporter's walk.
struct WrittenBetween : testing::Test {
  static GroupKey key(const char* name) { return {Group::groupTypeBgp, name}; }
  static std::string group(const char* name) {
    return letter(Reader<Status>::id, Attr::group, [&](Out& out) {
      Zel::encode(key(name), out);
      out.put8(1);
    });
  }
  WrittenBetween() {
    for (const char* const name : {"a", "b"}) {
      unit->groupIs(key(name), true);
      unit->historyIs(name[0], "line");
    }
    reader.sent();
  }
  void mark(AttributeId attr, unsigned type) { reader.feed(marker(reader.id, attr, type)); }
  /// Between the markers nothing goes out, behind them what is yielded.
  Briefs behind(AttributeId attr) {
    reader.connection->service();
    EXPECT_THAT(reader.sent(), IsEmpty());
    mark(attr, end);
    EXPECT_EQ(reader.connection->demuxer()->parked(), 0U);
    Briefs sent = reader.sent();
    for (bool more = true; more;) {
      more = reader.connection->service();
      for (std::string& one : reader.sent()) {
        sent.push_back(std::move(one));
        more = true;
      }
    }
    return sent;
  }

  Reader<Status> reader;
  const Ptr<Status> unit = reader.entity;
};

TEST_F(WrittenBetween, AnEntryGoesBehindTheEndMarker) {
  mark(Attr::group, begin);
  unit->groupIs(key("mine"), true);
  reader.feed(group("a") + group("b"));
  EXPECT_EQ(behind(Attr::group), Briefs{"260"});
  EXPECT_TRUE(unit->group(key("mine")));
}

TEST_F(WrittenBetween, AnEntryThatWasThereIsNotSwept) {
  mark(Attr::group, begin);
  unit->groupIs(key("a"), false);
  EXPECT_EQ(behind(Attr::group), Briefs{"260"});
  ASSERT_NE(unit->groupMap()[key("a")], nullptr);
  EXPECT_FALSE(unit->groupMap()[key("a")]->zelMarkedForDeletion());
  EXPECT_EQ(unit->groupMap().count(), 1U);
  mark(Attr::group, begin); // what has been sent is swept as all else is
  mark(Attr::group, end);
  EXPECT_EQ(unit->groupMap().count(), 0U);
}

TEST_F(WrittenBetween, ADeletionGoesBehindTheEndMarker) {
  mark(Attr::group, begin);
  reader.feed(group("a") + group("b"));
  unit->groupDel(key("a"));
  EXPECT_EQ(behind(Attr::group), Briefs{"-260"});
}

TEST_F(WrittenBetween, WhatWasPendingAtTheBeginMarkerIsNotSwept) {
  fill(*reader.connection, 0);
  unit->groupIs(key("mine"), true);
  reader.sent();
  mark(Attr::group, begin);
  EXPECT_EQ(behind(Attr::group), Briefs{"260"});
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_TRUE(unit->group(key("mine")));
}

TEST_F(WrittenBetween, ALineOfTextIsTheSame) {
  mark(Attr::history, begin);
  unit->historyIs('a', "other");
  unit->historyIs(5.0, String8(std::string(100000, 'x')));
  unit->historyDel('b');
  const Briefs sent = behind(Attr::history);
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "-268"), 1);
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "268"), 2);
  EXPECT_EQ(unit->historyMap().count(), 2U);
  EXPECT_EQ(unit->history('a'), "other");
}

TEST_F(WrittenBetween, ALineWhoseTextWasUnderWayBeginsAnew) {
  unit->historyIs('a', String8(std::string(400000, 'x')));
  const Briefs first = briefs(records(*reader.connection));
  EXPECT_EQ(first.back(), "268+");
  mark(Attr::history, begin);

  unit->historyIs('a', "newer");
  reader.connection->service();
  EXPECT_EQ(reader.sent(), Briefs{"abort 268"});
  mark(Attr::history, end);
  const auto seen = records(*reader.connection);
  ASSERT_EQ(briefs(seen), Briefs{"268"});
  EXPECT_THAT(seen[0].payload, testing::EndsWith("newer"));
  EXPECT_EQ(unit->history('a'), "newer");
}

TEST_F(WrittenBetween, ATextGoesBehindTheEndMarkerToo) {
  mark(Attr::profileName, begin);
  unit->profileNameIs("mine");
  EXPECT_EQ(behind(Attr::profileName), Briefs{"261"});
}

TEST_F(WrittenBetween, WhatAnswersTheSweepGoesBehindTheEndMarker) {
  const auto ear = Zel::makeObject<Ear>();
  ear->isRegisteredNotifieeIs(true);
  ear->notifierIs(unit);
  ear->onHeard = [&](const std::string& word) {
    if (word == "group a" || word == "group b") {
      unit->groupIs(key("answer"), true);
    }
  };
  mark(Attr::group, begin);
  mark(Attr::group, end);
  EXPECT_EQ(reader.sent(), Briefs{"260"});
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_TRUE(unit->group(key("answer")));
}

TEST_F(WrittenBetween, OfAMutedAdapterStaysHere) {
  reader.adapter->flagsIs(Adapter::flagMuted, true);
  mark(Attr::group, begin);
  unit->groupIs(key("mine"), true);
  mark(Attr::group, end);
  reader.adapter->flagsIs(Adapter::flagMuted, false);
  reader.connection->service();
  EXPECT_THAT(reader.sent(), IsEmpty());
  EXPECT_FALSE(reader.adapter->flowOut());
}

/// The same of members.
struct MadeBetween : testing::Test {
  static std::string member(const char* name, EntityId id) {
    return letter(
        Reader<StatusDir>::id, 258,
        [&](Out& out) {
          out.putString(name);
          out.putEntityId(id);
        },
        Zel::NboAttrLog::childRecordTag);
  }
  MadeBetween() {
    reader.feed(member("a", {4, 0}) + member("b", {6, 0}));
    reader.sent();
  }
  void mark(unsigned type) { reader.feed(marker(reader.id, 258, type)); }
  Briefs own() {
    reader.connection->service();
    return briefs(records(*reader.connection), reader.id);
  }

  Reader<StatusDir> reader;
  const Ptr<StatusDir> dir = reader.entity;
};

TEST_F(MadeBetween, AMemberIsAnnouncedBehindTheEndMarkerAndNotSwept) {
  mark(begin);
  dir->statusIs("mine")->genIdIs(7);
  reader.feed(member("a", {4, 0}) + member("b", {6, 0}));
  EXPECT_THAT(own(), IsEmpty());
  mark(end);
  EXPECT_EQ(own(), Briefs{"258"});
  ASSERT_TRUE(dir->status("mine"));
  EXPECT_EQ(dir->statusMap().count(), 3U);
}

TEST_F(MadeBetween, OneThatWasPendingAtTheBeginMarkerIsNotSwept) {
  fill(*reader.connection, 0);
  dir->statusIs("mine");
  reader.sent();
  mark(begin);
  EXPECT_THAT(own(), IsEmpty());
  mark(end);
  EXPECT_EQ(own(), Briefs{"258"});
  EXPECT_TRUE(dir->status("mine"));
  EXPECT_EQ(dir->statusMap().count(), 1U);
}

TEST_F(MadeBetween, ADeletionGoesBehindTheEndMarker) {
  mark(begin);
  reader.feed(member("a", {4, 0}) + member("b", {6, 0}));
  dir->statusDel("a");
  EXPECT_THAT(own(), IsEmpty());
  mark(end);
  EXPECT_EQ(own(), Briefs{"-258"});
  EXPECT_FALSE(dir->status("a"));
}

TEST_F(MadeBetween, ADeletedMemberThatTheWalkBringsBackIsThere) {
  mark(begin);
  dir->statusDel("a");
  reader.feed(member("a", {4, 0}) + member("b", {6, 0}));
  mark(end);
  EXPECT_THAT(own(), IsEmpty());
  EXPECT_TRUE(dir->status("a"));
  EXPECT_EQ(dir->statusMap().count(), 2U);
}

TEST_F(MadeBetween, AMemberMadeAgainThatTheWalkBringsIsTheSameOne) {
  mark(begin);
  dir->statusDel("a");
  const Ptr<Status> again = dir->statusIs("a");
  reader.feed(member("a", {4, 0}) + member("b", {6, 0}));
  mark(end);
  EXPECT_EQ(own(), Briefs{"258"}); // no deletion, behind which the peer would know its id no more
  EXPECT_TRUE(dir->status("a") == again);
  EXPECT_EQ(Pair::adapterOf(again, reader.connection)->entityId(), (EntityId{4, 0}));
}

TEST_F(MadeBetween, ComesToTheOtherEnd) {
  Pair pair;
  const auto units = statusDirFactory("units");
  for (unsigned i = 0; i < 1000; ++i) {
    units->statusIs(String8("unit " + std::to_string(i)));
  }
  pair.here->demuxer()->exportIs(units);
  pair.settle();
  const auto mirrors = pair.mirror<StatusDir>("units");
  Pair::adapterOf(units, pair.here)->doThis();
  pair.here->service(1);
  Pair::move(*pair.here, *pair.there);
  pair.there->service();
  ASSERT_TRUE(Pair::adapterOf(mirrors, pair.there)->hasFlag(Adapter::flagFlowIn));
  mirrors->statusIs("mine")->groupIs(Group::GroupKey(Group::groupTypeBgp, "g"), true);
  pair.settle();
  ASSERT_TRUE(units->status("mine"));
  EXPECT_EQ(units->status("mine")->groupMap().count(), 1U);
  EXPECT_EQ(Zel::stateDigest(*units), Zel::stateDigest(*mirrors));
}

} // namespace
