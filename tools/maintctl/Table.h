#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace Maintctl {

/// What a program knows of the terminal that its standard output is. Asked anew each time: windows
/// change.
struct Screen {
  std::size_t columns = 0; ///< 0: no terminal, or one that does not tell
  bool hasColours = false; ///< as `NO_COLOR` and `TERM` let it

  static Screen ofOutput();
};

/// A text, in a colour where there are some.
struct Cell {
  enum Colour { plain, bold, faint, red, green, yellow, cyan };

  Cell(std::string of, Colour in = plain) : text(std::move(of)), colour(in) {}

  /// With the colour, for `screen`.
  std::string onScreen(const Screen& screen) const;

  std::string text;
  Colour colour;
};

/// Lines of cells in columns, the last of a line as long as it is. On a screen they fit its width:
/// the widest columns behind the first are cut, which shows as an ellipsis; the last may go on
/// below instead. Elsewhere nothing is, and a cell that is very long moves only its own line.
class Table {
public:
  enum Last { cut, goesOn };

  explicit Table(Last last = cut) : last_(last) {}

  void add(std::vector<Cell> line) { lines_.push_back(std::move(line)); }
  void print(std::ostream& out, const Screen& screen) const;

private:
  std::vector<std::size_t> widths(const Screen& screen) const;
  void print(std::ostream& out, const Screen& screen, std::vector<Cell> line,
             const std::vector<std::size_t>& columns) const;

  const Last last_;

  std::vector<std::vector<Cell>> lines_;
};

} // namespace Maintctl
