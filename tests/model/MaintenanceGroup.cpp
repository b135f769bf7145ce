#include "Listeners.h"

#include <stdexcept>

namespace {

using namespace Maintenance::MaintenanceGroup;
using namespace TestModel;
using Group::GroupKey;
using Maintenance::Profile::ProfileKey;

const GroupKey peers(Group::groupTypeBgp, "peers");
const ProfileKey slow(Maintenance::Profile::profileTypeBgp, "slow");
const ProfileKey fast(Maintenance::Profile::profileTypeBgp, "fast");

TEST(MaintenanceGroups, AMemberOfTheDirectoryIsNamedByTheTextOfItsKey) {
  const auto groups = configDirFactory("groups");
  const char* const text = "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})";
  EXPECT_EQ(groups->maintenanceGroupIs(peers)->name(), text);
  const GroupKey quoted(Group::groupTypeInterface, "it's");
  EXPECT_EQ(groups->newMaintenanceGroup(quoted)->name(),
            "Value('Group::GroupKey', ** {'type': 'groupTypeInterface', 'name': 'it\\'s'})");
  EXPECT_EQ(groups->newMaintenanceGroup(GroupKey())->name(),
            "Value('Group::GroupKey', ** {'type': 'groupTypeUnknown', 'name': ''})");
}

TEST(MaintenanceGroups, OneFromTheFactoryKeepsTheNameThatTheCallerChose) {
  EXPECT_EQ(configFactory("chosen", peers)->name(), "chosen");
  EXPECT_EQ(configFactory("", peers)->name(), "");
  EXPECT_EQ(configFactory("chosen", peers)->key(), peers);
}

TEST(MaintenanceGroups, AskingTwiceTellsOnceAndCountsTwice) {
  const auto groups = configDirFactory("groups");
  Log log;
  const auto listener = listen<GroupDirListener>(groups, log);
  const auto first = groups->maintenanceGroupIs(peers);
  expectMoves(*groups, 1, 0, [&] { EXPECT_EQ(groups->maintenanceGroupIs(peers), first); });
  EXPECT_EQ(log, Log({"on 1:peers"}));
  EXPECT_EQ(groups->versionCounter(), 2U);
}

struct MaintenanceGroup : testing::Test {
  const Ptr<Config> group = configFactory("group", peers);
  Log log;
  const Ptr<GroupListener> listener = listen<GroupListener>(group, log);
};

TEST_F(MaintenanceGroup, ANewOneHasItsKeyAndNoProfiles) {
  const auto made = configFactory("group", peers);
  EXPECT_EQ(made->references(), 1U);
  EXPECT_FALSE(made->parent());
  EXPECT_EQ(made->parentAttrId(), 0);
  EXPECT_EQ(made->versionCounter(), 0U);
  EXPECT_EQ(made->readCounter(), 0U);
  EXPECT_EQ(made->profileMap().count(), 0U);
  expectMoves(*made, 0, 1, [&] { EXPECT_EQ(made->key(), peers); });
  expectMoves(*made, 0, 1, [&] { EXPECT_EQ(made->fwkKey(), peers); });
  expectMoves(*made, 0, 1, [&] { EXPECT_FALSE(made->profile(slow)); });
}

TEST_F(MaintenanceGroup, AProfileIsToldWhenItComesChangesAndGoes) {
  expectMoves(*group, 1, 0, [&] { group->profileIs(slow, false); });
  expectMoves(*group, 0, 0, [&] { group->profileIs(slow, false); });
  expectMoves(*group, 1, 0, [&] { group->profileIs(slow, true); });
  EXPECT_TRUE(group->profile(slow));
  EXPECT_FALSE(group->profile(fast));
  expectMoves(*group, 1, 0, [&] { EXPECT_TRUE(group->profileDel(slow)); });
  expectMoves(*group, 0, 0, [&] { EXPECT_FALSE(group->profileDel(slow)); });
  EXPECT_EQ(log, Log(3, "onProfile 1:slow"));
}

TEST_F(MaintenanceGroup, NewProfileCountsAndTellsNothingAndRefusesAKeyThatIsThere) {
  expectMoves(*group, 0, 0, [&] {
    const auto entry = group->newProfile(slow, true);
    EXPECT_EQ(entry->zelKey(), slow);
    EXPECT_TRUE(entry->zelValue());
    EXPECT_THROW(group->newProfile(slow, false), Zel::NameInUseException);
  });
  EXPECT_TRUE(group->profile(slow));
  EXPECT_EQ(log, Log());
}

TEST_F(MaintenanceGroup, AllProfilesGoInTheOrderOfIteration) {
  group->newProfile(slow, true);
  group->newProfile(fast, false);
  Log expected;
  for (Config::ProfileMap::IteratorConst at(group->profileMap()); at; at.advance()) {
    expected.push_back(joined("onProfile ", textOf(at->zelKey())));
  }
  ASSERT_EQ(expected.size(), 2U);
  expectMoves(*group, 2, 0, [&] { group->profileDelAll(); });
  EXPECT_EQ(log, expected);
  EXPECT_EQ(group->profileMap().count(), 0U);
}

TEST_F(MaintenanceGroup, ANotificationAloneChangesNothing) {
  expectMoves(*group, 0, 0, [&] { group->profileNotify(fast); });
  EXPECT_EQ(log, Log({"onProfile 1:fast"}));
  EXPECT_EQ(group->profileMap().count(), 0U);
}

TEST_F(MaintenanceGroup, ANotifieeThatThrowsIsToldTheId) {
  listener->onCall = [] { throw std::runtime_error("refused"); };
  group->profileIs(slow, true);
  EXPECT_EQ(log, Log({"onProfile 1:slow", "exception 259"}));
  EXPECT_TRUE(group->profile(slow));
}

TEST_F(MaintenanceGroup, ItNamesItsAttributesAndAsksItsBaseForTheRest) {
  EXPECT_EQ(group->attributeString(258), "key");
  EXPECT_EQ(group->attributeString(259), "profile");
  EXPECT_EQ(group->attributeString(0), "fwkKey");
  for (const int id : {-259, -1, 2, 257, 260, 386}) {
    EXPECT_EQ(group->attributeString(id), "unknown") << id;
  }
}

TEST(MaintenanceGroupEnds, AreToldToAWeakNotifiee) {
  Log log;
  auto group = configFactory("group", peers);
  const auto listener = listen<GroupListener>(group, log);
  listener->isWeakReferenceIs(true);
  group = nullptr;
  EXPECT_EQ(log, Log({"zero"}));
  EXPECT_FALSE(listener->notifier());
}

} // namespace
