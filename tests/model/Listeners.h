#pragma once

#include "support/Recorder.h"

#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>

namespace TestModel {

using Support::Log;
using Zel::Ptr;

inline std::string textOf(const Maintenance::Profile::ProfileKey& key) {
  return std::to_string(key.type()) + ':' + std::string(key.name().view());
}
inline std::string textOf(const Group::GroupKey& key) {
  return std::to_string(key.type()) + ':' + std::string(key.name().view());
}
inline std::string textOf(Vexil::IntfId key) { return std::string(stringValue(key).view()); }
inline std::string textOf(const Zel::String8& text) { return std::string(text.view()); }
inline std::string textOf(double key) {
  std::ostringstream out;
  out << key;
  return out.str();
}

inline std::string joined(const char* head, const std::string& tail) { return head + tail; }

/// What the listeners of all types share: they write down what they hear, under a label that may
/// be empty, and then do what they have been told to do.
template <class Notifiee>
class Listener : public Notifiee {
public:
  explicit Listener(Log& log, std::string label = "") : log_(log), label_(std::move(label)) {}

  void onZeroReferences() override { hear("zero"); }
  void onNotificationException(Zel::AttributeId id) override {
    log_.push_back(label_ + "exception " + std::to_string(id));
  }

  std::function<void()> onCall;

protected:
  void hear(const std::string& what) {
    log_.push_back(label_ + what);
    if (const auto call = onCall) { // a copy: the call may replace it
      call();
    }
  }

private:
  Log& log_;
  const std::string label_;
};

class ConfigListener : public Listener<Maintenance::Profile::Config::Notifiee> {
public:
  using Listener::Listener;
};

class DefaultProfileListener : public Listener<Maintenance::Profile::DefaultProfile::Notifiee> {
public:
  using Listener::Listener;
  void onProfileName() override { hear("onProfileName"); }
};

class ConfigDirListener : public Listener<Maintenance::Profile::ConfigDir::Notifiee> {
public:
  using Listener::Listener;
  void onConfig(const Maintenance::Profile::ProfileKey& key) override {
    hear(joined("on ", textOf(key)));
  }
  void onConfigzelImmediate() override { hear("immediate"); }
  void onConfig() override { hear("on any"); }
};

class UnitConfigDirListener : public Listener<Maintenance::Unit::ConfigDir::Notifiee> {
public:
  using Listener::Listener;
  void onConfig(Zel::Name unit) override { hear(joined("on ", textOf(unit))); }
  void onConfigzelImmediate() override { hear("immediate"); }
  void onConfig() override { hear("on any"); }
};

class UnitConfigListener : public Listener<Maintenance::Unit::Config::Notifiee> {
public:
  using Listener::Listener;
  void onUnitType() override { hear("onUnitType"); }
  void onGroup(const Group::GroupKey& key) override { hear(joined("onGroup ", textOf(key))); }
  void onGroupzelImmediate() override { hear("onGroupzelImmediate"); }
  void onGroup() override { hear("onGroup"); }
  void onProfileName() override { hear("onProfileName"); }
};

class InputListener : public Listener<Maintenance::Unit::Input::Notifiee> {
public:
  using Listener::Listener;
  void onPriority() override { hear("onPriority"); }
  void onUnit(Zel::String8 unitName) override { hear(joined("onUnit ", textOf(unitName))); }
  void onUnitzelImmediate() override { hear("onUnitzelImmediate"); }
  void onUnit() override { hear("onUnit"); }
};

class MergedInputListener : public Listener<Maintenance::Unit::MergedInput::Notifiee> {
public:
  using Listener::Listener;
  void onPriority() override { hear("onPriority"); }
};

class MergedInputDirListener : public Listener<Maintenance::Unit::MergedInputDir::Notifiee> {
public:
  using Listener::Listener;
  void onUnit(Zel::Name name) override { hear(joined("on ", textOf(name))); }
  void onUnitzelImmediate() override { hear("immediate"); }
  void onUnit() override { hear("on any"); }
};

class StatusDirListener : public Listener<Maintenance::Unit::StatusDir::Notifiee> {
public:
  using Listener::Listener;
  void onStatus(Zel::Name unit) override { hear(joined("on ", textOf(unit))); }
  void onStatuszelImmediate() override { hear("immediate"); }
  void onStatus() override { hear("on any"); }
};

class StatusListener : public Listener<Maintenance::Unit::Status::Notifiee> {
public:
  using Listener::Listener;
  void onUnitType() override { hear("onUnitType"); }
  void onGroup(const Group::GroupKey& key) override { hear(joined("onGroup ", textOf(key))); }
  void onGroupzelImmediate() override { hear("onGroupzelImmediate"); }
  void onGroup() override { hear("onGroup"); }
  void onProfileName() override { hear("onProfileName"); }
  void onState() override { hear("onState"); }
  void onReason() override { hear("onReason"); }
  void onTimeOfStateChange() override { hear("onTimeOfStateChange"); }
  void onOnBootMaintExitTime() override { hear("onOnBootMaintExitTime"); }
  void onHistorySize() override { hear("onHistorySize"); }
  void onHistory(const double& time) override { hear(joined("onHistory ", textOf(time))); }
  void onHistoryzelImmediate() override { hear("onHistoryzelImmediate"); }
  void onHistory() override { hear("onHistory"); }
  void onMaintEnterInstance() override { hear("onMaintEnterInstance"); }
  void onMaintExitInstance() override { hear("onMaintExitInstance"); }
  void onAggTrafficRate() override { hear("onAggTrafficRate"); }
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) override {
    hear(joined("onIntfsViolatingTrafficThreshold ", textOf(key)));
  }
  void onIntfsViolatingTrafficThresholdzelImmediate() override {
    hear("onIntfsViolatingTrafficThresholdzelImmediate");
  }
  void onIntfsViolatingTrafficThreshold() override { hear("onIntfsViolatingTrafficThreshold"); }
  void onTotalIntfTrafficViolations() override { hear("onTotalIntfTrafficViolations"); }
  void onGenId() override { hear("onGenId"); }
};

class GroupToUnitDirListener : public Listener<Maintenance::GroupToUnitDir::Notifiee> {
public:
  using Listener::Listener;
  void onGroupToUnit(const Group::GroupKey& key) override { hear(joined("on ", textOf(key))); }
  void onGroupToUnitzelImmediate() override { hear("immediate"); }
  void onGroupToUnit() override { hear("on any"); }
};

class GroupListener : public Listener<Maintenance::MaintenanceGroup::Config::Notifiee> {
public:
  using Listener::Listener;
  void onProfile(const Maintenance::Profile::ProfileKey& key) override {
    hear(joined("onProfile ", textOf(key)));
  }
  void onProfilezelImmediate() override { hear("onProfilezelImmediate"); }
  void onProfile() override { hear("onProfile"); }
};

class GroupDirListener : public Listener<Maintenance::MaintenanceGroup::ConfigDir::Notifiee> {
public:
  using Listener::Listener;
  void onMaintenanceGroup(const Group::GroupKey& key) override { hear(joined("on ", textOf(key))); }
  void onMaintenanceGroupzelImmediate() override { hear("immediate"); }
  void onMaintenanceGroup() override { hear("on any"); }
};

class UnitProfileListener : public Listener<MaintenanceUnitProfile::Config::Notifiee> {
public:
  using Listener::Listener;
  void onOnBootDuration() override { hear("onOnBootDuration"); }
  void onOnBootEnabled() override { hear("onOnBootEnabled"); }
};

class UnitProfileDirListener : public Listener<MaintenanceUnitProfile::ConfigDir::Notifiee> {
public:
  using Listener::Listener;
  void onConfig(Zel::String8 profileName) override { hear(joined("on ", textOf(profileName))); }
  void onConfigzelImmediate() override { hear("immediate"); }
  void onConfig() override { hear("on any"); }
};

class AgentInfoListener : public Listener<Maintenance::AgentInfo::Notifiee> {
public:
  using Listener::Listener;
  void onAgentPid() override { hear("onAgentPid"); }
  void onRestartCount() override { hear("onRestartCount"); }
  void onOnBoot() override { hear("onOnBoot"); }
  void onOnBootMaintEnter(Zel::String8 unitName) override {
    hear(joined("onOnBootMaintEnter ", textOf(unitName)));
  }
  void onOnBootMaintEnterzelImmediate() override { hear("onOnBootMaintEnterzelImmediate"); }
  void onOnBootMaintEnter() override { hear("onOnBootMaintEnter"); }
  void onReady() override { hear("onReady"); }
};

/// A registered listener of an entity.
template <class L, class E, class... Arguments>
Ptr<L> listen(const Ptr<E>& to, Arguments&&... arguments) {
  auto listener = Zel::makeObject<L>(std::forward<Arguments>(arguments)...);
  listener->isRegisteredNotifieeIs(true);
  listener->notifierIs(to);
  return listener;
}

/// The two counters of an entity, to tell how far they have moved since.
class Counters {
public:
  explicit Counters(const Zel::Entity& entity)
      : entity_(entity), version_(entity.versionCounter()), reads_(entity.readCounter()) {}

  unsigned changes() const { return entity_.versionCounter() - version_; }
  unsigned reads() const { return entity_.readCounter() - reads_; }

private:
  const Zel::Entity& entity_;
  const unsigned version_;
  const unsigned reads_;
};

/// Expects that `work` moves the version counter and the read counter by so much.
template <class Work>
void expectMoves(const Zel::Entity& entity, unsigned changes, unsigned reads, Work&& work) {
  const Counters counters(entity);
  work();
  EXPECT_EQ(counters.changes(), changes) << "moves of the version counter";
  EXPECT_EQ(counters.reads(), reads) << "moves of the read counter";
}

} // namespace TestModel
