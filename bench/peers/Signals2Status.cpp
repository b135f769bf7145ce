#include "peers/Signals2Status.h"

namespace Bench {

template <class Mutex>
void Signals2Status<Mutex>::stateIs(int value) {
  if (value != state_) {
    state_ = value;
    stateChanged_();
  }
}

template <class Mutex>
void Signals2Status<Mutex>::listenerIs(std::uint64_t& heard) {
  stateChanged_.connect([&heard] { ++heard; });
}

template class Signals2Status<boost::signals2::mutex>;
template class Signals2Status<boost::signals2::dummy_mutex>;

} // namespace Bench
