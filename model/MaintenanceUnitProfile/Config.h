#pragma once

#include <model/Profile/Config.h>

namespace MaintenanceUnitProfile {

/// A profile of units: how a unit behaves on boot. Its `key` is of the type `profileTypeUnit`, with
/// its name; its entity name is empty.
///
/// Notifiees of this class and those of its base stand in one list, that of the base, and the
/// latter hear nothing of the attributes here.
class ZEL_API Config : public Zel::AttrLogEntity<Config, Maintenance::Profile::Config> {
public:
  static constexpr std::string_view zelTypeName = "MaintenanceUnitProfile::Config";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Config>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  struct Attr {
    static constexpr Zel::AttributeId profileName = 386;
    static constexpr Zel::AttributeId onBootDuration = 387;
    static constexpr Zel::AttributeId minOnBootDuration = 388;
    static constexpr Zel::AttributeId maxOnBootDuration = 389;
    static constexpr Zel::AttributeId onBootEnabled = 390;
  };

  explicit Config(Zel::String8 profileName);

  /// The name within `key`.
  Zel::String8 profileName() const noexcept { return Zel::read(*this, profileName_); }

  /// The duration of maintenance on boot. Whoever writes it is to keep between the two limits: the
  /// library takes any number.
  unsigned onBootDuration() const noexcept { return Zel::read(*this, onBootDuration_); }
  void onBootDurationIs(unsigned duration);

  /// 300, with which `onBootDuration` starts.
  unsigned minOnBootDuration() const noexcept;
  /// 3600.
  unsigned maxOnBootDuration() const noexcept;

  /// Whether maintenance on boot is enabled.
  bool onBootEnabled() const noexcept { return Zel::read(*this, onBootEnabled_); }
  void onBootEnabledIs(bool enabled);

  Zel::String8 attributeString(Zel::AttributeId id) const override;

  const Zel::String8& zelKey() const noexcept { return profileName_; }
  static constexpr Zel::Ptr<Config> Config::*zelMemberNext() noexcept {
    return &Config::memberNext_;
  }

protected:
  ~Config() override;

private:
  static constexpr unsigned minOnBootDuration_ = 300;
  static constexpr unsigned maxOnBootDuration_ = 3600;

  const Zel::String8 profileName_;
  unsigned onBootDuration_ = minOnBootDuration_;
  bool onBootEnabled_ = false;
  Zel::Ptr<Config> memberNext_;
};

/// Hears of the changes of a `Config`.
class ZEL_API Config::NotifieeConst
    : public Zel::DerivedNotifieeOf<Config, Maintenance::Profile::Config::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onOnBootDuration();
  virtual void onOnBootEnabled();
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API Config::Notifiee : public Config::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<Config> notifier() const noexcept {
    return Zel::Ptr<Config>(static_cast<Config*>(writableNotifier().ptr()));
  }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<Config> configFactory(Zel::String8 profileName);

} // namespace MaintenanceUnitProfile
