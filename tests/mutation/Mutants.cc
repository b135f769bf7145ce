#include "Mutants.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Mutants {

namespace {
unsigned char unseen[MUTANTS + 1];
} // namespace

unsigned chosen = 0;
unsigned char* reached = unseen;

namespace {

// Before all that is made when the program starts.
[[gnu::constructor(101)]] void choose() {
  if (const char* const number = std::getenv("MUTANT")) {
    chosen = static_cast<unsigned>(std::strtoul(number, nullptr, 10));
  }
  const char* const path = std::getenv("MUTANTS_REACHED");
  if (path == nullptr) {
    return;
  }
  const int file = open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0 || ftruncate(file, sizeof unseen) != 0) {
    std::abort();
  }
  void* const shared = mmap(nullptr, sizeof unseen, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  if (shared == MAP_FAILED) {
    std::abort();
  }
  close(file);
  reached = static_cast<unsigned char*>(shared);
}

} // namespace

} // namespace Mutants
