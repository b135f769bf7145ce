#include "HistoryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <system_error>

namespace Maintctl {

namespace {

/// An absolute path that a variable holds; else empty.
std::filesystem::path folderIn(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value == '/' ? value : "";
}

void append(int file, const std::string& text) {
  // In one piece, as others may add to it; if the disk is full, part of it is lost.
  [[maybe_unused]] const ssize_t written = ::write(file, text.data(), text.size());
}

} // namespace

std::filesystem::path HistoryFile::place() {
  std::filesystem::path folder = folderIn("XDG_STATE_HOME");
  if (folder.empty()) {
    folder = folderIn("HOME");
    std::error_code none;
    if (!std::filesystem::is_directory(folder, none)) { // it is not for us to make
      return {};
    }
    folder /= ".local/state";
  }
  return folder / "maintctl" / "history";
}

std::vector<std::string> HistoryFile::lines() {
  std::vector<std::string> all;
  std::error_code none;
  if (std::filesystem::is_regular_file(file_, none)) { // to open a pipe would wait
    std::ifstream in(file_, std::ios::binary);
    for (std::string line; std::getline(in, line);) {
      all.push_back(std::move(line));
    }
  }
  count_ = all.size();
  if (all.size() > most) {
    all.erase(all.begin(), all.end() - most);
  }
  return all;
}

void HistoryFile::add(const std::string& line) {
  if (file_.empty() || line.find('\n') != line.npos) {
    return;
  }
  std::error_code failed;
  const std::filesystem::path folder = file_.parent_path();
  if (std::filesystem::create_directories(folder, failed)) {
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, failed);
  }
  const int file =
      open(file_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
  if (file < 0) {
    return;
  }
  struct stat opened = {};
  if (fstat(file, &opened) == 0 && S_ISREG(opened.st_mode)) {
    fchmod(file, 0600); // of one that was there
    append(file, line + "\n");
  }
  close(file);
  if (++count_ > 2 * most) {
    shorten();
  }
}

void HistoryFile::shorten() {
  std::string text;
  for (const std::string& line : lines()) {
    text += line + "\n";
  }
  std::string fresh = file_.string() + ".XXXXXX";
  const int file = mkostemp(fresh.data(), O_CLOEXEC); // mode 600
  if (file < 0) {
    return;
  }
  append(file, text);
  close(file);
  std::error_code failed;
  std::filesystem::rename(fresh, file_, failed);
  count_ = most;
}

} // namespace Maintctl
