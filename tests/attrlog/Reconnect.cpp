// New connections between the same two programs: what is mirrored keeps its identity.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using Group::GroupKey;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Zel::Ptr;

GroupKey key(const char* name) { return {Group::groupTypeBgp, name}; }

struct Reconnect : testing::Test {
  Reconnect() {
    for (const char* const name : {"a", "b", "c"}) {
      const Ptr<Status> unit = dir->statusIs(name);
      unit->stateIs(active);
      unit->groupIs(key("kept"), true);
      unit->groupIs(key("gone"), true);
      unit->historyIs(1.0, "line");
    }
    connect();
    mirrors = pair->mirror<StatusDir>("units");
    for (const char* const name : {"a", "b", "c"}) {
      units.push_back(mirrors->status(name));
    }
  }
  void connect(unsigned flags = 0) {
    pair.emplace(flags, Zel::ConnectionLimits(), roots);
    pair->here->demuxer()->exportIs(dir);
    pair->settle();
  }
  void cut() { pair.reset(); }

  const Ptr<Zel::Dir> roots = Zel::makeObject<Zel::Dir>();
  const Ptr<StatusDir> dir = statusDirFactory("units");
  std::optional<Pair> pair;
  Ptr<StatusDir> mirrors;
  std::vector<Ptr<Status>> units;
};

TEST_F(Reconnect, WhatSurvivesIsTheSameAndNobodyHearsOfIt) {
  const auto ear = Wiretap::listen<Wiretap::Ear>(units[0]);
  const auto dirEar = Wiretap::listen<Wiretap::DirEar>(mirrors);
  const unsigned version = units[0]->versionCounter();
  cut();
  connect();
  EXPECT_TRUE(pair->mirror<StatusDir>("units") == mirrors);
  EXPECT_TRUE(mirrors->status("a") == units[0]);
  EXPECT_TRUE(mirrors->status("b") == units[1]);
  EXPECT_THAT(ear->heard, IsEmpty());
  EXPECT_THAT(dirEar->heard, IsEmpty());
  EXPECT_EQ(units[0]->versionCounter(), version);
}

TEST_F(Reconnect, NotifieesHearOnlyWhatChangedMeanwhile) {
  cut();
  const Ptr<Status> unit = dir->status("a");
  unit->stateIs(underMaintenance);
  unit->reasonIs(srcCli);
  unit->reasonIs(srcUnknown);
  unit->groupDel(key("gone"));
  unit->groupIs(key("new"), true);
  unit->historyIs(1.0, "other");
  unit->historyIs(2.0, "line");
  const auto ear = Wiretap::listen<Wiretap::Ear>(units[0]);
  const auto other = Wiretap::listen<Wiretap::Ear>(units[1]);
  connect();
  EXPECT_THAT(ear->heard,
              UnorderedElementsAre("state", "group new", "group gone", "history 1", "history 2"));
  EXPECT_THAT(other->heard, IsEmpty());
  EXPECT_EQ(units[0]->state(), underMaintenance);
  EXPECT_EQ(units[0]->groupMap().count(), 2U);
  EXPECT_TRUE(units[0]->group(key("new")));
}

TEST_F(Reconnect, MembersThatHaveGoneGoAndNewOnesCome) {
  const auto ear = Wiretap::listen<Wiretap::DirEar>(mirrors);
  cut();
  dir->statusDel("b");
  dir->statusIs("d")->genIdIs(4);
  connect();
  EXPECT_THAT(ear->heard, UnorderedElementsAre("b", "d"));
  EXPECT_FALSE(mirrors->status("b"));
  EXPECT_EQ(mirrors->status("d")->genId(), 4U);
  EXPECT_TRUE(mirrors->status("a") == units[0]);
  EXPECT_TRUE(mirrors->status("c") == units[2]);
}

TEST_F(Reconnect, OneThatWasMadeAnewUnderItsNameIsTheSameThere) {
  cut();
  dir->statusDel("b");
  dir->statusIs("b")->genIdIs(4);
  connect();
  EXPECT_TRUE(mirrors->status("b") == units[1]);
  EXPECT_EQ(units[1]->genId(), 4U);
  EXPECT_EQ(units[1]->state(), init);
  EXPECT_EQ(units[1]->groupMap().count() + units[1]->historyMap().count(), 0U);
}

TEST_F(Reconnect, BetweenConnectionsAMirrorIsAnEntityLikeAnyOther) {
  cut();
  units[0]->stateIs(failedExit);
  mirrors->statusIs("mine")->genIdIs(1);
  connect();
  EXPECT_EQ(units[0]->state(), active);
  EXPECT_FALSE(mirrors->status("mine"));
  EXPECT_EQ(dir->status("a")->state(), active);
}

TEST_F(Reconnect, ACutInTheMiddleOfAResyncLeavesNothingBehind) {
  for (int i = 0; i < 1000; ++i) {
    dir->status("a")->historyIs(i, Zel::String8(std::string(500, 'x')));
  }
  pair->settle();
  for (std::size_t bytes = 1000; bytes < 500000; bytes = bytes * 3 / 2) {
    cut();
    pair.emplace(0U, Zel::ConnectionLimits(), roots);
    pair->here->demuxer()->exportIs(dir);
    for (std::size_t left = bytes; left != 0;) {
      pair->here->service();
      const std::size_t moved = Pair::move(*pair->here, *pair->there, left);
      pair->there->service();
      left -= moved;
      ASSERT_NE(moved, 0U);
    }
  }
  cut();
  const auto ear = Wiretap::listen<Wiretap::Ear>(units[0]);
  connect();
  EXPECT_THAT(ear->heard, IsEmpty());
  EXPECT_EQ(units[0]->historyMap().count(), 1000U);
  EXPECT_EQ(units[0]->groupMap().count(), 2U);
  for (Status::HistoryMap::IteratorConst at(units[0]->historyMap()); at; at.advance()) {
    EXPECT_FALSE(at->zelMarkedForDeletion());
  }
}

TEST_F(Reconnect, ACutEndsTheAdaptersAndWhatTheyOwe) {
  const auto here = pair->here;
  Wiretap::fill(*here, 0);
  dir->status("a")->stateIs(init);
  dir->statusIs("d");
  dir->statusDel("b");
  EXPECT_EQ(here->demuxer()->scheduled(), 2U);
  here->close("cut");
  EXPECT_EQ(here->demuxer()->adapters(), 0U);
  EXPECT_EQ(here->demuxer()->scheduled() + here->demuxer()->parked(), 0U);
  EXPECT_FALSE(dir->zelNboAttrLogSa(here->out()));
  EXPECT_STREQ(here->failure().charPtr(), "cut");
  dir->status("a")->stateIs(active);
  EXPECT_TRUE(here->pendingOutput().empty());
}

} // namespace
