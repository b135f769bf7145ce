#include "Alone.h"

#include "attrlog/Dumps.h"

#include <gtest/gtest.h>

// The session records in docs/wire-format.md are what sessions write and read, byte for byte.

namespace {

using Words = std::vector<std::string>;
using End = Zel::Connection::End;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;

/// All that waits at an end, as the dumps have it.
std::string written(const Session& from) { return hexOf(Wiretap::taken(*from.connection())); }
std::string bytes(const std::string& name) { return bytesOf(dump("session-" + name)); }

class SessionDocument : public testing::Test, public TwoUnits {
protected:
  /// Moves what one end has said, which is to be this.
  void says(const Ptr<Session>& from, const Ptr<Session>& to, const std::string& hex) {
    serve(*from);
    const auto pending = from->connection()->pendingOutput();
    EXPECT_EQ(hexOf(viewOf(pending)), hex);
    move(*from, *to);
  }
};

TEST_F(SessionDocument, AConversation) {
  exports->entityIs(units, Zel::accessReadWrite);
  const Ptr<Mount> mount = mounts->mountIs("units", Zel::accessReadWrite);
  says(server, client, dump("session-hello"));
  serve(*client);
  move(*client, *server);
  says(server, client, records(dump("session-offer"), dump("session-offers-end")));
  says(client, server, dump("session-ask"));
  settle();
  client->digestAsk("units", {});
  client->echoAsk({});
  says(client, server, records(dump("session-digest-ask"), dump("session-echo-ask")));
  says(server, client, records(dump("session-echo"), dump("session-digest")));
  serve(*client);
  exports->entityDel("units");
  says(server, client, dump("session-withdraw"));
}

TEST_F(SessionDocument, AWriteThatIsDecided) {
  using namespace Maintenance::Unit;
  units->statusIs("System")->stateIs(active);
  share(Zel::accessReadWrite);
  settle();
  client->writeIf({mirror("System"), Status::Attr::state, {}, active, maintenanceModeEnter}, {});
  client->writeIf({mirror("System"), Status::Attr::history, 1.5, Zel::String8("entered"),
                   Zel::String8("begun!")},
                  {});
  client->writeIf({mirror("System"), Status::Attr::history, 2.5, {}, Zel::String8("over")}, {});
  says(client, server,
       records(records(dump("session-write-if"), dump("session-write-if-entry")),
               dump("session-write-new")));
  units->status("System")->historyIs(1.5, "begun"); // too late for that
  EXPECT_EQ(units->status("System")->state(), active);
  serve(*server);
  EXPECT_EQ(units->status("System")->state(), maintenanceModeEnter);
  EXPECT_EQ(units->status("System")->history(2.5), "over");
  const std::string said = written(*server);
  EXPECT_NE(said.find(dump("session-written")), std::string::npos) << said;
  EXPECT_TRUE(said.ends_with(dump("session-written-new"))) << said;
}

TEST_F(SessionDocument, ARightThatIsTakenAndGivenBack) {
  share(Zel::accessReadWrite);
  settle();
  exports->writableIs("units", false);
  mirror()->statusIs("a"); // which crosses the freeze
  says(server, client, dump("session-freeze"));
  serve(*client);
  const std::string answer = hexOf(viewOf(client->connection()->pendingOutput()));
  EXPECT_TRUE(answer.ends_with(dump("session-frozen"))) << answer;
  move(*client, *server);
  exports->writableIs("units", true);
  serve(*server);
  const std::string given = written(*server);
  EXPECT_TRUE(given.ends_with(dump("session-thaw"))) << given;
}

TEST_F(SessionDocument, AGrantOfLess) {
  exports->entityIs(units);
  mounts->mountIs("units", Zel::accessReadWrite);
  serve(*server);
  serve(*client);
  move(*client, *server);
  move(*server, *client);
  serve(*server);
  move(*server, *client);
  serve(*client);
  move(*client, *server);
  serve(*server);
  const std::string said = written(*server);
  EXPECT_EQ(said.substr(0, dump("session-grant").size()), dump("session-grant"));
  EXPECT_EQ(said.substr(dump("session-grant").size() + 1, dump("orphan").size() - 48),
            dump("orphan").substr(0, dump("orphan").size() - 48));
}

/// Refuses all.
class Closed : public Zel::Exports {
public:
  Zel::Access grant(const Session& /*session*/, const Zel::Name& /*name*/,
                    Zel::Access /*wanted*/) const override {
    return Zel::accessNone;
  }
};

TEST(SessionDocumentRead, ByTheEndThatMirrors) {
  Alone client(End::first);
  const Ptr<Mount> mount = client.mounts->mountIs("units", Zel::accessReadWrite);
  client.hear(bytes("hello"));
  EXPECT_EQ(client.session->peer().name, "server");
  EXPECT_EQ(client.session->peer().maxEntities, 4194304U);
  EXPECT_EQ(client.session->peer().maxKeys, 4194304U);
  EXPECT_EQ(client.session->peer().maxPartialText, 67108864U);
  client.said();
  client.hear(bytes("offer"));
  EXPECT_EQ(hexOf(Wiretap::taken(*client.session->connection())), dump("session-ask"));
  client.hear(bytes("offers-end"));
  EXPECT_TRUE(client.session->hasOffers());
  client.hear(bytes("refuse"));
  EXPECT_EQ(mount->reason(), "not granted");
  client.hear(bytes("offer") + bytes("grant"));
  EXPECT_EQ(mount->access(), Zel::accessReadOnly);
  constexpr Zel::EntityId id{2, 0x80000000};
  client.hear(Alone::root("units", id) + Alone::syncMode(id, 1));
  auto result = Session::digestUnknown;
  bool echoed = false;
  client.session->digestAsk("units", [&](Session::DigestResult answer) { result = answer; });
  client.session->echoAsk([&](Session::EchoResult came) { echoed = came == Session::echoApplied; });
  client.serve();
  client.hear(bytes("digest") + bytes("echo"));
  EXPECT_EQ(result, Session::digestEqual);
  EXPECT_TRUE(echoed);
  client.hear(bytes("withdraw"));
  EXPECT_EQ(mount->reason(), "withdrawn by server");
  EXPECT_EQ(client.counts().badValues, 0U);
}

TEST(SessionDocumentRead, InThePlaceOfAHello) {
  EXPECT_EQ(Session::bye(Session::endingBusy, "there are 64 clients already"), bytes("bye"));
  Alone client(End::first);
  client.hear(bytes("bye"));
  EXPECT_EQ(client.session->peer().ending, Session::endingBusy);
  EXPECT_EQ(client.session->peer().reason, "there are 64 clients already");
}

TEST(SessionDocumentRead, ByTheEndThatExports) {
  Alone server;
  server.exports->entityIs(Maintenance::Unit::statusDirFactory("units"));
  server.hear(Alone::hello());
  server.said();
  server.hear(bytes("ask"));
  EXPECT_EQ(server.said().front(), "grant units read-only");
  server.hear(bytes("digest-ask") + bytes("echo-ask"));
  EXPECT_EQ(hexOf(Wiretap::taken(*server.session->connection())),
            records(dump("session-echo"), dump("session-digest")));
  const auto closed = Zel::makeObject<Closed>();
  closed->entityIs(Maintenance::Unit::statusDirFactory("units"));
  const auto other = Zel::makeObject<Session>(End::second, Zel::SessionOptions(),
                                              Ptr<Zel::Exports>(closed), nullptr);
  const std::string input = Alone::hello() + bytes("ask");
  std::memcpy(other->connection()->inputSpace().data(), input.data(), input.size());
  other->connection()->inputReceived(input.size());
  other->service(1);
  const std::string said = written(*other);
  EXPECT_EQ(said.substr(said.size() - dump("session-refuse").size()), dump("session-refuse"));
}

} // namespace
