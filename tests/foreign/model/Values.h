#pragma once

#include "Enumerations.h"

#include <Zel/Layers>

namespace Foreign {

/// What a product is known by: immutable, with both fields as constructor arguments.
class SkuKey {
public:
  static constexpr std::string_view zelTypeName = "Foreign::SkuKey";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  using _Type = Zel::TypeOf<SkuKey>;
  using GenericIf_ = Zel::ValueGenericIf<SkuKey>;

  struct Attr {
    static constexpr Zel::AttributeId zone = 2;
    static constexpr Zel::AttributeId sku = 3;
    static constexpr Zel::AttributeId hash = 4;
  };

  SkuKey() noexcept = default;
  /// Reads the text form. Throws `Zel::RangeException`.
  SkuKey(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);
  SkuKey(Zone zone, Zel::String8 sku) noexcept : zone_(zone), sku_(std::move(sku)) {}

  Zone zone() const noexcept { return zone_; }
  const Zel::String8& sku() const noexcept { return sku_; }
  unsigned hash() const noexcept;

  friend bool operator==(const SkuKey& a, const SkuKey& b) noexcept {
    return a.zone_ == b.zone_ && a.sku_ == b.sku_;
  }
  /// By zone, then by sku.
  friend bool operator<(const SkuKey& a, const SkuKey& b) noexcept {
    return a.zone_ != b.zone_ ? a.zone_ < b.zone_ : a.sku_ < b.sku_;
  }

private:
  Zone zone_ = ambient;
  Zel::String8 sku_;
};

Zel::String8 valueToStrep(const SkuKey& value);
std::ostream& operator<<(std::ostream& out, const SkuKey& value);

/// Size and weight; each member may be set by itself on the copy at hand.
class Dimensions {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Dimensions";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  using _Type = Zel::TypeOf<Dimensions>;
  using GenericIf_ = Zel::ValueGenericIf<Dimensions>;

  struct Attr {
    static constexpr Zel::AttributeId width = 2;
    static constexpr Zel::AttributeId fragile = 3;
    static constexpr Zel::AttributeId weight = 4;
    static constexpr Zel::AttributeId zone = 5;
  };

  Dimensions() noexcept = default;
  /// Reads the text form. Throws `Zel::RangeException`.
  Dimensions(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);
  Dimensions(unsigned width, bool fragile, double weight, Zone zone) noexcept
      : width_(width), fragile_(fragile), weight_(weight), zone_(zone) {}

  /// In millimetres.
  unsigned width() const noexcept { return width_; }
  void widthIs(unsigned width) noexcept { width_ = width; }

  bool fragile() const noexcept { return fragile_; }
  void fragileIs(bool fragile) noexcept { fragile_ = fragile; }

  /// In kilograms. A NaN weight makes two values unequal.
  double weight() const noexcept { return weight_; }
  void weightIs(double weight) noexcept { weight_ = weight; }

  Zone zone() const noexcept { return zone_; }
  void zoneIs(Zone zone) noexcept { zone_ = zone; }

  friend bool operator==(const Dimensions& a, const Dimensions& b) noexcept = default;

private:
  unsigned width_ = 0;
  bool fragile_ = false;
  double weight_ = 0.0;
  Zone zone_ = ambient;
};

Zel::String8 valueToStrep(const Dimensions& value);
std::ostream& operator<<(std::ostream& out, const Dimensions& value);

/// A place in a rack. Its constructor argument is the text `<aisle>:<shelf>`, which is worked out
/// at each read.
class SlotCode {
public:
  static constexpr std::string_view zelTypeName = "Foreign::SlotCode";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  using _Type = Zel::TypeOf<SlotCode>;
  using GenericIf_ = Zel::ValueGenericIf<SlotCode>;

  struct Attr {
    static constexpr Zel::AttributeId code = 2;
    static constexpr Zel::AttributeId aisle = 3;
    static constexpr Zel::AttributeId shelf = 4;
  };

  SlotCode() noexcept = default;
  /// Reads the text form. Throws `Zel::RangeException`.
  SlotCode(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);
  explicit SlotCode(Zel::String8 code) { codeIs(std::move(code)); }

  Zel::String8 code() const;
  /// Takes the text apart at its first ":". The empty text changes nothing. Throws
  /// `Zel::RangeException`, with nothing changed, unless a decimal number follows.
  void codeIs(Zel::String8 code);

  Zel::String8 aisle() const noexcept { return aisle_; }
  void aisleIs(Zel::String8 aisle) noexcept { aisle_ = std::move(aisle); }

  unsigned shelf() const noexcept { return shelf_; }
  void shelfIs(unsigned shelf) noexcept { shelf_ = shelf; }

  friend bool operator==(const SlotCode& a, const SlotCode& b) noexcept = default;

private:
  Zel::String8 aisle_;
  unsigned shelf_ = 0;
};

Zel::String8 valueToStrep(const SlotCode& value);
std::ostream& operator<<(std::ostream& out, const SlotCode& value);

/// A sensor and what it reports. Collections of alarms take `sensor` for the key.
class Alarm {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Alarm";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  using _Type = Zel::TypeOf<Alarm>;
  using GenericIf_ = Zel::ValueGenericIf<Alarm>;

  struct Attr {
    static constexpr Zel::AttributeId sensor = 2;
    static constexpr Zel::AttributeId urgency = 3;
  };

  Alarm() noexcept = default;
  /// Reads the text form. Throws `Zel::RangeException`.
  Alarm(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);
  Alarm(Zel::String8 sensor, Urgency urgency) noexcept
      : sensor_(std::move(sensor)), urgency_(urgency) {}

  Zel::String8 sensor() const noexcept { return sensor_; }
  Urgency urgency() const noexcept { return urgency_; }

  friend bool operator==(const Alarm& a, const Alarm& b) noexcept = default;
  /// By sensor, then by urgency.
  friend bool operator<(const Alarm& a, const Alarm& b) noexcept {
    return a.sensor_ == b.sensor_ ? a.urgency_ < b.urgency_ : a.sensor_ < b.sensor_;
  }

private:
  Zel::String8 sensor_;
  Urgency urgency_ = urgencyUnknown;
};

Zel::String8 valueToStrep(const Alarm& value);
std::ostream& operator<<(std::ostream& out, const Alarm& value);

/// Key of a picking tour.
class TourKey {
public:
  static constexpr std::string_view zelTypeName = "Foreign::TourKey";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  using _Type = Zel::TypeOf<TourKey>;
  using GenericIf_ = Zel::ValueGenericIf<TourKey>;

  struct Attr {
    static constexpr Zel::AttributeId zone = 2;
    static constexpr Zel::AttributeId round = 3;
    static constexpr Zel::AttributeId hash = 4;
  };

  TourKey() noexcept = default;
  /// Reads the text form. Throws `Zel::RangeException`.
  TourKey(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);
  TourKey(Zone zone, unsigned round) noexcept : zone_(zone), round_(round) {}

  Zone zone() const noexcept { return zone_; }
  unsigned round() const noexcept { return round_; }
  unsigned hash() const noexcept;

  friend bool operator==(const TourKey& a, const TourKey& b) noexcept = default;
  /// By zone as a signed number, then by round as an unsigned one.
  friend bool operator<(const TourKey& a, const TourKey& b) noexcept {
    return a.zone_ != b.zone_ ? a.zone_ < b.zone_ : a.round_ < b.round_;
  }

private:
  Zone zone_ = ambient;
  unsigned round_ = 0;
};

Zel::String8 valueToStrep(const TourKey& value);
std::ostream& operator<<(std::ostream& out, const TourKey& value);

/// Holds nothing: its attributes are constants of the type.
class Limits {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Limits";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  using _Type = Zel::TypeOf<Limits>;
  using GenericIf_ = Zel::ValueGenericIf<Limits>;

  struct Attr {
    static constexpr Zel::AttributeId maxShelf = 2;
    static constexpr Zel::AttributeId homeAisle = 3;
  };

  Limits() noexcept = default;
  /// Reads the text form, an empty frame. Throws `Zel::RangeException`.
  Limits(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last);

  unsigned maxShelf() const noexcept { return 40; }
  Zel::Name homeAisle() const { return "A"; }

  friend bool operator==(const Limits&, const Limits&) noexcept { return true; }
};

Zel::String8 valueToStrep(const Limits& value);
std::ostream& operator<<(std::ostream& out, const Limits& value);

} // namespace Foreign
