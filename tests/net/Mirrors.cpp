#include "Place.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>

#include <unistd.h>

namespace {

using TestNet::Process;

class Mirrors : public ::testing::Test, protected TestNet::Place {
protected:
  /// The mirror is in step, and holds what the server does.
  static void expectEqual(Process& mirror) {
    ASSERT_EQ(mirror.ask("await live"), "live");
    ASSERT_EQ(mirror.ask("verify"), "equal");
  }
  /// For a while that the seed gives, up to 20 ms: a moment that nobody has chosen.
  void rest() { ::usleep(static_cast<useconds_t>(random() % 20000)); }

  std::mt19937 random{20};
};

TEST_F(Mirrors, WalkThenFollow) {
  const auto server = serve();
  ASSERT_EQ(server->ask("fill 1 3000"), "filled");
  const auto client = mirror();
  expectEqual(*client);
  EXPECT_EQ(client->ask("digest"), server->ask("digest"));
  ASSERT_EQ(server->ask("set unit-a 17"), "set");
  ASSERT_EQ(server->ask("text unit-a 1000000"), "set"); // several rings long
  ASSERT_EQ(client->ask("verify"), "equal");
  EXPECT_EQ(client->ask("get unit-a"), "17");
  EXPECT_EQ(client->ask("length unit-a"), "1000000");
}

TEST_F(Mirrors, WriteWhatTheyMay) {
  const auto server = serve();
  ASSERT_EQ(server->ask("set unit-a 1"), "set");
  const auto client = mirror();
  expectEqual(*client);
  EXPECT_EQ(client->ask("input cli 42"), "set");
  EXPECT_EQ(client->ask("flush"), "flushed");
  EXPECT_EQ(server->ask("input cli"), "42");

  EXPECT_EQ(client->ask("set unit-a 2"), "read-only attribute: historySize of units/unit-a");
  expectEqual(*client);
  EXPECT_EQ(client->ask("get unit-a"), "1");
}

TEST_F(Mirrors, OfOneServerHearOfEachOther) {
  const auto server = serve();
  const auto writer = mirror();
  const auto reader = mirror();
  expectEqual(*writer);
  expectEqual(*reader);
  const std::size_t before = server->number("turns");
  EXPECT_EQ(writer->ask("input cli 42"), "set");
  EXPECT_EQ(writer->ask("flush"), "flushed");
  EXPECT_EQ(reader->ask("flush"), "flushed");
  EXPECT_LT(server->number("turns") - before, 100U) << "nothing spins";
}

TEST_F(Mirrors, OutliveTheirServerAndFollowTheNext) {
  auto server = serve();
  ASSERT_EQ(server->ask("fill 1 500"), "filled");
  const auto client = mirror();
  expectEqual(*client);
  ASSERT_EQ(client->ask("remember"), "500");
  server->kill();
  ASSERT_EQ(client->ask("await stale"), "stale");
  EXPECT_EQ(client->ask("input cli 1"), "read-only attribute: status of inputs");
  // The socket file of the one that was killed is replaced. A server that were filled later would
  // first take away what the mirror has.
  server = serve({"fill=600", "seed=2"});
  expectEqual(*client);
  EXPECT_EQ(client->ask("digest"), server->ask("digest"));
  EXPECT_EQ(client->ask("replaced"), "0");
}

TEST_F(Mirrors, OutliveAnyNumberOfKilledServers) {
  auto server = serve();
  ASSERT_EQ(server->ask("fill 0 400"), "filled");
  const auto client = mirror();
  expectEqual(*client);
  std::size_t memory = 0;
  for (int round = 1; round <= 30; ++round) {
    SCOPED_TRACE(round);
    ASSERT_EQ(server->ask("churn " + std::to_string(1000 * round)), "churning");
    rest();
    server->kill();
    ASSERT_EQ(client->ask("await stale"), "stale");
    server = serve({"fill=400"});
    ASSERT_EQ(server->ask("churn " + std::to_string(1000 * round + 500)), "churning");
    rest(); // until somewhere in the walk
    server->kill();
    ASSERT_EQ(client->ask("await stale"), "stale");
    client->ask("remember");
    server = serve({"fill=400", "seed=" + std::to_string(round)});
    expectEqual(*client);
    ASSERT_EQ(client->ask("digest"), server->ask("digest"));
    ASSERT_EQ(client->ask("replaced"), "0");
    if (round == 5) {
      memory = client->number("memory");
    }
  }
  EXPECT_LT(client->number("memory"), TestNet::grown(memory, 4096));
}

TEST_F(Mirrors, MayBeKilledAtAnyMoment) {
  const auto server = serve();
  ASSERT_EQ(server->ask("fill 1 2000"), "filled");
  ASSERT_EQ(server->ask("churn 7"), "churning");
  const auto steady = mirror();
  std::size_t memory = 0;
  for (int round = 0; round < 30; ++round) {
    const auto client = mirror();
    rest();
    client->kill();
    if (round == 5) {
      memory = server->number("memory");
    }
  }
  EXPECT_LT(server->number("memory"), TestNet::grown(memory, 4096));
  ASSERT_EQ(server->ask("rest"), "resting");
  expectEqual(*steady);
  EXPECT_EQ(steady->ask("digest"), server->ask("digest"));
  EXPECT_EQ(server->ask("clients"), "1");
}

TEST_F(Mirrors, AServerKilledInMidWalkLeavesThemStaleAndTheNextBringsThemInStep) {
  auto server = serve();
  ASSERT_EQ(server->ask("fill 1 20000"), "filled");
  const auto client = mirror();
  expectEqual(*client);
  server->kill();
  ASSERT_EQ(client->ask("await stale"), "stale");
  client->say("freeze");
  server = serve({"fill=20000"}); // more than the rings and the socket hold
  ASSERT_EQ(client->hear(), "frozen");
  ASSERT_TRUE(client->isStopped());
  server->kill();
  client->signal(SIGCONT);
  ASSERT_EQ(client->ask("await stale"), "stale");
  server = serve();
  ASSERT_EQ(server->ask("fill 3 1000"), "filled");
  expectEqual(*client);
  EXPECT_EQ(client->ask("digest"), server->ask("digest"));
}

TEST_F(Mirrors, FiftyGoOnWhileOneIsStopped) {
  const auto server = serve({"fill=100"});
  std::vector<std::unique_ptr<Process>> clients;
  for (int count = 0; count < 50; ++count) {
    clients.push_back(mirror());
  }
  int seed = 0;
  // No more at a time than those that read have room for.
  const auto change = [&](int times) {
    for (const int end = seed + times; seed != end; ++seed) {
      ASSERT_EQ(server->ask("change " + std::to_string(seed) + " 2000"), "changed");
      expectEqual(*clients[1 + static_cast<std::size_t>(seed) % 49]);
    }
  };
  for (const auto& client : clients) {
    expectEqual(*client);
  }
  change(20); // what the units hold has grown to what it will be
  const std::size_t memory = server->number("memory");
  clients.front()->signal(SIGSTOP);
  change(60); // kept for the one that is stopped, they would take 4 MB and more
  EXPECT_LT(server->number("memory"), TestNet::grown(memory, 2048));
  EXPECT_EQ(server->ask("clients"), "50");
  clients.front()->signal(SIGCONT);
  const std::string digest = server->ask("digest");
  for (const auto& client : clients) {
    expectEqual(*client);
    EXPECT_EQ(client->ask("digest"), digest);
  }
}

} // namespace
