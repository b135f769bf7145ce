// Measures what it costs to load a shared library: prints a line for each figure, with the name, a
// tab and the number: the time in milliseconds, the median over many fresh processes, each of which
// loads it once; and the bytes of memory that one process more takes: what loading allocated, and
// the pages of the library itself that it does not share with others.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <iostream>
#include <link.h>
#include <malloc.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

void* load(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }

[[noreturn]] void fail(const char* path) {
  std::cerr << "cannot load " << path << '\n';
  std::exit(1);
}

double loadOnce(const char* path) {
  int ends[2];
  if (pipe(ends) != 0) {
    std::exit(3);
  }
  const pid_t child = fork();
  if (child == 0) {
    const auto start = std::chrono::steady_clock::now();
    void* const library = load(path);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    const double result = library != nullptr ? taken.count() : -1;
    const bool written = write(ends[1], &result, sizeof result) == sizeof result;
    _exit(written ? 0 : 1);
  }
  close(ends[1]); // or a child that fails would be waited for
  double result = -1;
  const bool whole = child > 0 && read(ends[0], &result, sizeof result) == sizeof result;
  close(ends[0]);
  waitpid(child, nullptr, 0);
  if (!whole || result < 0) {
    fail(path);
  }
  return result;
}

struct Range {
  std::uintptr_t first;
  std::uintptr_t last;
};

/// Where a library lies in memory, from its first segment to its last.
Range placeOf(void* library) {
  link_map* wanted = nullptr;
  if (dlinfo(library, RTLD_DI_LINKMAP, &wanted) != 0) {
    std::exit(3);
  }
  struct Search {
    const link_map* wanted;
    Range range;
  } search{wanted, {UINTPTR_MAX, 0}};
  dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* data) {
        auto& found = *static_cast<Search*>(data);
        if (info->dlpi_addr != found.wanted->l_addr) {
          return 0;
        }
        for (int i = 0; i < info->dlpi_phnum; ++i) {
          const auto& segment = info->dlpi_phdr[i];
          if (segment.p_type == PT_LOAD) {
            const std::uintptr_t first = info->dlpi_addr + segment.p_vaddr;
            found.range.first = std::min(found.range.first, first);
            found.range.last = std::max(found.range.last, first + segment.p_memsz);
          }
        }
        return 1;
      },
      &search);
  return search.range;
}

/// The bytes of pages in this range that are the process's own, since it has written to them. What
/// smaps calls dirty is more while the library's file has not reached the disk.
std::size_t privateBytes(const Range& range) {
  std::ifstream file("/proc/self/smaps");
  std::size_t sum = 0;
  bool inRange = false;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::uintptr_t first = 0;
    char dash = 0;
    std::string word;
    if (words >> std::hex >> first >> dash && dash == '-') {
      inRange = first >= range.first && first < range.last;
    } else if (inRange && line.rfind("Anonymous:", 0) == 0) {
      sum += std::stoul(line.substr(line.find(':') + 1)) * 1024;
    }
  }
  return sum;
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " LIBRARY\n";
    return 2;
  }
  std::vector<double> taken;
  for (int i = 0; i < 201; ++i) {
    taken.push_back(loadOnce(argv[1]));
  }
  std::nth_element(taken.begin(), taken.begin() + 100, taken.end());
  std::cout << "time\t" << taken[100] << '\n';

  const std::size_t before = mallinfo2().uordblks;
  void* const library = load(argv[1]);
  const std::size_t allocated = mallinfo2().uordblks - before;
  if (library == nullptr) {
    fail(argv[1]);
  }
  const std::size_t pages = privateBytes(placeOf(library));
  std::cout << "allocated\t" << allocated << '\n'
            << "pages\t" << pages << '\n'
            << "memory\t" << allocated + pages << '\n';
}
