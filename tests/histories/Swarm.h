#pragma once

#include <simulation/Random.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <string>

namespace Histories {

/// What programs and links may do in a history.
enum class Doing : std::uint8_t {
  // Of programs.
  number,       ///< writes a value that is no text
  increment,    ///< counts one up
  text,         ///< writes a text
  longText,     ///< of more than one record
  entry,        ///< writes an entry of a collection
  entryDelete,  ///< deletes one
  entryClear,   ///< or all
  member,       ///< makes a member of a directory
  memberDelete, ///< deletes one
  memberClear,  ///< or all
  strangeEnum,  ///< writes an enumerator that has no name
  longKey,      ///< keys may be long
  // Of the programs of mirrors.
  writeOn,     ///< go on writing behind a cut, as long as they may
  writeFrozen, ///< write although they may not
  // Of links.
  stall,
  cut,
  cutAfter,  ///< right behind a byte
  reconnect, ///< before everything comes to rest
  rash,      ///< and before what lies behind a link has
  half,      ///< a newer session while the former is still up at the exporter
  silence,   ///< nothing is announced for a while
  newRoot,
  withdraw, ///< a root, which is offered again later
  stranger, ///< records of nobody
  // What there is.
  chain,     ///< three models
  roomy,     ///< larger rings than the smallest
  sluggish,  ///< links that move a few bytes at a time
  readOnly,  ///< mirrors
  healthy,   ///< links all of a sudden, see `Rest.h`
  allRoots,  ///< from the start
  onlyChild, ///< one root at most
};
inline constexpr std::size_t doings = static_cast<std::size_t>(Doing::onlyChild) + 1;

/// The doings of one history. Most seeds draw some of them: a history of a few kinds of steps goes
/// further in each, and meets what is hidden where another kind undoes it.
class Swarm {
public:
  /// All of them.
  Swarm() noexcept { may_.set(); }
  explicit Swarm(Simulation::Random& random);

  bool may(Doing doing) const noexcept { return may_[static_cast<std::size_t>(doing)]; }
  /// Their names.
  std::string told() const;

private:
  std::bitset<doings> may_;
};

} // namespace Histories
