#pragma once

#include <model/Profile/ProfileKey.h>

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>

namespace Maintenance::Profile {

/// One configured profile: an entity that marks the existence of its key. It lives in a `ConfigDir`
/// and is made by it; its entity name is empty.
class ZEL_API Config : public Zel::AttrLogEntity<Config> {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Profile::Config";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Config>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;

  struct Attr {
    static constexpr Zel::AttributeId key = 258;
  };

  /// Clients use `ConfigDir::configIs`.
  explicit Config(const ProfileKey& key);

  const ProfileKey& key() const noexcept { return Zel::read(*this, key_); }
  /// The key, under the name that collections ask for.
  const ProfileKey& fwkKey() const noexcept { return Zel::read(*this, key_); }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const ProfileKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<Config> Config::*zelMemberNext() noexcept {
    return &Config::memberNext_;
  }

protected:
  ~Config() override;

private:
  const ProfileKey key_;
  Zel::Ptr<Config> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

/// Hears of a `Config`; there is nothing to hear but its end.
class ZEL_API Config::NotifieeConst
    : public Zel::NotifieeOf<Config, Config::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;
};

/// What clients derive from; it may write to what it hears of.
class ZEL_API Config::Notifiee : public Config::NotifieeConst {
public:
  /// The object whose changes are heard, to be read and written; null without one.
  Zel::Ptr<Config> notifier() const noexcept { return writableNotifier(); }

protected:
  ~Notifiee() override;
};

} // namespace Maintenance::Profile
