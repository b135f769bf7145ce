#include "Alone.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>
#include <Zel/ZelType>

#include <gtest/gtest.h>

// Peers that contradict themselves, or ask for more than they should.

namespace {

using Words = std::vector<std::string>;
using End = Zel::Connection::End;
using Wiretap::listen;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;
using Zel::String8;

class Deceived : public Alone, public testing::Test {
protected:
  explicit Deceived() : Alone(End::first, 5, Two::smallest()) {
    hear(hello(accepting));
    said();
  }
  /// As many records were passed over as `values`, and the session goes on.
  void expectPassedOver(std::uint64_t values) const {
    EXPECT_EQ(counts().badValues, values);
    EXPECT_TRUE(session->isUp());
  }

  static constexpr Zel::EntityId unitsId{2, 0x80000000};
  const Ptr<Mount> mount = mounts->mountIs("units", Zel::accessReadWrite);
};

TEST_F(Deceived, AGrantIsTakenOnceAndOnlyIfAsked) {
  hear(grant("units"));
  expectPassedOver(1);
  hear(offer("units") + grant("other") + grant("units", 0) + grant("units", 7));
  expectPassedOver(4);
  hear(grant("units"));
  expectPassedOver(4);
  EXPECT_EQ(mount->access(), Zel::accessReadOnly);
  hear(grant("units", 2));
  expectPassedOver(5);
  EXPECT_EQ(mount->access(), Zel::accessReadOnly);
  hear(root("units", unitsId) + syncMode(unitsId, 2) + syncMode(unitsId, 1));
  EXPECT_EQ(mount->state(), Mount::live);
  hear(grant("units", 2) + root("units", {4, 0x80000000}));
  expectPassedOver(6);
  EXPECT_EQ(counts().refused, 1U);
  EXPECT_FALSE(mount->isWritable());
  EXPECT_EQ(session->connection()->demuxer()->adapters(), 1U);
}

TEST_F(Deceived, AGrantOfMoreThanWasWantedIsNone) {
  mounts->mountIs("more");
  hear(offer("more") + grant("more", 2) + root("more", unitsId));
  expectPassedOver(1);
  EXPECT_EQ(counts().refused, 1U);
  EXPECT_EQ(mounts->mount("more")->state(), Mount::waiting);
}

TEST_F(Deceived, ARootThatWasNotGrantedIsNotMirrored) {
  hear(offer("units") + root("units", unitsId));
  EXPECT_EQ(counts().refused, 1U);
  EXPECT_FALSE(mount->entity());
  EXPECT_EQ(dir->entities().size(), 0U);
}

TEST_F(Deceived, ARefusalAfterAGrantIsPassedOver) {
  hear(offer("units") + grant("units") + refuse("units", "no") + refuse("other", "no"));
  expectPassedOver(2);
  EXPECT_EQ(mount->state(), Mount::waiting);
  hear(root("units", unitsId));
  EXPECT_EQ(mount->state(), Mount::resyncing);
}

TEST_F(Deceived, AWalkThatEndsWithoutHavingBegunIsOver) {
  hear(offer("units") + grant("units", 2) + root("units", unitsId) + syncMode(unitsId, 1));
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_FALSE(mount->isWritable());
  hear(syncMode(unitsId, 2) + syncMode(unitsId, 2));
  EXPECT_EQ(mount->state(), Mount::resyncing);
  hear(syncMode(unitsId, 9));
  expectPassedOver(1);
}

TEST_F(Deceived, ARootOfAnotherTypeThanWasOfferedIsMirroredAsItIs) {
  hear(offer("units") + grant("units") + root("units", unitsId, "Maintenance::Profile::ConfigDir"));
  EXPECT_EQ(mount->entity()->fwkType()->fullName(), "Maintenance::Profile::ConfigDir");
  EXPECT_EQ(mount->state(), Mount::resyncing);
}

TEST_F(Deceived, AnswersThatNobodyWaitsForArePassedOver) {
  hear(digest(1, 0, 5) + numbered(11, 1));
  expectPassedOver(2);
  hear(offer("units") + grant("units") + root("units", unitsId) + syncMode(unitsId, 1));
  said();
  auto result = Session::digestUnknown;
  unsigned answers = 0;
  session->digestAsk("units", [&](Session::DigestResult answer) {
    result = answer;
    ++answers;
  });
  hear(digest(1, 0, 5)); // not asked yet
  expectPassedOver(3);
  EXPECT_EQ(said(), Words{"digest? 1 units"});
  hear(digest(1, 1, 5) + digest(1, 4, 5) + digest(2, 0, 5));
  expectPassedOver(6);
  EXPECT_EQ(answers, 0U);
  hear(digest(1, 0, 5) + digest(1, 0, 5));
  expectPassedOver(7);
  EXPECT_EQ(answers, 1U);
  EXPECT_EQ(result, Session::digestDiffers);
}

TEST_F(Deceived, RecordsOfANewerPeerArePassedOverAndCounted) {
  hear(numbered(99, 1) + numbered(255, 1));
  EXPECT_EQ(counts().unknownAttributes, 2U);
  expectPassedOver(0);
}

TEST_F(Deceived, RecordsThatAreCutShortArePassedOver) {
  for (const unsigned kind : {2U, 3U, 4U, 5U, 6U, 7U, 8U, 10U, 11U, 12U}) {
    hear(record(kind, [](Out& out) { out.put8(0); }));
  }
  expectPassedOver(10);
  hear(Wiretap::letter(Zel::orphanEntityId, Zel::NboAttrLog::attrIdSession, [](Out&) {}));
  expectPassedOver(11);
}

TEST_F(Deceived, ASessionRecordForAnEntityIsNone) {
  hear(Wiretap::letter({6, 0}, Zel::NboAttrLog::attrIdSession, [](Out& out) { out.put8(9); }));
  EXPECT_EQ(counts().unknownEntities, 1U);
  EXPECT_FALSE(session->hasOffers());
}

TEST_F(Deceived, TooManyDigestsEndTheSession) {
  exports->entityIs(Maintenance::Unit::statusDirFactory("ours"));
  hear(ask("ours"));
  Wiretap::fill(*session->connection(), 100);
  for (unsigned i = 0; i < Session::maxDigests; ++i) {
    hear(digestAsk(i, "ours"));
  }
  EXPECT_TRUE(session->isUp());
  hear(digestAsk(99, "ours"));
  EXPECT_EQ(failure(), "the peer asks for too many digests at a time");
}

TEST_F(Deceived, APeerThatAsksForMoreThanItReadsIsLeft) {
  Wiretap::fill(*session->connection(), 100);
  const std::string question = numbered(10, 1);
  std::size_t asked = 0;
  for (; session->isUp() && asked < 100000; ++asked) {
    hear(question);
  }
  EXPECT_EQ(failure(), "the peer asks for more than it reads");
  EXPECT_GT(asked, 1000U);
  EXPECT_LT(asked, 20000U);
  EXPECT_EQ(session->connection()->out()->capacity(), Zel::ConnectionLimits::smallestRing);
}

/// Ends a session by a record that breaks the rules of who may write, and yields what is said of
/// it.
class RuleBreaker : public Deceived {
protected:
  void live() {
    hear(offer("units") + grant("units", 2) + root("units", unitsId) + syncMode(unitsId, 1));
    ASSERT_EQ(mount->state(), Mount::live);
  }
  void thawed() {
    live();
    hear(thaw(unitsId, 0));
    ASSERT_TRUE(mount->isWritable());
  }
  static std::string broken(const char* rule) {
    return std::string("a peer that breaks the rules of who may write: ") + rule;
  }
};

TEST_F(RuleBreaker, FreezesWhatIsFrozen) {
  live();
  hear(freeze(unitsId, 1));
  EXPECT_EQ(failure(), broken("a freeze of what is frozen"));
  EXPECT_EQ(mount->state(), Mount::stale);
}

TEST_F(RuleBreaker, FreezesTwice) {
  thawed();
  said();
  hear(freeze(unitsId, 1));
  EXPECT_EQ(said(), Words{"frozen 1"});
  hear(freeze(unitsId, 2));
  EXPECT_EQ(failure(), broken("a freeze of what is frozen"));
}

TEST_F(RuleBreaker, CountsItsFreezesWrong) {
  thawed();
  hear(freeze(unitsId, 2));
  EXPECT_EQ(failure(), broken("a freeze of what is frozen"));
}

TEST_F(RuleBreaker, ThawsWhatIsNotFrozen) {
  thawed();
  hear(thaw(unitsId, 0));
  EXPECT_EQ(failure(), broken("a thaw of what is not frozen"));
}

TEST_F(RuleBreaker, ThawsWhatIsNotLive) {
  hear(offer("units") + grant("units", 2) + root("units", unitsId) + thaw(unitsId, 0));
  EXPECT_EQ(failure(), broken("a thaw of what is not frozen"));
}

TEST_F(RuleBreaker, ThawsWhatItHasGrantedReading) {
  hear(offer("units") + grant("units") + root("units", unitsId) + syncMode(unitsId, 1) +
       thaw(unitsId, 0));
  EXPECT_EQ(failure(), broken("a thaw of what is not frozen"));
}

TEST_F(RuleBreaker, WalksWhatIsThawed) {
  thawed();
  hear(syncMode(unitsId, 2));
  EXPECT_EQ(failure(), broken("a walk of what is thawed"));
}

TEST_F(RuleBreaker, AnswersNoFreeze) {
  exports->entityIs(Maintenance::Unit::statusDirFactory("ours"));
  hear(ask("ours", 2));
  said();
  hear(frozen({2, 0}, 0));
  EXPECT_EQ(failure(), broken("an answer to no freeze"));
}

TEST_F(RuleBreaker, MayBeMerelyLate) {
  thawed();
  hear(named(3, "units")); // withdrawn, and what was on its way for it is passed over
  hear(freeze(unitsId, 1) + thaw(unitsId, 1) + frozen({99, 0}, 1));
  expectPassedOver(3);
}

TEST_F(RuleBreaker, SweepsWhatIsThawed) {
  const auto marker = [](unsigned type) {
    return Wiretap::letter(unitsId, Zel::NboAttrLog::attrIdTransaction, [&](Out& out) {
      out.put32(258);
      out.put32(type);
      out.put32(0);
    });
  };
  thawed();
  const auto units = Zel::ptrCast<Maintenance::Unit::StatusDir>(mount->entity());
  units->statusIs("a");
  hear(marker(0) + marker(2));
  EXPECT_TRUE(units->status("a"));
  EXPECT_EQ(counts().refused, 2U);
}

// A mirror makes keys without end and answers nothing: no more are kept than it may have.
TEST(ManyKeys, OfAMirrorThatIsFrozenTakeNoMoreThanTheLimit) {
  Zel::ConnectionLimits limits = TwoUnits::smallest();
  limits.maxKeys = 50;
  Alone peer(Alone::End::second, 5, limits);
  const auto units = Maintenance::Unit::statusDirFactory("units");
  peer.exports->entityIs(units, Zel::accessReadWrite);
  peer.hear(Alone::hello() + Alone::ask("units", 2));
  ASSERT_TRUE(peer.session->isPeerWriting("units"));
  peer.said();
  constexpr Zel::EntityId dirId{2, 0x80000000};
  const Zel::EntityId rootId = peer.session->exported("units")->entityId();
  EXPECT_EQ(rootId.first, dirId.first);
  peer.exports->writableIs("units", false);
  Wiretap::fill(*peer.session->connection(), 10);
  for (unsigned i = 0; i < 3000; ++i) {
    const std::string name = "unit " + std::to_string(i);
    peer.hear(Wiretap::letter(rootId, 258, [&](Alone::Out& out) {
      out.putString(Zel::String8(name));
      out.putEntityId({2 * (i + 1), 0});
    }));
  }
  EXPECT_EQ(peer.counts().dropped, 3000U);
  EXPECT_EQ(units->statusMap().count(), 0U);
  const auto adapter =
      units->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(peer.session->connection()->out()));
  ASSERT_TRUE(adapter->flowOut());
  EXPECT_LE(static_cast<Zel::EntityFlowOut&>(*adapter->flowOut()).dirtyKeys(258).count(), 50U);
  peer.said();
  peer.serve();
  const Words words = peer.said();
  EXPECT_EQ(words.front(), "begin 258");
}

TEST_F(Deceived, LinesOfTheLogAreOfPrintableBytes) {
  mounts->allIs(Zel::accessReadOnly);
  log.clear();
  hear(offer("a\x1b[2Jb\nroot: all is well", "None\t"));
  EXPECT_EQ(log,
            Words{"warning: the root a?[2Jb?root: all is well is refused: unknown type: None?"});
}

} // namespace
