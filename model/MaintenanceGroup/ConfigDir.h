#pragma once

#include <model/MaintenanceGroup/Config.h>

namespace Maintenance::MaintenanceGroup {

/// The directory of configured groups: one entity that maps each key to its `Config`.
///
///     Zel::Ptr<ConfigDir> groups = configDirFactory("groups");
///     groups->maintenanceGroupIs(Group::GroupKey(Group::groupTypeBgp, "uplink-peers"));
///
/// It owns its members. A handle on a member keeps it alive beyond its removal, with its parent
/// null.
class ZEL_API ConfigDir : public Zel::AttrLogEntity<ConfigDir> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::MaintenanceGroup::ConfigDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<ConfigDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using MaintenanceGroupMap = Zel::HashMap<Config, Group::GroupKey, Config>;

  struct Attr {
    static constexpr Zel::AttributeId maintenanceGroup = 258;
  };

  explicit ConfigDir(Zel::Name name);

  /// The group of this key; null if there is none.
  Zel::Ptr<Config> maintenanceGroup(const Group::GroupKey& key) const;
  /// Makes a group whose entity name is the text of its key, counting and telling nothing; for what
  /// builds on the directory. Throws `Zel::NameInUseException` if the key is there.
  Zel::Ptr<Config> newMaintenanceGroup(const Group::GroupKey& key);
  /// The group of this key, made if it is not there. A hit moves the version counter too.
  Zel::ValidPtr<Config> maintenanceGroupIs(const Group::GroupKey& key);
  /// Removes a group and yields it; null if the key is not there.
  Zel::Ptr<Config> maintenanceGroupDel(const Group::GroupKey& key);
  /// The same for the group under the iterator, which stays on it; its next `advance()` goes on
  /// from there.
  Zel::Ptr<Config> maintenanceGroupDel(MaintenanceGroupMap::Iterator& at);
  void maintenanceGroupDelAll();
  /// Tells the notifiees of a key without any change.
  void maintenanceGroupNotify(const Group::GroupKey& key);
  /// The collection itself, for iteration.
  const MaintenanceGroupMap& maintenanceGroupMap() const noexcept { return maintenanceGroup_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~ConfigDir() override;

private:
  MaintenanceGroupMap maintenanceGroup_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `ConfigDir`.
class ZEL_API ConfigDir::NotifieeConst
    : public Zel::NotifieeOf<ConfigDir, ConfigDir::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A group came or went; a look-up tells which.
  virtual void onMaintenanceGroup(const Group::GroupKey& key);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onMaintenanceGroupzelImmediate();
  virtual void onMaintenanceGroup();

  Zel::PendingKey<Group::GroupKey> zelPendingMaintenanceGroup;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API ConfigDir::Notifiee : public ConfigDir::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<ConfigDir> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<ConfigDir> configDirFactory(Zel::Name name);

} // namespace Maintenance::MaintenanceGroup
