#pragma once

#include <chrono>
#include <string>

namespace Maintctl {

/// Shows on standard error, if that is a terminal, how far something has come that takes long.
class Progress {
public:
  /// `whole` is how much there is to do, 0 if nobody knows.
  Progress(std::string what, std::size_t whole);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  /// Leaves the line empty.
  ~Progress();

  /// So much more has been done. Cheap.
  void add(std::size_t done) {
    done_ += done;
    if (++calls_ % callsBetweenLooks == 0) {
      look();
    }
  }

private:
  using Clock = std::chrono::steady_clock;
  static constexpr unsigned callsBetweenLooks = 256;

  void look();

  const std::string what_;
  const std::size_t whole_;
  const bool isTerminal_;
  Clock::time_point next_; ///< when there is to be something new to see
  std::size_t done_ = 0;
  unsigned calls_ = 0;
  bool hasShown_ = false;
};

} // namespace Maintctl
