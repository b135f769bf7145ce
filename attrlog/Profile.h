#pragma once

#include <attrlog/AdapterOf.h>
#include <model/Profile.h>

/// The attribute log of the profile types.
namespace Maintenance::Profile {

class ZEL_API Config::ZelNboAttrLogSa : public Zel::AdapterOf<Config> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<Config> {
public:
protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API Config::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  using EntityFlowOut::EntityFlowOut;

protected:
  ~FlowOut() override;
};

class ZEL_API ConfigDir::ZelNboAttrLogSa : public Zel::AdapterOf<ConfigDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onConfig(const ProfileKey& key) { zelOnKey(Attr::config, &key); }

  void zelHandleConfigSerializeSing(const ProfileKey& key, const Zel::Ptr<Config>& child) {
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
  void onConfig(const ProfileKey& key) override { zelForward(&ZelNboAttrLogSa::onConfig, key); }

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
  class ZEL_API ZelZelIsConfigDirty : public Zel::MapEntry<ZelZelIsConfigDirty, ProfileKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsConfigDirtyMap = Zel::HashMap<ZelZelIsConfigDirty, ProfileKey, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsConfigDirtyIs(const ProfileKey& key, bool dirty) { zelIsConfigDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsConfigDirty> newZelIsConfigDirty(const ProfileKey& key, bool dirty) {
    return zelIsConfigDirty_.add(key, dirty);
  }
  bool zelIsConfigDirtyDel(const ProfileKey& key) { return zelIsConfigDirty_.del(key); }
  bool zelIsConfigDirtyDel(ZelIsConfigDirtyMap::Iterator& at) { return zelIsConfigDirty_.del(at); }
  const ZelIsConfigDirtyMap& zelIsConfigDirtyMap() const noexcept {
    return zelIsConfigDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsConfigDirtyMap> zelIsConfigDirty_{*this, Attr::config};
};

class ZEL_API DefaultProfile::ZelNboAttrLogSa : public Zel::AdapterOf<DefaultProfile> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onProfileName() { zelHandleProfileNameSerialize(); }

  bool zelHandleProfileNameSerialize() { return zelSerializeText(Attr::profileName); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API DefaultProfile::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<DefaultProfile> {
public:
  void onProfileName() override { zelForward(&ZelNboAttrLogSa::onProfileName); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API DefaultProfile::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsProfileNameDirtyIs(bool dirty) noexcept { is(Attr::profileName, dirty); }
  };

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

protected:
  ~FlowOut() override;
};

} // namespace Maintenance::Profile
