#pragma once

#include "LocalDevice.h"

#include <asio/signal_set.hpp>
#include <net/Server.h>

#include <optional>
#include <string>

namespace Maintctl {

/// The tree of a device and who is connected to it: what `serve` is while it runs.
class Service {
public:
  struct Settings {
    Net::ServerOptions server;
    std::string load; ///< what the tree is at first, as `loadFile` takes it; may be empty
    bool readOnly = false;
  };

  /// Loads the file and listens. Throws `Failure` and `Net::ServerError`.
  explicit Service(Settings settings);
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  ~Service() = default;

  /// Returns when a signal has ended it and all clients have been told, or have not read in time.
  void run();

private:
  void signalNext();
  void signalled(int number);
  void reload();
  Zel::Ptr<Zel::Exports> exports() const;

  const Settings settings_;
  const bool hasTerminal_;
  LocalDevice device_;
  // References that a client writes resolve in the tree.
  const Zel::Dir::Active references_;
  asio::io_context io_;
  asio::signal_set signals_;
  Net::Turns turns_;
  std::optional<Net::Server> server_;
  bool isEnding_ = false;
};

} // namespace Maintctl
