#pragma once

#include <model/MaintenanceGroup.h>
#include <registration/Module.h>

namespace Maintenance::MaintenanceGroup {

/// The types of the module, in the order of declaration.
using Types = Zel::TypeList<Config, ConfigDir>;

ZEL_API Zel::Module& zelModule();
/// The module's registration procedure, see `Zel::Module::zelInit`.
ZEL_API void zelInitMaintenanceGroup();

} // namespace Maintenance::MaintenanceGroup
