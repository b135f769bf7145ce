#pragma once

#include "peers/Peer.h"

#include <cstddef>
#include <functional>
#include <string>

namespace Bench {

/// The two ends of Qt Remote Objects. Each operation runs an event loop until it is done; a process
/// calls one of them, once.
class BENCH_PEER QtNode {
public:
  /// A socket that nobody else uses.
  static std::string address();

  /// Makes `sources` and calls `ready`. Once `mayStart`, which is asked now and then until it says
  /// yes, makes `count` changes, `turn` of them in each turn of the event loop. Ends when `isOver`.
  static void exportChanges(const std::string& address, std::size_t sources, std::size_t turn,
                            std::size_t count, const std::function<void()>& ready,
                            const std::function<bool()>& mayStart,
                            const std::function<bool()>& isOver);

  /// Calls `ready` when all replicas are initialised; yields how many changes it has heard of by
  /// the time of the last.
  static std::size_t mirrorChanges(const std::string& address, std::size_t sources,
                                   std::size_t count, const std::function<void()>& ready);

  /// Acquires all replicas; whether each holds the name of its source when the last is initialised.
  static bool mirrorAll(const std::string& address, std::size_t sources);
};

} // namespace Bench
