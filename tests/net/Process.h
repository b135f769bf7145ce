#pragma once

#include <Places.h>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace TestNet {

/// A process that this one has started, with pipes to its standard input and output, and its
/// standard error in a file. It is killed when the object goes, and it alone.
class Process {
public:
  /// Starts `net-peer`, or another program, with these words.
  Process(std::vector<std::string> words, std::filesystem::path errors,
          const char* program = NET_PEER_PROGRAM);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  pid_t id() const noexcept { return id_; }
  void signal(int number) const;
  /// Writes a line to it.
  void say(const std::string& line) const;
  /// The next line that it writes; "(ended)" if none comes any more, "(nothing)" after a minute.
  std::string hear();
  std::string ask(const std::string& line) {
    say(line);
    return hear();
  }
  /// Asks for a number.
  std::size_t number(const std::string& line) { return std::stoul(ask(line)); }
  /// SIGKILL, and waits until it is gone.
  void kill();
  /// Waits until a signal has stopped it; false if it has ended.
  bool isStopped() const;
  /// Ends its input and waits for it; its exit status, -1 if a signal ended it.
  int end();
  /// Its standard error so far.
  std::string errors() const;
  /// Waits until its standard error holds the text; false after a minute.
  bool complains(const std::string& text) const;

private:
  int wait();

  const std::filesystem::path errors_;
  pid_t id_ = -1;
  int in_ = -1;
  int out_ = -1;
  std::string heard_;
};

} // namespace TestNet
