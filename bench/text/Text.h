#pragma once

#include "Bench.h"

namespace Bench {

/// The values that all sides print and parse.
struct Sample {
  static constexpr const char* profileName = "profile-0001234-p002"; ///< 20 bytes
  static constexpr unsigned long long outBitsRate = 9'876'543'210;
  static constexpr unsigned long long inBitsRate = 123'456'789;
  static constexpr double statsUpdateTime = 1700000000.25;
};

/// What one value costs as text. `Subject` has such a value and its text and offers
/// - `print()`, which yields the text, new or in storage that the subject keeps;
/// - `isText(text)`, whether that is the text, to the byte;
/// - `parse()`, which reads the text and yields the value, new or in storage of the subject;
/// - `isValue(value)`, whether that is the value.
template <class Subject>
void printValue(benchmark::State& state) {
  Subject subject;
  for (auto _ : state) {
    const auto& text = subject.print();
    benchmark::DoNotOptimize(&text);
    benchmark::ClobberMemory();
  }
  if (!subject.isText(subject.print())) {
    state.SkipWithError("wrong text");
  }
  state.SetItemsProcessed(state.iterations());
}

template <class Subject>
void parseValue(benchmark::State& state) {
  Subject subject;
  for (auto _ : state) {
    const auto& value = subject.parse();
    benchmark::DoNotOptimize(&value);
    benchmark::ClobberMemory();
  }
  if (!subject.isValue(subject.parse())) {
    state.SkipWithError("wrong value");
  }
  state.SetItemsProcessed(state.iterations());
}

template <class Subject>
void textOperations(const std::string& value) {
  operation("print " + value, printValue<Subject>);
  operation("parse " + value, parseValue<Subject>);
}

} // namespace Bench
