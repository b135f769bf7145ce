#include "Random.h"
#include "Tracking.h"
#include "TreeCheck.h"

#include <model/Unit/Status.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

using namespace KernelRandom;
using Maintenance::Unit::Status;
using Maintenance::Unit::statusFactory;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct Recorder : Status::Notifiee {
  using Status::Notifiee::onHistory;
  void onHistory(const double& time) override {
    ++heard;
    if (reaction) {
      reaction(time);
    }
  }
  unsigned heard = 0;
  std::function<void(double)> reaction;
};

/// A unit with a history of ordinary and NaN times, entered in random order.
struct Mixed {
  explicit Mixed(std::uint64_t seed) : random(seed) {
    recorder->isRegisteredNotifieeIs(true);
    recorder->notifierIs(unit);
    const unsigned size = 1 + random.below(60);
    const unsigned share = 1 + random.below(6);
    for (unsigned i = 0; i < size; ++i) {
      unit->historyIs(random.oneIn(share) ? nan : random.below(50), "text");
    }
    recorder->heard = 0;
    count = unit->historyMap().count();
    version = unit->versionCounter();
  }

  Random random;
  Zel::Ptr<Status> unit = statusFactory("unit");
  Zel::Ptr<Recorder> recorder = Zel::makeObject<Recorder>();
  unsigned count;
  unsigned version;
};

constexpr std::uint64_t seeds = scaled(3000);

TEST(NotANumber, ATreeThatHoldsItStaysBalancedAndIsWalkedWhole) {
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    const Mixed mixed(seed);
    const TreeCheck<Status::HistoryMap> tree(mixed.unit->historyMap());
    std::size_t place = 0;
    for (Status::HistoryMap::IteratorConst at(mixed.unit->historyMap()); at; at.advance()) {
      ASSERT_LT(place, tree.entries().size());
      ASSERT_EQ(at.ptr().ptr(), tree.entries()[place++]);
    }
    ASSERT_EQ(place, mixed.count);
    ASSERT_FALSE(HasFailure());
  }
}

TEST(NotANumber, DeletionOfAllTellsOfEachOnceAndLeavesNothing) {
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    const Mixed mixed(seed);
    mixed.unit->historyDelAll();
    ASSERT_EQ(mixed.unit->historyMap().count(), 0U) << "seed " << seed;
    ASSERT_EQ(mixed.recorder->heard, mixed.count) << "seed " << seed;
    ASSERT_EQ(mixed.unit->versionCounter(), mixed.version + mixed.count) << "seed " << seed;
  }
}

TEST(NotANumber, DeletionOfAllLeavesNothingWhenNotifieesDeleteTheFirstEntryThemselves) {
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    const Mixed mixed(seed);
    Status& unit = *mixed.unit;
    bool nested = false;
    mixed.recorder->reaction = [&](double) {
      if (!nested) {
        nested = true;
        Status::HistoryMap::Iterator first(unit.historyMap());
        unit.historyDel(first);
        nested = false;
      }
    };
    unit.historyDelAll();
    ASSERT_EQ(unit.historyMap().count(), 0U) << "seed " << seed;
    ASSERT_EQ(mixed.recorder->heard, mixed.count) << "seed " << seed;
  }
}

TEST(NotANumber, AWalkThatDeletesEachEntryUnderItEndsAndTellsOfEachOnce) {
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    const Mixed mixed(seed);
    unsigned steps = 0;
    for (Status::HistoryMap::Iterator at(mixed.unit->historyMap()); at; at.advance(), ++steps) {
      ASSERT_LT(steps, mixed.count) << "seed " << seed;
      ASSERT_EQ(mixed.unit->historyDel(at), "text");
    }
    ASSERT_EQ(mixed.recorder->heard, steps) << "seed " << seed;
    ASSERT_EQ(mixed.unit->historyMap().count(), mixed.count - steps) << "seed " << seed;
  }
}

TEST(NotANumber, AWalkThatDeletesSomeEntriesUnderItEnds) {
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    Mixed mixed(seed);
    unsigned deleted = 0;
    unsigned steps = 0;
    for (Status::HistoryMap::Iterator at(mixed.unit->historyMap()); at; at.advance(), ++steps) {
      // Where there is no order, a deletion may lead the walk back, but each one only once.
      ASSERT_LE(steps, mixed.count * (deleted + 1)) << "seed " << seed;
      if (mixed.random.oneIn(3)) {
        mixed.unit->historyDel(at);
        ++deleted;
      }
    }
    ASSERT_EQ(mixed.recorder->heard, deleted) << "seed " << seed;
    const TreeCheck<Status::HistoryMap> tree(mixed.unit->historyMap());
    ASSERT_EQ(tree.entries().size(), mixed.count - deleted) << "seed " << seed;
    ASSERT_FALSE(HasFailure()) << "seed " << seed;
  }
}

TEST(NotANumber, DestructionReleasesEachEntry) {
  const Tracking tracking;
  for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
    Zel::Ptr<Status::ZelHistory> survivor;
    unsigned count = 0;
    {
      Mixed mixed(seed);
      count = mixed.count;
      unsigned place = mixed.random.below(count);
      Status::HistoryMap::Iterator at(mixed.unit->historyMap());
      for (; place > 0; --place) {
        at.advance();
      }
      survivor = at.ptr();
      ASSERT_EQ(tracking.living(), 2U + count) << "seed " << seed;
    }
    ASSERT_EQ(tracking.living(), 1U) << "seed " << seed;
    ASSERT_EQ(survivor->references(), 1U) << "seed " << seed;
  }
  ASSERT_EQ(tracking.living(), 0U);
}

} // namespace
