#include "Listeners.h"

#include <limits>
#include <stdexcept>
#include <vector>

namespace {

using namespace Maintenance::Unit;
using namespace TestModel;

/// A singular attribute of `Status`, with three values of it: the default one and two others.
struct Attribute {
  std::string name;
  Zel::AttributeId id;
  std::function<void(Status&, std::size_t)> write;
  std::function<bool(const Status&, std::size_t)> reads;

  std::string callback() const {
    std::string text = "on" + name;
    text[2] = static_cast<char>(text[2] - 'a' + 'A');
    return text;
  }
  friend void PrintTo(const Attribute& attribute, std::ostream* out) { *out << attribute.name; }
};

template <class Read, class Argument, class Value = std::decay_t<Read>>
Attribute attribute(const char* name, Zel::AttributeId id, Read (Status::*read)() const,
                    void (Status::*write)(Argument), std::vector<Value> values) {
  return {
      name, id, [=](Status& status, std::size_t which) { (status.*write)(values[which]); },
      [=](const Status& status, std::size_t which) { return (status.*read)() == values[which]; }};
}

TrafficRates sampledAt(double time) {
  TrafficRates rates;
  rates.statsUpdateTimeIs(time);
  return rates;
}

std::vector<Attribute> attributes() {
  using S = Status;
  using Texts = std::vector<Zel::String8>;
  using Times = std::vector<double>;
  using Numbers = std::vector<unsigned>;
  return {
      attribute("unitType", 259, &S::unitType, &S::unitTypeIs,
                std::vector<UnitType>{userConfigured, dynamic, builtin}),
      attribute("profileName", 261, &S::profileName, &S::profileNameIs, Texts{"", "a", "default"}),
      attribute("state", 262, &S::state, &S::stateIs, std::vector<State>{init, failedExit, active}),
      attribute("reason", 263, &S::reason, &S::reasonIs,
                std::vector<InputSrc>{srcUnknown, srcCli, srcOnBoot}),
      attribute("timeOfStateChange", 264, &S::timeOfStateChange, &S::timeOfStateChangeIs,
                Times{0.0, 1.5, -1e300}),
      attribute("onBootMaintExitTime", 265, &S::onBootMaintExitTime, &S::onBootMaintExitTimeIs,
                Times{0.0, 1.5, std::numeric_limits<double>::infinity()}),
      attribute("historySize", 267, &S::historySize, &S::historySizeIs, Numbers{12, 0, 4294967295}),
      attribute("maintEnterInstance", 269, &S::maintEnterInstance, &S::maintEnterInstanceIs,
                Texts{"", "unit#1", "#"}),
      attribute("maintExitInstance", 270, &S::maintExitInstance, &S::maintExitInstanceIs,
                Texts{"", "unit#2", "any text"}),
      attribute("aggTrafficRate", 271, &S::aggTrafficRate, &S::aggTrafficRateIs,
                std::vector<TrafficRates>{TrafficRates(), sampledAt(1), sampledAt(2)}),
      attribute("totalIntfTrafficViolations", 273, &S::totalIntfTrafficViolations,
                &S::totalIntfTrafficViolationsIs, Numbers{0, 1, 4294967295}),
      attribute("genId", 274, &S::genId, &S::genIdIs, Numbers{0, 1, 4294967295}),
  };
}

struct UnitStatus : testing::TestWithParam<Attribute> {
  Ptr<StatusListener> listener(std::string label = "") {
    return listen<StatusListener>(unit, log, std::move(label));
  }
  void write(std::size_t which) { GetParam().write(*unit, which); }
  bool reads(std::size_t which) const { return GetParam().reads(*unit, which); }

  const Ptr<Status> unit = statusFactory("unit");
  Log log;
};
INSTANTIATE_TEST_SUITE_P(Attributes, UnitStatus, testing::ValuesIn(attributes()),
                         [](const auto& test) { return test.param.name; });

TEST_P(UnitStatus, StartsAtItsDefault) { EXPECT_TRUE(reads(0)); }

TEST_P(UnitStatus, AReadMovesTheReadCounterByOne) {
  expectMoves(*unit, 0, 1, [&] { reads(0); });
}

TEST_P(UnitStatus, AnEqualWriteMovesNeitherCounterAndTellsNobody) {
  const auto hearer = listener();
  expectMoves(*unit, 0, 0, [&] { write(0); });
  EXPECT_EQ(log, Log());
  write(1);
  log.clear();
  expectMoves(*unit, 0, 0, [&] { write(1); });
  EXPECT_EQ(log, Log());
}

TEST_P(UnitStatus, AChangeIsWrittenCountedAndToldOnce) {
  const auto hearer = listener();
  for (const std::size_t which : {1U, 2U, 0U}) {
    log.clear();
    expectMoves(*unit, 1, 0, [&] { write(which); });
    EXPECT_TRUE(reads(which));
    EXPECT_EQ(log, Log({GetParam().callback()}));
  }
}

TEST_P(UnitStatus, AChangeIsCountedWithoutAnyNotifiee) {
  expectMoves(*unit, 1, 0, [&] { write(1); });
  EXPECT_TRUE(reads(1));
}

TEST_P(UnitStatus, NotifieesFindTheNewValueCountedAlready) {
  const auto hearer = listener();
  bool called = false;
  hearer->onCall = [&] {
    called = true;
    EXPECT_EQ(unit->versionCounter(), 1U);
    EXPECT_TRUE(reads(2));
  };
  write(2);
  EXPECT_TRUE(called);
}

TEST_P(UnitStatus, ANotifieeThatThrowsIsToldTheIdAndTheNextIsCalled) {
  const auto first = listener("first ");
  const auto second = listener("second ");
  first->onCall = [] { throw std::runtime_error("refused"); };
  EXPECT_NO_THROW(write(1));
  const std::string callback = GetParam().callback();
  EXPECT_EQ(log, Log({joined("first ", callback),
                      joined("first exception ", std::to_string(GetParam().id)),
                      joined("second ", callback)}));
  EXPECT_TRUE(reads(1));
  EXPECT_EQ(unit->versionCounter(), 1U);
}

TEST_P(UnitStatus, AChangeTouchesNoOtherAttribute) {
  write(1);
  for (const Attribute& other : attributes()) {
    EXPECT_EQ(other.reads(*unit, 0), other.name != GetParam().name) << other.name;
  }
  EXPECT_EQ(unit->groupMap().count(), 0U);
  EXPECT_EQ(unit->historyMap().count(), 0U);
  EXPECT_EQ(unit->intfsViolatingTrafficThresholdMap().count(), 0U);
  EXPECT_EQ(unit->unitName(), "unit");
  EXPECT_EQ(unit->defaultHistorySize(), 12U);
}

TEST_P(UnitStatus, ItsNameBelongsToItsId) {
  EXPECT_EQ(unit->attributeString(GetParam().id), Zel::String8(GetParam().name));
}

} // namespace
