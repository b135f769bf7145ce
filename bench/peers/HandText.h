#pragma once

#include "peers/Peer.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Bench {

/// The fields of a profile key, with the number of the type.
struct HandProfile {
  int type = 0;
  std::string name;
};

/// The limit for the text of a profile key: code written for this one text, in the same form as the
/// library's, to the byte. The parser takes what the printer writes and nothing else: no other
/// order, no other white space, and it says no more of a failure than that there is one.
class BENCH_PEER HandText {
public:
  /// Bytes that the text of a name of this length takes at most.
  static std::size_t space(std::size_t nameLength) { return 80 + 4 * nameLength; }
  /// Writes the text to a buffer with that much space; yields its length.
  static std::size_t print(const HandProfile& profile, char* to);
  static std::string print(const HandProfile& profile);

  /// Reads into `to`, whose storage is used again.
  static bool parse(std::string_view text, HandProfile& to);
};

} // namespace Bench
