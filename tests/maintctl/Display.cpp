#include "Run.h"
#include "Terminal.h"

#include <Utf8.h>

namespace Maintctl::Test {

namespace {

TEST(Display, EscapesWhatATerminalWouldActOn) {
  EXPECT_EQ(shown("plain Zürich 日本 \U0001f600"), "plain Zürich 日本 \U0001f600");
  EXPECT_EQ(shown(std::string_view("\0\x1b[2J\x7f", 6)), "\\x00\\x1b[2J\\x7f");
  EXPECT_EQ(shown("\xc2\x9b"), "\\xc2\\x9b") << "a control character beyond ASCII";
  EXPECT_EQ(shown("a\u202eb\u2028c\u2066d\ufeffe"),
            "a\\xe2\\x80\\xaeb\\xe2\\x80\\xa8c\\xe2\\x81\\xa6d\\xef\\xbb\\xbf"
            "e");
}

TEST(Display, EscapesWhatIsNoUtf8ByteByByte) {
  EXPECT_EQ(shown("a\xff"
                  "b\x80"),
            "a\\xffb\\x80");
  EXPECT_EQ(shown("\xc3"), "\\xc3") << "a beginning without an end";
  EXPECT_EQ(shown("\xc3"
                  "a"),
            "\\xc3"
            "a");
  EXPECT_EQ(shown("\xc0\xaf"), "\\xc0\\xaf") << "longer than need be";
  EXPECT_EQ(shown("\xe0\x80\xaf"), "\\xe0\\x80\\xaf");
  EXPECT_EQ(shown("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "half of a pair";
  EXPECT_EQ(shown("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80") << "beyond the last";
}

TEST(Display, CountsTheColumnsOfWideAndOfCombiningCharacters) {
  EXPECT_EQ(columnsOf("abc"), 3U);
  EXPECT_EQ(columnsOf("Zürich"), 6U);
  EXPECT_EQ(columnsOf("日本"), 4U);
  EXPECT_EQ(columnsOf("u\u0308"), 1U);
  EXPECT_EQ(fitted("日本語", 6), "日本語");
  EXPECT_EQ(fitted("日本語", 5), "日本…");
  EXPECT_EQ(fitted("日本語", 4), "日…");
  EXPECT_EQ(fitted("u\u0308u\u0308", 2), "u\u0308u\u0308");
  EXPECT_EQ(fitted("abc", 0), "");
}

TEST(Display, GoesOnBelowWhereItIsLong) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ(wrapped("", 8), Lines{""});
  EXPECT_EQ(wrapped("one two", 7), Lines{"one two"});
  EXPECT_EQ(wrapped("one two three", 7), (Lines{"one two", "three"}));
  EXPECT_EQ(wrapped("one twothree", 5), (Lines{"one", "twoth", "ree"}));
  EXPECT_EQ(wrapped("日本語 日本", 6), (Lines{"日本語", "日本"}));
}

TEST(Display, OfNamesStandsInColumns) {
  EXPECT_EQ(
      printed("add /status/Zürich\nadd /status/日本\nadd /status/u\u0308\nls /status/status\n"),
      "Zürich  Maintenance::Unit::Status\n"
      "u\u0308       Maintenance::Unit::Status\n"
      "日本    Maintenance::Unit::Status\n");
}

TEST(Display, OfAnyBytesReadsBack) {
  const Folder folder;
  // As a value, as a key, and in what is typed.
  const std::string made = "add '/status/x\xff\x1b[2J\xc2\x9b'\n"
                           "set /status/x%FF%1B%5B2J%C2%9B/profileName 'a\xff\xe2\x80\xae'\n";
  EXPECT_EQ(printed(made + "ls /status/status\n"
                           "get /status/x%FF%1B%5B2J%C2%9B/profileName\n"
                           "get /status/x%FF%1B%5B2J%C2%9B/unitName\n"),
            "x%FF%1B%5B2J%C2%9B  Maintenance::Unit::Status\n"
            "'a\\xff\\xe2\\x80\\xae'\n"
            "'x\\xff\\x1b[2J\\xc2\\x9b'\n");
  const std::string dumped = printed(made + "dump\n");
  std::istringstream lines(dumped);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(line, shown(line));
  }
  const std::string file = folder.write("dumped", dumped);
  EXPECT_EQ(printed("load '" + file + "'\ndump\n"), dumped);
  EXPECT_NE(dumped.find("/status/status/x%FF%1B%5B2J%C2%9B/profileName 'a\\xff\\xe2\\x80\\xae'\n"),
            std::string::npos)
      << dumped;
}

TEST(Display, OfMessagesIsSafeAndEndsWithAWholeCharacter) {
  EXPECT_EQ(refusedLine(3, "add /status/a\n", "get '/status/\xff\x1b'"),
            "no status '\\xff\\x1b' in /status, there is only a\n");
  EXPECT_EQ(refusal(9, "load '/no\x1b[2J\xffwhere'"),
            "maintctl: cannot read /no\\x1b[2J\\xffwhere: No such file or directory\n");
  const std::string umlauts = "xüüüüüüüüüüüüüüüüüüüüüüüüüüüüü"; // one byte, and 58
  EXPECT_EQ(refusal(2, "'" + umlauts + "üü'"),
            "maintctl: no command " + umlauts + "..., see 'maintctl --help'\n");
}

TEST(Display, OfAListFitsTheTerminal) {
  const std::string typed =
      "printf 'add /status/System\\nls /status/System\\n' | " MAINTCTL_PROGRAM " run";
  Terminal terminal({"/bin/sh", "-c", typed}, {}, 80);
  EXPECT_EQ(terminal.status(), 0);
  std::istringstream lines(terminal.shown());
  std::size_t longest = 0;
  bool isCut = false;
  for (std::string line; std::getline(lines, line);) {
    longest = std::max(longest, columnsOf(line.substr(0, line.find('\r'))));
    isCut = isCut || line.find("…\r") != line.npos;
  }
  EXPECT_EQ(longest, 80U) << terminal.shown();
  EXPECT_TRUE(isCut) << terminal.shown();
  EXPECT_NE(terminal.shown().find("intfsViolatingTrafficThreshold/  "), std::string::npos)
      << "names are whole: " << terminal.shown();
}

} // namespace

} // namespace Maintctl::Test
