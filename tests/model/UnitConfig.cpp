#include "Listeners.h"

namespace {

using namespace Maintenance::Unit;
using namespace TestModel;
using Zel::String8;

struct UnitConfig : testing::Test {
  Ptr<UnitConfigListener> listener() { return listen<UnitConfigListener>(unit, log); }

  const Ptr<Config> unit = configFactory("Linecard3");
  const Group::GroupKey key{Group::groupTypeBgp, "peers"};
  Log log;
};

TEST_F(UnitConfig, TheFactoryMakesOneWithOneReferenceAndNothingElse) {
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(unit->name(), "Linecard3");
  EXPECT_FALSE(unit->parent());
  EXPECT_EQ(unit->parentAttrId(), 0);
  EXPECT_EQ(unit->versionCounter(), 0U);
  EXPECT_EQ(unit->readCounter(), 0U);
  EXPECT_EQ(unit->zelNotifieeList().count(), 0U);
}

TEST_F(UnitConfig, ANewOneIsUserConfiguredWithoutGroupsAndWithoutAProfile) {
  EXPECT_EQ(unit->unitType(), userConfigured);
  EXPECT_EQ(unit->groupMap().count(), 0U);
  EXPECT_FALSE(unit->group(key));
  EXPECT_EQ(unit->profileName(), "");
  EXPECT_EQ(&unit->profileName().data(), &String8::nullStringData_);
}

TEST_F(UnitConfig, ItsNameIsTheEntitysAndEachWayToReadItCounts) {
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(unit->unitName(), "Linecard3"); });
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(unit->fwkKey(), "Linecard3"); });
  EXPECT_EQ(&unit->unitName().data(), &unit->name().data());
}

TEST_F(UnitConfig, EachRealChangeIsCountedAndToldOnce) {
  const auto hearer = listener();
  expectMoves(*unit, 1, 0, [&] { unit->unitTypeIs(dynamic); });
  expectMoves(*unit, 0, 0, [&] { unit->unitTypeIs(dynamic); });
  expectMoves(*unit, 1, 0, [&] { unit->profileNameIs("slow"); });
  expectMoves(*unit, 0, 0, [&] { unit->profileNameIs("slow"); });
  expectMoves(*unit, 1, 0, [&] { unit->groupIs(key, true); });
  expectMoves(*unit, 0, 0, [&] { unit->groupIs(key, true); });
  expectMoves(*unit, 1, 0, [&] { unit->groupIs(key, false); });
  EXPECT_EQ(log, Log({"onUnitType", "onProfileName", "onGroup 1:peers", "onGroup 1:peers"}));
  EXPECT_EQ(unit->unitType(), dynamic);
  EXPECT_EQ(unit->profileName(), "slow");
}

TEST_F(UnitConfig, FalseUnderAKeyThatIsNotThereAddsIt) {
  const auto hearer = listener();
  expectMoves(*unit, 1, 0, [&] { unit->groupIs(key, false); });
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_FALSE(unit->group(key));
  EXPECT_EQ(log, Log({"onGroup 1:peers"}));

  EXPECT_FALSE(unit->groupDel(key)); // what it held
  EXPECT_EQ(unit->groupMap().count(), 0U);
  EXPECT_EQ(log, Log({"onGroup 1:peers", "onGroup 1:peers"}));
  expectMoves(*unit, 0, 0, [&] { EXPECT_FALSE(unit->groupDel(key)); });
}

TEST_F(UnitConfig, AnyKindGoesWithTheNameOfABuiltinUnit) {
  const auto system = configFactory(BuiltinUnitName().system());
  EXPECT_EQ(system->unitType(), userConfigured);
  for (const UnitType type : {dynamic, builtin, userConfigured}) {
    system->unitTypeIs(type);
    EXPECT_EQ(system->unitType(), type);
  }
}

TEST_F(UnitConfig, TheNameOfAProfileIsNotLookedUp) {
  for (const char* const name : {"no such profile", "#DEFAULTPROFILE", "a/b", ""}) {
    unit->profileNameIs(name);
    EXPECT_EQ(unit->profileName(), name);
  }
}

TEST_F(UnitConfig, AStatusRepeatsItsAttributesUnderTheSameIds) {
  const auto rows = Config::zelTable().rows;
  ASSERT_EQ(rows.size(), 5U);
  for (const Zel::AttrRow& row : rows.first(4)) {
    const Zel::AttrRow* const other = Status::zelTable().ownRow(row.id);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->name, row.name);
    EXPECT_EQ(other->kind, row.kind);
    EXPECT_EQ(other->value, row.value);
    EXPECT_EQ(other->key, row.key);
  }
}

TEST_F(UnitConfig, ADirectoryAskedTwiceForOneNameYieldsOneEntityAndTellsOnce) {
  const auto configured = configDirFactory("configured");
  const auto hearer = listen<UnitConfigDirListener>(configured, log);
  const auto first = configured->configIs("System");
  EXPECT_EQ(first->parentAttrId(), 258);
  EXPECT_EQ(first->parent(), configured);
  EXPECT_EQ(configured->versionCounter(), 1U);
  EXPECT_EQ(configured->configIs("System"), first);
  EXPECT_EQ(configured->versionCounter(), 2U) << "a hit counts";
  EXPECT_EQ(log, Log({"on System"}));
}

TEST_F(UnitConfig, IsFoundUnderTheNameThatADerivedClassGivesIt) {
  struct Renamed : Config {
    explicit Renamed(int number) : Config("unit"), number_(number) {}
    Zel::Name name() const override { return String8(joined("renamed", std::to_string(number_))); }

  private:
    int number_;
  };
  ConfigDir::ConfigMap map;
  for (int number = 0; number < 100; ++number) { // which grow the table
    const auto made = Zel::makeObject<Renamed>(number);
    const Zel::Name given = made->zelKey();
    map.newMemberG(made, &given);
  }
  for (int number = 0; number < 100; ++number) {
    const Zel::Name given(joined("renamed", std::to_string(number)));
    ASSERT_NE(map[given], nullptr) << number;
    EXPECT_EQ(map[given]->fwkKey(), given);
    EXPECT_EQ(map[given]->unitName(), given);
  }
  EXPECT_EQ(map["unit"], nullptr);
}

TEST_F(UnitConfig, DeletingItLeavesTheStatusOfTheSameName) {
  const auto configured = configDirFactory("configured");
  const auto units = statusDirFactory("units");
  configured->configIs("System");
  const auto status = units->statusIs("System");
  const Counters counters(*units);
  EXPECT_TRUE(configured->configDel("System"));
  EXPECT_EQ(units->status("System"), status);
  EXPECT_EQ(counters.changes(), 0U);
  configured->configDelAll();
  EXPECT_EQ(units->statusMap().count(), 1U);
}

} // namespace
