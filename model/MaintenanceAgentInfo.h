#pragma once

// What namespace Maintenance tells of the maintenance agent itself.
#include <model/MaintenanceAgentInfo/AgentInfo.h>
#include <model/MaintenanceAgentInfo/OnBootUnitAndReason.h>
