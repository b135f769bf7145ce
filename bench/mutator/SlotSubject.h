#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Bench {

/// Subject over a peer whose listeners are slots: `Status` offers `stateIs(int)`, and
/// `listenerIs(count)` for a listener that counts its calls.
template <class Status>
class SlotSubject {
public:
  explicit SlotSubject(unsigned listeners)
      : status_(std::make_unique<Status>()), heard_(listeners) {
    for (auto& count : heard_) {
      status_->listenerIs(count);
    }
  }

  void stateIs(int value) { status_->stateIs(value); }

  std::uint64_t heard() const {
    std::uint64_t sum = 0;
    for (const std::uint64_t count : heard_) {
      sum += count;
    }
    return sum;
  }

private:
  std::unique_ptr<Status> status_;
  std::vector<std::uint64_t> heard_;
};

} // namespace Bench
