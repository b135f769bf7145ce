#pragma once

#include "peers/Peer.h"

#include <cstdint>
#include <vector>

namespace Bench {

class BENCH_PEER StateListener {
public:
  virtual ~StateListener();
  virtual void onState() = 0;
};

/// The limit for a mutator that tells listeners: compare, store, and call each member of a vector
/// through a virtual function. The members are copied to the stack first, so that a listener may
/// take itself out of the vector; nothing keeps one alive that is deleted meanwhile, and nothing is
/// caught.
class BENCH_PEER ListenersStatus {
public:
  void stateIs(int value);
  void listenerIs(StateListener* listener);

private:
  int state_ = 0;
  std::vector<StateListener*> listeners_;
};

} // namespace Bench
