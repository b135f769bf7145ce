#pragma once

#include <array>
#include <bit>
#include <cstddef>

namespace Support {

/// The place of a virtual operation in its class's table of them, counted from 0, destructors
/// taking two places. Under the Itanium C++ ABI a pointer to a virtual member is 1 plus its offset.
template <class Function>
std::ptrdiff_t slotOf(Function function) {
  const auto words = std::bit_cast<std::array<std::ptrdiff_t, 2>>(function);
  return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

} // namespace Support
