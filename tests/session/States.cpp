#include "Says.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>
#include <model/Profile.h>

#include <gtest/gtest.h>

// What a mount tells of itself, and what stays of a mirror over connections.

namespace {

using namespace Maintenance::Unit;
using Words = std::vector<std::string>;
using Wiretap::DirEar;
using Wiretap::Ear;
using Wiretap::listen;
using Zel::Mount;
using Zel::Ptr;

class States : public testing::Test, public TwoUnits {};

TEST_F(States, AreToldWithTheirMomentAndTheirReason) {
  const Ptr<Mount> mount = mounts->mountIs("units");
  const auto ear = listen<MountEar>(mount);
  EXPECT_EQ(mount->state(), Mount::waiting);
  EXPECT_FALSE(mounts->areLive());
  now = 200;
  exports->entityIs(units);
  settle();
  EXPECT_EQ(ear->taken(), (Words{"entity", "resyncing at 200", "live at 200"}));
  EXPECT_TRUE(mounts->areLive());
  now = 300;
  cut("pulled out");
  EXPECT_EQ(ear->taken(), Words{"stale at 300: pulled out"});
  now = 400;
  connect();
  cut("again"); // nothing has come of it
  EXPECT_EQ(ear->taken(), Words());
  EXPECT_EQ(mount->since(), 300);
  EXPECT_EQ(mount->reason(), "pulled out");
  now = 500;
  connect();
  settle();
  EXPECT_EQ(ear->taken(), (Words{"resyncing at 500", "live at 500"}));
  now = 600;
  exports->entityDel("units");
  settle();
  EXPECT_EQ(ear->taken(), Words{"stale at 600: withdrawn by server"});
  EXPECT_THROW(mirror()->statusIs("a"), Zel::ReadOnlyException);
  now = 700;
  cut();
  EXPECT_EQ(ear->taken(), Words());
  connect();
  exports->entityIs(units);
  settle();
  EXPECT_EQ(ear->taken(), (Words{"resyncing at 700", "live at 700"}));
  EXPECT_TRUE(isEqual());
}

TEST_F(States, OfAMountThatNeverCameIsWaiting) {
  const Ptr<Mount> mount = mounts->mountIs("units");
  const auto ear = listen<MountEar>(mount);
  settle();
  cut();
  connect();
  settle();
  EXPECT_EQ(mount->state(), Mount::waiting);
  EXPECT_EQ(mount->reason(), "");
  EXPECT_EQ(ear->taken(), Words());
}

TEST_F(States, OfARefusedMountGoesWithTheSession) {
  dir->entityIs(statusDirFactory("units"));
  const Ptr<Mount> mount = share();
  const auto ear = listen<MountEar>(mount);
  settle();
  EXPECT_EQ(ear->taken(), Words{"refused at 100: another root of this program has the name"});
  now = 200;
  cut();
  EXPECT_EQ(ear->taken(), Words{"waiting at 200"});
  dir->entityDel("units");
  connect();
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
}

TEST_F(States, AreThoseOfTheSessionThatServesTheMounts) {
  share();
  settle();
  EXPECT_THROW(
      Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, mounts),
      Zel::RangeException);
  now = 200;
  client->connection()->fail("gone"); // and nobody serves it
  EXPECT_EQ(mount()->state(), Mount::live);
  const Ptr<Session> former = client;
  client =
      Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, mounts);
  EXPECT_EQ(mount()->state(), Mount::stale);
  EXPECT_EQ(mount()->reason(), "gone");
  former->close(now);
  server->close(now);
  server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(), exports,
                                    nullptr);
  settle();
  EXPECT_EQ(mount()->state(), Mount::live);
}

TEST_F(States, ObjectsKeepTheirIdentityAndHearWhatHasChanged) {
  for (const char* const unit : {"a", "b", "c"}) {
    units->statusIs(unit)->profileNameIs("slow");
  }
  units->status("a")->historyIs(1, "one");
  units->status("a")->historyIs(2, "two");
  const Ptr<Mount> mount = share();
  settle();
  const Ptr<StatusDir> directory = mirror();
  const Ptr<Status> a = mirror("a");
  const Ptr<Status> b = mirror("b");
  const auto ear = listen<DirEar>(directory);
  const auto earOfA = listen<Ear>(a);
  const auto earOfB = listen<Ear>(b);
  for (unsigned round = 0; round < 3; ++round) {
    cut();
    connect();
    settle();
    EXPECT_EQ(mirror(), directory);
    EXPECT_EQ(mirror("a"), a);
    EXPECT_EQ(mirror("b"), b);
    EXPECT_EQ(ear->heard, Words());
    EXPECT_EQ(earOfA->heard, Words());
  }
  cut();
  units->status("a")->genIdIs(7);
  units->status("a")->historyDel(1);
  units->statusDel("c");
  units->statusIs("d");
  connect();
  settle();
  EXPECT_EQ(mirror("a"), a);
  EXPECT_EQ(earOfA->heard, (Words{"history 1", "genId"}));
  EXPECT_EQ(earOfB->heard, Words());
  std::sort(ear->heard.begin(), ear->heard.end());
  EXPECT_EQ(ear->heard, (Words{"c", "d"}));
  EXPECT_TRUE(isEqual());
}

TEST_F(States, ARootOfAnotherTypeIsAnotherMirror) {
  units->statusIs("a");
  const Ptr<Mount> mount = share();
  settle();
  const Ptr<Zel::Entity> former = mount->entity();
  const auto ear = listen<MountEar>(mount);
  cut();
  exports->entityDel("units");
  const Ptr<Maintenance::Profile::ConfigDir> configs =
      Maintenance::Profile::configDirFactory("units");
  exports->entityIs(configs);
  connect();
  settle();
  EXPECT_EQ(ear->taken(),
            (Words{"stale at 100: cut", "entity", "resyncing at 100", "live at 100"}));
  EXPECT_NE(mount->entity(), former);
  EXPECT_EQ(mount->entity()->fwkType(), Maintenance::Profile::ConfigDir::_fwkType());
  EXPECT_EQ(dir->entity("units"), mount->entity());
  EXPECT_EQ(Zel::ptrCast<StatusDir>(former)->zelNotifieeList().count(), 0U);
}

TEST_F(States, MirrorsLeaveTheDirectoryWithTheirMounts) {
  const auto other = Zel::makeObject<Zel::Dir>();
  auto few = Zel::makeObject<Zel::Mounts>(other);
  exports->entityIs(units);
  few->mountIs("units");
  client->close(now);
  server->close(now);
  server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(), exports,
                                    nullptr);
  client =
      Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, few);
  settle();
  EXPECT_TRUE(other->entity("units"));
  EXPECT_EQ(other->entry("units")->status(), Zel::Dir::loaded);
  few = nullptr;
  EXPECT_TRUE(other->entity("units"));
  client = nullptr;
  EXPECT_FALSE(other->entity("units"));
}

// Whoever hears that the old session has ended need not keep it until the new one is made.
TEST_F(States, OfASessionThatNobodyServesAreToldBeforeItsMountsHaveAnother) {
  const Ptr<Mount> mount = mounts->mountIs("units");
  exports->entityIs(units);
  settle();
  client->connection()->close("broken");
  const auto ear = listen<MountEar>(mount);
  ear->onHeard = [this](const std::string& /*word*/) { client = nullptr; };
  client =
      Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr, mounts);
  EXPECT_EQ(ear->taken(), Words{"stale at 100: broken"});
}

} // namespace
