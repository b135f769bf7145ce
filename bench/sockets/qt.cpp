// Qt Remote Objects over a local socket: properties of sources, and the replicas that follow them.

#include "peers/QtReplicas.h"
#include "sockets/Processes.h"

#include <string>

namespace {

using namespace Bench::Sockets;
using Bench::QtNode;

/// Sets properties, one source after the other, in turns of the event loop of so many.
double changes(std::size_t sources, std::size_t turn, std::size_t count) {
  const SharedBoard board;
  const std::string address = QtNode::address();
  {
    const Process reader([&] {
      placeIs(Place::last);
      waitFor([&] { return board->writerReady.load(); });
      const std::size_t seen =
          QtNode::mirrorChanges(address, sources, count, [&] { board->readersReady = 1; });
      board->endedAt(now());
      if (seen != count) {
        fail("seen " + std::to_string(seen) + " changes");
      }
      board->isOver = true;
    });
    placeIs(Place::first);
    QtNode::exportChanges(
        address, sources, turn, count, [&] { board->writerReady = true; },
        [&] {
          const bool isReady = board->readersReady == 1;
          if (isReady) {
            board->started = now();
          }
          return isReady;
        },
        [&] { return board->isOver.load(); });
  }
  return (board->ended - board->started) / static_cast<double>(count) * 1e9;
}

/// From the connection until all replicas are initialised.
double walk(std::size_t count) {
  const SharedBoard board;
  const std::string address = QtNode::address();
  {
    const Process reader([&] {
      placeIs(Place::last);
      waitFor([&] { return board->writerReady.load(); });
      board->started = now();
      const bool isWhole = QtNode::mirrorAll(address, count);
      board->endedAt(now());
      if (!isWhole) {
        fail("a replica is not what its source is");
      }
      board->isOver = true;
    });
    placeIs(Place::first);
    QtNode::exportChanges(
        address, count, 1, 0, [&] { board->writerReady = true; }, [] { return false; },
        [&] { return board->isOver.load(); });
  }
  return (board->ended - board->started) / static_cast<double>(count) * 1e9;
}

} // namespace

Bench::Sockets::Operations Bench::Sockets::operations() {
  return {
      {"changes", [] { return changes(10'000, 64, 200'000); }},
      {"changes of one", [] { return changes(1, 64, 200'000); }},
      {"walk", [] { return walk(100'000); }},
  };
}
