#pragma once

#include <model/MaintenanceAgentInfo.h>
#include <registration/Module.h>

namespace Maintenance {

/// The types of the module, in the order of declaration.
using MaintenanceAgentInfoTypes = Zel::TypeList<OnBootUnitAndReason, AgentInfo>;

/// Not `zelModule`: its namespace holds the types of another module too.
ZEL_API Zel::Module& zelMaintenanceAgentInfoModule();
/// The module's registration procedure, see `Zel::Module::zelInit`.
ZEL_API void zelInitMaintenanceAgentInfo();

} // namespace Maintenance
