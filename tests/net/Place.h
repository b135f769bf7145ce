#pragma once

#include "Process.h"
#include "support/Shell.h"

#include <Places.h>
#include <memory>

#include <pwd.h>
#include <unistd.h>

namespace TestNet {

/// What a process may take, in kilobytes, that took `before` and is to grow by less than `growth`.
inline std::size_t grown(std::size_t before, std::size_t growth) {
#if defined(__SANITIZE_ADDRESS__)
  return before + growth + (std::size_t{1} << 20); // which keeps what is freed for a while
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
  return before + growth + (std::size_t{1} << 20);
#else
  return before + growth;
#endif
#else
  return before + growth;
#endif
}

/// A folder with a socket, and the processes of a test.
class Place {
public:
  std::string socket() const { return folder / "socket"; }

  /// Starts a server; it listens when this returns.
  std::unique_ptr<Process> serve(std::vector<std::string> settings = {}) {
    settings.insert(settings.begin(), {"serve", socket()});
    auto server = start(std::move(settings));
    EXPECT_EQ(server->hear(), "listening") << server->errors();
    return server;
  }
  /// Starts a mirror, which may have no server yet.
  std::unique_ptr<Process> mirror() {
    auto mirror = start({"mirror", socket()});
    EXPECT_EQ(mirror->hear(), "mirroring") << mirror->errors();
    return mirror;
  }
  std::unique_ptr<Process> start(std::vector<std::string> words,
                                 const char* program = NET_PEER_PROGRAM) {
    const std::string name = "errors" + std::to_string(++started_);
    return std::make_unique<Process>(std::move(words), folder / name.c_str(), program);
  }
  /// Starts `maintctl` at the socket.
  std::unique_ptr<Process> maintctl(std::vector<std::string> words) {
    words.insert(words.begin(), {"--socket", socket()});
    return start(std::move(words), MAINTCTL_PROGRAM);
  }

  /// As a server's log names a client of this user.
  static std::string client(int number, pid_t process = ::getpid()) {
    const ::passwd* const known = ::getpwuid(::geteuid());
    return "client " + std::to_string(number) + ", user " + std::to_string(::geteuid()) +
           (known != nullptr ? std::string(" (") + known->pw_name + ")" : "") + ", process " +
           std::to_string(process);
  }

  const Support::Folder folder;

private:
  int started_ = 0;
};

} // namespace TestNet
