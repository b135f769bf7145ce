#pragma once

#include <model/MaintenanceAgentInfo.h>
#include <registration/Module.h>

// The namespace is that of other modules too, hence the longer names.
namespace Maintenance {

/// The types of the module, in the order of declaration.
using MaintenanceAgentInfoTypes = Zel::TypeList<OnBootUnitAndReason, AgentInfo>;

ZEL_API Zel::Module& zelModuleMaintenanceAgentInfo();
/// The module's registration procedure, see `Zel::Module::zelInit`.
ZEL_API void zelInitMaintenanceAgentInfo();

} // namespace Maintenance
