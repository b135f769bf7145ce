#pragma once

/// What a changed source asks at each place that can be changed. Reaching a place marks it.
namespace Mutants {

/// The number of the mutant that this process runs with, by the environment's MUTANT; 0 is none.
[[gnu::visibility("default")]] extern unsigned chosen;
/// Of each mutant's place, whether it was reached: a file that the environment's MUTANTS_REACHED
/// names, which child processes write too.
[[gnu::visibility("default")]] extern unsigned char* reached;

inline bool isNow(unsigned number) noexcept {
  reached[number] = 1;
  return number == chosen;
}

/// Never while compiling.
constexpr bool is(unsigned number) noexcept {
  return !__builtin_is_constant_evaluated() && isNow(number);
}

} // namespace Mutants
