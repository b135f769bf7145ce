#pragma once

#include <Places.h>
#include <RemoteDevice.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace Maintctl::Test {

/// A server in a process of its own, which ends with the object.
class Served {
public:
  explicit Served(std::string socket) : socket_(std::move(socket)) {
    process_ = fork();
    if (process_ == 0) {
      close(STDERR_FILENO);
      execl(MAINTCTL_PROGRAM, MAINTCTL_PROGRAM, "--socket", socket_.c_str(), "serve", nullptr);
      _exit(127);
    }
  }
  Served(const Served&) = delete;
  Served& operator=(const Served&) = delete;
  ~Served() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }

  /// What a client has of it.
  std::unique_ptr<RemoteDevice> device() const {
    RemoteDevice::Settings settings;
    settings.path = socket_;
    settings.timeout = 60;
    settings.waits = true;
    return std::make_unique<RemoteDevice>(settings);
  }

private:
  const std::string socket_;
  pid_t process_ = -1;
};

} // namespace Maintctl::Test
