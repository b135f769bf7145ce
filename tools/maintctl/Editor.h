#pragma once

#include "Lines.h"

#include <functional>
#include <memory>
#include <vector>

namespace Maintctl {

/// Lines that are typed on a terminal, with editing and a history that is kept between runs; the
/// tabulator key completes words, and Ctrl-C gives a line up. Lines are UTF-8, whatever the locale;
/// bytes that are none stay what they are.
class Editor : public Lines {
public:
  /// Takes the words up to the cursor, of which the last is to be completed, without the quotes
  /// that it may begin with, and may be empty; yields what it could become.
  using Completer = std::function<std::vector<std::string>(const std::vector<std::string>&)>;

  Editor(std::string prompt, Completer completer);
  ~Editor() override;

  bool next(std::string& line) override;
  std::string where() const override { return ""; }

private:
  class Library;
  const std::unique_ptr<Library> library_;
};

} // namespace Maintctl
