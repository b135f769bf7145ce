#include "SocketFile.h"

#include <asio/error.hpp>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Net {

namespace {

[[noreturn]] void fail(const std::string& what, int number) {
  throw ServerError(what + ": " + std::strerror(number));
}

bool isSameFile(int file, const std::string& path) {
  struct stat opened = {};
  struct stat there = {};
  return ::fstat(file, &opened) == 0 && ::lstat(path.c_str(), &there) == 0 &&
         opened.st_dev == there.st_dev && opened.st_ino == there.st_ino;
}

/// Files are made without any permission in its scope.
class NoPermission {
public:
  NoPermission() noexcept : before_(::umask(0777)) {}
  NoPermission(const NoPermission&) = delete;
  NoPermission& operator=(const NoPermission&) = delete;
  ~NoPermission() { ::umask(before_); }

private:
  const mode_t before_;
};

} // namespace

gid_t groupId(const std::string& name) {
  if (const ::group* const found = ::getgrnam(name.c_str())) {
    return found->gr_gid;
  }
  try {
    std::size_t end = 0;
    const unsigned long number = std::stoul(name, &end);
    if (end == name.size() && name.front() != '-' && number < static_cast<gid_t>(-1)) {
      return static_cast<gid_t>(number);
    }
  } catch (const std::logic_error&) { // no number
  }
  throw ServerError("no group " + name);
}

SocketFile::SocketFile(std::string path, const SocketAccess& access)
    : path_(std::move(path)), lockPath_(path_ + ".lock"), access_(access) {
  lock();
  try {
    staleDel();
  } catch (...) {
    ::unlink(lockPath_.c_str());
    ::close(lock_);
    throw;
  }
}

SocketFile::~SocketFile() {
  if (isBound_) {
    ::unlink(path_.c_str());
  }
  ::unlink(lockPath_.c_str()); // still locked: who waits for it finds another file there
  ::close(lock_);
}

void SocketFile::lock() {
  for (;;) {
    lock_ = ::open(lockPath_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lock_ < 0 && errno == ENOENT) {
      throw ServerError("no directory " + std::filesystem::path(path_).parent_path().string() +
                        " for the socket " + path_ + ": make it, or take another path");
    }
    if (lock_ < 0) {
      fail("cannot make " + lockPath_, errno);
    }
    if (::flock(lock_, LOCK_EX | LOCK_NB) != 0) {
      const int number = errno;
      ::close(lock_);
      if (number == EWOULDBLOCK) {
        throw ServerInUse("a server is running at " + path_);
      }
      fail("cannot lock " + lockPath_, number);
    }
    // The server that had it may have removed the file since it was opened.
    if (isSameFile(lock_, lockPath_)) {
      return;
    }
    ::close(lock_);
  }
}

void SocketFile::staleDel() const {
  struct stat there = {};
  if (::lstat(path_.c_str(), &there) != 0) {
    if (errno == ENOENT) {
      return;
    }
    fail("cannot look at " + path_, errno);
  }
  if (!S_ISSOCK(there.st_mode)) {
    throw ServerError("what is at " + path_ + " is no socket: remove it, or take another path");
  }
  if (::unlink(path_.c_str()) != 0) {
    fail("cannot replace " + path_, errno);
  }
}

void SocketFile::listen(Protocol::acceptor& acceptor) {
  asio::error_code failed;
  acceptor.open(Protocol(), failed);
  if (!failed) {
    try {
      const NoPermission scope;
      acceptor.bind(Protocol::endpoint(path_), failed);
    } catch (const std::system_error& tooLong) { // of the endpoint
      failed = tooLong.code();
    }
  }
  if (failed) {
    throw ServerError("cannot listen at " + path_ + ": " + failed.message());
  }
  isBound_ = true;
  if (access_.group != static_cast<gid_t>(-1) &&
      ::lchown(path_.c_str(), static_cast<uid_t>(-1), access_.group) != 0) {
    fail("cannot give " + path_ + " to group " + std::to_string(access_.group), errno);
  }
  if (::chmod(path_.c_str(), access_.mode) != 0) {
    fail("cannot set the mode of " + path_, errno);
  }
  acceptor.listen(Protocol::acceptor::max_listen_connections, failed); // from here on, they come
  if (failed) {
    throw ServerError("cannot listen at " + path_ + ": " + failed.message());
  }
}

} // namespace Net
