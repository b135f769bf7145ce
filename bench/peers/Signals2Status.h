#pragma once

#include "peers/Peer.h"

#include <boost/signals2/dummy_mutex.hpp>
#include <boost/signals2/signal.hpp>
#include <boost/signals2/signal_type.hpp>

#include <cstdint>

namespace Bench {

template <class Mutex>
class BENCH_PEER Signals2Status {
public:
  void stateIs(int value);
  /// Adds a listener that counts its calls.
  void listenerIs(std::uint64_t& heard);

private:
  using Signal =
      typename boost::signals2::signal_type<void(),
                                            boost::signals2::keywords::mutex_type<Mutex>>::type;
  int state_ = 0;
  Signal stateChanged_;
};

extern template class BENCH_PEER Signals2Status<boost::signals2::mutex>;
extern template class BENCH_PEER Signals2Status<boost::signals2::dummy_mutex>;

} // namespace Bench
