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
  /// How a history begins, and what of the opening of sessions is a part of it.
  enum class Start : unsigned char {
    live,   ///< with mirrors that are live; a link that is made anew opens its sessions at once
    opened, ///< the same, but for what sessions say when they open, which takes steps
    fresh,  ///< with nothing said
  };
  Start start = Start::live;
  /// What the mirror behind each link may do. One more than there are links are the models.
  std::vector<Zel::Access> links;
  /// What the owner has written before.
  std::vector<Write> before;
  /// Steps that have been taken then, as words; behind each all came to rest that could, but for
  /// links that are cut.
  std::vector<std::string> taken;
  /// What each model's program writes, in this order, at any time.
  std::vector<std::vector<Write>> programs;
  /// How often each link is cut.
  std::vector<unsigned> cuts;
  /// Whether links are made anew when nothing else can happen any more, and what follows is not
  /// explored.
  bool isAnewLast = false;

  std::size_t models() const noexcept { return links.size() + 1; }
};

/// A plot without what is to be explored, as words: "sessions live rw,ro make:a,item:a:p:1
/// A!B,B!A".
std::string startText(const Plot& plot);
/// Reads such words. Throws `std::invalid_argument`.
Plot startOf(const std::string& text);

/// The roots that the writes of a plot are to, empty: one of members, and those of a text and of
/// several collections if there is a write to them.
std::vector<Zel::Ptr<Zel::Entity>> makeRoots(const Plot& plot);

/// Does a write to the roots of a model. What it is about may not be there, then nothing happens.
/// Throws what mutators throw, and `std::invalid_argument` on a word that is none.
///
/// - `make:KEY`, `make:KEY:ITEM`: a member, the latter with an entry, unless it is there
/// - `del:KEY`, `tell:KEY`: the member goes; is told of again
/// - `urge:KEY:N`: a singular attribute
/// - `item:KEY:ITEM:N`, `unitem:KEY:ITEM`: an entry of a collection; keys of two letters are long,
///   so that a walk stops behind each second one
/// - `text:CHUNKS:X`: a text of so many chunks of the letter, as a singular attribute
/// - `reserve:ITEM`, `label:ITEM`: entries of two collections of one root
///
/// Three more are a chain's: `walk:ROOT` has all of a root sent anew, `mute:ROOT` holds back what
/// flows of it, `unmute:ROOT` ends that.
void write(const Zel::Dir& roots, const Write& what);

} // namespace Exploration
