#pragma once

#include <cstdint>
#include <random>

namespace KernelRandom {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool sanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool sanitized = true;
#else
inline constexpr bool sanitized = false;
#endif
#else
inline constexpr bool sanitized = false;
#endif

/// A number of rounds or members: all of it in plain builds, a tenth or less under a sanitizer.
constexpr unsigned scaled(unsigned full, unsigned part = 10) {
  return sanitized ? full / part : full;
}

/// Seeded source of choices. The same seed gives the same choices on every platform, which the
/// distributions of the standard library do not promise.
class Random {
public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  std::uint64_t word() { return engine_(); }
  /// A number below `end`.
  unsigned below(unsigned end) { return static_cast<unsigned>((engine_() >> 32) % end); }
  bool oneIn(unsigned n) { return below(n) == 0; }

private:
  std::mt19937_64 engine_;
};

} // namespace KernelRandom
