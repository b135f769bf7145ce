#include "Client.h"

#include <cerrno>
#include <chrono>
#include <cstdio>

#include <sys/socket.h>

namespace Net {

namespace {

/// Connects without waiting. Asio's own would take a server whose queue is full, which cannot be
/// waited for, for one that has answered.
std::error_code connect(Driver::Socket& socket, const std::string& path) {
  try {
    const Driver::Socket::endpoint_type endpoint(path);
    socket.open();
    socket.non_blocking(true);
    if (::connect(socket.native_handle(), endpoint.data(),
                  static_cast<socklen_t>(endpoint.size())) != 0) {
      return {errno, std::system_category()};
    }
    return {};
  } catch (const std::system_error& failure) { // a path that is too long, no descriptor
    return failure.code();
  }
}

} // namespace

Client::Client(Turns& turns, ClientOptions options, Zel::Ptr<Zel::Mounts> mounts)
    : turns_(turns), options_(std::move(options)), mounts_(std::move(mounts)),
      backoff_(options_.seed, options_.backoff), timer_(turns.io()) {}

Client::~Client() {
  if (const std::shared_ptr<Driver> driver = driver_) {
    driver_ = nullptr; // so that its end begins nothing new
    driver->close("closed");
  }
}

void Client::log(Level level, const std::string& line) const {
  if (options_.log) {
    options_.log(level, line);
  }
}

bool Client::start() {
  Driver::Socket socket(turns_.io());
  refusal_ = connect(socket, options_.path);
  if (refusal_) {
    retry();
    return false;
  }
  Zel::SessionOptions session = options_.session;
  session.log = [log = options_.log](Level level, const Zel::String8& line) {
    if (log) {
      log(level, printable(line.view()));
    }
  };
  session_ = Zel::makeObject<Zel::Session>(Zel::Connection::End::first, std::move(session), nullptr,
                                           mounts_);
  driver_ =
      Driver::start(turns_, std::move(socket), session_, [this](const auto& over) { ended(over); });
  return true;
}

void Client::ended(const Zel::Ptr<Zel::Session>& session) {
  session_ = nullptr;
  if (driver_ == nullptr) {
    return; // this is going
  }
  driver_ = nullptr;
  failure_ = session->failure();
  formerPeer_ = session->peer();
  if (session->isOpen()) {
    backoff_.reset();
  }
  retry();
}

void Client::retry() {
  if (!options_.reconnects) {
    return;
  }
  const double wait = backoff_.next();
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%.1f", wait);
  log(refusal_ ? Level::warning : Level::info,
      (refusal_ ? "cannot connect to " + printable(options_.path) + ": " + refusal_.message() + ", "
                : std::string()) +
          "next try in " + seconds + " s");
  timer_.expires_after(
      std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::duration<double>(wait)));
  timer_.async_wait([this, alive = alive_.watch()](const asio::error_code& ended) {
    if (!ended && !alive.expired()) {
      start();
    }
  });
}

} // namespace Net
