#pragma once

#include "Bench.h"

#include <cstdint>

namespace Bench {

/// What one call of the mutator of one small attribute costs. `Subject` is made with a number of
/// listeners, each of which counts its calls, and offers
/// - `stateIs(int)`, a mutator that stands in a shared library; the values are 1 and 2;
/// - `heard()`, the calls that all listeners have counted.
template <class Subject>
void setEqual(benchmark::State& state) {
  Subject subject(0);
  subject.stateIs(1);
  for (auto _ : state) {
    subject.stateIs(1);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}

template <class Subject>
void setChanged(benchmark::State& state, unsigned listeners) {
  Subject subject(listeners);
  int value = 1;
  subject.stateIs(value);
  const std::uint64_t before = subject.heard();
  for (auto _ : state) {
    value ^= 3;
    subject.stateIs(value);
    benchmark::ClobberMemory();
  }
  if (subject.heard() - before != static_cast<std::uint64_t>(state.iterations()) * listeners) {
    state.SkipWithError("a listener missed a change");
  }
  state.SetItemsProcessed(state.iterations());
}

template <class Subject>
void mutatorOperations() {
  operation("equal", setEqual<Subject>);
  for (const unsigned listeners : {0U, 1U, 8U}) {
    operation(sized("changed", listeners),
              [=](benchmark::State& state) { setChanged<Subject>(state, listeners); });
  }
}

} // namespace Bench
