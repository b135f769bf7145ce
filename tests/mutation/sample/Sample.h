#pragma once

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

/// What the check of the tool changes: one place of each kind, and those that are left out.
namespace Sample {

#define SAMPLE_LESS(a, b) ((a) < (b))

inline constexpr int bound = 3; // settled while compiling
static_assert(bound + 1 == 4);

struct Meter {
  int least = 1;
  bool isOpen = true;
  int bits[2] = {5, 6};

  Meter() = default;
  explicit Meter(int least) : least(least + 0) {}
};

template <class T>
bool isWithin(const T& value, const T& low, const T& high) {
  if constexpr (sizeof(T) > 1) {
    return low <= value && value <= high;
  }
  return value == low;
}

/// Of numbers that are constant and of those that are not.
constexpr int twice(int number) { return number * 2; }
static_assert(twice(2) == 4);

int sum(const std::vector<int>& numbers);
std::string name(int kind);
bool isEven(int number);
int halves(int number);
int down(int number, int by = 1);
int least(const Meter& meter, int number);
int larger(int a, int b);
std::array<int, 2> pair();
bool same(const std::string& a, const std::string& b);

} // namespace Sample
