#pragma once

#include <Group/GroupKey>
#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>
#include <model/Mapping/ProfileChangeCause.h>
#include <model/Profile/ProfileKey.h>

namespace Maintenance {

/// The groups that one member belongs to, and the profiles selected for it. A member is anything
/// that can be in a maintenance group; it is known here by its entity name alone.
///
/// The mutators are virtual, so that a derived class may intercept them; those of a collection tell
/// the notifiees through `groupNotify` or `selectedProfileNotify`, overridden or not.
class ZEL_API MemberToGroup : public Zel::AttrLogEntity<MemberToGroup> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::MemberToGroup";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<MemberToGroup>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  // The entries of the collections.
  class ZEL_API ZelGroup : public Zel::MapEntry<ZelGroup, Group::GroupKey, bool> {
    using MapEntry::MapEntry;
  };
  class ZEL_API ZelSelectedProfile
      : public Zel::MapEntry<ZelSelectedProfile, Profile::ProfileType, Profile::ProfileKey> {
    using MapEntry::MapEntry;
  };

  using GroupMap = Zel::HashMap<ZelGroup, Group::GroupKey, bool>;
  using SelectedProfileMap =
      Zel::HashMap<ZelSelectedProfile, Profile::ProfileType, Profile::ProfileKey>;

  struct Attr {
    static constexpr Zel::AttributeId group = 258;
    static constexpr Zel::AttributeId selectedProfile = 259;
    static constexpr Zel::AttributeId profileChangeCause = 260;
    static constexpr Zel::AttributeId partOfDynamicUnit = 261;
  };

  /// The member's name is the entity's name.
  explicit MemberToGroup(Zel::Name name);

  // The order of the virtual operations is a part of the interface: derived classes are compiled
  // against it.

  /// Removes the group and yields the value that it held; false if it is not there.
  virtual bool groupDel(const Group::GroupKey& key);
  /// The same for the group under the iterator, which stays on it.
  virtual bool groupDel(GroupMap::Iterator& at);
  /// Tells the notifiees of a key without any change. The key must outlive the call.
  virtual void groupNotify(const Group::GroupKey& key);
  /// Adds the group or changes its value.
  virtual void groupIs(const Group::GroupKey& key, bool value);

  /// As the operations of `group`.
  virtual Profile::ProfileKey selectedProfileDel(Profile::ProfileType type);
  virtual Profile::ProfileKey selectedProfileDel(SelectedProfileMap::Iterator& at);
  virtual void selectedProfileNotify(Profile::ProfileType type);
  /// Nothing keeps the type of the key equal to the type under which it is held.
  virtual void selectedProfileIs(Profile::ProfileType type, const Profile::ProfileKey& key);

  virtual void profileChangeCauseIs(ProfileChangeCause cause);
  virtual void partOfDynamicUnitIs(bool part);

  /// The groups. A key that is there may hold true or false; reading one that is not yields false.
  bool group(const Group::GroupKey& key) const;
  /// Deletes each through `groupDel` of an iterator.
  void groupDelAll();
  /// Adds the group, counting and telling nothing. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelGroup> newGroup(const Group::GroupKey& key, bool value);
  /// The collection itself, for iteration.
  const GroupMap& groupMap() const noexcept { return group_; }

  /// The profiles in force, one at most for each type; a default key for a type without one.
  Profile::ProfileKey selectedProfile(Profile::ProfileType type) const;
  void selectedProfileDelAll();
  Zel::Ptr<ZelSelectedProfile> newSelectedProfile(Profile::ProfileType type,
                                                  const Profile::ProfileKey& key);
  const SelectedProfileMap& selectedProfileMap() const noexcept { return selectedProfile_; }

  /// Why the selected profiles are what they are.
  ProfileChangeCause profileChangeCause() const noexcept {
    return Zel::read(*this, profileChangeCause_);
  }

  /// Whether the member belongs to a unit that was made on the fly.
  bool partOfDynamicUnit() const noexcept { return Zel::read(*this, partOfDynamicUnit_); }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~MemberToGroup() override;

private:
  GroupMap group_;
  SelectedProfileMap selectedProfile_;
  ProfileChangeCause profileChangeCause_ = initialCreation;
  bool partOfDynamicUnit_ = false;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `MemberToGroup`. A callback of a collection names the key that
/// changed. No mutator calls `onXzelImmediate` or the `onX` without a key of a collection: they are
/// there for reactors that work off changes later.
class ZEL_API MemberToGroup::NotifieeConst
    : public Zel::NotifieeOf<MemberToGroup, MemberToGroup::NotifieeConst,
                             Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onGroup(const Group::GroupKey& key);
  virtual void onGroupzelImmediate();
  virtual void onGroup();
  virtual void onSelectedProfile(Profile::ProfileType type);
  virtual void onSelectedProfilezelImmediate();
  virtual void onSelectedProfile();
  virtual void onProfileChangeCause();
  virtual void onPartOfDynamicUnit();

  Zel::PendingKey<Group::GroupKey> zelPendingGroup;
  Zel::PendingKey<Profile::ProfileType> zelPendingSelectedProfile;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API MemberToGroup::Notifiee : public MemberToGroup::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<MemberToGroup> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

} // namespace Maintenance
