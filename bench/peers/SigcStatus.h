#pragma once

#include "peers/Peer.h"

#include <sigc++/sigc++.h>

#include <cstdint>

namespace Bench {

class BENCH_PEER SigcStatus {
public:
  void stateIs(int value);
  /// Adds a listener that counts its calls.
  void listenerIs(std::uint64_t& heard);

private:
  int state_ = 0;
  sigc::signal<void()> stateChanged_;
};

} // namespace Bench
