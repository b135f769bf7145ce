#include "Subject.h"

#include <model/Unit.h>

namespace Conformance {

namespace {

using namespace Maintenance::Unit;
using Attr = Status::Attr;

class ConfigRecorder : public Recorder<Config> {
  void onUnitType() override { hear(Config::Attr::unitType); }
  void onGroup(const Group::GroupKey& key) override { hear(Config::Attr::group, key); }
  void onGroup() override { hear(Config::Attr::group); }
  void onProfileName() override { hear(Config::Attr::profileName); }
};

class ConfigDirRecorder : public Recorder<ConfigDir> {
  void onConfig(Zel::Name unit) override { hear(ConfigDir::Attr::config, unit); }
  void onConfig() override { hear(ConfigDir::Attr::config); }
};

class StatusRecorder : public Recorder<Status> {
  void onUnitType() override { hear(Attr::unitType); }
  void onGroup(const Group::GroupKey& key) override { hear(Attr::group, key); }
  void onGroup() override { hear(Attr::group); }
  void onProfileName() override { hear(Attr::profileName); }
  void onState() override { hear(Attr::state); }
  void onReason() override { hear(Attr::reason); }
  void onTimeOfStateChange() override { hear(Attr::timeOfStateChange); }
  void onOnBootMaintExitTime() override { hear(Attr::onBootMaintExitTime); }
  void onHistorySize() override { hear(Attr::historySize); }
  void onHistory(const double& time) override { hear(Attr::history, time); }
  void onHistory() override { hear(Attr::history); }
  void onMaintEnterInstance() override { hear(Attr::maintEnterInstance); }
  void onMaintExitInstance() override { hear(Attr::maintExitInstance); }
  void onAggTrafficRate() override { hear(Attr::aggTrafficRate); }
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) override {
    hear(Attr::intfsViolatingTrafficThreshold, key);
  }
  void onIntfsViolatingTrafficThreshold() override { hear(Attr::intfsViolatingTrafficThreshold); }
  void onTotalIntfTrafficViolations() override { hear(Attr::totalIntfTrafficViolations); }
  void onGenId() override { hear(Attr::genId); }
};

class StatusDirRecorder : public Recorder<StatusDir> {
  void onStatus(Zel::Name unit) override { hear(StatusDir::Attr::status, unit); }
  void onStatus() override { hear(StatusDir::Attr::status); }
};

class InputRecorder : public Recorder<Input> {
  void onPriority() override { hear(Input::Attr::priority); }
  void onUnit(Zel::String8 unitName) override { hear(Input::Attr::unit, unitName); }
  void onUnit() override { hear(Input::Attr::unit); }
};

class MergedInputRecorder : public Recorder<MergedInput> {
  void onPriority() override { hear(MergedInput::Attr::priority); }
};

class MergedInputDirRecorder : public Recorder<MergedInputDir> {
  void onUnit(Zel::Name name) override { hear(MergedInputDir::Attr::unit, name); }
  void onUnit() override { hear(MergedInputDir::Attr::unit); }
};

Subject statusSubject() {
  return SubjectOf<Status, StatusRecorder>("Status", [] { return statusFactory("Linecard3"); })
      .reads<&Status::unitName>(Attr::unitName, "Linecard3")
      .reads<&Status::unitType>(Attr::unitType, userConfigured)
      .looksUp<&Status::group, &Status::groupMap>(Attr::group)
      .reads<&Status::profileName>(Attr::profileName, "")
      .reads<&Status::state>(Attr::state, init)
      .reads<&Status::reason>(Attr::reason, srcUnknown)
      .reads<&Status::timeOfStateChange>(Attr::timeOfStateChange, 0.0)
      .reads<&Status::onBootMaintExitTime>(Attr::onBootMaintExitTime, 0.0)
      .reads<&Status::defaultHistorySize>(Attr::defaultHistorySize, 12)
      .reads<&Status::historySize>(Attr::historySize, 12)
      .looksUp<&Status::history, &Status::historyMap>(Attr::history)
      .reads<&Status::maintEnterInstance>(Attr::maintEnterInstance, "")
      .reads<&Status::maintExitInstance>(Attr::maintExitInstance, "")
      .reads<&Status::aggTrafficRate>(Attr::aggTrafficRate, TrafficRates())
      .looksUp<&Status::intfsViolatingTrafficThreshold, &Status::intfsViolatingTrafficThresholdMap>(
          Attr::intfsViolatingTrafficThreshold)
      .reads<&Status::totalIntfTrafficViolations>(Attr::totalIntfTrafficViolations, 0)
      .reads<&Status::genId>(Attr::genId, 0)
      .reads<&Status::fwkKey>(Zel::fwkKeyId, "Linecard3");
}

} // namespace

void addUnitSubjects(std::vector<Subject>& all) {
  all.push_back(
      SubjectOf<BuiltinUnitName>("BuiltinUnitName", [] { return BuiltinUnitName(); })
          .reads<&BuiltinUnitName::system>(BuiltinUnitName::Attr::system, "System")
          .reads<&BuiltinUnitName::linecard>(BuiltinUnitName::Attr::linecard, "Linecard"));
  using Classes = MaintenanceStageClasses;
  all.push_back(SubjectOf<Classes>("MaintenanceStageClasses", [] { return Classes(); })
                    .reads<&Classes::maintEnterClass>(Classes::Attr::maintEnterClass, "maintEnter")
                    .reads<&Classes::maintExitClass>(Classes::Attr::maintExitClass, "maintExit"));
  using List = MaintenanceStageList;
  all.push_back(SubjectOf<List>("MaintenanceStageList", [] { return List(); })
                    .reads<&List::bgpStage>(List::Attr::bgpStage, "bgp")
                    .reads<&List::rateMonStage>(List::Attr::rateMonStage, "ratemon"));
  using Rates = TrafficRates;
  all.push_back(SubjectOf<Rates>("TrafficRates", [] { return Rates(); })
                    .reads<&Rates::outBitsRate>(Rates::Attr::outBitsRate, 0)
                    .reads<&Rates::inBitsRate>(Rates::Attr::inBitsRate, 0)
                    .reads<&Rates::statsUpdateTime>(Rates::Attr::statsUpdateTime, 0.0));
  using Key = StageMgrInstKey;
  all.push_back(
      SubjectOf<Key>("StageMgrInstKey", [] { return Key(); })
          .reads<&Key::instanceName>(Key::Attr::instanceName, "#0", {"System#1", "a#4294967295"})
          .reads<&Key::unitName>(Key::Attr::unitName, "")
          .reads<&Key::genId>(Key::Attr::genId, 0));
  all.push_back(
      SubjectOf<Config, ConfigRecorder>("UnitConfig", [] { return configFactory("Linecard3"); })
          .reads<&Config::unitName>(Config::Attr::unitName, "Linecard3")
          .reads<&Config::unitType>(Config::Attr::unitType, userConfigured)
          .looksUp<&Config::group, &Config::groupMap>(Config::Attr::group)
          .reads<&Config::profileName>(Config::Attr::profileName, "")
          .reads<&Config::fwkKey>(Zel::fwkKeyId, "Linecard3"));
  all.push_back(SubjectOf<ConfigDir, ConfigDirRecorder>("UnitConfigDir", [] {
                  return configDirFactory("dir");
                }).finds<&ConfigDir::config, &ConfigDir::configMap>(ConfigDir::Attr::config));
  all.push_back(statusSubject());
  all.push_back(SubjectOf<StatusDir, StatusDirRecorder>("StatusDir", [] {
                  return statusDirFactory("dir");
                }).finds<&StatusDir::status, &StatusDir::statusMap>(StatusDir::Attr::status));
  all.push_back(SubjectOf<Input, InputRecorder>("Input", [] { return inputFactory("cli"); })
                    .reads<&Input::priority>(Input::Attr::priority, srcUnknown)
                    .looksUp<&Input::unit, &Input::unitMap>(Input::Attr::unit));
  all.push_back(SubjectOf<MergedInput, MergedInputRecorder>(
                    "MergedInput", [] { return mergedInputFactory("Linecard3", srcOnBoot); })
                    .reads<&MergedInput::unitName>(MergedInput::Attr::unitName, "Linecard3")
                    .reads<&MergedInput::priority>(MergedInput::Attr::priority, srcOnBoot)
                    .reads<&MergedInput::fwkKey>(Zel::fwkKeyId, "Linecard3"));
  all.push_back(
      SubjectOf<MergedInputDir, MergedInputDirRecorder>("MergedInputDir", [] {
        return mergedInputDirFactory("dir");
      }).finds<&MergedInputDir::unit, &MergedInputDir::unitMap>(MergedInputDir::Attr::unit));
}

} // namespace Conformance
