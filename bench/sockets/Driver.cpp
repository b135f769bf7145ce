#include "sockets/Driver.h"

#include <Zel/AttrLogRoot>
#include <Zel/Demuxer>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/socket.h>

namespace Bench::Sockets {

using Maintenance::Unit::Status;
using Maintenance::Unit::StatusDir;

namespace {

Zel::SessionOptions options() {
  Zel::SessionOptions made;
  made.name = "bench";
  made.helloTime = 60; // the other process may have a directory to fill first
  return made;
}

} // namespace

Driver::Driver(int socket, Zel::Connection::End end, Zel::Ptr<Zel::Exports> exports,
               Zel::Ptr<Zel::Mounts> mounts)
    : socket_(socket), session_(Zel::makeObject<Zel::Session>(end, options(), std::move(exports),
                                                              std::move(mounts))),
      connection_(session_->connection()) {}

void Driver::service() {
  while (session_->service(now())) {
  }
  if (!session_->isUp()) {
    fail(std::string("the session ended: ") + session_->failure().charPtr());
  }
}

void Driver::flush() {
  service();
  for (auto bytes = connection_->pendingOutput(); !bytes.empty();
       bytes = connection_->pendingOutput()) {
    writeAll(socket_, bytes.data(), bytes.size());
    connection_->outputConsumed(bytes.size());
  }
}

void Driver::flushSome() {
  service();
  for (auto bytes = connection_->pendingOutput(); !bytes.empty();
       bytes = connection_->pendingOutput()) {
    const ssize_t done = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (done < 0 && errno != EAGAIN) {
      fail(std::string("send: ") + std::strerror(errno));
    }
    if (done <= 0) {
      return;
    }
    connection_->outputConsumed(static_cast<std::size_t>(done));
  }
}

void Driver::receive(std::size_t most) {
  const auto space = connection_->inputSpace();
  const std::size_t count = readSome(socket_, space.data(), std::min(space.size(), most));
  received_ += count;
  connection_->inputReceived(count);
  service();
}

Exporter::Exporter(int socket, const Zel::Ptr<Zel::Exports>& exports, const char* name)
    : driver(socket, Zel::Connection::End::second, exports, nullptr) {
  for (;;) {
    driver.flush();
    root = driver.session().exported(name);
    if (root && root->isMarkedSent() && driver.connection().demuxer()->scheduled() == 0) {
      return;
    }
    if (!root) {
      driver.receive();
    }
  }
}

Mirror::Mirror(int socket, const char* root, Zel::Access access)
    : mounts_(Zel::makeObject<Zel::Mounts>()),
      driver(socket, Zel::Connection::End::first, nullptr, mounts_),
      mount(mounts_->mountIs(root, access)) {}

void Mirror::settle() {
  for (driver.flush(); mount->state() != Zel::Mount::live; driver.flush()) {
    driver.receive();
  }
}

Zel::Ptr<StatusDir> Units::made() {
  auto dir = Maintenance::Unit::statusDirFactory("units");
  for (std::size_t i = 0; i < count; ++i) {
    dir->statusIs(name(i));
  }
  return dir;
}

Units::Units(const Zel::Ptr<StatusDir>& dir) {
  for (std::size_t place = 0; place < count; ++place) {
    units_.push_back(dir->status(name(place * 7919 % count)));
    if (!units_.back()) {
      fail("a unit is missing");
    }
  }
}

bool Units::areChanged(std::size_t rounds) const {
  for (std::size_t place = 0; place < count; ++place) {
    const auto valueOf = [place](std::size_t round) {
      return static_cast<unsigned>(round * count + place + 1);
    };
    const bool isGenIdLast = (rounds - 1 + place) % 2 == 0;
    const unsigned genId = valueOf(isGenIdLast ? rounds - 1 : rounds - 2);
    const unsigned time = valueOf(isGenIdLast ? rounds - 2 : rounds - 1);
    if (units_[place]->genId() != genId || units_[place]->timeOfStateChange() != time) {
      return false;
    }
  }
  return true;
}

Zel::String8 name(std::size_t number) {
  char text[48];
  std::snprintf(text, sizeof text, "profile-%07zu-p%03zu", number, number % 8);
  return text;
}

} // namespace Bench::Sockets
