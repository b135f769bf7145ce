#pragma once

#include <cstddef>

namespace Bench {

/// The global allocator as a program that is linked with `Allocations.cpp` has it: every call is
/// counted, whether it comes from the program or from the library.
struct Allocations {
  static std::size_t calls;     ///< so far
  static std::size_t liveBytes; ///< at present, each block at the size that the allocator gave it
};

} // namespace Bench
