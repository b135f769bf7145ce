#include "Table.h"

#include <algorithm>

namespace Replay {

namespace {

/// Characters of a text in UTF-8.
std::size_t width(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xc0) != 0x80;
  }));
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the number at the head of `text`, without leading zeros.
std::string_view takeNumber(std::string_view& text) {
  const auto stop = std::find_if_not(text.begin(), text.end(), isDigit);
  std::string_view number = text.substr(0, static_cast<std::size_t>(stop - text.begin()));
  text.remove_prefix(number.size());
  number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
  return number;
}

} // namespace

Table::Table(const std::vector<std::string>& heads) : widths_(heads.size()) {
  std::vector<Cell> cells;
  cells.reserve(heads.size());
  for (const std::string& head : heads) {
    cells.push_back({head});
  }
  row(std::move(cells));
}

void Table::row(std::vector<Cell> cells) {
  for (std::size_t column = 0; column < cells.size(); ++column) {
    if (cells[column].empty()) {
      cells[column].push_back("-");
    }
    for (const std::string& line : cells[column]) {
      widths_[column] = std::max(widths_[column], width(line));
    }
  }
  rows_.push_back(std::move(cells));
}

std::ostream& operator<<(std::ostream& out, const Table& table) {
  for (const auto& cells : table.rows_) {
    std::size_t height = 0;
    for (const Table::Cell& cell : cells) {
      height = std::max(height, cell.size());
    }
    for (std::size_t at = 0; at < height; ++at) {
      std::string text;
      std::size_t gap = 0; // blanks are written only in front of more text
      for (std::size_t column = 0; column < cells.size(); ++column) {
        const std::string& line = at < cells[column].size() ? cells[column][at] : std::string();
        if (!line.empty()) {
          text.append(gap, ' ').append(line);
          gap = 0;
        }
        gap += table.widths_[column] - width(line) + 2;
      }
      out << text << '\n';
    }
  }
  return out;
}

bool comesBefore(std::string_view a, std::string_view b) {
  const std::string_view wholeA = a;
  const std::string_view wholeB = b;
  while (!a.empty() && !b.empty()) {
    if (isDigit(a[0]) && isDigit(b[0])) {
      const std::string_view numberA = takeNumber(a);
      const std::string_view numberB = takeNumber(b);
      if (numberA != numberB) {
        return numberA.size() != numberB.size() ? numberA.size() < numberB.size()
                                                : numberA < numberB;
      }
    } else if (a[0] != b[0]) {
      return static_cast<unsigned char>(a[0]) < static_cast<unsigned char>(b[0]);
    } else {
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  // Names that differ only in leading zeros must not count as the same.
  return a.empty() != b.empty() ? a.empty() : wholeA < wholeB;
}

std::string grouped(unsigned long long number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) {
    at -= 3;
    digits.insert(at, 1, ',');
  }
  return digits;
}

} // namespace Replay
