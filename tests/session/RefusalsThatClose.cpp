#include "Two.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>

#include <gmock/gmock.h>

// A program that hears of a mount's state in the midst of a refused write, and will have no more of
// it.

namespace {

using namespace Maintenance::Unit;
using testing::ElementsAre;
using Wiretap::listen;
using Zel::Mount;
using Zel::Ptr;

class RefusalsThatClose : public testing::Test, public TwoUnits {
protected:
  RefusalsThatClose() {
    units->statusIs("a")->genIdIs(7);
    units->statusIs("b");
    const Ptr<Mount> mount = share();
    settle();
    ear = listen<MountEar>(mount);
    unit = mirror("a");
    EXPECT_EQ(mount->state(), Mount::live);
  }
  /// What happens as soon as the mirror is out of step.
  template <class Work>
  void onResyncing(Work&& work) const {
    ear->onHeard = [work = std::forward<Work>(work)](const std::string& word) {
      if (word.starts_with("resyncing")) {
        work();
      }
    };
  }
  /// The next session brings the mirror into step again.
  void expectRepaired() {
    ear->onHeard = nullptr;
    connect();
    settle();
    EXPECT_EQ(mount()->state(), Mount::live);
    EXPECT_EQ(mirror("a")->genId(), 7U);
    EXPECT_TRUE(isEqual());
  }

  Ptr<MountEar> ear;
  Ptr<Status> unit;
};

TEST_F(RefusalsThatClose, TheSession) {
  onResyncing([this] { client->close(now, "enough"); });
  EXPECT_THROW(unit->genIdIs(8), Zel::ReadOnlyException);
  EXPECT_THAT(ear->taken(), ElementsAre("resyncing at 100", "stale at 100: enough"));
  EXPECT_THROW(unit->genIdIs(9), Zel::ReadOnlyException); // there is a guard
  expectRepaired();
}

TEST_F(RefusalsThatClose, TheSessionForGood) {
  onResyncing([this] {
    client->close(now, "enough");
    client = nullptr;
  });
  EXPECT_THROW(unit->genIdIs(8), Zel::ReadOnlyException);
  EXPECT_THROW(unit->genIdIs(9), Zel::ReadOnlyException);
  expectRepaired();
}

TEST_F(RefusalsThatClose, ItsConnectionAlone) {
  onResyncing([this] { client->connection()->close("enough"); });
  EXPECT_THROW(unit->genIdIs(8), Zel::ReadOnlyException);
  EXPECT_THROW(unit->genIdIs(9), Zel::ReadOnlyException);
  serve(*client);
  EXPECT_EQ(mount()->state(), Mount::stale);
  expectRepaired();
}

// Nobody needs a guard of what has left the tree, so its adapter goes.
TEST_F(RefusalsThatClose, TheSessionWhenItHasTakenTheMemberOut) {
  onResyncing([this] {
    EXPECT_THROW(mirror()->statusDel("a"), Zel::ReadOnlyException);
    client->close(now, "enough");
    EXPECT_EQ(unit->zelNotifieeList().count(), 0U);
  });
  EXPECT_THROW(unit->genIdIs(8), Zel::ReadOnlyException);
  EXPECT_NO_THROW(unit->genIdIs(9)); // it is no mirror any more
  expectRepaired();
}

TEST_F(RefusalsThatClose, TheSessionOfAMemberThatWasMade) {
  onResyncing([this] { client->close(now, "enough"); });
  EXPECT_THROW(mirror()->statusIs("mine"), Zel::ReadOnlyException);
  EXPECT_THROW(mirror("mine")->genIdIs(1), Zel::ReadOnlyException);
  expectRepaired();
  EXPECT_FALSE(mirror("mine"));
}

// All that belongs to the mirror but the entities, the guards too.
TEST(RefusalsThatCloseAll, LeaveNothingUnderfoot) {
  TwoUnits two;
  two.units->statusIs("a")->genIdIs(7);
  two.exports->entityIs(two.units);
  auto mounts = Zel::makeObject<Zel::Mounts>();
  auto mount = mounts->mountIs("units");
  Zel::SessionOptions options;
  options.name = "client";
  two.client->close(two.now, "another");
  two.client = Zel::makeObject<Zel::Session>(Zel::Connection::End::first, options, nullptr, mounts);
  two.server =
      Zel::makeObject<Zel::Session>(Zel::Connection::End::second, options, two.exports, nullptr);
  two.settle();
  const auto units = Zel::ptrCast<StatusDir>(mount->entity());
  const auto unit = units->status("a");
  ASSERT_EQ(mount->state(), Mount::live);
  const auto ear = listen<MountEar>(mount);
  ear->isWeakReferenceIs(true);
  ear->onHeard = [&](const std::string& word) {
    if (word.starts_with("resyncing")) {
      two.client->close(two.now, "enough");
      two.client = nullptr;
      mounts = nullptr;
      mount = nullptr;
    }
  };
  EXPECT_THROW(unit->genIdIs(8), Zel::ReadOnlyException);
  EXPECT_EQ(unit->zelNotifieeList().count(), 0U);
  EXPECT_EQ(unit->genId(), 8U);
}

} // namespace
