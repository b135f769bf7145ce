#pragma once

#include "Device.h"

#include <functional>
#include <string>
#include <vector>

namespace Maintctl {

/// What the last of these words, which may be empty, could become: a command, an option, a path in
/// the device's tree, or a value that has a name. What ends in "/" goes on. The device is asked for
/// only where there is a path; nothing is thrown if there is none.
std::vector<std::string> completions(const std::vector<std::string>& words, bool inScript,
                                     const std::function<Device&()>& device);

} // namespace Maintctl
