#pragma once

#include <attrlog/AdapterOf.h>
#include <model/Mapping.h>

/// The attribute log of the mappings. The objects of profile selection are no entities and have
/// none.
namespace Maintenance {

class ZEL_API MemberToGroup::ZelNboAttrLogSa : public Zel::AdapterOf<MemberToGroup> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onGroup(const Group::GroupKey& key) { zelOnKey(Attr::group, &key); }
  virtual void onSelectedProfile(Profile::ProfileType type) {
    zelOnKey(Attr::selectedProfile, &type);
  }
  virtual void onProfileChangeCause() { zelOnSingular(Attr::profileChangeCause); }
  virtual void onPartOfDynamicUnit() { zelOnSingular(Attr::partOfDynamicUnit); }

  void zelHandleGroupSerializeSing(const Group::GroupKey& key, bool value, bool deleted) {
    zelSerializeSing(Attr::group, &key, &value, deleted);
  }
  bool zelHandleGroupSerializeColl() { return zelSerializeColl(Attr::group); }
  void zelHandleSelectedProfileSerializeSing(Profile::ProfileType key,
                                             const Profile::ProfileKey& value, bool deleted) {
    zelSerializeSing(Attr::selectedProfile, &key, &value, deleted);
  }
  bool zelHandleSelectedProfileSerializeColl() { return zelSerializeColl(Attr::selectedProfile); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API MemberToGroup::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<MemberToGroup> {
public:
  using MemberToGroup::Notifiee::onGroup;
  void onGroup(const Group::GroupKey& key) override { zelForward(&ZelNboAttrLogSa::onGroup, key); }
  using MemberToGroup::Notifiee::onSelectedProfile;
  void onSelectedProfile(Profile::ProfileType type) override {
    zelForward(&ZelNboAttrLogSa::onSelectedProfile, type);
  }
  void onProfileChangeCause() override { zelForward(&ZelNboAttrLogSa::onProfileChangeCause); }
  void onPartOfDynamicUnit() override { zelForward(&ZelNboAttrLogSa::onPartOfDynamicUnit); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API MemberToGroup::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelGroupHasSyncedIs(bool synced) noexcept { is(Attr::group, synced); }
    void zelSelectedProfileHasSyncedIs(bool synced) noexcept { is(Attr::selectedProfile, synced); }
    void zelIsProfileChangeCauseDirtyIs(bool dirty) noexcept {
      is(Attr::profileChangeCause, dirty);
    }
    void zelIsPartOfDynamicUnitDirtyIs(bool dirty) noexcept { is(Attr::partOfDynamicUnit, dirty); }
  };
  class ZEL_API ZelZelIsGroupDirty
      : public Zel::MapEntry<ZelZelIsGroupDirty, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsGroupDirtyMap = Zel::HashMap<ZelZelIsGroupDirty, Group::GroupKey, bool>;
  class ZEL_API ZelZelIsSelectedProfileDirty
      : public Zel::MapEntry<ZelZelIsSelectedProfileDirty, Profile::ProfileType, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsSelectedProfileDirtyMap =
      Zel::HashMap<ZelZelIsSelectedProfileDirty, Profile::ProfileType, bool>;

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

  void zelIsSelectedProfileDirtyIs(Profile::ProfileType key, bool dirty) {
    zelIsSelectedProfileDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsSelectedProfileDirty> newZelIsSelectedProfileDirty(Profile::ProfileType key,
                                                                      bool dirty) {
    return zelIsSelectedProfileDirty_.add(key, dirty);
  }
  bool zelIsSelectedProfileDirtyDel(Profile::ProfileType key) {
    return zelIsSelectedProfileDirty_.del(key);
  }
  bool zelIsSelectedProfileDirtyDel(ZelIsSelectedProfileDirtyMap::Iterator& at) {
    return zelIsSelectedProfileDirty_.del(at);
  }
  const ZelIsSelectedProfileDirtyMap& zelIsSelectedProfileDirtyMap() const noexcept {
    return zelIsSelectedProfileDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsGroupDirtyMap> zelIsGroupDirty_{*this, Attr::group};
  Zel::DirtyKeys<ZelIsSelectedProfileDirtyMap> zelIsSelectedProfileDirty_{*this,
                                                                          Attr::selectedProfile};
};

class ZEL_API GroupToUnit::ZelNboAttrLogSa : public Zel::AdapterOf<GroupToUnit> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onUnitName(Zel::Name name) { zelOnKey(Attr::unitName, &name); }

  void zelHandleUnitNameSerializeSing(Zel::Name key, bool value, bool deleted) {
    zelSerializeSing(Attr::unitName, &key, &value, deleted);
  }
  bool zelHandleUnitNameSerializeColl() { return zelSerializeColl(Attr::unitName); }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API GroupToUnit::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<GroupToUnit> {
public:
  using GroupToUnit::Notifiee::onUnitName;
  void onUnitName(Zel::Name name) override { zelForward(&ZelNboAttrLogSa::onUnitName, name); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API GroupToUnit::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelUnitNameHasSyncedIs(bool synced) noexcept { is(Attr::unitName, synced); }
  };
  class ZEL_API ZelZelIsUnitNameDirty
      : public Zel::MapEntry<ZelZelIsUnitNameDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsUnitNameDirtyMap = Zel::HashMap<ZelZelIsUnitNameDirty, Zel::Name, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsUnitNameDirtyIs(Zel::Name key, bool dirty) { zelIsUnitNameDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsUnitNameDirty> newZelIsUnitNameDirty(Zel::Name key, bool dirty) {
    return zelIsUnitNameDirty_.add(key, dirty);
  }
  bool zelIsUnitNameDirtyDel(Zel::Name key) { return zelIsUnitNameDirty_.del(key); }
  bool zelIsUnitNameDirtyDel(ZelIsUnitNameDirtyMap::Iterator& at) {
    return zelIsUnitNameDirty_.del(at);
  }
  const ZelIsUnitNameDirtyMap& zelIsUnitNameDirtyMap() const noexcept {
    return zelIsUnitNameDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsUnitNameDirtyMap> zelIsUnitNameDirty_{*this, Attr::unitName};
};

class ZEL_API GroupToUnitDir::ZelNboAttrLogSa : public Zel::AdapterOf<GroupToUnitDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onGroupToUnit(const Group::GroupKey& key) { zelOnKey(Attr::groupToUnit, &key); }

  void zelHandleGroupToUnitSerializeSing(const Group::GroupKey& key,
                                         const Zel::Ptr<GroupToUnit>& child) {
    zelSerializeChild(Attr::groupToUnit, &key, child.ptr());
  }
  bool zelHandleGroupToUnitSerializeColl() { return zelSerializeColl(Attr::groupToUnit); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  groupToUnitNboAttrLogAdapter(const Zel::Ptr<const GroupToUnit>& child) const {
    return zelChildAdapter(const_cast<GroupToUnit*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  groupToUnitNboAttrLogAdapter(const Zel::Ptr<const GroupToUnit>& child) {
    return zelChildAdapter(const_cast<GroupToUnit*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  groupToUnitNboAttrLogAdapterIs(Zel_BitSet flags, const Zel::Ptr<GroupToUnit>& child,
                                 unsigned option, const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/,
                                 Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::groupToUnit, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  groupToUnitNboAttrLogAdapterDel(const Zel::Ptr<GroupToUnit>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class ZEL_API GroupToUnitDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<GroupToUnitDir> {
public:
  using GroupToUnitDir::Notifiee::onGroupToUnit;
  void onGroupToUnit(const Group::GroupKey& key) override {
    zelForward(&ZelNboAttrLogSa::onGroupToUnit, key);
  }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ZEL_API GroupToUnitDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelGroupToUnitHasSyncedIs(bool synced) noexcept { is(Attr::groupToUnit, synced); }
  };
  class ZEL_API ZelZelIsGroupToUnitDirty
      : public Zel::MapEntry<ZelZelIsGroupToUnitDirty, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsGroupToUnitDirtyMap = Zel::HashMap<ZelZelIsGroupToUnitDirty, Group::GroupKey, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsGroupToUnitDirtyIs(const Group::GroupKey& key, bool dirty) {
    zelIsGroupToUnitDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsGroupToUnitDirty> newZelIsGroupToUnitDirty(const Group::GroupKey& key,
                                                              bool dirty) {
    return zelIsGroupToUnitDirty_.add(key, dirty);
  }
  bool zelIsGroupToUnitDirtyDel(const Group::GroupKey& key) {
    return zelIsGroupToUnitDirty_.del(key);
  }
  bool zelIsGroupToUnitDirtyDel(ZelIsGroupToUnitDirtyMap::Iterator& at) {
    return zelIsGroupToUnitDirty_.del(at);
  }
  const ZelIsGroupToUnitDirtyMap& zelIsGroupToUnitDirtyMap() const noexcept {
    return zelIsGroupToUnitDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsGroupToUnitDirtyMap> zelIsGroupToUnitDirty_{*this, Attr::groupToUnit};
};

} // namespace Maintenance
