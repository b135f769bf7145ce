#include "Run.h"
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

} // namespace

} // namespace Maintctl::Test
