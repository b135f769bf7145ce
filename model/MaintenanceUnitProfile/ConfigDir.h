#pragma once

#include <model/MaintenanceUnitProfile/Config.h>

namespace MaintenanceUnitProfile {

/// The directory of unit profiles: one entity that maps each name to its `Config`.
///
///     Zel::Ptr<ConfigDir> profiles = configDirFactory("unit profiles");
///     profiles->configIs("careful")->onBootEnabledIs(true);
///
/// It owns its members. A handle on a member keeps it alive beyond its removal, with its parent
/// null.
class ZEL_API ConfigDir : public Zel::AttrLogEntity<ConfigDir> {
public:
  static constexpr std::string_view zelTypeName = "MaintenanceUnitProfile::ConfigDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<ConfigDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using ConfigMap = Zel::HashMap<Config, Zel::String8, Config>;

  struct Attr {
    static constexpr Zel::AttributeId config = 258;
  };

  explicit ConfigDir(Zel::Name name);

  /// The profile of this name; null if there is none.
  Zel::Ptr<Config> config(Zel::String8 profileName) const;
  /// Makes a profile, counting and telling nothing; for what builds on the directory. Throws
  /// `Zel::NameInUseException` if the name is there.
  Zel::Ptr<Config> newConfig(Zel::String8 profileName);
  /// The profile of this name, made if it is not there. A hit moves the version counter too.
  Zel::ValidPtr<Config> configIs(Zel::String8 profileName);
  /// Removes a profile and yields it; null if the name is not there.
  Zel::Ptr<Config> configDel(Zel::String8 profileName);
  /// The same for the profile under the iterator, which stays on it; its next `advance()` goes on
  /// from there.
  Zel::Ptr<Config> configDel(ConfigMap::Iterator& at);
  void configDelAll();
  /// Tells the notifiees of a name without any change.
  void configNotify(Zel::String8 profileName);
  /// The collection itself, for iteration.
  const ConfigMap& configMap() const noexcept { return config_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~ConfigDir() override;

private:
  ConfigMap config_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `ConfigDir`.
class ZEL_API ConfigDir::NotifieeConst
    : public Zel::NotifieeOf<ConfigDir, ConfigDir::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// A profile came or went; a look-up tells which.
  virtual void onConfig(Zel::String8 profileName);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onConfigzelImmediate();
  virtual void onConfig();

  Zel::PendingKey<Zel::String8> zelPendingConfig;
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

} // namespace MaintenanceUnitProfile
