#include "Run.h"
#include "Served.h"
#include "Terminal.h"
#include "Variable.h"
#include <Places.h>

#include <HistoryFile.h>
#include <Utf8.h>

#include <sys/stat.h>

namespace Maintctl::Test {

namespace {

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

TEST_F(Typed, LinesAreUtf8WhateverTheLocale) {
  enter("set /defaultProfile/profileName Zürich日本");
  enter("get /defaultProfile/profileName");
  EXPECT_TRUE(terminal.shows("\r\n'Zürich日本'\r\n")) << terminal.shown();
  enter("set /defaultProfile/profileName 日本\x02ü"); // one character back, not one byte
  enter("get /defaultProfile/profileName");
  EXPECT_TRUE(terminal.shows("\r\n'日ü本'\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(Typed, BytesThatAreNoUtf8StayWhatTheyAre) {
  enter("set /defaultProfile/profileName a\xff\xc3z");
  enter("get /defaultProfile/profileName");
  EXPECT_TRUE(terminal.shows("\r\n'a\\xff\\xc3z'\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(Typed, CtrlCGivesTheLineUpAndNoMore) {
  enter("set /defaultProfile/profileName kept");
  ASSERT_TRUE(terminal.shows("maintctl (local)> "));
  terminal.type("set /defaultProfile/profileName lost");
  ASSERT_TRUE(terminal.shows("lost")); // the key takes what is not read yet with it
  terminal.type("\x03");
  EXPECT_TRUE(terminal.shows("^C\r\n")) << terminal.shown();
  enter("get /defaultProfile/profileName");
  EXPECT_TRUE(terminal.shows("\r\n'kept'\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(Typed, HelpTellsOfOneCommand) {
  enter("help set");
  EXPECT_TRUE(terminal.shows("Usage: set [OPTIONS] PATH VALUE\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(Typed, TheTabulatorCompletesFilesAndQuotesThem) {
  const Folder folder;
  folder.write("units of mine", "/defaultProfile/profileName 'loaded'\n");
  folder.write(".hidden", "");
  const std::string path = folder / ".";
  enter("load " + path.substr(0, path.size() - 1) + "\t");
  enter("get /defaultProfile/profileName");
  EXPECT_TRUE(terminal.shows("\r\n'loaded'\r\n")) << terminal.shown();
  enter("load '" + path.substr(0, path.size() - 1) + "units o\t");
  enter("dump " + path.substr(0, path.size() - 1) + ".h\t");
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
  EXPECT_EQ(terminal.shown().find("cannot read"), std::string::npos) << terminal.shown();
  EXPECT_NE(Support::contentOf(folder / ".hidden").find("'loaded'"), std::string::npos);
}

/// Lines for a server.
class TypedToAServer : public testing::Test {
protected:
  TypedToAServer() { server->device()->roots(); } // which waits for it

  void enter(const std::string& line) {
    ASSERT_TRUE(terminal.shows("maintctl> ")) << terminal.shown();
    terminal.type(line + "\r");
  }

  const Folder folder;
  const std::string socket = folder / "socket";
  std::optional<Served> server{socket};
  Terminal terminal{{MAINTCTL_PROGRAM, "--socket", socket, "run"}};
};

TEST_F(TypedToAServer, GoOnWithTheNextOne) {
  enter("add /status/System");
  enter("ls /status/status");
  ASSERT_TRUE(terminal.shows("\r\nSystem  Maintenance::Unit::Status\r\n")) << terminal.shown();
  server.reset();
  enter("ls /status/status");
  ASSERT_TRUE(terminal.shows("\r\nno server at ")) << terminal.shown();
  server.emplace(socket);
  server->device()->roots();
  enter("get /status/Sys\t"); // which asks for the tree, and says nothing
  EXPECT_TRUE(terminal.shows("connected again to " + socket + "\r\n")) << terminal.shown();
  EXPECT_TRUE(terminal.shows("no status Sys in /status, it is empty\r\n")) << terminal.shown();
  enter("add /status/Linecard3");
  enter("ls /status/status");
  EXPECT_TRUE(terminal.shows("\r\nLinecard3  Maintenance::Unit::Status\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST_F(TypedToAServer, WatchUntilCtrlC) {
  enter("watch /status");
  ASSERT_TRUE(terminal.shows("/status is live\r\n")) << terminal.shown();
  terminal.type("\x03");
  enter("ls /status/status"); // and the editor goes on
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
  EXPECT_EQ(terminal.shown().find("stopped"), std::string::npos) << terminal.shown();
}

TEST_F(TypedToAServer, WaitUntilCtrlCWhichEndsNoLaterCommand) {
  enter("add /status/System");
  enter("watch /status"); // which has a connection of its own, as wait does
  ASSERT_TRUE(terminal.shows("/status is live\r\n")) << terminal.shown();
  terminal.type("\x03");
  enter("wait /status/System/genId 1");
  ASSERT_TRUE(server->isMounted(4, "status"));
  terminal.type("\x03");
  enter("get /status/System/genId");
  EXPECT_TRUE(terminal.shows("\r\n0\r\n")) << terminal.shown();
  enter("quit");
  EXPECT_EQ(terminal.status(), 0);
}

TEST(History, IsKeptBetweenRunsForItsUserAlone) {
  const Folder folder;
  const std::vector<std::string> environment = {"XDG_STATE_HOME=" + (folder / "state").string()};
  {
    Terminal first({MAINTCTL_PROGRAM, "run"}, environment);
    ASSERT_TRUE(first.shows("maintctl (local)> "));
    first.type("get /defaultProfile/profileName # Zürich \xff\r");
    ASSERT_TRUE(first.shows("\r\n''\r\n")) << first.shown();
    ASSERT_TRUE(first.shows("maintctl (local)> "));
    first.type("quit\r");
    EXPECT_EQ(first.status(), 0);
  }
  const std::string file = folder / "state/maintctl/history";
  EXPECT_EQ(Support::contentOf(file), "get /defaultProfile/profileName # Zürich \xff\nquit\n");
  struct stat found = {};
  ASSERT_EQ(stat(file.c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 07777U, 0600U);
  ASSERT_EQ(stat((folder / "state/maintctl").c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 07777U, 0700U);
  Terminal second({MAINTCTL_PROGRAM, "run"}, environment);
  ASSERT_TRUE(second.shows("maintctl (local)> "));
  second.type("\x10\x10\r"); // the line before the one before
  EXPECT_TRUE(second.shows("\r\n''\r\n")) << second.shown();
  ASSERT_TRUE(second.shows("maintctl (local)> "));
  second.type("quit\r");
  EXPECT_EQ(second.status(), 0);
}

TEST(History, IsFoundWhereTheUserKeepsState) {
  const Variable state("XDG_STATE_HOME");
  const Variable home("HOME");
  state = "/var/state";
  EXPECT_EQ(HistoryFile::place(), "/var/state/maintctl/history");
  state = "relative";
  const Folder folder;
  home = folder.operator/("").c_str();
  EXPECT_EQ(HistoryFile::place(), folder / ".local/state/maintctl/history");
  home = "/dev/null";
  EXPECT_EQ(HistoryFile::place(), "") << "which is no folder";
  home = nullptr;
  EXPECT_EQ(HistoryFile::place(), "");
}

TEST(History, IsBounded) {
  const Folder folder;
  const std::string name = folder / "history";
  HistoryFile file(name);
  for (std::size_t line = 0; line <= 2 * HistoryFile::most; ++line) {
    file.add("line " + std::to_string(line));
  }
  file.add("a line\nof two"); // such as no editor has
  const std::string content = Support::contentOf(name);
  EXPECT_EQ(std::count(content.begin(), content.end(), '\n'),
            static_cast<std::ptrdiff_t>(HistoryFile::most));
  EXPECT_TRUE(content.starts_with("line 1001\n")) << content;
  EXPECT_TRUE(content.ends_with("\nline 2000\n")) << content;
  const std::vector<std::string> lines = HistoryFile(name).lines();
  EXPECT_EQ(lines.size(), HistoryFile::most);
  EXPECT_EQ(lines.back(), "line 2000");
}

TEST(History, OfWhichThereIsNoneIsNoTrouble) {
  const Folder folder;
  for (const std::string name : {"", "/dev/null/maintctl/history", "/dev/null"}) {
    HistoryFile file{name};
    EXPECT_TRUE(file.lines().empty());
    file.add("line");
  }
}

TEST(Characters, AndTheirBytesBecomeEachOther) {
  const std::string text = "aü日\U0001f600\xff\x80\xc3z\xed\xa0\x80";
  const std::wstring wide = widened(text);
  EXPECT_EQ(wide, L"aü日\U0001f600\xdcff\xdc80\xdcc3z\xdced\xdca0\xdc80");
  EXPECT_EQ(narrowed(wide), text);
}

} // namespace

} // namespace Maintctl::Test
