#include "Two.h"

#include <gtest/gtest.h>

// Changes of what is owed already, counted for each root.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;

class Coalesced : public testing::Test, public TwoUnits {
protected:
  void SetUp() override {
    connectTightly();
    units->statusIs("a");
    units->statusIs("b");
    exports->entityIs(more);
    more->statusIs("c");
    mounts->mountIs("more");
    share();
    settle();
    Wiretap::fill(*server->connection(), 100);
  }
  std::uint64_t coalesced(const char* root) const { return server->exported(root)->coalesced(); }
  std::size_t owed(const char* root) const { return server->exported(root)->owed(); }
  void drain() {
    Wiretap::taken(*server->connection()); // of the filling nobody is to hear
    settle();
  }

  const Ptr<StatusDir> more = statusDirFactory("more");
};

TEST_F(Coalesced, ChangesOfWhatIsOwedAlreadyAreCountedForTheirRoot) {
  const Ptr<Status> a = units->status("a");
  for (unsigned i = 1; i <= 5; ++i) {
    a->genIdIs(i);
  }
  EXPECT_EQ(coalesced("units"), 4U);
  EXPECT_EQ(owed("units"), 1U);
  a->stateIs(underMaintenance);
  EXPECT_EQ(coalesced("units"), 4U);
  EXPECT_EQ(owed("units"), 1U);
  for (const char* const text : {"one", "two", "three"}) {
    a->historyIs(1, text);
  }
  EXPECT_EQ(coalesced("units"), 6U);
  a->historyIs(2, "other");
  a->historyDel(2);
  EXPECT_EQ(coalesced("units"), 7U);
  a->profileNameIs("x");
  a->profileNameIs("y");
  EXPECT_EQ(coalesced("units"), 8U);
  units->status("b")->genIdIs(1);
  EXPECT_EQ(coalesced("units"), 8U);
  EXPECT_EQ(owed("units"), 2U);
  EXPECT_EQ(coalesced("more"), 0U);
  EXPECT_EQ(owed("more"), 0U);
  more->status("c")->genIdIs(1);
  more->status("c")->genIdIs(2);
  EXPECT_EQ(coalesced("more"), 1U);
  drain();
  EXPECT_EQ(coalesced("units"), 8U);
  EXPECT_EQ(coalesced("more"), 1U);
  EXPECT_EQ(owed("units"), 0U);
  EXPECT_EQ(owed("more"), 0U);
  EXPECT_TRUE(isEqual());
}

TEST_F(Coalesced, MembersAreCountedToo) {
  units->statusIs("d");
  EXPECT_EQ(owed("units"), 1U);
  EXPECT_EQ(coalesced("units"), 0U);
  units->statusDel("d");
  EXPECT_EQ(coalesced("units"), 1U);
  units->statusIs("d");
  EXPECT_EQ(coalesced("units"), 2U);
  drain();
  EXPECT_TRUE(isEqual());
  EXPECT_EQ(coalesced("units"), 2U);
}

TEST_F(Coalesced, NothingIsWhileThereIsRoom) {
  drain();
  for (unsigned i = 1; i <= 5; ++i) {
    units->status("a")->genIdIs(i);
  }
  EXPECT_EQ(coalesced("units"), 0U);
  EXPECT_EQ(owed("units"), 0U);
}

} // namespace
