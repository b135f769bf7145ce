#pragma once

#include <benchmark/benchmark.h>

#include <string>

namespace Bench {

/// Each program registers its operations here, under names that are the same for every side of one
/// subject; `main` runs them.
void registerAll();

/// The name of an operation at a size, or with a number of listeners.
std::string sized(const char* name, std::size_t size);

template <class Function>
benchmark::internal::Benchmark* operation(const std::string& name, Function&& function) {
  return benchmark::RegisterBenchmark(name.c_str(), std::forward<Function>(function));
}

} // namespace Bench
