#include "support/Shell.h"

#include <Places.h>
#include <gmock/gmock.h>

namespace {

using namespace Support;
using testing::HasSubstr;

Result inspect(const std::string& arguments) { return shell("'" INSPECT_PROGRAM "' " + arguments); }

TEST(Types, ListsTheScopesThatHaveTypes) {
  const Result result = inspect("--scopes");
  EXPECT_EQ(result.out, "Zel\nGroup\nVexil\nMaintenance\nMaintenance::Profile\nMaintenance::Unit\n"
                        "Maintenance::MaintenanceGroup\nMaintenanceUnitProfile\n");
  EXPECT_EQ(result.status, 0);
}

TEST(Types, PrintsAnEnumerationWithItsEnumerators) {
  const Result result = inspect("Maintenance::Unit::UnitType");
  EXPECT_EQ(result.out,
            "## Maintenance::Unit::UnitType\n"
            "\n"
            "enumeration, of 4 bytes. Flags `0x11 0x20000000`.\n"
            "\n"
            "| id | attribute | kind | type | key | flags | remarks |\n"
            "|---:|---|---|---|---|---|---|\n"
            "| 1 | `value` | computed | `Maintenance::Unit::UnitType` |  | `0x20001 0x400 0` |  |\n"
            "| 0 | `userConfigured` | enumerator | `Maintenance::Unit::UnitType` |  | `0x20001 "
            "0x40200400 0` |  |\n"
            "| 1 | `dynamic` | enumerator | `Maintenance::Unit::UnitType` |  | `0x20001 0x40200400 "
            "0` |  |\n"
            "| 2 | `builtin` | enumerator | `Maintenance::Unit::UnitType` |  | `0x20001 0x40200400 "
            "0` |  |\n"
            "\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Types, PrintsWhatADirectoryIsMadeFromAndHowItsMembersAreKeyed) {
  const Result result = inspect("Maintenance::Profile::ConfigDir");
  EXPECT_THAT(result.out, HasSubstr("Made from `name` (`Zel::Name`).\n"));
  EXPECT_THAT(result.out,
              HasSubstr("| 258 | `config` | collection of members by `key` | "
                        "`Maintenance::Profile::Config` | `Maintenance::Profile::ProfileKey` | "
                        "`0x9a20143 0x11000400 0` | logged |\n"));
}

TEST(Types, TellsWhatIsACounterAndWhatNobodyElseMakes) {
  EXPECT_THAT(
      inspect("Maintenance::AgentInfo").out,
      HasSubstr("| 258 | `agentPid` | singular | `U32` |  | `0x220143 0x1000400 2` | logged "
                "|\n| 259 | `restartCount` | singular | `U32` |  | `0x220143 0x1000400 2` "
                "| logged, counter |\n"));
  EXPECT_THAT(inspect("Maintenance::GroupToUnit").out,
              HasSubstr("Made from `key` (`Group::GroupKey`), by a directory or the attribute log "
                        "alone.\n"));
}

TEST(Types, PrintsAScopeInTheOrderOfDeclaration) {
  const std::string all = inspect("--scope Maintenance::Profile").out;
  std::string expected;
  for (const char* const name :
       {"ProfileType", "ProfileKey", "Config", "ConfigDir", "DefaultProfile"}) {
    expected += inspect(std::string("Maintenance::Profile::") + name).out;
  }
  EXPECT_EQ(all, expected);
}

TEST(Types, RefusesTypesAndScopesThatAreNotThere) {
  EXPECT_EQ(inspect("Maintenance::Unit::Nothing").err,
            "inspect: no type Maintenance::Unit::Nothing\n");
  EXPECT_EQ(inspect("Maintenance::Unit::Nothing").status, 1);
  EXPECT_EQ(inspect("--scope Maintenance::Unit::").err, "inspect: no scope Maintenance::Unit::\n");
  EXPECT_EQ(inspect("--scope Unit").err, "inspect: no scope Unit\n");
  EXPECT_EQ(inspect("--scope Unit").status, 1);
}

} // namespace
