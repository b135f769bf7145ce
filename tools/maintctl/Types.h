#pragma once

#include <string>

namespace Maintctl {

/// Loads a library that brings types of its own, for good. Throws `Failure`: with `exitFile` if it
/// cannot be loaded, with `exitUsage` if it brings none.
void loadTypes(const std::string& file);

} // namespace Maintctl
