#pragma once

#include <attrlog/AdapterOf.h>
#include <model/Unit/StatusDir.h>

/// The attribute log of the status of units.
namespace Maintenance::Unit {

class ZEL_API Status::ZelNboAttrLogSa : public Zel::AdapterOf<Status> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onUnitType() { zelOnSingular(Attr::unitType); }
  virtual void onGroup(const Group::GroupKey& key) { zelOnKey(Attr::group, &key); }
  virtual void onProfileName() { zelHandleProfileNameSerialize(); }
  virtual void onState() { zelOnSingular(Attr::state); }
  virtual void onReason() { zelOnSingular(Attr::reason); }
  virtual void onTimeOfStateChange() { zelOnSingular(Attr::timeOfStateChange); }
  virtual void onOnBootMaintExitTime() { zelOnSingular(Attr::onBootMaintExitTime); }
  virtual void onHistorySize() { zelOnSingular(Attr::historySize); }
  virtual void onHistory(const double& time) { zelOnKey(Attr::history, &time); }
  virtual void onMaintEnterInstance() { zelHandleMaintEnterInstanceSerialize(); }
  virtual void onMaintExitInstance() { zelHandleMaintExitInstanceSerialize(); }
  virtual void onAggTrafficRate() { zelOnSingular(Attr::aggTrafficRate); }
  virtual void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) {
    zelOnKey(Attr::intfsViolatingTrafficThreshold, &key);
  }
  virtual void onTotalIntfTrafficViolations() { zelOnSingular(Attr::totalIntfTrafficViolations); }
  virtual void onGenId() { zelOnSingular(Attr::genId); }

  void zelHandleGroupSerializeSing(const Group::GroupKey& key, bool value, bool deleted) {
    zelSerializeSing(Attr::group, &key, &value, deleted);
  }
  bool zelHandleGroupSerializeColl() { return zelSerializeColl(Attr::group); }
  bool zelHandleProfileNameSerialize() { return zelSerializeText(Attr::profileName); }
  bool zelHandleHistorySerializeSing(const double& key, const Zel::String8& value, bool deleted) {
    return zelSerializeSing(Attr::history, &key, &value, deleted);
  }
  bool zelHandleHistorySerializeColl() { return zelSerializeColl(Attr::history); }
  bool zelHandleMaintEnterInstanceSerialize() { return zelSerializeText(Attr::maintEnterInstance); }
  bool zelHandleMaintExitInstanceSerialize() { return zelSerializeText(Attr::maintExitInstance); }
  void zelHandleIntfsViolatingTrafficThresholdSerializeSing(Vexil::IntfId key, bool value,
                                                            bool deleted) {
    zelSerializeSing(Attr::intfsViolatingTrafficThreshold, &key, &value, deleted);
  }
  bool zelHandleIntfsViolatingTrafficThresholdSerializeColl() {
    return zelSerializeColl(Attr::intfsViolatingTrafficThreshold);
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API Status::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<Status> {
public:
  void onUnitType() override { zelForward(&ZelNboAttrLogSa::onUnitType); }
  using Status::Notifiee::onGroup;
  void onGroup(const Group::GroupKey& key) override { zelForward(&ZelNboAttrLogSa::onGroup, key); }
  void onProfileName() override { zelForward(&ZelNboAttrLogSa::onProfileName); }
  void onState() override { zelForward(&ZelNboAttrLogSa::onState); }
  void onReason() override { zelForward(&ZelNboAttrLogSa::onReason); }
  void onTimeOfStateChange() override { zelForward(&ZelNboAttrLogSa::onTimeOfStateChange); }
  void onOnBootMaintExitTime() override { zelForward(&ZelNboAttrLogSa::onOnBootMaintExitTime); }
  void onHistorySize() override { zelForward(&ZelNboAttrLogSa::onHistorySize); }
  using Status::Notifiee::onHistory;
  void onHistory(const double& key) override { zelForward(&ZelNboAttrLogSa::onHistory, key); }
  void onMaintEnterInstance() override { zelForward(&ZelNboAttrLogSa::onMaintEnterInstance); }
  void onMaintExitInstance() override { zelForward(&ZelNboAttrLogSa::onMaintExitInstance); }
  void onAggTrafficRate() override { zelForward(&ZelNboAttrLogSa::onAggTrafficRate); }
  using Status::Notifiee::onIntfsViolatingTrafficThreshold;
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) override {
    zelForward(&ZelNboAttrLogSa::onIntfsViolatingTrafficThreshold, key);
  }
  void onTotalIntfTrafficViolations() override {
    zelForward(&ZelNboAttrLogSa::onTotalIntfTrafficViolations);
  }
  void onGenId() override { zelForward(&ZelNboAttrLogSa::onGenId); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API Status::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsUnitTypeDirtyIs(bool dirty) noexcept { is(Attr::unitType, dirty); }
    void zelGroupHasSyncedIs(bool synced) noexcept { is(Attr::group, synced); }
    void zelIsProfileNameDirtyIs(bool dirty) noexcept { is(Attr::profileName, dirty); }
    void zelIsStateDirtyIs(bool dirty) noexcept { is(Attr::state, dirty); }
    void zelIsReasonDirtyIs(bool dirty) noexcept { is(Attr::reason, dirty); }
    void zelIsTimeOfStateChangeDirtyIs(bool dirty) noexcept { is(Attr::timeOfStateChange, dirty); }
    void zelIsOnBootMaintExitTimeDirtyIs(bool dirty) noexcept {
      is(Attr::onBootMaintExitTime, dirty);
    }
    void zelIsHistorySizeDirtyIs(bool dirty) noexcept { is(Attr::historySize, dirty); }
    void zelHistoryHasSyncedIs(bool synced) noexcept { is(Attr::history, synced); }
    void zelIsMaintEnterInstanceDirtyIs(bool dirty) noexcept {
      is(Attr::maintEnterInstance, dirty);
    }
    void zelIsMaintExitInstanceDirtyIs(bool dirty) noexcept { is(Attr::maintExitInstance, dirty); }
    void zelIsAggTrafficRateDirtyIs(bool dirty) noexcept { is(Attr::aggTrafficRate, dirty); }
    void zelIntfsViolatingTrafficThresholdHasSyncedIs(bool synced) noexcept {
      is(Attr::intfsViolatingTrafficThreshold, synced);
    }
    void zelIsTotalIntfTrafficViolationsDirtyIs(bool dirty) noexcept {
      is(Attr::totalIntfTrafficViolations, dirty);
    }
    void zelIsGenIdDirtyIs(bool dirty) noexcept { is(Attr::genId, dirty); }
  };
  class ZEL_API ZelZelIsGroupDirty
      : public Zel::MapEntry<ZelZelIsGroupDirty, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsGroupDirtyMap = Zel::HashMap<ZelZelIsGroupDirty, Group::GroupKey, bool>;
  class ZEL_API ZelZelIsHistoryDirty : public Zel::TreeEntry<ZelZelIsHistoryDirty, double, bool> {
    using TreeEntry::TreeEntry;
  };
  using ZelIsHistoryDirtyMap = Zel::RbTreeMap<ZelZelIsHistoryDirty, double, bool>;
  class ZEL_API ZelZelIsIntfsViolatingTrafficThresholdDirty
      : public Zel::MapEntry<ZelZelIsIntfsViolatingTrafficThresholdDirty, Vexil::IntfId, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsIntfsViolatingTrafficThresholdDirtyMap =
      Zel::HashMap<ZelZelIsIntfsViolatingTrafficThresholdDirty, Vexil::IntfId, bool>;

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

  void zelIsHistoryDirtyIs(const double& key, bool dirty) { zelIsHistoryDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsHistoryDirty> newZelIsHistoryDirty(const double& key, bool dirty) {
    return zelIsHistoryDirty_.add(key, dirty);
  }
  bool zelIsHistoryDirtyDel(const double& key) { return zelIsHistoryDirty_.del(key); }
  bool zelIsHistoryDirtyDel(ZelIsHistoryDirtyMap::Iterator& at) {
    return zelIsHistoryDirty_.del(at);
  }
  const ZelIsHistoryDirtyMap& zelIsHistoryDirtyMap() const noexcept {
    return zelIsHistoryDirty_.map();
  }

  void zelIsIntfsViolatingTrafficThresholdDirtyIs(Vexil::IntfId key, bool dirty) {
    zelIsIntfsViolatingTrafficThresholdDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsIntfsViolatingTrafficThresholdDirty>
  newZelIsIntfsViolatingTrafficThresholdDirty(Vexil::IntfId key, bool dirty) {
    return zelIsIntfsViolatingTrafficThresholdDirty_.add(key, dirty);
  }
  bool zelIsIntfsViolatingTrafficThresholdDirtyDel(Vexil::IntfId key) {
    return zelIsIntfsViolatingTrafficThresholdDirty_.del(key);
  }
  bool zelIsIntfsViolatingTrafficThresholdDirtyDel(
      ZelIsIntfsViolatingTrafficThresholdDirtyMap::Iterator& at) {
    return zelIsIntfsViolatingTrafficThresholdDirty_.del(at);
  }
  const ZelIsIntfsViolatingTrafficThresholdDirtyMap&
  zelIsIntfsViolatingTrafficThresholdDirtyMap() const noexcept {
    return zelIsIntfsViolatingTrafficThresholdDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsGroupDirtyMap> zelIsGroupDirty_{*this, Attr::group};
  Zel::DirtyKeys<ZelIsHistoryDirtyMap> zelIsHistoryDirty_{*this, Attr::history};
  Zel::DirtyKeys<ZelIsIntfsViolatingTrafficThresholdDirtyMap>
      zelIsIntfsViolatingTrafficThresholdDirty_{*this, Attr::intfsViolatingTrafficThreshold};
};

class ZEL_API StatusDir::ZelNboAttrLogSa : public Zel::AdapterOf<StatusDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onStatus(Zel::Name unit) { zelOnKey(Attr::status, &unit); }

  void zelHandleStatusSerializeSing(Zel::Name key, const Zel::Ptr<Status>& child) {
    zelSerializeChild(Attr::status, &key, child.ptr());
  }
  bool zelHandleStatusSerializeColl() { return zelSerializeColl(Attr::status); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  statusNboAttrLogAdapter(const Zel::Ptr<const Status>& child) const {
    return zelChildAdapter(const_cast<Status*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  statusNboAttrLogAdapter(const Zel::Ptr<const Status>& child) {
    return zelChildAdapter(const_cast<Status*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  statusNboAttrLogAdapterIs(Zel_BitSet flags, const Zel::Ptr<Status>& child, unsigned option,
                            const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/,
                            Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::status, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa> statusNboAttrLogAdapterDel(const Zel::Ptr<Status>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API StatusDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<StatusDir> {
public:
  using StatusDir::Notifiee::onStatus;
  void onStatus(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onStatus, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API StatusDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelStatusHasSyncedIs(bool synced) noexcept { is(Attr::status, synced); }
  };
  class ZEL_API ZelZelIsStatusDirty : public Zel::MapEntry<ZelZelIsStatusDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsStatusDirtyMap = Zel::HashMap<ZelZelIsStatusDirty, Zel::Name, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsStatusDirtyIs(Zel::Name key, bool dirty) { zelIsStatusDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsStatusDirty> newZelIsStatusDirty(Zel::Name key, bool dirty) {
    return zelIsStatusDirty_.add(key, dirty);
  }
  bool zelIsStatusDirtyDel(Zel::Name key) { return zelIsStatusDirty_.del(key); }
  bool zelIsStatusDirtyDel(ZelIsStatusDirtyMap::Iterator& at) { return zelIsStatusDirty_.del(at); }
  const ZelIsStatusDirtyMap& zelIsStatusDirtyMap() const noexcept {
    return zelIsStatusDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsStatusDirtyMap> zelIsStatusDirty_{*this, Attr::status};
};

} // namespace Maintenance::Unit
