#pragma once

#include <attrlog/AdapterOf.h>
#include <attrlog/Profile.h>
#include <model/MaintenanceUnitProfile.h>

/// The attribute log of unit profiles.
namespace MaintenanceUnitProfile {

class ZEL_API Config::ZelNboAttrLogSa
    : public Zel::AdapterOf<Config, Maintenance::Profile::Config::ZelNboAttrLogSa> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onOnBootDuration() { zelOnSingular(Attr::onBootDuration); }
  virtual void onOnBootEnabled() { zelOnSingular(Attr::onBootEnabled); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<Config> {
public:
  void onOnBootDuration() override { zelForward(&ZelNboAttrLogSa::onOnBootDuration); }
  void onOnBootEnabled() override { zelForward(&ZelNboAttrLogSa::onOnBootEnabled); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API Config::ZelNboAttrLogSa::FlowOut
    : public Maintenance::Profile::Config::ZelNboAttrLogSa::FlowOut {
public:
  class ZelDirtyBitSet1 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(1); }
    void zelIsOnBootDurationDirtyIs(bool dirty) noexcept { is(Attr::onBootDuration, dirty); }
    void zelIsOnBootEnabledDirtyIs(bool dirty) noexcept { is(Attr::onBootEnabled, dirty); }
  };

  using Maintenance::Profile::Config::ZelNboAttrLogSa::FlowOut::FlowOut;

  ZelDirtyBitSet1 zelDirtyBitSet1() noexcept { return ZelDirtyBitSet1(*this); }

protected:
  ~FlowOut() override;
};

class ZEL_API ConfigDir::ZelNboAttrLogSa : public Zel::AdapterOf<ConfigDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onConfig(Zel::String8 profileName) { zelOnKey(Attr::config, &profileName); }

  void zelHandleConfigSerializeSing(Zel::String8 key, const Zel::Ptr<Config>& child) {
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
  void onConfig(Zel::String8 profileName) override {
    zelForward(&ZelNboAttrLogSa::onConfig, profileName);
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
    void zelConfigHasSyncedIs(bool synced) noexcept { is(Attr::config, synced); }
  };
  class ZEL_API ZelZelIsConfigDirty
      : public Zel::MapEntry<ZelZelIsConfigDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsConfigDirtyMap = Zel::HashMap<ZelZelIsConfigDirty, Zel::String8, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsConfigDirtyIs(Zel::String8 key, bool dirty) { zelIsConfigDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsConfigDirty> newZelIsConfigDirty(Zel::String8 key, bool dirty) {
    return zelIsConfigDirty_.add(key, dirty);
  }
  bool zelIsConfigDirtyDel(Zel::String8 key) { return zelIsConfigDirty_.del(key); }
  bool zelIsConfigDirtyDel(ZelIsConfigDirtyMap::Iterator& at) { return zelIsConfigDirty_.del(at); }
  const ZelIsConfigDirtyMap& zelIsConfigDirtyMap() const noexcept {
    return zelIsConfigDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsConfigDirtyMap> zelIsConfigDirty_{*this, Attr::config};
};

} // namespace MaintenanceUnitProfile
