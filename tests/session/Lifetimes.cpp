#include "Says.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

// Sessions and what they serve end in any order, and from inside of any callback.

namespace {

using namespace Maintenance::Unit;
using Words = std::vector<std::string>;
using Wiretap::Ear;
using Wiretap::listen;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;

class Lifetimes : public testing::Test, public TwoUnits {
protected:
  Lifetimes() {
    units->statusIs("a")->profileNameIs("slow");
    share();
  }
};

TEST_F(Lifetimes, AnEndFromInsideOfAnyStateOfAMount) {
  for (const char* const word : {"entity", "resyncing at 100", "live at 100"}) {
    const auto own = Zel::makeObject<Zel::Mounts>();
    client->close(now);
    server->close(now);
    server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(), exports,
                                      nullptr);
    client =
        Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, own);
    const Ptr<Mount> mount = own->mountIs("units");
    const auto ear = listen<MountEar>(mount);
    ear->onHeard = [&](const std::string& heard) {
      if (heard == word) {
        client->close(now, "enough");
      }
    };
    settle();
    EXPECT_EQ(client->failure(), "enough") << word;
    EXPECT_EQ(mount->state(), Mount::stale) << word;
    EXPECT_EQ(ear->heard.back(), "stale at 100: enough") << word;
    EXPECT_EQ(client->connection()->demuxer()->adapters(), 0U) << word;
    server->close(now);
    server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(), exports,
                                      nullptr);
    ear->onHeard = nullptr;
    client =
        Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, own);
    settle();
    EXPECT_EQ(mount->state(), Mount::live) << word;
    EXPECT_EQ(Zel::stateDigest(*units), Zel::stateDigest(*mount->entity())) << word;
  }
}

TEST_F(Lifetimes, AnEndFromInsideOfAChange) {
  settle();
  const auto ear = listen<Ear>(mirror("a"));
  ear->onHeard = [&](const std::string&) {
    client->close(now, "enough");
    client = nullptr;
  };
  units->status("a")->genIdIs(7);
  serve(*server);
  const Ptr<Session> kept = client;
  move(*server, *kept);
  EXPECT_FALSE(kept->service(now));
  EXPECT_EQ(kept->failure(), "enough");
  EXPECT_EQ(mount()->state(), Mount::stale);
  EXPECT_THROW(mirror("a")->genIdIs(8), Zel::ReadOnlyException);
  client = kept;
}

TEST_F(Lifetimes, AnEndFromInsideOfAnAnswer) {
  settle();
  unsigned answers = 0;
  for (unsigned i = 0; i < 3; ++i) {
    client->echoAsk([&](Session::EchoResult) {
      ++answers;
      client->close(now, "enough");
    });
    client->digestAsk("units", [&](Session::DigestResult) { ++answers; });
  }
  settle();
  EXPECT_EQ(answers, 6U);
  EXPECT_EQ(mount()->state(), Mount::stale);
}

TEST_F(Lifetimes, TheLastHandleMayGoAtTheEndOfTheSession) {
  settle();
  const auto ear = listen<MountEar>(mount());
  ear->onHeard = [&](const std::string&) { client = nullptr; };
  client->close(now, "enough");
  EXPECT_FALSE(client);
  EXPECT_EQ(ear->taken(), Words{"stale at 100: enough"});
  client = Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr,
                                    nullptr);
}

TEST_F(Lifetimes, ASessionThatGoesIsClosed) {
  settle();
  const Ptr<Zel::Connection> connection = client->connection();
  client = nullptr;
  EXPECT_EQ(connection->failure(), "closed");
  EXPECT_EQ(mount()->state(), Mount::stale);
  EXPECT_EQ(mount()->reason(), "closed");
  EXPECT_FALSE(connection->service());
  connect();
}

TEST_F(Lifetimes, AMountMayOutliveAllElse) {
  Ptr<Mount> mount;
  const Ptr<StatusDir> own = statusDirFactory("units");
  {
    const auto shortExports = Zel::makeObject<Zel::Exports>();
    shortExports->entityIs(own);
    own->statusIs("a");
    auto shortMounts = Zel::makeObject<Zel::Mounts>();
    mount = shortMounts->mountIs("units");
    auto a = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(),
                                      shortExports, nullptr);
    auto b = Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr,
                                      shortMounts);
    std::swap(server, a);
    std::swap(client, b);
    settle();
    EXPECT_EQ(mount->state(), Mount::live);
    std::swap(server, a);
    std::swap(client, b);
    shortMounts = nullptr; // the session has it still
    EXPECT_EQ(mount->state(), Mount::live);
  }
  EXPECT_EQ(mount->state(), Mount::stale);
  const auto mirrored = Zel::ptrCast<StatusDir>(mount->entity());
  EXPECT_THROW(mirrored->status("a")->genIdIs(7), Zel::ReadOnlyException);
  const Ptr<Status> a = mirrored->status("a");
  mount = nullptr; // it is nobody's mirror any more
  a->genIdIs(8);
  EXPECT_EQ(a->genId(), 8U);
  EXPECT_EQ(own->zelNotifieeList().count(), 0U);
}

TEST_F(Lifetimes, RootsMayGoWithTheirExports) {
  settle();
  auto lonely = Zel::makeObject<Zel::Exports>();
  {
    const auto session = Zel::makeObject<Session>(Zel::Connection::End::second,
                                                  Zel::SessionOptions(), lonely, nullptr);
    lonely->entityIs(statusDirFactory("x"));
    EXPECT_TRUE(session->isUp());
  }
  lonely->entityIs(statusDirFactory("y")); // to no session any more
  EXPECT_EQ(lonely->roots().size(), 2U);
}

class Writes : public testing::Test, public TwoUnits {};

TEST_F(Writes, OfEachEndReachTheOther) {
  units->statusIs("a");
  const Ptr<Mount> mount = share(Zel::accessReadWrite);
  settle();
  mirror("a")->genIdIs(7);
  mirror()->statusIs("b")->profileNameIs("fast");
  units->statusIs("c");
  settle();
  EXPECT_EQ(units->status("a")->genId(), 7U);
  EXPECT_EQ(units->status("b")->profileName(), "fast");
  EXPECT_TRUE(mirror("c"));
  mirror()->statusDel("c");
  settle();
  EXPECT_FALSE(units->status("c"));
  EXPECT_TRUE(isEqual());
}

TEST_F(Writes, AreNotThePeersWhereItWasGrantedReading) {
  units->statusIs("a");
  share();
  settle();
  const Zel::EntityId id =
      mirror("a")
          ->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(client->connection()->out()))
          ->entityId();
  const std::string bytes =
      Wiretap::letter(id, 274, [](Zel::NboAttrLog::Out& out) { out.put32(7); });
  std::memcpy(server->connection()->inputSpace().data(), bytes.data(), bytes.size());
  server->connection()->inputReceived(bytes.size());
  serve(*server);
  EXPECT_EQ(server->connection()->demuxer()->counts().refused, 1U);
  EXPECT_EQ(units->status("a")->genId(), 0U);
}

} // namespace
