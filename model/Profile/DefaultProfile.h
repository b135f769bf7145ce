#pragma once

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>

namespace Maintenance::Profile {

/// Says which profile is the default.
class ZEL_API DefaultProfile : public Zel::AttrLogEntity<DefaultProfile> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Profile::DefaultProfile";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<DefaultProfile>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  struct Attr {
    static constexpr Zel::AttributeId systemDefaultProfileName = 258;
    static constexpr Zel::AttributeId profileName = 259;
    static constexpr Zel::AttributeId reservedProfileName = 260;
  };

  explicit DefaultProfile(Zel::Name name);

  /// The name that stands for the system's own default, "#DEFAULTPROFILE".
  Zel::String8 systemDefaultProfileName() const;

  /// The name of the default profile.
  Zel::String8 profileName() const noexcept { return Zel::read(*this, profileName_); }
  /// Any text is taken, the two constants included.
  void profileNameIs(Zel::String8 name);

  /// The name that no configured profile should take, "default".
  Zel::String8 reservedProfileName() const;

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~DefaultProfile() override;

private:
  Zel::String8 profileName_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of the changes of a `DefaultProfile`.
class ZEL_API DefaultProfile::NotifieeConst
    : public Zel::NotifieeOf<DefaultProfile, DefaultProfile::NotifieeConst,
                             Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  /// The name has changed.
  virtual void onProfileName();
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API DefaultProfile::Notifiee : public DefaultProfile::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<DefaultProfile> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

ZEL_API Zel::Ptr<DefaultProfile> defaultProfileFactory(Zel::Name name);

} // namespace Maintenance::Profile
