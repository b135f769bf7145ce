#pragma once

#include "Device.h"

#include <iosfwd>
#include <string>

namespace Maintctl {

/// Loads a dump into a device, on top of what is there, and flushes it. A line is a path, and
/// behind it a value, or the arguments of a member; a line that begins with `#` is a comment.
/// Yields the number of lines that were applied. A bad line ends it: throws `Failure` with file,
/// line, and how far it came. `size`, if it is known, lets progress be shown on a terminal.
std::size_t load(Device& device, std::istream& in, const std::string& name, std::size_t size = 0);

/// The same from a file, or from standard input for "-". Throws `Failure` with `exitFile` if it
/// cannot be read.
std::size_t loadFile(Device& device, const std::string& name);

/// The same, all or nothing: the whole file is first loaded into an empty tree of this program, as
/// it is when a server starts with it, and none of it is applied if a line is bad there.
std::size_t loadAllOrNothing(Device& device, const std::string& name);

} // namespace Maintctl
