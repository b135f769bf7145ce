#pragma once

#include "sockets/Processes.h"

#include <string>
#include <vector>

namespace Bench::Sockets {

/// A server that is a program of its own, with a folder of its own, on the first CPU.
class Server {
public:
  /// Starts `command`, in which `@` stands for the folder. It is there when it has made `@/socket`,
  /// and takes that away when it ends.
  explicit Server(std::vector<std::string> command);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::string socket() const { return folder_ + "/socket"; }

private:
  std::string folder_;
  pid_t process_ = -1;
};

} // namespace Bench::Sockets
