#pragma once

#include <generic/Object.h>
#include <generic/Reactor.h>
#include <generic/Value.h>
#include <model/Mapping.h>

/// The generic objects of the mappings and of profile selection.
namespace Maintenance {

class ZEL_API MemberToGroup::GenericIf_ : public Zel::EntityGenericIf<MemberToGroup> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<MemberToGroup>& object, bool isConst);

  /// There is no factory for it to call.
  static void genericIfListConstructor(const Zel::Ptr<const Zel::GenericIf>& list) = delete;

  void onGroup(const Group::GroupKey& key) { zelOnMember(Attr::group, &key); }
  void onSelectedProfile(Profile::ProfileType type) { zelOnMember(Attr::selectedProfile, &type); }
  void onProfileChangeCause() { zelOnSingular(Attr::profileChangeCause); }
  void onPartOfDynamicUnit() { zelOnSingular(Attr::partOfDynamicUnit); }

protected:
  ~GenericIf_() override;
};

class ZEL_API MemberToGroup::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<MemberToGroup, MemberToGroup::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onGroup(const Group::GroupKey& key) override { zelForward(&GenericIf_::onGroup, key); }
  void onGroup() override { zelForwardCollection(Attr::group); }
  void onSelectedProfile(Profile::ProfileType type) override {
    zelForward(&GenericIf_::onSelectedProfile, type);
  }
  void onSelectedProfile() override { zelForwardCollection(Attr::selectedProfile); }
  void onProfileChangeCause() override { zelForward(&GenericIf_::onProfileChangeCause); }
  void onPartOfDynamicUnit() override { zelForward(&GenericIf_::onPartOfDynamicUnit); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API GroupToUnit::GenericIf_ : public Zel::EntityGenericIf<GroupToUnit> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<GroupToUnit>& object, bool isConst);

  /// There is no factory for it to call.
  static void genericIfListConstructor(const Zel::Ptr<const Zel::GenericIf>& list) = delete;

  void onUnitName(Zel::Name name) { zelOnMember(Attr::unitName, &name); }

protected:
  ~GenericIf_() override;
};

class ZEL_API GroupToUnit::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<GroupToUnit, GroupToUnit::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onUnitName(Zel::Name name) override { zelForward(&GenericIf_::onUnitName, name); }
  void onUnitName() override { zelForwardCollection(Attr::unitName); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API GroupToUnitDir::GenericIf_ : public Zel::EntityGenericIf<GroupToUnitDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<GroupToUnitDir>& object, bool isConst);

  void onGroupToUnit(const Group::GroupKey& key) { zelOnMember(Attr::groupToUnit, &key); }

protected:
  ~GenericIf_() override;
};

class ZEL_API GroupToUnitDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<GroupToUnitDir, GroupToUnitDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onGroupToUnit(const Group::GroupKey& key) override {
    zelForward(&GenericIf_::onGroupToUnit, key);
  }
  void onGroupToUnit() override { zelForwardCollection(Attr::groupToUnit); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API GroupProfileSelectionIn::GenericIf_
    : public Zel::ObjectGenericIf<GroupProfileSelectionIn> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class ZEL_API GroupProfileSelectionOut::GenericIf_
    : public Zel::ObjectGenericIf<GroupProfileSelectionOut> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class ZEL_API UnitProfileSelection::GenericIf_ : public Zel::ObjectGenericIf<UnitProfileSelection> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class ZEL_API ProfileSelection::GenericIf_ : public Zel::ObjectGenericIf<ProfileSelection> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

class ZEL_API ProfileKeySet::GenericIf_ : public Zel::ObjectGenericIf<ProfileKeySet> {
public:
  using ObjectGenericIf::ObjectGenericIf;

protected:
  ~GenericIf_() override;
};

} // namespace Maintenance
