#include "Run.h"
#include "Terminal.h"
#include <Places.h>

namespace Maintctl::Test {

namespace {

/// Loads lines from a file and shows what is there then, whether it worked or not.
Result loadLines(const Folder& folder, const std::string& lines, const std::string& show) {
  const std::string file = folder.write("tree", lines);
  return maintctl("run --keep-going", "load '" + file + "'\n" + show + "\n");
}

TEST(Load, ReadsPathsWithValuesAndComments) {
  const Folder folder;
  const Result result = loadLines(folder,
                                  "# a comment\r\n\n"
                                  "  /status/a\r\n"
                                  "/status/a/profileName  drain slowly # this too \n"
                                  "/status/a/group/groupTypeBgp,x\n"
                                  "/status/a/history/1 [x]\n"
                                  "/status/a/history/1 -2", // without an end, once more
                                  "get /status/a/profileName\nget /status/a/group\n"
                                  "get /status/a/history");
  EXPECT_EQ(result.out, "'drain slowly # this too'\ngroupTypeBgp,x = true\n1 = '-2'\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Load, GoesOnTopOfWhatIsThere) {
  const Folder folder;
  const std::string file = folder.write("tree", "/status/a\n/status/a/genId 5\n");
  EXPECT_EQ(printed("add /status/a\nset /status/a/genId 1\nset /status/a/historySize 9\n"
                    "add /status/b\nload '" +
                    file +
                    "'\nget /status/a/genId\n"
                    "get /status/a/historySize\nls /status/status\n"),
            "5\n9\na  Maintenance::Unit::Status\nb  Maintenance::Unit::Status\n");
}

TEST(Load, TellsFileAndLineOfABadLineAndHowFarItCame) {
  const Folder folder;
  const std::string file = folder / "tree";
  const std::string place = "<stdin>:1: " + file;
  const auto complaint = [&](const std::string& lines) {
    const Result result = loadLines(folder, lines, "get /status/a/genId");
    EXPECT_EQ(result.status, 4) << lines;
    EXPECT_TRUE(result.err.starts_with(place)) << result.err;
    return result.err.substr(0, result.err.find('\n')).substr(place.size());
  };
  EXPECT_EQ(complaint("# first\n\n/status/a\n/status/a/genId 3\n/status/a/state sleepy\n"),
            ":5: bad value sleepy for /status/status/a/state, it is one of init, active, "
            "maintenanceModeEnter, underMaintenance, failedEnter, maintenanceModeExit and "
            "failedExit; 2 lines before it were loaded");
  EXPECT_EQ(complaint("/status/a\n/status/a/colour 3\n"),
            ":2: no attribute colour of /status/status/a, 'ls /status/status/a' lists what is "
            "there; 1 line before it was loaded");
  EXPECT_EQ(complaint("status/a\n"), ":1: a line begins with a path or, as a comment, with #, got "
                                     "status/a; nothing was loaded");
  EXPECT_EQ(complaint("/status/a\n/status/a/genId\n"),
            ":2: /status/status/a/genId needs a value, of type U32; 1 line before it was loaded");
  EXPECT_EQ(complaint("/status/a b\n"),
            ":1: /status/status/a takes nothing behind its path, got 1 argument; nothing was "
            "loaded");
  EXPECT_EQ(complaint("/stats/a\n"), ":1: no root stats, did you mean status?; nothing was loaded");
}

TEST(Load, HasDoneWhatStandsBeforeTheBadLineAndNothingBehindIt) {
  const Folder folder;
  const Result result = loadLines(folder, "/status/a\n/status/a/genId 3\nbad\n/status/a/genId 4\n",
                                  "get /status/a/genId");
  EXPECT_EQ(result.out, "3\n");
}

TEST(Load, IsNotRefusedWhatItMayNotWriteAsABadLine) {
  const Folder folder;
  const std::string file =
      folder.write("tree", "/defaultProfile/systemDefaultProfileName 'other'\n");
  EXPECT_EQ(refusal(5, "load '" + file + "'"),
            "maintctl: " + file +
                ":1: /defaultProfile/systemDefaultProfileName cannot be written: it is the same "
                "for all of its type; nothing was loaded\n");
}

TEST(Load, TellsOfAFileThatCannotBeRead) {
  EXPECT_EQ(refusal(9, "load /nowhere"),
            "maintctl: cannot read /nowhere: No such file or directory\n");
  EXPECT_EQ(refusal(9, "load /tmp"), "maintctl: cannot read /tmp: Is a directory\n");
}

TEST(Load, NamesTheStandardInputInComplaints) {
  const Result result = maintctl("load -", "/status/a\nnonsense\n");
  EXPECT_EQ(result.err, "maintctl: <stdin>:2: a line begins with a path or, as a comment, with #, "
                        "got nonsense; 1 line before it was loaded\n");
  EXPECT_EQ(result.status, 4);
}

TEST(Load, ShowsOnATerminalHowFarItHasCome) {
  // From a pipe that is held open until it has been seen.
  Terminal terminal({"/bin/sh", "-c",
                     "{ for n in 1 2 3 4 5 6 7 8; do "
                     "seq 300 | sed \"s,.*,/status/u$n-&,\"; sleep 0.2; done; read line; } | "
                     "'" MAINTCTL_PROGRAM "' --local load -"});
  EXPECT_TRUE(terminal.shows("loading <stdin>: ")) << terminal.shown();
  EXPECT_TRUE(terminal.shows(" lines"));
  terminal.type("done\r");
  EXPECT_EQ(terminal.status(), 0);
  EXPECT_TRUE(terminal.shown().ends_with("\r\x1b[K")) << terminal.shown();
}

TEST(Load, ShowsNothingElsewhere) {
  const Folder folder;
  std::string lines;
  for (int unit = 0; unit < 20000; ++unit) {
    lines += "/status/unit" + std::to_string(unit) + "\n";
  }
  const Result result = maintctl("load -", lines);
  EXPECT_EQ(result.out + result.err, "");
  EXPECT_EQ(result.status, 0);
}

} // namespace

} // namespace Maintctl::Test
