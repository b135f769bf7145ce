#include "Says.h"

#include "attrlog/Ear.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

// A mirror that may not be written to refuses a write before anything has changed, from its making
// on.

namespace {

using namespace Maintenance::Unit;
using Wiretap::DirEar;
using Wiretap::Ear;
using Wiretap::listen;
using Zel::Mount;
using Zel::Name;
using Zel::Ptr;
using Zel::ReadOnlyException;
using Words = std::vector<std::string>;

class Frozen : public testing::Test, public TwoUnits {
protected:
  Frozen() { units->statusIs("a")->profileNameIs("slow"); }

  /// Tries to write everything that may be written below the mirror.
  void writesAreRefused(const std::string& when) const {
    const std::uint64_t before = Zel::stateDigest(*mirror());
    const unsigned versions = mirror()->versionCounter();
    EXPECT_THROW(mirror()->statusIs("new"), ReadOnlyException) << when;
    if (const Ptr<Status> a = mirror("a")) {
      const unsigned version = a->versionCounter();
      EXPECT_THROW(a->genIdIs(a->genId() + 1), ReadOnlyException) << when;
      EXPECT_THROW(a->groupIs(peers, !a->group(peers)), ReadOnlyException) << when;
      EXPECT_THROW(mirror()->statusDel("a"), ReadOnlyException) << when;
      EXPECT_EQ(a->versionCounter(), version) << when;
    }
    EXPECT_EQ(mirror()->versionCounter(), versions) << when;
    EXPECT_EQ(Zel::stateDigest(*mirror()), before) << when;
  }
  template <class T>
  static unsigned notifiees(const Ptr<T>& entity) {
    return entity->zelNotifieeList().count();
  }

  const Group::GroupKey peers{Group::groupTypeBgp, "peers"};
};

TEST_F(Frozen, AMirrorIsFromItsFirstRecordOnUntilItIsThawed) {
  const Ptr<Mount> mount = share(Zel::accessReadWrite);
  const auto ear = listen<MountEar>(mount);
  unsigned records = 0;
  settleSlowly([&] {
    if (mount->entity() && !mount->isWritable()) {
      ++records;
      writesAreRefused(std::to_string(records));
    }
  });
  EXPECT_GT(records, 20U);
  EXPECT_EQ(ear->taken(), (Words{"entity", "resyncing at 100", "live at 100", "writable"}));
  mirror()->statusIs("new");
  settle();
  EXPECT_TRUE(units->status("new"));
}

TEST_F(Frozen, AMirrorThatIsGrantedReadingStaysSo) {
  const Ptr<Mount> mount = share();
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_FALSE(mount->isWritable());
  writesAreRefused("live");
  mirror("a")->genIdIs(mirror("a")->genId()); // no write
  EXPECT_EQ(mirror()->statusIs("a").ptr(), mirror("a").ptr());
  units->status("a")->genIdIs(7);
  settle();
  EXPECT_EQ(mirror("a")->genId(), 7U);
  EXPECT_EQ(client->connection()->demuxer()->counts().refused, 0U);
}

TEST_F(Frozen, CutBehindAnyRecordItIsFrozenAndHasNoAdapterLeft) {
  const Ptr<Mount> mount = share(Zel::accessReadWrite);
  for (unsigned cutBehind = 1; !mount->isWritable(); ++cutBehind) {
    unsigned records = 0;
    connect();
    settleSlowly([&] {
      if (++records == cutBehind) {
        cut();
      }
    });
    if (mount->isWritable()) {
      break;
    }
    if (mount->entity()) {
      EXPECT_EQ(mount->state(), Mount::stale) << cutBehind;
      EXPECT_EQ(notifiees(mirror()), 0U) << cutBehind;
      writesAreRefused(std::to_string(cutBehind));
      if (mirror("a")) {
        EXPECT_EQ(notifiees(mirror("a")), 0U) << cutBehind;
      }
    }
    ASSERT_LT(cutBehind, 100U);
  }
  settle();
  EXPECT_TRUE(isEqual());
}

TEST_F(Frozen, WhoeverWritesInAnswerToARecordIsRefused) {
  const Ptr<Mount> mount = share(Zel::accessReadWrite);
  unsigned refused = 0;
  const auto dirEar = [&] { return listen<DirEar>(mirror()); };
  Ptr<DirEar> ear;
  const auto mountEar = listen<MountEar>(mount);
  mountEar->onHeard = [&](const std::string& word) {
    if (word == "entity") {
      ear = dirEar();
      ear->onHeard = [&] {
        if (!mount->isWritable()) {
          EXPECT_THROW(mirror()->statusIs("b"), ReadOnlyException);
          ++refused;
        }
      };
    }
  };
  settle();
  EXPECT_EQ(refused, 1U);
  EXPECT_FALSE(mirror("b"));
  EXPECT_TRUE(isEqual());
}

TEST_F(Frozen, WhatLeavesTheTreeIsFree) {
  share(Zel::accessReadWrite);
  settle();
  const Ptr<Status> a = mirror("a");
  units->statusDel("a");
  settle();
  cut();
  a->genIdIs(9);
  EXPECT_EQ(a->genId(), 9U);
}

TEST_F(Frozen, AStaleMirrorThatGoesTakesItsMembersWithIt) {
  Ptr<StatusDir> kept;
  Ptr<Status> a;
  {
    const auto others = Zel::makeObject<Zel::Mounts>();
    cut();
    server = Zel::makeObject<Session>(Zel::Connection::End::second, Zel::SessionOptions(), exports,
                                      nullptr);
    client = Zel::makeObject<Session>(Zel::Connection::End::first, Zel::SessionOptions(), nullptr,
                                      others);
    exports->entityIs(units, Zel::accessReadWrite);
    others->mountIs("units", Zel::accessReadWrite);
    settle();
    kept = Zel::ptrCast<StatusDir>(others->mount("units")->entity());
    a = kept->status("a");
    cut();
    EXPECT_THROW(a->genIdIs(3), ReadOnlyException);
    server = nullptr;
    client = nullptr;
  }
  a->genIdIs(3); // nobody's mirror any more
  EXPECT_EQ(a->genId(), 3U);
  kept = nullptr;
  EXPECT_FALSE(a->parent());
}

TEST_F(Frozen, AStaleMirrorWhoseLastHandleIsItsMountsGoesWhole) {
  Ptr<Status> a;
  {
    TwoUnits other;
    other.units->statusIs("a");
    other.share(Zel::accessReadWrite);
    other.settle();
    a = other.mirror("a");
    other.cut();
    EXPECT_THROW(a->genIdIs(3), ReadOnlyException);
  }
  EXPECT_FALSE(a->parent());
  a->genIdIs(3);
}

TEST_F(Frozen, AMirrorThatAnotherTypeReplacesIsFree) {
  const Ptr<Mount> mount = share(Zel::accessReadWrite);
  settle();
  const Ptr<StatusDir> former = mirror();
  cut();
  exports->entityDel("units");
  exports->entityIs(configDirFactory("units"), Zel::accessReadWrite);
  connect();
  settle();
  EXPECT_EQ(mount->state(), Mount::live);
  EXPECT_NE(mount->entity().ptr(), former.ptr());
  former->status("a")->genIdIs(4);
  EXPECT_EQ(former->status("a")->genId(), 4U);
}

} // namespace
