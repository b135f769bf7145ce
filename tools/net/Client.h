#pragma once

#include "Alive.h"
#include "Driver.h"
#include "Log.h"
#include "Turns.h"

#include <Zel/Backoff>

#include <random>
#include <system_error>

namespace Net {

struct ClientOptions {
  std::string path;
  bool reconnects = true;
  Zel::Backoff::Times backoff;
  std::uint64_t seed = std::random_device()(); ///< of the back-off's jitter
  /// Its `log` is not used.
  Zel::SessionOptions session;
  Log log;
};

/// Mirrors roots of a server at a Unix socket, over as many connections as it takes. The mounts say
/// how each root stands.
class Client {
public:
  /// Tries to connect at once, within `start`.
  Client(Turns& turns, ClientOptions options, Zel::Ptr<Zel::Mounts> mounts);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client();

  /// Whether there is a connection now. Without one, and unless it is to reconnect, nothing more
  /// happens.
  bool start();

  /// The session of now; null between two.
  const Zel::Ptr<Zel::Session>& session() const noexcept { return session_; }
  /// Why the last try to connect failed; none if it did not.
  const std::error_code& refusal() const noexcept { return refusal_; }
  /// Why the last session ended; empty if there was none.
  const Zel::String8& failure() const noexcept { return failure_; }
  /// What its peer had said; nothing if there was none.
  const Zel::Session::Peer& formerPeer() const noexcept { return formerPeer_; }

private:
  void ended(const Zel::Ptr<Zel::Session>& session);
  void retry();
  void log(Level level, const std::string& line) const;

  Turns& turns_;
  const ClientOptions options_;
  const Zel::Ptr<Zel::Mounts> mounts_;
  Zel::Backoff backoff_;
  asio::steady_timer timer_;
  std::shared_ptr<Driver> driver_;
  Zel::Ptr<Zel::Session> session_;
  std::error_code refusal_;
  Zel::String8 failure_;
  Zel::Session::Peer formerPeer_;
  const Alive alive_;
};

} // namespace Net
