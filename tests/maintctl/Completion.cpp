#include "Run.h"
#include <Places.h>

namespace Maintctl::Test {

namespace {

/// What bash would offer for a command line of these words, the last to be completed.
std::string offered(const std::string& words) {
  return Support::shell("PATH=$(dirname '" MAINTCTL_PROGRAM "'):$PATH; exec bash -c '"
                        "source \"$1\"; shift; COMP_WORDS=(\"$@\"); "
                        "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _maintctl; "
                        "printf \"%s\\n\" \"${COMPREPLY[@]}\"' bash '" MAINTCTL_SOURCES
                        "/maintctl.bash-completion' maintctl " +
                        words)
      .out;
}

TEST(Complete, YieldsCommandsOptionsPathsAndNames) {
  EXPECT_EQ(
      maintctl("complete").out,
      "show\nhistory\nls\nget\nset\nadd\ndel\ndump\nload\nwatch\nwait\nverify\nserve\nrun\nhelp\n");
  EXPECT_EQ(maintctl("complete help d").out, "del\ndump\n");
  EXPECT_EQ(maintctl("complete d").out, "del\ndump\n");
  EXPECT_EQ(maintctl("complete -- run --").out,
            "--help\n--json\n--keep-going\n--local\n--socket\n--timeout\n--types\n--version\n");
  EXPECT_EQ(maintctl("complete /").out,
            "/agentInfo/\n/cliInput/\n/defaultProfile/\n/groupToUnit/\n/groups/\n"
            "/mergedInput/\n/onBootInput/\n/profiles/\n/status/\n"
            "/unitProfiles/\n/units/\n");
  EXPECT_EQ(maintctl("complete /sta").out, "/status/\n");
  EXPECT_EQ(maintctl("complete get ''").out, "/\n");
  EXPECT_EQ(maintctl("complete get /defaultProfile/p").out, "/defaultProfile/profileName\n");
  EXPECT_EQ(maintctl("complete nonsense ''").out, "");
  EXPECT_EQ(maintctl("complete get /nowhere/x").out, "");
  EXPECT_EQ(maintctl("complete get /nowhere/x").status, 0);
}

TEST(Complete, OfLevelsOfALogIsTheShells) {
  EXPECT_EQ(offered("serve --log-level ''"), "error\nwarning\ninfo\ndebug\n");
}

TEST(Complete, InJsonYieldsAList) {
  EXPECT_EQ(maintctl("--json complete d").out, "[\"del\",\"dump\"]\n");
  EXPECT_EQ(maintctl("--json complete nothing x").out, "[]\n");
}

TEST(Complete, YieldsEachValueThatACommandTakes) {
  const auto completed = [](const std::string& line) {
    return printed("add /status/System\ncomplete -- " + line + "\n");
  };
  EXPECT_EQ(completed("wait /status/System/state active underM"), "underMaintenance\n");
  EXPECT_EQ(completed("wait /status/System/state active --unless failedEn"), "failedEnter\n");
  EXPECT_EQ(completed("set /status/System/state active --if in"), "init\n");
  EXPECT_EQ(completed("set /status/System/state active in"), "");
}

TEST(Complete, YieldsUnitsByTheirNames) {
  const char* const units = "add /status/System\nadd /status/Linecard3\nadd /status/Linecard10\n";
  EXPECT_EQ(printed(std::string(units) + "complete show ''\n"), "Linecard10\nLinecard3\nSystem\n");
  EXPECT_EQ(printed(std::string(units) + "complete history L\n"), "Linecard10\nLinecard3\n");
  EXPECT_EQ(printed(std::string(units) + "complete show /cl\n"), "/cliInput/\n");
}

TEST(Complete, YieldsMembersEntriesAndValues) {
  const auto completed = [](const std::string& line) {
    return printed("add /status/System\nadd /status/System/history/12.5 x\n"
                   "complete " +
                   line + "\n");
  };
  EXPECT_EQ(completed("get /status/S"), "/status/System/\n");
  EXPECT_EQ(completed("get /status/status/"), "/status/status/System/\n");
  EXPECT_EQ(completed("get /status/s"), "/status/status/\n");
  EXPECT_EQ(completed("get /status/System/history/1"), "/status/System/history/12.5\n");
  EXPECT_EQ(completed("set /status/System/state maintenance"),
            "maintenanceModeEnter\nmaintenanceModeExit\n");
  EXPECT_EQ(completed("set /status/System/group \"\""), "true\nfalse\n");
}

TEST(BashCompletion, AsksTheProgram) {
  EXPECT_EQ(offered("lo"), "load\n");
  EXPECT_EQ(offered("--json ge"), "get\n");
  EXPECT_EQ(offered("--local get /def"), "/defaultProfile/\n");
  EXPECT_EQ(offered("get --js"), "--json\n");
  EXPECT_EQ(offered("--timeout 5 --local get /profiles/"), "/profiles/config/\n");
}

TEST(BashCompletion, LeavesFilesToTheShell) {
  const Folder folder;
  const std::string file = folder.write("some-tree", "");
  const std::string start = file.substr(0, file.size() - 4);
  EXPECT_EQ(offered("load '" + start + "'"), file + "\n");
  EXPECT_EQ(offered("dump '" + start + "'"), file + "\n");
  EXPECT_EQ(offered("run '" + start + "'"), file + "\n");
  EXPECT_EQ(offered("run --k"), "--keep-going\n");
  EXPECT_EQ(offered("--socket '" + start + "'"), file + "\n");
}

} // namespace

} // namespace Maintctl::Test
