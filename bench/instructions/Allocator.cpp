// The allocator of the program: what an allocation takes depends on nothing that was allocated
// before, so that the counts of one operation do not move with those of another. A block is taken
// from the list of its size or from what is left of the arena, and the price is about what the C
// library takes where it is quick.

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t unit = 16;
constexpr std::size_t classes = 4096; // up to 64 KiB; what is larger comes from the C library
constexpr std::size_t arenaSize = std::size_t{64} << 20;

struct Block {
  Block* next;
};

alignas(unit) std::byte arena[arenaSize];
std::size_t used = 0;
Block* freed[classes]; // by size

/// Instructions, as many for each allocation.
inline void price() noexcept {
  for (int i = 0; i != 16; ++i) {
    asm volatile("nop");
  }
}

void* allocate(std::size_t size) {
  price();
  // One unit more, in front, for the size.
  const std::size_t units = (size + unit - 1) / unit + 1;
  if (units < classes && freed[units] != nullptr) {
    Block* const block = freed[units];
    freed[units] = block->next;
    return block;
  }
  std::byte* at = nullptr;
  if (units >= classes) {
    at = static_cast<std::byte*>(std::malloc(units * unit));
  } else if (arenaSize - used >= units * unit) {
    at = arena + used;
    used += units * unit;
  }
  if (at == nullptr) {
    throw std::bad_alloc();
  }
  *reinterpret_cast<std::size_t*>(at) = units;
  return at + unit;
}

void release(void* at) noexcept {
  if (at == nullptr) {
    return;
  }
  price();
  std::byte* const start = static_cast<std::byte*>(at) - unit;
  const std::size_t units = *reinterpret_cast<std::size_t*>(start);
  if (units >= classes) {
    std::free(start);
    return;
  }
  auto* const block = static_cast<Block*>(at);
  block->next = freed[units];
  freed[units] = block;
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* at) noexcept { release(at); }
void operator delete[](void* at) noexcept { release(at); }
void operator delete(void* at, std::size_t /*size*/) noexcept { release(at); }
void operator delete[](void* at, std::size_t /*size*/) noexcept { release(at); }
