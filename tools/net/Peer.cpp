#include "Peer.h"

#include "Log.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <vector>

#include <grp.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Net {

Peer Peer::of(int socket) {
  ::ucred credentials = {};
  socklen_t size = sizeof credentials;
  if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) {
    throw std::system_error(errno, std::generic_category(), "the peer's user");
  }
  return {credentials.pid, credentials.uid, credentials.gid};
}

bool Peer::isOwner() const noexcept { return user == 0 || user == ::geteuid(); }

bool Peer::mayConnect(const SocketAccess& access) const {
  if (isOwner() || (access.mode & 0002) != 0) {
    return true;
  }
  const gid_t ofFile = access.group != static_cast<gid_t>(-1) ? access.group : ::getegid();
  return (access.mode & 0020) != 0 && isMember(ofFile);
}

bool Peer::isMember(gid_t of) const {
  if (group == of) {
    return true;
  }
  const ::passwd* const known = ::getpwuid(user);
  if (known == nullptr) {
    return false;
  }
  int count = 64;
  std::vector<gid_t> groups(static_cast<std::size_t>(count));
  if (::getgrouplist(known->pw_name, known->pw_gid, groups.data(), &count) < 0) {
    groups.resize(static_cast<std::size_t>(count)); // which tells now how many there are
    ::getgrouplist(known->pw_name, known->pw_gid, groups.data(), &count);
  }
  groups.resize(static_cast<std::size_t>(count));
  return std::find(groups.begin(), groups.end(), of) != groups.end();
}

std::string Peer::text() const {
  std::string text = "user " + std::to_string(user);
  if (const ::passwd* const known = ::getpwuid(user)) {
    text += " (" + printable(known->pw_name) + ")";
  }
  return text + ", process " + std::to_string(process);
}

} // namespace Net
