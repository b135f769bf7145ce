#pragma once

#include <cstdint>
#include <span>

namespace Simulation {

/// Random numbers that depend on their seed alone: the same on every machine, in every version.
///
///     Simulation::Random random(7);
///     if (random.chance(1, 3)) {
///       wait(random.between(10, 20));
///     }
class Random {
public:
  explicit Random(std::uint64_t seed) noexcept : state_(seed) {}
  /// Bytes decide as long as there are any, each draw by as few of them as its bound needs, and
  /// seed 0 does from there on. So a fuzzer plays with what is drawn. They have to outlive this.
  explicit Random(std::span<const std::uint8_t> bytes) noexcept
      : state_(0), bytes_(bytes), isOfBytes_(true) {}

  /// Whether bytes were to decide, and have all been drawn.
  bool isSpent() const noexcept { return isOfBytes_ && bytes_.empty(); }

  /// All 64 bits.
  std::uint64_t next() noexcept { return drawn(~std::uint64_t{0}); }
  /// From 0 to `bound` - 1; 0 for a bound of 0.
  std::uint64_t below(std::uint64_t bound) noexcept {
    return bound != 0 ? drawn(bound - 1) % bound : 0;
  }
  /// From `least` to `most`, both included.
  std::uint64_t between(std::uint64_t least, std::uint64_t most) noexcept {
    return least + below(most - least + 1);
  }
  /// True `times` out of `of`.
  bool chance(std::uint64_t times, std::uint64_t of) noexcept { return below(of) < times; }
  /// From 1 to `most`, with every order of size as likely as another: 1 and 2 to 3 come as often as
  /// 1024 to 2047.
  std::uint64_t size(std::uint64_t most) noexcept {
    unsigned bits = 0;
    while (bits < 63 && (most >> (bits + 1)) != 0) {
      ++bits;
    }
    const std::uint64_t scale = std::uint64_t{1} << below(bits + 1);
    const std::uint64_t drawn = between(scale, 2 * scale - 1);
    return drawn < most ? drawn : most != 0 ? most : 1;
  }

  /// Others that follow from one draw: of two bytes where bytes decide.
  Random fork() noexcept {
    const std::uint64_t by = bytes_.empty() ? next() : below(1 << 16);
    return Random(mixed(by + 1));
  }

  /// A number with its bits well mixed; different numbers stay different.
  static constexpr std::uint64_t mixed(std::uint64_t number) noexcept {
    number = (number ^ (number >> 30)) * 0xbf58476d1ce4e5b9;
    number = (number ^ (number >> 27)) * 0x94d049bb133111eb;
    return number ^ (number >> 31);
  }

private:
  /// A number that can be any up to `most`.
  std::uint64_t drawn(std::uint64_t most) noexcept {
    if (bytes_.empty()) [[likely]] {
      return mixed(state_ += 0x9e3779b97f4a7c15);
    }
    std::uint64_t number = 0;
    for (; most != 0 && !bytes_.empty(); most >>= 8) {
      number = number << 8 | bytes_.front();
      bytes_ = bytes_.subspan(1);
    }
    return number;
  }

  std::uint64_t state_;
  std::span<const std::uint8_t> bytes_;
  bool isOfBytes_ = false;
};

} // namespace Simulation
