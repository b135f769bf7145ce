// Prints a line for each operation that is asked for: its name, a tab, and the nanoseconds that one
// piece of its work takes, or what its name says. Without arguments it lists what can be asked for.

#include "sockets/Processes.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  const Bench::Sockets::Operations all = Bench::Sockets::operations();
  if (argc == 1) {
    for (const auto& [name, measure] : all) {
      std::printf("%s\n", name.c_str());
    }
    return 0;
  }
  for (int i = 1; i < argc; ++i) {
    const auto at = all.find(argv[i]);
    if (at == all.end()) {
      std::fprintf(stderr, "%s: no operation %s\n", argv[0], argv[i]);
      return 2;
    }
    std::printf("%s\t%.6g\n", at->first.c_str(), at->second());
    std::fflush(stdout); // a child that is forked later has nothing of it to print again
  }
  return 0;
}
