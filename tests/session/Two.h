#pragma once

#include <Zel/Session>

#include <cstring>

/// Two programs that talk to each other over sessions: `server` exports, `client` mounts.
class Two {
public:
  using Session = Zel::Session;

  Two() { connect(); }

  /// A new session, with new connections.
  void connect(Zel::SessionOptions clients = {}) {
    clients.name = clients.name.empty() ? Zel::String8("client") : clients.name;
    Zel::SessionOptions servers;
    servers.name = "server";
    server = Zel::makeObject<Session>(Zel::Connection::End::second, servers, exports, nullptr);
    client = Zel::makeObject<Session>(Zel::Connection::End::first, clients, nullptr, mounts);
  }

  /// Moves up to `most` bytes from one end to the other; yields how many.
  static std::size_t move(const Session& from, const Session& to,
                          std::size_t most = ~std::size_t{0}) {
    const auto bytes = from.connection()->pendingOutput();
    const auto space = to.connection()->inputSpace();
    const std::size_t count = std::min({bytes.size(), space.size(), most});
    if (count != 0) {
      std::memcpy(space.data(), bytes.data(), count);
      from.connection()->outputConsumed(count);
      to.connection()->inputReceived(count);
    }
    return count;
  }

  /// Lets both ends do what they can, until nothing happens any more.
  void settle() {
    for (bool more = true; more;) {
      more = server->service(now);
      more = client->service(now) || more;
      more = move(*server, *client) != 0 || more;
      more = move(*client, *server) != 0 || more;
    }
  }

  /// The connection breaks, and both ends hear of it.
  void cut() {
    server->close(now, "cut");
    client->close(now, "cut");
  }

  double now = 100;
  const Zel::Ptr<Zel::Exports> exports = Zel::makeObject<Zel::Exports>();
  const Zel::Ptr<Zel::Dir> dir = Zel::makeObject<Zel::Dir>();
  const Zel::Ptr<Zel::Mounts> mounts = Zel::makeObject<Zel::Mounts>(dir);
  Zel::Ptr<Session> server;
  Zel::Ptr<Session> client;
};
