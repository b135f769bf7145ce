#pragma once

#include "peers/Peer.h"

#include <memory>
#include <string>

namespace Bench {

/// A message and its text by TextFormat, in one line. Text and message are printed and read into
/// storage that is used again.
class BENCH_PEER ProtobufText {
public:
  static ProtobufText profileKey(int type, const std::string& name);
  static ProtobufText trafficRates(unsigned long long out, unsigned long long in, double time);

  ProtobufText(ProtobufText&& other) noexcept;
  ~ProtobufText();

  const std::string& print();
  /// Reads the text, as it is printed at first, into a second message.
  bool parse();

  const std::string& text() const;
  /// Whether the message that was read last has the fields of the first.
  bool isEqual() const;

private:
  struct State;
  explicit ProtobufText(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

} // namespace Bench
