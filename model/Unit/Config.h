#pragma once

#include <Group/GroupKey>
#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>
#include <model/Unit/Enumerations.h>

namespace Maintenance::Unit {

/// What a maintenance unit is: its type, the groups that it covers and the name of the unit profile
/// that applies to it. A `Status` repeats these as facts, under the same ids; nothing here keeps
/// the two in step. It lives in a `ConfigDir`, or for itself.
class ZEL_API Config : public Zel::AttrLogEntity<Config> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::Config";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Config>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  /// The entries of the collection.
  class ZEL_API ZelGroup : public Zel::MapEntry<ZelGroup, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  using GroupMap = Zel::HashMap<ZelGroup, Group::GroupKey, bool>;

  struct Attr {
    static constexpr Zel::AttributeId unitName = 258;
    static constexpr Zel::AttributeId unitType = 259;
    static constexpr Zel::AttributeId group = 260;
    static constexpr Zel::AttributeId profileName = 261;
  };

  /// The unit's name is the entity's name.
  explicit Config(Zel::Name name);

  /// The unit's name.
  Zel::String8 unitName() const;
  /// The same, under the name that collections ask for.
  Zel::Name fwkKey() const;

  /// What kind of unit it is. Any name may go with any kind.
  UnitType unitType() const noexcept { return Zel::read(*this, unitType_); }
  void unitTypeIs(UnitType type);

  /// The groups of the unit. A key that is there may hold true or false; reading one that is not
  /// yields false.
  bool group(const Group::GroupKey& key) const;
  /// Adds the key or changes its value.
  void groupIs(const Group::GroupKey& key, bool value);
  /// Removes the key and yields the value that it held; false if it is not there.
  bool groupDel(const Group::GroupKey& key);
  /// The same for the key under the iterator, which stays on it.
  bool groupDel(GroupMap::Iterator& at);
  void groupDelAll();
  /// Adds the key, counting and telling nothing. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelGroup> newGroup(const Group::GroupKey& key, bool value);
  /// Tells the notifiees of a key without any change. The key must outlive the call.
  void groupNotify(const Group::GroupKey& key);
  /// The collection itself, for iteration.
  const GroupMap& groupMap() const noexcept { return group_; }

  /// The unit profile that applies. Whether there is one of this name is not asked.
  Zel::String8 profileName() const noexcept { return Zel::read(*this, profileName_); }
  void profileNameIs(Zel::String8 name);

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  Zel::Name zelKey() const { return name(); }
  static constexpr Zel::Ptr<Config> Config::*zelMemberNext() noexcept {
    return &Config::memberNext_;
  }

protected:
  ~Config() override;

private:
  UnitType unitType_ = userConfigured;
  GroupMap group_;
  Zel::String8 profileName_;
  Zel::Ptr<Config> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `Config`. The callback of the collection names the key that changed; a
/// look-up tells whether it came, changed or went.
class ZEL_API Config::NotifieeConst
    : public Zel::NotifieeOf<Config, Config::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onUnitType();
  virtual void onGroup(const Group::GroupKey& key);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onGroupzelImmediate();
  virtual void onGroup();
  virtual void onProfileName();

  Zel::PendingKey<Group::GroupKey> zelPendingGroup;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API Config::Notifiee : public Config::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<Config> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<Config> configFactory(Zel::Name name);

} // namespace Maintenance::Unit
