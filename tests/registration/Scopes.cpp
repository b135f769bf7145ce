#include <Zel/IntrospectionReactor>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::ElementsAre;

const Zel::NameSpace& root() { return Zel::IntrospectionReactor::global()->root(); }

const Zel::NameSpace* scope(const Zel::NameSpace& in, std::string_view name) {
  for (const Zel::NameSpace& inner : in.scopes()) {
    if (inner.name().view() == name) {
      return &inner;
    }
  }
  return nullptr;
}

std::vector<std::string_view> scopesOf(const Zel::NameSpace& names) {
  std::vector<std::string_view> all;
  for (const Zel::NameSpace& inner : names.scopes()) {
    all.push_back(inner.name().view());
  }
  return all;
}

std::vector<std::string_view> typesOf(const Zel::NameSpace& names) {
  std::vector<std::string_view> all;
  for (const Zel::ZelType* const type : names.types()) {
    all.push_back(type->name().view());
  }
  return all;
}

TEST(Scopes, AreListedInTheOrderOfTheModulesThatOpenedThem) {
  EXPECT_EQ(root().name(), "");
  std::vector<std::string_view> atLoad = scopesOf(root());
  ASSERT_GE(atLoad.size(), 6U);
  atLoad.resize(6); // tests open others
  EXPECT_THAT(atLoad, ElementsAre("Zel", "Group", "Vexil", "Maintenance", "MaintenanceUnitProfile",
                                  "Foreign"));
  EXPECT_THAT(scopesOf(*scope(root(), "Maintenance")),
              ElementsAre("Profile", "Unit", "MaintenanceGroup"));
  EXPECT_TRUE(scopesOf(*scope(root(), "MaintenanceUnitProfile")).empty());
  EXPECT_TRUE(scopesOf(*scope(root(), "Foreign")).empty());
}

TEST(Scopes, ListTheirTypesInTheOrderOfDeclaration) {
  EXPECT_THAT(typesOf(root()), ElementsAre("bool", "U32", "U64", "F64"));
  EXPECT_THAT(typesOf(*scope(root(), "Zel")),
              ElementsAre("String", "Name", "PtrInterface", "Entity", "GenericIf", "List"));
  EXPECT_THAT(typesOf(*scope(root(), "Group")), ElementsAre("GroupType", "GroupKey"));
  EXPECT_THAT(typesOf(*scope(root(), "Vexil")), ElementsAre("IntfId"));
  const Zel::NameSpace& maintenance = *scope(root(), "Maintenance");
  EXPECT_THAT(typesOf(maintenance),
              ElementsAre("ProfileChangeCause", "MemberToGroup", "GroupToUnit", "GroupToUnitDir",
                          "GroupProfileSelKey", "GroupProfileSelectionIn",
                          "GroupProfileSelectionOut", "UnitProfileSelKey", "UnitProfileSelection",
                          "ProfileSelection", "ProfileKeySet", "OnBootUnitAndReason", "AgentInfo"));
  EXPECT_THAT(typesOf(*scope(maintenance, "Profile")),
              ElementsAre("ProfileType", "ProfileKey", "Config", "ConfigDir", "DefaultProfile"));
  EXPECT_THAT(typesOf(*scope(maintenance, "Unit")),
              ElementsAre("UnitType", "InputSrc", "BuiltinUnitName", "MaintenanceStageClasses",
                          "MaintenanceStageList", "TrafficRates", "Config", "ConfigDir", "State",
                          "Status", "StatusDir", "Input", "MergedInput", "MergedInputDir",
                          "MaintenanceOp", "StageMgrInstKey"));
  EXPECT_THAT(typesOf(*scope(maintenance, "MaintenanceGroup")), ElementsAre("Config", "ConfigDir"));
  EXPECT_THAT(typesOf(*scope(root(), "MaintenanceUnitProfile")),
              ElementsAre("Config", "ConfigDir"));
  EXPECT_THAT(typesOf(*scope(root(), "Foreign")),
              ElementsAre("Zone", "Urgency", "SkuKey", "Dimensions", "SlotCode", "Alarm", "TourKey",
                          "Limits", "Product", "ProductDir", "Perishable", "PerishableDir", "Rack",
                          "Carrier", "Order", "OrderDir", "Depot", "Stop", "Mark", "Tour",
                          "PickPlan", "PickSet"));
}

TEST(Scopes, AreOneForAllWhoOpenThemByTheSameName) {
  const auto reactor = Zel::IntrospectionReactor::global();
  for (const char* inner : {"First", "Second", "First"}) {
    reactor->handleNameSpace("Shared");
    reactor->handleNameSpace(inner);
    reactor->handleScopeExit();
    reactor->handleScopeExit();
  }
  const auto names = scopesOf(root());
  EXPECT_EQ(std::count(names.begin(), names.end(), "Shared"), 1);
  EXPECT_THAT(scopesOf(*scope(root(), "Shared")), ElementsAre("First", "Second"));
  EXPECT_THAT(typesOf(*scope(root(), "Shared")), ElementsAre());
}

} // namespace
