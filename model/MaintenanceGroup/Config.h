#pragma once

#include <Group/GroupKey>
#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>
#include <model/Profile/ProfileKey.h>

namespace Maintenance::MaintenanceGroup {

/// One configured group: the profiles that apply to its members. Who the members are does not stand
/// here.
///
/// In a `ConfigDir`, which makes it, its entity name is the text of its key. One from the factory,
/// or from a record of the attribute log, has the name that it was given.
class ZEL_API Config : public Zel::AttrLogEntity<Config> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::MaintenanceGroup::Config";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Config>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  class ZEL_API ZelProfile : public Zel::MapEntry<ZelProfile, Profile::ProfileKey, bool> {
    using MapEntry::MapEntry;
  };
  using ProfileMap = Zel::HashMap<ZelProfile, Profile::ProfileKey, bool>;

  struct Attr {
    static constexpr Zel::AttributeId key = 258;
    static constexpr Zel::AttributeId profile = 259;
  };

  Config(Zel::Name name, const Group::GroupKey& key);

  const Group::GroupKey& key() const noexcept { return Zel::read(*this, key_); }
  /// The key, under the name that collections ask for.
  const Group::GroupKey& fwkKey() const noexcept { return Zel::read(*this, key_); }

  /// The profiles of the group. A key that is there may hold true or false; reading one that is not
  /// yields false.
  bool profile(const Profile::ProfileKey& key) const;
  /// Adds the key or changes its value.
  void profileIs(const Profile::ProfileKey& key, bool value);
  /// Removes the key and yields the value that it held; false if it is not there.
  bool profileDel(const Profile::ProfileKey& key);
  /// The same for the key under the iterator, which stays on it.
  bool profileDel(ProfileMap::Iterator& at);
  void profileDelAll();
  /// Adds the key, counting and telling nothing. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelProfile> newProfile(const Profile::ProfileKey& key, bool value);
  /// Tells the notifiees of a key without any change. The key must outlive the call.
  void profileNotify(const Profile::ProfileKey& key);
  /// The collection itself, for iteration.
  const ProfileMap& profileMap() const noexcept { return profile_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const Group::GroupKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<Config> Config::*zelMemberNext() noexcept {
    return &Config::memberNext_;
  }

protected:
  ~Config() override;

private:
  const Group::GroupKey key_;
  ProfileMap profile_;
  Zel::Ptr<Config> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `Config`.
class ZEL_API Config::NotifieeConst
    : public Zel::NotifieeOf<Config, Config::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A profile came, changed or went; a look-up tells which.
  virtual void onProfile(const Profile::ProfileKey& key);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onProfilezelImmediate();
  virtual void onProfile();

  Zel::PendingKey<Profile::ProfileKey> zelPendingProfile;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API Config::Notifiee : public Config::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<Config> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<Config> configFactory(Zel::Name name, const Group::GroupKey& key);

} // namespace Maintenance::MaintenanceGroup
