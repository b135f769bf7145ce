#pragma once

#include <Zel/Layers>

/// The enumerations of maintenance units. For each there are `EInstance(number)` and
/// `EInstance(name)`, which throw `Zel::RangeException` with the bare name of the enumeration on
/// anything that is no enumerator, and `stringValue`, which yields an enumerator's name, and for
/// any other number the enumeration's with the number in parentheses.
namespace Maintenance::Unit {

/// What kind of unit it is.
enum ZEL_API UnitType : int {
  userConfigured = 0,
  dynamic = 1,
  builtin = 2,
};

inline constexpr Zel::Enumerator unitTypeRows[] = {
    {userConfigured, "userConfigured"},
    {dynamic, "dynamic"},
    {builtin, "builtin"},
};

ZEL_API const Zel::ZelType* _fwkType_UnitType();
constexpr Zel::EnumTable enumTable(UnitType) {
  return {"Maintenance::Unit::UnitType", "UnitType", unitTypeRows, _fwkType_UnitType};
}
using UnitType__Type = Zel::TypeOf<UnitType>;
using UnitType_GenericIf_ = Zel::ValueGenericIf<UnitType>;
ZEL_API Zel::Ptr<UnitType_GenericIf_> UnitType_GenericIf_Is(UnitType value, bool isConst);

ZEL_API UnitType UnitTypeInstance(unsigned number);
ZEL_API UnitType UnitTypeInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(UnitType value);
ZEL_API Zel::String8 valueToStrep(const UnitType& value);
ZEL_API UnitType sequenceToValue(Zel::String8::IteratorConst& first,
                                 const Zel::String8::IteratorConst& last, UnitType* selector);
ZEL_API std::ostream& operator<<(std::ostream& out, const UnitType& value);

/// An operation on a unit: enter, exit, and the abort of either.
enum ZEL_API MaintenanceOp : int {
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

ZEL_API const Zel::ZelType* _fwkType_MaintenanceOp();
constexpr Zel::EnumTable enumTable(MaintenanceOp) {
  return {"Maintenance::Unit::MaintenanceOp", "MaintenanceOp", maintenanceOpRows,
          _fwkType_MaintenanceOp};
}
using MaintenanceOp__Type = Zel::TypeOf<MaintenanceOp>;
using MaintenanceOp_GenericIf_ = Zel::ValueGenericIf<MaintenanceOp>;
ZEL_API Zel::Ptr<MaintenanceOp_GenericIf_> MaintenanceOp_GenericIf_Is(MaintenanceOp value,
                                                                      bool isConst);

ZEL_API MaintenanceOp MaintenanceOpInstance(unsigned number);
ZEL_API MaintenanceOp MaintenanceOpInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(MaintenanceOp value);
ZEL_API Zel::String8 valueToStrep(const MaintenanceOp& value);
ZEL_API MaintenanceOp sequenceToValue(Zel::String8::IteratorConst& first,
                                      const Zel::String8::IteratorConst& last,
                                      MaintenanceOp* selector);
ZEL_API std::ostream& operator<<(std::ostream& out, const MaintenanceOp& value);

/// Who asked for maintenance, ranked from unknown over the boot-time rule to the command line. The
/// library compares no ranks.
enum ZEL_API InputSrc : int {
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

ZEL_API const Zel::ZelType* _fwkType_InputSrc();
constexpr Zel::EnumTable enumTable(InputSrc) {
  return {"Maintenance::Unit::InputSrc", "InputSrc", inputSrcRows, _fwkType_InputSrc};
}
using InputSrc__Type = Zel::TypeOf<InputSrc>;
using InputSrc_GenericIf_ = Zel::ValueGenericIf<InputSrc>;
ZEL_API Zel::Ptr<InputSrc_GenericIf_> InputSrc_GenericIf_Is(InputSrc value, bool isConst);

ZEL_API InputSrc InputSrcInstance(unsigned number);
ZEL_API InputSrc InputSrcInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(InputSrc value);
ZEL_API Zel::String8 valueToStrep(const InputSrc& value);
ZEL_API InputSrc sequenceToValue(Zel::String8::IteratorConst& first,
                                 const Zel::String8::IteratorConst& last, InputSrc* selector);
ZEL_API std::ostream& operator<<(std::ostream& out, const InputSrc& value);

/// The life of a unit. The library decides and checks no transition.
enum ZEL_API State : int {
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

ZEL_API const Zel::ZelType* _fwkType_State();
constexpr Zel::EnumTable enumTable(State) {
  return {"Maintenance::Unit::State", "State", stateRows, _fwkType_State};
}
using State__Type = Zel::TypeOf<State>;
using State_GenericIf_ = Zel::ValueGenericIf<State>;
ZEL_API Zel::Ptr<State_GenericIf_> State_GenericIf_Is(State value, bool isConst);

ZEL_API State StateInstance(unsigned number);
ZEL_API State StateInstance(Zel::String8 name);
ZEL_API Zel::String8 stringValue(State value);
ZEL_API Zel::String8 valueToStrep(const State& value);
ZEL_API State sequenceToValue(Zel::String8::IteratorConst& first,
                              const Zel::String8::IteratorConst& last, State* selector);
ZEL_API std::ostream& operator<<(std::ostream& out, const State& value);

} // namespace Maintenance::Unit
