#pragma once

#include <attrlog/AdapterOf.h>
#include <model/Unit/Input.h>
#include <model/Unit/MergedInputDir.h>

/// The attribute log of inputs.
namespace Maintenance::Unit {

class ZEL_API Input::ZelNboAttrLogSa : public Zel::AdapterOf<Input> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onPriority() { zelOnSingular(Attr::priority); }
  virtual void onUnit(Zel::String8 unitName) { zelOnKey(Attr::unit, &unitName); }

  void zelHandleUnitSerializeSing(Zel::String8 key, bool value, bool deleted) {
    zelSerializeSing(Attr::unit, &key, &value, deleted);
  }
  bool zelHandleUnitSerializeColl() { return zelSerializeColl(Attr::unit); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API Input::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Input> {
public:
  void onPriority() override { zelForward(&ZelNboAttrLogSa::onPriority); }
  using Input::Notifiee::onUnit;
  void onUnit(Zel::String8 key) override { zelForward(&ZelNboAttrLogSa::onUnit, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API Input::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsPriorityDirtyIs(bool dirty) noexcept { is(Attr::priority, dirty); }
    void zelUnitHasSyncedIs(bool synced) noexcept { is(Attr::unit, synced); }
  };
  class ZEL_API ZelZelIsUnitDirty : public Zel::MapEntry<ZelZelIsUnitDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsUnitDirtyMap = Zel::HashMap<ZelZelIsUnitDirty, Zel::String8, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsUnitDirtyIs(Zel::String8 key, bool dirty) { zelIsUnitDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsUnitDirty> newZelIsUnitDirty(Zel::String8 key, bool dirty) {
    return zelIsUnitDirty_.add(key, dirty);
  }
  bool zelIsUnitDirtyDel(Zel::String8 key) { return zelIsUnitDirty_.del(key); }
  bool zelIsUnitDirtyDel(ZelIsUnitDirtyMap::Iterator& at) { return zelIsUnitDirty_.del(at); }
  const ZelIsUnitDirtyMap& zelIsUnitDirtyMap() const noexcept { return zelIsUnitDirty_.map(); }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsUnitDirtyMap> zelIsUnitDirty_{*this, Attr::unit};
};

class ZEL_API MergedInput::ZelNboAttrLogSa : public Zel::AdapterOf<MergedInput> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onPriority() { zelOnSingular(Attr::priority); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API MergedInput::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<MergedInput> {
public:
  void onPriority() override { zelForward(&ZelNboAttrLogSa::onPriority); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API MergedInput::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsPriorityDirtyIs(bool dirty) noexcept { is(Attr::priority, dirty); }
  };

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

protected:
  ~FlowOut() override;
};

class ZEL_API MergedInputDir::ZelNboAttrLogSa : public Zel::AdapterOf<MergedInputDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onUnit(Zel::Name name) { zelOnKey(Attr::unit, &name); }

  void zelHandleUnitSerializeSing(Zel::Name key, const Zel::Ptr<MergedInput>& child) {
    zelSerializeChild(Attr::unit, &key, child.ptr());
  }
  bool zelHandleUnitSerializeColl() { return zelSerializeColl(Attr::unit); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  unitNboAttrLogAdapter(const Zel::Ptr<const MergedInput>& child) const {
    return zelChildAdapter(const_cast<MergedInput*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  unitNboAttrLogAdapter(const Zel::Ptr<const MergedInput>& child) {
    return zelChildAdapter(const_cast<MergedInput*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  unitNboAttrLogAdapterIs(Zel_BitSet flags, const Zel::Ptr<MergedInput>& child, unsigned option,
                          const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/, Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::unit, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  unitNboAttrLogAdapterDel(const Zel::Ptr<MergedInput>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API MergedInputDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<MergedInputDir> {
public:
  using MergedInputDir::Notifiee::onUnit;
  void onUnit(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onUnit, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API MergedInputDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelUnitHasSyncedIs(bool synced) noexcept { is(Attr::unit, synced); }
  };
  class ZEL_API ZelZelIsUnitDirty : public Zel::MapEntry<ZelZelIsUnitDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsUnitDirtyMap = Zel::HashMap<ZelZelIsUnitDirty, Zel::Name, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsUnitDirtyIs(Zel::Name key, bool dirty) { zelIsUnitDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsUnitDirty> newZelIsUnitDirty(Zel::Name key, bool dirty) {
    return zelIsUnitDirty_.add(key, dirty);
  }
  bool zelIsUnitDirtyDel(Zel::Name key) { return zelIsUnitDirty_.del(key); }
  bool zelIsUnitDirtyDel(ZelIsUnitDirtyMap::Iterator& at) { return zelIsUnitDirty_.del(at); }
  const ZelIsUnitDirtyMap& zelIsUnitDirtyMap() const noexcept { return zelIsUnitDirty_.map(); }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsUnitDirtyMap> zelIsUnitDirty_{*this, Attr::unit};
};

} // namespace Maintenance::Unit
