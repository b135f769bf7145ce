#pragma once

#include <simulation/Random.h>

#include <cstddef>
#include <span>
#include <vector>

namespace Simulation {

/// Bytes in flight in one direction: what has been sent and not received. It takes bytes only up to
/// a capacity, as the buffers below a socket do.
class Pipe {
public:
  explicit Pipe(std::size_t capacity) : capacity_(capacity) {}

  bool empty() const noexcept { return read_ == bytes_.size(); }
  std::size_t size() const noexcept { return bytes_.size() - read_; }
  std::size_t room() const noexcept { return capacity_ - size(); }

  /// Puts bytes in, of which there is room for all.
  void put(std::span<const std::uint8_t> bytes) {
    if (read_ != 0 && bytes_.size() + bytes.size() > bytes_.capacity()) {
      bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(read_));
      read_ = 0;
    }
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  }

  /// The bytes that come next, oldest first.
  std::span<const std::uint8_t> front() const noexcept { return {bytes_.data() + read_, size()}; }
  /// Takes out the first `count` of them.
  void taken(std::size_t count) noexcept {
    read_ += count;
    if (empty()) {
      clear();
    }
  }

  /// Loses all but the first `count` bytes.
  void truncate(std::size_t count) { bytes_.resize(read_ + count); }
  void clear() noexcept {
    bytes_.clear();
    read_ = 0;
  }

private:
  const std::size_t capacity_;
  std::size_t read_ = 0;
  std::vector<std::uint8_t> bytes_;
};

} // namespace Simulation
