#pragma once

#include <generic/Reactor.h>
#include <model/MaintenanceUnitProfile.h>

/// The generic objects of unit profiles.
namespace MaintenanceUnitProfile {

class ZEL_API Config::GenericIf_ : public Zel::EntityGenericIf<Config> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Config>& object, bool isConst);

  void onOnBootDuration() { zelOnSingular(Attr::onBootDuration); }
  void onOnBootEnabled() { zelOnSingular(Attr::onBootEnabled); }

protected:
  ~GenericIf_() override;
};

class ZEL_API Config::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Config, Config::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onOnBootDuration() override { zelForward(&GenericIf_::onOnBootDuration); }
  void onOnBootEnabled() override { zelForward(&GenericIf_::onOnBootEnabled); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API ConfigDir::GenericIf_ : public Zel::EntityGenericIf<ConfigDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<ConfigDir>& object, bool isConst);

  void onConfig(Zel::String8 profileName) { zelOnMember(Attr::config, &profileName); }

protected:
  ~GenericIf_() override;
};

class ZEL_API ConfigDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<ConfigDir, ConfigDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onConfig(Zel::String8 profileName) override {
    zelForward(&GenericIf_::onConfig, profileName);
  }
  void onConfig() override { zelForwardCollection(Attr::config); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace MaintenanceUnitProfile
