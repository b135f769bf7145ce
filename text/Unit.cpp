#include <text/EnumerationText.h>

#include <model/Unit/Constants.h>
#include <model/Unit/Enumerations.h>
#include <model/Unit/StageMgrInstKey.h>
#include <model/Unit/TrafficRates.h>

namespace Maintenance::Unit {

using Position = Zel::String8::IteratorConst;

ZEL_ENUMERATION_TEXT(UnitType, UnitTypeInstance)
ZEL_ENUMERATION_TEXT(MaintenanceOp, MaintenanceOpInstance)
ZEL_ENUMERATION_TEXT(InputSrc, InputSrcInstance)
ZEL_ENUMERATION_TEXT(State, StateInstance)

TrafficRates::TrafficRates(Position& first, const Position& last) {
  Zel::readInto(first, last, *this);
}

StageMgrInstKey::StageMgrInstKey(Position& first, const Position& last) {
  Zel::readInto(first, last, *this);
}

BuiltinUnitName::BuiltinUnitName(Position& first, const Position& last) {
  Zel::readInto(first, last, *this);
}

MaintenanceStageClasses::MaintenanceStageClasses(Position& first, const Position& last) {
  Zel::readInto(first, last, *this);
}

MaintenanceStageList::MaintenanceStageList(Position& first, const Position& last) {
  Zel::readInto(first, last, *this);
}

Zel::String8 valueToStrep(const TrafficRates& value) { return Zel::textOf(value); }
Zel::String8 valueToStrep(const StageMgrInstKey& value) { return Zel::textOf(value); }
Zel::String8 valueToStrep(const BuiltinUnitName& value) { return Zel::textOf(value); }
Zel::String8 valueToStrep(const MaintenanceStageClasses& value) { return Zel::textOf(value); }
Zel::String8 valueToStrep(const MaintenanceStageList& value) { return Zel::textOf(value); }

std::ostream& operator<<(std::ostream& out, const TrafficRates& value) {
  return Zel::printText(out, value);
}

std::ostream& operator<<(std::ostream& out, const StageMgrInstKey& value) {
  return Zel::printText(out, value);
}

std::ostream& operator<<(std::ostream& out, const BuiltinUnitName& value) {
  return Zel::printText(out, value);
}

std::ostream& operator<<(std::ostream& out, const MaintenanceStageClasses& value) {
  return Zel::printText(out, value);
}

std::ostream& operator<<(std::ostream& out, const MaintenanceStageList& value) {
  return Zel::printText(out, value);
}

} // namespace Maintenance::Unit

#undef ZEL_ENUMERATION_TEXT
