#pragma once

#include <model/MaintenanceUnitProfile.h>
#include <registration/Module.h>

namespace MaintenanceUnitProfile {

/// The types of the module, in the order of declaration.
using Types = Zel::TypeList<Config, ConfigDir>;

ZEL_API Zel::Module& zelModule();
/// The module's registration procedure, see `Zel::Module::zelInit`.
ZEL_API void zelInitMaintenanceUnitProfile();

} // namespace MaintenanceUnitProfile
