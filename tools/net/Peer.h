#pragma once

#include "SocketFile.h"

#include <string>

namespace Net {

/// The process at the other end of a Unix socket, as the kernel knows it: of the time when it
/// connected.
struct Peer {
  pid_t process = -1;
  uid_t user = static_cast<uid_t>(-1);
  gid_t group = static_cast<gid_t>(-1);

  /// Throws `std::system_error` on what is no connected Unix socket.
  static Peer of(int socket);

  /// Whether it is of root or of the user of this process.
  bool isOwner() const noexcept;
  /// Whether the access lets it connect: an owner always, members of the
  /// file's group if the mode lets the group write, and everybody if it lets all others.
  bool mayConnect(const SocketAccess& access) const;
  /// Such as `user 1000 (ann), process 4711`.
  std::string text() const;

private:
  bool isMember(gid_t of) const;
};

} // namespace Net
