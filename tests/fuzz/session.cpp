// Sessions with a hostile peer. The first byte of an input selects the role and the form:
//
//   bit 0  the session mirrors, else it exports
//   bit 1  the rest are the bytes of the stream, else it is made into records and events
//   bit 2  the peer has said its hello
//   bit 3  writing is offered, or wanted
//
// Whatever comes, the process lives, a session that is down says why, memory stays bounded, what
// may only be read is not changed, and a mirror that is not writable refuses writes. An honest peer
// brings everything in step afterwards.

#include "Probe.h"

#include <Zel/Exception>
#include <Zel/Session>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace {

using Zel::Entity;
using Zel::Mount;
using Zel::Ptr;
using Zel::Session;
using Zel::NboAttrLog::MsgHeader;
using Zel::NboAttrLog::Out;
using End = Zel::Connection::End;
namespace Log = Zel::NboAttrLog;

void require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "session: %s\n", what);
    std::abort();
  }
}

Zel::SessionOptions options() {
  Zel::SessionOptions small;
  small.name = "us";
  small.limits.outCapacity = small.limits.inCapacity = Zel::ConnectionLimits::smallestRing;
  small.limits.maxEntities = 64;
  small.limits.maxKeys = 64;
  small.limits.maxPartialText = 1 << 20;
  return small;
}

constexpr std::size_t mostMounts = 16;

/// Takes an input apart.
class Input {
public:
  Input(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

  bool empty() const { return bytes_.empty(); }
  unsigned next() {
    if (bytes_.empty()) {
      return 0;
    }
    const unsigned byte = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return byte;
  }
  std::span<const std::uint8_t> rest(std::size_t most) {
    const auto piece = bytes_.first(std::min(most, bytes_.size()));
    bytes_ = bytes_.subspan(piece.size());
    return piece;
  }
  const char* name() {
    static constexpr std::array names{
        "units",    "profiles",   "more",          "",       "own",
        "standard", "configured", "input",         "merged", "units of groups",
        "member",   "groups",     "unit profiles", "agent"};
    return names.at(next() % names.size());
  }
  const char* type() {
    static constexpr std::array types{"Maintenance::Unit::StatusDir",
                                      "Maintenance::Profile::ConfigDir",
                                      "Maintenance::Unit::State",
                                      "Nobody::Nothing",
                                      "Maintenance::Profile::DefaultProfile",
                                      "Maintenance::Unit::ConfigDir",
                                      "Maintenance::Unit::Input",
                                      "Maintenance::Unit::MergedInputDir",
                                      "Maintenance::GroupToUnitDir",
                                      "Maintenance::MemberToGroup",
                                      "Maintenance::MaintenanceGroup::ConfigDir",
                                      "MaintenanceUnitProfile::ConfigDir",
                                      "Maintenance::AgentInfo",
                                      "Maintenance::Unit::Status",
                                      "Maintenance::Unit::Config",
                                      "Maintenance::Unit::MergedInput",
                                      "Maintenance::Profile::Config",
                                      "Maintenance::GroupToUnit",
                                      "Maintenance::MaintenanceGroup::Config",
                                      "MaintenanceUnitProfile::Config"};
    return types.at(next() % types.size());
  }

private:
  std::span<const std::uint8_t> bytes_;
};

/// One session, in a world of its own.
class Side {
public:
  Side(bool mirrors, Zel::Access access) : isMirror(mirrors), most(access) {
    if (mirrors) {
      dir->entityIs(Maintenance::Unit::statusDirFactory("own"));
      mounts->mountIs("units", access);
      mounts->allIs(access);
    } else {
      tree.emplace();
      for (const Ptr<Entity>& root : tree->roots) {
        exports->entityIs(root, root == tree->profiles ? Zel::accessReadOnly : access);
      }
    }
    connect();
  }
  ~Side() { session->close(now, "over"); }
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;

  void connect() {
    session = nullptr;
    session = Zel::makeObject<Session>(isMirror ? End::first : End::second, options(),
                                       isMirror ? nullptr : exports, isMirror ? mounts : nullptr);
  }
  void serve() {
    while (session->service(now)) {
    }
  }
  void hear(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty() && session->isUp()) {
      const auto space = session->connection()->inputSpace();
      const std::size_t count = std::min(space.size(), bytes.size());
      if (count == 0) {
        return; // a record that never ends
      }
      std::memcpy(space.data(), bytes.data(), count);
      session->connection()->inputReceived(count);
      bytes = bytes.subspan(count);
      serve();
    }
  }
  bool move(Side& to) const {
    const auto bytes = session->connection()->pendingOutput();
    const std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
    session->connection()->outputConsumed(copy.size());
    to.hear(copy);
    return !copy.empty();
  }
  std::uint64_t digest() const { return tree ? tree->digest() : 0; }

  const bool isMirror;
  const Zel::Access most;
  double now = 0;
  std::optional<Tree> tree; ///< what is exported
  const Ptr<Zel::Exports> exports = Zel::makeObject<Zel::Exports>();
  const Ptr<Zel::Dir> dir = Zel::makeObject<Zel::Dir>();
  const Ptr<Zel::Mounts> mounts = Zel::makeObject<Zel::Mounts>(dir, mostMounts);
  Ptr<Session> session;
};

template <class Payload>
void say(Side& to, const MsgHeader& header, const Payload& payload) {
  static const Ptr<Out> out = Zel::makeObject<Out>(Zel::ConnectionLimits::smallestRing);
  out->nextHeaderIs(header);
  out->tokenIs(Log::transactBegin);
  payload(*out);
  out->tokenIs(Log::transactEnd);
  const std::vector<std::uint8_t> bytes(out->pending().begin(), out->pending().end());
  out->consumed(bytes.size());
  to.hear(bytes);
}

void sayHello(Side& to) {
  say(to, MsgHeader::variable(Zel::orphanEntityId, Log::attrIdSession), [&](Out& out) {
    constexpr std::uint32_t mark = 0x01020304;
    out.put8(1);
    out.put32(Session::magic);
    out.put32(Session::version);
    out.putBytes(&mark, sizeof mark);
    out.put8(to.isMirror ? 1 : 0);
    out.putString("peer");
    for (unsigned i = 0; i < 3; ++i) {
      out.put64(i);
    }
  });
}

/// A record of the session, of the form that its kind has.
void saySession(Side& to, Input& input, unsigned kind) {
  say(to, MsgHeader::variable(Zel::orphanEntityId, Log::attrIdSession), [&](Out& out) {
    out.put8(static_cast<std::uint8_t>(kind));
    if (kind == 7 || kind == 8 || kind >= 10) {
      out.put32(input.next());
    }
    if (kind <= 7) {
      out.putString(input.name());
    }
    if (kind == 2 || kind == 6) {
      out.putString(input.type());
    }
    if (kind == 2 || kind == 4 || kind == 5) {
      out.put32(input.next() % 4);
    }
    if (kind == 8) {
      out.put8(static_cast<std::uint8_t>(input.next()));
      out.put64(input.next());
    }
  });
}

/// Wants the other end to decide about something.
void askToWrite(Side& side, Input& input) {
  const Ptr<Mount> mount = side.mounts->mount(input.name());
  const Ptr<Entity> root = mount ? mount->entity() : nullptr;
  try {
    const auto units = Zel::ptrCast<Maintenance::Unit::StatusDir>(root);
    side.session->writeIf({units ? Ptr<Entity>(units->status("a")) : root,
                           Maintenance::Unit::Status::Attr::genId,
                           {},
                           input.next(),
                           input.next()},
                          [](Session::WriteResult) {});
  } catch (const Zel::RangeException&) { // another type's attribute
  }
}

void event(Side& to, Input& input) {
  const unsigned what = input.next() % 27;
  // What is exported has ids of the second end; what a mirror makes may have those of the first.
  const auto id = [&] {
    const unsigned number = input.next();
    return Zel::EntityId{number % 32 * 2, (number & 128) != 0 ? 0 : 0x80000000};
  };
  const auto announced = [&] {
    return Zel::EntityId{input.next() % 32 * 2, to.isMirror ? 0x80000000 : 0};
  };
  if (what >= 2 && what <= 12) {
    saySession(to, input, what);
  } else if (what == 13 || what == 14) {
    say(to, MsgHeader::variable(Zel::orphanEntityId, Log::attrIdOrphan), [&](Out& out) {
      out.put8(Log::payloadSectionType);
      out.putString(input.type());
      out.put8(Log::payloadSectionArgs);
      out.putString(input.name());
      out.put8(Log::payloadSectionEntityId);
      out.putEntityId(announced());
    });
  } else if (what == 15 || what == 16) {
    say(to, MsgHeader::variable(id(), Log::attrIdSyncMode),
        [&](Out& out) { out.put32(input.next() % 4); });
  } else if (what == 17) {
    const unsigned kind = 16 + input.next() % 3;
    say(to, MsgHeader::variable(Zel::orphanEntityId, Log::attrIdSession), [&](Out& out) {
      out.put8(static_cast<std::uint8_t>(kind));
      out.putEntityId(id());
      out.put32(input.next() % 4);
      if (kind == 18) {
        out.put64(input.next());
      }
      if (kind != 17) {
        out.put8(input.next() % 2);
      }
    });
  } else if (what == 18) {
    to.now += input.next();
    to.serve();
  } else if (what == 19) {
    const auto bytes = to.session->connection()->pendingOutput();
    to.session->connection()->outputConsumed(bytes.size());
    to.serve();
  } else if (what == 20) {
    to.session->echoAsk([](Session::EchoResult) {});
    try {
      to.session->digestAsk(input.name(), [](Session::DigestResult) {});
    } catch (const Zel::RangeException&) {
    }
  } else if (what == 24) {
    say(to, MsgHeader::variable(Zel::orphanEntityId, Log::attrIdSession), [&](Out& out) {
      out.put8(13);
      out.put32(input.next());
      out.putEntityId(id());
      out.put32(258 + input.next() % 18);
      const auto values = input.rest(input.next());
      out.putBytes(values.data(), values.size());
    });
  } else if (what == 25) {
    say(to, MsgHeader::variable(Zel::orphanEntityId, Log::attrIdSession), [&](Out& out) {
      out.put8(14);
      out.put32(input.next());
      out.put8(static_cast<std::uint8_t>(input.next()));
    });
  } else if (what == 26) {
    askToWrite(to, input);
  } else if (what == 21) {
    to.session->close(to.now, "cut");
    to.connect();
    sayHello(to);
  } else {
    const unsigned kind = input.next();
    const MsgHeader header = MsgHeader::variable(what == 22 ? id() : Zel::orphanEntityId,
                                                 what != 22   ? Log::attrIdSession
                                                 : kind < 224 ? 258 + static_cast<int>(kind % 18)
                                                              : 386 + static_cast<int>(kind % 8),
                                                 (kind & 32) != 0 ? Log::childRecordTag : 0);
    const auto payload = input.rest(input.next());
    say(to, header, [&](Out& out) { out.putBytes(payload.data(), payload.size()); });
  }
}

/// What a mirror refuses as long as it is not writable.
void writesCheck(Side& side) {
  for (const auto& [name, mount] : side.mounts->mounts()) {
    if (!mount->entity() || isConstant(mount->entity())) {
      continue;
    }
    bool isRefused = false;
    try {
      require(probe(mount->entity()), "a root of a type that nobody knows");
    } catch (const Zel::ReadOnlyException&) {
      isRefused = true;
    }
    require(isRefused != mount->isWritable(),
            "a mirror is writable that may not be, or not if it may");
  }
}

/// An honest peer of the other role.
void inStep(Side& side) {
  Side other(!side.isMirror, side.most);
  side.session->close(side.now, "cut");
  side.connect();
  for (bool more = true; more;) {
    side.serve();
    other.serve();
    more = side.move(other);
    more = other.move(side) || more;
  }
  const Side& server = side.isMirror ? other : side;
  const Side& client = side.isMirror ? side : other;
  require(server.session->isUp() && client.session->isUp(), "an honest session fails");
  for (const Ptr<Entity>& root : server.tree->roots) {
    const Ptr<Mount> mount = client.mounts->mount(root->name());
    if (!mount && root != server.tree->units && client.mounts->mounts().size() == mostMounts) {
      continue; // the hostile peer has offered too many others
    }
    require(mount && mount->state() == Mount::live, "an honest mount is not live");
    require(Zel::stateDigest(*mount->entity()) == Zel::stateDigest(*root),
            "an honest mount is not equal");
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const unsigned form = input.next();
  Side side((form & 1) != 0, (form & 8) != 0 ? Zel::accessReadWrite : Zel::accessReadOnly);
  const std::uint64_t digest = side.digest();
  if ((form & 4) != 0) {
    sayHello(side);
  }
  if ((form & 2) != 0) {
    side.hear(input.rest(size));
  } else {
    for (unsigned events = 0; events < 400 && !input.empty(); ++events) {
      event(side, input);
    }
  }
  const Zel::Connection& connection = *side.session->connection();
  require(connection.isUp() || !connection.failure().empty(), "a session is down for no reason");
  require(connection.demuxer()->announced() <= options().limits.maxEntities, "too many adapters");
  require(connection.out()->capacity() <= 2 * Zel::ConnectionLimits::smallestRing,
          "the ring has grown");
  require(side.mounts->mounts().size() <= mostMounts, "too many mounts");
  require((form & 8) != 0 || side.digest() == digest, "what may only be read has been changed");
  writesCheck(side);
  side.session->close(side.now, "cut");
  writesCheck(side);
  inStep(side);
  return 0;
}
