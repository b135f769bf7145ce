#include "Says.h"

#include "attrlog/Ear.h"

#include <gtest/gtest.h>

// What the ends say to each other waits for room in the ring as the log does, up to a limit.

namespace {

using Wiretap::listen;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;
using Zel::String8;

class FullRing : public testing::Test, public TwoUnits {
protected:
  FullRing() { connectTightly(); }

  /// Live units, and a server whose ring is full of their changes, none of which is read.
  void fill() {
    fillUnits(40, 1);
    share();
    settle();
    const String8 text(std::string(9000, 'x'));
    for (unsigned i = 0; i < 40; ++i) {
      units->status(Zel::Name(std::to_string(i)))->profileNameIs(text);
    }
    serve(*server);
    ASSERT_FALSE(server->connection()->out()->hasSufficientBuffer());
  }
};

TEST_F(FullRing, AnEchoWaitsForRoomAndForTheChangesBeforeIt) {
  fill();
  bool isEqualAtEcho = false;
  unsigned echoes = 0;
  client->echoAsk(
      [&](Session::EchoResult came) { echoes += came == Session::echoApplied ? 1 : 0; });
  server->echoAsk(
      [&](Session::EchoResult came) { isEqualAtEcho = came == Session::echoApplied && isEqual(); });
  settle();
  EXPECT_STREQ(server->failure().charPtr(), "");
  EXPECT_EQ(echoes, 1U);
  EXPECT_TRUE(isEqualAtEcho);
}

TEST_F(FullRing, WhatIsSaidWaitsInOrder) {
  fill();
  const Ptr<StatusDir> more = Maintenance::Unit::statusDirFactory("more");
  exports->entityIs(more);
  exports->entityDel("more");
  exports->entityIs(more, Zel::accessReadWrite);
  mounts->mountIs("more", Zel::accessReadWrite);
  settle();
  EXPECT_STREQ(server->failure().charPtr(), "");
  ASSERT_TRUE(mounts->areLive());
  EXPECT_TRUE(mounts->mount("more")->isWritable());
}

// The mirror has heard of neither when it asks, and the answer waits for room.
TEST_F(FullRing, AQuestionThatWaitsWhenTheRootIsWithdrawnIsNotAnsweredBehindTheNextOffer) {
  const Ptr<StatusDir> more = Maintenance::Unit::statusDirFactory("more");
  exports->entityIs(more);
  settle();
  const Ptr<Zel::Mount> mount = mounts->mountIs("more");
  fill();
  serve(*client);
  move(*client, *server);
  serve(*server); // has read the question
  exports->entityDel("more");
  exports->entityIs(more);
  settle();
  EXPECT_EQ(mount->state(), Zel::Mount::live);
  EXPECT_STREQ(server->failure().charPtr(), "");
}

TEST_F(FullRing, AnAskWaitsForRoom) {
  fill();
  exports->entityIs(Maintenance::Unit::statusDirFactory("more"));
  settle();
  const String8 text(std::string(9000, 'y'));
  for (unsigned i = 0; i < 40; ++i) {
    units->status(Zel::Name(std::to_string(i)))->profileNameIs(text);
  }
  serve(*server);
  ASSERT_FALSE(server->connection()->out()->hasSufficientBuffer());
  mounts->mountIs("more");
  mounts->mountIs("nothing"); // not offered
  serve(*client);
  move(*client, *server);
  serve(*server);
  settle();
  EXPECT_STREQ(server->failure().charPtr(), "");
  EXPECT_EQ(mounts->mount("more")->state(), Mount::live);
  EXPECT_EQ(mounts->mount("nothing")->state(), Mount::waiting);
  EXPECT_TRUE(isEqual());
}

TEST_F(FullRing, ADigestIsAskedForWhenThereIsRoom) {
  fillUnits(40, 1);
  share(Zel::accessReadWrite);
  settle();
  const String8 text(std::string(9000, 'x'));
  for (unsigned i = 0; i < 40; ++i) {
    mirror()->status(Zel::Name(std::to_string(i)))->profileNameIs(text);
  }
  serve(*client);
  ASSERT_FALSE(client->connection()->out()->hasSufficientBuffer());
  Session::DigestResult result = Session::digestUnknown;
  client->digestAsk("units", [&](Session::DigestResult answer) { result = answer; });
  settle();
  EXPECT_STREQ(client->failure().charPtr(), "");
  EXPECT_EQ(result, Session::digestEqual);
}

TEST_F(FullRing, ManyOffersWaitForRoom) {
  for (unsigned i = 0; i < 600; ++i) {
    exports->entityIs(Maintenance::Unit::statusDirFactory(
        Zel::Name("a directory of units with number " + std::to_string(i))));
  }
  mounts->allIs(Zel::accessReadOnly);
  settle();
  EXPECT_STREQ(server->failure().charPtr(), "");
  EXPECT_TRUE(client->hasOffers());
  EXPECT_EQ(client->offers().size(), 600U);
  EXPECT_EQ(mounts->mounts().size(), 256U);
  EXPECT_TRUE(mounts->areLive());
}

} // namespace
