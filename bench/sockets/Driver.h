#pragma once

#include "sockets/Processes.h"

#include <Zel/Session>
#include <model/Profile.h>
#include <model/Unit.h>

#include <memory>
#include <vector>

namespace Bench::Sockets {

/// A session over a socket, driven in the plainest way: it waits where there is nothing to do.
class Driver {
public:
  /// Rings of 256 KiB, as all limits are.
  Driver(int socket, Zel::Connection::End end, Zel::Ptr<Zel::Exports> exports,
         Zel::Ptr<Zel::Mounts> mounts);
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;

  const Zel::Session& session() const noexcept { return *session_; }
  Zel::Connection& connection() const noexcept { return *connection_; }

  /// Does what can be done without the peer.
  void service();
  /// Services, and writes all that waits then; blocks while the socket is full.
  void flush();
  /// The same, as far as the socket has room.
  void flushSome();
  /// Waits for bytes, not more than `most`, and services.
  void receive(std::size_t most = ~std::size_t{0});
  /// Bytes that have come in so far.
  std::uint64_t received() const noexcept { return received_; }
  /// How much waits to be written.
  std::size_t pending() const noexcept {
    const Zel::NboAttrLog::Out& out = *connection_->out();
    return out.capacity() - out.freeSpace();
  }

private:
  const int socket_;
  std::uint64_t received_ = 0;
  const Zel::Ptr<Zel::Session> session_;
  const Zel::Ptr<Zel::Connection> connection_;
};

/// The end that has the originals.
class Exporter {
public:
  /// Serves `root` until the peer has been sent all of it.
  Exporter(int socket, const Zel::Ptr<Zel::Exports>& exports, const char* root);

  Driver driver;
  /// What the adapters of the root share.
  Zel::Ptr<Zel::NboAttrLog::Root> root;
};

/// The end that has the mirror.
class Mirror {
public:
  Mirror(int socket, const char* root, Zel::Access access = Zel::accessReadOnly);
  /// Waits until the mount is live.
  void settle();

private:
  const Zel::Ptr<Zel::Mounts> mounts_;

public:
  Driver driver;
  const Zel::Ptr<Zel::Mount> mount;
};

/// Ten thousand units, and the changes of them that are measured: of one number each, in turn an
/// `unsigned` and a `double`, of one unit after the other in a scattered order.
class Units {
public:
  static constexpr std::size_t count = 10'000;

  /// The units of a directory, which holds them all.
  explicit Units(const Zel::Ptr<Maintenance::Unit::StatusDir>& dir);
  static Zel::Ptr<Maintenance::Unit::StatusDir> made();

  Maintenance::Unit::Status& at(std::size_t place) const { return *units_[place]; }
  const std::vector<Zel::Ptr<Maintenance::Unit::Status>>& all() const noexcept { return units_; }

  /// Makes each round's changes; `then` is called after every one.
  template <class Then>
  void change(std::size_t rounds, const Then& then) const {
    unsigned value = 0;
    for (std::size_t round = 0; round < rounds; ++round) {
      for (std::size_t place = 0; place < count; ++place) {
        Maintenance::Unit::Status& unit = *units_[place];
        ++value;
        if ((round + place) % 2 == 0) {
          unit.genIdIs(value);
        } else {
          unit.timeOfStateChangeIs(value);
        }
        then();
      }
    }
  }
  /// Whether the units are as `rounds`, two or more, leave them.
  bool areChanged(std::size_t rounds) const;

private:
  std::vector<Zel::Ptr<Maintenance::Unit::Status>> units_; // in the order of the changes
};

/// A name of 20 bytes.
Zel::String8 name(std::size_t number);

} // namespace Bench::Sockets
