#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance;

/// A place to keep a waiting key: it starts with a default key and a count of one byte, at 0.
template <class Key>
void expectUnused(const Zel::PendingKey<Key>& pending) {
  static_assert(sizeof pending.count == 1);
  EXPECT_TRUE(pending.lastKey == Key());
  EXPECT_EQ(pending.count, 0);
}

TEST(PendingKeys, EveryNotifieeHasOneForEachCollection) {
  const auto profiles = Zel::makeObject<Profile::ConfigDir::Notifiee>();
  expectUnused<Profile::ProfileKey>(profiles->zelPendingConfig);
  const auto configured = Zel::makeObject<Unit::ConfigDir::Notifiee>();
  expectUnused<Zel::Name>(configured->zelPendingConfig);
  const auto config = Zel::makeObject<Unit::Config::Notifiee>();
  expectUnused<Group::GroupKey>(config->zelPendingGroup);
  const auto input = Zel::makeObject<Unit::Input::Notifiee>();
  expectUnused<Zel::String8>(input->zelPendingUnit);
  const auto merged = Zel::makeObject<Unit::MergedInputDir::Notifiee>();
  expectUnused<Zel::Name>(merged->zelPendingUnit);
  const auto units = Zel::makeObject<Unit::StatusDir::Notifiee>();
  expectUnused<Zel::Name>(units->zelPendingStatus);
  const auto unit = Zel::makeObject<Unit::Status::Notifiee>();
  expectUnused<Group::GroupKey>(unit->zelPendingGroup);
  expectUnused<double>(unit->zelPendingHistory);
  expectUnused<Vexil::IntfId>(unit->zelPendingIntfsViolatingTrafficThreshold);
  const auto member = Zel::makeObject<MemberToGroup::Notifiee>();
  expectUnused<Group::GroupKey>(member->zelPendingGroup);
  expectUnused<Profile::ProfileType>(member->zelPendingSelectedProfile);
  const auto groupUnits = Zel::makeObject<GroupToUnit::Notifiee>();
  expectUnused<Zel::Name>(groupUnits->zelPendingUnitName);
  const auto mappings = Zel::makeObject<GroupToUnitDir::Notifiee>();
  expectUnused<Group::GroupKey>(mappings->zelPendingGroupToUnit);
  const auto in = Zel::makeObject<GroupProfileSelectionIn::Notifiee>();
  expectUnused<Zel::String8>(in->zelPendingGroupName);
  const auto selection = Zel::makeObject<UnitProfileSelection::Notifiee>();
  expectUnused<GroupProfileSelKey>(selection->zelPendingGroupProfileSelectionIn);
  expectUnused<GroupProfileSelKey>(selection->zelPendingGroupProfileSelectionOut);
  const auto all = Zel::makeObject<ProfileSelection::Notifiee>();
  expectUnused<UnitProfileSelKey>(all->zelPendingUnitProfileSelection);
  const auto group = Zel::makeObject<MaintenanceGroup::Config::Notifiee>();
  expectUnused<Profile::ProfileKey>(group->zelPendingProfile);
  const auto groups = Zel::makeObject<MaintenanceGroup::ConfigDir::Notifiee>();
  expectUnused<Group::GroupKey>(groups->zelPendingMaintenanceGroup);
  const auto unitProfiles = Zel::makeObject<MaintenanceUnitProfile::ConfigDir::Notifiee>();
  expectUnused<Zel::String8>(unitProfiles->zelPendingConfig);
  const auto agent = Zel::makeObject<AgentInfo::Notifiee>();
  expectUnused<Zel::String8>(agent->zelPendingOnBootMaintEnter);
}

TEST(PendingKeys, StandInTheOrderOfTheIds) {
  const auto unit = Zel::makeObject<Unit::Status::Notifiee>();
  const auto at = [](const auto& pending) { return static_cast<const void*>(&pending); };
  EXPECT_LT(at(unit->zelPendingGroup), at(unit->zelPendingHistory));
  EXPECT_LT(at(unit->zelPendingHistory), at(unit->zelPendingIntfsViolatingTrafficThreshold));
}

TEST(PendingKeys, NotificationAloneLeavesThemUnused) {
  const auto unit = Unit::statusFactory("unit");
  const auto listener = Zel::makeObject<Unit::Status::Notifiee>();
  listener->isRegisteredNotifieeIs(true);
  listener->notifierIs(unit);
  unit->groupIs(Group::GroupKey(Group::groupTypeBgp, "a"), true);
  unit->historyIs(1.0, "a");
  unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId("Vlan1"), true);
  expectUnused<Group::GroupKey>(listener->zelPendingGroup);
  expectUnused<double>(listener->zelPendingHistory);
  expectUnused<Vexil::IntfId>(listener->zelPendingIntfsViolatingTrafficThreshold);
}

} // namespace
