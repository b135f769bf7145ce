#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace Replay {

/// Columns of text, as wide as what stands in them.
class Table {
public:
  /// The lines of one cell, top down. A cell without lines is printed as "-".
  using Cell = std::vector<std::string>;

  explicit Table(const std::vector<std::string>& heads);

  /// Adds a row, with as many cells as there are heads.
  void row(std::vector<Cell> cells);

  friend std::ostream& operator<<(std::ostream& out, const Table& table);

private:
  std::vector<std::vector<Cell>> rows_;
  std::vector<std::size_t> widths_;
};

/// The order in which people look for names: numbers inside them count as numbers, so `Linecard9`
/// comes before `Linecard10`.
bool comesBefore(std::string_view a, std::string_view b);

/// Decimal digits in groups of three.
std::string grouped(unsigned long long number);

} // namespace Replay
