#include "History.h"

#include <model/Unit.h>

#include <gtest/gtest.h>

#include <set>

// What seeds and bytes draw, and what is looked for on the way.

namespace {

using Histories::Branch;
using Histories::Doing;
using Histories::History;
using Histories::Reached;
using Histories::Sometimes;
using Histories::Swarm;
using Simulation::Link;
using Simulation::Random;
using Simulation::World;
using End = Zel::Connection::End;

TEST(Swarms, AreTheSameForTheSameSeedAndDifferOtherwise) {
  std::set<std::string> told;
  for (std::uint64_t seed = 1; seed <= 200; ++seed) {
    Random random(seed);
    Random again(seed);
    const std::string names = Swarm(random).told();
    EXPECT_EQ(names, Swarm(again).told());
    told.insert(names);
  }
  EXPECT_GT(told.size(), 180U);
}

TEST(Swarms, HaveEachDoingAndGoWithoutEach) {
  for (std::size_t i = 0; i < Histories::doings; ++i) {
    unsigned with = 0;
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
      Random random(seed);
      with += Swarm(random).may(static_cast<Doing>(i)) ? 1 : 0;
    }
    EXPECT_GT(with, 20U) << i;
    EXPECT_LT(with, 190U) << i;
  }
}

TEST(Branches, StandInTheirOrderUnderDifferentNames) {
  std::set<std::string_view> names;
  for (std::size_t i = 0; i < Histories::branches; ++i) {
    EXPECT_EQ(Histories::branchRows()[i].branch, static_cast<Branch>(i));
    names.insert(Histories::branchRows()[i].name);
  }
  EXPECT_EQ(names.size(), Histories::branches);
}

TEST(Branches, AreMissedWhereEnoughHistoriesCameToNone) {
  const auto& row = Histories::branchRows()[0];
  Sometimes sometimes;
  EXPECT_TRUE(sometimes.missed(0).empty());
  const auto isMissed = [&](std::uint64_t histories) {
    const auto missed = sometimes.missed(histories);
    return std::find(missed.begin(), missed.end(), &row) != missed.end();
  };
  EXPECT_FALSE(isMissed(row.enough - 1));
  EXPECT_TRUE(isMissed(row.enough));
  Reached reached;
  reached.add(row.branch);
  sometimes.add(reached);
  EXPECT_EQ(sometimes.times(row.branch), 1U);
  EXPECT_FALSE(isMissed(row.enough));
  Sometimes twice = sometimes;
  twice += sometimes;
  EXPECT_EQ(twice.times(row.branch), 2U);
}

/// Counts records of either direction.
struct Counting final : Link::Watcher {
  void sent(End from, std::span<const std::uint8_t> bytes) override {
    ways[from == End::second].send(bytes, [this](const Histories::WireRecord&) { ++sentRecords; });
  }
  void arrived(End to, std::span<const std::uint8_t> bytes) override {
    ways[to == End::first].arrive(bytes, [this](const Histories::WireRecord& record) {
      ++arrivedRecords;
      members += record.isMember ? 1 : 0;
      texts += record.textFollows ? 1 : 0;
    });
  }
  Histories::WireWay ways[2];
  std::uint64_t sentRecords = 0;
  std::uint64_t arrivedRecords = 0;
  unsigned members = 0;
  unsigned texts = 0;
};

TEST(Wire, IsReadRecordByRecordInPiecesOfAnySize) {
  for (const std::size_t pieces : {std::size_t{1}, std::size_t{61}, std::size_t{1} << 16}) {
    const auto units = Maintenance::Unit::statusDirFactory("units");
    units->statusIs("System")->maintEnterInstanceIs(Zel::String8(std::string(70000, 'x')));
    const auto mirrors = Zel::makeObject<Zel::Dir>();
    Counting counting;
    World world(3);
    Link& link = world.linkIs({.pieces = pieces, .inFlight = 1 << 10, .haste = 8}, [&](End end) {
      const bool isMirror = end == End::second;
      auto made = Zel::makeObject<Zel::Connection>(
          end, "peer", Zel::ConnectionLimits(),
          isMirror
              ? Zel::Ptr<Zel::NboAttrLog::MountPolicy>(Zel::makeObject<Zel::NboAttrLog::DirMounts>(
                    mirrors, Zel::StreamAdapter::Zel_BitSet()))
              : Zel::Ptr<Zel::NboAttrLog::MountPolicy>());
      if (!isMirror) {
        made->demuxer()->exportIs(units);
      }
      return made;
    });
    link.watcherIs(&counting);
    ASSERT_TRUE(world.settle());
    const std::uint64_t written = link.connection(End::first)->out()->recordsWritten();
    EXPECT_GT(written, 20U);
    EXPECT_EQ(counting.sentRecords, written);
    EXPECT_EQ(counting.arrivedRecords, written);
    EXPECT_EQ(counting.members, 1U);
    EXPECT_EQ(counting.texts, 2U);
    EXPECT_EQ(counting.ways[0].bytesArrived(), link.bytesCarried());
    EXPECT_FALSE(counting.ways[0].isInRecord());
    EXPECT_TRUE(counting.ways[0].arrived().texts.empty());
    EXPECT_TRUE(counting.ways[0].arrived().collections.empty());
    link.watcherIs(nullptr);
  }
}

TEST(HistoryOfBytes, IsTheSameForTheSameBytesAndEndsWithThem) {
  const auto run = [](const std::vector<std::uint8_t>& bytes) {
    std::string told;
    History history =
        Histories::historyOf(bytes, [&](const std::string& what) { told += what + "\n"; });
    history.run();
    return told;
  };
  EXPECT_NE(run({}), "");
  std::vector<std::uint8_t> bytes;
  Random random(5);
  for (unsigned i = 0; i < 600; ++i) {
    bytes.push_back(static_cast<std::uint8_t>(random.below(256)));
  }
  const std::string told = run(bytes);
  EXPECT_EQ(run(bytes), told);
  EXPECT_LT(std::count(told.begin(), told.end(), '\n'), 600);
  EXPECT_GT(std::count(told.begin(), told.end(), '\n'), 5);
}

} // namespace
