#pragma once

#include <attrlog/AdapterOf.h>
#include <model/MaintenanceAgentInfo.h>

/// The attribute log of agent information.
namespace Maintenance {

class ZEL_API AgentInfo::ZelNboAttrLogSa : public Zel::AdapterOf<AgentInfo> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onAgentPid() { zelOnSingular(Attr::agentPid); }
  virtual void onRestartCount() { zelOnSingular(Attr::restartCount); }
  virtual void onOnBoot() { zelOnSingular(Attr::onBoot); }
  virtual void onOnBootMaintEnter(Zel::String8 unitName) {
    zelOnKey(Attr::onBootMaintEnter, &unitName);
  }
  virtual void onReady() { zelOnSingular(Attr::ready); }

  void zelHandleOnBootMaintEnterSerializeSing(Zel::String8 key, const OnBootUnitAndReason& value,
                                              bool deleted) {
    zelSerializeSing(Attr::onBootMaintEnter, &key, &value, deleted);
  }
  bool zelHandleOnBootMaintEnterSerializeColl() { return zelSerializeColl(Attr::onBootMaintEnter); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API AgentInfo::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<AgentInfo> {
public:
  void onAgentPid() override { zelForward(&ZelNboAttrLogSa::onAgentPid); }
  void onRestartCount() override { zelForward(&ZelNboAttrLogSa::onRestartCount); }
  void onOnBoot() override { zelForward(&ZelNboAttrLogSa::onOnBoot); }
  using AgentInfo::Notifiee::onOnBootMaintEnter;
  void onOnBootMaintEnter(Zel::String8 unitName) override {
    zelForward(&ZelNboAttrLogSa::onOnBootMaintEnter, unitName);
  }
  void onReady() override { zelForward(&ZelNboAttrLogSa::onReady); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API AgentInfo::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsAgentPidDirtyIs(bool dirty) noexcept { is(Attr::agentPid, dirty); }
    void zelIsRestartCountDirtyIs(bool dirty) noexcept { is(Attr::restartCount, dirty); }
    void zelIsOnBootDirtyIs(bool dirty) noexcept { is(Attr::onBoot, dirty); }
    void zelOnBootMaintEnterHasSyncedIs(bool synced) noexcept {
      is(Attr::onBootMaintEnter, synced);
    }
    void zelIsReadyDirtyIs(bool dirty) noexcept { is(Attr::ready, dirty); }
  };
  class ZEL_API ZelZelIsOnBootMaintEnterDirty
      : public Zel::MapEntry<ZelZelIsOnBootMaintEnterDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsOnBootMaintEnterDirtyMap =
      Zel::HashMap<ZelZelIsOnBootMaintEnterDirty, Zel::String8, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsOnBootMaintEnterDirtyIs(Zel::String8 key, bool dirty) {
    zelIsOnBootMaintEnterDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsOnBootMaintEnterDirty> newZelIsOnBootMaintEnterDirty(Zel::String8 key,
                                                                        bool dirty) {
    return zelIsOnBootMaintEnterDirty_.add(key, dirty);
  }
  bool zelIsOnBootMaintEnterDirtyDel(Zel::String8 key) {
    return zelIsOnBootMaintEnterDirty_.del(key);
  }
  bool zelIsOnBootMaintEnterDirtyDel(ZelIsOnBootMaintEnterDirtyMap::Iterator& at) {
    return zelIsOnBootMaintEnterDirty_.del(at);
  }
  const ZelIsOnBootMaintEnterDirtyMap& zelIsOnBootMaintEnterDirtyMap() const noexcept {
    return zelIsOnBootMaintEnterDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsOnBootMaintEnterDirtyMap> zelIsOnBootMaintEnterDirty_{*this,
                                                                            Attr::onBootMaintEnter};
};

} // namespace Maintenance
