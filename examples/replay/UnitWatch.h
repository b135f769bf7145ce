#pragma once

#include "Log.h"
#include "Watch.h"

#include <model/Unit.h>

#include <map>
#include <string>

namespace Replay {

/// Prints every change of one unit.
///
/// It remembers which keys it has heard of and begins with none, so it must watch its unit from
/// before the first change.
class UnitWatch : public Maintenance::Unit::Status::Notifiee {
public:
  explicit UnitWatch(Log& log) : log_(log) {}

  void onUnitType() override;
  void onProfileName() override;
  void onState() override;
  void onReason() override;
  void onTimeOfStateChange() override;
  void onOnBootMaintExitTime() override;
  void onHistorySize() override;
  void onMaintEnterInstance() override;
  void onMaintExitInstance() override;
  void onAggTrafficRate() override;
  void onTotalIntfTrafficViolations() override;
  void onGenId() override;

  using Notifiee::onGroup;
  void onGroup(const Group::GroupKey& key) override;
  using Notifiee::onHistory;
  void onHistory(const double& time) override;
  using Notifiee::onIntfsViolatingTrafficThreshold;
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) override;

protected:
  ~UnitWatch() override = default;

private:
  /// Prints the new value of an attribute.
  void value(std::string_view attribute, std::string_view text);
  void print(const std::string& what);

  Log& log_;
  Known<Group::GroupKey> groups_;
  Known<double> history_;
  Known<Vexil::IntfId> violating_;
};

/// Prints the units that come and go, and keeps a `UnitWatch` on each.
///
/// A directory tells of its members coming and going, not of changes inside them: those are heard
/// by a notifiee on each member.
class UnitsWatch : public Maintenance::Unit::StatusDir::Notifiee {
public:
  explicit UnitsWatch(Log& log) : log_(log) {}

  using Notifiee::onStatus;
  void onStatus(Zel::Name unit) override;

protected:
  ~UnitsWatch() override = default;

private:
  Log& log_;
  std::map<Zel::Name, Zel::Ptr<UnitWatch>> watches_; ///< these handles keep the notifiees alive
};

} // namespace Replay
