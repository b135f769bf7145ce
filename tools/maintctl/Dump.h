#pragma once

#include "Device.h"

#include <iosfwd>

namespace Maintctl {

/// Writes all roots of a device as text that `load` reads back: for each member a line, then one
/// for each value that can be written. Throws `Failure`.
void dump(Device& device, std::ostream& out);

} // namespace Maintctl
