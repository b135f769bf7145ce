#pragma once

#include <Zel/Dir>
#include <Zel/Exports>

#include <string>
#include <vector>

/// Histories of mirrored models, all that there are of a kind.
namespace Exploration {

/// What a program writes, as a word: `make:a`, see `write`.
using Write = std::string;

/// What programs of a chain do, and what befalls them: in which order is to be explored. Models are
/// numbered from the owner of all on, named `A`, `B`, `C`; link 0 stands between `A` and `B`.
struct Plot {
  enum class Over : unsigned char { sessions, connections };

  Over over = Over::sessions;
  /// Whether the mirrors are live when the history begins, or nothing has been said yet.
  bool isLive = true;
  /// What the mirror behind each link may do. One more than there are links are the models.
  std::vector<Zel::Access> links;
  /// What the owner has written before.
  std::vector<Write> before;
  /// What each model's program writes, in this order, at any time.
  std::vector<std::vector<Write>> programs;
  /// How often each link is cut.
  std::vector<unsigned> cuts;

  std::size_t models() const noexcept { return links.size() + 1; }
};

/// A plot without what is to be explored, as words: "sessions live rw,ro make:a,item:a:p:1".
std::string startText(const Plot& plot);
/// Reads such words. Throws `std::invalid_argument`.
Plot startOf(const std::string& text);

/// The roots that the writes of a plot are to, empty: one of members, and one of a text if there is
/// a text among the writes.
std::vector<Zel::Ptr<Zel::Entity>> makeRoots(const Plot& plot);

/// Does a write to the roots of a model. What it is about may not be there, then nothing happens.
/// Throws what mutators throw, and `std::invalid_argument` on a word that is none.
///
/// - `make:KEY`, `make:KEY:ITEM`: a member, the latter with an entry, unless it is there
/// - `del:KEY`, `tell:KEY`: the member goes; is told of again
/// - `urge:KEY:N`: a singular attribute
/// - `item:KEY:ITEM:N`, `unitem:KEY:ITEM`: an entry of a collection; items of two letters are long,
///   so that a walk stops behind each second one
/// - `text:CHUNKS:X`: a text of so many chunks of the letter, as a singular attribute
void write(const Zel::Dir& roots, const Write& what);

} // namespace Exploration
