#include "Listeners.h"

#include "support/Failure.h"
#include "support/Slot.h"

#include <model/Mapping.h>

namespace {

using namespace Maintenance;
using namespace TestModel;
using Group::GroupKey;
using Profile::ProfileKey;
using Profile::ProfileType;
using Support::slotOf;

const GroupKey peers(Group::groupTypeBgp, "peers");
const GroupKey uplinks(Group::groupTypeInterface, "uplinks");
const ProfileKey drain(Profile::profileTypeBgp, "drain");
const ProfileKey flood(Profile::profileTypeBgp, "flood");

class MemberListener : public Listener<MemberToGroup::Notifiee> {
public:
  using Listener::Listener;
  void onGroup(const GroupKey& key) override { hear(joined("onGroup ", textOf(key))); }
  void onGroupzelImmediate() override { hear("onGroupzelImmediate"); }
  void onGroup() override { hear("onGroup"); }
  void onSelectedProfile(ProfileType type) override {
    hear(joined("onSelectedProfile ", std::to_string(type)));
  }
  void onSelectedProfilezelImmediate() override { hear("onSelectedProfilezelImmediate"); }
  void onSelectedProfile() override { hear("onSelectedProfile"); }
  void onProfileChangeCause() override { hear("onProfileChangeCause"); }
  void onPartOfDynamicUnit() override { hear("onPartOfDynamicUnit"); }
};

class MembersToGroups : public testing::Test {
protected:
  Log log;
  const Ptr<MemberToGroup> member = Zel::makeObject<MemberToGroup>("Ethernet1");
  const Ptr<MemberListener> listener = listen<MemberListener>(member, log);
};

TEST_F(MembersToGroups, ANewOneIsInNoGroupAndHasJustBeenMade) {
  EXPECT_EQ(member->name(), "Ethernet1");
  EXPECT_EQ(member->profileChangeCause(), initialCreation);
  EXPECT_FALSE(member->partOfDynamicUnit());
  EXPECT_EQ(member->groupMap().count(), 0U);
  EXPECT_EQ(member->selectedProfileMap().count(), 0U);
  EXPECT_EQ(member->versionCounter(), 0U);
  EXPECT_EQ(member->fwkType(), MemberToGroup::_fwkType());
}

TEST_F(MembersToGroups, AGroupIsSetAndTakenOut) {
  expectMoves(*member, 1, 0, [&] { member->groupIs(peers, true); });
  expectMoves(*member, 0, 0, [&] { member->groupIs(peers, true); });
  expectMoves(*member, 1, 0, [&] { member->groupIs(peers, false); });
  expectMoves(*member, 0, 1, [&] { EXPECT_FALSE(member->group(peers)); });
  EXPECT_EQ(member->groupMap().count(), 1U);
  member->groupIs(peers, true);
  expectMoves(*member, 1, 0, [&] { EXPECT_TRUE(member->groupDel(peers)); });
  expectMoves(*member, 0, 0, [&] { EXPECT_FALSE(member->groupDel(peers)); });
  EXPECT_EQ(log, Log({"onGroup 1:peers", "onGroup 1:peers", "onGroup 1:peers", "onGroup 1:peers"}));
}

TEST_F(MembersToGroups, AGroupThatIsMadeAnewTellsNobodyAndIsMadeOnce) {
  expectMoves(*member, 0, 0, [&] { EXPECT_TRUE(member->newGroup(peers, true)->zelValue()); });
  EXPECT_THROW(member->newGroup(peers, false), Zel::NameInUseException);
  EXPECT_TRUE(member->group(peers));
  EXPECT_EQ(log, Log());
}

TEST_F(MembersToGroups, AnotherProfileOfATypeTakesThePlaceOfTheFirst) {
  member->selectedProfileIs(Profile::profileTypeBgp, drain);
  member->selectedProfileIs(Profile::profileTypeBgp, flood);
  EXPECT_EQ(member->selectedProfileMap().count(), 1U);
  EXPECT_EQ(member->selectedProfile(Profile::profileTypeBgp), flood);
  EXPECT_EQ(log, Log({"onSelectedProfile 1", "onSelectedProfile 1"}));
  EXPECT_EQ(member->versionCounter(), 2U);
}

TEST_F(MembersToGroups, TheSameProfileAgainIsNoChange) {
  member->selectedProfileIs(Profile::profileTypeBgp, drain);
  log.clear();
  expectMoves(*member, 0, 0, [&] { member->selectedProfileIs(Profile::profileTypeBgp, drain); });
  EXPECT_EQ(log, Log());
}

TEST_F(MembersToGroups, AProfileOfAnotherTypeThanItsKeyIsAccepted) {
  member->selectedProfileIs(Profile::profileTypeUnit, drain);
  EXPECT_EQ(member->selectedProfile(Profile::profileTypeUnit), drain);
  EXPECT_EQ(member->selectedProfile(Profile::profileTypeBgp), ProfileKey());
  EXPECT_EQ(log, Log({"onSelectedProfile 3"}));
}

TEST_F(MembersToGroups, TakingOutAProfileThatIsNotThereYieldsADefaultKeyAndTellsNobody) {
  expectMoves(*member, 0, 0, [&] {
    EXPECT_EQ(member->selectedProfileDel(Profile::profileTypeUnit), ProfileKey());
  });
  EXPECT_EQ(log, Log());
}

TEST_F(MembersToGroups, TakingOutAProfileYieldsIt) {
  member->selectedProfileIs(Profile::profileTypeBgp, drain);
  log.clear();
  listener->onCall = [&] { EXPECT_EQ(member->selectedProfileMap().count(), 0U); };
  expectMoves(*member, 1, 0,
              [&] { EXPECT_EQ(member->selectedProfileDel(Profile::profileTypeBgp), drain); });
  EXPECT_EQ(log, Log({"onSelectedProfile 1"}));
}

TEST_F(MembersToGroups, ProfilesAreTakenOutByIteratorAndAllAtOnce) {
  member->selectedProfileIs(Profile::profileTypeBgp, drain);
  member->selectedProfileIs(Profile::profileTypeUnit, flood);
  MemberToGroup::SelectedProfileMap::Iterator at(member->selectedProfileMap(),
                                                 Profile::profileTypeUnit);
  EXPECT_EQ(member->selectedProfileDel(at), flood);
  EXPECT_EQ(member->selectedProfileDel(at), ProfileKey());
  member->selectedProfileDelAll();
  EXPECT_EQ(member->selectedProfileMap().count(), 0U);
  EXPECT_EQ(log, Log({"onSelectedProfile 1", "onSelectedProfile 3", "onSelectedProfile 3",
                      "onSelectedProfile 1"}));
  EXPECT_EQ(member->versionCounter(), 4U);
}

TEST_F(MembersToGroups, ACauseAndAFlagAreTold) {
  expectMoves(*member, 1, 0, [&] { member->profileChangeCauseIs(userConfigChange); });
  expectMoves(*member, 0, 0, [&] { member->profileChangeCauseIs(userConfigChange); });
  expectMoves(*member, 1, 0, [&] { member->partOfDynamicUnitIs(true); });
  expectMoves(*member, 0, 1, [&] { EXPECT_TRUE(member->partOfDynamicUnit()); });
  EXPECT_EQ(log, Log({"onProfileChangeCause", "onPartOfDynamicUnit"}));
}

/// Intercepts all that can be.
class Interceptor : public MemberToGroup {
public:
  explicit Interceptor(Log& log) : MemberToGroup("Ethernet1"), log_(log) {}

  bool groupDel(const GroupKey& key) override {
    log_.emplace_back("groupDel");
    return MemberToGroup::groupDel(key);
  }
  bool groupDel(GroupMap::Iterator& at) override {
    log_.emplace_back("groupDel at");
    return MemberToGroup::groupDel(at);
  }
  void groupNotify(const GroupKey& key) override {
    log_.push_back(joined("groupNotify ", textOf(key)));
    if (passOn) {
      MemberToGroup::groupNotify(key);
    }
  }
  void groupIs(const GroupKey& key, bool value) override {
    log_.emplace_back("groupIs");
    MemberToGroup::groupIs(key, value);
  }
  ProfileKey selectedProfileDel(ProfileType type) override {
    log_.emplace_back("selectedProfileDel");
    return MemberToGroup::selectedProfileDel(type);
  }
  ProfileKey selectedProfileDel(SelectedProfileMap::Iterator& at) override {
    log_.emplace_back("selectedProfileDel at");
    return MemberToGroup::selectedProfileDel(at);
  }
  void selectedProfileNotify(ProfileType type) override {
    log_.push_back(joined("selectedProfileNotify ", std::to_string(type)));
  }
  void selectedProfileIs(ProfileType type, const ProfileKey& key) override {
    log_.emplace_back("selectedProfileIs");
    MemberToGroup::selectedProfileIs(type, key);
  }
  void profileChangeCauseIs(ProfileChangeCause cause) override {
    log_.emplace_back("profileChangeCauseIs");
    MemberToGroup::profileChangeCauseIs(cause);
  }
  void partOfDynamicUnitIs(bool part) override {
    log_.emplace_back("partOfDynamicUnitIs");
    MemberToGroup::partOfDynamicUnitIs(part);
  }

  bool passOn = true;

private:
  Log& log_;
};

TEST(MemberInterceptors, TheNotificationOfAGroupIsCalledByItsMutators) {
  Log log;
  const auto member = Zel::makeObject<Interceptor>(log);
  const auto listener = listen<MemberListener>(member, log);
  MemberToGroup& base = *member;
  base.groupIs(peers, true);
  EXPECT_EQ(log, Log({"groupIs", "groupNotify 1:peers", "onGroup 1:peers"}));
  log.clear();
  EXPECT_TRUE(base.groupDel(peers));
  EXPECT_EQ(log, Log({"groupDel", "groupNotify 1:peers", "onGroup 1:peers"}));
}

TEST(MemberInterceptors, MayKeepANotificationToThemselves) {
  Log log;
  const auto member = Zel::makeObject<Interceptor>(log);
  const auto listener = listen<MemberListener>(member, log);
  member->passOn = false;
  member->groupIs(uplinks, true);
  EXPECT_EQ(log, Log({"groupIs", "groupNotify 2:uplinks"}));
  EXPECT_EQ(member->versionCounter(), 1U);
}

TEST(MemberInterceptors, OfASelectedProfileAreCalledByItsMutators) {
  Log log;
  const auto member = Zel::makeObject<Interceptor>(log);
  MemberToGroup& base = *member;
  base.selectedProfileIs(Profile::profileTypeBgp, drain);
  base.selectedProfileDel(Profile::profileTypeBgp);
  EXPECT_EQ(log, Log({"selectedProfileIs", "selectedProfileNotify 1", "selectedProfileDel",
                      "selectedProfileNotify 1"}));
}

TEST(MemberInterceptors, SeeEachDeletionOfACollectionThatIsEmptied) {
  Log log;
  const auto member = Zel::makeObject<Interceptor>(log);
  member->newGroup(peers, true);
  member->newSelectedProfile(Profile::profileTypeBgp, drain);
  MemberToGroup& base = *member;
  base.groupDelAll();
  base.selectedProfileDelAll();
  EXPECT_EQ(log, Log({"groupDel at", "groupNotify 1:peers", "selectedProfileDel at",
                      "selectedProfileNotify 1"}));
}

TEST(MemberInterceptors, OfSingleValuesAreCalled) {
  Log log;
  const auto member = Zel::makeObject<Interceptor>(log);
  MemberToGroup& base = *member;
  base.profileChangeCauseIs(maintenanceOperation);
  base.partOfDynamicUnitIs(true);
  EXPECT_EQ(log, Log({"profileChangeCauseIs", "partOfDynamicUnitIs"}));
}

TEST(MemberSlots, TheMutatorsStandBehindTheOperationsOfAllEntities) {
  using M = MemberToGroup;
  EXPECT_EQ(slotOf(&Zel::Entity::zelNboAttrLogSaDel), 24);
  EXPECT_EQ(slotOf<bool (M::*)(const GroupKey&)>(&M::groupDel), 25);
  EXPECT_EQ(slotOf<bool (M::*)(M::GroupMap::Iterator&)>(&M::groupDel), 26);
  EXPECT_EQ(slotOf(&M::groupNotify), 27);
  EXPECT_EQ(slotOf(&M::groupIs), 28);
  EXPECT_EQ(slotOf<ProfileKey (M::*)(ProfileType)>(&M::selectedProfileDel), 29);
  EXPECT_EQ(slotOf<ProfileKey (M::*)(M::SelectedProfileMap::Iterator&)>(&M::selectedProfileDel),
            30);
  EXPECT_EQ(slotOf(&M::selectedProfileNotify), 31);
  EXPECT_EQ(slotOf(&M::selectedProfileIs), 32);
  EXPECT_EQ(slotOf(&M::profileChangeCauseIs), 33);
  EXPECT_EQ(slotOf(&M::partOfDynamicUnitIs), 34);
}

} // namespace
