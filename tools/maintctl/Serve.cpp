#include "CommandList.h"
#include "Load.h"
#include "LocalDevice.h"

#include <asio/signal_set.hpp>
#include <net/Server.h>

#include <chrono>
#include <csignal>
#include <iostream>

namespace Maintctl {

namespace {

/// The log of the server, up to a level.
Net::Log logUpTo(Net::Level most) {
  return [most](Net::Level level, const std::string& line) {
    if (level <= most) {
      // In one piece, as others may write to the same file.
      std::cerr << Net::timeText(std::chrono::system_clock::now()) + ' ' + Net::levelName(level) +
                       ' ' + line + '\n';
      std::cerr.flush();
    }
  };
}

Net::Level levelOf(const std::string& text) {
  if (const std::optional<Net::Level> level = Net::levelOf(text)) {
    return *level;
  }
  throw Failure(exitUsage, "no level of a log: " + Net::printable(text) +
                               ", it is one of error, warning, info and debug");
}

/// Three or four octal digits.
unsigned modeOf(const std::string& text) {
  std::size_t end = 0;
  unsigned long mode = 01000;
  try {
    mode = std::stoul(text, &end, 8);
  } catch (const std::logic_error&) { // said below
  }
  if (end != text.size() || mode > 0777) {
    throw Failure(exitUsage, "no mode of a file: " + Net::printable(text) + ", such as 660");
  }
  return static_cast<unsigned>(mode);
}

class Serve : public Command {
public:
  void declare(Parameters& parameters) override {
    parameters.option("mode", "OCTAL", mode_, "Mode of the socket: who may connect");
    parameters.option("group", "NAME", group_,
                      "Group of the socket, whose members a mode such as 660 lets in");
    parameters.option("load", "FILE", load_,
                      "What dump has written, loaded before anybody can connect");
    parameters.option("max-clients", "NUMBER", maxClients_, "How many may be connected at a time");
    parameters.option("log-level", "LEVEL", logLevel_,
                      "What to tell of: error, warning, info or debug");
    parameters.flag("read-only", readOnly_, "Let no client write");
  }

  int run(Context& context) override {
    Net::ServerOptions options;
    options.path = context.options().socket;
    options.access.mode = modeOf(mode_);
    options.maxClients = maxClients_;
    options.session.name = "maintctl serve";
    options.log = logUpTo(levelOf(logLevel_));
    try {
      if (!group_.empty()) {
        options.access.group = Net::groupId(group_);
      }
      serve(std::move(options));
    } catch (const Net::ServerError& failure) {
      throw Failure(exitFailed, failure.what());
    }
    return exitDone;
  }

private:
  void serve(Net::ServerOptions options) const {
    LocalDevice device;
    if (!load_.empty()) {
      const Zel::Dir::Active references(device.dir());
      loadFile(device, load_);
    }
    const auto exports = Zel::makeObject<Zel::Exports>();
    for (const auto& [name, root] : device.dir()->entities()) {
      exports->entityIs(root, readOnly_ ? Zel::accessReadOnly : Zel::accessReadWrite);
    }
    const Net::Log log = options.log;
    asio::io_context io;
    asio::signal_set signals(io, SIGINT, SIGTERM);
    signals.async_wait([&](const asio::error_code& ended, int number) {
      if (!ended) {
        log(Net::Level::info, number == SIGINT ? "stopped by Ctrl-C" : "stopped by SIGTERM");
        io.stop();
      }
    });
    Net::Turns turns(io);
    const std::string path = options.path;
    const Net::Server server(turns, std::move(options), exports);
    log(Net::Level::info, "listening at " + path);
    // References that a client writes resolve in the tree.
    const Zel::Dir::Active references(device.dir());
    io.run();
  }

  std::string mode_ = "600";
  std::string group_;
  std::string load_;
  std::string logLevel_ = "info";
  std::size_t maxClients_ = 64;
  bool readOnly_ = false;
};

} // namespace

CommandEntry serveCommand() {
  return {"serve",
          "Hold the state of a device and serve it at a socket",
          "  maintctl serve\n"
          "  maintctl serve --load state.txt --mode 660 --group netops\n"
          "\nIt ends on Ctrl-C and on SIGTERM, and removes the socket. What happens is told on\n"
          "standard error.",
          make<Serve>,
          false,
          true,
          DefaultTree::served};
}

} // namespace Maintctl
