#include "Input.h"

#include "Failure.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace Maintctl {

std::ifstream openedFile(const std::string& name) {
  std::error_code none;
  // To open a folder works; to read it does not.
  errno = std::filesystem::is_directory(name, none) ? EISDIR : 0;
  std::ifstream in;
  if (errno == 0) {
    in.open(name, std::ios::binary);
  }
  if (!in.is_open()) {
    throw Failure(exitFile, "cannot read " + name + ": " + std::generic_category().message(errno));
  }
  return in;
}

} // namespace Maintctl
