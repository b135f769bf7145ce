#pragma once

#include <fstream>
#include <string>

namespace Maintctl {

/// A file to be read. Throws `Failure` with `exitFile` if it cannot be.
std::ifstream openedFile(const std::string& name);

} // namespace Maintctl
