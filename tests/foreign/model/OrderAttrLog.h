#pragma once

#include "Depot.h"
#include "Order.h"

#include <attrlog/AdapterOf.h>

namespace Foreign {

class Order::ZelNboAttrLogSa : public Zel::AdapterOf<Order> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onUrgency() { zelOnSingular(Attr::urgency); }
  virtual void onItem(Zel::String8 key) { zelOnKey(Attr::item, &key); }

  void zelHandleItemSerializeSing(Zel::String8 key, bool value, bool deleted) {
    zelSerializeSing(Attr::item, &key, &value, deleted);
  }
  bool zelHandleItemSerializeColl() { return zelSerializeColl(Attr::item); }

protected:
  ~ZelNboAttrLogSa() override;
};

class Order::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Order> {
public:
  void onUrgency() override { zelForward(&ZelNboAttrLogSa::onUrgency); }
  using Order::Notifiee::onItem;
  void onItem(Zel::String8 key) override { zelForward(&ZelNboAttrLogSa::onItem, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class Order::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsUrgencyDirtyIs(bool dirty) noexcept { is(Attr::urgency, dirty); }
    void zelItemHasSyncedIs(bool synced) noexcept { is(Attr::item, synced); }
  };
  class ZelZelIsItemDirty : public Zel::MapEntry<ZelZelIsItemDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsItemDirtyMap = Zel::HashMap<ZelZelIsItemDirty, Zel::String8, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsItemDirtyIs(Zel::String8 key, bool dirty) { zelIsItemDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsItemDirty> newZelIsItemDirty(Zel::String8 key, bool dirty) {
    return zelIsItemDirty_.add(key, dirty);
  }
  bool zelIsItemDirtyDel(Zel::String8 key) { return zelIsItemDirty_.del(key); }
  bool zelIsItemDirtyDel(ZelIsItemDirtyMap::Iterator& at) { return zelIsItemDirty_.del(at); }
  const ZelIsItemDirtyMap& zelIsItemDirtyMap() const noexcept { return zelIsItemDirty_.map(); }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsItemDirtyMap> zelIsItemDirty_{*this, Attr::item};
};

class OrderDir::ZelNboAttrLogSa : public Zel::AdapterOf<OrderDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onOrder(Zel::Name key) { zelOnKey(Attr::order, &key); }

  void zelHandleOrderSerializeSing(Zel::Name key, const Zel::Ptr<Order>& child) {
    zelSerializeChild(Attr::order, &key, child.ptr());
  }
  bool zelHandleOrderSerializeColl() { return zelSerializeColl(Attr::order); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  orderNboAttrLogAdapter(const Zel::Ptr<const Order>& child) const {
    return zelChildAdapter(const_cast<Order*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  orderNboAttrLogAdapter(const Zel::Ptr<const Order>& child) {
    return zelChildAdapter(const_cast<Order*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  orderNboAttrLogAdapterIs(Zel_BitSet flags, const Zel::Ptr<Order>& child, unsigned option,
                           const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/,
                           Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::order, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa> orderNboAttrLogAdapterDel(const Zel::Ptr<Order>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class OrderDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<OrderDir> {
public:
  using OrderDir::Notifiee::onOrder;
  void onOrder(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onOrder, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class OrderDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelOrderHasSyncedIs(bool synced) noexcept { is(Attr::order, synced); }
  };
  class ZelZelIsOrderDirty : public Zel::MapEntry<ZelZelIsOrderDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsOrderDirtyMap = Zel::HashMap<ZelZelIsOrderDirty, Zel::Name, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsOrderDirtyIs(Zel::Name key, bool dirty) { zelIsOrderDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsOrderDirty> newZelIsOrderDirty(Zel::Name key, bool dirty) {
    return zelIsOrderDirty_.add(key, dirty);
  }
  bool zelIsOrderDirtyDel(Zel::Name key) { return zelIsOrderDirty_.del(key); }
  bool zelIsOrderDirtyDel(ZelIsOrderDirtyMap::Iterator& at) { return zelIsOrderDirty_.del(at); }
  const ZelIsOrderDirtyMap& zelIsOrderDirtyMap() const noexcept { return zelIsOrderDirty_.map(); }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsOrderDirtyMap> zelIsOrderDirty_{*this, Attr::order};
};

class Depot::ZelNboAttrLogSa : public Zel::AdapterOf<Depot> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onPid() { zelOnSingular(Attr::pid); }
  virtual void onRestarts() { zelOnSingular(Attr::restarts); }
  virtual void onAlarm(Zel::String8 key) { zelOnKey(Attr::alarm, &key); }
  virtual void onOpen() { zelOnSingular(Attr::open); }

  void zelHandleAlarmSerializeSing(Zel::String8 key, const Alarm& value, bool deleted) {
    zelSerializeSing(Attr::alarm, &key, &value, deleted);
  }
  bool zelHandleAlarmSerializeColl() { return zelSerializeColl(Attr::alarm); }

protected:
  ~ZelNboAttrLogSa() override;
};

class Depot::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Depot> {
public:
  void onPid() override { zelForward(&ZelNboAttrLogSa::onPid); }
  void onRestarts() override { zelForward(&ZelNboAttrLogSa::onRestarts); }
  using Depot::Notifiee::onAlarm;
  void onAlarm(Zel::String8 key) override { zelForward(&ZelNboAttrLogSa::onAlarm, key); }
  void onOpen() override { zelForward(&ZelNboAttrLogSa::onOpen); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class Depot::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsPidDirtyIs(bool dirty) noexcept { is(Attr::pid, dirty); }
    void zelIsRestartsDirtyIs(bool dirty) noexcept { is(Attr::restarts, dirty); }
    void zelAlarmHasSyncedIs(bool synced) noexcept { is(Attr::alarm, synced); }
    void zelIsOpenDirtyIs(bool dirty) noexcept { is(Attr::open, dirty); }
  };
  class ZelZelIsAlarmDirty : public Zel::MapEntry<ZelZelIsAlarmDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsAlarmDirtyMap = Zel::HashMap<ZelZelIsAlarmDirty, Zel::String8, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsAlarmDirtyIs(Zel::String8 key, bool dirty) { zelIsAlarmDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsAlarmDirty> newZelIsAlarmDirty(Zel::String8 key, bool dirty) {
    return zelIsAlarmDirty_.add(key, dirty);
  }
  bool zelIsAlarmDirtyDel(Zel::String8 key) { return zelIsAlarmDirty_.del(key); }
  bool zelIsAlarmDirtyDel(ZelIsAlarmDirtyMap::Iterator& at) { return zelIsAlarmDirty_.del(at); }
  const ZelIsAlarmDirtyMap& zelIsAlarmDirtyMap() const noexcept { return zelIsAlarmDirty_.map(); }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsAlarmDirtyMap> zelIsAlarmDirty_{*this, Attr::alarm};
};

} // namespace Foreign
