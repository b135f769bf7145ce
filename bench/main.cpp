#include "Bench.h"

std::string Bench::sized(const char* name, std::size_t size) {
  std::string text(name);
  text += '/';
  text += std::to_string(size);
  return text;
}

int main(int argc, char** argv) {
  Bench::registerAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  return benchmark::RunSpecifiedBenchmarks() == 0 ? 1 : 0;
}
