#include "Server.h"

#include <chrono>

namespace Net {

namespace {

using Protocol = SocketFile::Protocol;

constexpr const char* serverEnds = "the server ends";

} // namespace

Server::Server(Turns& turns, ServerOptions options, Zel::Ptr<Zel::Exports> exports)
    : turns_(turns), options_(std::move(options)), exports_(std::move(exports)),
      file_(options_.path, options_.access), acceptor_(turns.io()), retry_(turns.io()) {
  file_.listen(acceptor_);
  accept();
}

Server::~Server() {
  whenEnded_ = nullptr;
  asio::error_code ignored;
  acceptor_.close(ignored);
  for (const auto& [number, driver] : std::map(clients_)) {
    driver->close(serverEnds);
  }
}

void Server::end(double patience, std::function<void()> ended) {
  isEnding_ = true;
  // Those that are in the queue believe to be connected.
  asio::error_code failed;
  acceptor_.non_blocking(true, failed);
  for (int count = 0; !failed && count < Protocol::acceptor::max_listen_connections; ++count) {
    Socket socket = acceptor_.accept(failed);
    if (!failed) {
      clientIs(std::move(socket));
    }
  }
  acceptor_.close(failed);
  retry_.cancel();
  for (const auto& [number, driver] : std::map(clients_)) {
    driver->close(serverEnds, patience);
  }
  whenEnded_ = std::move(ended);
  endedIf();
}

/// A client may have been accepted of which the handler has not heard yet.
void Server::endedIf() {
  if (whenEnded_ && clients_.empty() && !isAccepting_) {
    std::exchange(whenEnded_, nullptr)();
  }
}

void Server::log(Level level, const std::string& line) const {
  if (options_.log) {
    options_.log(level, line);
  }
}

void Server::accept() {
  isAccepting_ = true;
  acceptor_.async_accept(
      [this, alive = alive_.watch()](const asio::error_code& failed, Socket socket) {
        if (alive.expired()) {
          return;
        }
        isAccepting_ = false;
        if (!failed) {
          clientIs(std::move(socket));
        }
        if (isEnding_) {
          endedIf();
          return;
        }
        if (!failed) {
          accept();
          return;
        }
        // No file descriptor, or no memory: the client stays in the queue, and would at once be
        // tried again for ever.
        log(Level::error, "cannot accept a client: " + failed.message());
        retry_.expires_after(std::chrono::seconds(1));
        retry_.async_wait([this, alive](const asio::error_code& ended) {
          if (!ended && !alive.expired()) {
            accept();
          }
        });
      });
}

void Server::clientIs(Socket socket) {
  const std::uint64_t number = ++lastClient_;
  std::string name = "client " + std::to_string(number);
  try {
    const Peer peer = Peer::of(socket.native_handle());
    name += ", " + peer.text();
    if (!peer.mayConnect(options_.access)) {
      log(Level::warning, name + ": turned away: may not connect");
      turnAway(socket, Zel::Session::endingRefused, peer.text() + " may not connect");
      return;
    }
    if (isEnding_) {
      log(Level::info, name + ": turned away: " + serverEnds);
      turnAway(socket, Zel::Session::endingOver, serverEnds);
      return;
    }
    const bool isLast = clients_.size() + 1 == options_.maxClients;
    if (clients_.size() >= options_.maxClients || (isLast && !peer.isOwner())) {
      const std::string full =
          isLast ? "the last place is kept for root and the server's user"
          : clients_.size() == 1
              ? "there is one client already"
              : "there are " + std::to_string(clients_.size()) + " clients already";
      log(Level::warning, name + ": turned away: " + full);
      turnAway(socket, Zel::Session::endingBusy, full);
      return;
    }
    log(Level::debug, name + ": connected");
    Zel::SessionOptions session = options_.session;
    session.log = [log = options_.log, name](Level level, const Zel::String8& line) {
      if (log) {
        log(level, name + ": " + printable(line.view()));
      }
    };
    clients_.emplace(
        number, Driver::start(turns_, std::move(socket),
                              Zel::makeObject<Zel::Session>(Zel::Connection::End::second,
                                                            std::move(session), exports_, nullptr),
                              [this, number](const auto& /*session*/) {
                                clients_.erase(number);
                                endedIf();
                              }));
  } catch (const std::exception& failure) { // such as no memory for the rings
    log(Level::error, name + ": turned away: " + failure.what());
  }
}

/// The client hears of it in the place of a hello. What it says itself is not read.
void Server::turnAway(Socket& socket, Zel::Session::Ending ending, const std::string& why) {
  const std::string bye = Zel::Session::bye(ending, Zel::String8(why));
  asio::error_code ignored;
  socket.non_blocking(true, ignored);
  socket.write_some(asio::buffer(bye), ignored);
}

} // namespace Net
