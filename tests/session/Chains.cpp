#include "Says.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

// A mirror that is mirrored in turn: the right to write goes down the chain, and up again.

namespace {

using namespace Maintenance::Unit;
using Wiretap::listen;
using Zel::Mount;
using Zel::Ptr;
using Zel::ReadOnlyException;
using Words = std::vector<std::string>;
using EchoResult = Zel::Session::EchoResult;

/// `units` belong to the server; the client in the middle exports its mirror to `last`.
class Chains : public testing::Test, public TwoUnits {
protected:
  Chains() {
    units->statusIs("a")->genIdIs(1);
    share(Zel::accessReadWrite);
    settle();
    last.exports->entityIs(mirror(), Zel::accessReadWrite);
    last.mounts->mountIs("units", Zel::accessReadWrite);
    allSettle();
    ear = listen<MountEar>(lastMount());
  }

  void allSettle() {
    for (unsigned round = 0; round < 4; ++round) {
      settle();
      last.settle();
    }
  }
  Ptr<Mount> lastMount() const { return last.mounts->mount("units"); }
  Ptr<StatusDir> lastMirror() const { return Zel::ptrCast<StatusDir>(lastMount()->entity()); }
  Ptr<Status> lastUnit(const char* name = "a") const { return lastMirror()->status(name); }
  void lastTells() {
    last.serve(*last.client);
    while (Two::move(*last.client, *last.server) != 0) {
      last.serve(*last.server);
    }
  }
  bool areEqual() const {
    return isEqual() && Zel::stateDigest(*mirror()) == Zel::stateDigest(*lastMirror());
  }
  static bool moved(Zel::Connection& from, Zel::Connection& to) {
    const auto bytes = from.pendingOutput();
    const auto space = to.inputSpace();
    const std::size_t count = std::min(bytes.size(), space.size());
    std::copy_n(bytes.begin(), count, space.begin());
    from.outputConsumed(count);
    to.inputReceived(count);
    return count != 0;
  }
  static EchoResult none() { return static_cast<EchoResult>(99); }
  EchoResult lastEcho() {
    EchoResult result = none();
    last.client->echoAsk([&](EchoResult came) { result = came; });
    allSettle();
    return result;
  }

  Two last;
  Ptr<MountEar> ear;
};

TEST_F(Chains, AllWriteAndAllHear) {
  ASSERT_TRUE(mount()->isWritable());
  ASSERT_TRUE(lastMount()->isWritable());
  lastUnit()->genIdIs(5);
  lastMirror()->statusIs("b")->genIdIs(6);
  allSettle();
  EXPECT_EQ(units->status("a")->genId(), 5U);
  EXPECT_EQ(units->status("b")->genId(), 6U);
  EXPECT_EQ(lastEcho(), Session::echoApplied);
  EXPECT_TRUE(areEqual());
}

TEST_F(Chains, ALiveMiddleThatIsFrozenFreezesThoseDownstreamAtOnce) {
  exports->writableIs("units", false);
  while (move(*server, *client) != 0) {
    serve(*client);
  }
  EXPECT_FALSE(mount()->isWritable());
  // Nothing has been asked of the last: the middle answers without it.
  EXPECT_EQ(says(Wiretap::records(*client->connection())), Words{"frozen 1"});
  EXPECT_EQ(says(Wiretap::records(*last.server->connection())), Words{"freeze 1"});
}

TEST_F(Chains, WhatCrossesTheFreezeOfTheMiddleIsUndoneAtTheLast) {
  exports->writableIs("units", false);
  units->status("a")->genIdIs(2);
  settle();
  lastUnit()->genIdIs(8);
  lastTells();
  EXPECT_EQ(last.server->connection()->demuxer()->counts().dropped, 1U);
  EXPECT_EQ(mirror("a")->genId(), 2U);
  allSettle();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  EXPECT_EQ(lastUnit()->genId(), 2U);
  EXPECT_TRUE(areEqual());
  exports->writableIs("units", true);
  allSettle();
  EXPECT_EQ(ear->taken(), (Words{"writable", "dropped 1"}));
  EXPECT_EQ(mount()->dropped(), 0U);
}

TEST_F(Chains, WhatTheFirstDropsIsToldToTheLastToo) {
  lastUnit()->genIdIs(8);
  lastTells(); // the middle has passed it on
  exports->writableIs("units", false);
  allSettle();
  EXPECT_EQ(units->status("a")->genId(), 1U);
  EXPECT_EQ(lastUnit()->genId(), 1U);
  EXPECT_EQ(lastEcho(), Session::echoDropped);
  exports->writableIs("units", true);
  allSettle();
  EXPECT_EQ(mount()->dropped(), 1U);
  EXPECT_EQ(lastMount()->dropped(), 1U);
  EXPECT_EQ(ear->taken(), (Words{"frozen", "writable", "dropped 1"}));
  EXPECT_TRUE(areEqual());
}

TEST_F(Chains, AStaleMiddleFreezesThoseDownstreamUntilItIsThawed) {
  cut();
  last.settle();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  EXPECT_EQ(lastMount()->state(), Mount::live);
  EXPECT_THROW(lastUnit()->genIdIs(4), ReadOnlyException);
  units->status("a")->genIdIs(3);
  units->statusIs("c");
  connect();
  allSettle();
  EXPECT_EQ(ear->taken(), Words{"writable"});
  EXPECT_EQ(lastUnit()->genId(), 3U);
  EXPECT_TRUE(lastUnit("c"));
  lastUnit()->genIdIs(4);
  allSettle();
  EXPECT_EQ(units->status("a")->genId(), 4U);
  EXPECT_TRUE(areEqual());
}

TEST_F(Chains, AMiddleThatIsLiveAndNotThawedThawsNobody) {
  exports->writableIs("units", false);
  cut();
  connect();
  allSettle();
  EXPECT_EQ(mount()->state(), Mount::live);
  EXPECT_FALSE(mount()->isWritable());
  EXPECT_EQ(ear->taken(), Words{"frozen"});
}

TEST_F(Chains, WhatWasOnItsWayWhenALinkUpstreamWasCutIsUnknown) {
  lastUnit()->genIdIs(8);
  lastTells();
  cut();
  allSettle();
  EXPECT_EQ(lastEcho(), Session::echoUnknown);
  EXPECT_EQ(lastEcho(), Session::echoApplied); // nothing has been written since
  connect();
  allSettle();
  EXPECT_TRUE(areEqual());
  EXPECT_EQ(lastUnit()->genId(), 1U);
}

TEST_F(Chains, AQuestionThatIsUnderWayWhenALinkUpstreamIsCutIsAnsweredThatNobodyKnows) {
  for (const bool isSent : {false, true}) {
    lastUnit()->genIdIs(lastUnit()->genId() + 1);
    EchoResult result = none();
    last.client->echoAsk([&](EchoResult came) { result = came; });
    lastTells(); // the middle has passed the write on, and wants to pass on the question
    if (isSent) {
      serve(*client);
    }
    cut();
    allSettle();
    EXPECT_EQ(result, Session::echoUnknown) << isSent;
    EXPECT_EQ(lastEcho(), Session::echoApplied) << isSent;
    connect();
    allSettle();
  }
  EXPECT_TRUE(areEqual());
}

TEST_F(Chains, AQuestionBehindAConnectionThatHasGoneUnheardIsAnsweredThatNobodyKnows) {
  lastUnit()->genIdIs(7);
  last.serve(*last.client);
  client->connection()->fail("gone"); // and nobody has served it
  EchoResult result = none();
  last.client->echoAsk([&](EchoResult came) { result = came; });
  last.settle();
  EXPECT_EQ(result, Session::echoUnknown);
}

TEST_F(Chains, AQuestionOfWhoHasGoneIsForgotten) {
  lastUnit()->genIdIs(7);
  unsigned answers = 0;
  last.client->echoAsk([&](EchoResult came) { answers += came == Session::echoUnknown ? 1 : 0; });
  lastTells();
  last.cut();
  EXPECT_EQ(answers, 1U);
  allSettle();
  EXPECT_EQ(units->status("a")->genId(), 7U);
  last.connect();
  allSettle();
  EXPECT_EQ(lastEcho(), Session::echoApplied);
}

TEST_F(Chains, WhoAsksForMoreEchoesThanAreOwedIsLeft) {
  for (std::size_t i = 0; i <= Session::maxEchoes; ++i) {
    last.client->echoAsk([](EchoResult /*came*/) {});
  }
  lastTells();
  EXPECT_STREQ(last.server->failure().charPtr(), "the peer asks for too many echoes at a time");
}

TEST_F(Chains, ADropIsToldOnce) {
  lastUnit()->genIdIs(8);
  lastTells();
  exports->writableIs("units", false);
  allSettle();
  EXPECT_EQ(lastEcho(), Session::echoDropped);
  exports->writableIs("units", true);
  allSettle();
  EXPECT_EQ(lastMount()->dropped(), 1U);
  lastUnit()->genIdIs(9);
  EXPECT_EQ(lastEcho(), Session::echoApplied);
  lastUnit()->genIdIs(10);
  lastTells();
  exports->writableIs("units", false);
  allSettle();
  exports->writableIs("units", true);
  allSettle();
  EXPECT_EQ(lastMount()->dropped(), 2U);
  EXPECT_EQ(lastEcho(), Session::echoDropped); // of which the thaw has told the mount alone
  EXPECT_EQ(lastEcho(), Session::echoApplied);
}

TEST_F(Chains, GivingTheRightBackInTheMiddleHardensNothing) {
  exports->writableIs("units", false, true);
  settle();
  lastUnit()->genIdIs(8);
  last.exports->writableIs("units", true);
  allSettle();
  EXPECT_EQ(units->status("a")->genId(), 8U);
  EXPECT_TRUE(areEqual());
}

// Over a connection without a session no freeze is told, so nothing that comes is applied.
TEST_F(Chains, APeerWithoutASessionIsRefusedWhileTheMiddleIsFrozen) {
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto here = Zel::makeObject<Zel::Connection>(Zel::Connection::End::first);
  const auto there = Zel::makeObject<Zel::Connection>(
      Zel::Connection::End::second, Zel::String8(), Zel::ConnectionLimits(),
      Zel::makeObject<Zel::NboAttrLog::DirMounts>(roots,
                                                  Zel::PtrInterface::NotifieeConst::Zel_BitSet()));
  here->demuxer()->exportIs(mirror());
  const auto both = [&] {
    while (here->service() || there->service() || moved(*here, *there) || moved(*there, *here)) {
    }
  };
  both();
  const Ptr<Status> bare = Zel::ptrCast<StatusDir>(roots->entity("units"))->status("a");
  bare->genIdIs(5);
  both();
  EXPECT_EQ(mirror("a")->genId(), 5U);
  cut();
  bare->genIdIs(6);
  bare->profileNameIs("slow");
  both();
  EXPECT_EQ(mirror("a")->genId(), 5U);
  EXPECT_EQ(here->demuxer()->counts().refused, 2U);
  EXPECT_TRUE(here->isUp());
  here->close();
  there->close();
}

TEST_F(Chains, WhoHasWrittenNothingIsWarnedOfNothing) {
  EXPECT_EQ(lastEcho(), Session::echoApplied);
  cut();
  allSettle();
  EXPECT_EQ(lastEcho(), Session::echoApplied);
}

TEST_F(Chains, AllWhoWaitHearOfADrop) {
  lastUnit()->genIdIs(8);
  lastTells();
  exports->writableIs("units", false);
  std::vector<EchoResult> results;
  for (unsigned i = 0; i < 2; ++i) {
    last.client->echoAsk([&](EchoResult came) { results.push_back(came); });
    client->echoAsk([&](EchoResult came) { results.push_back(came); });
  }
  allSettle();
  EXPECT_EQ(results, std::vector<EchoResult>(4, Session::echoDropped));
  EXPECT_EQ(lastEcho(), Session::echoApplied);
}

TEST_F(Chains, AProgramInTheMiddleMayHoldAnAnswerBack) {
  class Holding : public Zel::Exports {
  public:
    void echo(const Session& /*session*/, std::function<void()> answer) const override {
      held = std::move(answer);
    }
    mutable std::function<void()> held;
  };
  const auto holding = Zel::makeObject<Holding>();
  const Ptr<StatusDir> own = statusDirFactory("own");
  holding->entityIs(own, Zel::accessReadWrite);
  const auto a = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(),
                                          Ptr<Zel::Exports>(holding), nullptr);
  const auto b = Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(),
                                          nullptr, nullptr);
  const auto both = [&] {
    for (bool more = true; more;) {
      more = a->service(now);
      more = b->service(now) || more;
      more = move(*a, *b) != 0 || more;
      more = move(*b, *a) != 0 || more;
    }
  };
  EchoResult result = none();
  b->echoAsk([&](EchoResult came) { result = came; });
  both();
  EXPECT_EQ(result, none());
  ASSERT_TRUE(holding->held);
  std::exchange(holding->held, {})();
  both();
  EXPECT_EQ(result, Session::echoApplied);
}

TEST_F(Chains, TheLastOfAStaleMiddleThatJoinsIsFrozen) {
  cut();
  last.connect();
  last.settle();
  EXPECT_EQ(lastMount()->state(), Mount::live);
  EXPECT_FALSE(lastMount()->isWritable());
  connect();
  allSettle();
  EXPECT_TRUE(lastMount()->isWritable());
}

TEST_F(Chains, ASoftWithdrawalTakesWhatIsOnItsWayFromTheLast) {
  lastUnit()->genIdIs(8);
  exports->writableIs("units", false, true);
  settle();
  EXPECT_FALSE(mount()->isWritable());
  EXPECT_TRUE(server->isPeerWriting("units")) << "as long as the last may have written something";
  allSettle();
  EXPECT_FALSE(server->isPeerWriting("units"));
  EXPECT_EQ(units->status("a")->genId(), 8U);
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  EXPECT_THROW(lastUnit()->genIdIs(9), ReadOnlyException);
  EXPECT_EQ(lastEcho(), Session::echoApplied);
  EXPECT_TRUE(areEqual());
  exports->writableIs("units", true);
  allSettle();
  EXPECT_EQ(ear->taken(), Words{"writable"});
}

TEST_F(Chains, ACutMakesASoftWithdrawalHard) {
  exports->writableIs("units", false, true);
  settle();
  lastUnit()->genIdIs(8);
  cut();
  allSettle();
  EXPECT_EQ(mirror("a")->genId(), 1U);
  EXPECT_EQ(lastUnit()->genId(), 1U);
  EXPECT_EQ(last.server->connection()->demuxer()->counts().dropped, 1U);
}

} // namespace
