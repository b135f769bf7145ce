#include "Alone.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;
using End = Zel::Connection::End;

TEST(Hello, IsSaidAtOnceAndAnsweredWithWhatIsOffered) {
  Alone server;
  server.exports->entityIs(Maintenance::Unit::statusDirFactory("units"));
  server.exports->entityIs(Maintenance::Unit::statusDirFactory("more"), Zel::accessReadWrite);
  EXPECT_EQ(server.said(), Words{"hello"});
  EXPECT_FALSE(server.session->isOpen());
  server.hear(Alone::hello());
  EXPECT_TRUE(server.session->isOpen());
  EXPECT_EQ(server.said(),
            (Words{"offer more Maintenance::Unit::StatusDir read-write",
                   "offer units Maintenance::Unit::StatusDir read-only", "offers end"}));
  EXPECT_EQ(server.session->peer().name, "peer");
  EXPECT_EQ(server.session->connection()->peerName(), "peer") << "which refusals name";
  EXPECT_EQ(server.session->peer().version, 2U);
  EXPECT_EQ(server.session->peer().maxEntities, 1U);
  EXPECT_EQ(server.session->peer().maxKeys, 2U);
  EXPECT_EQ(server.session->peer().maxPartialText, 3U);
  EXPECT_EQ(server.log, Words{"info: session with peer is open"});
}

struct Case {
  const char* name;
  HelloWords words;
  const char* failure;
};

class BadHello : public testing::TestWithParam<Case> {};

TEST_P(BadHello, EndsTheSessionAndSaysWhy) {
  Alone server;
  server.said();
  server.hear(Alone::hello(GetParam().words));
  EXPECT_EQ(server.failure(), GetParam().failure);
  EXPECT_FALSE(server.session->isOpen());
  EXPECT_EQ(server.said(), Words());
  EXPECT_EQ(server.log,
            Words{"warning: session with a peer ended: " + std::string(GetParam().failure)});
}

std::string caseName(const testing::TestParamInfo<Case>& one) { return one.param.name; }

INSTANTIATE_TEST_SUITE_P(
    Of, BadHello,
    testing::Values(
        Case{"Magic", {0x4d61696f}, "no hello of this protocol"},
        Case{"Version",
             {Zel::Session::magic, 1},
             "the peer speaks version 1 of the protocol, this end version 2"},
        Case{"ByteOrder", {Zel::Session::magic, 2, 0x04030201}, "the peer has another byte order"},
        Case{"Side",
             {Zel::Session::magic, 2, 0x01020304, 1},
             "both ends take the same side of the connection"}),
    caseName);

TEST(Hello, OfANewerVersionMayBeOfAnotherForm) {
  Alone server;
  server.hear(Alone::record(1, [](Alone::Out& out) {
    out.put32(Zel::Session::magic);
    out.put32(7);
  }));
  EXPECT_EQ(server.failure(), "the peer speaks version 7 of the protocol, this end version 2");
}

TEST(Hello, OfThisVersionMayHoldMoreThanIsKnown) {
  Alone server;
  std::string bytes = Alone::hello();
  bytes.insert(bytes.size() - 1, "more");
  bytes[3] = static_cast<char>(bytes[3] + 4);
  server.hear(bytes);
  EXPECT_TRUE(server.session->isOpen());
}

TEST(Hello, ThatIsCutShortIsNone) {
  for (const unsigned left : {1U, 5U, 9U, 13U, 20U}) {
    Alone server;
    server.hear(Alone::record(1, [&](Alone::Out& out) {
      const std::string whole = Alone::hello();
      out.putBytes(whole.data() + 28, left - 1);
    }));
    EXPECT_EQ(server.failure(),
              left < 9 ? "no hello of this protocol" : "the peer's first record is no hello");
    EXPECT_FALSE(server.session->isOpen());
  }
}

TEST(Hello, IsSaidOnce) {
  Alone server;
  server.hear(Alone::hello());
  ASSERT_TRUE(server.session->isUp());
  server.hear(Alone::hello());
  EXPECT_EQ(server.failure(), "a hello that is not the first record");
}

TEST(Hello, ComesFirst) {
  for (const std::string& first :
       {Alone::offer("units"), Alone::numbered(10, 1), Alone::numbered(200, 1)}) {
    Alone server;
    server.hear(first);
    EXPECT_EQ(server.failure(), "the peer's first record is no hello");
  }
  Alone server;
  server.hear(Alone::root("units", {2, 0}) + Alone::hello());
  EXPECT_EQ(server.failure(), "a hello that is not the first record");
  EXPECT_EQ(server.dir->entities().size(), 0U);
}

TEST(Hello, IsWaitedForAsLongAsWasSaid) {
  Alone server(End::second, 7);
  EXPECT_EQ(server.session->deadline(), Zel::Session::never);
  server.serve();
  EXPECT_EQ(server.session->deadline(), 107);
  server.now = 106.9;
  server.serve();
  EXPECT_TRUE(server.session->isUp());
  server.now = 107;
  server.serve();
  EXPECT_EQ(server.failure(), "no hello from the peer in time");
  EXPECT_EQ(server.session->deadline(), Zel::Session::never);
}

TEST(Hello, EndsTheWait) {
  Alone client(End::first, 7);
  client.serve();
  client.hear(Alone::hello(accepting));
  EXPECT_EQ(client.session->deadline(), Zel::Session::never);
  client.now = 1000;
  client.serve();
  EXPECT_TRUE(client.session->isUp());
}

} // namespace
