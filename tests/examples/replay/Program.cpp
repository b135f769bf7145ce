#include "Run.h"

#include <Places.h>
#include <gmock/gmock.h>

namespace Replay::Test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* oneUnit = "2026-03-14T22:00:00 unit System add builtin\n";

TEST(Program, PrintsTheWholeNightOfTheSampleAsKept) {
  const Result result = run("'" REPLAY_JOURNAL "'");
  EXPECT_EQ(result.out, contentOf(REPLAY_EXPECTED));
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Program, ReadsTheSameFromStandardInputAsFromAFile) {
  const Result result = replay(contentOf(REPLAY_JOURNAL));
  EXPECT_EQ(result.out, contentOf(REPLAY_EXPECTED));
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Program, PrintsEmptyTablesForAnEmptyJournal) {
  const Result result = replay("");
  EXPECT_EQ(result.out, "\nUnits\n"
                        "UNIT  TYPE  STATE  REASON  SINCE  ON-BOOT EXIT  PROFILE  GROUPS  "
                        "RATES (b/s)  OVER THRESHOLD  VIOLATIONS  HISTORY  GENERATION\n"
                        "\nProfiles (default: -)\n"
                        "TYPE  PROFILE\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Program, SkipsBlankLinesAndComments) {
  EXPECT_EQ(replay("\n \t \n# all of it\n   # later\n").out, replay("").out);
}

TEST(Program, ReadsCarriageReturnsTabsCommentsAndALastLineWithoutItsEnd) {
  const std::string expected = replay(oneUnit).out;
  EXPECT_THAT(expected, StartsWith("2026-03-14T22:00:00 unit System: added\n"));
  EXPECT_EQ(replay("2026-03-14T22:00:00 unit System add builtin\r\n").out, expected);
  EXPECT_EQ(replay("\t2026-03-14T22:00:00\tunit  System add builtin # here").out, expected);
}

TEST(Program, PrintsItsUsageWithAnExampleThatReplays) {
  const Result help = run("--help");
  EXPECT_EQ(help.err, "");
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.out, StartsWith("usage: replay FILE\n"));
  EXPECT_EQ(run("-h").out, help.out);

  const auto from = help.out.find("Example:\n");
  const auto to = help.out.find("Exit status:\n");
  ASSERT_NE(from, std::string::npos);
  ASSERT_NE(to, std::string::npos);
  const Result example = replay(help.out.substr(from + 9, to - from - 9));
  EXPECT_EQ(example.status, 0) << example.err;
  EXPECT_THAT(example.out, HasSubstr("\nHistory of Linecard3\n"
                                     "2026-03-14T22:00:05  drain for fan tray swap\n"));
  for (const char* const status : {"\n  0  ", "\n  1  ", "\n  2  "}) {
    EXPECT_THAT(help.out.substr(to), HasSubstr(status));
  }
}

TEST(Program, RefusesOtherArguments) {
  for (const char* const arguments : {"", "''", "a b", "--verbose", "-x", "- -"}) {
    const Result result = run(arguments);
    EXPECT_EQ(result.out, "") << arguments;
    EXPECT_EQ(result.err, "replay: expected one FILE, - or --help\n") << arguments;
    EXPECT_EQ(result.status, 1) << arguments;
  }
}

TEST(Program, SaysWhichFileIsMissing) {
  const Folder folder;
  const std::string file = folder / "none.journal";
  const Result result = run("'" + file + "'");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "replay: cannot open " + file + ": No such file or directory\n");
  EXPECT_EQ(result.status, 1);
}

TEST(Program, SaysThatAFolderCannotBeRead) {
  const Folder folder;
  const std::string path = folder / "";
  const Result result = run("'" + path + "'");
  EXPECT_EQ(result.err, "replay: cannot read " + path + "\n");
  EXPECT_EQ(result.status, 1);
}

TEST(Program, NamesTheFileOfABadLine) {
  const Folder folder;
  const std::string file = folder.write("bad.journal", "\n# two\nyesterday unit System remove\n");
  const Result result = run("'" + file + "'");
  EXPECT_EQ(result.err, file + ":3: expected a time such as 2026-03-14T22:00:05, "
                               "got \"yesterday\"\n");
  EXPECT_EQ(result.status, 2);
}

/// A journal of so many lines that what is printed fills any buffer on the way.
std::string longJournal() {
  std::string journal = oneUnit;
  for (int i = 1; i <= 20000; ++i) {
    journal += "2026-03-14T22:00:00 unit System generation " + std::to_string(i) + "\n";
  }
  return journal;
}

TEST(Program, EndsWithAMessageWhenItsReaderGoesAway) {
  const Folder folder;
  const std::string journal = folder.write("long.journal", longJournal());
  const std::string status = folder / "status";
  const Result result =
      shell("{ '" REPLAY_PROGRAM "' '" + journal + "'; echo $? >'" + status + "'; } | head -n 1");
  EXPECT_EQ(result.out, "2026-03-14T22:00:00 unit System: added\n");
  EXPECT_EQ(result.err, "replay: cannot write the output\n");
  EXPECT_EQ(contentOf(status), "1\n");
}

TEST(Program, SaysThatADeviceIsFullOrItsOutputIsClosed) {
  for (const char* const output : {" >/dev/full", " >&-"}) {
    const Result result = run("'" REPLAY_JOURNAL "'" + std::string(output));
    EXPECT_EQ(result.out, "") << output;
    EXPECT_EQ(result.err, "replay: cannot write the output\n") << output;
    EXPECT_EQ(result.status, 1) << output;
  }
}

} // namespace

} // namespace Replay::Test
