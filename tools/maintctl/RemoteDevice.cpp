#include "RemoteDevice.h"

#include "Failure.h"
#include "Utf8.h"

#include <Zel/ZelType>

#include <chrono>
#include <csignal>
#include <memory>

namespace Maintctl {

using Zel::Mount;
using Zel::Ptr;
using Zel::Session;

namespace {

std::string text(const Zel::String8& text) { return shown(text.view()); }

/// Why nobody answers at a path.
Failure noServer(const std::string& path, const std::error_code& why) {
  if (why == std::errc::permission_denied) {
    return {exitRefused, "may not connect to " + path + ": permission denied"};
  }
  if (why == std::errc::no_such_file_or_directory || why == std::errc::connection_refused) {
    return {exitNoServer, "no server at " + path + ": start one with 'maintctl serve'"};
  }
  if (why == std::errc::resource_unavailable_try_again) {
    return {exitNoServer, "the server at " + path + " takes nobody right now: try again"};
  }
  return {exitNoServer, "cannot connect to " + path + ": " + why.message()};
}

} // namespace

RemoteDevice::RemoteDevice(Settings settings) : settings_(std::move(settings)) {
  if (settings_.isStopped) {
    signals_.add(SIGINT);
    awaitStop();
  }
  connect();
}

RemoteDevice::~RemoteDevice() = default;

void RemoteDevice::awaitStop() {
  signals_.async_wait([this](const asio::error_code& ended, int /*number*/) {
    if (!ended) {
      isStopped_ = true;
      io_.stop();
      awaitStop();
    }
  });
}

void RemoteDevice::connect() {
  client_.reset();
  mounts_ = nullptr; // whose mirrors leave the directory with it
  mounts_ = Zel::makeObject<Zel::Mounts>(dir_);
  Net::ClientOptions options;
  options.path = settings_.path;
  options.reconnects = settings_.waits || settings_.reconnects;
  options.backoff = {0.1, 5, 2, 0.5}; // somebody is waiting
  options.session.name = "maintctl";
  options.session.helloTime = settings_.timeout + 1; // what waits for it gives up first
  client_.emplace(turns_, options, mounts_);
  if (!client_->start() && !settings_.waits) {
    throw noServer(settings_.path, client_->refusal());
  }
}

/// Which no other try would change.
bool RemoteDevice::isOfAnotherVersion() const {
  const std::uint32_t version = client_->formerPeer().version;
  return version != 0 && version != Session::version;
}

/// Why there is no connection now; none if there is one.
std::optional<Failure> RemoteDevice::trouble() const {
  if (client_->session()) {
    return {};
  }
  if (client_->refusal()) {
    return noServer(settings_.path, client_->refusal());
  }
  const std::string server = "the server at " + settings_.path;
  const Session::Peer& peer = client_->formerPeer();
  if (isOfAnotherVersion()) {
    return Failure(exitNoServer, server + " speaks version " + std::to_string(peer.version) +
                                     " of the protocol, this maintctl version " +
                                     std::to_string(Session::version) +
                                     ": use the one that the server came with");
  }
  switch (peer.ending) {
  case Session::endingRefused:
    return Failure(exitRefused, server + " refuses the connection: " + text(peer.reason));
  case Session::endingBusy:
    return Failure(exitNoServer,
                   server + " has no room for another: " + text(peer.reason) + ", try again");
  case Session::endingOver:
  case Session::endingFailed:
    return Failure(exitNoServer, server + " has ended the connection: " + text(peer.reason));
  case Session::endingUnsaid:
    break;
  }
  return Failure(exitNoServer,
                 "the connection to " + server + " has ended: " + text(client_->failure()));
}

/// What came before was for somebody else, and may be more than one signal.
void RemoteDevice::forgetStops() {
  do {
    isStopped_ = false;
    io_.restart();
    io_.poll();
  } while (isStopped_);
}

bool RemoteDevice::until(const std::function<bool()>& isDone, double seconds) {
  if (settings_.isStopped) {
    forgetStops();
  }
  const auto hasEnded = [this] {
    const bool isRefused =
        client_->formerPeer().ending == Session::endingRefused || isOfAnotherVersion();
    return !client_->session() && (isRefused || (!settings_.reconnects && !settings_.waits));
  };
  bool done = isDone();
  if (!done && !hasEnded()) {
    asio::steady_timer timer(io_);
    const Net::Alive here;
    if (seconds >= 0) {
      timer.expires_after(std::chrono::duration_cast<std::chrono::nanoseconds>(
          std::chrono::duration<double>(std::min(seconds, 1e9))));
      timer.async_wait([this, alive = here.watch()](const asio::error_code& ended) {
        if (!ended && !alive.expired()) {
          io_.stop();
        }
      });
    }
    struct After {
      Net::Turns& turns;
      ~After() { turns.afterEachIs(nullptr); }
    } const scope{turns_};
    turns_.afterEachIs([&] {
      done = isDone();
      if (done || hasEnded()) {
        io_.stop();
      }
    });
    turns_.soon(); // for what has been changed here
    io_.restart();
    io_.run();
    if (isStopped_) {
      throw Failure(exitStopped, "stopped");
    }
  }
  if (!done && hasEnded()) {
    throw trouble().value();
  }
  return done;
}

void RemoteDevice::await(const std::function<bool()>& isDone, const std::string& what) {
  if (!until(isDone, settings_.timeout)) {
    const std::optional<Failure> why = trouble();
    throw Failure(exitTimeout, why ? why->what()
                                   : "the server at " + settings_.path + " took too long: " + what +
                                         ", see --timeout");
  }
}

bool RemoteDevice::wait(const std::function<bool()>& isDone, double seconds) {
  return until(isDone, seconds);
}

const std::map<Zel::Name, Zel::String8>& RemoteDevice::offers() const {
  static const std::map<Zel::Name, Zel::String8> nothing;
  return client_->session() ? client_->session()->offers() : nothing;
}

std::map<Zel::Name, Zel::String8> RemoteDevice::roots() {
  await([this] { return client_->session() && client_->session()->hasOffers(); },
        "it has not said what it has");
  return client_->session()->offers();
}

void RemoteDevice::need(const Zel::Name& root, bool toWrite) {
  const Ptr<Mount> there = mounts_->mount(root);
  const auto isReady = [&] {
    return there && there->state() == Mount::live && (!toWrite || there->isWritable());
  };
  if (isReady()) {
    unsaid_ = std::max(unsaid_, catchUp());
    if (isReady()) {
      return;
    }
  }
  const std::map<Zel::Name, Zel::String8> all = roots();
  const auto offered = all.find(root);
  if (offered == all.end()) {
    throw Failure(exitNotFound, "no root " + text(root));
  }
  if (Zel::ZelType::type(offered->second.view()) == nullptr) {
    throw Failure(exitRefused, "/" + text(root) +
                                   " is of a type that is not known here, see --types: " +
                                   text(offered->second));
  }
  if (toWrite && there && there->wanted() != Zel::accessReadWrite) {
    const Zel::Mounts::Members before = mounts_->mounts();
    connect(); // a mount asks once
    for (const auto& [name, mount] : before) {
      awaitLive(this->mount(name, name == root ? Zel::accessReadWrite : mount->wanted()));
    }
  }
  const Ptr<Mount> needed = mount(root, toWrite ? Zel::accessReadWrite : Zel::accessReadOnly);
  awaitLive(needed);
  if (!toWrite) {
    return;
  }
  if (needed->access() != Zel::accessReadWrite) {
    throw Failure(exitRefused, "the server lets /" + text(root) + " be read only");
  }
  await([&] { return needed->isWritable(); }, "it lets nobody write /" + text(root) + " now");
}

Ptr<Mount> RemoteDevice::mount(const Zel::Name& root, Zel::Access access) {
  Ptr<Mount> mount = mounts_->mountIs(root, access);
  turns_.soon();
  return mount;
}

void RemoteDevice::awaitLive(const Ptr<Mount>& mount) {
  await([&] { return mount->state() == Mount::live || mount->state() == Mount::refused; },
        "it has not sent all of the root");
  if (mount->state() == Mount::refused) {
    throw Failure(exitRefused,
                  "the server refuses /" + text(mount->name()) + ": " + text(mount->reason()));
  }
}

/// Waits until the server has answered, and so until all is applied that it had sent before. Yields
/// what has become of what was written here.
Session::EchoResult RemoteDevice::catchUp() {
  if (const std::optional<Failure> why = trouble()) {
    throw *why;
  }
  const auto echo = std::make_shared<std::optional<Session::EchoResult>>();
  const Ptr<Session> asked = client_->session();
  asked->echoAsk([echo](Session::EchoResult fate) { *echo = fate; });
  await([&] { return echo->has_value(); }, "it does not answer");
  if (!asked->isUp()) {
    throw trouble().value_or(
        Failure(exitNoServer, "the server at " + settings_.path + " has been replaced meanwhile"));
  }
  return echo->value();
}

bool RemoteDevice::isThere() {
  io_.restart();
  io_.poll(); // an end may have come meanwhile
  return static_cast<bool>(client_->session());
}

void RemoteDevice::flush() {
  switch (std::max(std::exchange(unsaid_, Session::echoApplied), catchUp())) {
  case Session::echoApplied:
    return;
  case Session::echoDropped:
    throw Failure(exitRefused,
                  "not all of it was taken: the right to write was withdrawn meanwhile");
  case Session::echoUnknown:
    throw Failure(
        exitFailed,
        "nobody knows what of it was taken: a connection of the server has ended meanwhile");
  }
}

Session::WriteResult RemoteDevice::writeIf(const Session::WriteIf& what) {
  if (const std::optional<Failure> why = trouble()) {
    throw *why;
  }
  const auto result = std::make_shared<std::optional<Session::WriteResult>>();
  client_->session()->writeIf(what, [result](Session::WriteResult answer) { *result = answer; });
  await([&] { return result->has_value(); }, "it has not answered");
  if (*result == Session::writeLost) {
    throw trouble().value_or(
        Failure(exitNoServer, "the server at " + settings_.path + " has been replaced meanwhile"));
  }
  return result->value();
}

Session::DigestResult RemoteDevice::verify(const Zel::Name& root) {
  need(root, false);
  const auto result = std::make_shared<std::optional<Session::DigestResult>>();
  client_->session()->digestAsk(root, [result](Session::DigestResult answer) { *result = answer; });
  await([&] { return result->has_value(); }, "it has not answered with a digest");
  return result->value();
}

} // namespace Maintctl
