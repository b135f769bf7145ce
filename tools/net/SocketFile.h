#pragma once

#include <asio/local/stream_protocol.hpp>

#include <stdexcept>
#include <string>

#include <sys/types.h>

namespace Net {

/// Why a server cannot be there, for its user.
class ServerError : public std::runtime_error {
public:
  using runtime_error::runtime_error;
};
/// Another server is.
class ServerInUse : public ServerError {
public:
  using ServerError::ServerError;
};

/// Who may connect to a socket. The file's mode lets them or not; the peer's user is held against
/// it once more, where a file system or an administrator has let somebody else through.
struct SocketAccess {
  unsigned mode = 0600;
  gid_t group = static_cast<gid_t>(-1); ///< of the file; -1: as the process has it
};

/// The id of a group that is named or numbered. Throws `ServerError` if there is none.
gid_t groupId(const std::string& name);

/// A socket's file and, beside it, the lock of the server that has it: `PATH.lock`. A file without
/// a locked lock is one that a server left behind when it was killed, and is replaced. Both go with
/// the object.
class SocketFile {
public:
  using Protocol = asio::local::stream_protocol;

  /// Takes the path. Throws `ServerInUse` if another server has it, and `ServerError` if what is
  /// there is no socket, or nothing can be made there.
  SocketFile(std::string path, const SocketAccess& access);
  SocketFile(const SocketFile&) = delete;
  SocketFile& operator=(const SocketFile&) = delete;
  ~SocketFile();

  const std::string& path() const noexcept { return path_; }
  /// Opens the acceptor on it. Nobody can connect before the file has its mode and group.
  void listen(Protocol::acceptor& acceptor);

private:
  void lock();
  void staleDel() const;

  const std::string path_;
  const std::string lockPath_;
  const SocketAccess access_;
  int lock_ = -1;
  bool isBound_ = false;
};

} // namespace Net
