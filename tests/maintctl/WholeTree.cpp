#include "Run.h"

#include <LocalDevice.h>
#include <Scope.h>

#include <Zel/ZelType>

#include <set>

// The tree of a device: every type of the model that has a place in it, with every attribute.

namespace Maintctl::Test {

namespace {

using Zel::AttrKind;
using Zel::AttrRow;
using Zel::TypeTable;

/// One of each member.
constexpr const char* members = "add /groupToUnit/groupTypeBgp,peers\n"
                                "add /groups/groupTypeInterface,uplinks\n"
                                "add /mergedInput/System srcCli\n"
                                "add /profiles/profileTypeBgp,drain\n"
                                "add /status/System\n"
                                "add /unitProfiles/slow\n"
                                "add /units/System\n";

/// A value that is written somewhere, as it is typed and as it is printed.
struct Write {
  const char* path;
  const char* value;
  const char* text;
};
constexpr Write writes[] = {
    {"/agentInfo/agentPid", "17", "17"},
    {"/agentInfo/restartCount", "3", "3"},
    {"/agentInfo/onBoot", "true", "true"},
    {"/agentInfo/onBootMaintEnter/System", "System,srcOnBoot",
     "Value('Maintenance::OnBootUnitAndReason', ** {'unitName': 'System', 'reason': 'srcOnBoot'})"},
    {"/agentInfo/ready", "true", "true"},
    {"/cliInput/priority", "srcOnBootCli", "'srcOnBootCli'"},
    {"/cliInput/unit/Linecard%2F3", "true", "true"},
    {"/defaultProfile/profileName", "drain", "'drain'"},
    {"/groupToUnit/groupToUnit/groupTypeBgp,peers/unitName/System", "true", "true"},
    {"/groups/maintenanceGroup/groupTypeInterface,uplinks/profile/profileTypeBgp,drain", "true",
     "true"},
    {"/mergedInput/unit/System/priority", "srcOnBoot", "'srcOnBoot'"},
    {"/onBootInput/priority", "srcUnknown", "'srcUnknown'"},
    {"/onBootInput/unit/System", "false", "false"},
    {"/status/status/System/unitType", "builtin", "'builtin'"},
    {"/status/status/System/group/groupTypeBgp,peers", "true", "true"},
    {"/status/status/System/profileName", "drain", "'drain'"},
    {"/status/status/System/state", "failedEnter", "'failedEnter'"},
    {"/status/status/System/reason", "srcOnBoot", "'srcOnBoot'"},
    {"/status/status/System/timeOfStateChange", "1.5", "1.5"},
    {"/status/status/System/onBootMaintExitTime", "2.5", "2.5"},
    {"/status/status/System/historySize", "7", "7"},
    {"/status/status/System/history/12.5", "begun", "'begun'"},
    {"/status/status/System/maintEnterInstance", "in", "'in'"},
    {"/status/status/System/maintExitInstance", "out", "'out'"},
    {"/status/status/System/aggTrafficRate", "1,2,3.5",
     "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 1, 'inBitsRate': 2, "
     "'statsUpdateTime': 3.5})"},
    {"/status/status/System/intfsViolatingTrafficThreshold/Ethernet3%2F1", "true", "true"},
    {"/status/status/System/totalIntfTrafficViolations", "9", "9"},
    {"/status/status/System/genId", "4", "4"},
    {"/unitProfiles/config/slow/onBootDuration", "301", "301"},
    {"/unitProfiles/config/slow/onBootEnabled", "true", "true"},
    {"/units/config/System/unitType", "dynamic", "'dynamic'"},
    {"/units/config/System/group/groupTypeBgp,peers", "true", "true"},
    {"/units/config/System/profileName", "drain", "'drain'"},
};

/// A type and all that are below it.
void typesOf(const TypeTable& table, std::map<std::string, const TypeTable*>& types) {
  if (!types.emplace(table.name, &table).second) {
    return;
  }
  for (const AttrRow& row : table.rows) {
    if (row.kind == AttrKind::instantiating) {
      typesOf(row.collection->memberTable(), types);
    }
  }
}

std::map<std::string, const TypeTable*> typesOf(const Device& device) {
  std::map<std::string, const TypeTable*> types;
  for (const auto& [name, root] : device.dir()->entities()) {
    typesOf(*root->fwkType()->table(), types);
  }
  return types;
}

/// What can be written of a type: values, and collections of values.
std::vector<const AttrRow*> written(const TypeTable& table) {
  std::vector<const AttrRow*> rows;
  for (const AttrRow& row : table.rows) {
    if (row.isCollection() ? row.kind != AttrKind::instantiating : row.write != nullptr) {
      rows.push_back(&row);
    }
  }
  return rows;
}

std::string lines(const std::function<std::string(const Write&)>& lineOf) {
  std::string all;
  for (const Write& write : writes) {
    all += lineOf(write) + "\n";
  }
  return all;
}

/// Commands that make the members and write all values.
std::string writeAll() {
  LocalDevice device;
  return members + lines([&](const Write& write) {
           const AttrRow* const row = Scope(device, write.path).row();
           return (row->isCollection() ? "add " : "set ") + std::string(write.path) + " " +
                  write.value;
         });
}

std::string readAll() {
  return lines([](const Write& write) { return "get " + std::string(write.path); });
}

std::string allTexts() {
  return lines([](const Write& write) { return std::string(write.text); });
}

TEST(WholeTree, IsOfAllTypesThatHaveAPlace) {
  LocalDevice device;
  std::set<std::string> names;
  for (const auto& [name, table] : typesOf(device)) {
    names.insert(name);
  }
  EXPECT_EQ(names,
            (std::set<std::string>{
                "Maintenance::AgentInfo", "Maintenance::GroupToUnit", "Maintenance::GroupToUnitDir",
                "Maintenance::MaintenanceGroup::Config", "Maintenance::MaintenanceGroup::ConfigDir",
                "Maintenance::Profile::Config", "Maintenance::Profile::ConfigDir",
                "Maintenance::Profile::DefaultProfile", "Maintenance::Unit::Config",
                "Maintenance::Unit::ConfigDir", "Maintenance::Unit::Input",
                "Maintenance::Unit::MergedInput", "Maintenance::Unit::MergedInputDir",
                "Maintenance::Unit::Status", "Maintenance::Unit::StatusDir",
                "MaintenanceUnitProfile::Config", "MaintenanceUnitProfile::ConfigDir"}));
}

TEST(WholeTree, AllThatCanBeWrittenIsWrittenHere) {
  LocalDevice device;
  std::set<const AttrRow*> tested;
  for (const Write& write : writes) {
    const AttrRow* const row = Scope(device, write.path).row();
    ASSERT_NE(row, nullptr) << write.path;
    tested.insert(row);
  }
  std::size_t count = 0;
  for (const auto& [name, table] : typesOf(device)) {
    for (const AttrRow* const row : written(*table)) {
      EXPECT_EQ(tested.count(row), 1U) << name << " " << row->name;
      ++count;
    }
  }
  EXPECT_EQ(tested.size(), count);
}

TEST(WholeTree, TakesAndYieldsAWriteOfEachAttribute) {
  EXPECT_EQ(printed(writeAll() + readAll()), allTexts());
}

TEST(WholeTree, IsDumpedAndLoadedWhole) {
  const Folder folder;
  const std::string file = folder / "tree";
  const std::string dumped = printed(writeAll() + "dump '" + file + "'\ndump\n");
  EXPECT_EQ(Support::contentOf(file), dumped);
  EXPECT_EQ(printed("load '" + file + "'\n" + readAll()), allTexts());
  EXPECT_EQ(printed("load '" + file + "'\ndump\n"), dumped);
  for (const Write& write : writes) {
    EXPECT_NE(dumped.find(std::string("\n") + write.path + " " + write.text + "\n"),
              std::string::npos)
        << write.path;
  }
}

TEST(WholeTree, IsReadAsJson) {
  EXPECT_EQ(printed(std::string(members) +
                    "add /groups/groupTypeInterface,uplinks/profile/profileTypeBgp,drain\n"
                    "add /agentInfo/onBootMaintEnter System,srcOnBoot\n"
                    "get --json /agentInfo\nget --json /cliInput\nget --json /groupToUnit\n"
                    "get --json /groups\nget --json /mergedInput\nget --json /unitProfiles\n"
                    "get --json /units\n"),
            R"({"agentPid":0,"onBoot":false,"onBootMaintEnter":{"System":{"reason":"srcOnBoot",)"
            R"("unitName":"System"}},"ready":false,"restartCount":0})"
            "\n"
            R"({"priority":"srcCli","unit":{}})"
            "\n"
            R"({"groupToUnit":{"groupTypeBgp,peers":{"key":{"name":"peers","type":"groupTypeBgp"},)"
            R"("unitName":{}}}})"
            "\n"
            R"({"maintenanceGroup":{"groupTypeInterface,uplinks":{"key":{"name":"uplinks",)"
            R"("type":"groupTypeInterface"},"profile":{"profileTypeBgp,drain":true}}}})"
            "\n"
            R"({"unit":{"System":{"priority":"srcCli","unitName":"System"}}})"
            "\n"
            R"({"config":{"slow":{"key":{"name":"slow","type":"profileTypeUnit"},)"
            R"("maxOnBootDuration":3600,"minOnBootDuration":300,"onBootDuration":300,)"
            R"("onBootEnabled":false,"profileName":"slow"}}})"
            "\n"
            R"({"config":{"System":{"group":{},"profileName":"","unitName":"System",)"
            R"("unitType":"userConfigured"}}})"
            "\n");
}

TEST(WholeTree, ListsWhatEachOfItsRootsHas) {
  EXPECT_EQ(
      printed(std::string(members) +
              "ls /agentInfo\nls /cliInput\nls /groupToUnit\nls /groups\nls /mergedInput\n"
              "ls /onBootInput\nls /unitProfiles\nls /unitProfiles/slow\nls /units\n"),
      "agentPid           U32                                              0\n"
      "restartCount       U32                                              0\n"
      "onBoot             bool                                             false\n"
      "onBootMaintEnter/  Maintenance::OnBootUnitAndReason by Zel::String  0 entries\n"
      "ready              bool                                             false\n"
      "priority  Maintenance::Unit::InputSrc  'srcCli'\n"
      "unit/     bool by Zel::String          0 entries\n"
      "groupToUnit/                    Maintenance::GroupToUnit by Group::GroupKey  1 member\n"
      "groupToUnit/groupTypeBgp,peers  Maintenance::GroupToUnit\n"
      "maintenanceGroup/                            Maintenance::MaintenanceGroup::Config by "
      "Group::GroupKey  1 member\n"
      "maintenanceGroup/groupTypeInterface,uplinks  Maintenance::MaintenanceGroup::Config\n"
      "unit/        Maintenance::Unit::MergedInput by Zel::Name  1 member\n"
      "unit/System  Maintenance::Unit::MergedInput\n"
      "priority  Maintenance::Unit::InputSrc  'srcOnBoot'\n"
      "unit/     bool by Zel::String          0 entries\n"
      "config/      MaintenanceUnitProfile::Config by Zel::String  1 member\n"
      "config/slow  MaintenanceUnitProfile::Config\n"
      "key                Maintenance::Profile::ProfileKey  "
      "Value('Maintenance::Profile::ProfileKey', ** {'type': 'profileTypeUnit', 'name': 'slow'}) "
      "(read-only)\n"
      "profileName        Zel::String                       'slow' (read-only)\n"
      "onBootDuration     U32                               300\n"
      "minOnBootDuration  U32                               300 (read-only)\n"
      "maxOnBootDuration  U32                               3600 (read-only)\n"
      "onBootEnabled      bool                              false\n"
      "config/        Maintenance::Unit::Config by Zel::Name  1 member\n"
      "config/System  Maintenance::Unit::Config\n");
}

TEST(WholeTree, IsCompletedAtEachOfItsRoots) {
  const auto completed = [](const std::string& line) {
    return printed(std::string(members) + "add /onBootInput/unit/Linecard3\ncomplete " + line +
                   "\n");
  };
  EXPECT_EQ(completed("get /agentInfo/on"), "/agentInfo/onBoot\n/agentInfo/onBootMaintEnter/\n");
  EXPECT_EQ(completed("set /cliInput/priority srcOn"), "srcOnBoot\nsrcOnBootCli\n");
  EXPECT_EQ(completed("get /onBootInput/unit/"), "/onBootInput/unit/Linecard3\n");
  EXPECT_EQ(completed("get /groupToUnit/"),
            "/groupToUnit/groupToUnit/\n/groupToUnit/groupTypeBgp,peers/\n");
  EXPECT_EQ(completed("get /groups/groupTypeInterface,uplinks/"),
            "/groups/groupTypeInterface,uplinks/key\n"
            "/groups/groupTypeInterface,uplinks/profile/\n");
  EXPECT_EQ(completed("get /mergedInput/S"), "/mergedInput/System/\n");
  EXPECT_EQ(completed("get /unitProfiles/slow/onBootD"), "/unitProfiles/slow/onBootDuration\n");
  EXPECT_EQ(completed("set /units/System/unitType d"), "dynamic\n");
}

TEST(WholeTree, RefusesWhatTheModelDoesNotLetBeWritten) {
  EXPECT_EQ(refusedLine(5, members, "set /unitProfiles/slow/minOnBootDuration 1"),
            "/unitProfiles/config/slow/minOnBootDuration cannot be written: it is the same for all "
            "of its type\n");
  EXPECT_EQ(refusedLine(5, members, "set /unitProfiles/slow/profileName fast"),
            "/unitProfiles/config/slow/profileName cannot be written: it is the key, make a new "
            "one with add\n");
  EXPECT_EQ(refusedLine(5, members, "set /mergedInput/System/unitName other"),
            "/mergedInput/unit/System/unitName cannot be written: it follows from other values\n");
  EXPECT_EQ(refusedLine(2, members, "add /mergedInput/Linecard3"),
            "/mergedInput/unit/Linecard3 takes 1 argument behind its path, got 0 arguments\n");
  EXPECT_EQ(refusedLine(4, members, "add /mergedInput/Linecard3 cli"),
            "bad value cli for /mergedInput/unit/Linecard3, it is one of srcUnknown, srcOnBoot, "
            "srcOnBootCli and srcCli\n");
  EXPECT_EQ(refusedLine(4, members, "set /groups/groupTypeInterface,uplinks/profile/bgp,x true"),
            "bad value bgp,x for the key in "
            "/groups/maintenanceGroup/groupTypeInterface,uplinks/profile/bgp,x: no type bgp, it is "
            "one of profileTypeNone, profileTypeBgp, profileTypeInterface and profileTypeUnit\n");
  EXPECT_EQ(refusal(5, "del /agentInfo"), "maintctl: /agentInfo is a root, which stays\n");
}

} // namespace

} // namespace Maintctl::Test
