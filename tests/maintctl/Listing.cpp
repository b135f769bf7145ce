#include "Run.h"

namespace Maintctl::Test {

namespace {

constexpr const char* unit = "add /status/System\n"
                             "set /status/System/state active\n"
                             "add /status/System/group/groupTypeBgp,peers\n"
                             "add /status/System/history/12.5 'drain begun'\n"
                             "add /status/System/history/7 again\n";

TEST(Ls, ListsTheRootsWithTheirTypes) {
  const Result result = maintctl("ls");
  EXPECT_EQ(result.out, "/agentInfo       Maintenance::AgentInfo\n"
                        "/cliInput        Maintenance::Unit::Input\n"
                        "/defaultProfile  Maintenance::Profile::DefaultProfile\n"
                        "/groupToUnit     Maintenance::GroupToUnitDir\n"
                        "/groups          Maintenance::MaintenanceGroup::ConfigDir\n"
                        "/mergedInput     Maintenance::Unit::MergedInputDir\n"
                        "/onBootInput     Maintenance::Unit::Input\n"
                        "/profiles        Maintenance::Profile::ConfigDir\n"
                        "/status          Maintenance::Unit::StatusDir\n"
                        "/unitProfiles    MaintenanceUnitProfile::ConfigDir\n"
                        "/units           Maintenance::Unit::ConfigDir\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(maintctl("ls /").out, result.out);
}

TEST(Ls, ListsWhatADirectoryHasAndItsMembersByName) {
  EXPECT_EQ(printed("add /status/System\nadd /status/Linecard3\nls /status\n"),
            "status/           Maintenance::Unit::Status by Zel::Name  2 members\n"
            "status/Linecard3  Maintenance::Unit::Status\n"
            "status/System     Maintenance::Unit::Status\n");
  EXPECT_EQ(printed("add /status/System\nls /status/status\nls /status/status/\n"),
            "System  Maintenance::Unit::Status\n"
            "System  Maintenance::Unit::Status\n");
  EXPECT_EQ(printed("ls /status/status\n"), "");
}

TEST(Ls, ListsTheAttributesOfAnEntityWithTypeAndValue) {
  EXPECT_EQ(printed(std::string(unit) + "ls /status/System\n"),
            "unitName                         Zel::String                      'System' "
            "(read-only)\n"
            "unitType                         Maintenance::Unit::UnitType      'userConfigured'\n"
            "group/                           bool by Group::GroupKey          1 entry\n"
            "profileName                      Zel::String                      ''\n"
            "state                            Maintenance::Unit::State         'active'\n"
            "reason                           Maintenance::Unit::InputSrc      'srcUnknown'\n"
            "timeOfStateChange                F64                              0\n"
            "onBootMaintExitTime              F64                              0\n"
            "defaultHistorySize               U32                              12 (read-only)\n"
            "historySize                      U32                              12\n"
            "history/                         Zel::String by F64               2 entries\n"
            "maintEnterInstance               Zel::String                      ''\n"
            "maintExitInstance                Zel::String                      ''\n"
            "aggTrafficRate                   Maintenance::Unit::TrafficRates  "
            "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 0, 'inBitsRate': 0, "
            "'statsUpdateTime': 0})\n"
            "intfsViolatingTrafficThreshold/  bool by Vexil::IntfId            0 entries\n"
            "totalIntfTrafficViolations       U32                              0\n"
            "genId                            U32                              0\n");
}

TEST(Ls, ListsOneAttributeOneEntryAndAllEntries) {
  EXPECT_EQ(printed(std::string(unit) + "ls /status/System/state\n"),
            "state  Maintenance::Unit::State  'active'\n");
  EXPECT_EQ(printed(std::string(unit) + "ls /status/System/history\n"),
            "7     Zel::String  'again'\n"
            "12.5  Zel::String  'drain begun'\n");
  EXPECT_EQ(printed(std::string(unit) + "ls /status/System/history/12.5\n"),
            "12.5  Zel::String  'drain begun'\n");
}

TEST(Ls, PrintsJson) {
  EXPECT_EQ(maintctl("--json ls").out,
            R"([{"name":"/agentInfo","type":"Maintenance::AgentInfo"},)"
            R"({"name":"/cliInput","type":"Maintenance::Unit::Input"},)"
            R"({"name":"/defaultProfile","type":"Maintenance::Profile::DefaultProfile"},)"
            R"({"name":"/groupToUnit","type":"Maintenance::GroupToUnitDir"},)"
            R"({"name":"/groups","type":"Maintenance::MaintenanceGroup::ConfigDir"},)"
            R"({"name":"/mergedInput","type":"Maintenance::Unit::MergedInputDir"},)"
            R"({"name":"/onBootInput","type":"Maintenance::Unit::Input"},)"
            R"({"name":"/profiles","type":"Maintenance::Profile::ConfigDir"},)"
            R"({"name":"/status","type":"Maintenance::Unit::StatusDir"},)"
            R"({"name":"/unitProfiles","type":"MaintenanceUnitProfile::ConfigDir"},)"
            R"({"name":"/units","type":"Maintenance::Unit::ConfigDir"}])"
            "\n");
  EXPECT_EQ(maintctl("ls --json /defaultProfile").out,
            R"([{"name":"systemDefaultProfileName","type":"Zel::String",)"
            R"("value":"#DEFAULTPROFILE","writable":false},)"
            R"({"name":"profileName","type":"Zel::String","value":"","writable":true},)"
            R"({"name":"reservedProfileName","type":"Zel::String",)"
            R"("value":"default","writable":false}])"
            "\n");
  EXPECT_EQ(printed("add /status/System\nls --json /status\n"),
            R"([{"count":1,"key":"Zel::Name","name":"status/","type":"Maintenance::Unit::Status"},)"
            R"({"name":"status/System","type":"Maintenance::Unit::Status"}])"
            "\n");
}

TEST(Get, PrintsOneValueInItsTextForm) {
  EXPECT_EQ(maintctl("get /defaultProfile/systemDefaultProfileName").out, "'#DEFAULTPROFILE'\n");
  EXPECT_EQ(printed(std::string(unit) + "get /status/System/state\n"), "'active'\n");
  EXPECT_EQ(printed(std::string(unit) + "get /status/System/genId\n"), "0\n");
  EXPECT_EQ(printed(std::string(unit) + "get /status/System/history/12.5\n"), "'drain begun'\n");
  EXPECT_EQ(printed(std::string(unit) + "get /status/System/group/groupTypeBgp,peers\n"), "true\n");
}

TEST(Get, PrintsAllValuesBelowAnEntityOrACollection) {
  EXPECT_EQ(printed("add /profiles/profileTypeBgp,b\nadd /profiles/profileTypeBgp,a\n"
                    "get /profiles\n"),
            "config/profileTypeBgp,a/key = Value('Maintenance::Profile::ProfileKey', ** {'type': "
            "'profileTypeBgp', 'name': 'a'})\n"
            "config/profileTypeBgp,b/key = Value('Maintenance::Profile::ProfileKey', ** {'type': "
            "'profileTypeBgp', 'name': 'b'})\n");
  EXPECT_EQ(printed(std::string(unit) + "get /status/System/history\n"),
            "7 = 'again'\n12.5 = 'drain begun'\n");
  EXPECT_EQ(printed("get /\n"), "agentInfo/agentPid = 0\n"
                                "agentInfo/restartCount = 0\n"
                                "agentInfo/onBoot = false\n"
                                "agentInfo/ready = false\n"
                                "cliInput/priority = 'srcCli'\n"
                                "defaultProfile/systemDefaultProfileName = '#DEFAULTPROFILE'\n"
                                "defaultProfile/profileName = ''\n"
                                "defaultProfile/reservedProfileName = 'default'\n"
                                "onBootInput/priority = 'srcOnBoot'\n");
}

TEST(Get, PrintsJson) {
  EXPECT_EQ(printed(std::string(unit) + "get --json /status/System/state\n"), "\"active\"\n");
  EXPECT_EQ(printed(std::string(unit) + "get --json /status/System/history\n"),
            R"({"12.5":"drain begun","7":"again"})"
            "\n");
  EXPECT_EQ(printed(std::string(unit) + "set /status/System/aggTrafficRate 1,2,nan\n"
                                        "get --json /status/System/aggTrafficRate\n"),
            R"({"inBitsRate":2,"outBitsRate":1,"statsUpdateTime":"nan"})"
            "\n");
  EXPECT_EQ(printed("add /profiles/profileTypeBgp,a\nget /profiles --json\n"),
            R"({"config":{"profileTypeBgp,a":{"key":{"name":"a","type":"profileTypeBgp"}}}})"
            "\n");
  EXPECT_EQ(printed("add /status/a\nset /status/a/genId 7\nset /status/a/reason srcCli\n"
                    "get --json /status/a\n"),
            R"({"aggTrafficRate":{"inBitsRate":0,"outBitsRate":0,"statsUpdateTime":0.0},)"
            R"("defaultHistorySize":12,"genId":7,"group":{},"history":{},"historySize":12,)"
            R"("intfsViolatingTrafficThreshold":{},"maintEnterInstance":"","maintExitInstance":"",)"
            R"("onBootMaintExitTime":0.0,"profileName":"","reason":"srcCli","state":"init",)"
            R"("timeOfStateChange":0.0,"totalIntfTrafficViolations":0,"unitName":"a",)"
            R"("unitType":"userConfigured"})"
            "\n");
  EXPECT_EQ(maintctl("get / --json").out,
            R"({"agentInfo":{"agentPid":0,"onBoot":false,"onBootMaintEnter":{},"ready":false,)"
            R"("restartCount":0},"cliInput":{"priority":"srcCli","unit":{}},)"
            R"("defaultProfile":{"profileName":"","reservedProfileName":"default",)"
            R"("systemDefaultProfileName":"#DEFAULTPROFILE"},"groupToUnit":{"groupToUnit":{}},)"
            R"("groups":{"maintenanceGroup":{}},"mergedInput":{"unit":{}},)"
            R"("onBootInput":{"priority":"srcOnBoot","unit":{}},"profiles":{"config":{}},)"
            R"("status":{"status":{}},"unitProfiles":{"config":{}},"units":{"config":{}}})"
            "\n");
}

TEST(Get, ReplacesInJsonWhatIsNoUtf8) {
  EXPECT_EQ(printed("set /defaultProfile/profileName 'a\xff"
                    "b'\nget --json /defaultProfile/profileName\n"),
            "\"a\xef\xbf\xbd"
            "b\"\n");
}

} // namespace

} // namespace Maintctl::Test
