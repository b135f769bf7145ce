#pragma once

#include <attrlog/AdapterOf.h>
#include <model/Unit/ConfigDir.h>

/// The attribute log of configured units.
namespace Maintenance::Unit {

class ZEL_API Config::ZelNboAttrLogSa : public Zel::AdapterOf<Config> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onUnitType() { zelOnSingular(Attr::unitType); }
  virtual void onGroup(const Group::GroupKey& key) { zelOnKey(Attr::group, &key); }
  virtual void onProfileName() { zelHandleProfileNameSerialize(); }

  void zelHandleGroupSerializeSing(const Group::GroupKey& key, bool value, bool deleted) {
    zelSerializeSing(Attr::group, &key, &value, deleted);
  }
  bool zelHandleGroupSerializeColl() { return zelSerializeColl(Attr::group); }
  bool zelHandleProfileNameSerialize() { return zelSerializeText(Attr::profileName); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<Config> {
public:
  void onUnitType() override { zelForward(&ZelNboAttrLogSa::onUnitType); }
  using Config::Notifiee::onGroup;
  void onGroup(const Group::GroupKey& key) override { zelForward(&ZelNboAttrLogSa::onGroup, key); }
  void onProfileName() override { zelForward(&ZelNboAttrLogSa::onProfileName); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API Config::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsUnitTypeDirtyIs(bool dirty) noexcept { is(Attr::unitType, dirty); }
    void zelGroupHasSyncedIs(bool synced) noexcept { is(Attr::group, synced); }
    void zelIsProfileNameDirtyIs(bool dirty) noexcept { is(Attr::profileName, dirty); }
  };
  class ZEL_API ZelZelIsGroupDirty
      : public Zel::MapEntry<ZelZelIsGroupDirty, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsGroupDirtyMap = Zel::HashMap<ZelZelIsGroupDirty, Group::GroupKey, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsGroupDirtyIs(const Group::GroupKey& key, bool dirty) {
    zelIsGroupDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsGroupDirty> newZelIsGroupDirty(const Group::GroupKey& key, bool dirty) {
    return zelIsGroupDirty_.add(key, dirty);
  }
  bool zelIsGroupDirtyDel(const Group::GroupKey& key) { return zelIsGroupDirty_.del(key); }
  bool zelIsGroupDirtyDel(ZelIsGroupDirtyMap::Iterator& at) { return zelIsGroupDirty_.del(at); }
  const ZelIsGroupDirtyMap& zelIsGroupDirtyMap() const noexcept { return zelIsGroupDirty_.map(); }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsGroupDirtyMap> zelIsGroupDirty_{*this, Attr::group};
};

class ZEL_API ConfigDir::ZelNboAttrLogSa : public Zel::AdapterOf<ConfigDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onConfig(Zel::Name unit) { zelOnKey(Attr::config, &unit); }

  void zelHandleConfigSerializeSing(Zel::Name key, const Zel::Ptr<Config>& child) {
    zelSerializeChild(Attr::config, &key, child.ptr());
  }
  bool zelHandleConfigSerializeColl() { return zelSerializeColl(Attr::config); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  configNboAttrLogAdapter(const Zel::Ptr<const Config>& child) const {
    return zelChildAdapter(const_cast<Config*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  configNboAttrLogAdapter(const Zel::Ptr<const Config>& child) {
    return zelChildAdapter(const_cast<Config*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  configNboAttrLogAdapterIs(Zel_BitSet flags, const Zel::Ptr<Config>& child, unsigned option,
                            const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/,
                            Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::config, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa> configNboAttrLogAdapterDel(const Zel::Ptr<Config>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API ConfigDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<ConfigDir> {
public:
  using ConfigDir::Notifiee::onConfig;
  void onConfig(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onConfig, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API ConfigDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelConfigHasSyncedIs(bool synced) noexcept { is(Attr::config, synced); }
  };
  class ZEL_API ZelZelIsConfigDirty : public Zel::MapEntry<ZelZelIsConfigDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsConfigDirtyMap = Zel::HashMap<ZelZelIsConfigDirty, Zel::Name, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsConfigDirtyIs(Zel::Name key, bool dirty) { zelIsConfigDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsConfigDirty> newZelIsConfigDirty(Zel::Name key, bool dirty) {
    return zelIsConfigDirty_.add(key, dirty);
  }
  bool zelIsConfigDirtyDel(Zel::Name key) { return zelIsConfigDirty_.del(key); }
  bool zelIsConfigDirtyDel(ZelIsConfigDirtyMap::Iterator& at) { return zelIsConfigDirty_.del(at); }
  const ZelIsConfigDirtyMap& zelIsConfigDirtyMap() const noexcept {
    return zelIsConfigDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsConfigDirtyMap> zelIsConfigDirty_{*this, Attr::config};
};

} // namespace Maintenance::Unit
