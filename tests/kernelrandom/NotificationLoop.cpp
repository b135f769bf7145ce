#include "LoopModel.h"
#include "LoopWorld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace {

using namespace KernelRandom;

struct Counts {
  std::map<Event::What, unsigned> events;
  std::size_t longestList = 0;
};

/// Runs one seed on the library and on the model; false at the first difference.
bool agrees(std::uint64_t seed, int steps, Counts& counts) {
  LoopWorld world(seed);
  LoopModel model(seed);
  for (int step = 0; step <= steps; ++step) {
    if (step < steps) {
      world.step();
      model.step();
    } else {
      world.end();
      model.end();
    }
    const auto differs = std::mismatch(world.events.begin(), world.events.end(),
                                       model.events.begin(), model.events.end());
    const auto before = differs.first - world.events.begin();
    if (differs.first != world.events.end() || differs.second != model.events.end()) {
      ADD_FAILURE() << "seed " << seed << " step " << step << " event " << before << "\n library: "
                    << (differs.first != world.events.end() ? testing::PrintToString(*differs.first)
                                                            : "nothing")
                    << "\n model:   "
                    << (differs.second != model.events.end()
                            ? testing::PrintToString(*differs.second)
                            : "nothing");
      return false;
    }
    bool same = true;
    for (int n = 0; n < loopSlots; ++n) {
      same = same && world.notifiee(n) == model.notifiee(n);
    }
    for (int e = 0; e < loopEntities; ++e) {
      const auto entity = world.entity(e);
      same = same && entity == model.entity(e);
      counts.longestList = std::max(counts.longestList, entity.list.size());
    }
    if (!same) {
      ADD_FAILURE() << "seed " << seed << " step " << step << ": the states differ";
      return false;
    }
    for (const Event& event : world.events) {
      ++counts.events[event.what];
    }
    world.events.clear();
    model.events.clear();
  }
  for (int n = 0; n < loopSlots; ++n) {
    EXPECT_FALSE(world.notifiee(n).alive) << "seed " << seed;
  }
  for (int e = 0; e < loopEntities; ++e) {
    EXPECT_FALSE(world.entity(e).alive) << "seed " << seed;
  }
  return !testing::Test::HasFailure();
}

TEST(NotificationLoop, CallsThoseThatTheModelCallsInItsOrderWithItsCounters) {
  constexpr unsigned seeds = scaled(4000, 20);
  Counts counts;
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    if (!agrees(seed, 400, counts)) {
      return;
    }
  }
  // The scripts reach what they are there for.
  EXPECT_GE(counts.events[Event::called] / seeds, 100U);
  EXPECT_GT(counts.longestList, 8U); // a snapshot beyond its inline places
  EXPECT_GE(counts.events[Event::told] / seeds, 20U);
  EXPECT_GE(counts.events[Event::escaped] / seeds, 1U);
  EXPECT_GE(counts.events[Event::notifieeDied] / seeds, 10U);
  EXPECT_GE(counts.events[Event::entityDied] / seeds, 4U);
}

} // namespace
