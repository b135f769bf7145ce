#include "Says.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

#include <stdexcept>

// Digests and echoes.

namespace {

using namespace Maintenance::Unit;
using Result = Zel::Session::DigestResult;
using Results = std::vector<Result>;
using Words = std::vector<std::string>;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;
using Zel::String8;

class Asking : public testing::Test, public TwoUnits {
protected:
  /// Whoever still waits is answered while there is somewhere to put it.
  ~Asking() override { cut(); }

  using EchoResult = Session::EchoResult;

  void ask(const char* name = "units") {
    client->digestAsk(name, [this](Result result) { results.push_back(result); });
  }
  void echo(const Ptr<Session>& of) {
    of->echoAsk([this](EchoResult came) { echoes.push_back(came); });
  }

  Results results;
  std::vector<EchoResult> echoes;
};

TEST_F(Asking, ADigestTellsWhetherTheMirrorIsEqual) {
  units->statusIs("a");
  share();
  settle();
  ask();
  EXPECT_EQ(results, Results());
  settle();
  EXPECT_EQ(results, Results{Session::digestEqual});
  // What no adapter sees.
  mirror()->zelFrozenIs(false);
  mirror()->newStatus("b");
  mirror()->zelFrozenIs(true);
  ask();
  settle();
  EXPECT_EQ(results, (Results{Session::digestEqual, Session::digestDiffers}));
}

TEST_F(Asking, OfWhatIsNotMountedNothingIsKnown) {
  ask("nothing");
  EXPECT_EQ(results, Results{Session::digestUnknown});
  share();
  ask();
  EXPECT_EQ(results.size(), 2U);
  settle();
  ask();
  exports->entityDel("units");
  settle();
  EXPECT_EQ(results,
            (Results{Session::digestUnknown, Session::digestUnknown, Session::digestUnknown}));
  cut();
  ask();
  EXPECT_EQ(results.size(), 4U);
  EXPECT_EQ(results.back(), Session::digestUnknown);
}

TEST_F(Asking, WhoWaitsWhenTheSessionEndsIsToldSo) {
  share();
  settle();
  ask();
  ask();
  echo(client);
  serve(*client);
  echo(client);
  cut();
  EXPECT_EQ(results, (Results{Session::digestUnknown, Session::digestUnknown}));
  EXPECT_EQ(echoes, (std::vector<EchoResult>{Session::echoUnknown, Session::echoUnknown}));
  echo(client);
  EXPECT_EQ(echoes.size(), 3U);
}

TEST_F(Asking, TwoDigestsAreAnsweredInOneService) {
  share();
  settle();
  ask();
  ask();
  serve(*client);
  move(*client, *server);
  serve(*server);
  EXPECT_EQ(says(Wiretap::records(*server->connection())),
            (Words{"digest 1 result 0", "digest 2 result 0"}));
}

TEST_F(Asking, TooManyDigestsAtATimeAreRefused) {
  share();
  settle();
  for (unsigned i = 0; i < Session::maxDigests; ++i) {
    ask();
  }
  EXPECT_THROW(ask(), Zel::RangeException);
  settle();
  EXPECT_EQ(results, Results(16, Session::digestEqual));
  ask();
  settle();
  EXPECT_EQ(results.size(), 17U);
}

TEST_F(Asking, AnEndThatOwesSomethingForTooLongIsBusy) {
  connectTightly();
  fillUnits(40, 1);
  share();
  settle();
  now = 200;
  ask();
  serve(*client);
  move(*client, *server);
  const String8 text(std::string(9000, 'x'));
  for (unsigned i = 0; i < 40; ++i) {
    units->status(Zel::Name(std::to_string(i)))->profileNameIs(text);
  }
  serve(*server);
  EXPECT_EQ(server->deadline(), 210);
  now = 209;
  serve(*server);
  now = 210;
  serve(*server);
  while (move(*server, *client) != 0) { // room for the answer, while changes are owed still
    serve(*client);
    if (!results.empty()) {
      break;
    }
    server->service(now, 1);
  }
  EXPECT_EQ(results, Results{Session::digestBusy});
  EXPECT_EQ(server->deadline(), Session::never);
  settle();
  ask();
  settle();
  EXPECT_EQ(results.back(), Session::digestEqual);
}

TEST_F(Asking, AMirrorThatOwesSomethingForTooLongIsBusy) {
  connectTightly();
  fillUnits(40, 1);
  share(Zel::accessReadWrite);
  settle();
  const String8 text(std::string(9000, 'x'));
  for (unsigned i = 0; i < 40; ++i) {
    mirror()->status(Zel::Name(std::to_string(i)))->profileNameIs(text);
  }
  now = 200;
  serve(*client);
  ask();
  serve(*client);
  EXPECT_EQ(client->deadline(), 210);
  now = 210;
  serve(*client);
  EXPECT_EQ(results, Results{Session::digestBusy});
  EXPECT_EQ(client->deadline(), Session::never);
}

TEST_F(Asking, WhatIsWrittenAfterTheQuestionMakesNoDifference) {
  units->statusIs("a");
  share(Zel::accessReadWrite);
  settle();
  ask();
  serve(*client);
  move(*client, *server);
  serve(*server);
  mirror("a")->genIdIs(7); // which the peer's digest is without
  settle();
  EXPECT_EQ(results, Results{Session::digestBusy});
  mirror()->newStatus("b");
  ask();
  settle();
  EXPECT_EQ(results.back(), Session::digestDiffers);
}

TEST_F(Asking, ADigestWaitsForTheWalk) {
  connectTightly();
  fillUnits(2000, 50);
  const Ptr<Mount> mount = share();
  for (unsigned i = 0; i < 20 && mount->state() != Mount::resyncing; ++i) {
    server->service(now);
    client->service(now);
    move(*server, *client);
    move(*client, *server);
  }
  ASSERT_EQ(mount->state(), Mount::resyncing);
  ask();
  bool wasLive = false;
  client->digestAsk("units", [&](Result) { wasLive = mount->state() == Mount::live; });
  settle();
  EXPECT_EQ(results, Results{Session::digestEqual});
  EXPECT_TRUE(wasLive);
}

TEST_F(Asking, AnEchoComesBehindWhatWasChangedBefore) {
  units->statusIs("a");
  share(Zel::accessReadWrite);
  settle();
  mirror("a")->genIdIs(7);
  unsigned atEcho = 0;
  client->echoAsk([&](EchoResult) { atEcho = units->status("a")->genId(); });
  units->status("a")->totalIntfTrafficViolationsIs(5);
  unsigned atOther = 0;
  server->echoAsk([&](EchoResult) { atOther = mirror("a")->totalIntfTrafficViolations(); });
  settle();
  EXPECT_EQ(atEcho, 7U);
  EXPECT_EQ(atOther, 5U);
}

TEST_F(Asking, AnEchoThatIsAskedForBeforeTheHelloWaitsForIt) {
  echo(client);
  serve(*client);
  EXPECT_EQ(says(Wiretap::parsed(Wiretap::taken(*client->connection()))), Words{"hello"});
  EXPECT_EQ(echoes, std::vector<EchoResult>());
}

TEST_F(Asking, ManyEchoesAreAskedForAtOnce) {
  settle();
  for (unsigned i = 0; i < 5; ++i) {
    echo(client);
  }
  serve(*client);
  EXPECT_EQ(says(Wiretap::records(*client->connection())),
            (Words{"echo? 1", "echo? 2", "echo? 3", "echo? 4", "echo? 5"}));
}

TEST_F(Asking, AnAnswerThatThrowsHurtsNobodyElse) {
  share();
  settle();
  client->digestAsk("units", [](Result) { throw std::runtime_error("no"); });
  client->echoAsk([](EchoResult) { throw 1; });
  ask();
  echo(client);
  settle();
  EXPECT_EQ(results, Results{Session::digestEqual});
  EXPECT_EQ(echoes, std::vector<EchoResult>{Session::echoApplied});
  EXPECT_EQ(client->connection()->demuxer()->counts().badValues, 0U);
  client->echoAsk([](EchoResult) { throw std::runtime_error("no"); });
  echo(client);
  cut();
  EXPECT_EQ(echoes, (std::vector<EchoResult>{Session::echoApplied, Session::echoUnknown}));
}

} // namespace
