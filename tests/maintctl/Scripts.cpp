#include "Run.h"
#include "Terminal.h"
#include <Places.h>

namespace Maintctl::Test {

namespace {

TEST(Run, RunsCommandsOfAFileOrOfStandardInputOnOneTree) {
  const Folder folder;
  const std::string lines = "# a comment, and an empty line\n\n"
                            "add /status/System  # a comment behind it\n"
                            "\tset /status/System/reason 'srcCli'\r\n"
                            "get /status/System/reason"; // without an end
  const std::string file = folder.write("lines", lines);
  EXPECT_EQ(maintctl("run '" + file + "'").out, "'srcCli'\n");
  EXPECT_EQ(maintctl("run", lines).out, "'srcCli'\n");
  EXPECT_EQ(maintctl("run -", lines).out, "'srcCli'\n");
  EXPECT_EQ(maintctl("--json run", lines).out, "\"srcCli\"\n");
}

TEST(Run, StopsAtTheFirstLineThatFailsWithFileAndLine) {
  const Folder folder;
  const std::string file = folder.write("lines", "ls /defaultProfile/profileName\n\n"
                                                 "get /defaultProfile/profileNam\nls\n");
  const Result result = maintctl("run '" + file + "'");
  EXPECT_EQ(result.out, "profileName  Zel::String  ''\n");
  EXPECT_EQ(result.err, file + ":3: no attribute profileNam of /defaultProfile, did you mean "
                               "profileName?\n");
  EXPECT_EQ(result.status, 3);
}

TEST(Run, GoesOnIfItIsToldToAndEndsWithTheFirstFailure) {
  const Result result = maintctl("run --keep-going", "set /defaultProfile x\n"
                                                     "gt /status\n"
                                                     "get /stats\n"
                                                     "get 'x\n"
                                                     "get /defaultProfile/profileName\n");
  EXPECT_EQ(result.out, "''\n");
  EXPECT_EQ(result.err,
            "<stdin>:1: /defaultProfile is no value, 'ls /defaultProfile' lists what it has\n"
            "<stdin>:2: no command gt, did you mean get?\n"
            "<stdin>:3: no root stats, did you mean status?\n"
            "<stdin>:4: a text has no closing '\n");
  EXPECT_EQ(result.status, 2);
}

TEST(Run, PartsWordsAtBlanksButNotWithinQuotesOrBrackets) {
  EXPECT_EQ(printed("add /status/a\n"
                    "set /status/a/aggTrafficRate Value('Maintenance::Unit::TrafficRates', ** "
                    "{'outBitsRate': 7})\n"
                    "set /status/a/profileName \"it's # here\"\n"
                    "get /status/a/aggTrafficRate\nget /status/a/profileName\n"),
            "Value('Maintenance::Unit::TrafficRates', ** {'outBitsRate': 7, 'inBitsRate': 0, "
            "'statsUpdateTime': 0})\n'it\\'s # here'\n");
  EXPECT_EQ(refusedLine(2, "", "set /x Value('a'"), "a bracket has no closing )\n");
  EXPECT_EQ(refusedLine(2, "", "set /defaultProfile/profileName a b"),
            "set takes no b, see 'set --help'\n");
}

TEST(Run, TellsOfAFileThatCannotBeRead) {
  EXPECT_EQ(refusal(9, "run /nowhere"),
            "maintctl: cannot read /nowhere: No such file or directory\n");
  EXPECT_EQ(refusal(9, "run /tmp"), "maintctl: cannot read /tmp: Is a directory\n");
}

TEST(Run, DoesNotRunWhatIsForShellsAlone) {
  EXPECT_EQ(refusedLine(2, "", "run x"), "no command run, see '--help'\n");
}

class Typed : public testing::Test {
protected:
  Terminal terminal{{MAINTCTL_PROGRAM, "run"}};

  void enter(const std::string& line) {
    ASSERT_TRUE(terminal.shows("maintctl (local)> ")) << terminal.shown();
    terminal.type(line + "\r");
  }
};

TEST_F(Typed, LinesGoOnBehindFailuresAndEndWithQuit) {
  enter("add /status/System");
  enter("get /status/Sytem");
  EXPECT_TRUE(terminal.shows("no status Sytem in /status, did you mean System?\r\n"));
  enter("get /status/System/state");
  EXPECT_TRUE(terminal.shows("\r\n'init'\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(Typed, TheTabulatorCompletesCommandsPathsAndValues) {
  enter("a\t/s\tSystem");
  enter("se\t/sta\tSy\tunitT\tdy\t");
  enter("get /status/System/unitType");
  EXPECT_TRUE(terminal.shows("\r\n'dynamic'\r\n")) << terminal.shown();
  ASSERT_TRUE(terminal.shows("maintctl (local)> "));
  terminal.type("get /defaultProfile/\t");
  EXPECT_TRUE(terminal.shows("systemDefaultProfileName\r\nprofileName\r\nreservedProfileName\r\n"))
      << terminal.shown();
  terminal.type("prof\t\r");
  EXPECT_TRUE(terminal.shows("\r\n''\r\n")) << terminal.shown();
  enter("exit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(Typed, LinesComeBackFromTheHistoryToBeEdited) {
  enter("set /defaultProfile/profileName ab");
  enter("\x10"
        "c"); // the line before, and one letter more
  enter("get /defaultProfile/profileName");
  EXPECT_TRUE(terminal.shows("\r\n'abc'\r\n")) << terminal.shown();
  ASSERT_TRUE(terminal.shows("maintctl (local)> "));
  // The prompt comes a moment before the editor takes the keys over from the terminal, for which
  // an end is none for the editor. What only the editor lists says that it has.
  terminal.type("\t");
  ASSERT_TRUE(terminal.shows("\r\ndump\r\n")) << terminal.shown();
  terminal.type("\x04"); // the end of what is typed
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(Typed, HelpListsTheCommands) {
  enter("help");
  EXPECT_TRUE(terminal.shows("Change a value\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

} // namespace

} // namespace Maintctl::Test
