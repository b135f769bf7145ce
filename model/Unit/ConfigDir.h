#pragma once

#include <model/Unit/Config.h>

namespace Maintenance::Unit {

/// The directory of configured units: one entity that maps each unit's name to its `Config`.
///
///     Zel::Ptr<ConfigDir> configured = configDirFactory("configured");
///     configured->configIs("Linecard3")->profileNameIs("slow");
///
/// It knows nothing of a `StatusDir`: deleting a unit here leaves its status.
///
/// It owns its members. A handle on a member keeps it alive beyond its removal, with its parent
/// null.
class ZEL_API ConfigDir : public Zel::AttrLogEntity<ConfigDir> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::ConfigDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<ConfigDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using ConfigMap = Zel::HashMap<Config, Zel::Name, Config>;

  struct Attr {
    static constexpr Zel::AttributeId config = 258;
  };

  explicit ConfigDir(Zel::Name name);

  /// The record of this unit; null if there is none.
  Zel::Ptr<Config> config(Zel::Name unit) const;
  /// Makes a record, counting and telling nothing; for what builds on the directory. Throws
  /// `Zel::NameInUseException` if the unit is there.
  Zel::Ptr<Config> newConfig(Zel::Name unit);
  /// The record of this unit, made if it is not there. A hit moves the version counter too.
  Zel::ValidPtr<Config> configIs(Zel::Name unit);
  /// Removes a record and yields it; null if the unit is not there.
  Zel::Ptr<Config> configDel(Zel::Name unit);
  /// The same for the record under the iterator, which stays on it; its next `advance()` goes on
  /// from there.
  Zel::Ptr<Config> configDel(ConfigMap::Iterator& at);
  void configDelAll();
  /// Tells the notifiees of a unit without any change.
  void configNotify(Zel::Name unit);
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
  /// A record came or went; a look-up tells which.
  virtual void onConfig(Zel::Name unit);
  /// Not called by any mutator, like the next: for reactors that work off changes later.
  virtual void onConfigzelImmediate();
  virtual void onConfig();

  Zel::PendingKey<Zel::Name> zelPendingConfig;
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

} // namespace Maintenance::Unit
