#include "Service.h"

#include "Guard.h"
#include "Load.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace Maintctl {

namespace {

/// Seconds that clients have to read that the server ends.
constexpr double patience = 2;

/// Whether this process hears, by SIGHUP, that somebody's terminal has gone.
bool isOfTerminal() {
  const int terminal = ::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (terminal >= 0) {
    ::close(terminal);
  }
  return terminal >= 0;
}

/// As `nohup` leaves it.
bool isIgnored(int number) {
  struct sigaction action = {};
  return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

const char* signalName(int number) {
  return number == SIGINT ? "Ctrl-C" : number == SIGTERM ? "SIGTERM" : "SIGHUP";
}

} // namespace

Service::Service(Settings settings)
    : settings_(std::move(settings)), hasTerminal_(isOfTerminal()), references_(device_.dir()),
      signals_(io_), turns_(io_) {
  if (!settings_.load.empty()) {
    loadFile(device_, settings_.load); // which a signal may still cut short
  }
  signals_.add(SIGINT);
  signals_.add(SIGTERM);
  if (!isIgnored(SIGHUP)) {
    signals_.add(SIGHUP);
  }
  server_.emplace(turns_, settings_.server, exports());
}

Zel::Ptr<Zel::Exports> Service::exports() const {
  auto exports = Zel::makeObject<Zel::Exports>();
  for (const auto& [name, root] : device_.dir()->entities()) {
    exports->entityIs(root, settings_.readOnly ? Zel::accessReadOnly : Zel::accessReadWrite);
  }
  return exports;
}

void Service::run() {
  settings_.server.log(Net::Level::info, "listening at " + settings_.server.path);
  signalNext();
  io_.run();
}

void Service::signalNext() {
  signals_.async_wait([this](const asio::error_code& ended, int number) {
    if (!ended) {
      signalled(number);
      signalNext();
    }
  });
}

void Service::signalled(int number) {
  if (isEnding_) {
    if (number != SIGHUP) { // which comes from the terminal and from its shell
      io_.stop();           // somebody cannot wait
    }
  } else if (number == SIGHUP && !hasTerminal_) {
    reload();
  } else {
    isEnding_ = true;
    settings_.server.log(Net::Level::info, std::string("stopped by ") + signalName(number));
    server_->end(patience, [this] { io_.stop(); });
  }
}

/// Reads its files again. What is wrong with one is told, and changes nothing.
void Service::reload() {
  const Net::Log& log = settings_.server.log;
  if (settings_.load.empty() || settings_.load == "-") {
    log(Net::Level::warning, "SIGHUP: there is no file to load again");
    return;
  }
  try {
    const std::size_t lines = loadAllOrNothing(device_, settings_.load);
    log(Net::Level::info, "SIGHUP: loaded " + Net::printable(settings_.load) + " again, " +
                              std::to_string(lines) + (lines == 1 ? " line" : " lines"));
  } catch (...) {
    log(Net::Level::error, std::string("SIGHUP: ") + currentFailure().what());
  }
  turns_.soon();
}

} // namespace Maintctl
