#pragma once

#include <string>
#include <vector>

/// The type names that a library file offers in its section `.zel.type`, in their order. Throws
/// `std::runtime_error` if the file cannot be read, is no 64-bit ELF file of this machine's byte
/// order, or has no such section. The file is not trusted: every offset in it is checked.
std::vector<std::string> typeNamesOf(const std::string& path);
