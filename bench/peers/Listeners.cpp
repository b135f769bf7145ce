#include "peers/Listeners.h"

#include <array>
#include <atomic>

namespace Bench {

StateListener::~StateListener() = default;

void ListenersStatus::listenerIs(StateListener* listener) { listeners_.push_back(listener); }

void ListenersStatus::stateIs(int value) {
  if (value == state_) {
    return;
  }
  state_ = value;
  const std::size_t count = listeners_.size();
  std::array<StateListener*, 16> snapshot;
  if (count == 0 || count > snapshot.size()) {
    return;
  }
  for (std::size_t i = 0; i < count; ++i) {
    snapshot[i] = listeners_[i];
    // Keeps the compiler from making one block copy of this, which is slower for so few.
    std::atomic_signal_fence(std::memory_order_acq_rel);
  }
  for (std::size_t i = 0; i < count; ++i) {
    snapshot[i]->onState();
  }
}

} // namespace Bench
