#include "Allocations.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace Bench {

std::size_t Allocations::calls = 0;
std::size_t Allocations::liveBytes = 0;

namespace {

/// What glibc's allocator keeps in front of each block.
constexpr std::size_t header = sizeof(std::size_t);

} // namespace
} // namespace Bench

void* operator new(std::size_t size) {
  void* const storage = std::malloc(size);
  if (storage == nullptr) {
    throw std::bad_alloc();
  }
  ++Bench::Allocations::calls;
  Bench::Allocations::liveBytes += malloc_usable_size(storage) + Bench::header;
  return storage;
}

void operator delete(void* storage) noexcept {
  if (storage != nullptr) {
    Bench::Allocations::liveBytes -= malloc_usable_size(storage) + Bench::header;
    std::free(storage);
  }
}

void operator delete(void* storage, std::size_t /*size*/) noexcept { operator delete(storage); }
