#include <model/Mapping.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace Maintenance;
using Profile::ProfileKey;

const ProfileKey a(Profile::profileTypeUnit, "a");
const ProfileKey b(Profile::profileTypeBgp, "b");

TEST(ProfileKeySets, AnEmptyOneIsWonByAKeyOfNoTypeWithoutAName) {
  const auto set = profileKeySetFactory();
  EXPECT_EQ(set->winningProfile().type(), Profile::profileTypeNone);
  EXPECT_EQ(set->winningProfile().name(), "");
  EXPECT_EQ(set->references(), 1U);
}

TEST(ProfileKeySets, TheGreatestNameWinsWhateverTheTypes) {
  for (const auto one : {Profile::profileTypeNone, Profile::profileTypeBgp,
                         Profile::profileTypeInterface, Profile::profileTypeUnit}) {
    for (const auto other : {Profile::profileTypeNone, Profile::profileTypeBgp,
                             Profile::profileTypeInterface, Profile::profileTypeUnit}) {
      const auto set = profileKeySetFactory();
      set->profileKeyIs(ProfileKey(one, "a"), true);
      set->profileKeyIs(ProfileKey(other, "b"), true);
      EXPECT_EQ(set->winningProfile(), ProfileKey(other, "b")) << one << ' ' << other;
    }
  }
}

TEST(ProfileKeySets, ManyNamesAreWonByTheGreatestInWhateverOrderTheyCame) {
  const auto set = profileKeySetFactory();
  for (const char* name : {"delta", "", "zulu", "alpha", "zul", "Zulu"}) {
    set->profileKeyIs(ProfileKey(Profile::profileTypeBgp, name), true);
  }
  EXPECT_EQ(set->winningProfile().name(), "zulu");
  set->profileKeyIs(ProfileKey(Profile::profileTypeBgp, "\xff"), true);
  EXPECT_EQ(set->winningProfile().name(), "\xff");
}

TEST(ProfileKeySets, AKeyWithAFalseCanWin) {
  const auto set = profileKeySetFactory();
  set->profileKeyIs(a, true);
  set->profileKeyIs(b, false);
  EXPECT_EQ(set->winningProfile(), b);
}

TEST(ProfileKeySets, OfEqualNamesTheFirstInTheOrderOfHashesWins) {
  const auto set = profileKeySetFactory();
  for (const int type : {3, 1, 2, 0}) {
    set->profileKeyIs(ProfileKey(static_cast<Profile::ProfileType>(type), "same"), true);
  }
  const ProfileKeySet::ProfileKeyMap::IteratorConst front(set->profileKeyMap());
  EXPECT_EQ(set->winningProfile(), front->zelKey());
}

TEST(ProfileKeySets, ADefaultKeyGivesWayToAnyOther) {
  const auto set = profileKeySetFactory();
  set->profileKeyIs(ProfileKey(), true);
  EXPECT_EQ(set->winningProfile(), ProfileKey());
  const ProfileKey unnamed(Profile::profileTypeBgp, "");
  set->profileKeyIs(unnamed, true);
  const ProfileKeySet::ProfileKeyMap::IteratorConst front(set->profileKeyMap());
  // Met first, it yields to the other; met last, its name is not greater.
  EXPECT_EQ(set->winningProfile(), unnamed) << front->zelKey();
}

TEST(ProfileKeySets, ThePresentKeyIsOverwrittenInItsPlace) {
  const auto set = profileKeySetFactory();
  set->profileKeyIs(a, false);
  const auto* const entry = set->profileKeyMap()[a];
  set->profileKeyIs(a, true);
  EXPECT_EQ(set->profileKeyMap()[a], entry);
  EXPECT_TRUE(set->profileKey(a));
  EXPECT_EQ(set->profileKeyMap().mapVersion(), 1U);
}

TEST(ProfileKeySets, KeysAreTakenOutByKeyByIteratorAndAllAtOnce) {
  const auto set = profileKeySetFactory();
  set->profileKeyIs(a, true);
  set->newProfileKey(b, false);
  EXPECT_THROW(set->newProfileKey(b, true), Zel::NameInUseException);
  EXPECT_TRUE(set->profileKeyDel(a));
  EXPECT_FALSE(set->profileKeyDel(a));
  ProfileKeySet::ProfileKeyMap::Iterator at(set->profileKeyMap(), b);
  EXPECT_FALSE(set->profileKeyDel(at));
  EXPECT_EQ(set->profileKeyMap().count(), 0U);
  set->profileKeyIs(a, true);
  set->profileKeyDelAll();
  EXPECT_EQ(set->winningProfile(), ProfileKey());
}

TEST(ProfileKeySets, ANotificationOfAKeyHasNoEffect) {
  const auto set = profileKeySetFactory();
  set->profileKeyNotify(a);
  EXPECT_EQ(set->profileKeyMap().count(), 0U);
  set->profileKeyIs(a, true);
  set->profileKeyNotify(a);
  set->profileKeyNotify(b);
  EXPECT_EQ(set->profileKeyMap().count(), 1U);
  EXPECT_EQ(set->profileKeyMap().mapVersion(), 1U);
  EXPECT_TRUE(set->profileKey(a));
}

template <class T>
concept Notifying = requires(const T& object) {
  object.zelNotifieeList();
};

TEST(ProfileKeySets, KeepNoNotifiees) {
  EXPECT_TRUE(Notifying<ProfileSelection>);
  EXPECT_FALSE(Notifying<ProfileKeySet>);
  EXPECT_FALSE(Notifying<GroupProfileSelectionOut>);
  // The only class of notifiees that there is for one is that of all objects.
  using OfAll = Zel::PtrInterface::NotifieeConst;
  EXPECT_TRUE((std::is_same_v<ProfileKeySet::NotifieeConst, OfAll>));
  EXPECT_TRUE((std::is_same_v<GroupProfileSelectionOut::NotifieeConst, OfAll>));
}

/// Writes down each call that a notifiee of any object can get.
class AnyListener : public Zel::PtrInterface::NotifieeConst {
public:
  void handleNotification(Zel::ActivityConfig* /*config*/) override { ++calls; }
  void onAttribute(Zel::AttributeId /*id*/) override { ++calls; }
  void onNotification() override { ++calls; }
  void onCollectionNotification(Zel::String8 /*key*/) override { ++calls; }
  void onNotificationException() override { ++calls; }
  void onNotificationException(Zel::AttributeId /*id*/) override { ++calls; }
  void onZeroReferences() override { ++calls; }

  int calls = 0;
};

TEST(ProfileKeySets, TellANotifieeThatIsRegisteredWithThemNothing) {
  auto set = profileKeySetFactory();
  const auto listener = Zel::makeObject<AnyListener>();
  listener->isRegisteredNotifieeIs(true);
  listener->notifierIs(set);
  ASSERT_EQ(listener->notifier(), set);
  ASSERT_TRUE(listener->isRegisteredNotifiee());
  set->profileKeyIs(a, true);
  set->profileKeyIs(a, false);
  set->profileKeyIs(b, true);
  set->newProfileKey(ProfileKey(), true);
  set->profileKeyNotify(a);
  set->profileKeyDel(a);
  set->profileKeyDelAll();
  listener->notifierIs(nullptr);
  set = nullptr;
  EXPECT_EQ(listener->calls, 0);
}

/// The facility of the mappings, with all as it was before at the end.
class WinningTrace : public testing::Test {
protected:
  WinningTrace() { Zel::traceStreamIs(&trace); }
  ~WinningTrace() override {
    facility.onIs(false);
    facility.levelIs(5, false);
    facility.levelIs(4, false);
    Zel::coverageStream_ = nullptr;
    Zel::traceStreamIs(nullptr);
  }
  Zel::TraceFacility& facility = *_defaultTraceHandle().facility();
  const Zel::Ptr<ProfileKeySet> set = profileKeySetFactory();
  std::ostringstream trace;
  std::ostringstream coverage;
};

const std::string line =
    "MaintenanceMapping/5 Mapping:23 winningProfile [<unknown>] winningProfile: winningProfile is "
    "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeBgp', 'name': 'b'})\n";

TEST_F(WinningTrace, IsOffAtFirstAndCostsOneLookThen) {
  set->profileKeyIs(b, true);
  EXPECT_EQ(facility.name(), "MaintenanceMapping");
  EXPECT_EQ(&facility, &Zel::TraceFacility::named("MaintenanceMapping"));
  const unsigned reads = facility.reads();
  EXPECT_EQ(set->winningProfile(), b);
  EXPECT_EQ(facility.reads(), reads + 1);
  EXPECT_EQ(trace.str(), "");
}

TEST_F(WinningTrace, IsOffWithoutItsLevelAndCostsTwoLooksThen) {
  facility.onIs(true);
  facility.levelIs(4, true);
  const unsigned reads = facility.reads();
  EXPECT_EQ(set->winningProfile(), ProfileKey());
  EXPECT_EQ(facility.reads(), reads + 2);
  EXPECT_EQ(trace.str(), "");
}

TEST_F(WinningTrace, NamesTheWinnerAndItsPlace) {
  facility.onIs(true);
  facility.levelIs(5, true);
  set->profileKeyIs(a, true);
  set->profileKeyIs(b, true);
  EXPECT_EQ(set->winningProfile(), b);
  EXPECT_EQ(trace.str(), line);
}

TEST_F(WinningTrace, GoesToTheCoverageStreamWhateverTheFlags) {
  Zel::coverageStream_ = &coverage;
  set->profileKeyIs(b, true);
  EXPECT_EQ(set->winningProfile(), b);
  EXPECT_EQ(coverage.str(), line);
  EXPECT_EQ(trace.str(), "");
}

} // namespace
