#pragma once

#include <cstdint>
#include <vector>

namespace Support {

/// The bytes of a word, lowest first.
inline std::vector<std::uint8_t> bytesOf(std::uint32_t word) {
  std::vector<std::uint8_t> bytes;
  while (bytes.size() < 4) {
    bytes.push_back(static_cast<std::uint8_t>(word % 256));
    word /= 256;
  }
  return bytes;
}

/// One-at-a-time hash, Jenkins, written down from its description, to check hashes against: the
/// bytes go in, the hash of another value may be mixed in by exclusive or, the end comes last.
class OneAtATime {
public:
  OneAtATime& add(const std::vector<std::uint8_t>& bytes) {
    for (const std::uint8_t byte : bytes) {
      hash_ = hash_ + byte;
      hash_ = hash_ + (hash_ << 10);
      hash_ = hash_ ^ (hash_ >> 6);
    }
    return *this;
  }

  OneAtATime& mix(std::uint32_t other) {
    hash_ = hash_ ^ other;
    return *this;
  }

  std::uint32_t end() const {
    std::uint32_t hash = hash_;
    hash = hash + (hash << 3);
    hash = hash ^ (hash >> 11);
    return hash + (hash << 15);
  }

private:
  std::uint32_t hash_ = 0;
};

/// The bits of a word in reverse order.
inline std::uint32_t reversed(std::uint32_t word) {
  std::uint32_t result = 0;
  for (int bit = 0; bit < 32; ++bit) {
    result = result * 2 + (word >> bit & 1);
  }
  return result;
}

} // namespace Support
