#include "Run.h"

namespace Maintctl::Test {

namespace {

TEST(MaintctlPath, LeadsBothWaysAndMayEndInASlash) {
  EXPECT_EQ(printed("add /status/System\nget /status/System/genId\n"
                    "get /status/status/System/genId\nget /status/System/genId/\n"
                    "get '/status/System/genId'\n"),
            "0\n0\n0\n0\n");
}

TEST(MaintctlPath, IsPrintedSoThatItCanBeTypedAndReadBack) {
  // A name with all that would need quotes somewhere, and one that is empty.
  EXPECT_EQ(printed("add \"/status/it's %2F 100%25 # (a) \\\\ \\n\"\nadd /status/status/\n"
                    "ls /status/status\n"
                    "get /status/it%27s%20%2F%20100%25%20%23%20%28a%29%20%5C%20%0A/unitName\n"),
            "                                                  Maintenance::Unit::Status\n"
            "it%27s%20%2F%20100%25%20%23%20%28a%29%20%5C%20%0A  Maintenance::Unit::Status\n"
            "'it\\'s / 100% # (a) \\\\ \\n'\n");
}

TEST(MaintctlPath, NamesWhatWasMeant) {
  const std::string unit = "add /status/System\n";
  EXPECT_EQ(refusal(3, "get /statu"), "maintctl: no root statu, did you mean status?\n");
  EXPECT_EQ(refusal(3, "get /linecards"), "maintctl: no root linecards, 'ls /' lists all\n");
  EXPECT_EQ(refusedLine(3, unit, "get /status/System/stat"),
            "no attribute stat of /status/status/System, did you mean state?\n");
  EXPECT_EQ(refusedLine(3, unit, "get /status/System/STATE"),
            "no attribute STATE of /status/status/System, did you mean state?\n");
  EXPECT_EQ(refusedLine(3, unit, "get /status/System/maintEnt"),
            "no attribute maintEnt of /status/status/System, did you mean maintEnterInstance?\n");
  EXPECT_EQ(refusedLine(3, unit, "get /status/System/colour"),
            "no attribute colour of /status/status/System, 'ls /status/status/System' lists what "
            "is there\n");
  EXPECT_EQ(refusal(3, "get /defaultProfile/colour"),
            "maintctl: no attribute colour of /defaultProfile, it has systemDefaultProfileName, "
            "profileName and reservedProfileName\n");
  EXPECT_EQ(refusedLine(3, unit, "get /status/Sytem/state"),
            "no status Sytem in /status, did you mean System?\n");
  EXPECT_EQ(refusedLine(3, unit, "get /status/status/Sytem/state"),
            "no Sytem in /status/status, did you mean System?\n");
  EXPECT_EQ(refusedLine(3, unit, "get /status/Linecard3"),
            "no status Linecard3 in /status, there is only System\n");
  EXPECT_EQ(refusal(3, "get /status/System"),
            "maintctl: no status System in /status, it is empty\n");
  EXPECT_EQ(refusal(3, "get status/System"),
            "maintctl: a path begins with /, got status/System, did you mean /status/System?\n");
  EXPECT_EQ(refusal(3, "get /defaultProfile/profileName/x"),
            "maintctl: nothing is below /defaultProfile/profileName, which is one value\n");
}

TEST(MaintctlPath, NeedsNoMemberWhoseNameIsEmptyToEndInASlash) {
  EXPECT_EQ(printed("ls /status/\n"),
            "status/  Maintenance::Unit::Status by Zel::Name  0 members\n");
  EXPECT_EQ(printed("add /status/\nset /status/status//genId 3\nget /status/status//genId\n"),
            "3\n");
}

} // namespace

} // namespace Maintctl::Test
