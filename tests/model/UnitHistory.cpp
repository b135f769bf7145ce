#include "Listeners.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <stdexcept>

namespace {

using namespace TestModel;
using Maintenance::Unit::Status;
using Zel::String8;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct UnitHistory : testing::Test {
  std::vector<double> times() const {
    std::vector<double> times;
    for (Status::HistoryMap::IteratorConst at(unit->historyMap()); at; at.advance()) {
      times.push_back(at->zelKey());
    }
    return times;
  }
  unsigned count() const { return unit->historyMap().count(); }

  Ptr<Status> const unit = Maintenance::Unit::statusFactory("unit");
  Log log;
  Ptr<StatusListener> const listener = listen<StatusListener>(unit, log);
};

TEST_F(UnitHistory, AnAbsentTimeReadsEmptyAndMovesTheReadCounterByOne) {
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(unit->history(5.0), ""); });
  unit->historyIs(5.0, "a");
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(unit->history(5.0), "a"); });
}

TEST_F(UnitHistory, TheSameLineTwiceIsToldOnce) {
  expectMoves(*unit, 1, 0, [&] {
    unit->historyIs(5.0, "a");
    unit->historyIs(5.0, "a");
  });
  EXPECT_EQ(log, Log({"onHistory 5"}));
}

TEST_F(UnitHistory, AnotherTextAtTheSameTimeIsWrittenIntoTheSameEntry) {
  unit->historyIs(5.0, "a");
  auto const* const entry = unit->historyMap()[5.0];
  log.clear();
  expectMoves(*unit, 1, 0, [&] { unit->historyIs(5.0, "b"); });
  EXPECT_EQ(count(), 1U);
  EXPECT_EQ(unit->history(5.0), "b");
  EXPECT_EQ(unit->historyMap()[5.0], entry);
  EXPECT_EQ(log, Log({"onHistory 5"}));
}

TEST_F(UnitHistory, AnEmptyLineIsAnEntryToo) {
  expectMoves(*unit, 1, 0, [&] { unit->historyIs(5.0, ""); });
  EXPECT_EQ(count(), 1U);
  EXPECT_EQ(log, Log({"onHistory 5"}));
}

TEST_F(UnitHistory, MoreLinesThanTheHistorySizeAllStay) {
  for (int line = 0; line < 13; ++line) {
    unit->historyIs(line, "line");
  }
  EXPECT_EQ(count(), 13U);
  EXPECT_EQ(unit->historySize(), 12U);
  unit->historySizeIs(1);
  EXPECT_EQ(count(), 13U);
  unit->historyIs(13, "line");
  EXPECT_EQ(count(), 14U);
}

TEST_F(UnitHistory, RunsInAscendingTimeWhateverTheOrderOfInsertion) {
  unit->historyIs(2.0, "b");
  unit->historyIs(1.0, "a");
  unit->historyIs(3.0, "c");
  EXPECT_EQ(times(), std::vector<double>({1, 2, 3}));
}

TEST_F(UnitHistory, RunsFromMinusToPlusInfinity) {
  for (double const time : {0.0, infinity, -1e300, 1e-308, -infinity, 1e300, -1e-308}) {
    unit->historyIs(time, "line");
  }
  EXPECT_EQ(times(), std::vector<double>({-infinity, -1e300, -1e-308, 0, 1e-308, 1e300, infinity}));
}

TEST_F(UnitHistory, BehavesLikeAnOrderedMapUnderRandomWrites) {
  for (unsigned const seed : {1U, 2U, 3U}) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    std::map<double, std::string> model;
    unit->historyDelAll();
    for (int step = 0; step < 2000; ++step) {
      double const time = static_cast<double>(random() % 100) / 4;
      std::string const text = std::to_string(random() % 3);
      auto const found = model.find(time);
      if (random() % 3 == 0) {
        std::string const held = found != model.end() ? found->second : "";
        unsigned const moves = found != model.end() ? 1 : 0;
        expectMoves(*unit, moves, 0, [&] { ASSERT_EQ(textOf(unit->historyDel(time)), held); });
        model.erase(time);
      } else {
        unsigned const moves = found != model.end() && found->second == text ? 0 : 1;
        expectMoves(*unit, moves, 0, [&] { unit->historyIs(time, String8(text)); });
        model[time] = text;
      }
      ASSERT_EQ(count(), model.size());
    }
    auto expected = model.begin();
    for (Status::HistoryMap::IteratorConst at(unit->historyMap()); at; at.advance(), ++expected) {
      ASSERT_NE(expected, model.end());
      EXPECT_EQ(at->zelKey(), expected->first);
      EXPECT_EQ(textOf(at->zelValue()), expected->second);
    }
    EXPECT_EQ(expected, model.end());
  }
}

TEST_F(UnitHistory, DeletingAnAbsentTimeYieldsTheEmptyTextAndDoesNothing) {
  unit->historyIs(1.0, "a");
  log.clear();
  expectMoves(*unit, 0, 0, [&] { EXPECT_EQ(unit->historyDel(2.0), ""); });
  EXPECT_EQ(log, Log());
  EXPECT_EQ(count(), 1U);
}

TEST_F(UnitHistory, ADeletionYieldsTheTextThatWasHeld) {
  unit->historyIs(1.0, "a");
  log.clear();
  listener->onCall = [&] { EXPECT_EQ(unit->historyMap()[1.0], nullptr); };
  expectMoves(*unit, 1, 0, [&] { EXPECT_EQ(unit->historyDel(1.0), "a"); });
  EXPECT_EQ(log, Log({"onHistory 1"}));
  EXPECT_EQ(count(), 0U);
}

TEST_F(UnitHistory, TheBareInsertionIsNeitherCountedNorTold) {
  expectMoves(*unit, 0, 0, [&] {
    auto const entry = unit->newHistory(1.0, "a");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->zelKey(), 1.0);
    EXPECT_EQ(entry->zelValue(), "a");
  });
  EXPECT_EQ(log, Log());
  EXPECT_EQ(unit->history(1.0), "a");
}

TEST_F(UnitHistory, TheBareInsertionTakesThePlaceOfAnEntryOfTheSameTime) {
  for (double const time : {1.0, 2.0, 3.0}) {
    unit->historyIs(time, "old");
  }
  log.clear();
  for (double const time : {2.0, 1.0, 3.0}) {
    Ptr<Status::ZelHistory> const old(unit->historyMap()[time]);
    expectMoves(*unit, 0, 0, [&] { unit->newHistory(time, "new"); });
    EXPECT_NE(unit->historyMap()[time], old.ptr());
    EXPECT_EQ(unit->history(time), "new");
    EXPECT_EQ(old->zelValue(), "old");
    EXPECT_EQ(old->references(), 1U) << "the tree has let go of it";
  }
  EXPECT_EQ(times(), std::vector<double>({1, 2, 3}));
  EXPECT_EQ(log, Log());
}

TEST_F(UnitHistory, AWalkGoesOnOverAnEntryThatHasBeenReplaced) {
  for (double const time : {1.0, 2.0, 3.0}) {
    unit->historyIs(time, "old");
  }
  Status::HistoryMap::IteratorConst at(unit->historyMap(), 2.0);
  unit->newHistory(2.0, "new");
  at.advance();
  ASSERT_TRUE(at);
  EXPECT_EQ(at->zelKey(), 3.0);
}

TEST_F(UnitHistory, ZeroAndMinusZeroAreOneTime) {
  unit->historyIs(0.0, "a");
  expectMoves(*unit, 0, 0, [&] { unit->historyIs(-0.0, "a"); });
  expectMoves(*unit, 1, 0, [&] { unit->historyIs(-0.0, "b"); });
  EXPECT_EQ(count(), 1U);
  EXPECT_FALSE(std::signbit(times()[0])) << "the entry keeps its key";
  unit->newHistory(-0.0, "c");
  EXPECT_EQ(count(), 1U);
  EXPECT_TRUE(std::signbit(times()[0])) << "the newer entry wins";
  EXPECT_EQ(unit->historyDel(0.0), "c");
}

TEST_F(UnitHistory, NotATimeIsAddedEachTimeAndNeverFound) {
  expectMoves(*unit, 2, 0, [&] {
    unit->historyIs(nan, "a");
    unit->historyIs(nan, "a");
  });
  EXPECT_EQ(log, Log({"onHistory nan", "onHistory nan"}));
  EXPECT_EQ(count(), 2U);
  EXPECT_EQ(unit->history(nan), "");
  expectMoves(*unit, 0, 0, [&] { EXPECT_EQ(unit->historyDel(nan), ""); });
  EXPECT_EQ(count(), 2U);
}

TEST_F(UnitHistory, NotATimeLandsBehindAllThatItMeets) {
  for (double const time : {1.0, 2.0, 3.0, nan}) {
    unit->historyIs(time, "line");
  }
  std::vector<double> const all = times();
  ASSERT_EQ(all.size(), 4U);
  EXPECT_TRUE(std::isnan(all[3]));
}

TEST_F(UnitHistory, DeletingAllTakesWhatIsNotATimeToo) {
  for (double const time : {1.0, nan, 2.0, nan, 3.0}) {
    unit->historyIs(time, "line");
  }
  log.clear();
  expectMoves(*unit, 5, 0, [&] { unit->historyDelAll(); });
  EXPECT_EQ(count(), 0U);
  EXPECT_EQ(log.size(), 5U);
  EXPECT_EQ(std::count(log.begin(), log.end(), "onHistory nan"), 2);
}

TEST_F(UnitHistory, DeletingAllTellsOfEachTimeInAscendingOrder) {
  for (double const time : {3.0, 1.0, 2.0}) {
    unit->historyIs(time, "line");
  }
  log.clear();
  expectMoves(*unit, 3, 0, [&] { unit->historyDelAll(); });
  EXPECT_EQ(log, Log({"onHistory 1", "onHistory 2", "onHistory 3"}));
  expectMoves(*unit, 0, 0, [&] { unit->historyDelAll(); });
}

TEST_F(UnitHistory, ANotifieeThatDeletesTheNextTimeMeanwhileTellsOfItOnce) {
  for (int time = 1; time <= 6; ++time) {
    unit->historyIs(time, "line");
  }
  log.clear();
  listener->onCall = [&] {
    if (log.back() == "onHistory 3") {
      unit->historyDel(4);
      unit->historyDel(5);
    }
  };
  expectMoves(*unit, 6, 0, [&] { unit->historyDelAll(); });
  EXPECT_EQ(log, Log({"onHistory 1", "onHistory 2", "onHistory 3", "onHistory 4", "onHistory 5",
                      "onHistory 6"}));
}

TEST_F(UnitHistory, DeletingUnderTheIteratorYieldsTheTextAndGoesOn) {
  for (double const time : {1.0, 2.0, 3.0}) {
    unit->historyIs(time, String8(std::to_string(static_cast<int>(time))));
  }
  log.clear();
  Status::HistoryMap::Iterator at(unit->historyMap(), 1.5);
  EXPECT_EQ(unit->historyDel(at), "2");
  EXPECT_EQ(at->zelKey(), 2.0) << "the iterator stays";
  expectMoves(*unit, 0, 0, [&] { EXPECT_EQ(unit->historyDel(at), ""); });
  at.advance();
  EXPECT_EQ(unit->historyDel(at), "3");
  at.advance();
  EXPECT_FALSE(at);
  expectMoves(*unit, 0, 0, [&] { EXPECT_EQ(unit->historyDel(at), ""); });
  EXPECT_EQ(log, Log({"onHistory 2", "onHistory 3"}));
  EXPECT_EQ(times(), std::vector<double>({1}));
}

TEST_F(UnitHistory, ANotifieeMayDeleteTheLineThatIsBeingTold) {
  auto const second = listen<StatusListener>(unit, log, "second ");
  listener->onCall = [&] {
    listener->onCall = nullptr;
    EXPECT_EQ(unit->historyDel(1.0), "a");
  };
  expectMoves(*unit, 2, 0, [&] { unit->historyIs(1.0, "a"); });
  EXPECT_EQ(log, Log({"onHistory 1", "onHistory 1", "second onHistory 1", "second onHistory 1"}));
  EXPECT_EQ(count(), 0U);
}

TEST_F(UnitHistory, ANotificationIsSentWithoutAnyChange) {
  expectMoves(*unit, 0, 0, [&] { unit->historyNotify(7.5); });
  EXPECT_EQ(log, Log({"onHistory 7.5"}));
}

TEST_F(UnitHistory, ANotifieeThatThrowsIsToldTheId) {
  listener->onCall = [] { throw std::runtime_error("refused"); };
  unit->historyIs(1.0, "a");
  EXPECT_EQ(log, Log({"onHistory 1", "exception 268"}));
  EXPECT_EQ(unit->history(1.0), "a");
}

} // namespace
