#pragma once

#include "support/Shell.h"
#include <Places.h>

namespace Replay::Test {

using namespace Support;

/// Runs the program with these arguments, and `input` as standard input.
inline Result run(const std::string& arguments, const std::string& input = "") {
  return shell("'" REPLAY_PROGRAM "' " + arguments, input);
}

/// Runs the program on a journal given as standard input.
inline Result replay(const std::string& journal) { return run("-", journal); }

} // namespace Replay::Test
