#include "peers/SigcStatus.h"

namespace Bench {

void SigcStatus::stateIs(int value) {
  if (value != state_) {
    state_ = value;
    stateChanged_.emit();
  }
}

void SigcStatus::listenerIs(std::uint64_t& heard) {
  stateChanged_.connect([&heard] { ++heard; });
}

} // namespace Bench
