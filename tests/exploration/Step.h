#pragma once

#include "Plot.h"

#include <string>
#include <vector>

namespace Exploration {

/// One thing that happens, at one model; a link that is made anew happens at both of its own.
struct Step {
  enum class Kind : unsigned char {
    write,     ///< its program writes
    receive,   ///< the next record arrives over a link and is applied
    flow,      ///< of what it owes over a link, one entity is seen to
    hear,      ///< it hears that a link is cut
    reconnect, ///< a link is made anew, of which both ends have heard that it was cut
  };

  Kind kind;
  unsigned model; ///< of a reconnect, the one nearer to the owner
  unsigned link;  ///< of a write, 0
  Write what;     ///< of a write

  friend bool operator==(const Step&, const Step&) = default;
};

/// The models at which a step happens, as bits.
unsigned footprint(const Step& step) noexcept;
/// Whether two steps happen at different models, see docs/decisions/exploration.md.
inline bool areIndependent(const Step& one, const Step& other) noexcept {
  return (footprint(one) & footprint(other)) == 0;
}

/// As words: `B.make:a` writes, `A>B` arrives at B from A, `A~B` flows at A to B, `A!B` is heard of
/// by A, `A=B` is made anew.
std::string text(const Step& step);
/// Reads one. Throws `std::invalid_argument`.
Step stepOf(const std::string& word);

using Steps = std::vector<Step>;
std::string text(const Steps& steps);
Steps stepsOf(const std::string& words);

} // namespace Exploration
