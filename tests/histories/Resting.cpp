#include "History.h"
#include "Rest.h"

#include <model/MaintenanceAgentInfo.h>

#include <gtest/gtest.h>

// That what never comes to rest is told of.

namespace {

using Histories::History;
using Maintenance::AgentInfo;
using Simulation::Link;
using Simulation::World;
using End = Zel::Connection::End;

/// A program that answers what it hears with a write of its own, at most so often. Two of them keep
/// a world busy, and each attribute has one writer.
struct Restless : AgentInfo::Notifiee {
  void onAgentPid() override {
    if (!isOriginal && answers != 0) {
      --answers;
      notifier()->readyIs(!notifier()->ready());
    }
  }
  void onReady() override {
    if (isOriginal && answers != 0) {
      --answers;
      notifier()->agentPidIs(notifier()->agentPid() + 1);
    }
  }
  bool isOriginal = false;
  std::uint64_t answers = 0;
};

Zel::Ptr<Restless> restlessOf(const Zel::Ptr<AgentInfo>& agent, bool isOriginal,
                              std::uint64_t answers) {
  const auto restless = Zel::makeObject<Restless>();
  restless->isOriginal = isOriginal;
  restless->answers = answers;
  restless->isRegisteredNotifieeIs(true);
  restless->notifierIs(agent);
  return restless;
}

class RestBound : public testing::Test {
protected:
  RestBound() {
    roots->entityIs(Maintenance::agentInfoFactory("agent"));
    link = &world.linkIs({.pieces = 100, .inFlight = 100, .haste = 3}, [this](End end) {
      const bool isMirror = end == End::second;
      auto made = Zel::makeObject<Zel::Connection>(
          end, "peer", Zel::ConnectionLimits(),
          isMirror
              ? Zel::Ptr<Zel::NboAttrLog::MountPolicy>(Zel::makeObject<Zel::NboAttrLog::DirMounts>(
                    mirrors, Zel::StreamAdapter::Zel_BitSet()))
              : Zel::Ptr<Zel::NboAttrLog::MountPolicy>());
      if (!isMirror) {
        made->demuxer()->exportIs(roots->entity("agent"));
      }
      return made;
    });
    EXPECT_TRUE(world.settle());
    link->healthyIs(true);
  }
  static Zel::Ptr<AgentInfo> agentOf(const Zel::Dir& dir) {
    return Zel::ptrCast<AgentInfo>(dir.entity("agent"));
  }
  /// Whether the world is at rest in the steps that it has, with programs that answer so often.
  bool rests(std::uint64_t answers) {
    const auto original = restlessOf(agentOf(*roots), true, answers);
    const auto copy = restlessOf(agentOf(*mirrors), false, answers);
    agentOf(*roots)->agentPidIs(agentOf(*roots)->agentPid() + 1);
    return world.settle(Histories::restBound({link}, 2 * Histories::walkBytes(*roots), 1));
  }

  World world{1};
  const Zel::Ptr<Zel::Dir> roots = Zel::makeObject<Zel::Dir>();
  const Zel::Ptr<Zel::Dir> mirrors = Zel::makeObject<Zel::Dir>();
  Link* link = nullptr;
};

TEST_F(RestBound, IsEnoughForWhatEnds) {
  EXPECT_TRUE(rests(0));
  EXPECT_TRUE(rests(10));
}

TEST_F(RestBound, IsNotEnoughForWhatNeverEnds) {
  EXPECT_FALSE(rests(~std::uint64_t{0}));
  EXPECT_GT(agentOf(*roots)->agentPid(), 50U);
}

TEST(WalkBytes, AreAtLeastThoseOfAWalk) {
  for (std::uint64_t seed = 1; seed < 20; ++seed) {
    World world(seed);
    Histories::Model model(0);
    for (const Zel::Ptr<Zel::Entity>& root : Histories::makeRoots()) {
      model.roots()->entityIs(root);
    }
    std::unordered_set<Histories::Path> deleted;
    for (unsigned i = 0; i < 500; ++i) {
      model.change(world.random(), {1, 1, 0}, {200000, 8}, deleted);
    }
    const auto mirrors = Zel::makeObject<Zel::Dir>();
    const Link& link = world.linkIs({}, [&](End end) {
      auto made = Zel::makeObject<Zel::Connection>(
          end, "peer", Zel::ConnectionLimits(),
          end == End::second
              ? Zel::Ptr<Zel::NboAttrLog::MountPolicy>(Zel::makeObject<Zel::NboAttrLog::DirMounts>(
                    mirrors, Zel::StreamAdapter::Zel_BitSet()))
              : Zel::Ptr<Zel::NboAttrLog::MountPolicy>());
      for (const auto& [name, root] : model.roots()->entities()) {
        if (end == End::first) {
          made->demuxer()->exportIs(root);
        }
      }
      return made;
    });
    ASSERT_TRUE(world.settle());
    const std::uint64_t walked = link.connection(End::first)->out()->bytesWritten();
    const std::uint64_t bytes = Histories::walkBytes(*model.roots());
    EXPECT_GE(bytes, walked);
    EXPECT_LE(bytes, 4 * walked);
  }
}

/// Where all becomes well, two programs that never end are let loose.
TEST(HistoryThatHeals, IsBrokenWhereTheWorldNeverRests) {
  unsigned broken = 0;
  for (std::uint64_t seed = 2; seed < 400 && broken < 3; seed += 2) {
    std::vector<Zel::Ptr<Restless>> programs;
    History* at = nullptr;
    const auto told = [&](const std::string& what) {
      if (what.rfind("all is well", 0) != 0) {
        return;
      }
      const auto original = Zel::ptrCast<AgentInfo>(at->roots(0)->entity("agent"));
      const auto copy = Zel::ptrCast<AgentInfo>(at->roots(1)->entity("agent"));
      if (original && copy) {
        programs.push_back(restlessOf(original, true, ~std::uint64_t{0}));
        programs.push_back(restlessOf(copy, false, ~std::uint64_t{0}));
        original->agentPidIs(original->agentPid() + 1);
      }
    };
    History history(seed, History::Over::sessions, told);
    at = &history;
    try {
      history.run();
    } catch (const Histories::Broken& failure) { // or for what the programs wrote
      const std::string why = failure.what();
      broken += why.find("does not come to rest in the steps that it has") != std::string::npos;
    }
  }
  EXPECT_EQ(broken, 3U);
}

} // namespace
