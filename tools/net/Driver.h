#pragma once

#include <Zel/Session>

#include <asio/local/stream_protocol.hpp>
#include <asio/steady_timer.hpp>

#include <functional>
#include <memory>

namespace Net {

class Turns;

/// Ties a session to a socket. It reads and writes without waiting, straight from and to the rings
/// of the connection, and has Asio tell it when the socket can be read or written again: what is in
/// the rings may move while a write in the background would look at it.
class Driver : public std::enable_shared_from_this<Driver> {
public:
  using Socket = asio::local::stream_protocol::socket;
  /// Told once, when the session has ended; `Session::failure` says why.
  using Ended = std::function<void(const Zel::Ptr<Zel::Session>&)>;

  /// Takes a connected socket. The driver lives as long as the session is up.
  static std::shared_ptr<Driver> start(Turns& turns, Socket socket, Zel::Ptr<Zel::Session> session,
                                       Ended ended);
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;
  ~Driver() = default;

  const Zel::Ptr<Zel::Session>& session() const noexcept { return session_; }
  /// Writes what the socket takes at once and ends the session, telling the peer why. `ended` is
  /// called before this returns, unless it has been. With `patience`, in seconds, a peer whose
  /// socket is full is waited for that long at most, in the background, and `ended` called then;
  /// another `close` without any cuts that short.
  void close(const Zel::String8& why, double patience = 0);

private:
  friend class Turns;

  Driver(Turns& turns, Socket socket, Zel::Ptr<Zel::Session> session, Ended ended);

  bool take(double now);
  bool give(double now);
  void readIn();
  bool writeOut(std::size_t& sent);
  void lose(const asio::error_code& why);
  void waitRead();
  void waitWrite();
  bool lastWords();
  void lastWordsLater();
  void finish(double patience = 0);
  void gone();
  void turnsGone();

  Turns* turns_; // null once they are gone
  Socket socket_;
  const Zel::Ptr<Zel::Session> session_;
  Ended ended_;
  bool mayRead_ = true; // as far as is known
  bool mayWrite_ = true;
  bool isAtEnd_ = false;    // nothing more will come
  bool isFinished_ = false; // the session has ended, but for the peer's hearing of it
  bool isGone_ = false;
  std::size_t told_ = 0; // of the last words
  asio::steady_timer patience_;
  Zel::String8 why_; // nothing more can be written; empty while it can
};

} // namespace Net
