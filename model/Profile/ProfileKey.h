#pragma once

#include <model/Profile/ProfileType.h>

#include <Zel/Layers>

namespace Maintenance::Profile {

/// Names one profile. An immutable value, changed only by assigning a whole new key.
class ZEL_API ProfileKey {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Profile::ProfileKey";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<ProfileKey>;
  using GenericIf_ = Zel::ValueGenericIf<ProfileKey>;

  struct Attr {
    static constexpr Zel::AttributeId type = 2;
    static constexpr Zel::AttributeId name = 3;
    static constexpr Zel::AttributeId hash = 4;
  };

  /// Reads the text form. Throws `Zel::RangeException`.
  ProfileKey(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  ProfileKey(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  ProfileKey() noexcept = default;
  ProfileKey(ProfileType type, Zel::String8 name) noexcept : type_(type), name_(std::move(name)) {}

  ProfileType type() const noexcept { return type_; }
  const Zel::String8& name() const noexcept { return name_; }

  /// Computed at each call, without allocation: the one-at-a-time hash, Jenkins, cut in two by the
  /// hash of the name.
  unsigned hash() const noexcept;

  friend bool operator==(const ProfileKey& a, const ProfileKey& b) noexcept {
    return a.type_ == b.type_ && a.name_ == b.name_;
  }
  /// By type, then by name.
  friend bool operator<(const ProfileKey& a, const ProfileKey& b) noexcept {
    return a.type_ != b.type_ ? a.type_ < b.type_ : a.name_ < b.name_;
  }
  friend bool operator<=(const ProfileKey& a, const ProfileKey& b) noexcept { return !(b < a); }
  friend bool operator>(const ProfileKey& a, const ProfileKey& b) noexcept { return !(a <= b); }
  friend bool operator>=(const ProfileKey& a, const ProfileKey& b) noexcept { return !(a < b); }

private:
  ProfileType type_ = profileTypeNone;
  Zel::String8 name_;
};

ZEL_API Zel::String8 valueToStrep(const ProfileKey& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const ProfileKey& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const ProfileKey& value);

} // namespace Maintenance::Profile
