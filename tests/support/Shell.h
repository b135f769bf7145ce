#pragma once

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace Support {

inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << file;
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

/// A folder of its own that goes with the object.
class Folder {
public:
  Folder() {
    std::string pattern = std::filesystem::temp_directory_path() / "maintenance-model-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("cannot make " + pattern);
    }
    path_ = pattern;
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::filesystem::path operator/(const char* name) const { return path_ / name; }

  std::string write(const char* name, const std::string& content) const {
    std::ofstream(path_ / name, std::ios::binary) << content;
    return path_ / name;
  }

private:
  std::filesystem::path path_;
};

struct Result {
  int status = -1; ///< the exit status; -1 if the shell was killed
  std::string out;
  std::string err;
};

/// Runs a script in the shell, with `input` as standard input.
inline Result shell(const std::string& script, const std::string& input = "") {
  const Folder folder;
  const std::string in = folder.write("in", input);
  const std::string out = folder / "out";
  const std::string err = folder / "err";
  const int code =
      std::system(("( " + script + " ) <'" + in + "' >'" + out + "' 2>'" + err + "'").c_str());
  return {WIFEXITED(code) ? WEXITSTATUS(code) : -1, contentOf(out), contentOf(err)};
}

} // namespace Support
