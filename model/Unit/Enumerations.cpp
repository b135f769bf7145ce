#include <model/Unit/Enumerations.h>

namespace Maintenance::Unit {

using Zel::enumInstance;
using Zel::enumString;
using Zel::String8;

UnitType UnitTypeInstance(unsigned number) {
  return static_cast<UnitType>(enumInstance(enumTable(UnitType()), number));
}

UnitType UnitTypeInstance(String8 name) {
  return static_cast<UnitType>(enumInstance(enumTable(UnitType()), name));
}

String8 stringValue(UnitType value) { return enumString(enumTable(value), value); }

MaintenanceOp MaintenanceOpInstance(unsigned number) {
  return static_cast<MaintenanceOp>(enumInstance(enumTable(MaintenanceOp()), number));
}

MaintenanceOp MaintenanceOpInstance(String8 name) {
  return static_cast<MaintenanceOp>(enumInstance(enumTable(MaintenanceOp()), name));
}

String8 stringValue(MaintenanceOp value) { return enumString(enumTable(value), value); }

InputSrc InputSrcInstance(unsigned number) {
  return static_cast<InputSrc>(enumInstance(enumTable(InputSrc()), number));
}

InputSrc InputSrcInstance(String8 name) {
  return static_cast<InputSrc>(enumInstance(enumTable(InputSrc()), name));
}

String8 stringValue(InputSrc value) { return enumString(enumTable(value), value); }

State StateInstance(unsigned number) {
  return static_cast<State>(enumInstance(enumTable(State()), number));
}

State StateInstance(String8 name) {
  return static_cast<State>(enumInstance(enumTable(State()), name));
}

String8 stringValue(State value) { return enumString(enumTable(value), value); }

} // namespace Maintenance::Unit
