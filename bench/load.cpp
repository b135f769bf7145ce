// Measures how long it takes to load a shared library: prints the median over many fresh processes,
// each of which loads it once, in microseconds.

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <dlfcn.h>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

double loadOnce(const char* path) {
  int ends[2];
  if (pipe(ends) != 0) {
    std::exit(3);
  }
  const pid_t child = fork();
  if (child == 0) {
    const auto start = std::chrono::steady_clock::now();
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    const std::chrono::duration<double, std::micro> taken =
        std::chrono::steady_clock::now() - start;
    const double result = library != nullptr ? taken.count() : -1;
    const bool written = write(ends[1], &result, sizeof result) == sizeof result;
    _exit(written ? 0 : 1);
  }
  double result = -1;
  const bool whole = child > 0 && read(ends[0], &result, sizeof result) == sizeof result;
  close(ends[0]);
  close(ends[1]);
  waitpid(child, nullptr, 0);
  if (!whole || result < 0) {
    std::cerr << "cannot load " << path << '\n';
    std::exit(1);
  }
  return result;
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
  std::cout << taken[100] << '\n';
}
