#include "Commands.h"
#include "Untimed.h"

#include <algorithm>
#include <vector>

// The whole tree of a device, at a server.

namespace {

using Support::Result;
using TestNet::untimed;

class WholeTree : public TestNet::Commands {
protected:
  /// A line of a script that makes or changes something at each of the roots.
  static constexpr const char* changes =
      "add /units/Linecard3\n"
      "set /units/Linecard3/unitType dynamic\n"
      "add /groups/groupTypeBgp,transit\n"
      "add /groups/groupTypeBgp,transit/profile/profileTypeBgp,x\n"
      "add /profiles/profileTypeBgp,x\n"
      "add /unitProfiles/slow\n"
      "set /unitProfiles/slow/onBootDuration 600\n"
      "set /defaultProfile/profileName x\n"
      "add /groupToUnit/groupTypeBgp,transit\n"
      "add /groupToUnit/groupTypeBgp,transit/unitName/Linecard3\n"
      "add /cliInput/unit/Linecard3\n"
      "set /onBootInput/priority srcOnBootCli\n"
      "add /mergedInput/Linecard3 srcCli\n"
      "add /mergedInput/System srcOnBoot\n"
      "set /mergedInput/System/priority srcCli\n"
      "add /status/Linecard3\n"
      "set /status/Linecard3/state maintenanceModeEnter\n"
      "add /agentInfo/onBootMaintEnter Linecard3,srcOnBoot\n"
      "set /agentInfo/ready true\n";

  std::string write(const char* name, const std::string& lines) const {
    return folder.write(name, lines);
  }
  std::vector<std::string> sortedLines(const char* name) const {
    std::istringstream in(untimed(content(name)));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
      lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
  }
};

TEST_F(WholeTree, IsWrittenReadAndComparedAtAServer) {
  write("changes", changes);
  const Result result = run("serve; ctl run changes; ctl get /units/Linecard3/unitType\n"
                            "ctl get /groups\nctl get /unitProfiles/slow/onBootDuration\n"
                            "ctl get /groupToUnit/groupTypeBgp,transit/unitName/Linecard3\n"
                            "ctl get /cliInput\nctl get /mergedInput\nctl --json get /agentInfo\n"
                            "ctl del /mergedInput/System; ctl ls /mergedInput/unit\n"
                            "ctl complete /mergedInput/unit/; ctl verify; stop");
  EXPECT_EQ(result.out,
            "'dynamic'\n"
            "maintenanceGroup/groupTypeBgp,transit/key = Value('Group::GroupKey', ** {'type': "
            "'groupTypeBgp', 'name': 'transit'})\n"
            "maintenanceGroup/groupTypeBgp,transit/profile/profileTypeBgp,x = true\n"
            "600\n"
            "true\n"
            "priority = 'srcCli'\n"
            "unit/Linecard3 = true\n"
            "unit/Linecard3/unitName = 'Linecard3'\n"
            "unit/Linecard3/priority = 'srcCli'\n"
            "unit/System/unitName = 'System'\n"
            "unit/System/priority = 'srcCli'\n"
            "{\"agentPid\":0,\"onBoot\":false,\"onBootMaintEnter\":{\"Linecard3\":{\"reason\":"
            "\"srcOnBoot\",\"unitName\":\"Linecard3\"}},\"ready\":true,\"restartCount\":0}\n"
            "Linecard3  Maintenance::Unit::MergedInput\n"
            "/mergedInput/unit/Linecard3/\n" +
                allEqual());
  EXPECT_EQ(result.err, "");
}

TEST_F(WholeTree, ADumpLoadedIntoAnEmptyServerIsTheSame) {
  write("changes", changes);
  const Result result =
      run("serve; ctl run changes; ctl dump state; stop -KILL\n"
          "serve; ctl load state; ctl dump again; cmp state again; ctl verify; stop\n"
          "serve --load state; ctl dump third; cmp state third; ctl verify; stop");
  EXPECT_EQ(result.out, allEqual() + allEqual());
  EXPECT_EQ(result.err, "");
  EXPECT_NE(content("state").find("\n/mergedInput/unit/System 'srcCli'\n"), std::string::npos);
}

TEST_F(WholeTree, AWatchTellsOfAChangeAtEachOfTheRoots) {
  write("changes", changes);
  const Result result = run("serve\n"
                            "behind watch >watched 2>&1 & watch=$!\n"
                            "appears watched '/units is live'\n"
                            "ctl run changes; appears watched 'ready = true'\n"
                            "kill -INT $watch; wait $watch; echo $?; stop");
  EXPECT_EQ(result.out, "130\n");
  EXPECT_EQ(sortedLines("watched"),
            (std::vector<std::string>{
                "# /agentInfo is live",
                "# /cliInput is live",
                "# /defaultProfile is live",
                "# /groupToUnit is live",
                "# /groups is live",
                "# /mergedInput is live",
                "# /onBootInput is live",
                "# /profiles is live",
                "# /status is live",
                "# /unitProfiles is live",
                "# /units is live",
                "/agentInfo/onBootMaintEnter/Linecard3 = Value('Maintenance::OnBootUnitAndReason', "
                "** {'unitName': 'Linecard3', 'reason': 'srcOnBoot'})",
                "/agentInfo/ready = true (was false)",
                "/cliInput/unit/Linecard3 = true",
                "/defaultProfile/profileName = 'x' (was '')",
                "/groupToUnit/groupToUnit/groupTypeBgp,transit added",
                "/groupToUnit/groupToUnit/groupTypeBgp,transit/unitName/Linecard3 = true",
                "/groups/maintenanceGroup/groupTypeBgp,transit added",
                "/groups/maintenanceGroup/groupTypeBgp,transit/profile/profileTypeBgp,x = true",
                "/mergedInput/unit/Linecard3 added",
                "/mergedInput/unit/System added",
                "/mergedInput/unit/System/priority = 'srcCli' (was 'srcOnBoot')",
                "/onBootInput/priority = 'srcOnBootCli' (was 'srcOnBoot')",
                "/profiles/config/profileTypeBgp,x added",
                "/status/status/Linecard3 added",
                "/status/status/Linecard3/state = 'maintenanceModeEnter' (was 'init')",
                "/unitProfiles/config/slow added",
                "/unitProfiles/config/slow/onBootDuration = 600 (was 300)",
                "/units/config/Linecard3 added",
                "/units/config/Linecard3/unitType = 'dynamic' (was 'userConfigured')",
                "maintctl: stopped",
            }));
}

TEST_F(WholeTree, AMirrorOfItOutlivesServersThatAreKilled) {
  write("changes", changes);
  const Result result = run(
      "serve; ctl run changes; ctl dump state\n"
      "behind watch /mergedInput /agentInfo >watched 2>&1 & watch=$!\n"
      "appears watched '/mergedInput is live'; appears watched '/agentInfo is live'\n"
      "for round in 1 2 3 4 5 6 7 8; do\n"
      "  stop -KILL; serve --load state\n"
      "  ctl set /agentInfo/restartCount $round; ctl set /mergedInput/System/priority srcOnBoot\n"
      "  appears watched \"/agentInfo/restartCount = $round\"\n"
      "  ctl verify >verified || cat verified\n"
      "done\n"
      "kill -INT $watch; wait $watch; echo $?; stop");
  EXPECT_EQ(result.out, "130\n");
}

} // namespace
