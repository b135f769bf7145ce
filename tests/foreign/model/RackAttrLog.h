#pragma once

#include "Carrier.h"
#include "Rack.h"

#include <attrlog/AdapterOf.h>

namespace Foreign {

class Rack::ZelNboAttrLogSa : public Zel::AdapterOf<Rack> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onZone() { zelOnSingular(Attr::zone); }
  virtual void onAllowedZone(Zone key) { zelOnKey(Attr::allowedZone, &key); }
  virtual void onReservation(Zel::String8 key) { zelOnKey(Attr::reservation, &key); }
  virtual void onLabel(Zel::Name key) { zelOnKey(Attr::label, &key); }
  virtual void onFootprint() { zelOnSingular(Attr::footprint); }
  virtual void onSpace(Zone key) { zelOnKey(Attr::space, &key); }
  virtual void onTemperature() { zelOnSingular(Attr::temperature); }
  virtual void onNote(const double& key) { zelOnKey(Attr::note, &key); }
  virtual void onReading(const double& key) { zelOnKey(Attr::reading, &key); }
  virtual void onSerial() { zelOnSingular(Attr::serial); }
  virtual void onSlot() { zelOnSingular(Attr::slot); }
  virtual void onPicks() { zelOnSingular(Attr::picks); }

  void zelHandleAllowedZoneSerializeSing(Zone key, bool value, bool deleted) {
    zelSerializeSing(Attr::allowedZone, &key, &value, deleted);
  }
  bool zelHandleAllowedZoneSerializeColl() { return zelSerializeColl(Attr::allowedZone); }
  void zelHandleReservationSerializeSing(Zel::String8 key, bool value, bool deleted) {
    zelSerializeSing(Attr::reservation, &key, &value, deleted);
  }
  bool zelHandleReservationSerializeColl() { return zelSerializeColl(Attr::reservation); }
  bool zelHandleLabelSerializeSing(Zel::Name key, const Zel::String8& value, bool deleted) {
    return zelSerializeSing(Attr::label, &key, &value, deleted);
  }
  bool zelHandleLabelSerializeColl() { return zelSerializeColl(Attr::label); }
  void zelHandleSpaceSerializeSing(Zone key, const Dimensions& value, bool deleted) {
    zelSerializeSing(Attr::space, &key, &value, deleted);
  }
  bool zelHandleSpaceSerializeColl() { return zelSerializeColl(Attr::space); }
  bool zelHandleNoteSerializeSing(const double& key, const Zel::String8& value, bool deleted) {
    return zelSerializeSing(Attr::note, &key, &value, deleted);
  }
  bool zelHandleNoteSerializeColl() { return zelSerializeColl(Attr::note); }
  void zelHandleReadingSerializeSing(const double& key, double value, bool deleted) {
    zelSerializeSing(Attr::reading, &key, &value, deleted);
  }
  bool zelHandleReadingSerializeColl() { return zelSerializeColl(Attr::reading); }

protected:
  ~ZelNboAttrLogSa() override;
};

class Rack::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Rack> {
public:
  void onZone() override { zelForward(&ZelNboAttrLogSa::onZone); }
  using Rack::Notifiee::onAllowedZone;
  void onAllowedZone(Zone key) override { zelForward(&ZelNboAttrLogSa::onAllowedZone, key); }
  using Rack::Notifiee::onReservation;
  void onReservation(Zel::String8 key) override {
    zelForward(&ZelNboAttrLogSa::onReservation, key);
  }
  using Rack::Notifiee::onLabel;
  void onLabel(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onLabel, key); }
  void onFootprint() override { zelForward(&ZelNboAttrLogSa::onFootprint); }
  using Rack::Notifiee::onSpace;
  void onSpace(Zone key) override { zelForward(&ZelNboAttrLogSa::onSpace, key); }
  void onTemperature() override { zelForward(&ZelNboAttrLogSa::onTemperature); }
  using Rack::Notifiee::onNote;
  void onNote(const double& key) override { zelForward(&ZelNboAttrLogSa::onNote, key); }
  using Rack::Notifiee::onReading;
  void onReading(const double& key) override { zelForward(&ZelNboAttrLogSa::onReading, key); }
  void onSerial() override { zelForward(&ZelNboAttrLogSa::onSerial); }
  void onSlot() override { zelForward(&ZelNboAttrLogSa::onSlot); }
  void onPicks() override { zelForward(&ZelNboAttrLogSa::onPicks); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class Rack::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsZoneDirtyIs(bool dirty) noexcept { is(Attr::zone, dirty); }
    void zelAllowedZoneHasSyncedIs(bool synced) noexcept { is(Attr::allowedZone, synced); }
    void zelReservationHasSyncedIs(bool synced) noexcept { is(Attr::reservation, synced); }
    void zelLabelHasSyncedIs(bool synced) noexcept { is(Attr::label, synced); }
    void zelIsFootprintDirtyIs(bool dirty) noexcept { is(Attr::footprint, dirty); }
    void zelSpaceHasSyncedIs(bool synced) noexcept { is(Attr::space, synced); }
    void zelIsTemperatureDirtyIs(bool dirty) noexcept { is(Attr::temperature, dirty); }
    void zelNoteHasSyncedIs(bool synced) noexcept { is(Attr::note, synced); }
    void zelReadingHasSyncedIs(bool synced) noexcept { is(Attr::reading, synced); }
    void zelIsSerialDirtyIs(bool dirty) noexcept { is(Attr::serial, dirty); }
    void zelIsSlotDirtyIs(bool dirty) noexcept { is(Attr::slot, dirty); }
    void zelIsPicksDirtyIs(bool dirty) noexcept { is(Attr::picks, dirty); }
  };
  class ZelZelIsAllowedZoneDirty : public Zel::MapEntry<ZelZelIsAllowedZoneDirty, Zone, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsAllowedZoneDirtyMap = Zel::HashMap<ZelZelIsAllowedZoneDirty, Zone, bool>;
  class ZelZelIsReservationDirty
      : public Zel::MapEntry<ZelZelIsReservationDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsReservationDirtyMap = Zel::HashMap<ZelZelIsReservationDirty, Zel::String8, bool>;
  class ZelZelIsLabelDirty : public Zel::MapEntry<ZelZelIsLabelDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsLabelDirtyMap = Zel::HashMap<ZelZelIsLabelDirty, Zel::Name, bool>;
  class ZelZelIsSpaceDirty : public Zel::MapEntry<ZelZelIsSpaceDirty, Zone, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsSpaceDirtyMap = Zel::HashMap<ZelZelIsSpaceDirty, Zone, bool>;
  class ZelZelIsNoteDirty : public Zel::TreeEntry<ZelZelIsNoteDirty, double, bool> {
    using TreeEntry::TreeEntry;
  };
  using ZelIsNoteDirtyMap = Zel::RbTreeMap<ZelZelIsNoteDirty, double, bool>;
  class ZelZelIsReadingDirty : public Zel::TreeEntry<ZelZelIsReadingDirty, double, bool> {
    using TreeEntry::TreeEntry;
  };
  using ZelIsReadingDirtyMap = Zel::RbTreeMap<ZelZelIsReadingDirty, double, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsAllowedZoneDirtyIs(Zone key, bool dirty) { zelIsAllowedZoneDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsAllowedZoneDirty> newZelIsAllowedZoneDirty(Zone key, bool dirty) {
    return zelIsAllowedZoneDirty_.add(key, dirty);
  }
  bool zelIsAllowedZoneDirtyDel(Zone key) { return zelIsAllowedZoneDirty_.del(key); }
  bool zelIsAllowedZoneDirtyDel(ZelIsAllowedZoneDirtyMap::Iterator& at) {
    return zelIsAllowedZoneDirty_.del(at);
  }
  const ZelIsAllowedZoneDirtyMap& zelIsAllowedZoneDirtyMap() const noexcept {
    return zelIsAllowedZoneDirty_.map();
  }

  void zelIsReservationDirtyIs(Zel::String8 key, bool dirty) {
    zelIsReservationDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsReservationDirty> newZelIsReservationDirty(Zel::String8 key, bool dirty) {
    return zelIsReservationDirty_.add(key, dirty);
  }
  bool zelIsReservationDirtyDel(Zel::String8 key) { return zelIsReservationDirty_.del(key); }
  bool zelIsReservationDirtyDel(ZelIsReservationDirtyMap::Iterator& at) {
    return zelIsReservationDirty_.del(at);
  }
  const ZelIsReservationDirtyMap& zelIsReservationDirtyMap() const noexcept {
    return zelIsReservationDirty_.map();
  }

  void zelIsLabelDirtyIs(Zel::Name key, bool dirty) { zelIsLabelDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsLabelDirty> newZelIsLabelDirty(Zel::Name key, bool dirty) {
    return zelIsLabelDirty_.add(key, dirty);
  }
  bool zelIsLabelDirtyDel(Zel::Name key) { return zelIsLabelDirty_.del(key); }
  bool zelIsLabelDirtyDel(ZelIsLabelDirtyMap::Iterator& at) { return zelIsLabelDirty_.del(at); }
  const ZelIsLabelDirtyMap& zelIsLabelDirtyMap() const noexcept { return zelIsLabelDirty_.map(); }

  void zelIsSpaceDirtyIs(Zone key, bool dirty) { zelIsSpaceDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsSpaceDirty> newZelIsSpaceDirty(Zone key, bool dirty) {
    return zelIsSpaceDirty_.add(key, dirty);
  }
  bool zelIsSpaceDirtyDel(Zone key) { return zelIsSpaceDirty_.del(key); }
  bool zelIsSpaceDirtyDel(ZelIsSpaceDirtyMap::Iterator& at) { return zelIsSpaceDirty_.del(at); }
  const ZelIsSpaceDirtyMap& zelIsSpaceDirtyMap() const noexcept { return zelIsSpaceDirty_.map(); }

  void zelIsNoteDirtyIs(const double& key, bool dirty) { zelIsNoteDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsNoteDirty> newZelIsNoteDirty(const double& key, bool dirty) {
    return zelIsNoteDirty_.add(key, dirty);
  }
  bool zelIsNoteDirtyDel(const double& key) { return zelIsNoteDirty_.del(key); }
  bool zelIsNoteDirtyDel(ZelIsNoteDirtyMap::Iterator& at) { return zelIsNoteDirty_.del(at); }
  const ZelIsNoteDirtyMap& zelIsNoteDirtyMap() const noexcept { return zelIsNoteDirty_.map(); }

  void zelIsReadingDirtyIs(const double& key, bool dirty) { zelIsReadingDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsReadingDirty> newZelIsReadingDirty(const double& key, bool dirty) {
    return zelIsReadingDirty_.add(key, dirty);
  }
  bool zelIsReadingDirtyDel(const double& key) { return zelIsReadingDirty_.del(key); }
  bool zelIsReadingDirtyDel(ZelIsReadingDirtyMap::Iterator& at) {
    return zelIsReadingDirty_.del(at);
  }
  const ZelIsReadingDirtyMap& zelIsReadingDirtyMap() const noexcept {
    return zelIsReadingDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsAllowedZoneDirtyMap> zelIsAllowedZoneDirty_{*this, Attr::allowedZone};
  Zel::DirtyKeys<ZelIsReservationDirtyMap> zelIsReservationDirty_{*this, Attr::reservation};
  Zel::DirtyKeys<ZelIsLabelDirtyMap> zelIsLabelDirty_{*this, Attr::label};
  Zel::DirtyKeys<ZelIsSpaceDirtyMap> zelIsSpaceDirty_{*this, Attr::space};
  Zel::DirtyKeys<ZelIsNoteDirtyMap> zelIsNoteDirty_{*this, Attr::note};
  Zel::DirtyKeys<ZelIsReadingDirtyMap> zelIsReadingDirty_{*this, Attr::reading};
};

class Carrier::ZelNboAttrLogSa : public Zel::AdapterOf<Carrier> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onLoad(const SkuKey& key) { zelOnKey(Attr::load, &key); }
  virtual void onTarget(Zone key) { zelOnKey(Attr::target, &key); }
  virtual void onUrgency() { zelOnSingular(Attr::urgency); }
  virtual void onIdle() { zelOnSingular(Attr::idle); }

  void zelHandleLoadSerializeSing(const SkuKey& key, bool value, bool deleted) {
    zelSerializeSing(Attr::load, &key, &value, deleted);
  }
  bool zelHandleLoadSerializeColl() { return zelSerializeColl(Attr::load); }
  void zelHandleTargetSerializeSing(Zone key, const SkuKey& value, bool deleted) {
    zelSerializeSing(Attr::target, &key, &value, deleted);
  }
  bool zelHandleTargetSerializeColl() { return zelSerializeColl(Attr::target); }

protected:
  ~ZelNboAttrLogSa() override;
};

class Carrier::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Carrier> {
public:
  using Carrier::Notifiee::onLoad;
  void onLoad(const SkuKey& key) override { zelForward(&ZelNboAttrLogSa::onLoad, key); }
  using Carrier::Notifiee::onTarget;
  void onTarget(Zone key) override { zelForward(&ZelNboAttrLogSa::onTarget, key); }
  void onUrgency() override { zelForward(&ZelNboAttrLogSa::onUrgency); }
  void onIdle() override { zelForward(&ZelNboAttrLogSa::onIdle); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class Carrier::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelLoadHasSyncedIs(bool synced) noexcept { is(Attr::load, synced); }
    void zelTargetHasSyncedIs(bool synced) noexcept { is(Attr::target, synced); }
    void zelIsUrgencyDirtyIs(bool dirty) noexcept { is(Attr::urgency, dirty); }
    void zelIsIdleDirtyIs(bool dirty) noexcept { is(Attr::idle, dirty); }
  };
  class ZelZelIsLoadDirty : public Zel::MapEntry<ZelZelIsLoadDirty, SkuKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsLoadDirtyMap = Zel::HashMap<ZelZelIsLoadDirty, SkuKey, bool>;
  class ZelZelIsTargetDirty : public Zel::MapEntry<ZelZelIsTargetDirty, Zone, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsTargetDirtyMap = Zel::HashMap<ZelZelIsTargetDirty, Zone, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsLoadDirtyIs(const SkuKey& key, bool dirty) { zelIsLoadDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsLoadDirty> newZelIsLoadDirty(const SkuKey& key, bool dirty) {
    return zelIsLoadDirty_.add(key, dirty);
  }
  bool zelIsLoadDirtyDel(const SkuKey& key) { return zelIsLoadDirty_.del(key); }
  bool zelIsLoadDirtyDel(ZelIsLoadDirtyMap::Iterator& at) { return zelIsLoadDirty_.del(at); }
  const ZelIsLoadDirtyMap& zelIsLoadDirtyMap() const noexcept { return zelIsLoadDirty_.map(); }

  void zelIsTargetDirtyIs(Zone key, bool dirty) { zelIsTargetDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsTargetDirty> newZelIsTargetDirty(Zone key, bool dirty) {
    return zelIsTargetDirty_.add(key, dirty);
  }
  bool zelIsTargetDirtyDel(Zone key) { return zelIsTargetDirty_.del(key); }
  bool zelIsTargetDirtyDel(ZelIsTargetDirtyMap::Iterator& at) { return zelIsTargetDirty_.del(at); }
  const ZelIsTargetDirtyMap& zelIsTargetDirtyMap() const noexcept {
    return zelIsTargetDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsLoadDirtyMap> zelIsLoadDirty_{*this, Attr::load};
  Zel::DirtyKeys<ZelIsTargetDirtyMap> zelIsTargetDirty_{*this, Attr::target};
};

} // namespace Foreign
