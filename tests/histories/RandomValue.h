#pragma once

#include <support/AnyValue.h>

#include <simulation/Random.h>

namespace Histories {

using Simulation::Random;
using Support::AnyValue;

/// How long texts are: mostly a few bytes, and `longest` at most once in `rarity` texts.
struct TextSizes {
  std::size_t longest = 40;
  unsigned rarity = 20;
};

/// A value of any type, by its record. Strings in it travel whole, so `sizes` is not to go beyond
/// what they may have, unless the value is a text of its own. No NaN, which equals nothing, and no
/// negative zero, which equals another value.
AnyValue randomValue(Random& random, const Zel::ValueRecord& record, const TextSizes& sizes);

/// One of few keys of a type: the same for the same number. That of one number is long.
inline constexpr unsigned longKeyNumber = 15;
AnyValue numberedKey(const Zel::ValueRecord& record, unsigned number);

/// The same as part of a value that brings its key.
void putRandom(Random& random, const Zel::ValueRecord& record, const TextSizes& sizes, void* fresh);

} // namespace Histories
