#pragma once

#include <Places.h>
#include <RemoteDevice.h>
#include <support/Shell.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <sstream>

namespace Maintctl::Test {

/// A server in a process of its own, which ends with the object. What it says is in a file.
class Served {
public:
  explicit Served(std::string socket) : socket_(std::move(socket)), log_(socket_ + ".log") {
    process_ = fork();
    if (process_ == 0) {
      const int log = open(log_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
      dup2(log, STDERR_FILENO);
      execl(MAINTCTL_PROGRAM, MAINTCTL_PROGRAM, "--socket", socket_.c_str(), "serve", "--log-level",
            "debug", nullptr);
      _exit(127);
    }
  }
  Served(const Served&) = delete;
  Served& operator=(const Served&) = delete;
  ~Served() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }

  /// Waits until a client, counted from 1, mounts a root; false after half a minute.
  bool isMounted(int client, const std::string& root) const {
    for (int tries = 0; tries < 3000; ++tries) {
      std::istringstream log(Support::contentOf(log_));
      for (std::string line; std::getline(log, line);) {
        if (line.find(" client " + std::to_string(client) + ",") != line.npos &&
            line.find(" mounts " + root + ",") != line.npos) {
          return true;
        }
      }
      usleep(10000);
    }
    return false;
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
  const std::string log_;
  pid_t process_ = -1;
};

} // namespace Maintctl::Test
