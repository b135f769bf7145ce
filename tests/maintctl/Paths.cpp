#include "Run.h"

#include <Change.h>
#include <Complete.h>
#include <LocalDevice.h>

#include <model/Unit.h>

namespace Maintctl::Test {

namespace {

TEST(MaintctlPath, LeadsBothWaysAndMayEndInASlash) {
  EXPECT_EQ(printed("add /status/System\nget /status/System/genId\n"
                    "get /status/status/System/genId\nget /status/System/genId/\n"
                    "get '/status/System/genId'\n"),
            "0\n0\n0\n0\n");
}

TEST(MaintctlPath, IsPrintedSoThatItCanBeTypedAndReadBack) {
  // A name with all that would need quotes somewhere.
  EXPECT_EQ(printed("add \"/status/it's %2F 100%25 # (a) \\\\ \\n\"\n"
                    "ls /status/status\n"
                    "get /status/it%27s%20%2F%20100%25%20%23%20%28a%29%20%5C%20%0A/unitName\n"),
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
  // Nobody can add one here, but a program may have made it.
  LocalDevice device;
  const auto units = Zel::ptrCast<Maintenance::Unit::StatusDir>(device.dir()->entity("status"));
  const auto nameless = units->statusIs("");
  Tree tree(device);
  setValue(tree.at("/status/status//genId", Purpose::change), "3");
  EXPECT_EQ(nameless->genId(), 3U);
  const auto offered = [&](const std::string& word) {
    return completions({"get", word}, true, [&]() -> Device& { return device; });
  };
  EXPECT_EQ(offered("/status/"), std::vector<std::string>{"/status/status/"});
  EXPECT_EQ(offered("/status/status/"), std::vector<std::string>());
}

} // namespace

} // namespace Maintctl::Test
