#include "Run.h"
#include "Terminal.h"

#include <Socket.h>

namespace Maintctl::Test {

namespace {

SocketPlaces places(const Folder& folder) {
  return {"", folder / "own.sock", "/run/maintctl.sock", false};
}

/// Where a command goes that names no server.
std::string settled(DefaultTree tree, const SocketPlaces& places) {
  Options options;
  settleSocket(options, tree, places);
  return options.socket;
}

TEST(Socket, IsTheNamedOneElseTheUsersOwnIfItIsThereElseTheDevices) {
  const Folder folder;
  SocketPlaces there = places(folder);
  EXPECT_EQ(settled(DefaultTree::server, there), "/run/maintctl.sock");
  folder.write("own.sock", "");
  EXPECT_EQ(settled(DefaultTree::server, there), there.own);
  there.isRoot = true;
  EXPECT_EQ(settled(DefaultTree::server, there), there.own);
  there.named = "named.sock";
  EXPECT_EQ(settled(DefaultTree::server, there), "named.sock");
  Options options;
  options.socket = "word.sock";
  settleSocket(options, DefaultTree::server, there);
  EXPECT_EQ(options.socket, "word.sock");
}

TEST(Socket, OfAServerIsTheUsersOwnAndOfRootTheDevices) {
  const Folder folder;
  SocketPlaces there = places(folder);
  EXPECT_EQ(settled(DefaultTree::served, there), there.own);
  there.isRoot = true;
  EXPECT_EQ(settled(DefaultTree::served, there), "/run/maintctl.sock");
  there.named = "named.sock";
  EXPECT_EQ(settled(DefaultTree::served, there), "named.sock");
  EXPECT_THROW(settled(DefaultTree::served, {"", "", "/run/maintctl.sock", false}), Failure);
}

TEST(Socket, OfAScriptIsOnlyOneThatIsNamed) {
  const Folder folder;
  folder.write("own.sock", "");
  SocketPlaces there = places(folder);
  EXPECT_EQ(settled(DefaultTree::own, there), "");
  there.named = "named.sock";
  EXPECT_EQ(settled(DefaultTree::own, there), "named.sock");
}

TEST(Socket, OfThisProcessComesFromTheEnvironment) {
  const auto with = [](const char* folder) {
    setenv("XDG_RUNTIME_DIR", folder, 1);
    setenv("MAINTCTL_SOCKET", "some.sock", 1);
    const SocketPlaces here = SocketPlaces::here();
    unsetenv("XDG_RUNTIME_DIR");
    unsetenv("MAINTCTL_SOCKET");
    return here;
  };
  EXPECT_EQ(with("/run/user/7").own, "/run/user/7/maintctl.sock");
  EXPECT_EQ(with("").own, "");
  EXPECT_EQ(with("relative").own, "");
  EXPECT_EQ(with("").named, "some.sock");
  EXPECT_EQ(with("").system, "/run/maintctl.sock");
  EXPECT_EQ(SocketPlaces::here().named, "");
}

TEST(Socket, WithNoServerBehindItIsToldOfWithThePath) {
  const Result named = Support::shell("MAINTCTL_SOCKET=/nowhere/named '" MAINTCTL_PROGRAM
                                      "' set /defaultProfile/profileName x");
  EXPECT_EQ(named.err, "maintctl: no server at /nowhere/named: start one with 'maintctl serve'\n");
  EXPECT_EQ(named.status, 6);
  const Folder folder;
  const std::string own = folder.write("maintctl.sock", "");
  const Result result = Support::shell(
      "MAINTCTL_SOCKET= XDG_RUNTIME_DIR='" + (folder / ".").string() +
      "' '" MAINTCTL_PROGRAM "' ls; echo $?; " + program + "--socket /nowhere/word ls");
  EXPECT_EQ(result.out, "6\n");
  EXPECT_EQ(result.err, "maintctl: no server at " + (folder / ".").string() +
                            "/maintctl.sock: start one with 'maintctl serve'\n"
                            "maintctl: no server at /nowhere/word: start one with 'maintctl "
                            "serve'\n");
}

TEST(Socket, ThatIsEmptyOrContradictedIsRefused) {
  const auto refused = [](const std::string& words) {
    const Result result = Support::shell(program + words);
    EXPECT_EQ(result.status, 2) << words;
    EXPECT_EQ(result.out, "") << words;
    return result.err;
  };
  EXPECT_EQ(refused("--socket '' ls"),
            "maintctl: --socket: it is empty, see 'maintctl ls --help'\n");
  EXPECT_EQ(refused("ls --socket ''"),
            "maintctl: --socket: it is empty, see 'maintctl ls --help'\n");
  EXPECT_EQ(refused("--socket= ls"), "maintctl: --socket: it is empty, see 'maintctl ls --help'\n");
  EXPECT_EQ(refused("--local --socket x ls"),
            "maintctl: --local is a tree of its own, --socket one of a server: leave out one of "
            "them\n");
  EXPECT_EQ(refused("--local serve"), "maintctl: serve needs a socket, leave out --local\n");
}

TEST(Socket, IsPassedByForATreeOfItsOwn) {
  const std::string elsewhere = "MAINTCTL_SOCKET=/nowhere '" MAINTCTL_PROGRAM "' ";
  EXPECT_EQ(Support::shell(elsewhere + "--local get /defaultProfile/profileName").out, "''\n");
  EXPECT_EQ(Support::shell(elsewhere + "get /defaultProfile/profileName --local").out, "''\n");
  EXPECT_EQ(Support::shell(elsewhere + "run", "ls\n").status, 6);
}

TEST(Socket, ThatIsNotThereIsToldOfAtThePrompt) {
  Terminal terminal({MAINTCTL_PROGRAM, "run"});
  ASSERT_TRUE(terminal.shows("maintctl (local)> ")) << terminal.shown();
  terminal.type("quit\r");
  EXPECT_EQ(terminal.status(), 0);
}

} // namespace

} // namespace Maintctl::Test
