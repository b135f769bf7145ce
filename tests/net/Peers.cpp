#include "Raw.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using TestNet::hello;
using TestNet::Process;
using TestNet::Raw;
using Zel::Session;

class Peers : public ::testing::Test, protected TestNet::Place {};

TEST_F(Peers, AreLoggedWithTheirUserAndProcess) {
  const auto server = serve();
  const auto mirror = this->mirror();
  ASSERT_EQ(mirror->ask("await live"), "live");
  const std::string who = client(1, mirror->id()) + ": ";
  const std::string log = server->errors();
  EXPECT_TRUE(log.starts_with("debug " + who + "connected\ninfo " + who +
                              "session with mirror is open\ndebug " + who + "mirror mounts "))
      << log;
  for (const char* const line :
       {"mirror mounts inputs, read-write\n", "mirror mounts units, read-only\n"}) {
    EXPECT_NE(log.find("\ndebug " + who + line), std::string::npos) << log;
  }
  mirror->kill();
  EXPECT_TRUE(
      server->complains("\ninfo " + who + "session with mirror ended: the peer has gone\n"));
}

TEST_F(Peers, OfAnotherVersionAreToldApart) {
  const auto server = serve();
  for (const char version : {'\1', '\x9'}) {
    const Raw peer(socket());
    ASSERT_TRUE(peer.write(TestNet::helloOf(version, Zel::Connection::End::first)));
    const std::string why = "the peer speaks version " + std::to_string(int{version}) +
                            " of the protocol, this end version 2";
    const std::string heard = peer.rest();
    const std::string bye = Session::bye(Session::endingFailed, Zel::String8(why));
    EXPECT_TRUE(heard.ends_with(bye)) << heard;
    EXPECT_GT(heard.size(), bye.size()) << "a hello, which tells the peer what it is spoken to in";
    EXPECT_TRUE(server->complains("session with a peer ended: " + why + "\n"));
  }
  EXPECT_EQ(server->ask("clients"), "0");
}

TEST_F(Peers, ThatSayNothingAreLetGo) {
  const auto server = serve({"hello=0.05"});
  const Raw peer(socket());
  EXPECT_NE(peer.rest().find("server"), std::string::npos) << "its own hello";
  EXPECT_TRUE(server->complains("warning " + client(1) +
                                ": session with a peer ended: no hello from the peer in time\n"));
  EXPECT_EQ(server->ask("clients"), "0");
}

TEST_F(Peers, ThatSayHelloAndNothingElseMayStay) {
  const auto server = serve({"hello=0.05"});
  const Raw peer(socket());
  ASSERT_TRUE(peer.write(hello()));
  EXPECT_TRUE(server->complains("session with by hand is open\n"));
  const Raw silent(socket());
  silent.rest(); // which has taken as long as a hello may
  EXPECT_EQ(server->ask("clients"), "1");
}

TEST_F(Peers, ThatSpeakNoProtocolAreLetGo) {
  const auto server = serve();
  const Raw peer(socket());
  ASSERT_TRUE(peer.write("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n"));
  peer.rest();
  EXPECT_TRUE(
      server->complains("warning " + client(1) + ": session with a peer ended: malformed record: "))
      << server->errors();
  EXPECT_EQ(server->ask("clients"), "0");
}

TEST_F(Peers, ThatSayTooMuchAreLetGo) {
  const auto server = serve();
  const Raw peer(socket());
  ASSERT_TRUE(peer.write(hello()));
  ASSERT_TRUE(server->complains("is open\n"));
  const std::size_t memory = server->number("memory");
  // Again and again, which is one too many.
  std::string many;
  for (int count = 0; count < 1000; ++count) {
    many += hello();
  }
  for (int count = 0; count < 100 && peer.write(many); ++count) {
  }
  peer.rest();
  EXPECT_TRUE(server->complains("warning " + client(1) +
                                ": session with by hand ended: a hello that is not the "
                                "first record\n"));
  EXPECT_EQ(server->ask("clients"), "0");
  EXPECT_LT(server->number("memory"), TestNet::grown(memory, 1024));
}

TEST_F(Peers, WhoseNamesAreForgedAreLoggedOnOneLine) {
  const auto server = serve();
  std::string bytes = hello();
  const std::size_t at = bytes.find("by hand");
  ASSERT_NE(at, std::string::npos);
  bytes.replace(at, 7, "a\nb\33[2J");
  bytes.resize(hello().size());
  const Raw peer(socket());
  ASSERT_TRUE(peer.write(bytes));
  EXPECT_TRUE(server->complains("info " + client(1) + ": session with a?b?[2J is open\n"))
      << server->errors();
}

TEST_F(Peers, AboveTheLimitAreTurnedAway) {
  const auto server = serve({"clients=2"});
  const Raw one(socket());
  auto two = std::make_unique<Raw>(socket());
  const Raw three(socket());
  EXPECT_EQ(three.rest(), Session::bye(Session::endingBusy, "there are 2 clients already"));
  EXPECT_TRUE(
      server->complains("warning " + client(3) + ": turned away: there are 2 clients already\n"));
  two = nullptr;
  ASSERT_TRUE(
      server->complains("info " + client(2) + ": session with a peer ended: the peer has gone\n"));
  const auto client = mirror();
  EXPECT_EQ(client->ask("await live"), "live");
}

TEST_F(Peers, AThousandThatComeAndGoLeaveNothing) {
  const auto server = serve();
  const auto files = [&] {
    std::size_t count = 0;
    for (const auto& file :
         std::filesystem::directory_iterator("/proc/" + std::to_string(server->id()) + "/fd")) {
      count += file.exists() ? 1 : 0;
    }
    return count;
  };
  const auto comeAndGo = [&](int times) {
    for (int count = 0; count < times; ++count) {
      const Raw peer(socket());
      ASSERT_TRUE(peer.isUp());
      if (count % 2 == 0) {
        ASSERT_TRUE(peer.write(count % 4 == 0 ? hello() : hello().substr(0, 20)));
      }
    }
  };
  const std::size_t filesBefore = files();
  comeAndGo(200);
  ASSERT_TRUE(server->complains("client 200, "));
  const std::size_t memory = server->number("memory");
  comeAndGo(800);
  ASSERT_TRUE(server->complains("client 1000, "));
  const auto client = mirror();
  ASSERT_EQ(client->ask("await live"), "live");
  EXPECT_EQ(server->ask("clients"), "1");
  EXPECT_EQ(files(), filesBefore + 1);
  EXPECT_LT(server->number("memory"), TestNet::grown(memory, 1024));
}

unsigned modeOf(const std::string& path) {
  struct stat there = {};
  EXPECT_EQ(::lstat(path.c_str(), &there), 0);
  return there.st_mode;
}

TEST_F(Peers, FindASocketForTheUserAlone) {
  const auto server = serve();
  EXPECT_EQ(modeOf(socket()), S_IFSOCK | 0600U);
  EXPECT_EQ(modeOf(socket() + ".lock"), S_IFREG | 0600U);
}

TEST_F(Peers, FindASocketOfTheModeAndGroupAskedFor) {
  const auto server = serve({"mode=660", "group=" + std::to_string(::getegid())});
  EXPECT_EQ(modeOf(socket()), S_IFSOCK | 0660U);
  struct stat there = {};
  EXPECT_EQ(::lstat(socket().c_str(), &there), 0);
  EXPECT_EQ(there.st_gid, ::getegid());
}

TEST_F(Peers, AGroupThatIsNotThereIsSaidSo) {
  const auto server = start({"serve", socket(), "group=nobody-at-all"});
  EXPECT_EQ(server->hear(), "(ended)");
  EXPECT_EQ(server->end(), 1);
  EXPECT_EQ(server->errors(), "net-peer: no group nobody-at-all\n");
  EXPECT_FALSE(std::filesystem::exists(socket()));
}

TEST_F(Peers, ASecondServerLeavesTheFirstAlone) {
  const auto server = serve();
  const auto second = start({"serve", socket()});
  EXPECT_EQ(second->hear(), "(ended)");
  EXPECT_EQ(second->end(), 1);
  EXPECT_EQ(second->errors(), "net-peer: a server is running at " + socket() + "\n");
  const auto client = mirror();
  EXPECT_EQ(client->ask("await live"), "live");
}

TEST_F(Peers, AnEndedServerLeavesNothingBehind) {
  const auto server = serve();
  EXPECT_EQ(server->end(), 0);
  EXPECT_FALSE(std::filesystem::exists(socket()));
  EXPECT_FALSE(std::filesystem::exists(socket() + ".lock"));
}

TEST_F(Peers, AStaleSocketFileIsReplaced) {
  const auto killed = serve();
  killed->kill();
  EXPECT_TRUE(std::filesystem::exists(socket()));
  EXPECT_FALSE(Raw(socket()).isUp());
  const auto server = serve();
  EXPECT_TRUE(Raw(socket()).isUp());
}

TEST_F(Peers, WhatIsNoSocketIsLeftAlone) {
  folder.write("socket", "somebody's notes");
  const auto server = start({"serve", socket()});
  EXPECT_EQ(server->hear(), "(ended)");
  EXPECT_EQ(server->end(), 1);
  EXPECT_EQ(server->errors(), "net-peer: what is at " + socket() +
                                  " is no socket: remove it, or take another path\n");
  EXPECT_EQ(Support::contentOf(socket()), "somebody's notes");
  EXPECT_FALSE(std::filesystem::exists(socket() + ".lock"));
}

TEST_F(Peers, ADirectoryThatIsMissingIsNamed) {
  const std::string path = folder / "run/maint/socket";
  const auto server = start({"serve", path});
  EXPECT_EQ(server->hear(), "(ended)");
  EXPECT_EQ(server->end(), 1);
  EXPECT_EQ(server->errors(), "net-peer: no directory " + (folder / "run/maint").string() +
                                  " for the socket " + path + ": make it, or take another path\n");
}

TEST_F(Peers, APathThatIsTooLongIsSaidSo) {
  const std::string path = folder / std::string(120, 'x').c_str();
  const auto server = start({"serve", path});
  EXPECT_EQ(server->hear(), "(ended)");
  EXPECT_EQ(server->errors(), "net-peer: cannot listen at " + path + ": File name too long\n");
  const auto client = start({"mirror", path});
  EXPECT_EQ(client->hear(), "mirroring");
  EXPECT_TRUE(
      client->complains("cannot connect to " + path + ": File name too long, next try in "));
}

} // namespace
