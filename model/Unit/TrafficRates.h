#pragma once

#include <Zel/Layers>

namespace Maintenance::Unit {

/// A sample of traffic. A new one is all zero; each member may be set by itself on the copy at
/// hand.
class ZEL_API TrafficRates {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::Unit::TrafficRates";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const { return _fwkType(); }
  using _Type = Zel::TypeOf<TrafficRates>;
  using GenericIf_ = Zel::ValueGenericIf<TrafficRates>;

  struct Attr {
    static constexpr Zel::AttributeId outBitsRate = 2;
    static constexpr Zel::AttributeId inBitsRate = 3;
    static constexpr Zel::AttributeId statsUpdateTime = 4;
  };

  TrafficRates() noexcept = default;
  /// Reads the text form. Throws `Zel::RangeException`.
  TrafficRates(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  /// Reads the fields from the attribute log. Throws `Zel::RangeException`.
  TrafficRates(Zel::NboAttrLog::In* in, Zel::StreamBogon stream);

  /// Outgoing rate in bits per second.
  unsigned long long outBitsRate() const noexcept { return outBitsRate_; }
  void outBitsRateIs(unsigned long long rate) noexcept { outBitsRate_ = rate; }

  /// Incoming rate in bits per second.
  unsigned long long inBitsRate() const noexcept { return inBitsRate_; }
  void inBitsRateIs(unsigned long long rate) noexcept { inBitsRate_ = rate; }

  /// Time of the sample, in seconds since 1970 UTC.
  double statsUpdateTime() const noexcept { return statsUpdateTime_; }
  void statsUpdateTimeIs(double time) noexcept { statsUpdateTime_ = time; }

  /// All three equal; a NaN time makes two samples unequal.
  friend bool operator==(const TrafficRates& a, const TrafficRates& b) noexcept = default;

private:
  unsigned long long outBitsRate_ = 0;
  unsigned long long inBitsRate_ = 0;
  double statsUpdateTime_ = 0.0;
};

ZEL_API Zel::String8 valueToStrep(const TrafficRates& value);
ZEL_API std::ostream& operator<<(std::ostream& out, const TrafficRates& value);
ZEL_API void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const TrafficRates& value);

} // namespace Maintenance::Unit
