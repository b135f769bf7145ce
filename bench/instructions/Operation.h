#pragma once

#include <cstdio>
#include <cstdlib>
#include <valgrind/callgrind.h>

/// What scripts/check-instructions counts: operations, each performed many times in a function of
/// its own, with nothing else in it. Run by itself, the program performs them and counts nothing.
namespace Instructions {

/// How often each is performed while it is counted; and as often before, so that what is done once
/// only is over.
inline constexpr unsigned times = 256;

template <class Work>
[[gnu::noinline]] void perform(Work& work, unsigned first) {
  for (unsigned i = first; i != first + times; ++i) {
    work(i);
  }
}

/// Counts the instructions of `work(i)`, for `i` from `times` on, and dumps them under `name`. What
/// `between` does before is not counted.
template <class Work, class Between>
void operation(const char* name, Work&& work, Between&& between) {
  perform(work, 0);
  between();
  CALLGRIND_ZERO_STATS;
  CALLGRIND_TOGGLE_COLLECT;
  perform(work, times);
  CALLGRIND_TOGGLE_COLLECT;
  CALLGRIND_DUMP_STATS_AT(name);
}

template <class Work>
void operation(const char* name, Work&& work) {
  operation(name, work, [] {});
}

/// Keeps a result from being left out.
template <class T>
void use(const T& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

/// An operation that does not do what it is to be counted for ends the program.
inline void expect(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "instructions: not so: %s\n", what);
    std::exit(1);
  }
}

void mutators();
void lookUps();
void records();
void walks();
void texts();
void generics();

} // namespace Instructions
