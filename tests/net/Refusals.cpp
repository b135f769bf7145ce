#include "Raw.h"
#include "Untimed.h"

#include <Places.h>
#include <thread>

#include <grp.h>
#include <sys/stat.h>

// Clients that a server does not take, and what they and their users hear of it.

namespace {

using Support::Result;
using TestNet::Raw;
using TestNet::untimed;
using Zel::Session;
using End = Zel::Connection::End;

constexpr uid_t nobody = 65534;
constexpr gid_t nogroup = 65534;
constexpr gid_t elsewhere = 12345; // a group that has no name

class Refusals : public ::testing::Test, protected TestNet::Place {
protected:
  /// Lets everybody come as far as the server itself.
  void openUp() const {
    ASSERT_EQ(::chmod((folder / ".").c_str(), 0711), 0);
    ASSERT_EQ(::chmod(socket().c_str(), 0666), 0);
  }

  /// Says hello as a process of another user and group; the first that it hears, "no way in" if it
  /// cannot connect. Needs to be root.
  std::string heardBy(uid_t user, gid_t group) {
    int answer[2];
    EXPECT_EQ(::pipe(answer), 0);
    other = ::fork();
    if (other == 0) {
      std::string heard = "no other user";
      if (::setgroups(0, nullptr) == 0 && ::setgid(group) == 0 && ::setuid(user) == 0) {
        const Raw peer(socket());
        peer.write(TestNet::hello()); // or not, where it has been turned away by now
        heard = peer.isUp() ? peer.first() : "no way in";
      }
      const ssize_t count = ::write(answer[1], heard.data(), heard.size());
      ::_exit(count == static_cast<ssize_t>(heard.size()) ? 0 : 1);
    }
    ::close(answer[1]);
    std::string heard(8192, '\0');
    heard.resize(static_cast<std::size_t>(
        std::max<ssize_t>(0, ::read(answer[0], heard.data(), heard.size()))));
    ::close(answer[0]);
    int status = -1;
    EXPECT_EQ(::waitpid(other, &status, 0), other);
    EXPECT_EQ(status, 0);
    return heard;
  }
  std::string otherName() const { return "user 65534 (nobody), process " + std::to_string(other); }
  void expectRefused(uid_t user, gid_t group, const std::string& name) {
    const std::string heard = heardBy(user, group);
    EXPECT_EQ(heard, Session::bye(Session::endingRefused,
                                  Zel::String8(name + ", process " + std::to_string(other) +
                                               " may not connect")));
  }

  Result ctl(const std::string& arguments) const {
    return Support::shell("'" MAINTCTL_PROGRAM "' --socket '" + socket() + "' " + arguments);
  }

  pid_t other = -1;
};

// Which user a process is of, root alone can choose.
#define NEEDS_ROOT                                                                                 \
  if (::geteuid() != 0) {                                                                          \
    GTEST_SKIP() << "only root can be another user";                                               \
  }

TEST_F(Refusals, AnotherUserDoesNotComeThroughTheFilesMode) {
  NEEDS_ROOT
  const auto server = serve();
  ASSERT_EQ(::chmod((folder / ".").c_str(), 0711), 0);
  EXPECT_EQ(heardBy(nobody, nogroup), "no way in");
}

TEST_F(Refusals, AnotherUserIsTurnedAwayWhateverTheFilesModeIsByNow) {
  NEEDS_ROOT
  const auto server = serve();
  openUp();
  expectRefused(nobody, nogroup, "user 65534 (nobody)");
  EXPECT_TRUE(
      server->complains("warning client 1, " + otherName() + ": turned away: may not connect\n"));
  EXPECT_EQ(server->ask("clients"), "0");
}

TEST_F(Refusals, MembersOfTheGroupComeInWhereTheModeLetsThem) {
  NEEDS_ROOT
  const auto server = serve({"mode=660", "group=" + std::to_string(elsewhere)});
  openUp();
  expectRefused(nobody, nogroup, "user 65534 (nobody)");
  EXPECT_NE(heardBy(nobody, elsewhere).find("server"), std::string::npos) << "its hello";
  EXPECT_TRUE(server->complains("debug client 2, " + otherName() + ": connected\n"));
}

TEST_F(Refusals, MembersByTheUserDatabaseComeInToo) {
  NEEDS_ROOT
  const auto server = serve({"mode=660", "group=" + std::to_string(nogroup)});
  openUp();
  EXPECT_NE(heardBy(nobody, elsewhere).find("server"), std::string::npos);
  expectRefused(elsewhere, elsewhere, "user 12345");
}

TEST_F(Refusals, AGroupOfAFileOfModeSixHundredLetsNobodyIn) {
  NEEDS_ROOT
  const auto server = serve({"mode=600", "group=" + std::to_string(elsewhere)});
  openUp();
  expectRefused(nobody, elsewhere, "user 65534 (nobody)");
}

TEST_F(Refusals, EverybodyComesInWhereTheModeSaysSo) {
  NEEDS_ROOT
  const auto server = serve({"mode=666"});
  openUp();
  EXPECT_NE(heardBy(nobody, nogroup).find("server"), std::string::npos);
}

TEST_F(Refusals, TheLastPlaceIsKeptForRootAndTheServersUser) {
  NEEDS_ROOT
  const auto server = serve({"mode=666", "clients=2"});
  openUp();
  EXPECT_NE(heardBy(nobody, nogroup).find("server"), std::string::npos) << "the first of two";
  ASSERT_TRUE(server->complains("client 1, " + otherName() + ": session with by hand ended: "));
  const Raw first(socket());
  ASSERT_TRUE(server->complains(client(2) + ": connected\n"));
  const std::string why = "the last place is kept for root and the server's user";
  EXPECT_EQ(heardBy(nobody, nogroup), Session::bye(Session::endingBusy, Zel::String8(why)));
  EXPECT_TRUE(
      server->complains("warning client 3, " + otherName() + ": turned away: " + why + "\n"));
  const Raw last(socket());
  EXPECT_NE(last.first().find("server"), std::string::npos);
  EXPECT_EQ(Raw(socket()).rest(), Session::bye(Session::endingBusy, "there are 2 clients already"));
}

TEST_F(Refusals, OfAUserAreSaidByMaintctl) {
  NEEDS_ROOT
  const std::string as =
      "setpriv --reuid 65534 --regid 65534 --clear-groups '" MAINTCTL_PROGRAM "'";
  if (Support::shell(as + " --version").status != 0) {
    GTEST_SKIP() << "no other user can run " MAINTCTL_PROGRAM;
  }
  const auto server = serve();
  openUp();
  const Result result = Support::shell(as + " --socket '" + socket() + "' ls");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err.rfind("maintctl: the server at " + socket() +
                                 " refuses the connection: user 65534 (nobody), process ",
                             0),
            0U)
      << result.err;
  EXPECT_TRUE(result.err.ends_with(" may not connect\n")) << result.err;
  EXPECT_EQ(result.status, 5);
  // There is no use in waiting until that changes.
  const Result waiting = Support::shell(as + " --socket '" + socket() + "' wait --live");
  EXPECT_EQ(waiting.status, 5) << waiting.err;
}

TEST_F(Refusals, OfOneTooManyAreSaidByMaintctl) {
  const auto server = serve({"clients=1"});
  auto only = std::make_unique<Raw>(socket());
  ASSERT_TRUE(server->complains(client(1) + ": connected\n"));
  const Result result = ctl("ls");
  EXPECT_EQ(result.err, "maintctl: the server at " + socket() +
                            " has no room for another: there is one client already, try again\n");
  EXPECT_EQ(result.status, 6);
  // Who waits for a server waits for this too. Under load, its time may be over before the answer.
  Result late;
  for (const char* const seconds : {"0.5", "2", "10", "60"}) {
    late = ctl(std::string("--timeout ") + seconds + " wait --live");
    if (late.err == result.err) {
      break;
    }
  }
  EXPECT_EQ(late.err, result.err);
  EXPECT_EQ(late.status, 7);
  only = nullptr;
  EXPECT_EQ(ctl("--timeout 60 wait --live").status, 0);
}

TEST_F(Refusals, AnEndedServerIsSaidByMaintctl) {
  const auto server = serve();
  const auto watch = maintctl({"watch", "/units"});
  ASSERT_EQ(untimed(watch->hear()), "# /units is live");
  EXPECT_EQ(server->end(), 0);
  EXPECT_EQ(untimed(watch->hear()), "# /units is stale: the peer says: the server ends");
}

TEST_F(Refusals, AServerOfAnotherVersionIsSaidByMaintctlWhichDoesNotTryAgain) {
  const int listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  socket().copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(listening, 1), 0);
  for (const char* const command : {"ls", "watch", "--timeout 60 wait --live"}) {
    for (const char version : {'\1', '\x9'}) {
      std::string heard;
      std::thread server([&] {
        const int peer = ::accept(listening, nullptr, nullptr);
        const std::string said = TestNet::helloOf(version, End::second);
        EXPECT_EQ(::write(peer, said.data(), said.size()), static_cast<ssize_t>(said.size()));
        char bytes[4096];
        for (ssize_t count = 0; (count = ::read(peer, bytes, sizeof bytes)) > 0;) {
          heard.append(bytes, static_cast<std::size_t>(count));
        }
        ::close(peer);
      });
      const Result result = ctl(command);
      server.join();
      const std::string speaks =
          " speaks version " + std::to_string(int{version}) + " of the protocol, this ";
      EXPECT_EQ(result.err, "maintctl: the server at " + socket() + speaks +
                                "maintctl version 2: use the one that the server came with\n");
      EXPECT_EQ(result.status, 6);
      const std::string why = "the peer" + speaks + "end version 2";
      EXPECT_TRUE(heard.ends_with(Session::bye(Session::endingFailed, Zel::String8(why))));
    }
  }
  ::close(listening);
}

} // namespace
