#pragma once

#include <generic/Reactor.h>
#include <model/MaintenanceGroup.h>

/// The generic objects of maintenance groups.
namespace Maintenance::MaintenanceGroup {

class ZEL_API Config::GenericIf_ : public Zel::EntityGenericIf<Config> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Config>& object, bool isConst);

  void onProfile(const Profile::ProfileKey& key) { zelOnMember(Attr::profile, &key); }

protected:
  ~GenericIf_() override;
};

class ZEL_API Config::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Config, Config::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onProfile(const Profile::ProfileKey& key) override {
    zelForward(&GenericIf_::onProfile, key);
  }
  void onProfile() override { zelForwardCollection(Attr::profile); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API ConfigDir::GenericIf_ : public Zel::EntityGenericIf<ConfigDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<ConfigDir>& object, bool isConst);

  void onMaintenanceGroup(const Group::GroupKey& key) { zelOnMember(Attr::maintenanceGroup, &key); }

protected:
  ~GenericIf_() override;
};

class ZEL_API ConfigDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<ConfigDir, ConfigDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onMaintenanceGroup(const Group::GroupKey& key) override {
    zelForward(&GenericIf_::onMaintenanceGroup, key);
  }
  void onMaintenanceGroup() override { zelForwardCollection(Attr::maintenanceGroup); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace Maintenance::MaintenanceGroup
