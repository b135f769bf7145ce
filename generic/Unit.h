#pragma once

#include <generic/Reactor.h>
#include <generic/Value.h>
#include <model/Unit.h>

/// The generic objects of the unit types.
namespace Maintenance::Unit {

class ZEL_API Config::GenericIf_ : public Zel::EntityGenericIf<Config> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Config>& object, bool isConst);

  void onUnitType() { zelOnSingular(Attr::unitType); }
  void onGroup(const Group::GroupKey& key) { zelOnMember(Attr::group, &key); }
  void onProfileName() { zelOnSingular(Attr::profileName); }

protected:
  ~GenericIf_() override;
};

class ZEL_API Config::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Config, Config::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onUnitType() override { zelForward(&GenericIf_::onUnitType); }
  void onGroup(const Group::GroupKey& key) override { zelForward(&GenericIf_::onGroup, key); }
  void onGroup() override { zelForwardCollection(Attr::group); }
  void onProfileName() override { zelForward(&GenericIf_::onProfileName); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API ConfigDir::GenericIf_ : public Zel::EntityGenericIf<ConfigDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<ConfigDir>& object, bool isConst);

  void onConfig(Zel::Name unit) { zelOnMember(Attr::config, &unit); }

protected:
  ~GenericIf_() override;
};

class ZEL_API ConfigDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<ConfigDir, ConfigDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onConfig(Zel::Name unit) override { zelForward(&GenericIf_::onConfig, unit); }
  void onConfig() override { zelForwardCollection(Attr::config); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API Status::GenericIf_ : public Zel::EntityGenericIf<Status> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Status>& object, bool isConst);

  void onUnitType() { zelOnSingular(Attr::unitType); }
  void onGroup(const Group::GroupKey& key) { zelOnMember(Attr::group, &key); }
  void onProfileName() { zelOnSingular(Attr::profileName); }
  void onState() { zelOnSingular(Attr::state); }
  void onReason() { zelOnSingular(Attr::reason); }
  void onTimeOfStateChange() { zelOnSingular(Attr::timeOfStateChange); }
  void onOnBootMaintExitTime() { zelOnSingular(Attr::onBootMaintExitTime); }
  void onHistorySize() { zelOnSingular(Attr::historySize); }
  void onHistory(const double& time) { zelOnMember(Attr::history, &time); }
  void onMaintEnterInstance() { zelOnSingular(Attr::maintEnterInstance); }
  void onMaintExitInstance() { zelOnSingular(Attr::maintExitInstance); }
  void onAggTrafficRate() { zelOnSingular(Attr::aggTrafficRate); }
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) {
    zelOnMember(Attr::intfsViolatingTrafficThreshold, &key);
  }
  void onTotalIntfTrafficViolations() { zelOnSingular(Attr::totalIntfTrafficViolations); }
  void onGenId() { zelOnSingular(Attr::genId); }

protected:
  ~GenericIf_() override;
};

class ZEL_API Status::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Status, Status::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onUnitType() override { zelForward(&GenericIf_::onUnitType); }
  void onGroup(const Group::GroupKey& key) override { zelForward(&GenericIf_::onGroup, key); }
  void onGroup() override { zelForwardCollection(Attr::group); }
  void onProfileName() override { zelForward(&GenericIf_::onProfileName); }
  void onState() override { zelForward(&GenericIf_::onState); }
  void onReason() override { zelForward(&GenericIf_::onReason); }
  void onTimeOfStateChange() override { zelForward(&GenericIf_::onTimeOfStateChange); }
  void onOnBootMaintExitTime() override { zelForward(&GenericIf_::onOnBootMaintExitTime); }
  void onHistorySize() override { zelForward(&GenericIf_::onHistorySize); }
  void onHistory(const double& time) override { zelForward(&GenericIf_::onHistory, time); }
  void onHistory() override { zelForwardCollection(Attr::history); }
  void onMaintEnterInstance() override { zelForward(&GenericIf_::onMaintEnterInstance); }
  void onMaintExitInstance() override { zelForward(&GenericIf_::onMaintExitInstance); }
  void onAggTrafficRate() override { zelForward(&GenericIf_::onAggTrafficRate); }
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) override {
    zelForward(&GenericIf_::onIntfsViolatingTrafficThreshold, key);
  }
  void onIntfsViolatingTrafficThreshold() override {
    zelForwardCollection(Attr::intfsViolatingTrafficThreshold);
  }
  void onTotalIntfTrafficViolations() override {
    zelForward(&GenericIf_::onTotalIntfTrafficViolations);
  }
  void onGenId() override { zelForward(&GenericIf_::onGenId); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API StatusDir::GenericIf_ : public Zel::EntityGenericIf<StatusDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<StatusDir>& object, bool isConst);

  void onStatus(Zel::Name unit) { zelOnMember(Attr::status, &unit); }

protected:
  ~GenericIf_() override;
};

class ZEL_API StatusDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<StatusDir, StatusDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onStatus(Zel::Name unit) override { zelForward(&GenericIf_::onStatus, unit); }
  void onStatus() override { zelForwardCollection(Attr::status); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API Input::GenericIf_ : public Zel::EntityGenericIf<Input> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Input>& object, bool isConst);

  void onPriority() { zelOnSingular(Attr::priority); }
  void onUnit(Zel::String8 unitName) { zelOnMember(Attr::unit, &unitName); }

protected:
  ~GenericIf_() override;
};

class ZEL_API Input::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Input, Input::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onPriority() override { zelForward(&GenericIf_::onPriority); }
  void onUnit(Zel::String8 unitName) override { zelForward(&GenericIf_::onUnit, unitName); }
  void onUnit() override { zelForwardCollection(Attr::unit); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API MergedInput::GenericIf_ : public Zel::EntityGenericIf<MergedInput> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<MergedInput>& object, bool isConst);

  void onPriority() { zelOnSingular(Attr::priority); }

protected:
  ~GenericIf_() override;
};

class ZEL_API MergedInput::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<MergedInput, MergedInput::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onPriority() override { zelForward(&GenericIf_::onPriority); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API MergedInputDir::GenericIf_ : public Zel::EntityGenericIf<MergedInputDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<MergedInputDir>& object, bool isConst);

  void onUnit(Zel::Name name) { zelOnMember(Attr::unit, &name); }

protected:
  ~GenericIf_() override;
};

class ZEL_API MergedInputDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<MergedInputDir, MergedInputDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onUnit(Zel::Name name) override { zelForward(&GenericIf_::onUnit, name); }
  void onUnit() override { zelForwardCollection(Attr::unit); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace Maintenance::Unit
