#include "Says.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

// The right to write goes back and forth between a root's owner and its mirror.

namespace {

using namespace Maintenance::Unit;
using Wiretap::listen;
using Zel::Mount;
using Zel::Name;
using Zel::Ptr;
using Zel::ReadOnlyException;
using Words = std::vector<std::string>;

class Rights : public testing::Test, public TwoUnits {
protected:
  Rights() {
    units->statusIs("a")->genIdIs(1);
    mount = share(Zel::accessReadWrite);
    settle();
    ear = listen<MountEar>(mount);
  }

  /// What stands in the ring of an end, which stays there.
  static Words saidBy(const Session& session) {
    const auto bytes = session.connection()->pendingOutput();
    return says(Wiretap::parsed({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
  }
  void toServer() {
    while (move(*client, *server) != 0) {
      serve(*server);
    }
  }
  void toClient() {
    while (move(*server, *client) != 0) {
      serve(*client);
    }
  }
  const Zel::NboAttrLog::Demuxer::Counts& serverCounts() const {
    return server->connection()->demuxer()->counts();
  }
  Ptr<Status> unit(const char* name = "a") const { return units->status(name); }

  Ptr<Mount> mount;
  Ptr<MountEar> ear;
  const Group::GroupKey peers{Group::groupTypeBgp, "peers"};
};

TEST_F(Rights, TakenFromAMirrorAreTakenByOneRecordAndGivenBackByOne) {
  ASSERT_TRUE(mount->isWritable());
  EXPECT_TRUE(server->isPeerWriting("units"));
  exports->writableIs("units", false);
  EXPECT_FALSE(server->isPeerWriting("units"));
  unit()->genIdIs(2); // this end may write from here on
  EXPECT_EQ(saidBy(*server), (Words{"freeze 1", "274"}));
  exports->writableIs("units", false);
  serve(*server);
  unit()->genIdIs(3);
  toClient();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  EXPECT_THROW(mirror("a")->genIdIs(4), ReadOnlyException);
  EXPECT_EQ(saidBy(*client), Words{"frozen 1"});
}

TEST_F(Rights, AreGivenBackBehindWhatIsPending) {
  exports->writableIs("units", false);
  settle();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  exports->writableIs("units", true);
  EXPECT_EQ(saidBy(*server), Words{"thaw 1"});
  settle();
  EXPECT_EQ(ear->taken(), Words{"writable"});
  mirror("a")->genIdIs(5);
  settle();
  EXPECT_EQ(unit()->genId(), 5U);
  EXPECT_EQ(mount->dropped(), 0U);
}

TEST_F(Rights, AWriteThatCrossesTheFreezeIsUndoneAtItsWriterAndCounted) {
  exports->writableIs("units", false);
  mirror("a")->genIdIs(9);
  mirror("a")->groupIs(peers, true);
  mirror()->statusIs("b");
  mirror("b")->genIdIs(3); // of a unit that the server never hears of
  toServer();
  EXPECT_EQ(serverCounts().dropped, 4U);
  EXPECT_EQ(unit()->genId(), 1U);
  EXPECT_FALSE(unit()->group(peers));
  EXPECT_FALSE(unit("b"));
  EXPECT_EQ(mirror("a")->genId(), 9U);
  exports->writableIs("units", true); // not before the answer has come
  EXPECT_FALSE(server->isPeerWriting("units"));
  settle();
  EXPECT_EQ(ear->taken(), (Words{"frozen", "writable", "dropped 3"}));
  EXPECT_EQ(mount->dropped(), 3U);
  EXPECT_EQ(mirror("a")->genId(), 1U);
  EXPECT_FALSE(mirror("a")->group(peers));
  EXPECT_FALSE(mirror("b"));
  EXPECT_TRUE(isEqual());
  mirror("a")->genIdIs(10);
  settle();
  EXPECT_EQ(unit()->genId(), 10U);
}

// One root is given back before the other, below which something has been dropped.
TEST_F(Rights, ADropIsToldByAnEchoThoughAnotherRootIsThawedBefore) {
  const Ptr<StatusDir> more = statusDirFactory("more");
  exports->entityIs(more, Zel::accessReadWrite);
  const Ptr<Mount> second = mounts->mountIs("more", Zel::accessReadWrite);
  settle();
  ASSERT_TRUE(second->isWritable());
  exports->writableIs("units", false);
  exports->writableIs("more", false);
  mirror("a")->genIdIs(9);
  settle();
  exports->writableIs("more", true);
  settle();
  ASSERT_TRUE(second->isWritable());
  EXPECT_EQ(second->dropped(), 0U);
  std::vector<Session::EchoResult> results;
  for (unsigned i = 0; i < 2; ++i) {
    client->echoAsk([&](Session::EchoResult came) { results.push_back(came); });
    settle();
  }
  EXPECT_EQ(results,
            (std::vector<Session::EchoResult>{Session::echoDropped, Session::echoApplied}));
}

TEST_F(Rights, AMemberWhoseDeletionCrossesTheFreezeComesBackWhole) {
  unit()->groupIs(peers, true);
  unit()->profileNameIs("slow");
  settle();
  exports->writableIs("units", false);
  const Ptr<Status> held = mirror("a");
  mirror()->statusDel("a");
  toServer();
  EXPECT_EQ(serverCounts().dropped, 1U);
  settle();
  ASSERT_TRUE(mirror("a"));
  EXPECT_NE(mirror("a").ptr(), held.ptr());
  EXPECT_TRUE(mirror("a")->group(peers));
  EXPECT_EQ(mirror("a")->profileName(), "slow");
  EXPECT_TRUE(isEqual());
  unit()->genIdIs(77);
  settle();
  EXPECT_EQ(mirror("a")->genId(), 77U);
  EXPECT_NE(held->genId(), 77U);
}

// The mirror has announced the member itself, and its program keeps hold of the deleted object,
// whose adapter has the id under which the member is announced again.
TEST_F(Rights, AMemberThatItsAnnouncerHasDeletedComesBackUnderTheSameId) {
  const Ptr<Status> held = mirror()->statusIs("b");
  settle();
  ASSERT_TRUE(unit("b"));
  exports->writableIs("units", false);
  mirror()->statusDel("b");
  settle();
  EXPECT_EQ(client->failure(), "");
  ASSERT_TRUE(mirror("b"));
  EXPECT_NE(mirror("b").ptr(), held.ptr());
  EXPECT_TRUE(isEqual());
  unit("b")->genIdIs(4);
  settle();
  EXPECT_EQ(mirror("b")->genId(), 4U);
}

TEST_F(Rights, TheAnswerGoesBehindAllThatWasPending) {
  connectTightly();
  settle();
  ear->taken();
  // So much that it waits as marks.
  for (unsigned i = 0; i < 600; ++i) {
    mirror()
        ->statusIs(Name("unit " + std::to_string(i)))
        ->profileNameIs(Zel::String8(std::string(200, 'p')));
  }
  EXPECT_GT(mount->root()->owed(), 0U);
  mirror("a")->genIdIs(50);
  exports->writableIs("units", false);
  // The freeze overtakes what the client has written; the answer does not.
  toClient();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  EXPECT_FALSE(server->isPeerWriting("units"));
  exports->writableIs("units", true);
  settle();
  EXPECT_EQ(client->failure(), "");
  EXPECT_EQ(server->failure(), "");
  EXPECT_TRUE(mount->isWritable());
  EXPECT_EQ(mount->root()->owed(), 0U);
  EXPECT_TRUE(isEqual());
  EXPECT_EQ(unit()->genId(), 1U);
  EXPECT_GT(mount->dropped(), 0U);
  EXPECT_EQ(serverCounts().refused, 0U);
}

TEST_F(Rights, TheThawGoesBehindAllThatWasPendingAndWaitsForNothingElse) {
  connectTightly();
  settle();
  exports->writableIs("units", false);
  settle();
  ear->taken();
  fillUnits(300, 200);
  EXPECT_GT(server->exported("units")->owed(), 0U);
  exports->writableIs("units", true);
  EXPECT_FALSE(server->isPeerWriting("units"));
  // A busy server: something is pending all the time.
  unsigned rounds = 0;
  bool wasThawed = false;
  for (; !mount->isWritable() && rounds < 3000; ++rounds) {
    for (unsigned i = 0; i < 120; ++i) {
      units->status(Name(std::to_string((rounds * 120 + i) % 300)))->genIdIs(1000 + rounds);
    }
    server->service(now, 4096);
    if (!wasThawed && server->isPeerWriting("units")) {
      wasThawed = true;
      EXPECT_GT(server->exported("units")->owed(), 0U) << "while it is busy";
    }
    move(*server, *client, 1500);
    client->service(now);
    move(*client, *server);
  }
  EXPECT_LT(rounds, 3000U);
  EXPECT_TRUE(mount->isWritable());
  EXPECT_EQ(mirror()->statusMap().count(), 301U);
  settle();
  EXPECT_TRUE(isEqual());
}

TEST_F(Rights, AFreezeTakesAThawBackThatHasNotBeenSaid) {
  connectTightly();
  settle();
  exports->writableIs("units", false);
  settle();
  ear->taken();
  fillUnits(600, 200);
  exports->writableIs("units", true);
  exports->writableIs("units", false);
  settle();
  EXPECT_EQ(ear->taken(), Words());
  EXPECT_FALSE(mount->isWritable());
  EXPECT_TRUE(isEqual());
  exports->writableIs("units", true);
  settle();
  EXPECT_EQ(ear->taken(), Words{"writable"});
}

TEST_F(Rights, AFreezeInTheMidstOfATextClosesIt) {
  connectTightly();
  settle();
  ear->taken();
  const std::string longText(100000, 't');
  mirror("a")->historyIs(1, Zel::String8(longText));
  EXPECT_EQ(mount->root()->owed(), 1U);
  move(*client, *server);
  serve(*server); // has a part of it
  exports->writableIs("units", false);
  settle();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  EXPECT_EQ(mirror("a")->history(1), "");
  exports->writableIs("units", true);
  settle();
  EXPECT_EQ(mount->dropped(), 1U);
  mirror("a")->historyIs(1, Zel::String8(std::string(60000, 'n')));
  settle();
  EXPECT_EQ(unit()->history(1), Zel::String8(std::string(60000, 'n')));
  EXPECT_EQ(server->failure(), "");
  EXPECT_TRUE(isEqual());
}

TEST_F(Rights, ASoftWithdrawalTakesWhatCrossesIt) {
  exports->writableIs("units", false, true);
  mirror("a")->genIdIs(9);
  mirror()->statusIs("b")->genIdIs(3);
  EXPECT_EQ(saidBy(*server), Words{"freeze 1 softly"});
  settle();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  EXPECT_EQ(unit()->genId(), 9U);
  EXPECT_EQ(unit("b")->genId(), 3U);
  EXPECT_EQ(serverCounts().dropped, 0U);
  EXPECT_TRUE(isEqual());
  exports->writableIs("units", true);
  settle();
  EXPECT_EQ(ear->taken(), Words{"writable"});
}

TEST_F(Rights, ARootThatIsTakenFromAllIsTakenFromThoseToCome) {
  exports->writableIs("units", false);
  cut();
  ear->taken();
  connect();
  settle();
  EXPECT_EQ(ear->taken(), (Words{"resyncing at 100", "live at 100"}));
  EXPECT_FALSE(mount->isWritable());
  exports->writableIs("units", true);
  settle();
  EXPECT_EQ(ear->taken(), Words{"writable"});
  EXPECT_NO_THROW(exports->writableIs("nothing", false));
}

// The server has not heard yet that the connection has gone, and has something of it to read.
TEST_F(Rights, AMirrorThatComesAnewEndsItsFormerSessionUnread) {
  mirror("a")->genIdIs(9);
  serve(*client);
  move(*client, *server);
  client->close(now, "gone");
  const Ptr<Session> former = server;
  server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(), exports,
                                    nullptr);
  client =
      Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, mounts);
  settle();
  EXPECT_FALSE(former->isUp());
  EXPECT_STREQ(former->failure().charPtr(), "the peer has come anew");
  ASSERT_TRUE(mount->isWritable());
  mirror("a")->genIdIs(10);
  settle();
  serve(*former);
  EXPECT_EQ(unit()->genId(), 10U);
  EXPECT_TRUE(isEqual());
  // Mounts of another program are none of its business.
  const auto others = Zel::makeObject<Zel::Mounts>();
  const auto theirs =
      Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, others);
  const auto third = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(),
                                              exports, nullptr);
  serve(*theirs);
  move(*theirs, *third);
  serve(*third);
  EXPECT_TRUE(third->isOpen());
  EXPECT_TRUE(server->isUp());
  EXPECT_NE(others->instance(), mounts->instance());
}

TEST_F(Rights, OfOnePeerAreThatPeersAlone) {
  server->writableIs("units", false);
  settle();
  EXPECT_EQ(ear->taken(), Words{"frozen"});
  server->writableIs("units", true);
  settle();
  EXPECT_EQ(ear->taken(), Words{"writable"});
  EXPECT_NO_THROW(server->writableIs("nothing", false));
  EXPECT_FALSE(server->isPeerWriting("nothing"));
}

TEST_F(Rights, NothingOfAMirrorIsAppliedThatMayOnlyRead) {
  cut();
  exports->entityDel("units");
  exports->entityIs(units);
  connect();
  settle();
  ASSERT_FALSE(mount->isWritable());
  mirror()->zelFrozenIs(false); // as a hostile peer would
  mirror("a")->genIdIs(99);
  settle();
  EXPECT_EQ(unit()->genId(), 1U);
  EXPECT_EQ(serverCounts().refused, 1U);
  EXPECT_EQ(serverCounts().dropped, 0U);
}

} // namespace
