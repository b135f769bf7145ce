#include <simulation/World.h>

#include <Zel/Exception>
#include <Zel/Session>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Unit;
using Simulation::Link;
using Simulation::Random;
using Simulation::World;
using End = Zel::Connection::End;

/// A directory, its mirror, and the link between them.
class Linked : public testing::Test {
protected:
  Link& linkIs(World& world, Link::Traits traits) {
    return world.linkIs(traits, [this](End end) {
      const bool isMirror = end == End::second;
      const auto policy = isMirror ? Zel::makeObject<Zel::NboAttrLog::DirMounts>(
                                         mirrors_, Zel::StreamAdapter::Zel_BitSet())
                                   : Zel::Ptr<Zel::NboAttrLog::DirMounts>();
      auto made = Zel::makeObject<Zel::Connection>(end, "peer", Zel::ConnectionLimits(),
                                                   Zel::Ptr<Zel::NboAttrLog::MountPolicy>(policy));
      if (!isMirror) {
        made->demuxer()->exportIs(units_);
      }
      return made;
    });
  }

  Zel::Ptr<StatusDir> mirror() const { return Zel::ptrCast<StatusDir>(mirrors_->entity("units")); }

  const Zel::Ptr<StatusDir> units_ = statusDirFactory("units");
  const Zel::Ptr<Zel::Dir> mirrors_ = Zel::makeObject<Zel::Dir>();
};

TEST_F(Linked, OneByteAtATimeIsAsGoodAsAll) {
  World world(1);
  Link& link = linkIs(world, {.pieces = 1, .inFlight = 1, .haste = 8});
  units_->statusIs("System")->profileNameIs("fast");
  const Simulation::Time start = world.now();
  ASSERT_TRUE(world.settle());
  ASSERT_TRUE(mirror());
  EXPECT_EQ(mirror()->status("System")->profileName(), "fast");
  const std::uint64_t bytes = link.connection(End::first)->out()->bytesWritten();
  EXPECT_EQ(link.bytesCarried(), bytes);
  EXPECT_GE(world.now() - start, bytes);
}

TEST_F(Linked, AStallHoldsOneDirectionForItsTime) {
  World world(2);
  Link& link = linkIs(world, {});
  units_->statusIs("System");
  ASSERT_TRUE(world.settle());
  link.stall(End::second, 1000);
  units_->status("System")->genIdIs(7);
  mirror()->status("System")->totalIntfTrafficViolationsIs(3);
  world.run(999);
  EXPECT_EQ(mirror()->status("System")->genId(), 0U);
  EXPECT_EQ(units_->status("System")->totalIntfTrafficViolations(), 3U);
  ASSERT_TRUE(world.settle());
  EXPECT_EQ(mirror()->status("System")->genId(), 7U);
}

TEST_F(Linked, SettlingPassesOverTheTimeOfAStall) {
  World world(3);
  Link& link = linkIs(world, {});
  ASSERT_TRUE(world.settle());
  constexpr Simulation::Time year = Simulation::Time{1} << 45;
  link.stall(End::second, year);
  units_->statusIs("System");
  EXPECT_FALSE(world.settle(10));
  EXPECT_TRUE(world.settle(1000));
  EXPECT_GE(world.now(), year);
  EXPECT_TRUE(mirror()->status("System"));
}

TEST_F(Linked, ACutComesRightBehindAByte) {
  for (std::uint64_t bytes = 1; bytes < 400; ++bytes) {
    World world(bytes);
    Link& link = linkIs(world, {.pieces = 64, .inFlight = 64, .haste = 6});
    for (const char* const name : {"System", "Linecard1", "Linecard2"}) {
      units_->statusIs(name)->profileNameIs(name);
    }
    link.cutAfter(End::second, bytes);
    ASSERT_TRUE(world.settle());
    EXPECT_TRUE(link.isDown());
    EXPECT_EQ(link.cuts(), 1U);
    EXPECT_EQ(link.bytesCarried(), bytes);
    EXPECT_STREQ(link.failure().charPtr(), "");
    EXPECT_STREQ(link.connection(End::second)->failure().charPtr(), "link cut");
    link.reconnect();
    ASSERT_TRUE(world.settle());
    ASSERT_TRUE(mirror());
    EXPECT_EQ(mirror()->statusMap().count(), 3U);
    EXPECT_EQ(mirror()->status("Linecard2")->profileName(), "Linecard2");
  }
}

TEST_F(Linked, WhatIsInFlightAtACutArrivesInPart) {
  std::uint64_t whole = 0;
  std::uint64_t part = 0;
  for (std::uint64_t seed = 1; seed < 200; ++seed) {
    World world(seed);
    Link& link = linkIs(world, {.pieces = 1 << 10, .inFlight = 1 << 10, .haste = 4});
    units_->statusIs("System")->maintEnterInstanceIs(Zel::String8(std::string(2000, 'x')));
    world.run(4);
    link.cut(20);
    ASSERT_TRUE(world.settle());
    EXPECT_TRUE(link.isDown());
    const std::uint64_t sent = link.connection(End::first)->out()->bytesWritten();
    (link.bytesCarried() == sent ? whole : part) += 1;
    EXPECT_LE(link.bytesCarried(), sent);
  }
  EXPECT_GT(part, 100U);
  EXPECT_GT(whole, 0U);
}

TEST_F(Linked, ReconnectingNeedsBothEndsDown) {
  World world(5);
  Link& link = linkIs(world, {});
  EXPECT_THROW(link.reconnect(), Zel::InternalException);
  link.cut(1000);
  world.run(1);
  EXPECT_FALSE(link.isUp());
  EXPECT_FALSE(link.isDown());
  EXPECT_THROW(link.reconnect(), Zel::InternalException);
  ASSERT_TRUE(world.settle());
  const Zel::Ptr<Zel::Connection> former = link.connection(End::first);
  link.reconnect();
  EXPECT_NE(link.connection(End::first), former);
  EXPECT_TRUE(link.isUp());
}

TEST_F(Linked, AnEndThatGoesDownByItselfSaysWhy) {
  World world(6);
  Link& link = linkIs(world, {});
  ASSERT_TRUE(world.settle());
  link.connection(End::second)->fail("enough");
  ASSERT_TRUE(world.settle());
  EXPECT_TRUE(link.isDown());
  EXPECT_STREQ(link.failure().charPtr(), "enough");
  EXPECT_STREQ(link.connection(End::first)->failure().charPtr(), "link cut");
}

TEST_F(Linked, SessionsAreDrivenInTheirOwnWay) {
  World world(7);
  const auto exports = Zel::makeObject<Zel::Exports>();
  const auto mounts = Zel::makeObject<Zel::Mounts>(mirrors_);
  exports->entityIs(units_);
  const Zel::Ptr<Zel::Mount> mount = mounts->mountIs("units");
  Link& link = world.linkIs({}, [&](End end) {
    Zel::SessionOptions options;
    options.helloTime = 1e12;
    const auto session = Zel::makeObject<Zel::Session>(
        end, options, end == End::first ? exports : nullptr, end == End::second ? mounts : nullptr);
    return Link::Peer(session->connection(), [&world, session](std::size_t budget) {
      return session->service(static_cast<double>(world.now()), budget);
    });
  });
  units_->statusIs("System");
  ASSERT_TRUE(world.settle());
  EXPECT_EQ(mount->state(), Zel::Mount::live);
  EXPECT_TRUE(mirror()->status("System"));
  link.cut();
  ASSERT_TRUE(world.settle());
  EXPECT_EQ(mount->state(), Zel::Mount::stale); // the session has been told
  EXPECT_EQ(mount->reason(), "link cut");
  link.reconnect();
  ASSERT_TRUE(world.settle());
  EXPECT_EQ(mount->state(), Zel::Mount::live);
}

TEST_F(Linked, WhatIsWellHasNoStallAndNoCutAndMovesWholePieces) {
  World world(8);
  Link& link = linkIs(world, {.pieces = 1 << 10, .inFlight = 1 << 10, .haste = 1});
  units_->statusIs("System")->maintEnterInstanceIs(Zel::String8(std::string(20000, 'x')));
  link.stall(End::second, 100000);
  link.cutAfter(End::second, 5000);
  link.cut();
  link.healthyIs(true);
  ASSERT_TRUE(world.settle());
  EXPECT_LT(world.now(), 20000U / 1024 + 10);
  EXPECT_EQ(link.cuts(), 0U);
  ASSERT_TRUE(mirror());
  EXPECT_EQ(mirror()->status("System")->maintEnterInstance().length(), 20000U);
}

TEST_F(Linked, WhatIsWellHasHeardOfACut) {
  World world(9);
  Link& link = linkIs(world, {});
  ASSERT_TRUE(world.settle());
  link.cut(1000);
  world.run(1);
  ASSERT_FALSE(link.isDown());
  link.healthyIs(true);
  EXPECT_TRUE(link.isDown());
  link.reconnect();
  link.healthyIs(false);
  ASSERT_TRUE(world.settle());
  link.stall(End::first, 50);
  EXPECT_TRUE(link.isStalled(End::first)); // once more
}

TEST(Random, IsDrawnFromBytesAsLongAsThereAreAny) {
  const std::vector<std::uint8_t> bytes{7, 1, 2, 200, 0, 9};
  Random random{std::span<const std::uint8_t>(bytes)};
  EXPECT_EQ(random.below(1), 0U);             // of no byte
  EXPECT_EQ(random.below(5), 7U % 5);         // of one
  EXPECT_EQ(random.below(256), 1U);           // of one
  EXPECT_EQ(random.below(257), 0x2c8U % 257); // of two
  EXPECT_FALSE(random.isSpent());
  EXPECT_EQ(random.next(), 9U); // of all that are left
  EXPECT_TRUE(random.isSpent());
  EXPECT_EQ(random.next(), Random(0).next());
  EXPECT_FALSE(Random(1).isSpent());
}

TEST(Random, ForksAreOthersThatFollow) {
  Random random(3);
  Random first = random.fork();
  Random second = random.fork();
  Random again(3);
  EXPECT_EQ(again.fork().next(), first.next());
  EXPECT_NE(first.next(), second.next());
  const std::vector<std::uint8_t> bytes{1, 2, 3};
  Random drawn{std::span<const std::uint8_t>(bytes)};
  EXPECT_FALSE(drawn.fork().isSpent());
  EXPECT_EQ(drawn.below(256), 3U); // two bytes are gone
}

TEST(Random, IsTheSameEverywhere) {
  Random random(1);
  EXPECT_EQ(random.next(), 0x910a2dec89025cc1U);
  EXPECT_EQ(random.next(), 0xbeeb8da1658eec67U);
  EXPECT_EQ(Random::mixed(0), 0U);
}

TEST(Random, SizesOfEveryOrderAreAsLikely) {
  Random random(2);
  std::map<std::uint64_t, unsigned> seen;
  for (unsigned i = 0; i < 5000; ++i) {
    ++seen[random.size(5)];
  }
  ASSERT_EQ(seen.size(), 5U);
  EXPECT_NEAR(seen[1], 5000 / 3, 200);           // of 1
  EXPECT_NEAR(seen[2] + seen[3], 5000 / 3, 200); // of 2 and 3
  EXPECT_EQ(seen.begin()->first, 1U);
  EXPECT_EQ(seen.rbegin()->first, 5U);
  EXPECT_EQ(random.size(1), 1U);
  EXPECT_EQ(random.size(0), 1U);
  EXPECT_EQ(random.below(0), 0U);
}

} // namespace
