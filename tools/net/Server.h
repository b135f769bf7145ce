#pragma once

#include "Alive.h"
#include "Driver.h"
#include "Log.h"
#include "Peer.h"
#include "SocketFile.h"
#include "Turns.h"

#include <map>

namespace Net {

struct ServerOptions {
  std::string path;
  SocketAccess access;
  /// More are turned away, and told so. The last place is for root and the user of this process
  /// alone, so that who runs the server gets in where all others have filled it.
  std::size_t maxClients = 64;
  /// Of each client's session; its `log` is not used.
  Zel::SessionOptions session;
  Log log;
};

/// Offers a program's roots to all who connect to a Unix socket, each with a session of its own.
///
///     asio::io_context io;
///     Net::Turns turns(io);
///     Net::Server server(turns, options, exports);
///     io.run();
class Server {
public:
  /// Clients can connect from here on. Throws `ServerError`.
  Server(Turns& turns, ServerOptions options, Zel::Ptr<Zel::Exports> exports);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  /// Ends the sessions and removes the socket.
  ~Server();

  std::size_t clients() const noexcept { return clients_.size(); }

  /// Lets nobody in any more and tells all who are there that the server ends. Those that do not
  /// read are waited for `patience` seconds at most. When there is nobody to wait for any more,
  /// within this call or later, `ended` is called, and the object can go.
  void end(double patience, std::function<void()> ended);

private:
  using Socket = Driver::Socket;

  void accept();
  void clientIs(Socket socket);
  void endedIf();
  static void turnAway(Socket& socket, Zel::Session::Ending ending, const std::string& why);
  void log(Level level, const std::string& line) const;

  Turns& turns_;
  const ServerOptions options_;
  const Zel::Ptr<Zel::Exports> exports_;
  SocketFile file_;
  SocketFile::Protocol::acceptor acceptor_;
  asio::steady_timer retry_;
  std::uint64_t lastClient_ = 0;
  std::map<std::uint64_t, std::shared_ptr<Driver>> clients_;
  bool isAccepting_ = false;
  bool isEnding_ = false;
  std::function<void()> whenEnded_;
  const Alive alive_;
};

} // namespace Net
