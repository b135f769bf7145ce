#include <Zel/Backoff>

#include <Zel/Exception>

#include <algorithm>
#include <limits>

namespace Zel {

namespace {

/// Negated comparisons, so that no NaN passes.
Backoff::Times checked(const Backoff::Times& times) {
  if (!(times.first > 0) || !(times.most >= times.first) ||
      !(times.most < std::numeric_limits<double>::infinity())) {
    throwRangeException("back-off times out of order");
  }
  if (!(times.factor >= 1)) {
    throwRangeException("back-off factor below 1");
  }
  if (!(times.jitter >= 0 && times.jitter <= 1)) {
    throwRangeException("back-off jitter outside of 0 to 1");
  }
  return times;
}

/// Evenly from above 0 up to 1; moves the state on (SplitMix64).
double draw(std::uint64_t& state) {
  state += 0x9e3779b97f4a7c15;
  std::uint64_t z = state;
  z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
  z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
  z ^= z >> 31;
  return static_cast<double>((z >> 11) + 1) * 0x1p-53;
}

} // namespace

Backoff::Backoff(std::uint64_t seed) : Backoff(seed, Times()) {}

Backoff::Backoff(std::uint64_t seed, const Times& times)
    : times_(checked(times)), longest_(times.first), random_(seed) {}

double Backoff::next() {
  const double wait = longest_ * (1 - times_.jitter + times_.jitter * draw(random_));
  longest_ = std::min(times_.most, longest_ * times_.factor);
  return wait;
}

} // namespace Zel
