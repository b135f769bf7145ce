#include "Alone.h"

#include <gtest/gtest.h>

// What the ends tell each other when a session ends.

namespace {

using Words = std::vector<std::string>;
using End = Zel::Connection::End;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;
using Zel::String8;

/// The records in what an end would still send, in words.
Words lastWords(const Session& session) {
  const std::string& bytes = session.lastWords();
  return bytes.empty() ? Words() : says(Wiretap::parsed(bytes));
}

TEST(Bye, IsTheLastWordOfASessionThatIsClosed) {
  Alone server;
  server.hear(Alone::hello());
  server.said();
  EXPECT_EQ(server.session->lastWords(), "");
  server.session->close(server.now, "the server ends");
  EXPECT_EQ(lastWords(*server.session), Words{"bye 1: the server ends"});
  EXPECT_EQ(server.failure(), "the server ends");
}

TEST(Bye, StandsBehindWhatWasOnItsWay) {
  Alone server;
  server.hear(Alone::hello());
  server.session->close(server.now, "the server ends");
  EXPECT_EQ(lastWords(*server.session), (Words{"hello", "offers end", "bye 1: the server ends"}));
  EXPECT_FALSE(server.session->connection()->wantsWrite());
}

TEST(Bye, StandsBehindTheRestOfARecordOfWhichAPartHasGone) {
  Alone server;
  const auto hello = server.session->connection()->pendingOutput();
  const std::string part(hello.begin(), hello.begin() + 10);
  server.session->connection()->outputConsumed(part.size());
  server.session->close(server.now, "the server ends");
  EXPECT_EQ(says(Wiretap::parsed(part + server.session->lastWords())),
            (Words{"hello", "bye 1: the server ends"}));
}

TEST(Bye, TakesWhatIsLeftInBothPartsOfAFullRing) {
  Alone server(End::second, 5, Two::smallest());
  server.hear(Alone::hello());
  server.said();
  Wiretap::fill(*server.session->connection(), 1000);
  server.session->connection()->outputConsumed(20000);
  Wiretap::fill(*server.session->connection(), 1000);
  const std::size_t left = server.session->connection()->out()->capacity() -
                           server.session->connection()->out()->freeSpace();
  ASSERT_GT(left, server.session->connection()->pendingOutput().size());
  server.session->close(server.now, "enough");
  EXPECT_EQ(server.session->lastWords().size(), left + Session::bye({}, "enough").size());
}

TEST(Bye, OfAPeerThatIsAtFaultSaysWhatItWas) {
  Alone server;
  server.said();
  server.hear(Alone::hello({Session::magic, 1}));
  const char* const why = "the peer speaks version 1 of the protocol, this end version 2";
  EXPECT_EQ(lastWords(*server.session), Words{std::string("bye 2: ") + why});
}

TEST(Bye, TellsTheOtherEndWhy) {
  Alone client(End::first);
  client.hear(Alone::hello(accepting));
  const Ptr<Mount> mount = client.mounts->mountIs("units");
  constexpr Zel::EntityId id{2, 0x80000000};
  client.hear(Alone::offer("units") + Alone::grant("units") + Alone::root("units", id) +
              Alone::syncMode(id, 1));
  ASSERT_EQ(mount->state(), Mount::live);
  client.log.clear();
  client.hear(Alone::bye(1, "the server ends"));
  EXPECT_FALSE(client.session->isUp());
  EXPECT_EQ(client.failure(), "the peer says: the server ends");
  EXPECT_EQ(client.session->peer().ending, Session::endingOver);
  EXPECT_EQ(client.session->peer().reason, "the server ends");
  EXPECT_EQ(mount->state(), Mount::stale);
  EXPECT_EQ(mount->reason(), "the peer says: the server ends");
  EXPECT_EQ(client.log, Words{"info: session with peer ended: the peer says: the server ends"});
}

TEST(Bye, IsNotAnswered) {
  Alone client(End::first);
  client.hear(Alone::hello(accepting) + Alone::bye(1, "over"));
  EXPECT_EQ(client.session->lastWords(), "");
}

TEST(Bye, MayComeInThePlaceOfAHello) {
  Alone client(End::first);
  client.hear(Alone::bye(3, "user 7 may not connect"));
  EXPECT_FALSE(client.session->isOpen());
  EXPECT_EQ(client.failure(), "the peer says: user 7 may not connect");
  EXPECT_EQ(client.log, Words{"warning: session with a peer ended: the peer says: user 7 may not "
                              "connect"});
  EXPECT_EQ(client.session->peer().ending, Session::endingRefused);
}

TEST(Bye, OfAnUnknownNumberIsOneAllTheSame) {
  for (const unsigned ending : {0U, 5U, 255U}) {
    Alone client(End::first);
    client.hear(Alone::bye(ending, ""));
    EXPECT_EQ(client.failure(), "the peer has ended the session");
    EXPECT_EQ(client.session->peer().ending, Session::endingOver);
  }
}

TEST(Log, ThatThrowsEndsNothing) {
  Zel::SessionOptions options;
  options.log = [](Zel::LogLevel /*level*/, const String8& /*line*/) {
    throw std::runtime_error("no space left");
  };
  auto session = Zel::makeObject<Session>(End::second, options, nullptr, nullptr);
  const std::string hello = Alone::hello();
  std::memcpy(session->connection()->inputSpace().data(), hello.data(), hello.size());
  session->connection()->inputReceived(hello.size());
  session->service(1);
  EXPECT_TRUE(session->isOpen());
  EXPECT_EQ(session->failure(), "");
  session->close(2, "over");
  EXPECT_EQ(session->failure(), "over");
  session = Zel::makeObject<Session>(End::second, options, nullptr, nullptr);
  session = nullptr; // which says so too
}

TEST(Bye, IsFitForMessages) {
  Alone client(End::first);
  client.hear(Alone::bye(1, String8("a\x1b[2Jb\n" + std::string(300, 'x'))));
  EXPECT_EQ(client.session->peer().reason, String8("a?[2Jb?" + std::string(193, 'x')));
  const std::string whole = Session::bye(Session::endingOver, String8(std::string(40000, 'y')));
  EXPECT_EQ(says(Wiretap::parsed(whole)), Words{"bye 1: " + std::string(200, 'y')});
}

} // namespace
