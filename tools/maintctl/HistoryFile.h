#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Maintctl {

/// Lines that a user has typed, kept between runs in a file that only the user reads. Runs side by
/// side each add theirs. Nothing here fails: where no file can be kept, there is none.
class HistoryFile {
public:
  static constexpr std::size_t most = 1000; ///< lines; the file has at most twice as many

  /// Where it is kept: `maintctl/history` in `$XDG_STATE_HOME`, else in `~/.local/state`. Empty if
  /// there is neither.
  static std::filesystem::path place();

  explicit HistoryFile(std::filesystem::path file) : file_(std::move(file)) {}

  /// The last lines, the oldest first.
  std::vector<std::string> lines();
  void add(const std::string& line);

private:
  void shorten();

  const std::filesystem::path file_;
  std::size_t count_ = 0; // of lines in the file, as far as is known
};

} // namespace Maintctl
