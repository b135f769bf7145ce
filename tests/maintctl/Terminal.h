#pragma once

#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

namespace Maintctl::Test {

/// A program that runs on a terminal of its own, with what is typed to it and what it shows.
class Terminal {
public:
  /// `environment` holds further variables, as `NAME=VALUE`. The program's locale is none that has
  /// UTF-8, and there is no folder of the user's.
  explicit Terminal(std::vector<std::string> words, std::vector<std::string> environment = {},
                    unsigned short columns = 200) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
      arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    winsize size = {50, columns, 0, 0};
    child_ = forkpty(&file_, nullptr, nullptr, &size);
    if (child_ == 0) {
      signal(SIGHUP, SIG_DFL); // which who runs the tests may have ignored
      setenv("TERM", "vt100", 1);
      unsetenv("MAINTCTL_SOCKET");
      setenv("HOME", "/dev/null", 1);
      setenv("LC_ALL", "C", 1);
      unsetenv("XDG_STATE_HOME");
      unsetenv("NO_COLOR");
      setenv("ASAN_OPTIONS", "detect_leaks=0", 1); // libedit keeps the names of functions for good
      for (std::string& variable : environment) {
        putenv(variable.data());
      }
      execv(arguments[0], arguments.data());
      _exit(127);
    }
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    close(file_);
    if (child_ > 0) {
      status();
    }
  }

  void type(const std::string& keys) const {
    EXPECT_EQ(write(file_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  /// Whether a text is shown behind what has been waited for; time runs out after a while.
  bool shows(const std::string& text) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (true) {
      if (const std::size_t at = shown_.find(text, seen_); at != std::string::npos) {
        seen_ = at + text.size();
        return true;
      }
      pollfd ready = {file_, POLLIN, 0};
      char bytes[4096];
      if (std::chrono::steady_clock::now() > until || poll(&ready, 1, 30000) != 1) {
        return false;
      }
      const ssize_t count = read(file_, bytes, sizeof bytes);
      if (count <= 0) {
        return false; // the program has ended
      }
      shown_.append(bytes, static_cast<std::size_t>(count));
    }
  }
  const std::string& shown() const { return shown_; }

  /// Ends the terminal, as closing its window does. How the program ended.
  int hangUp() {
    close(std::exchange(file_, -1));
    int code = 0;
    waitpid(std::exchange(child_, -1), &code, 0);
    return WIFEXITED(code) ? WEXITSTATUS(code) : -1;
  }

  /// How it ended; it must be about to.
  int status() {
    while (shows(std::string(1, '\0'))) { // nobody shows that: reads to the end
    }
    int code = 0;
    waitpid(child_, &code, 0);
    child_ = -1;
    return WIFEXITED(code) ? WEXITSTATUS(code) : -1;
  }

private:
  int file_ = -1;
  pid_t child_ = -1;
  std::string shown_;
  std::size_t seen_ = 0;
};

} // namespace Maintctl::Test
