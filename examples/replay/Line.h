#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Replay {

/// A line that does not read: what it should have held, and what stands there instead.
struct Mismatch {
  std::string expected;
  std::string got;
};

/// The words of one line of a journal, taken one after the other.
///
/// Blanks and tabs separate words. A word that holds blanks stands in double quotes, in which `\"`
/// and `\\` are a quote and a backslash. A `#` at the beginning of a word begins a comment.
///
/// Every operation but `done` throws `Mismatch`.
class Line {
public:
  explicit Line(std::string_view text);

  /// Whether no word is left.
  bool done() const noexcept { return next_ == words_.size(); }

  /// The next word; `expected` says what it should be, for the message if there is none.
  const std::string& word(std::string_view expected);

  /// Takes the next word, which must be this one.
  void keyword(std::string_view keyword);

  /// No word may be left.
  void end() const;

private:
  std::vector<std::string> words_;
  std::size_t next_ = 0;
};

/// A text in the quotes that `Line` reads.
std::string quoted(std::string_view text);

/// A name as a journal may hold it: in quotes only where it needs them.
std::string shown(std::string_view name);

/// What a message quotes of a journal: as `quoted`, with control characters as `\xHH`.
std::string printable(std::string_view text);

} // namespace Replay
