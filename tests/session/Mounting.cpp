#include "Two.h"
#include "support/Failure.h"

#include <Zel/Exception>
#include <Zel/StateDigest>
#include <model/Unit/StatusDir.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Unit;
using Zel::Mount;
using Zel::Ptr;
using Zel::String8;

class Mounting : public ::testing::Test, public Two {
protected:
  Ptr<StatusDir> mirror() const {
    return Zel::ptrCast<StatusDir>(mounts->mount("units")->entity());
  }

  const Ptr<StatusDir> units = statusDirFactory("units");
};

TEST_F(Mounting, AMountBecomesLiveAndFollows) {
  exports->entityIs(units);
  units->statusIs("System");
  const Ptr<Mount> mount = mounts->mountIs("units");
  EXPECT_EQ(mount->state(), Mount::waiting);
  settle();
  ASSERT_TRUE(client->isOpen());
  EXPECT_EQ(client->peer().name, "server");
  ASSERT_EQ(mount->state(), Mount::live) << mount->reason().charPtr();
  EXPECT_EQ(mount->since(), 100);
  ASSERT_TRUE(mirror()->status("System"));
  units->status("System")->stateIs(underMaintenance);
  settle();
  EXPECT_EQ(mirror()->status("System")->state(), underMaintenance);
  EXPECT_EQ(dir->entity("units"), mirror());
}

TEST_F(Mounting, AStaleMirrorIsReadOnlyAndKeepsItsIdentity) {
  exports->entityIs(units);
  units->statusIs("a");
  units->statusIs("b");
  const Ptr<Mount> mount = mounts->mountIs("units");
  settle();
  const Ptr<Status> a = mirror()->status("a");
  now = 200;
  cut();
  EXPECT_EQ(mount->state(), Mount::stale);
  EXPECT_EQ(mount->since(), 200);
  EXPECT_EQ(mount->reason(), "cut");
  EXPECT_THROW(a->stateIs(underMaintenance), Zel::ReadOnlyException);
  units->status("a")->profileNameIs("somebody");
  units->statusDel("b");
  units->statusIs("c");
  connect();
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_EQ(mirror()->status("a"), a);
  EXPECT_EQ(a->state(), units->status("a")->state());
  EXPECT_FALSE(mirror()->status("b"));
  EXPECT_TRUE(mirror()->status("c"));
  EXPECT_EQ(Zel::stateDigest(*units), Zel::stateDigest(*mirror()));
  EXPECT_THROW(a->stateIs(underMaintenance), Zel::ReadOnlyException); // granted for reading
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_EQ(a->state(), units->status("a")->state());
}

TEST_F(Mounting, AGrantToWriteHoldsWhileTheMountIsLive) {
  exports->entityIs(units, Zel::accessReadWrite);
  units->statusIs("a");
  const Ptr<Mount> mount = mounts->mountIs("units", Zel::accessReadWrite);
  settle();
  EXPECT_TRUE(mount->isWritable());
  mirror()->status("a")->stateIs(underMaintenance);
  mirror()->statusIs("b");
  bool echoed = false;
  client->echoAsk(
      [&](Zel::Session::EchoResult came) { echoed = came == Zel::Session::echoApplied; });
  settle();
  EXPECT_TRUE(echoed);
  EXPECT_EQ(units->status("a")->state(), underMaintenance);
  EXPECT_TRUE(units->status("b"));
  cut();
  EXPECT_FALSE(mount->isWritable());
  EXPECT_THROW(mirror()->statusIs("d"), Zel::ReadOnlyException);
  EXPECT_FALSE(mirror()->status("d"));
  connect();
  settle();
  EXPECT_FALSE(mirror()->status("d"));
  mirror()->status("a")->stateIs(underMaintenance);
  settle();
  EXPECT_EQ(units->status("a")->state(), underMaintenance);
}

TEST_F(Mounting, DigestsAreCompared) {
  exports->entityIs(units);
  units->statusIs("a");
  mounts->mountIs("units");
  settle();
  Zel::Session::DigestResult result = Zel::Session::digestUnknown;
  client->digestAsk("units", [&](Zel::Session::DigestResult answer) { result = answer; });
  settle();
  EXPECT_EQ(result, Zel::Session::digestEqual);
}

TEST_F(Mounting, ARootOfTheProgramsOwnIsNotReplaced) {
  const Ptr<StatusDir> own = statusDirFactory("units");
  dir->entityIs(own);
  exports->entityIs(units);
  const Ptr<Mount> mount = mounts->mountIs("units");
  settle();
  EXPECT_EQ(mount->state(), Mount::refused);
  EXPECT_EQ(mount->reason(), "another root of this program has the name");
  EXPECT_EQ(dir->entity("units"), own);
  EXPECT_TRUE(client->isUp());
}

TEST_F(Mounting, NamesOfPeersAreFitForATerminal) {
  Zel::SessionOptions options;
  std::string name(300, 'c');
  name.insert(0, "a\x1b[31m\nb");
  options.name = String8(name);
  cut();
  connect(options);
  settle();
  name.replace(0, 8, "a?[31m?b");
  EXPECT_EQ(server->peer().name, String8(name.substr(0, 200)));
}

TEST(Mounts, TakeANameAndAnAccessAndOneOfAName) {
  const auto mounts = Zel::makeObject<Zel::Mounts>();
  EXPECT_FALSE(mounts->areLive());
  EXPECT_EQ(Support::rangeFailure([&] { mounts->mountIs(""); }), "no name of a root");
  EXPECT_EQ(Support::rangeFailure([&] { mounts->mountIs("units", Zel::accessNone); }),
            "no access: units");
  const Ptr<Mount> mount = mounts->mountIs("units", Zel::accessReadOnly);
  EXPECT_EQ(mounts->mountIs("units", Zel::accessReadWrite), mount);
  EXPECT_EQ(mounts->mounts().size(), 1U);
  EXPECT_FALSE(mounts->areLive());
}

TEST_F(Mounting, WhoHearsOfAMountMayLeaveItsCallbacksAlone) {
  exports->entityIs(units);
  const Ptr<Mount> mount = mounts->mountIs("units");
  const auto deaf = Zel::makeObject<Mount::Notifiee>();
  deaf->isRegisteredNotifieeIs(true);
  deaf->notifierIs(mount);
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_TRUE(mounts->areLive());
  EXPECT_TRUE(deaf->hasNotificationActive());
}

} // namespace
