#pragma once

#include "support/Shell.h"

#include <Places.h>
#include <algorithm>

namespace Maintctl::Test {

using Support::Folder;
using Support::Result;

/// The program as the shell calls it, where nothing names a server but its words.
inline const std::string program = "MAINTCTL_SOCKET= XDG_RUNTIME_DIR= '" MAINTCTL_PROGRAM "' ";

/// Runs the program with these arguments, in the words of a shell, on a tree of its own.
inline Result maintctl(const std::string& arguments, const std::string& input = "") {
  return Support::shell(program + "--local " + arguments, input);
}

/// Runs commands, one a line, on one tree.
inline Result commands(const std::string& lines) { return Support::shell(program + "run", lines); }

/// What commands print that all succeed.
inline std::string printed(const std::string& lines) {
  const Result result = commands(lines);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  return result.out;
}

/// A command line that fails: its message, when nothing is printed and the status is as said.
inline std::string refusal(int status, const std::string& arguments) {
  const Result result = maintctl(arguments);
  EXPECT_EQ(result.status, status);
  EXPECT_EQ(result.out, "");
  return result.err;
}

/// The same of the last of several lines, without its place.
inline std::string refusedLine(int status, const std::string& before, const std::string& line) {
  const Result result = commands(before + line + "\n");
  EXPECT_EQ(result.status, status) << line;
  EXPECT_EQ(result.out, "") << line;
  const std::string place =
      "<stdin>:" + std::to_string(std::count(before.begin(), before.end(), '\n') + 1) + ": ";
  EXPECT_TRUE(result.err.starts_with(place)) << result.err;
  return result.err.substr(std::min(place.size(), result.err.size()));
}

} // namespace Maintctl::Test
