#pragma once

#include "Device.h"

#include <iosfwd>

namespace Maintctl {

/// Writes all roots of a device as text that `load` reads back: for each member a line, then one
/// for each value that can be written. In JSON, which `load` does not read, each line is an object:
/// {"path": ..., "value": ...}, or {"path": ..., "member": [what it is made of]}. Throws `Failure`.
void dump(Device& device, std::ostream& out, bool isJson = false);

} // namespace Maintctl
