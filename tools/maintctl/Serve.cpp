#include "CommandList.h"
#include "Service.h"

#include <chrono>
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
    Service::Settings settings;
    settings.load = load_;
    settings.readOnly = readOnly_;
    Net::ServerOptions& options = settings.server;
    options.path = context.options().socket;
    options.access.mode = modeOf(mode_);
    options.maxClients = maxClients_;
    options.session.name = "maintctl serve";
    options.log = logUpTo(levelOf(logLevel_));
    try {
      if (!group_.empty()) {
        options.access.group = Net::groupId(group_);
      }
      Service(std::move(settings)).run();
    } catch (const Net::ServerError& failure) {
      throw Failure(exitFailed, failure.what());
    }
    return exitDone;
  }

private:
  std::string mode_ = "600";
  std::string group_;
  std::string load_;
  std::string logLevel_ = "info";
  std::size_t maxClients_ = 64;
  bool readOnly_ = false;
};

} // namespace

CommandEntry serveCommand() {
  return {
      "serve",
      "Hold the state of a device and serve it at a socket",
      "  maintctl serve\n"
      "  maintctl serve --load state.txt --mode 660 --group netops\n"
      "\nIt ends on Ctrl-C and on SIGTERM, tells its clients and removes the socket. On SIGHUP,\n"
      "unless it was started from a terminal, it loads its file again. What happens is told\n"
      "on standard error.",
      make<Serve>,
      false,
      true,
      DefaultTree::served};
}

} // namespace Maintctl
