#pragma once

// All of namespace Maintenance::MaintenanceGroup.
#include <model/MaintenanceGroup/Config.h>
#include <model/MaintenanceGroup/ConfigDir.h>
