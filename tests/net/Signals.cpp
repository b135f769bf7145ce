#include "Raw.h"
#include "Untimed.h"

#include <Places.h>
#include <csignal>

// How a server ends and reads its files again, and what its clients see of that.

namespace {

using Support::Result;
using TestNet::Process;
using TestNet::Raw;
using Zel::Session;

class Signals : public ::testing::Test, protected TestNet::Place {
protected:
  /// `maintctl serve`, on no terminal; it listens when this returns.
  std::unique_ptr<Process> daemon(const std::vector<std::string>& words = {},
                                  const char* launcher = "/usr/bin/setsid") {
    std::vector<std::string> all = {MAINTCTL_PROGRAM, "--socket", socket(), "serve"};
    all.insert(all.end(), words.begin(), words.end());
    auto server = start(std::move(all), launcher);
    EXPECT_TRUE(server->complains(" listening at ")) << server->errors();
    return server;
  }
  void expectNothingLeft() const {
    EXPECT_FALSE(std::filesystem::exists(socket()));
    EXPECT_FALSE(std::filesystem::exists(socket() + ".lock"));
  }
  /// A mirror that has stopped in the midst of a walk which its socket does not hold, and the
  /// server of that.
  struct Stuck {
    std::unique_ptr<Process> mirror;
    std::unique_ptr<Process> server;
  };
  Stuck stuck() {
    Stuck both;
    both.mirror = mirror();
    both.mirror->say("freeze");
    both.server = serve({"fill=20000"});
    EXPECT_EQ(both.mirror->hear(), "frozen");
    EXPECT_TRUE(both.mirror->isStopped());
    return both;
  }

  /// What a command prints that succeeds.
  std::string ctl(const std::string& arguments) const {
    const Result result =
        Support::shell("'" MAINTCTL_PROGRAM "' --socket '" + socket() + "' " + arguments);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    return result.out;
  }

  const std::string bye = Session::bye(Session::endingOver, "the server ends");
};

TEST_F(Signals, EndAServerThatTellsItsPeersAndLeavesNothing) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const auto server = daemon();
    const Raw silent(socket());
    const Raw peer(socket());
    ASSERT_TRUE(peer.write(TestNet::hello()));
    ASSERT_TRUE(peer.hears("units"));
    server->signal(signal);
    EXPECT_TRUE(peer.rest().ends_with(bye));
    EXPECT_TRUE(silent.rest().ends_with(bye)) << "one that has not said hello yet";
    EXPECT_EQ(server->end(), 0);
    expectNothingLeft();
  }
}

TEST_F(Signals, AreToldOfToThoseWhoAreStillInTheQueue) {
  const auto server = daemon();
  server->signal(SIGSTOP);
  ASSERT_TRUE(server->isStopped());
  std::vector<std::unique_ptr<Raw>> queue;
  for (int count = 0; count < 50; ++count) {
    queue.push_back(std::make_unique<Raw>(socket()));
    ASSERT_TRUE(queue.back()->isUp());
  }
  server->signal(SIGTERM);
  server->signal(SIGCONT);
  for (const auto& peer : queue) {
    EXPECT_TRUE(peer->rest().ends_with(bye));
  }
  EXPECT_EQ(server->end(), 0);
}

TEST_F(Signals, ReachAPeerWhoseSocketIsFullWhenItReadsAgain) {
  const Stuck both = stuck();
  both.server->say("end 600");
  // It has ended all the same for those who come now.
  while (Raw(socket()).isUp()) {
  }
  both.mirror->signal(SIGCONT);
  EXPECT_TRUE(
      both.mirror->complains("session with server ended: the peer says: the server ends\n"));
  EXPECT_EQ(both.server->hear(), "(ended)");
  EXPECT_EQ(both.server->end(), 0);
}

TEST_F(Signals, AreNotWaitedForLongByAServerWhosePeerDoesNotRead) {
  const Stuck both = stuck();
  both.server->say("end 0.05");
  EXPECT_EQ(both.server->hear(), "(ended)");
  EXPECT_EQ(both.server->end(), 0);
  expectNothingLeft();
  both.mirror->signal(SIGCONT);
  EXPECT_EQ(both.mirror->ask("await stale"), "stale");
}

TEST_F(Signals, AsOfAHangupLoadTheFileAgain) {
  const std::string state = folder.write("state", "/status/System\n/status/System/historySize 7\n");
  const auto server = daemon({"--load", state});
  ctl("add /status/Linecard3");
  ctl("set /status/System/historySize 9");
  const auto watch = maintctl({"watch", "/status"});
  ASSERT_EQ(TestNet::untimed(watch->hear()), "# /status is live");
  folder.write("state", "/status/System\n/status/System/historySize 8\n/status/Linecard4\n");
  server->signal(SIGHUP);
  EXPECT_EQ(TestNet::untimed(watch->hear()), "/status/status/System/historySize = 8 (was 9)");
  EXPECT_EQ(TestNet::untimed(watch->hear()), "/status/status/Linecard4 added");
  EXPECT_TRUE(server->complains(" info SIGHUP: loaded " + state + " again, 3 lines\n"));
  EXPECT_EQ(ctl("ls /status/status"), "Linecard3  Maintenance::Unit::Status\n"
                                      "Linecard4  Maintenance::Unit::Status\n"
                                      "System     Maintenance::Unit::Status\n")
      << "what is not in the file stays";
}

TEST_F(Signals, AsOfAHangupApplyNothingOfABadFile) {
  const std::string state = folder.write("state", "/status/System\n/status/System/historySize 7\n");
  const auto server = daemon({"--load", state});
  const std::string before = ctl("dump");
  folder.write("state", "/status/System\n/status/System/historySize 8\n/status/System/stat x\n");
  server->signal(SIGHUP);
  EXPECT_TRUE(server->complains(" error SIGHUP: " + state +
                                ":3: no attribute stat of /status/status/System, did you mean "
                                "state?; nothing was loaded\n"))
      << server->errors();
  EXPECT_EQ(ctl("dump"), before);
  std::filesystem::remove(state);
  server->signal(SIGHUP);
  EXPECT_TRUE(
      server->complains(" error SIGHUP: cannot read " + state + ": No such file or directory\n"));
  EXPECT_EQ(ctl("dump"), before);
}

TEST_F(Signals, AsOfAHangupEndNoServerThatHasNoFile) {
  const auto server = daemon();
  server->signal(SIGHUP);
  EXPECT_TRUE(server->complains(" warning SIGHUP: there is no file to load again\n"));
  EXPECT_EQ(ctl("verify /units"), "/units: equal\n");
}

TEST_F(Signals, ThatWereIgnoredAtTheStartStaySo) {
  const std::string state = folder.write("state", "/status/System\n");
  const auto server = daemon({"--load", state}, "/usr/bin/nohup");
  server->signal(SIGHUP);
  EXPECT_EQ(ctl("verify /units"), "/units: equal\n");
  server->signal(SIGTERM);
  EXPECT_EQ(server->end(), 0);
  EXPECT_EQ(server->errors().find("SIGHUP"), std::string::npos) << server->errors();
}

} // namespace
