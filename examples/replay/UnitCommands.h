#pragma once

#include "Line.h"
#include "Model.h"

namespace Replay {

/// Replays what stands behind the word `unit`. Reads the line to its end before it changes
/// anything, so a line that throws `Mismatch` has done nothing.
void replayUnit(Line& line, Model& model, double now);

} // namespace Replay
