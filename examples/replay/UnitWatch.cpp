#include "UnitWatch.h"

#include "Line.h"

namespace Replay {

namespace {

std::string text(const Zel::String8& value) { return std::string(value.view()); }

std::string shownName(const Zel::String8& value) { return shown(value.view()); }

} // namespace

void UnitWatch::print(const std::string& what) { log_.line("unit " + shown(name().view()), what); }

void UnitWatch::value(std::string_view attribute, std::string_view value) {
  print(std::string(attribute) + " = " + std::string(value));
}

void UnitWatch::onUnitType() { value("unitType", stringValue(notifier()->unitType()).view()); }

void UnitWatch::onProfileName() { value("profileName", shownName(notifier()->profileName())); }

void UnitWatch::onState() { value("state", stringValue(notifier()->state()).view()); }

void UnitWatch::onReason() { value("reason", stringValue(notifier()->reason()).view()); }

void UnitWatch::onTimeOfStateChange() {
  value("timeOfStateChange", textOfTime(notifier()->timeOfStateChange()));
}

void UnitWatch::onOnBootMaintExitTime() {
  value("onBootMaintExitTime", textOfTime(notifier()->onBootMaintExitTime()));
}

void UnitWatch::onHistorySize() { value("historySize", std::to_string(notifier()->historySize())); }

void UnitWatch::onMaintEnterInstance() {
  value("maintEnterInstance", shownName(notifier()->maintEnterInstance()));
}

void UnitWatch::onMaintExitInstance() {
  value("maintExitInstance", shownName(notifier()->maintExitInstance()));
}

void UnitWatch::onAggTrafficRate() {
  const Maintenance::Unit::TrafficRates rates = notifier()->aggTrafficRate();
  value("aggTrafficRate", "in " + std::to_string(rates.inBitsRate()) + " out " +
                              std::to_string(rates.outBitsRate()) + " at " +
                              textOfTime(rates.statsUpdateTime()));
}

void UnitWatch::onTotalIntfTrafficViolations() {
  value("totalIntfTrafficViolations", std::to_string(notifier()->totalIntfTrafficViolations()));
}

void UnitWatch::onGenId() { value("genId", std::to_string(notifier()->genId())); }

// `group(key)` yields false both for a key that is not there and for one that holds false. The
// collection itself tells the two apart.

void UnitWatch::onGroup(const Group::GroupKey& key) {
  const bool isThere = notifier()->groupMap()[key] != nullptr;
  print("group " + text(stringValue(key.type())) + ' ' + shownName(key.name()) + ' ' +
        groups_.fate(key, isThere));
}

void UnitWatch::onIntfsViolatingTrafficThreshold(Vexil::IntfId key) {
  const bool isThere = notifier()->intfsViolatingTrafficThresholdMap()[key] != nullptr;
  print("intfsViolatingTrafficThreshold " + text(stringValue(key)) + ' ' +
        violating_.fate(key, isThere));
}

void UnitWatch::onHistory(const double& time) {
  const auto* const entry = notifier()->historyMap()[time];
  std::string what = "history " + textOfTime(time) + ' ' + history_.fate(time, entry != nullptr);
  if (entry != nullptr) {
    what += ' ' + quoted(entry->zelValue().view());
  }
  print(what);
}

void UnitsWatch::onStatus(Zel::Name unit) {
  const std::string subject = "unit " + shown(unit.view());
  if (const Zel::Ptr<Maintenance::Unit::Status> status = notifier()->status(unit)) {
    log_.line(subject, "added");
    // A unit that comes back is a new object: it needs a new watch.
    watches_[unit] = watch<UnitWatch>(status, log_);
  } else {
    log_.line(subject, "removed");
    // With its last handle the watch goes, and with the watch its count on the unit.
    watches_.erase(unit);
  }
}

} // namespace Replay
