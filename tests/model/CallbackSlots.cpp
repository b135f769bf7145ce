#include "support/Slot.h"

#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

// The callbacks of each type stand behind those of all entities, in the order of the ids.

namespace {

using namespace Maintenance;
using Support::slotOf;

constexpr std::ptrdiff_t firstOwn = 30;

/// The place behind the last callback of a notifiee class.
template <class Notifiee>
std::ptrdiff_t endOf() {
  struct Probe : Notifiee {
    virtual void probe() {}
  };
  static_assert(sizeof(Probe) == sizeof(Notifiee));
  return slotOf(&Probe::probe);
}

template <class Class, class... Key>
constexpr auto callback(void (Class::*member)(Key...)) {
  return member;
}

TEST(CallbackSlots, TheCallbacksOfAllEntitiesComeFirst) {
  EXPECT_EQ(slotOf(&Zel::Entity::NotifieeConst::onParent), firstOwn - 2);
  EXPECT_EQ(slotOf(&Zel::Entity::NotifieeConst::onVersion), firstOwn - 1);
}

TEST(CallbackSlots, OfAProfileThereAreNone) {
  EXPECT_EQ(endOf<Profile::Config::Notifiee>(), firstOwn);
}

TEST(CallbackSlots, OfADirectoryOfProfiles) {
  using N = Profile::ConfigDir::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, const Profile::ProfileKey&>(&N::onConfig)), firstOwn);
  EXPECT_EQ(slotOf(&N::onConfigzelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onConfig)), firstOwn + 2);
  EXPECT_EQ(endOf<Profile::ConfigDir::Notifiee>(), firstOwn + 3);
}

TEST(CallbackSlots, OfADefaultProfile) {
  EXPECT_EQ(slotOf(&Profile::DefaultProfile::NotifieeConst::onProfileName), firstOwn);
  EXPECT_EQ(endOf<Profile::DefaultProfile::Notifiee>(), firstOwn + 1);
}

TEST(CallbackSlots, OfAConfiguredUnit) {
  using N = Unit::Config::NotifieeConst;
  EXPECT_EQ(slotOf(&N::onUnitType), firstOwn);
  EXPECT_EQ(slotOf(callback<N, const Group::GroupKey&>(&N::onGroup)), firstOwn + 1);
  EXPECT_EQ(slotOf(&N::onGroupzelImmediate), firstOwn + 2);
  EXPECT_EQ(slotOf(callback<N>(&N::onGroup)), firstOwn + 3);
  EXPECT_EQ(slotOf(&N::onProfileName), firstOwn + 4);
  EXPECT_EQ(endOf<Unit::Config::Notifiee>(), firstOwn + 5);
}

TEST(CallbackSlots, OfADirectoryOfConfiguredUnits) {
  using N = Unit::ConfigDir::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, Zel::Name>(&N::onConfig)), firstOwn);
  EXPECT_EQ(slotOf(&N::onConfigzelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onConfig)), firstOwn + 2);
  EXPECT_EQ(endOf<Unit::ConfigDir::Notifiee>(), firstOwn + 3);
}

TEST(CallbackSlots, OfAnInput) {
  using N = Unit::Input::NotifieeConst;
  EXPECT_EQ(slotOf(&N::onPriority), firstOwn);
  EXPECT_EQ(slotOf(callback<N, Zel::String8>(&N::onUnit)), firstOwn + 1);
  EXPECT_EQ(slotOf(&N::onUnitzelImmediate), firstOwn + 2);
  EXPECT_EQ(slotOf(callback<N>(&N::onUnit)), firstOwn + 3);
  EXPECT_EQ(endOf<Unit::Input::Notifiee>(), firstOwn + 4);
}

TEST(CallbackSlots, OfAMergedInput) {
  EXPECT_EQ(slotOf(&Unit::MergedInput::NotifieeConst::onPriority), firstOwn);
  EXPECT_EQ(endOf<Unit::MergedInput::Notifiee>(), firstOwn + 1);
}

TEST(CallbackSlots, OfADirectoryOfMergedInputs) {
  using N = Unit::MergedInputDir::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, Zel::Name>(&N::onUnit)), firstOwn);
  EXPECT_EQ(slotOf(&N::onUnitzelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onUnit)), firstOwn + 2);
  EXPECT_EQ(endOf<Unit::MergedInputDir::Notifiee>(), firstOwn + 3);
}

TEST(CallbackSlots, OfADirectoryOfUnits) {
  using N = Unit::StatusDir::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, Zel::Name>(&N::onStatus)), firstOwn);
  EXPECT_EQ(slotOf(&N::onStatuszelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onStatus)), firstOwn + 2);
  EXPECT_EQ(endOf<Unit::StatusDir::Notifiee>(), firstOwn + 3);
}

TEST(CallbackSlots, OfAUnit) {
  using N = Unit::Status::NotifieeConst;
  EXPECT_EQ(slotOf(&N::onUnitType), firstOwn);
  EXPECT_EQ(slotOf(callback<N, const Group::GroupKey&>(&N::onGroup)), firstOwn + 1);
  EXPECT_EQ(slotOf(&N::onGroupzelImmediate), firstOwn + 2);
  EXPECT_EQ(slotOf(callback<N>(&N::onGroup)), firstOwn + 3);
  EXPECT_EQ(slotOf(&N::onProfileName), firstOwn + 4);
  EXPECT_EQ(slotOf(&N::onState), firstOwn + 5);
  EXPECT_EQ(slotOf(&N::onReason), firstOwn + 6);
  EXPECT_EQ(slotOf(&N::onTimeOfStateChange), firstOwn + 7);
  EXPECT_EQ(slotOf(&N::onOnBootMaintExitTime), firstOwn + 8);
  EXPECT_EQ(slotOf(&N::onHistorySize), firstOwn + 9);
  EXPECT_EQ(slotOf(callback<N, const double&>(&N::onHistory)), firstOwn + 10);
  EXPECT_EQ(slotOf(&N::onHistoryzelImmediate), firstOwn + 11);
  EXPECT_EQ(slotOf(callback<N>(&N::onHistory)), firstOwn + 12);
  EXPECT_EQ(slotOf(&N::onMaintEnterInstance), firstOwn + 13);
  EXPECT_EQ(slotOf(&N::onMaintExitInstance), firstOwn + 14);
  EXPECT_EQ(slotOf(&N::onAggTrafficRate), firstOwn + 15);
  EXPECT_EQ(slotOf(callback<N, Vexil::IntfId>(&N::onIntfsViolatingTrafficThreshold)),
            firstOwn + 16);
  EXPECT_EQ(slotOf(&N::onIntfsViolatingTrafficThresholdzelImmediate), firstOwn + 17);
  EXPECT_EQ(slotOf(callback<N>(&N::onIntfsViolatingTrafficThreshold)), firstOwn + 18);
  EXPECT_EQ(slotOf(&N::onTotalIntfTrafficViolations), firstOwn + 19);
  EXPECT_EQ(slotOf(&N::onGenId), firstOwn + 20);
  EXPECT_EQ(endOf<Unit::Status::Notifiee>(), firstOwn + 21);
}

TEST(CallbackSlots, OfAMemberOfGroups) {
  using N = MemberToGroup::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, const Group::GroupKey&>(&N::onGroup)), firstOwn);
  EXPECT_EQ(slotOf(&N::onGroupzelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onGroup)), firstOwn + 2);
  EXPECT_EQ(slotOf(callback<N, Profile::ProfileType>(&N::onSelectedProfile)), firstOwn + 3);
  EXPECT_EQ(slotOf(&N::onSelectedProfilezelImmediate), firstOwn + 4);
  EXPECT_EQ(slotOf(callback<N>(&N::onSelectedProfile)), firstOwn + 5);
  EXPECT_EQ(slotOf(&N::onProfileChangeCause), firstOwn + 6);
  EXPECT_EQ(slotOf(&N::onPartOfDynamicUnit), firstOwn + 7);
  EXPECT_EQ(endOf<MemberToGroup::Notifiee>(), firstOwn + 8);
}

TEST(CallbackSlots, OfAGroupOfUnitsAndItsDirectory) {
  using N = GroupToUnit::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, Zel::Name>(&N::onUnitName)), firstOwn);
  EXPECT_EQ(slotOf(&N::onUnitNamezelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onUnitName)), firstOwn + 2);
  EXPECT_EQ(endOf<GroupToUnit::Notifiee>(), firstOwn + 3);
  using D = GroupToUnitDir::NotifieeConst;
  EXPECT_EQ(slotOf(callback<D, const Group::GroupKey&>(&D::onGroupToUnit)), firstOwn);
  EXPECT_EQ(slotOf(&D::onGroupToUnitzelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<D>(&D::onGroupToUnit)), firstOwn + 2);
  EXPECT_EQ(endOf<GroupToUnitDir::Notifiee>(), firstOwn + 3);
}

// An object that is no entity has nothing to tell of a parent or a version.
constexpr std::ptrdiff_t firstOfObject = firstOwn - 2;

TEST(CallbackSlots, OfWhatGoesIntoASelection) {
  using N = GroupProfileSelectionIn::NotifieeConst;
  EXPECT_EQ(slotOf(&N::onTrigger), firstOfObject);
  EXPECT_EQ(slotOf(callback<N, Zel::String8>(&N::onGroupName)), firstOfObject + 1);
  EXPECT_EQ(slotOf(&N::onGroupNamezelImmediate), firstOfObject + 2);
  EXPECT_EQ(slotOf(callback<N>(&N::onGroupName)), firstOfObject + 3);
  EXPECT_EQ(endOf<GroupProfileSelectionIn::Notifiee>(), firstOfObject + 4);
}

TEST(CallbackSlots, OfASelectionForAUnitAndOfAll) {
  using N = UnitProfileSelection::NotifieeConst;
  using Key = const GroupProfileSelKey&;
  EXPECT_EQ(slotOf(&N::onGenId), firstOfObject);
  EXPECT_EQ(slotOf(&N::onComplete), firstOfObject + 1);
  EXPECT_EQ(slotOf(&N::onConsiderUnitState), firstOfObject + 2);
  EXPECT_EQ(slotOf(callback<N, Key>(&N::onGroupProfileSelectionIn)), firstOfObject + 3);
  EXPECT_EQ(slotOf(&N::onGroupProfileSelectionInzelImmediate), firstOfObject + 4);
  EXPECT_EQ(slotOf(callback<N>(&N::onGroupProfileSelectionIn)), firstOfObject + 5);
  EXPECT_EQ(slotOf(callback<N, Key>(&N::onGroupProfileSelectionOut)), firstOfObject + 6);
  EXPECT_EQ(slotOf(&N::onGroupProfileSelectionOutzelImmediate), firstOfObject + 7);
  EXPECT_EQ(slotOf(callback<N>(&N::onGroupProfileSelectionOut)), firstOfObject + 8);
  EXPECT_EQ(endOf<UnitProfileSelection::Notifiee>(), firstOfObject + 9);
  using S = ProfileSelection::NotifieeConst;
  EXPECT_EQ(slotOf(callback<S, const UnitProfileSelKey&>(&S::onUnitProfileSelection)),
            firstOfObject);
  EXPECT_EQ(slotOf(&S::onUnitProfileSelectionzelImmediate), firstOfObject + 1);
  EXPECT_EQ(slotOf(callback<S>(&S::onUnitProfileSelection)), firstOfObject + 2);
  EXPECT_EQ(endOf<ProfileSelection::Notifiee>(), firstOfObject + 3);
}

TEST(CallbackSlots, OfAGroup) {
  using N = MaintenanceGroup::Config::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, const Profile::ProfileKey&>(&N::onProfile)), firstOwn);
  EXPECT_EQ(slotOf(&N::onProfilezelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onProfile)), firstOwn + 2);
  EXPECT_EQ(endOf<MaintenanceGroup::Config::Notifiee>(), firstOwn + 3);
}

TEST(CallbackSlots, OfADirectoryOfGroups) {
  using N = MaintenanceGroup::ConfigDir::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, const Group::GroupKey&>(&N::onMaintenanceGroup)), firstOwn);
  EXPECT_EQ(slotOf(&N::onMaintenanceGroupzelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onMaintenanceGroup)), firstOwn + 2);
  EXPECT_EQ(endOf<MaintenanceGroup::ConfigDir::Notifiee>(), firstOwn + 3);
}

TEST(CallbackSlots, OfAUnitProfileBehindThoseOfItsBaseWhichHasNone) {
  using N = MaintenanceUnitProfile::Config::NotifieeConst;
  EXPECT_EQ(slotOf(&N::onOnBootDuration), firstOwn);
  EXPECT_EQ(slotOf(&N::onOnBootEnabled), firstOwn + 1);
  EXPECT_EQ(endOf<MaintenanceUnitProfile::Config::Notifiee>(), firstOwn + 2);
}

TEST(CallbackSlots, OfADirectoryOfUnitProfiles) {
  using N = MaintenanceUnitProfile::ConfigDir::NotifieeConst;
  EXPECT_EQ(slotOf(callback<N, Zel::String8>(&N::onConfig)), firstOwn);
  EXPECT_EQ(slotOf(&N::onConfigzelImmediate), firstOwn + 1);
  EXPECT_EQ(slotOf(callback<N>(&N::onConfig)), firstOwn + 2);
  EXPECT_EQ(endOf<MaintenanceUnitProfile::ConfigDir::Notifiee>(), firstOwn + 3);
}

TEST(CallbackSlots, OfTheAgentsInformation) {
  using N = AgentInfo::NotifieeConst;
  EXPECT_EQ(slotOf(&N::onAgentPid), firstOwn);
  EXPECT_EQ(slotOf(&N::onRestartCount), firstOwn + 1);
  EXPECT_EQ(slotOf(&N::onOnBoot), firstOwn + 2);
  EXPECT_EQ(slotOf(callback<N, Zel::String8>(&N::onOnBootMaintEnter)), firstOwn + 3);
  EXPECT_EQ(slotOf(&N::onOnBootMaintEnterzelImmediate), firstOwn + 4);
  EXPECT_EQ(slotOf(callback<N>(&N::onOnBootMaintEnter)), firstOwn + 5);
  EXPECT_EQ(slotOf(&N::onReady), firstOwn + 6);
  EXPECT_EQ(endOf<AgentInfo::Notifiee>(), firstOwn + 7);
}

TEST(Callbacks, ThoseOfAClientThatOverridesNoneDoNothing) {
  const auto unit = Unit::statusFactory("unit");
  const auto listener = Zel::makeObject<Unit::Status::Notifiee>();
  listener->isRegisteredNotifieeIs(true);
  listener->notifierIs(unit);
  unit->stateIs(Unit::active);
  unit->genIdInc(1);
  EXPECT_EQ(unit->state(), Unit::active);
  EXPECT_EQ(unit->versionCounter(), 1U);
  EXPECT_EQ(unit->genId(), 1U);
}

} // namespace
