#pragma once

#include <model/Mapping/GroupToUnit.h>

namespace Maintenance {

/// The directory of the groups that belong to units: one entity that maps each group's key to its
/// `GroupToUnit`.
///
///     Zel::Ptr<GroupToUnitDir> groups = groupToUnitDirFactory("groupToUnit");
///     groups->groupToUnitIs(Group::GroupKey(Group::groupTypeBgp, "peers"))->unitNameIs("u", true);
///
/// It owns its members. A handle on a member keeps it alive beyond its removal, with its parent
/// null.
class ZEL_API GroupToUnitDir : public Zel::AttrLogEntity<GroupToUnitDir> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::GroupToUnitDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<GroupToUnitDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using GroupToUnitMap = Zel::HashMap<GroupToUnit, Group::GroupKey, GroupToUnit>;

  struct Attr {
    static constexpr Zel::AttributeId groupToUnit = 258;
  };

  explicit GroupToUnitDir(Zel::Name name);

  /// What is known of the group; null if there is none.
  Zel::Ptr<GroupToUnit> groupToUnit(const Group::GroupKey& key) const;
  /// Makes a member, counting and telling nothing; for what builds on the directory. Throws
  /// `Zel::NameInUseException` if the key is there.
  Zel::Ptr<GroupToUnit> newGroupToUnit(const Group::GroupKey& key);
  /// The member of this key, made if it is not there. A hit moves the version counter too.
  Zel::ValidPtr<GroupToUnit> groupToUnitIs(const Group::GroupKey& key);
  /// Removes a member and yields it; null if the key is not there.
  Zel::Ptr<GroupToUnit> groupToUnitDel(const Group::GroupKey& key);
  /// The same for the member under the iterator, which stays on it; its next `advance()` goes on
  /// from there.
  Zel::Ptr<GroupToUnit> groupToUnitDel(GroupToUnitMap::Iterator& at);
  void groupToUnitDelAll();
  /// Tells the notifiees of a key without any change.
  void groupToUnitNotify(const Group::GroupKey& key);
  /// The collection itself, for iteration.
  const GroupToUnitMap& groupToUnitMap() const noexcept { return groupToUnit_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~GroupToUnitDir() override;

private:
  GroupToUnitMap groupToUnit_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `GroupToUnitDir`.
class ZEL_API GroupToUnitDir::NotifieeConst
    : public Zel::NotifieeOf<GroupToUnitDir, GroupToUnitDir::NotifieeConst,
                             Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A group came or went; a look-up tells which.
  virtual void onGroupToUnit(const Group::GroupKey& key);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onGroupToUnitzelImmediate();
  virtual void onGroupToUnit();

  Zel::PendingKey<Group::GroupKey> zelPendingGroupToUnit;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API GroupToUnitDir::Notifiee : public GroupToUnitDir::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<GroupToUnitDir> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<GroupToUnitDir> groupToUnitDirFactory(Zel::Name name);

} // namespace Maintenance
