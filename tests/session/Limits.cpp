#include "Says.h"

#include <gtest/gtest.h>

// What an end keeps for its peer, at most.

namespace {

using Zel::SessionOptions;

constexpr const char* tooMany =
    "change of attribute 258 lost: more entities than are kept for a peer";

class Limited : public testing::Test, public TwoUnits {
protected:
  static SessionOptions atMost(std::size_t entities) {
    SessionOptions options;
    options.limits.maxEntities = entities;
    return options;
  }
};

TEST_F(Limited, WhatAnEndExportsItselfIsNoneOfThePeers) {
  fillUnits(5, 1);
  connect({}, atMost(2));
  share(Zel::accessReadWrite);
  settle();
  mirror()->statusIs("a");
  mirror()->statusIs("b");
  settle();
  EXPECT_TRUE(units->status("b"));
  EXPECT_EQ(server->connection()->demuxer()->announced(), 2U);
  EXPECT_EQ(server->connection()->demuxer()->adapters(), 8U);
  mirror()->statusDel("a"); // which makes room
  settle();
  mirror()->statusIs("c");
  settle();
  EXPECT_TRUE(units->status("c"));
  EXPECT_EQ(server->failure(), "");
  mirror()->statusIs("d");
  settle();
  EXPECT_EQ(server->failure(), tooMany);
  EXPECT_EQ(server->connection()->demuxer()->announced(), 0U);
}

TEST_F(Limited, RootsOfAPeerCountTogether) {
  fillUnits(2, 1);
  const auto more = Maintenance::Unit::statusDirFactory("more");
  exports->entityIs(more);
  connect(atMost(5));
  mounts->allIs(Zel::accessReadOnly);
  share();
  settle();
  EXPECT_EQ(client->connection()->demuxer()->announced(), 4U);
  more->statusIs("a");
  settle();
  EXPECT_EQ(client->connection()->demuxer()->announced(), 5U);
  units->statusIs("b");
  settle();
  EXPECT_EQ(client->failure(), tooMany);
}

constexpr const char* tooLong =
    "status of units: string of 16001 bytes where at most 16000 are sent";

TEST_F(Limited, AKeyThatIsTooLongForAPeerEndsTheSessionAndNotTheMutator) {
  share();
  settle();
  const Zel::Name name(std::string(Zel::maxWholeString + 1, 'x'));
  EXPECT_EQ(units->statusIs(name)->name(), name);
  EXPECT_EQ(server->failure(), tooLong);
}

TEST_F(Limited, AKeyThatIsTooLongIsNoneOfAWalkEither) {
  units->statusIs(Zel::Name(std::string(Zel::maxWholeString + 1, 'x')));
  share();
  settle();
  EXPECT_EQ(server->failure(), tooLong);
}

} // namespace
