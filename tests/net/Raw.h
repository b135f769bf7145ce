#pragma once

#include "Place.h"

#include <Zel/Session>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace TestNet {

/// A connection that this process holds by hand.
class Raw {
public:
  explicit Raw(const std::string& path)
      : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    isUp_ = ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }
  Raw(const Raw&) = delete;
  Raw& operator=(const Raw&) = delete;
  ~Raw() { ::close(socket_); }

  bool isUp() const noexcept { return isUp_; }
  bool write(const std::string& bytes) const {
    return ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(bytes.size());
  }
  /// The first that comes; empty if the other end closes.
  std::string first() const {
    char bytes[4096];
    return {bytes,
            static_cast<std::size_t>(std::max<ssize_t>(0, ::read(socket_, bytes, sizeof bytes)))};
  }
  /// Reads until a text has come; false if the other end closes before.
  bool hears(const std::string& text) const {
    std::string all;
    while (all.find(text) == std::string::npos) {
      const std::string more = first();
      if (more.empty()) {
        return false;
      }
      all += more;
    }
    return true;
  }
  /// All that comes until the other end closes.
  std::string rest() const {
    std::string all;
    char bytes[4096];
    for (ssize_t count = 0; (count = ::read(socket_, bytes, sizeof bytes)) > 0;) {
      all.append(bytes, static_cast<std::size_t>(count));
    }
    return all;
  }

private:
  const int socket_;
  bool isUp_ = false;
};

/// What an end says first, a client here.
inline std::string hello(Zel::Connection::End end = Zel::Connection::End::first) {
  Zel::SessionOptions options;
  options.name = "by hand";
  const auto session = Zel::makeObject<Zel::Session>(end, options, nullptr, nullptr);
  const auto bytes = session->connection()->pendingOutput();
  return {bytes.begin(), bytes.end()};
}

/// The same, of another version.
inline std::string helloOf(char other, Zel::Connection::End end) {
  const std::string version("Main\0\0\0\2", 8);
  std::string bytes = hello(end);
  const std::size_t at = bytes.find(version);
  EXPECT_NE(at, std::string::npos);
  bytes[at + 7] = other;
  return bytes;
}

} // namespace TestNet
