// Mirrors all roots of a server at a Unix socket, and prints what changes, from a plain loop around
// poll(2). The library does no I/O of its own: any other loop, or another transport, would do.

#include <Zel/Session>
#include <generic/Client.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <iostream>
#include <map>

namespace {

using Zel::Mount;
using Zel::Ptr;
using Zel::Session;

/// Hears of an entity of any type, and of the members that come and go.
class Watch : public Zel::GenericIfEntity::Listener {
public:
  explicit Watch(const Ptr<Zel::Entity>& entity) : object_(Zel::generic(entity, true)) {
    Zel::ptrCast<Zel::GenericIfEntity>(object_)->listenerIs(this);
    for (const auto& attribute : object_->type()->attributeQ()) {
      if (attribute->row() != nullptr && attribute->row()->isCollection()) {
        for (auto at = object_->attributeIteratorConst(attribute->id()); at; ++at) {
          memberIs(at.key()->strRep(), at.obj());
        }
      }
    }
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

private:
  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id) override {
    std::cout << place(object, id) << " = " << Zel::readAttribute(object_, id)->strRep()
              << std::endl;
  }
  void onAttribute(Zel::GenericIfEntity& object, Zel::AttributeId id,
                   const Ptr<const Zel::GenericIf>& key) override {
    const bool isThere = Zel::value<bool>(
        object_->attributeOp({id, Zel::GenericIf::AttributeOp::opExists}, key, nullptr));
    const Ptr<Zel::GenericIf> member = isThere ? Zel::readMember(object_, id, key) : nullptr;
    std::cout << place(object, id) << '[' << key->strRep() << "] "
              << (isThere ? "is " + std::string(member->strRep().view()) : "has gone") << std::endl;
    memberIs(key->strRep(), member);
  }

  std::string place(const Zel::GenericIfEntity& object, Zel::AttributeId id) const {
    const auto* const entity = dynamic_cast<const Zel::Entity*>(object.zelObject());
    return std::string(entity->uriPath().text().view()) + "/" +
           std::string(object_->type()->attr(id)->name().view());
  }

  /// Members that are entities are watched in turn.
  void memberIs(const Zel::String8& key, const Ptr<const Zel::GenericIf>& member) {
    members_.erase(key);
    const auto object = Zel::ptrCast<const Zel::GenericIfEntity>(member);
    if (const auto entity = Zel::ptrCast<Zel::Entity>(
            Ptr<Zel::PtrInterface>(object ? object->zelObject() : nullptr))) {
      members_.emplace(key, entity);
    }
  }

  Ptr<Zel::GenericIf> object_;
  std::map<Zel::String8, Watch> members_;
};

int connectedTo(const char* path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
  const int file = socket(AF_UNIX, SOCK_STREAM, 0);
  if (file < 0 || connect(file, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    std::cerr << "poll: no server at " << path << ": " << std::strerror(errno) << '\n';
    std::exit(1);
  }
  fcntl(file, F_SETFL, O_NONBLOCK);
  return file;
}

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Reads and writes what can be at once. Whether the other end is still there.
bool moveBytes(int file, Zel::Connection& connection) {
  for (ssize_t count = 1; count > 0 && connection.wantsWrite();) {
    const auto bytes = connection.pendingOutput();
    count = send(file, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    connection.outputConsumed(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
  const auto space = connection.inputSpace();
  if (space.empty()) {
    return true; // until the next `service` has made room
  }
  const ssize_t count = read(file, space.data(), space.size());
  connection.inputReceived(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: poll SOCKET\n";
    return 2;
  }
  const int file = connectedTo(argv[1]);
  const auto mounts = Zel::makeObject<Zel::Mounts>(Zel::makeObject<Zel::Dir>());
  mounts->allIs(Zel::accessReadOnly);
  Zel::SessionOptions options;
  options.name = "poll";
  const auto session =
      Zel::makeObject<Session>(Zel::Connection::End::first, options, nullptr, mounts);
  std::map<Zel::Name, Watch> watches;

  while (session->isUp()) {
    const bool isThere = moveBytes(file, *session->connection());
    bool more = session->service(now());
    if (!isThere && !more) {
      session->close(now(), "the server has gone");
    }
    for (const auto& [name, mount] : mounts->mounts()) {
      if (mount->state() == Mount::live && watches.try_emplace(name, mount->entity()).second) {
        std::cout << name << " is live" << std::endl;
      }
    }
    more = more || !isThere;
    const double wait = session->deadline() - now(); // infinite if nothing is due
    constexpr short both = POLLIN | POLLOUT;
    pollfd one = {file, session->connection()->wantsWrite() ? both : short{POLLIN}, 0};
    poll(&one, 1,
         more         ? 0
         : wait < 1e6 ? std::max(0, static_cast<int>(std::ceil(wait * 1000)))
                      : -1);
  }
  std::cout << session->failure() << std::endl;
  const std::string& words = session->lastWords(); // for a server that is still there
  send(file, words.data(), words.size(), MSG_NOSIGNAL);
  close(file);
  return 0;
}
