#pragma once

// All of namespace MaintenanceUnitProfile.
#include <model/MaintenanceUnitProfile/Config.h>
#include <model/MaintenanceUnitProfile/ConfigDir.h>
