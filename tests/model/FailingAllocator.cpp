#include "FailingAllocator.h"

#include <cstdlib>
#include <limits>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

std::size_t made = 0;
std::size_t failAt = never;

void* allocate(std::size_t size) {
  if (made++ == failAt) {
    throw std::bad_alloc();
  }
  if (void* const storage = std::malloc(size)) {
    return storage;
  }
  throw std::bad_alloc();
}

} // namespace

// The program's global allocator.
void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* storage) noexcept { std::free(storage); }
void operator delete[](void* storage) noexcept { std::free(storage); }
void operator delete(void* storage, std::size_t /*size*/) noexcept { std::free(storage); }
void operator delete[](void* storage, std::size_t /*size*/) noexcept { std::free(storage); }

namespace TestModel {

std::size_t allocations() { return made; }

FailingAllocation::FailingAllocation(std::size_t number) { failAt = made + number; }

FailingAllocation::~FailingAllocation() { failAt = never; }

} // namespace TestModel
