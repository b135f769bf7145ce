#include "Table.h"

#include "Utf8.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <ostream>
#include <string_view>

namespace Maintctl {

namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t widest = 48;   // of a column, where nothing is cut
constexpr std::size_t narrowest = 8; // that a column is cut to

const char* codeOf(Cell::Colour colour) {
  switch (colour) {
  case Cell::bold:
    return "\x1b[1m";
  case Cell::faint:
    return "\x1b[2m";
  case Cell::red:
    return "\x1b[31m";
  case Cell::green:
    return "\x1b[32m";
  case Cell::yellow:
    return "\x1b[33m";
  case Cell::cyan:
    return "\x1b[36m";
  case Cell::plain:
    break;
  }
  return "";
}

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

} // namespace

Screen Screen::ofOutput() {
  Screen screen;
  if (isatty(STDOUT_FILENO) == 0) {
    return screen;
  }
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0) {
    screen.columns = size.ws_col;
  }
  const char* const kind = std::getenv("TERM");
  screen.hasColours =
      !isSet("NO_COLOR") && kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
  return screen;
}

std::string Cell::onScreen(const Screen& screen) const {
  return screen.hasColours && colour != plain ? codeOf(colour) + text + "\x1b[0m" : text;
}

/// Of each column. The last has room for the longest cell, as it is there to be cut as others are.
std::vector<std::size_t> Table::widths(const Screen& screen) const {
  std::vector<std::size_t> widths;
  for (const std::vector<Cell>& line : lines_) {
    widths.resize(std::max(widths.size(), line.size()));
    for (std::size_t at = 0; at < line.size(); ++at) {
      const std::size_t columns = columnsOf(line[at].text);
      widths[at] = std::max(widths[at], screen.columns == 0 ? std::min(columns, widest) : columns);
    }
  }
  if (screen.columns == 0 || widths.empty()) {
    return widths;
  }
  const std::size_t gaps = (widths.size() - 1) * gap;
  std::size_t whole = std::accumulate(widths.begin(), widths.end(), gaps);
  for (; whole > screen.columns; --whole) {
    // Names go last: they are what is typed next.
    auto widestOne = std::max_element(widths.begin() + 1, widths.end());
    if (widestOne == widths.end() || *widestOne <= narrowest) {
      widestOne = widths.begin();
    }
    if (*widestOne <= narrowest) {
      break;
    }
    --*widestOne;
  }
  return widths;
}

void Table::print(std::ostream& out, const Screen& screen, std::vector<Cell> line,
                  const std::vector<std::size_t>& columns) const {
  while (line.size() > 1 && line.back().text.empty()) {
    line.pop_back();
  }
  std::vector<std::string> more; // of the last cell
  std::size_t indent = 0;
  for (std::size_t at = 0; at < line.size(); ++at) {
    Cell& cell = line[at];
    const bool isLast = at + 1 == line.size();
    if (screen.columns != 0 && isLast && last_ == goesOn) {
      more = wrapped(cell.text, columns[at]);
      cell.text = more.front();
    } else if (screen.columns != 0) {
      cell.text = fitted(cell.text, columns[at]);
    }
    out << cell.onScreen(screen);
    if (!isLast) {
      const std::size_t taken = columnsOf(cell.text);
      out << std::string(gap + (columns[at] > taken ? columns[at] - taken : 0), ' ');
      indent += columns[at] + gap;
    }
  }
  out << '\n';
  for (std::size_t at = 1; at < more.size(); ++at) {
    out << std::string(indent, ' ') << Cell(more[at], line.back().colour).onScreen(screen) << '\n';
  }
}

void Table::print(std::ostream& out, const Screen& screen) const {
  const std::vector<std::size_t> columns = widths(screen);
  for (const std::vector<Cell>& line : lines_) {
    print(out, screen, line, columns);
  }
}

} // namespace Maintctl
