#include "Pair.h"

#include <Zel/MsgChannel>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Unit;

TEST(Mirror, HoldsWhatWasThereBeforeAndWhatCameAfter) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  const auto system = dir->statusIs("System").ptr();
  dir->status("System")->stateIs(underMaintenance);
  dir->status("System")->profileNameIs("fast");
  dir->status("System")->historyIs(1.5, "entered");
  dir->status("System")->groupIs(Group::GroupKey(Group::groupTypeBgp, "peers"), true);
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  EXPECT_STREQ(pair.there->failure().charPtr(), "");
  const auto mirrors = pair.mirror<StatusDir>("units");
  ASSERT_TRUE(mirrors);
  const auto mirror = mirrors->status("System");
  ASSERT_TRUE(mirror);
  EXPECT_EQ(mirror->state(), underMaintenance);
  EXPECT_EQ(mirror->profileName(), "fast");
  EXPECT_EQ(mirror->history(1.5), "entered");
  EXPECT_TRUE(mirror->group(Group::GroupKey(Group::groupTypeBgp, "peers")));
  EXPECT_EQ(pair.here->demuxer()->scheduled(), 0U);
  EXPECT_EQ(pair.here->demuxer()->parked(), 0U);

  dir->status("System")->stateIs(failedExit);
  dir->statusIs("Linecard1")->genIdIs(7);
  dir->status("System")->historyDel(1.5);
  pair.settle();
  EXPECT_EQ(mirror->state(), failedExit);
  EXPECT_EQ(mirrors->status("Linecard1")->genId(), 7U);
  EXPECT_EQ(mirror->historyMap().count(), 0U);
  mirrors->status("Linecard1")->genIdIs(8);
  pair.settle();
  EXPECT_EQ(dir->status("Linecard1")->genId(), 8U);
  dir->statusDel("System");
  pair.settle();
  EXPECT_FALSE(mirrors->status("System"));
  static_cast<void>(system);
}

TEST(Mirror, OfAHundredThousandProfiles) {
  Pair pair;
  namespace Profile = Maintenance::Profile;
  const auto dir = Profile::configDirFactory("profiles");
  for (int i = 0; i < 100000; ++i) {
    dir->configIs(
        Profile::ProfileKey(Profile::profileTypeBgp, Zel::String8("profile-" + std::to_string(i))));
  }
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  EXPECT_STREQ(pair.there->failure().charPtr(), "");
  EXPECT_EQ(pair.mirror<Profile::ConfigDir>("profiles")->configMap().count(), 100000U);
}

/// Notes what the thread's constrainer knows while a member is told of.
struct Asking : StatusDir::Notifiee {
  void onStatus(Zel::Name /*unit*/) override {
    const auto* const constrainer = Zel::MsgChannel::constrainer();
    id = constrainer->deserializingEid();
    parent = constrainer->deserializingInParent();
  }
  Zel::EntityId id;
  Zel::Entity* parent = nullptr;
};

TEST(Mirror, AConstrainerKnowsTheIdAndTheParentOfAMemberThatIsMade) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  const auto mirrors = pair.mirror<StatusDir>("units");
  const auto asking = Zel::makeObject<Asking>();
  asking->isRegisteredNotifieeIs(true);
  asking->notifierIs(mirrors);
  const auto constrainer = Zel::makeObject<Zel::MsgChannel::Constrainer>();
  Zel::MsgChannel::constrainerIs(constrainer);
  dir->statusIs("System");
  pair.settle();
  Zel::MsgChannel::constrainerIs(nullptr);
  const auto adapter = dir->status("System")->zelNboAttrLogSa(
      Zel::Ptr<const Zel::NboAttrLog::Out>(pair.here->out()));
  ASSERT_TRUE(adapter);
  EXPECT_EQ(asking->id, adapter->entityId());
  EXPECT_EQ(asking->parent, mirrors.ptr());
  EXPECT_EQ(constrainer->deserializingEid(), Zel::EntityId());
  EXPECT_EQ(constrainer->deserializingInParent(), nullptr);
}

} // namespace
