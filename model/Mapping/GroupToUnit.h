#pragma once

#include <Group/GroupKey>
#include <Zel/AttrLogEntity>
#include <Zel/Attribute>

namespace Maintenance {

/// The units that one group belongs to. It lives in a `GroupToUnitDir` and is made by it; its
/// entity name is empty, its key alone tells it from others.
class ZEL_API GroupToUnit : public Zel::AttrLogEntity<GroupToUnit> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::GroupToUnit";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<GroupToUnit>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  class ZEL_API ZelUnitName : public Zel::MapEntry<ZelUnitName, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using UnitNameMap = Zel::HashMap<ZelUnitName, Zel::Name, bool>;

  struct Attr {
    static constexpr Zel::AttributeId key = 258;
    static constexpr Zel::AttributeId unitName = 259;
  };

  /// Clients use `GroupToUnitDir::groupToUnitIs`.
  explicit GroupToUnit(const Group::GroupKey& key);

  const Group::GroupKey& key() const noexcept { return Zel::read(*this, key_); }
  /// The key, under the name that collections ask for.
  const Group::GroupKey& fwkKey() const noexcept { return Zel::read(*this, key_); }

  /// The units. A name that is there may hold true or false; reading one that is not yields false.
  bool unitName(Zel::Name name) const;
  /// Adds the name or changes its value.
  void unitNameIs(Zel::Name name, bool value);
  /// Removes the name and yields the value that it held; false if it is not there.
  bool unitNameDel(Zel::Name name);
  /// The same for the name under the iterator, which stays on it.
  bool unitNameDel(UnitNameMap::Iterator& at);
  void unitNameDelAll();
  /// Adds the name, counting and telling nothing. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelUnitName> newUnitName(Zel::Name name, bool value);
  /// Tells the notifiees of a name without any change.
  void unitNameNotify(Zel::Name name);
  /// The collection itself, for iteration.
  const UnitNameMap& unitNameMap() const noexcept { return unitName_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const Group::GroupKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<GroupToUnit> GroupToUnit::*zelMemberNext() noexcept {
    return &GroupToUnit::memberNext_;
  }

protected:
  ~GroupToUnit() override;

private:
  const Group::GroupKey key_;
  UnitNameMap unitName_;
  Zel::Ptr<GroupToUnit> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `GroupToUnit`.
class ZEL_API GroupToUnit::NotifieeConst
    : public Zel::NotifieeOf<GroupToUnit, GroupToUnit::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A unit came, changed or went; a look-up tells which.
  virtual void onUnitName(Zel::Name name);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onUnitNamezelImmediate();
  virtual void onUnitName();

  Zel::PendingKey<Zel::Name> zelPendingUnitName;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API GroupToUnit::Notifiee : public GroupToUnit::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<GroupToUnit> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

} // namespace Maintenance
