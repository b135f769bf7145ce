#include "Two.h"

#include <gtest/gtest.h>

// A mirror that is a mirror's source in turn: the one in the middle refuses what the last one makes
// while it is not live itself.

namespace {

using namespace Maintenance::Unit;
using Zel::Mount;
using Zel::Ptr;

class GuardedChain : public testing::Test, public TwoUnits {
protected:
  GuardedChain() { units->statusIs("a"); }

  void lastJoins() {
    last.exports->entityIs(mirror(), Zel::accessReadWrite);
    last.mounts->mountIs("units", Zel::accessReadWrite);
    last.settle();
    ASSERT_EQ(last.mounts->mount("units")->state(), Mount::live);
  }
  Ptr<StatusDir> lastMirror() const {
    return Zel::ptrCast<StatusDir>(last.mounts->mount("units")->entity());
  }
  void lastTells() {
    last.serve(*last.client);
    while (Two::move(*last.client, *last.server) != 0) {
      last.serve(*last.server);
    }
  }
  /// The last one makes a unit that the first has too, and writes to it when the walk that answers
  /// the refusal is on its way.
  void lastWrites() {
    const Ptr<Status> made = lastMirror()->statusIs("b");
    lastTells();
    ASSERT_TRUE(mirror("b"));
    EXPECT_GE(last.server->connection()->demuxer()->counts().refused, 1U);
    made->groupIs(peers, true);
    lastTells();
    EXPECT_TRUE(mirror("b")->group(peers));
    EXPECT_GE(last.server->connection()->demuxer()->counts().refused, 2U);
    last.settleSlowly([] {});
  }
  bool areEqual() const {
    return isEqual() && Zel::stateDigest(*mirror()) == Zel::stateDigest(*lastMirror());
  }

  const Group::GroupKey peers{Group::groupTypeBgp, "peers"};
  Two last;
};

TEST_F(GuardedChain, WhatIsWrittenToAMemberMadeInAStaleMirrorComesBackToItsWriter) {
  share();
  settle();
  lastJoins();
  cut();
  units->statusIs("b")->groupIs(peers, true);
  lastWrites();
  connect();
  settle();
  last.settle();
  EXPECT_TRUE(areEqual());
}

TEST_F(GuardedChain, WhatIsWrittenToAMemberMadeInAMirrorThatIsNotLiveYetComesBackToo) {
  share();
  unsigned records = 0;
  settleSlowly([&] {
    if (++records == 12) {
      ASSERT_NE(mount()->state(), Mount::live);
      lastJoins();
      units->statusIs("b")->groupIs(peers, true);
      lastWrites();
    }
  });
  last.settle();
  ASSERT_GE(records, 12U);
  EXPECT_EQ(mount()->state(), Mount::live);
  EXPECT_TRUE(areEqual());
}

TEST_F(GuardedChain, WhatIsWrittenToAMemberThatARepairHasNotReachedComesBackToItsWriter) {
  share();
  settle();
  lastJoins();
  const Ptr<Status> a = lastMirror()->status("a");
  a->genIdIs(5);
  lastTells(); // a walk is on its way back
  EXPECT_EQ(last.server->connection()->demuxer()->counts().refused, 1U);
  settle();
  // The first has the group too, and tells of it when it walks the unit.
  const auto first = units->status("a")->zelNboAttrLogSa(
      Ptr<const Zel::NboAttrLog::Out>(server->connection()->out()));
  first->flagsIs(Zel::StreamAdapter::flagMuted, true);
  units->status("a")->groupIs(peers, true);
  first->flagsIs(Zel::StreamAdapter::flagMuted, false);
  EXPECT_THROW(mirror()->statusIs("nobody"), Zel::ReadOnlyException);
  const auto middle =
      mirror("a")->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(client->connection()->out()));
  bool written = false;
  settleSlowly([&] {
    if (!written && middle->hasFlag(Zel::StreamAdapter::flagChildPending)) {
      written = true;
      a->groupIs(peers, true);
      lastTells();
      EXPECT_TRUE(mirror("a")->group(peers));
      EXPECT_EQ(last.server->connection()->demuxer()->counts().refused, 2U);
    }
  });
  EXPECT_TRUE(written);
  settle();
  last.settle();
  EXPECT_TRUE(areEqual());
}

TEST_F(GuardedChain, AMemberThatIsMadeWhileARepairIsOnItsWayStandsAtBothEndsOrAtNone) {
  share();
  settle();
  lastJoins();
  cut();
  lastMirror()->statusIs("x");
  lastTells(); // a walk without "y" is on its way back
  units->statusIs("y")->genIdIs(3);
  lastMirror()->statusIs("y");
  lastTells();
  EXPECT_EQ(last.server->connection()->demuxer()->counts().refused, 2U);
  last.settle();
  EXPECT_STREQ(last.client->failure().charPtr(), "");
  EXPECT_STREQ(last.server->failure().charPtr(), "");
  EXPECT_EQ(static_cast<bool>(lastMirror()->status("y")), static_cast<bool>(mirror("y")));
  connect();
  settle();
  last.settle();
  EXPECT_STREQ(last.client->failure().charPtr(), "");
  EXPECT_TRUE(areEqual());
}

TEST_F(GuardedChain, AMemberThatIsTakenOutWhileARepairTellsOfItEndsNoSession) {
  share();
  settle();
  lastJoins();
  cut();
  lastMirror()->statusIs("x");
  lastTells();
  last.settle();
  lastMirror()->statusIs("y");
  lastTells(); // the walk tells of "x" too
  lastMirror()->statusDel("x");
  last.settle();
  EXPECT_STREQ(last.client->failure().charPtr(), "");
  connect();
  settle();
  last.settle();
  EXPECT_STREQ(last.client->failure().charPtr(), "");
  EXPECT_TRUE(areEqual());
}

TEST_F(GuardedChain, WhatIsWrittenWhileTheRepairIsOnItsWayIsNotTakenForRepaired) {
  share(Zel::accessReadWrite);
  settle();
  lastJoins();
  cut();
  const Ptr<Status> a = lastMirror()->status("a");
  a->genIdIs(5);
  lastTells();
  last.settle();
  connect();
  settle(); // what the first has is on its way to the last
  EXPECT_EQ(mount()->state(), Mount::live);
  EXPECT_EQ(mirror("a")->genId(), 0U);
  EXPECT_EQ(a->genId(), 5U);
  a->genIdIs(6);
  last.settle();
  settle();
  last.settle();
  EXPECT_TRUE(areEqual());
}

TEST_F(GuardedChain, ASweepThatIsRefusedIsOverAllTheSame) {
  for (const char* const name : {"x", "y", "z"}) {
    units->status("a")->groupIs(Group::GroupKey(Group::groupTypeBgp, name), true);
  }
  units->statusIs("b");
  units->statusIs("c");
  share();
  settle();
  lastJoins();
  cut();
  // The last one walks a unit and a directory that it has emptied without a word.
  const Ptr<const Zel::NboAttrLog::Out> out(last.client->connection()->out());
  const Ptr<Status> a = lastMirror()->status("a");
  const auto ofUnits = lastMirror()->zelNboAttrLogSa(out);
  const auto ofUnit = a->zelNboAttrLogSa(out);
  const auto mutedIs = [&](bool muted) {
    ofUnits->flagsIs(Zel::StreamAdapter::flagMuted, muted);
    ofUnit->flagsIs(Zel::StreamAdapter::flagMuted, muted);
  };
  mutedIs(true);
  a->groupDelAll();
  lastMirror()->statusDel("b");
  lastMirror()->statusDel("c");
  mutedIs(false);
  ofUnit->doThis();
  ofUnits->doThis();
  lastTells();
  Zel::NboAttrLog::Demuxer& demuxer = *last.server->connection()->demuxer();
  EXPECT_EQ(demuxer.counts().refused, 2U);
  EXPECT_EQ(mirror("a")->groupMap().count(), 0U);
  EXPECT_EQ(mirror()->statusMap().count(), 1U);
  EXPECT_EQ(demuxer.flowIn(ofUnit->entityId()), nullptr);
  EXPECT_EQ(demuxer.flowIn(ofUnits->entityId()), nullptr);
  connect();
  settle();
  last.settle();
  EXPECT_EQ(demuxer.parked(), 0U);
  EXPECT_TRUE(areEqual());
  EXPECT_EQ(lastMirror()->status("a")->groupMap().count(), 3U);
}

} // namespace
