#pragma once

#include <attrlog/AdapterOf.h>
#include <model/Unit/Input.h>

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

} // namespace Maintenance::Unit
