#pragma once

#include "peers/Peer.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Bench {

/// One change of a number, as a message that is used again.
class BENCH_PEER ProtobufChange {
public:
  ProtobufChange();
  ~ProtobufChange();

  /// Writes the message into a buffer; yields its size.
  std::size_t encode(std::uint32_t value);
  /// Reads what was written last; yields the number.
  std::uint32_t decode();

private:
  struct State;
  const std::unique_ptr<State> state_;
};

} // namespace Bench
