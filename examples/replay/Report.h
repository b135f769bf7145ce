#pragma once

#include "Model.h"

#include <ostream>

namespace Replay {

/// Prints what is in the model: the units and the profiles as tables, and the history of each unit.
void report(std::ostream& out, const Model& model);

} // namespace Replay
