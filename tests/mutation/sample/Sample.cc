#include "Sample.h"

namespace Sample {

int sum(const std::vector<int>& numbers) {
  int all = 0;
  for (std::size_t n = 0; n < numbers.size(); ++n) {
    all += numbers.at(n);
  }
  return all;
}

std::string name(int kind) {
  switch (kind) {
  case 1:
    return "one";
  case 2: {
    std::string text;
    text += "two";
    return text;
  }
  default:
    break;
  }
  throw std::runtime_error("no name"); // the last of a function that has a result
}

bool isEven(int number) {
  const auto odd = [](int of) { return (of & 1) != 0; };
  return !odd(number);
}

int halves(int number) {
  int found = 0;
  for (;; number /= 2) {
    if (number == 7) {
      continue;
    }
    if (number == 0 || found == 9) {
      break;
    }
    found++;
  }
  return found;
}

int down(int number, int by) {
  while (number > 0) {
    number -= by;
  }
  return -number;
}

int least(const Meter& meter, int number) {
  (void)bound;
  return meter.isOpen && SAMPLE_LESS(meter.least, number) ? meter.least : number;
}

int larger(int a, int b) { return a > b ? a : b; }

std::array<int, 2> pair() { return std::array<int, 2>{sizeof(char[1]) == 1, 4}; }

bool same(const std::string& a, const std::string& b) { return a == b; }

} // namespace Sample
