#pragma once

#include "Failure.h"

namespace Maintctl {

/// What is being caught as a failure: what the library throws gets the code that says what kind it
/// is. To be called in a handler only.
Failure currentFailure();

} // namespace Maintctl
