#include "mixed/Units.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace Bench::Mixed {

using namespace Maintenance::Unit;

namespace {

/// Names of groups that there are in all, and texts that changes write.
constexpr std::size_t names = 64;
constexpr double start = 1.7e9; // of the history, in seconds

Zel::String8 unitName(std::size_t number) {
  char text[48];
  std::snprintf(text, sizeof text, "linecard-%06zu-p%03zu", number, number % 8);
  return text;
}

/// A new text each time.
Group::GroupKey groupKey(std::size_t number) {
  char text[48];
  std::snprintf(text, sizeof text, "maintenance-group-%02zu", number % names);
  return {Group::groupTypeInterface, text};
}

double lineTime(std::size_t unit, std::size_t line) {
  return start + static_cast<double>(unit) + 60.0 * static_cast<double>(line);
}

Zel::String8 lineText(const char* event, std::size_t number) {
  char text[64];
  std::snprintf(text, sizeof text, "%-20s by stage %10zu", event, number);
  return text;
}

TrafficRates traffic(std::size_t sample) {
  TrafficRates rates;
  rates.outBitsRateIs(10'000'000'000ULL + sample * 1'000);
  rates.inBitsRateIs(2'500'000'000ULL + sample * 1'000);
  rates.statsUpdateTimeIs(start + static_cast<double>(sample));
  return rates;
}

void fill(Status& unit, std::size_t number) {
  unit.unitTypeIs(dynamic);
  unit.profileNameIs("profile-of-linecards");
  unit.stateIs(active);
  unit.reasonIs(srcCli);
  unit.timeOfStateChangeIs(start + static_cast<double>(number));
  unit.onBootMaintExitTimeIs(start + 300);
  unit.historySizeIs(16);
  unit.maintEnterInstanceIs("linecard-enter-stage");
  unit.maintExitInstanceIs("linecard-leave-stage");
  unit.aggTrafficRateIs(traffic(0));
  unit.totalIntfTrafficViolationsIs(3);
  unit.genIdIs(static_cast<unsigned>(number) + 1);
  for (std::size_t i = 0; i < groups; ++i) {
    unit.groupIs(groupKey(number + i), true);
  }
  for (std::size_t i = 0; i < lines; ++i) {
    unit.historyIs(lineTime(number, i), lineText("entered maintenance", i));
  }
}

} // namespace

Zel::Ptr<StatusDir> made(std::size_t count) {
  auto dir = statusDirFactory("units");
  for (std::size_t i = 0; i < count; ++i) {
    fill(*dir->statusIs(unitName(i)), i);
  }
  return dir;
}

Units::Units(const Zel::Ptr<StatusDir>& dir) {
  const std::size_t count = dir->statusMap().count();
  for (std::size_t place = 0; place < count; ++place) {
    const std::size_t number = place * 7919 % count; // a prime, so all come
    units_.push_back({dir->status(unitName(number)), number});
    if (!units_.back().unit) {
      std::fprintf(stderr, "a unit is missing\n");
      std::_Exit(1);
    }
  }
  for (std::size_t i = 0; i < names; ++i) {
    keys_.push_back(groupKey(i));
    texts_.push_back(lineText("left maintenance", i));
  }
}

void Units::change(std::size_t place, Kind kind) {
  Changed& changed = units_[place];
  Status& unit = *changed.unit;
  const std::size_t number = changed.number;
  const std::size_t change = changed.changes[static_cast<std::size_t>(kind)]++;
  switch (kind) {
  case Kind::state:
    unit.stateIs(static_cast<State>((active + 1 + change) % std::size(stateRows)));
    break;
  case Kind::traffic:
    unit.aggTrafficRateIs(traffic(change + 1));
    break;
  case Kind::history: // the lines one after the other, each time with another text
    unit.historyIs(lineTime(number, change % lines), texts_[(number + change / lines) % names]);
    break;
  case Kind::group: // the groups one after the other: to false, to true
    unit.groupIs(keys_[(number + change % groups) % names], change / groups % 2 == 1);
    break;
  }
}

} // namespace Bench::Mixed
