#pragma once

#include <Zel/TypeTable>
#include <model/Profile/ProfileKey.h>
#include <model/Unit/TrafficRates.h>
#include <text/Value.h>

namespace TestText {

/// A value with all kinds of attributes at once, other values among them.
class Mixed {
public:
  static constexpr std::string_view zelTypeName = "TestText::Mixed";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType() { return nullptr; }

  Mixed() = default;
  Mixed(Zel::String8 name, Zel::String8 label, const Maintenance::Profile::ProfileKey& profile)
      : name_(std::move(name)), profile_(profile) {
    if (!label.empty()) {
      labelIs(std::move(label));
    }
  }
  Mixed(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last) {
    Zel::readInto(first, last, *this);
  }

  Zel::String8 name() const { return name_; }
  /// Worked out from the number.
  Zel::String8 label() const { return Zel::format("#%u", number_); }
  void labelIs(Zel::String8 /*label*/) { Zel::throwInternalException("no label is taken"); }
  unsigned number() const { return number_; }
  /// Refuses 13.
  void numberIs(unsigned number) {
    if (number == 13) {
      Zel::throwRangeException("13 is refused");
    }
    number_ = number;
  }
  const Maintenance::Profile::ProfileKey& profile() const { return profile_; }
  const Maintenance::Unit::TrafficRates& rates() const { return rates_; }
  void ratesIs(const Maintenance::Unit::TrafficRates& rates) { rates_ = rates; }
  bool isOdd() const { return number_ % 2 != 0; }
  bool isFinal() const { return isFinal_; }
  void isFinalIs(bool isFinal) { isFinal_ = isFinal; }

  friend bool operator==(const Mixed& a, const Mixed& b) = default;

private:
  Zel::String8 name_ = "nobody";
  unsigned number_ = 7;
  Maintenance::Profile::ProfileKey profile_{Maintenance::Profile::profileTypeUnit, "default"};
  Maintenance::Unit::TrafficRates rates_;
  bool isFinal_ = true;
};

/// A value with more constructor arguments than most.
class Wide {
public:
  static constexpr std::string_view zelTypeName = "Wide";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType() { return nullptr; }

  Wide() = default;
  Wide(unsigned a, unsigned b, unsigned c, unsigned d, unsigned e, unsigned f, unsigned g,
       unsigned h, Zel::String8 i)
      : numbers_{a, b, c, d, e, f, g, h}, i_(std::move(i)) {}
  Wide(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last) {
    Zel::readInto(first, last, *this);
  }

  template <std::size_t Place>
  unsigned number() const {
    return numbers_[Place];
  }
  Zel::String8 i() const { return i_; }

  friend bool operator==(const Wide& a, const Wide& b) = default;

private:
  std::array<unsigned, 8> numbers_{1, 2, 3, 4, 5, 6, 7, 8};
  Zel::String8 i_ = "nine";
};

inline Zel::String8 valueToStrep(const Mixed& value) { return Zel::textOf(value); }
inline Zel::String8 valueToStrep(const Wide& value) { return Zel::textOf(value); }

} // namespace TestText
