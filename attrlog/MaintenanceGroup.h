#pragma once

#include <attrlog/AdapterOf.h>
#include <model/MaintenanceGroup.h>

/// The attribute log of maintenance groups.
namespace Maintenance::MaintenanceGroup {

class ZEL_API Config::ZelNboAttrLogSa : public Zel::AdapterOf<Config> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onProfile(const Profile::ProfileKey& key) { zelOnKey(Attr::profile, &key); }

  void zelHandleProfileSerializeSing(const Profile::ProfileKey& key, bool value, bool deleted) {
    zelSerializeSing(Attr::profile, &key, &value, deleted);
  }
  bool zelHandleProfileSerializeColl() { return zelSerializeColl(Attr::profile); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<Config> {
public:
  using Config::Notifiee::onProfile;
  void onProfile(const Profile::ProfileKey& key) override {
    zelForward(&ZelNboAttrLogSa::onProfile, key);
  }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API Config::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelProfileHasSyncedIs(bool synced) noexcept { is(Attr::profile, synced); }
  };
  class ZEL_API ZelZelIsProfileDirty
      : public Zel::MapEntry<ZelZelIsProfileDirty, Profile::ProfileKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsProfileDirtyMap = Zel::HashMap<ZelZelIsProfileDirty, Profile::ProfileKey, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsProfileDirtyIs(const Profile::ProfileKey& key, bool dirty) {
    zelIsProfileDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsProfileDirty> newZelIsProfileDirty(const Profile::ProfileKey& key, bool dirty) {
    return zelIsProfileDirty_.add(key, dirty);
  }
  bool zelIsProfileDirtyDel(const Profile::ProfileKey& key) { return zelIsProfileDirty_.del(key); }
  bool zelIsProfileDirtyDel(ZelIsProfileDirtyMap::Iterator& at) {
    return zelIsProfileDirty_.del(at);
  }
  const ZelIsProfileDirtyMap& zelIsProfileDirtyMap() const noexcept {
    return zelIsProfileDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsProfileDirtyMap> zelIsProfileDirty_{*this, Attr::profile};
};

class ZEL_API ConfigDir::ZelNboAttrLogSa : public Zel::AdapterOf<ConfigDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onMaintenanceGroup(const Group::GroupKey& key) {
    zelOnKey(Attr::maintenanceGroup, &key);
  }

  void zelHandleMaintenanceGroupSerializeSing(const Group::GroupKey& key,
                                              const Zel::Ptr<Config>& child) {
    zelSerializeChild(Attr::maintenanceGroup, &key, child.ptr());
  }
  bool zelHandleMaintenanceGroupSerializeColl() { return zelSerializeColl(Attr::maintenanceGroup); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  maintenanceGroupNboAttrLogAdapter(const Zel::Ptr<const Config>& child) const {
    return zelChildAdapter(const_cast<Config*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  maintenanceGroupNboAttrLogAdapter(const Zel::Ptr<const Config>& child) {
    return zelChildAdapter(const_cast<Config*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa> maintenanceGroupNboAttrLogAdapterIs(
      Zel_BitSet flags, const Zel::Ptr<Config>& child, unsigned option,
      const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/, Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::maintenanceGroup, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  maintenanceGroupNboAttrLogAdapterDel(const Zel::Ptr<Config>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API ConfigDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<ConfigDir> {
public:
  using ConfigDir::Notifiee::onMaintenanceGroup;
  void onMaintenanceGroup(const Group::GroupKey& key) override {
    zelForward(&ZelNboAttrLogSa::onMaintenanceGroup, key);
  }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API ConfigDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelMaintenanceGroupHasSyncedIs(bool synced) noexcept {
      is(Attr::maintenanceGroup, synced);
    }
  };
  class ZEL_API ZelZelIsMaintenanceGroupDirty
      : public Zel::MapEntry<ZelZelIsMaintenanceGroupDirty, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsMaintenanceGroupDirtyMap =
      Zel::HashMap<ZelZelIsMaintenanceGroupDirty, Group::GroupKey, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsMaintenanceGroupDirtyIs(const Group::GroupKey& key, bool dirty) {
    zelIsMaintenanceGroupDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsMaintenanceGroupDirty> newZelIsMaintenanceGroupDirty(const Group::GroupKey& key,
                                                                        bool dirty) {
    return zelIsMaintenanceGroupDirty_.add(key, dirty);
  }
  bool zelIsMaintenanceGroupDirtyDel(const Group::GroupKey& key) {
    return zelIsMaintenanceGroupDirty_.del(key);
  }
  bool zelIsMaintenanceGroupDirtyDel(ZelIsMaintenanceGroupDirtyMap::Iterator& at) {
    return zelIsMaintenanceGroupDirty_.del(at);
  }
  const ZelIsMaintenanceGroupDirtyMap& zelIsMaintenanceGroupDirtyMap() const noexcept {
    return zelIsMaintenanceGroupDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsMaintenanceGroupDirtyMap> zelIsMaintenanceGroupDirty_{*this,
                                                                            Attr::maintenanceGroup};
};

} // namespace Maintenance::MaintenanceGroup
