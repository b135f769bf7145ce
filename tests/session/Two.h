#pragma once

#include "attrlog/Log.h"

#include <Zel/Session>
#include <Zel/StateDigest>
#include <model/Unit/StatusDir.h>

#include <cstring>
#include <functional>

/// Two programs that talk to each other over sessions: `server` exports, `client` mounts.
class Two {
public:
  using Session = Zel::Session;

  Two() { connect(); }

  static Zel::ConnectionLimits smallest() {
    return Wiretap::rings(Zel::ConnectionLimits::smallestRing);
  }

  /// A new session, with new connections.
  void connect(Zel::SessionOptions clients = {}, Zel::SessionOptions servers = {}) {
    clients.name = clients.name.empty() ? Zel::String8("client") : clients.name;
    servers.name = servers.name.empty() ? Zel::String8("server") : servers.name;
    if (client) {
      cut("connected anew");
    }
    server = Zel::makeObject<Session>(Zel::Connection::End::second, servers, exports, nullptr);
    client = Zel::makeObject<Session>(Zel::Connection::End::first, clients, nullptr, mounts);
  }
  /// The same with rings as small as they may be.
  void connectTightly() {
    Zel::SessionOptions options;
    options.limits = smallest();
    connect(options, options);
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

  /// Gives an end time until it has nothing to do.
  void serve(Session& session) const {
    while (session.service(now)) {
    }
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

  /// The same with all that the client is sent, a record after the other; `visit` stands between
  /// them.
  template <class Visit>
  void settleSlowly(const Visit& visit) {
    for (bool more = true; more;) {
      serve(*server);
      more = false;
      while (const std::size_t size = firstRecord(*server)) {
        for (std::size_t left = size; left != 0;) {
          left -= move(*server, *client, left);
        }
        serve(*client);
        more = true;
        visit();
      }
      more = move(*client, *server) != 0 || more;
    }
  }

  /// Size of the record that waits first; 0 if none waits.
  static std::size_t firstRecord(const Session& from) {
    const auto bytes = from.connection()->pendingOutput();
    if (bytes.empty()) {
      return 0;
    }
    if (bytes.size() < sizeof(std::uint32_t)) {
      return bytes.size(); // its length goes round the end of the ring
    }
    return Wiretap::number({reinterpret_cast<const char*>(bytes.data()), bytes.size()}) &
           ~Zel::NboAttrLog::chunkFollowsBit;
  }

  /// The connection breaks, and both ends hear of it.
  void cut(const char* why = "cut") {
    server->close(now, why);
    client->close(now, why);
  }

  double now = 100;
  const Zel::Ptr<Zel::Exports> exports = Zel::makeObject<Zel::Exports>();
  const Zel::Ptr<Zel::Dir> dir = Zel::makeObject<Zel::Dir>();
  const Zel::Ptr<Zel::Mounts> mounts = Zel::makeObject<Zel::Mounts>(dir);
  Zel::Ptr<Session> server;
  Zel::Ptr<Session> client;
};

/// The same with a directory of units that the server has.
class TwoUnits : public Two {
public:
  using Status = Maintenance::Unit::Status;
  using StatusDir = Maintenance::Unit::StatusDir;

  /// Exports the units and mounts them.
  Zel::Ptr<Zel::Mount> share(Zel::Access access = Zel::accessReadOnly) {
    exports->entityIs(units, access);
    return mounts->mountIs("units", access);
  }
  /// Makes this many units, each with a name of a profile of that length.
  void fillUnits(unsigned count, unsigned length) const {
    for (unsigned i = 0; i < count; ++i) {
      units->statusIs(Zel::Name(std::to_string(i)))
          ->profileNameIs(Zel::String8(std::string(length, 'p')));
    }
  }

  Zel::Ptr<Zel::Mount> mount() const { return mounts->mount("units"); }
  Zel::Ptr<StatusDir> mirror() const { return Zel::ptrCast<StatusDir>(mount()->entity()); }
  Zel::Ptr<Status> mirror(const char* unit) const { return mirror()->status(unit); }
  /// Whether the mirror holds what the server does.
  bool isEqual() const { return Zel::stateDigest(*units) == Zel::stateDigest(*mirror()); }

  const Zel::Ptr<StatusDir> units = Maintenance::Unit::statusDirFactory("units");
};

/// Writes down what it hears of a mount: "live at 100", "stale at 200: cut", "entity".
class MountEar : public Zel::Mount::Notifiee {
public:
  void onState() override {
    const auto* const mount = static_cast<const Zel::Mount*>(rawNotifier());
    heard.push_back(std::string(Zel::Mount::stateName(mount->state())) + " at " +
                    std::to_string(static_cast<int>(mount->since())) +
                    (mount->reason().empty() ? "" : ": " + std::string(mount->reason().view())));
    if (onHeard) {
      onHeard(heard.back());
    }
  }
  void onEntity() override {
    heard.emplace_back("entity");
    if (onHeard) {
      onHeard(heard.back());
    }
  }
  void onWritable() override {
    const auto* const mount = static_cast<const Zel::Mount*>(rawNotifier());
    heard.emplace_back(mount->isWritable() ? "writable" : "frozen");
    if (onHeard) {
      onHeard(heard.back());
    }
  }
  void onDropped() override {
    const auto* const mount = static_cast<const Zel::Mount*>(rawNotifier());
    heard.push_back("dropped " + std::to_string(mount->dropped()));
    if (onHeard) {
      onHeard(heard.back());
    }
  }
  /// What it has heard, forgotten.
  std::vector<std::string> taken() { return std::exchange(heard, {}); }

  std::vector<std::string> heard;
  std::function<void(const std::string&)> onHeard;
};
