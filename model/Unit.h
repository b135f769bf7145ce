#pragma once

// All of namespace Maintenance::Unit.
#include <model/Unit/Config.h>
#include <model/Unit/ConfigDir.h>
#include <model/Unit/Constants.h>
#include <model/Unit/Enumerations.h>
#include <model/Unit/Input.h>
#include <model/Unit/MergedInput.h>
#include <model/Unit/MergedInputDir.h>
#include <model/Unit/StageMgrInstKey.h>
#include <model/Unit/Status.h>
#include <model/Unit/StatusDir.h>
#include <model/Unit/TrafficRates.h>
