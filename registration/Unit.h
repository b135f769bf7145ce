#pragma once

#include <model/Unit.h>
#include <registration/Module.h>

namespace Maintenance::Unit {

/// The types of the module, in the order of declaration.
using Types =
    Zel::TypeList<UnitType, InputSrc, BuiltinUnitName, MaintenanceStageClasses,
                  MaintenanceStageList, TrafficRates, Config, ConfigDir, State, Status, StatusDir,
                  Input, MergedInput, MergedInputDir, MaintenanceOp, StageMgrInstKey>;

ZEL_API Zel::Module& zelModule();
/// The module's registration procedure, see `Zel::Module::zelInit`.
ZEL_API void zelInitUnit();

} // namespace Maintenance::Unit
