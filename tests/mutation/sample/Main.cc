#include "Sample.h"

#include <cstdio>
#include <cstdlib>

namespace {

void expect(bool holds, int line) {
  if (!holds) {
    std::printf("line %d\n", line);
    std::exit(1);
  }
}

} // namespace

#define EXPECT(what) expect(what, __LINE__)

int main() {
  using namespace Sample;
  EXPECT(sum({1, 2, 4}) == 7);
  EXPECT(name(1) == "one");
  EXPECT(name(2) == "two");
  bool isThrown = false;
  try {
    name(3);
  } catch (const std::runtime_error&) {
    isThrown = true;
  }
  EXPECT(isThrown);
  EXPECT(isEven(2) && !isEven(3));
  EXPECT(halves(29) == 4);
  EXPECT(down(6) == 0);
  EXPECT(least(Meter(), 5) == 1 && least(Meter(), 0) == 0);
  EXPECT(larger(3, 2) == 3 && larger(2, 3) == 3);
  EXPECT(pair()[0] + pair()[1] == 5);
  EXPECT(isWithin(2, 1, 3) && !isWithin(4, 1, 3));
  volatile int three = 3;
  EXPECT(twice(three) == 6);
}
