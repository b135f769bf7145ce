#include "Shells.h"

#include <attrlog/MaintenanceAgentInfo.h>
#include <attrlog/MaintenanceGroup.h>
#include <attrlog/MaintenanceUnitProfile.h>

#include <gtest/gtest.h>

// What the adapters of groups, unit profiles and the agent's information offer by the names of
// their attributes.

namespace {

using namespace Maintenance;
using Group::GroupKey;
using Profile::ProfileKey;
using Zel::AttributeId;
using Zel::Ptr;
using Noted = OnBootUnitAndReason;

const GroupKey uplinks(Group::groupTypeInterface, "x");
const ProfileKey drain(Profile::profileTypeBgp, "y");

TEST(MaintenanceShells, OfAGroupWriteOneProfileOrItsDeletion) {
  const Announced<MaintenanceGroup::Config> group(MaintenanceGroup::configFactory("g", uplinks));
  group.adapter->zelHandleProfileSerializeSing(drain, true, false);
  EXPECT_EQ(group.sender.written(), plain("00 00 00 26 02 00 00 00 00 00 00 00 "
                                          "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                                          "00 00 00 01 00 00 00 01 79 01 03"));
  group.adapter->zelHandleProfileSerializeSing(drain, true, true);
  EXPECT_EQ(group.sender.written(), plain("00 00 00 25 02 00 00 00 00 00 00 00 "
                                          "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                                          "00 00 00 01 00 00 00 01 79 03"));
}

TEST(MaintenanceShells, OfTheAgentWriteOneNoteOrItsDeletion) {
  const Announced<AgentInfo> agent(agentInfoFactory("a"));
  agent.adapter->zelHandleOnBootMaintEnterSerializeSing("s", Noted("s", Unit::srcOnBootCli), false);
  EXPECT_EQ(agent.sender.written(), plain("00 00 00 2a 02 00 00 00 00 00 00 00 "
                                          "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
                                          "00 00 00 01 73 00 00 00 01 73 00 00 00 02 03"));
  agent.adapter->zelHandleOnBootMaintEnterSerializeSing("s", Noted(), true);
  EXPECT_EQ(agent.sender.written(), plain("00 00 00 21 02 00 00 00 00 00 00 00 "
                                          "ff ff fe fb 01 00 00 00 00 00 00 00 00 00 01 "
                                          "00 00 00 01 73 03"));
}

TEST(MaintenanceShells, OfDirectoriesWriteThatAMemberHasGone) {
  const Announced<MaintenanceGroup::ConfigDir> groups(MaintenanceGroup::configDirFactory("d"));
  groups.adapter->zelHandleMaintenanceGroupSerializeSing(uplinks, nullptr);
  EXPECT_EQ(groups.sender.written(), plain("00 00 00 25 02 00 00 00 00 00 00 00 "
                                           "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                                           "00 00 00 02 00 00 00 01 78 03"));
  const Announced<MaintenanceUnitProfile::ConfigDir> profiles(
      MaintenanceUnitProfile::configDirFactory("d"));
  profiles.adapter->zelHandleConfigSerializeSing("s", nullptr);
  EXPECT_EQ(profiles.sender.written(), plain("00 00 00 21 02 00 00 00 00 00 00 00 "
                                             "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                                             "00 00 00 01 73 03"));
}

TEST(MaintenanceShells, OfCollectionsHaveNothingLeftWhereNothingIsOwed) {
  const Announced<MaintenanceGroup::Config> group(MaintenanceGroup::configFactory("g", uplinks));
  EXPECT_TRUE(group.adapter->zelHandleProfileSerializeColl());
  const Announced<MaintenanceGroup::ConfigDir> groups(MaintenanceGroup::configDirFactory("d"));
  EXPECT_TRUE(groups.adapter->zelHandleMaintenanceGroupSerializeColl());
  const Announced<MaintenanceUnitProfile::ConfigDir> profiles(
      MaintenanceUnitProfile::configDirFactory("d"));
  EXPECT_TRUE(profiles.adapter->zelHandleConfigSerializeColl());
  const Announced<AgentInfo> agent(agentInfoFactory("a"));
  EXPECT_TRUE(agent.adapter->zelHandleOnBootMaintEnterSerializeColl());
  EXPECT_EQ(group.sender.written() + groups.sender.written() + profiles.sender.written() +
                agent.sender.written(),
            "");
}

TEST(MaintenanceShells, OfADirectoryOfGroupsFindMakeAndDropTheAdapterOfAMember) {
  const Announced<MaintenanceGroup::ConfigDir> dir(MaintenanceGroup::configDirFactory("d"));
  const Ptr<MaintenanceGroup::Config> group = dir.entity->maintenanceGroupIs(uplinks);
  const auto made = group->zelNboAttrLogSa(dir.sender.out());
  ASSERT_TRUE(made);
  EXPECT_EQ(dir.adapter->maintenanceGroupNboAttrLogAdapter(group), made);
  EXPECT_EQ(dir.adapter->maintenanceGroupNboAttrLogAdapterDel(group), made);
  EXPECT_FALSE(dir.adapter->maintenanceGroupNboAttrLogAdapter(group));
  const auto again = dir.adapter->maintenanceGroupNboAttrLogAdapterIs(AnEnd::Flags(0x40), group, 1,
                                                                      dir.sender.out(), nullptr);
  EXPECT_TRUE(again);
  EXPECT_EQ(group->zelNboAttrLogSa(dir.sender.out()), again);
}

TEST(MaintenanceShells, OfADirectoryOfUnitProfilesFindMakeAndDropTheAdapterOfAMember) {
  using MaintenanceUnitProfile::Config;
  const Announced<MaintenanceUnitProfile::ConfigDir> dir(
      MaintenanceUnitProfile::configDirFactory("d"));
  const Ptr<Config> profile = dir.entity->configIs("p");
  const auto made = profile->zelNboAttrLogSa(dir.sender.out());
  ASSERT_TRUE(Zel::ptrCast<Config::ZelNboAttrLogSa>(made));
  EXPECT_EQ(dir.adapter->configNboAttrLogAdapter(profile), made);
  EXPECT_EQ(dir.adapter->configNboAttrLogAdapterDel(profile), made);
  EXPECT_FALSE(dir.adapter->configNboAttrLogAdapter(profile));
  const auto again = dir.adapter->configNboAttrLogAdapterIs(AnEnd::Flags(0x40), profile, 1,
                                                            dir.sender.out(), nullptr);
  EXPECT_TRUE(Zel::ptrCast<Config::ZelNboAttrLogSa>(again));
  EXPECT_EQ(profile->zelNboAttrLogSa(dir.sender.out()), again);
}

TEST(MaintenanceShells, OfCollectionsSetTheirBit) {
  const auto group = cleanOf(MaintenanceGroup::configFactory("g", uplinks));
  group->zelDirtyBitSet0().zelProfileHasSyncedIs(false);
  EXPECT_EQ(group->zelDirtyBitSet0().word(), 0U);
  group->zelDirtyBitSet0().zelProfileHasSyncedIs(true);
  EXPECT_EQ(group->zelDirtyBitSet0().word(), 0x2U);
  const auto groups = cleanOf(MaintenanceGroup::configDirFactory("d"));
  groups->zelDirtyBitSet0().zelMaintenanceGroupHasSyncedIs(false);
  EXPECT_EQ(groups->zelDirtyBitSet0().word(), 0U);
  EXPECT_TRUE(groups->hasDirtyAttributes());
  const auto profiles = cleanOf(MaintenanceUnitProfile::configDirFactory("d"));
  profiles->zelDirtyBitSet0().zelConfigHasSyncedIs(false);
  EXPECT_EQ(profiles->zelDirtyBitSet0().word(), 0U);
  EXPECT_TRUE(profiles->hasDirtyAttributes());
}

/// An adapter of the agent's information that writes down what it is told.
class ToldOfTheAgent : public AgentInfo::ZelNboAttrLogSa {
public:
  using ZelNboAttrLogSa::ZelNboAttrLogSa;

  void onAgentPid() override { calls += "agentPid "; }
  void onRestartCount() override { calls += "restartCount "; }
  void onOnBoot() override { calls += "onBoot "; }
  void onOnBootMaintEnter(Zel::String8 unitName) override {
    calls += std::string("onBootMaintEnter=") + unitName.charPtr() + " ";
  }
  void onReady() override { calls += "ready "; }

  std::string calls;

protected:
  ~ToldOfTheAgent() override = default;
};

/// The same of a unit profile.
class ToldOfAProfile : public MaintenanceUnitProfile::Config::ZelNboAttrLogSa {
public:
  using ZelNboAttrLogSa::ZelNboAttrLogSa;

  void onOnBootDuration() override { calls += "onBootDuration "; }
  void onOnBootEnabled() override { calls += "onBootEnabled "; }

  std::string calls;

protected:
  ~ToldOfAProfile() override = default;
};

TEST(MaintenanceShells, ANotificationIsReplayedByItsId) {
  const Sender sender;
  const auto agent = Zel::makeObject<ToldOfTheAgent>(AnEnd::Flags(0x40), agentInfoFactory("a"), 1U,
                                                     sender.out(), nullptr);
  agent->hasNotificationActiveIs(true);
  const Ptr<AgentInfo> entity = agent->notifier(); // the adapter is weak
  Zel::String8 unit("u");
  for (AttributeId attr = -263; attr <= 263; ++attr) {
    agent->doNotification(attr, &unit);
  }
  EXPECT_EQ(agent->calls, "onBootMaintEnter=u agentPid restartCount onBoot onBootMaintEnter=u "
                          "ready ");
}

TEST(MaintenanceShells, OfAUnitProfileTheTwoThatItWritesAreReplayed) {
  const Sender sender;
  const auto entity = MaintenanceUnitProfile::configFactory("p");
  const auto profile =
      Zel::makeObject<ToldOfAProfile>(AnEnd::Flags(0x40), entity, 1U, sender.out(), nullptr);
  profile->hasNotificationActiveIs(true);
  for (AttributeId attr = -391; attr <= 391; ++attr) {
    profile->doNotification(attr, nullptr);
  }
  EXPECT_EQ(profile->calls, "onBootDuration onBootEnabled ");
  entity->onBootEnabledIs(true);
  EXPECT_EQ(profile->calls, "onBootDuration onBootEnabled onBootEnabled ");
}

} // namespace
