#include "Report.h"

#include "Line.h"
#include "Table.h"
#include "Time.h"

#include <algorithm>

namespace Replay {

namespace {

using namespace Maintenance;
using Unit::Status;

std::string text(const Zel::String8& value) { return std::string(value.view()); }

Table::Cell cell(const Zel::String8& name) {
  return name.empty() ? Table::Cell() : Table::Cell{shown(name.view())};
}

/// A time that was never set is 0.
Table::Cell timeCell(double time) {
  return time == 0 ? Table::Cell() : Table::Cell{textOfTime(time)};
}

// Collections are walked with an iterator. Hash collections have an order of their own, the same
// in every run but not meant for people, so the tables sort.

/// The keys of a set-like collection, in the order of their type.
template <class Map>
std::vector<typename Map::KeyType> keys(const Map& map) {
  std::vector<typename Map::KeyType> result;
  for (typename Map::IteratorConst at(map); at; at.advance()) {
    result.push_back(at->zelKey());
  }
  std::sort(result.begin(), result.end());
  return result;
}

/// The members of a directory. Each handle keeps its member while the tables are made.
template <class Map, class Less>
auto members(const Map& map, Less&& less) {
  std::vector<Zel::Ptr<const typename Map::EntryType>> result;
  for (typename Map::IteratorConst at(map); at; at.advance()) {
    result.push_back(at.ptr());
  }
  std::sort(result.begin(), result.end(),
            [&](const auto& a, const auto& b) { return less(*a, *b); });
  return result;
}

Table::Cell groupsCell(const Status& unit) {
  Table::Cell cell;
  for (const Group::GroupKey& key : keys(unit.groupMap())) {
    cell.push_back(text(stringValue(key.type())) + ' ' + shown(key.name().view()));
  }
  return cell;
}

Table::Cell violatingCell(const Status& unit) {
  Table::Cell cell;
  for (const Vexil::IntfId interface : keys(unit.intfsViolatingTrafficThresholdMap())) {
    cell.push_back(text(stringValue(interface)));
  }
  return cell;
}

Table::Cell ratesCell(const Status& unit) {
  const Unit::TrafficRates& rates = unit.aggTrafficRate();
  if (rates == Unit::TrafficRates()) {
    return {};
  }
  return {"in " + grouped(rates.inBitsRate()), "out " + grouped(rates.outBitsRate())};
}

void reportHistory(std::ostream& out, const Status& unit) {
  out << "\nHistory of " << shown(unit.name().view()) << '\n';
  if (unit.historyMap().count() == 0) {
    out << "-\n";
  }
  // The one ordered collection: it is walked in ascending time.
  for (Status::HistoryMap::IteratorConst at(unit.historyMap()); at; at.advance()) {
    out << textOfTime(at->zelKey()) << "  " << at->zelValue() << '\n';
  }
}

} // namespace

void report(std::ostream& out, const Model& model) {
  const auto units = members(model.units->statusMap(), [](const Status& a, const Status& b) {
    return comesBefore(a.name().view(), b.name().view());
  });
  Table unitTable({"UNIT", "TYPE", "STATE", "REASON", "SINCE", "ON-BOOT EXIT", "PROFILE", "GROUPS",
                   "RATES (b/s)", "OVER THRESHOLD", "VIOLATIONS", "HISTORY", "GENERATION"});
  for (const auto& unit : units) {
    unitTable.row({cell(unit->name()),
                   cell(stringValue(unit->unitType())),
                   cell(stringValue(unit->state())),
                   cell(stringValue(unit->reason())),
                   timeCell(unit->timeOfStateChange()),
                   timeCell(unit->onBootMaintExitTime()),
                   cell(unit->profileName()),
                   groupsCell(*unit),
                   ratesCell(*unit),
                   violatingCell(*unit),
                   {std::to_string(unit->totalIntfTrafficViolations())},
                   {std::to_string(unit->historyMap().count())},
                   {std::to_string(unit->genId())}});
  }
  out << "\nUnits\n" << unitTable;

  using Profile::Config;
  const auto profiles = members(model.profiles->configMap(), [](const Config& a, const Config& b) {
    return a.key().type() != b.key().type()
               ? a.key().type() < b.key().type()
               : comesBefore(a.key().name().view(), b.key().name().view());
  });
  Table profileTable({"TYPE", "PROFILE"});
  for (const auto& profile : profiles) {
    profileTable.row({cell(stringValue(profile->key().type())), cell(profile->key().name())});
  }
  const Zel::String8 defaultProfile = model.defaultProfile->profileName();
  out << "\nProfiles (default: " << (defaultProfile.empty() ? "-" : shown(defaultProfile.view()))
      << ")\n"
      << profileTable;

  for (const auto& unit : units) {
    reportHistory(out, *unit);
  }
}

} // namespace Replay
