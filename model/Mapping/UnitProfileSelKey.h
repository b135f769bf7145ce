#pragma once

#include <Zel/Layers>
#include <model/Mapping/ProfileChangeCause.h>

namespace Maintenance {

/// Names one profile selection: the unit, and why its profile is worked out again. An immutable
/// value, changed only by assigning a whole new key.
class ZEL_API UnitProfileSelKey {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::UnitProfileSelKey";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<UnitProfileSelKey>;
  using GenericIf_ = Zel::ValueGenericIf<UnitProfileSelKey>;

  struct Attr {
    static constexpr Zel::AttributeId unitName = 2;
    static constexpr Zel::AttributeId profileChangeCause = 3;
    static constexpr Zel::AttributeId hash = 4;
  };

  /// Reads the text form. Throws `Zel::RangeException`.
  UnitProfileSelKey(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  UnitProfileSelKey(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  UnitProfileSelKey() noexcept = default;
  UnitProfileSelKey(Zel::String8 unitName, ProfileChangeCause profileChangeCause) noexcept
      : unitName_(std::move(unitName)), profileChangeCause_(profileChangeCause) {}

  const Zel::String8& unitName() const noexcept { return unitName_; }
  ProfileChangeCause profileChangeCause() const noexcept { return profileChangeCause_; }

  /// Computed at each call, without allocation: the one-at-a-time hash, Jenkins, of the cause,
  /// which goes on from the hash of the name.
  unsigned hash() const noexcept;

  friend bool operator==(const UnitProfileSelKey& a, const UnitProfileSelKey& b) noexcept {
    return a.profileChangeCause_ == b.profileChangeCause_ && a.unitName_ == b.unitName_;
  }
  /// By name, then by cause.
  friend bool operator<(const UnitProfileSelKey& a, const UnitProfileSelKey& b) noexcept {
    return a.unitName_ == b.unitName_ ? a.profileChangeCause_ < b.profileChangeCause_
                                      : a.unitName_ < b.unitName_;
  }
  friend bool operator<=(const UnitProfileSelKey& a, const UnitProfileSelKey& b) noexcept {
    return a < b || a == b;
  }
  friend bool operator>(const UnitProfileSelKey& a, const UnitProfileSelKey& b) noexcept {
    return !(a <= b);
  }
  friend bool operator>=(const UnitProfileSelKey& a, const UnitProfileSelKey& b) noexcept {
    return !(a < b);
  }

private:
  Zel::String8 unitName_;
  ProfileChangeCause profileChangeCause_ = initialCreation;
};

ZEL_API Zel::String8 valueToStrep(const UnitProfileSelKey& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const UnitProfileSelKey& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const UnitProfileSelKey& value);

} // namespace Maintenance
