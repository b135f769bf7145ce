#include "Values.h"

#include <text/EnumerationText.h>

namespace Foreign {

using Position = Zel::String8::IteratorConst;

ZEL_ENUMERATION_TEXT(Zone, ZoneInstance)
ZEL_ENUMERATION_TEXT(Urgency, UrgencyInstance)

#undef ZEL_ENUMERATION_TEXT

SkuKey::SkuKey(Position& first, const Position& last) { Zel::readInto(first, last, *this); }
Zel::String8 valueToStrep(const SkuKey& value) { return Zel::textOf(value); }
std::ostream& operator<<(std::ostream& out, const SkuKey& value) {
  return Zel::printText(out, value);
}

Dimensions::Dimensions(Position& first, const Position& last) { Zel::readInto(first, last, *this); }
Zel::String8 valueToStrep(const Dimensions& value) { return Zel::textOf(value); }
std::ostream& operator<<(std::ostream& out, const Dimensions& value) {
  return Zel::printText(out, value);
}

SlotCode::SlotCode(Position& first, const Position& last) { Zel::readInto(first, last, *this); }
Zel::String8 valueToStrep(const SlotCode& value) { return Zel::textOf(value); }
std::ostream& operator<<(std::ostream& out, const SlotCode& value) {
  return Zel::printText(out, value);
}

Alarm::Alarm(Position& first, const Position& last) { Zel::readInto(first, last, *this); }
Zel::String8 valueToStrep(const Alarm& value) { return Zel::textOf(value); }
std::ostream& operator<<(std::ostream& out, const Alarm& value) {
  return Zel::printText(out, value);
}

TourKey::TourKey(Position& first, const Position& last) { Zel::readInto(first, last, *this); }
Zel::String8 valueToStrep(const TourKey& value) { return Zel::textOf(value); }
std::ostream& operator<<(std::ostream& out, const TourKey& value) {
  return Zel::printText(out, value);
}

Limits::Limits(Position& first, const Position& last) { Zel::readInto(first, last, *this); }
Zel::String8 valueToStrep(const Limits& value) { return Zel::textOf(value); }
std::ostream& operator<<(std::ostream& out, const Limits& value) {
  return Zel::printText(out, value);
}

} // namespace Foreign
