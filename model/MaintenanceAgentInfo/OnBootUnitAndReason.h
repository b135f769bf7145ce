#pragma once

#include <Zel/Layers>
#include <model/Unit/Enumerations.h>

namespace Maintenance {

/// A unit that the agent took into maintenance on boot, and who had asked for it. An immutable
/// value, changed only by assigning a whole new one.
class ZEL_API OnBootUnitAndReason {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::OnBootUnitAndReason";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<OnBootUnitAndReason>;
  using GenericIf_ = Zel::ValueGenericIf<OnBootUnitAndReason>;

  struct Attr {
    static constexpr Zel::AttributeId unitName = 2;
    static constexpr Zel::AttributeId reason = 3;
  };

  /// Reads the text form. Throws `Zel::RangeException`.
  OnBootUnitAndReason(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  OnBootUnitAndReason(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  OnBootUnitAndReason() noexcept = default;
  OnBootUnitAndReason(Zel::String8 unitName, Unit::InputSrc reason) noexcept
      : unitName_(std::move(unitName)), reason_(reason) {}

  Zel::String8 unitName() const noexcept { return unitName_; }
  Unit::InputSrc reason() const noexcept { return reason_; }

  friend bool operator==(const OnBootUnitAndReason& a, const OnBootUnitAndReason& b) noexcept {
    return a.reason_ == b.reason_ && a.unitName_ == b.unitName_;
  }
  /// By name, then by the number of the reason.
  friend bool operator<(const OnBootUnitAndReason& a, const OnBootUnitAndReason& b) noexcept {
    return a.unitName_ == b.unitName_ ? a.reason_ < b.reason_ : a.unitName_ < b.unitName_;
  }
  friend bool operator<=(const OnBootUnitAndReason& a, const OnBootUnitAndReason& b) noexcept {
    return !(b < a);
  }
  friend bool operator>(const OnBootUnitAndReason& a, const OnBootUnitAndReason& b) noexcept {
    return b < a;
  }
  friend bool operator>=(const OnBootUnitAndReason& a, const OnBootUnitAndReason& b) noexcept {
    return !(a < b);
  }

private:
  Zel::String8 unitName_;
  Unit::InputSrc reason_ = Unit::srcUnknown;
};

ZEL_API Zel::String8 valueToStrep(const OnBootUnitAndReason& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const OnBootUnitAndReason& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out,
                        const OnBootUnitAndReason& value);

} // namespace Maintenance
