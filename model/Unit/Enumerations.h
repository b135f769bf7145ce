#pragma once

#include <Zel/Enumeration>

/// The enumerations of maintenance units. For each there are `EInstance(number)` and
/// `EInstance(name)`, which throw `Zel::RangeException` with the bare name of the enumeration on
/// anything that is no enumerator, and `stringValue`, which yields an enumerator's name, and for
/// any other number the enumeration's with the number in parentheses.
namespace Maintenance::Unit {

/// What kind of unit it is.
enum UnitType : int {
  userConfigured = 0,
  dynamic = 1,
  builtin = 2,
};

inline constexpr Zel::Enumerator unitTypeRows[] = {
    {userConfigured, "userConfigured"},
    {dynamic, "dynamic"},
    {builtin, "builtin"},
};

constexpr Zel::EnumTable enumTable(UnitType) {
  return {"Maintenance::Unit::UnitType", "UnitType", unitTypeRows};
}

ZEL_API UnitType UnitTypeInstance(unsigned number);
ZEL_API UnitType UnitTypeInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(UnitType value);

/// An operation on a unit: enter, exit, and the abort of either.
enum MaintenanceOp : int {
  unknown = 0,
  maintenanceEnter = 1,
  maintenanceExit = 2,
  maintenanceEnterAbort = 3,
  maintenanceExitAbort = 4,
};

inline constexpr Zel::Enumerator maintenanceOpRows[] = {
    {unknown, "unknown"},
    {maintenanceEnter, "maintenanceEnter"},
    {maintenanceExit, "maintenanceExit"},
    {maintenanceEnterAbort, "maintenanceEnterAbort"},
    {maintenanceExitAbort, "maintenanceExitAbort"},
};

constexpr Zel::EnumTable enumTable(MaintenanceOp) {
  return {"Maintenance::Unit::MaintenanceOp", "MaintenanceOp", maintenanceOpRows};
}

ZEL_API MaintenanceOp MaintenanceOpInstance(unsigned number);
ZEL_API MaintenanceOp MaintenanceOpInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(MaintenanceOp value);

/// Who asked for maintenance, ranked from unknown over the boot-time rule to the command line. The
/// library compares no ranks.
enum InputSrc : int {
  srcUnknown = 0,
  srcOnBoot = 1,    ///< the boot-time rule
  srcOnBootCli = 2, ///< the command line, on boot
  srcCli = 3,       ///< the command line
};

inline constexpr Zel::Enumerator inputSrcRows[] = {
    {srcUnknown, "srcUnknown"},
    {srcOnBoot, "srcOnBoot"},
    {srcOnBootCli, "srcOnBootCli"},
    {srcCli, "srcCli"},
};

constexpr Zel::EnumTable enumTable(InputSrc) {
  return {"Maintenance::Unit::InputSrc", "InputSrc", inputSrcRows};
}

ZEL_API InputSrc InputSrcInstance(unsigned number);
ZEL_API InputSrc InputSrcInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(InputSrc value);

/// The life of a unit. The library decides and checks no transition.
enum State : int {
  init = 0,                 ///< starting
  active = 1,               ///< in service
  maintenanceModeEnter = 2, ///< entering maintenance
  underMaintenance = 3,     ///< in maintenance
  failedEnter = 4,          ///< entering failed
  maintenanceModeExit = 5,  ///< leaving maintenance
  failedExit = 6,           ///< leaving failed
};

inline constexpr Zel::Enumerator stateRows[] = {
    {init, "init"},
    {active, "active"},
    {maintenanceModeEnter, "maintenanceModeEnter"},
    {underMaintenance, "underMaintenance"},
    {failedEnter, "failedEnter"},
    {maintenanceModeExit, "maintenanceModeExit"},
    {failedExit, "failedExit"},
};

constexpr Zel::EnumTable enumTable(State) {
  return {"Maintenance::Unit::State", "State", stateRows};
}

ZEL_API State StateInstance(unsigned number);
ZEL_API State StateInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(State value);

} // namespace Maintenance::Unit
