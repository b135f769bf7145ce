#include "Listeners.h"

#include <stdexcept>

namespace {

using namespace Maintenance::Unit;
using namespace TestModel;

/// A counter of `Status`.
struct Counter {
  const char* name;
  Zel::AttributeId id;
  unsigned (*inc)(Status&, unsigned);
  void (*is)(Status&, unsigned);
  unsigned (*read)(const Status&);
  const char* callback;
  friend void PrintTo(const Counter& counter, std::ostream* out) { *out << counter.name; }
};

struct UnitCounters : testing::TestWithParam<Counter> {
  const Ptr<Status> unit = statusFactory("unit");
  Log log;
  const Ptr<StatusListener> listener = listen<StatusListener>(unit, log);
};
INSTANTIATE_TEST_SUITE_P(
    Attributes, UnitCounters,
    testing::Values(Counter{
                        "totalIntfTrafficViolations", 273,
                        [](Status& s, unsigned by) { return s.totalIntfTrafficViolationsInc(by); },
                        [](Status& s, unsigned to) { s.totalIntfTrafficViolationsIs(to); },
                        [](const Status& s) { return s.totalIntfTrafficViolations(); },
                        "onTotalIntfTrafficViolations"},
                    Counter{"genId", 274, [](Status& s, unsigned by) { return s.genIdInc(by); },
                            [](Status& s, unsigned to) { s.genIdIs(to); },
                            [](const Status& s) { return s.genId(); }, "onGenId"}),
    [](const auto& test) { return test.param.name; });

TEST_P(UnitCounters, AnIncrementMovesTheReadCounterAloneAndTellsOnce) {
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(GetParam().inc(*unit, 5), 5U); });
  EXPECT_EQ(log, Log({GetParam().callback}));
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(GetParam().inc(*unit, 2), 7U); });
  EXPECT_EQ(log, Log({GetParam().callback, GetParam().callback}));
  EXPECT_EQ(GetParam().read(*unit), 7U);
}

TEST_P(UnitCounters, AnIncrementByNothingTellsNobodyAndYieldsTheOldValue) {
  GetParam().is(*unit, 9);
  log.clear();
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(GetParam().inc(*unit, 0), 9U); });
  EXPECT_EQ(log, Log());
}

TEST_P(UnitCounters, AnIncrementWraps) {
  GetParam().is(*unit, 4294967295);
  log.clear();
  EXPECT_EQ(GetParam().inc(*unit, 1), 0U);
  EXPECT_EQ(GetParam().inc(*unit, 4294967295), 4294967295U);
  EXPECT_EQ(GetParam().inc(*unit, 4294967295), 4294967294U);
  EXPECT_EQ(log, Log(3, GetParam().callback));
}

TEST_P(UnitCounters, NotifieesOfAnIncrementFindTheNewValue) {
  unsigned seen = 0;
  listener->onCall = [&] { seen = GetParam().read(*unit); };
  GetParam().inc(*unit, 3);
  EXPECT_EQ(seen, 3U);
}

TEST_P(UnitCounters, AnIncrementYieldsItsOwnSumWhateverANotifieeWrites) {
  listener->onCall = [&] {
    listener->onCall = nullptr;
    GetParam().is(*unit, 100);
  };
  EXPECT_EQ(GetParam().inc(*unit, 3), 3U);
  EXPECT_EQ(GetParam().read(*unit), 100U);
}

TEST_P(UnitCounters, ANotifieeThatThrowsAtAnIncrementIsToldTheId) {
  listener->onCall = [] { throw std::runtime_error("refused"); };
  EXPECT_EQ(GetParam().inc(*unit, 1), 1U);
  EXPECT_EQ(log, Log({GetParam().callback, joined("exception ", std::to_string(GetParam().id))}));
}

TEST_P(UnitCounters, AnIncrementWithoutNotifieesIsWritten) {
  listener->notifierIs(nullptr);
  expectMoves(*unit, 0, 1, [&] { EXPECT_EQ(GetParam().inc(*unit, 4), 4U); });
  EXPECT_EQ(GetParam().read(*unit), 4U);
}

} // namespace
