#pragma once

// The attribute log of the unit types.
#include <attrlog/Unit/Config.h>
#include <attrlog/Unit/Input.h>
#include <attrlog/Unit/Status.h>
#include <model/Unit.h>
