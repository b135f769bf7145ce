#include "Run.h"

namespace Maintctl::Test {

namespace {

constexpr const char* unit = "add /status/System\n";

/// What a value reads as when it has been set in this way.
std::string afterSet(const std::string& attribute, const std::string& value) {
  return printed(unit + ("set /status/System/" + attribute + " " + value + "\n") +
                 "get /status/System/" + attribute + "\n");
}

TEST(Set, ReadsValuesInTheirTextForm) {
  EXPECT_EQ(afterSet("state", "'underMaintenance'"), "'underMaintenance'\n");
  EXPECT_EQ(afterSet("profileName", "'drain \\'slowly\\' \\\\ \\n'"),
            "'drain \\'slowly\\' \\\\ \\n'\n");
  EXPECT_EQ(afterSet("profileName", "\"\""), "''\n");
  EXPECT_EQ(afterSet("genId", "4294967295"), "4294967295\n");
  EXPECT_EQ(afterSet("timeOfStateChange", "1e300"), "1e+300\n");
  EXPECT_EQ(
      afterSet("aggTrafficRate", "Value('Maintenance::Unit::TrafficRates', ** {'inBitsRate': 5})"),
      "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 0, 'inBitsRate': 5, "
      "'statsUpdateTime': 0})\n");
}

TEST(Set, ReadsBareTextsWhereTheTextFormHasQuotesOrAFrame) {
  EXPECT_EQ(afterSet("state", "underMaintenance"), "'underMaintenance'\n");
  EXPECT_EQ(afterSet("profileName", "drain-slowly"), "'drain-slowly'\n");
  EXPECT_EQ(afterSet("profileName", "50%2F"), "'50%2F'\n"); // no path, so nothing is escaped
  EXPECT_EQ(afterSet("aggTrafficRate", "1,2,0.5"),
            "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 1, 'inBitsRate': 2, "
            "'statsUpdateTime': 0.5})\n");
}

TEST(Set, TakesNumbersBelowZeroAndTextsInBracketsForValues) {
  EXPECT_EQ(afterSet("timeOfStateChange", "-1.5"), "-1.5\n");
  EXPECT_EQ(afterSet("timeOfStateChange", "-inf"), "-inf\n");
  EXPECT_EQ(afterSet("profileName", "[a,b]"), "'[a,b]'\n");
  EXPECT_EQ(afterSet("profileName", "-5"), "'-5'\n");
  EXPECT_EQ(printed("add /status/System\nadd /status/System/history/-1.5 [a,b]\n"
                    "get /status/System/history\n"),
            "-1.5 = '[a,b]'\n");
}

TEST(Set, RefusesBadValues) {
  EXPECT_EQ(refusedLine(4, unit, "set /status/System/state activ"),
            "bad value activ for /status/status/System/state, did you mean active?\n");
  EXPECT_EQ(
      refusedLine(4, unit, "set /status/System/state 'sleeping'"),
      "bad value '\\'sleeping\\'' for /status/status/System/state, it is one of init, active, "
      "maintenanceModeEnter, underMaintenance, failedEnter, maintenanceModeExit and "
      "failedExit\n");
  EXPECT_EQ(refusedLine(4, unit, "set /status/System/genId 12x"),
            "bad value 12x for /status/status/System/genId: junk at column 2 deserializing 12x\n");
  EXPECT_EQ(refusedLine(4, unit, "set /status/System/aggTrafficRate 1,2"),
            "bad value 1,2 for /status/status/System/aggTrafficRate: too few attributes in 1,2\n");
}

TEST(Set, RefusesWhatCannotBeWritten) {
  EXPECT_EQ(refusedLine(5, unit, "set /status/System/unitName x"),
            "/status/status/System/unitName cannot be written: it follows from other values\n");
  EXPECT_EQ(refusal(5, "set /defaultProfile/systemDefaultProfileName x"),
            "maintctl: /defaultProfile/systemDefaultProfileName cannot be written: it is the same "
            "for all of its type\n");
  EXPECT_EQ(
      refusedLine(5, "add /profiles/profileTypeBgp,a\n",
                  "set /profiles/profileTypeBgp,a/key profileTypeBgp,b"),
      "/profiles/config/profileTypeBgp,a/key cannot be written: it is the key, make a new one "
      "with add\n");
  EXPECT_EQ(refusal(2, "set /status x"),
            "maintctl: /status is no value, 'ls /status' lists what it has\n");
  EXPECT_EQ(refusal(2, "set /status/status x"),
            "maintctl: /status/status is a collection, name one of it: /status/status/KEY\n");
  EXPECT_EQ(refusal(2, "set / x"), "maintctl: set needs a path below /, 'ls /' lists the roots\n");
}

TEST(Set, ChangesAnEntryOnlyIfItIsThere) {
  const std::string line = std::string(unit) + "add /status/System/history/1 a\n";
  EXPECT_EQ(printed(line + "set /status/System/history/1 b\nget /status/System/history/1\n"),
            "'b'\n");
  EXPECT_EQ(refusedLine(3, line, "set /status/System/history/2 b"),
            "no 2 in /status/status/System/history, there is only 1\n");
  EXPECT_EQ(refusedLine(3, unit, "set /status/System/history/2 b"),
            "no 2 in /status/status/System/history, it is empty\n");
  EXPECT_EQ(refusedLine(4, unit, "set /status/System/history/soon b"),
            "bad value soon for the key in /status/status/System/history/soon: expected a number "
            "at column 0\n");
}

TEST(Add, MakesMembersOnceByEitherFormOfTheirPath) {
  EXPECT_EQ(printed("add /status/a\nadd /status/status/b\nadd '/status/c d'\n"
                    "add /profiles/config/profileTypeBgp,x\nls /status/status\nls "
                    "/profiles/config\n"),
            "a      Maintenance::Unit::Status\n"
            "b      Maintenance::Unit::Status\n"
            "c%20d  Maintenance::Unit::Status\n"
            "profileTypeBgp,x  Maintenance::Profile::Config\n");
  EXPECT_EQ(refusedLine(1, "add /status/a\n", "add /status/status/a"),
            "/status/status/a is there already\n");
  EXPECT_EQ(refusal(2, "add /status/a b"),
            "maintctl: /status/status/a takes nothing behind its path, got 1 argument\n");
}

TEST(Add, MakesEntriesOfAValueOrOfTrue) {
  EXPECT_EQ(printed(std::string(unit) +
                    "add /status/System/intfsViolatingTrafficThreshold/Ethernet3/1\n"
                    "add /status/System/intfsViolatingTrafficThreshold/Vlan100 false\n"
                    "get /status/System/intfsViolatingTrafficThreshold\n"),
            "Ethernet3%2F1 = true\nVlan100 = false\n");
  EXPECT_EQ(refusedLine(2, unit, "add /status/System/history/1"),
            "/status/status/System/history/1 needs a value, of type Zel::String\n");
  EXPECT_EQ(refusedLine(2, unit, "add /status/System/history/1 a b"),
            "/status/status/System/history/1 takes one value, got 2; a value with blanks in it "
            "stands in quotes\n");
  EXPECT_EQ(refusedLine(1, std::string(unit) + "add /status/System/history/1 a\n",
                        "add /status/System/history/1 b"),
            "/status/status/System/history/1 is there already\n");
  EXPECT_EQ(refusedLine(4, unit, "add /status/System/group/bgp,x"),
            "bad value bgp,x for the key in /status/status/System/group/bgp,x: no type bgp, it is "
            "one of groupTypeUnknown, groupTypeBgp and groupTypeInterface\n");
  EXPECT_EQ(refusedLine(4, unit, "add /status/System/group/groupTypBgp,x"),
            "bad value groupTypBgp,x for the key in /status/status/System/group/groupTypBgp,x: no "
            "type groupTypBgp, did you mean groupTypeBgp?\n");
  EXPECT_EQ(refusedLine(4, unit, "add /status/System/group/groupTypeBgp"),
            "bad value groupTypeBgp for the key in /status/status/System/group/groupTypeBgp: too "
            "few attributes in groupTypeBgp\n");
}

TEST(Add, RefusesWhatIsAlwaysThere) {
  EXPECT_EQ(refusal(2, "add /defaultProfile/profileName x"),
            "maintctl: /defaultProfile/profileName is a value and always there, write it with "
            "set\n");
  EXPECT_EQ(refusal(1, "add /status"), "maintctl: /status is there already\n");
  EXPECT_EQ(refusal(2, "add /status/status"),
            "maintctl: /status/status is a collection, name one of it: /status/status/KEY\n");
}

TEST(Del, TakesMembersAndEntriesOut) {
  EXPECT_EQ(printed("add /status/a\nadd /status/b\ndel /status/a\nls /status/status\n"),
            "b  Maintenance::Unit::Status\n");
  EXPECT_EQ(printed("add /status/a\nadd /status/a/history/1 x\nadd /status/a/history/2 y\n"
                    "del /status/a/history/1\nget /status/a/history\n"),
            "2 = 'y'\n");
  EXPECT_EQ(printed("add /profiles/profileTypeBgp,x\ndel /profiles/profileTypeBgp,x\n"
                    "ls /profiles/config\n"),
            "");
}

TEST(Del, RefusesWhatIsNotThereAndWhatStays) {
  EXPECT_EQ(refusedLine(3, "add /status/System\n", "del /status/Sytem"),
            "no status Sytem in /status, did you mean System?\n");
  EXPECT_EQ(
      refusedLine(3, "add /status/a\nadd /status/a/history/1 x\n", "del /status/a/history/7.25"),
      "no 7.25 in /status/status/a/history, there is only 1\n");
  EXPECT_EQ(refusal(5, "del /status"), "maintctl: /status is a root, which stays\n");
  EXPECT_EQ(refusal(2, "del /defaultProfile/profileName"),
            "maintctl: /defaultProfile/profileName is a value and always there, write it with "
            "set\n");
}

TEST(Add, LeavesWhatMayExistAsItIs) {
  const std::string line = std::string(unit) + "add /status/System/history/1 begun\n";
  EXPECT_EQ(printed(line + "add --may-exist /status/System\n"
                           "add --may-exist /status/System/history/1 over\n"
                           "add --may-exist /status/System/history/2 new\n"
                           "add --may-exist /status/Linecard3\n"
                           "get /status/System/history\nls /status/status\n"),
            "1 = 'begun'\n2 = 'new'\n"
            "Linecard3  Maintenance::Unit::Status\nSystem     Maintenance::Unit::Status\n");
  const std::string asked = "add /agentInfo/onBootMaintEnter System,srcOnBoot\n";
  EXPECT_EQ(printed(asked + "add --may-exist /agentInfo/onBootMaintEnter System,srcCli\n"
                            "get /agentInfo/onBootMaintEnter/System\n"),
            "Value('Maintenance::OnBootUnitAndReason', ** {'unitName': 'System', 'reason': "
            "'srcOnBoot'})\n");
  EXPECT_EQ(refusedLine(1, asked, "add /agentInfo/onBootMaintEnter System,srcCli"),
            "/agentInfo/onBootMaintEnter/System is there already\n");
  EXPECT_EQ(refusedLine(4, line, "add --may-exist /status/"),
            "an empty key for /status/status/: name what is to be made\n");
}

TEST(Del, PassesByWhatNeedNotExist) {
  EXPECT_EQ(printed(std::string(unit) + "del --if-exists /status/System\n"
                                        "del --if-exists /status/System\n"
                                        "del --if-exists /status/System/history/1\n"
                                        "ls /status/status\n"),
            "");
  EXPECT_EQ(refusal(3, "del --if-exists /statu/System"),
            "maintctl: no root statu, did you mean status?\n");
  EXPECT_EQ(refusal(3, "del --if-exists /status/System/histry/1"),
            "maintctl: no attribute histry of /status/status/System, did you mean history?\n");
  EXPECT_EQ(refusal(5, "del --if-exists /status"), "maintctl: /status is a root, which stays\n");
}

TEST(Set, WithAnOldValueWritesOnlyOverThat) {
  const std::string lines = std::string(unit) + "add /status/System/history/1 begun\n";
  EXPECT_EQ(printed(lines + "set --if init /status/System/state active\n"
                            "set /status/System/history/1 over --if begun\n"
                            "set --if '' /status/System/profileName drain\n"
                            "get /status/System/state\nget /status/System/history\n"
                            "get /status/System/profileName\n"),
            "'active'\n1 = 'over'\n'drain'\n");
  EXPECT_EQ(refusedLine(8, lines, "set --if active /status/System/state init"),
            "/status/status/System/state is another than 'active', nothing was written\n");
  EXPECT_EQ(refusedLine(3, lines, "set --if x /status/System/history/2 y"),
            "no 2 in /status/status/System/history, there is only 1\n");
  EXPECT_EQ(refusedLine(4, lines, "set --if activ /status/System/state init"),
            "bad value activ for /status/status/System/state, did you mean active?\n");
  EXPECT_EQ(refusedLine(4, lines, "set --if -1 /status/System/genId 1"),
            "bad value -1 for /status/status/System/genId: it is from 0 to 4294967295\n");
  EXPECT_EQ(refusedLine(5, lines, "set --if System /status/System/unitName x"),
            "/status/status/System/unitName cannot be written: it follows from other values\n");
}

TEST(Wait, OnATreeOfItsOwnOnlyLooks) {
  const std::string path = "/status/System/state";
  EXPECT_EQ(printed(std::string(unit) + "wait " + path +
                    " active init --unless failedEnter\n"
                    "wait --gone /status/Linecard3\n"
                    "wait --gone /status/System/history/1\n"
                    "wait --gone " +
                    path + " init\n"),
            "");
  EXPECT_EQ(refusedLine(7, unit, "wait " + path + " active underMaintenance failedEnter"),
            "/status/status/System/state is 'init', not 'active', 'underMaintenance' or "
            "'failedEnter'\n");
  EXPECT_EQ(refusedLine(1, unit, "wait " + path + " active --unless failedEnter --unless init"),
            "/status/status/System/state is 'init'\n");
  EXPECT_EQ(refusedLine(7, unit, "wait --gone /status/System"),
            "/status/status/System is there, not gone\n");
  EXPECT_EQ(refusedLine(7, unit, "wait --gone " + path + " active"),
            "/status/status/System/state is 'init', not 'active' or gone\n");
  EXPECT_EQ(refusedLine(4, unit, "wait " + path + " active --unless activ"),
            "bad value activ for /status/status/System/state, did you mean active?\n");
}

TEST(Units, OfAnEmptyNameAreRefused) {
  for (const char* const command : {"show ''", "history ''"}) {
    EXPECT_EQ(refusal(2, command), "maintctl: an empty name of a unit, 'ls /status' lists them\n");
  }
}

TEST(Wait, ThatMakesNoSenseIsRefused) {
  EXPECT_EQ(refusal(2, "wait"), "maintctl: wait needs a path and a value, or --gone, or --live\n");
  EXPECT_EQ(refusal(2, "wait --gone"),
            "maintctl: wait needs a path and a value, or --gone, or --live\n");
  EXPECT_EQ(refusal(2, "wait /status/a/state --unless init"),
            "maintctl: wait needs a path and a value, or --gone, or --live\n");
  EXPECT_EQ(refusal(2, "wait --live /status init"),
            "maintctl: --live waits for no value, leave out init\n");
  EXPECT_EQ(refusal(2, "wait --live --gone /status"),
            "maintctl: --live waits for no value, leave out --gone\n");
  EXPECT_EQ(refusal(2, "wait --live --unless x /status"),
            "maintctl: --live waits for no value, leave out --unless\n");
  EXPECT_EQ(refusal(2, "wait --gone /status"), "maintctl: /status is a root, which stays\n");
  EXPECT_EQ(refusal(2, "wait --gone /status/System init"),
            "maintctl: /status/status/System is no value, 'ls /status/status/System' lists what it "
            "has\n");
}

} // namespace

} // namespace Maintctl::Test
