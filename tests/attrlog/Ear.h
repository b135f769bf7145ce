#pragma once

#include <model/Unit/StatusDir.h>

#include <functional>
#include <string>
#include <vector>

namespace Wiretap {

/// Writes down what it hears of a unit.
class Ear : public Maintenance::Unit::Status::Notifiee {
public:
  void onUnitType() override { hear("unitType"); }
  using Maintenance::Unit::Status::Notifiee::onGroup;
  void onGroup(const Group::GroupKey& key) override { hear("group " + text(key.name())); }
  void onProfileName() override { hear("profileName"); }
  void onState() override { hear("state"); }
  void onReason() override { hear("reason"); }
  void onTimeOfStateChange() override { hear("timeOfStateChange"); }
  void onOnBootMaintExitTime() override { hear("onBootMaintExitTime"); }
  void onHistorySize() override { hear("historySize"); }
  using Maintenance::Unit::Status::Notifiee::onHistory;
  void onHistory(const double& time) override { hear("history " + std::to_string(int(time))); }
  void onMaintEnterInstance() override { hear("maintEnterInstance"); }
  void onMaintExitInstance() override { hear("maintExitInstance"); }
  void onAggTrafficRate() override { hear("aggTrafficRate"); }
  using Maintenance::Unit::Status::Notifiee::onIntfsViolatingTrafficThreshold;
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) override {
    hear("interface " + std::to_string(key.second()));
  }
  void onTotalIntfTrafficViolations() override { hear("totalIntfTrafficViolations"); }
  void onGenId() override { hear("genId"); }
  void onNotificationException(Zel::AttributeId id) override {
    heard.push_back("exception " + std::to_string(id));
  }

  std::vector<std::string> heard;
  /// Called at each change, with its word.
  std::function<void(const std::string&)> onHeard;

private:
  static std::string text(const Zel::String8& text) { return std::string(text.view()); }
  void hear(std::string what) {
    heard.push_back(what);
    if (onHeard) {
      onHeard(what);
    }
  }
};

/// The same for a directory.
class DirEar : public Maintenance::Unit::StatusDir::Notifiee {
public:
  using Maintenance::Unit::StatusDir::Notifiee::onStatus;
  void onStatus(Zel::Name unit) override {
    heard.emplace_back(unit.view());
    if (onHeard) {
      onHeard();
    }
  }

  std::vector<std::string> heard;
  std::function<void()> onHeard;
};

template <class E, class T>
Zel::Ptr<E> listen(const Zel::Ptr<T>& to) {
  auto ear = Zel::makeObject<E>();
  ear->isRegisteredNotifieeIs(true);
  ear->notifierIs(to);
  return ear;
}

} // namespace Wiretap
