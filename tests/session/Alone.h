#pragma once

#include "Says.h"

/// What a peer says of itself.
struct HelloWords {
  std::uint32_t magic = Zel::Session::magic;
  std::uint32_t version = Zel::Session::version;
  std::uint32_t mark = 0x01020304;
  unsigned side = 0;          // it has called
  std::uint64_t instance = 0; // it mounts nothing
};

/// Of a peer that has been called.
inline constexpr HelloWords accepting{Zel::Session::magic, Zel::Session::version, 0x01020304, 1, 0};

/// One session whose peer a test plays, by the bytes of its records.
class Alone {
public:
  using Session = Zel::Session;
  using End = Zel::Connection::End;
  using Out = Zel::NboAttrLog::Out;

  explicit Alone(End end = End::second, double helloTime = 5,
                 const Zel::ConnectionLimits& limits = {}) {
    Zel::SessionOptions options;
    options.helloTime = helloTime;
    options.limits = limits;
    options.name = "us";
    options.log = [this](Zel::LogLevel level, const Zel::String8& line) {
      static const char* const names[] = {"error: ", "warning: ", "info: ", "debug: "};
      log.push_back(names[static_cast<int>(level)] + std::string(line.view()));
    };
    session = Zel::makeObject<Session>(end, options, exports, mounts);
  }
  ~Alone() { session->close(now, "over"); }
  Alone(const Alone&) = delete;
  Alone& operator=(const Alone&) = delete;

  /// Gives bytes to the session, which does what it can.
  void hear(std::string_view bytes) {
    while (!bytes.empty() && session->isUp()) {
      const auto space = session->connection()->inputSpace();
      const std::size_t count = std::min(space.size(), bytes.size());
      std::memcpy(space.data(), bytes.data(), count);
      session->connection()->inputReceived(count);
      bytes.remove_prefix(count);
      serve();
    }
  }
  void serve() {
    while (session->service(now)) {
    }
  }
  /// What the session says, in words; taken away.
  std::vector<std::string> said() const { return says(Wiretap::records(*session->connection())); }
  std::string failure() const { return std::string(session->failure().view()); }
  const Zel::NboAttrLog::Demuxer::Counts& counts() const {
    return session->connection()->demuxer()->counts();
  }

  // What a peer may say.
  template <class Payload>
  static std::string record(unsigned kind, const Payload& payload) {
    return Wiretap::letter(Zel::orphanEntityId, Zel::NboAttrLog::attrIdSession, [&](Out& out) {
      out.put8(static_cast<std::uint8_t>(kind));
      payload(out);
    });
  }
  static std::string hello(const HelloWords& words = {}) {
    return record(1, [&](Out& out) {
      out.put32(words.magic);
      out.put32(words.version);
      out.putBytes(&words.mark, sizeof words.mark);
      out.put8(static_cast<std::uint8_t>(words.side));
      out.putString("peer");
      for (const std::uint64_t limit : {1U, 2U, 3U}) {
        out.put64(limit);
      }
      out.put64(words.instance);
      out.put64(words.instance);
    });
  }
  static std::string named(unsigned kind, const Zel::String8& name) {
    return record(kind, [&](Out& out) { out.putString(name); });
  }
  static std::string access(unsigned kind, const Zel::String8& name, unsigned number) {
    return record(kind, [&](Out& out) {
      out.putString(name);
      out.put32(number);
    });
  }
  static std::string offer(const Zel::String8& name,
                           const Zel::String8& type = "Maintenance::Unit::StatusDir",
                           unsigned number = 1) {
    return record(2, [&](Out& out) {
      out.putString(name);
      out.putString(type);
      out.put32(number);
    });
  }
  static std::string ask(const Zel::String8& name, unsigned number = 1) {
    return access(4, name, number);
  }
  static std::string grant(const Zel::String8& name, unsigned number = 1) {
    return access(5, name, number);
  }
  static std::string refuse(const Zel::String8& name, const Zel::String8& reason) {
    return record(6, [&](Out& out) {
      out.putString(name);
      out.putString(reason);
    });
  }
  static std::string bye(unsigned ending, const Zel::String8& reason) {
    return record(12, [&](Out& out) {
      out.put8(static_cast<std::uint8_t>(ending));
      out.putString(reason);
    });
  }
  static std::string numbered(unsigned kind, std::uint32_t serial) {
    return record(kind, [&](Out& out) { out.put32(serial); });
  }
  static std::string digestAsk(std::uint32_t serial, const Zel::String8& name) {
    return record(7, [&](Out& out) {
      out.put32(serial);
      out.putString(name);
    });
  }
  static std::string digest(std::uint32_t serial, unsigned result, std::uint64_t number) {
    return record(8, [&](Out& out) {
      out.put32(serial);
      out.put8(static_cast<std::uint8_t>(result));
      out.put64(number);
    });
  }
  /// The announcement of a directory of units.
  static std::string root(const Zel::String8& name, Zel::EntityId id,
                          const char* type = "Maintenance::Unit::StatusDir") {
    return Wiretap::letter(Zel::orphanEntityId, Zel::NboAttrLog::attrIdOrphan, [&](Out& out) {
      out.put8(Zel::NboAttrLog::payloadSectionType);
      out.putString(type);
      out.put8(Zel::NboAttrLog::payloadSectionArgs);
      out.putString(name);
      out.put8(Zel::NboAttrLog::payloadSectionEntityId);
      out.putEntityId(id);
    });
  }
  static std::string freeze(Zel::EntityId root, std::uint32_t freezes, bool isSoft = false) {
    return record(16, [&](Out& out) {
      out.putEntityId(root);
      out.put32(freezes);
      out.put8(isSoft ? 1 : 0);
    });
  }
  static std::string frozen(Zel::EntityId root, std::uint32_t freezes) {
    return record(17, [&](Out& out) {
      out.putEntityId(root);
      out.put32(freezes);
    });
  }
  static std::string thaw(Zel::EntityId root, std::uint32_t freezes, std::uint64_t dropped = 0) {
    return record(18, [&](Out& out) {
      out.putEntityId(root);
      out.put32(freezes);
      out.put64(dropped);
      out.put8(0);
    });
  }
  static std::string syncMode(Zel::EntityId id, unsigned mode) {
    return Wiretap::letter(id, Zel::NboAttrLog::attrIdSyncMode, [&](Out& out) { out.put32(mode); });
  }

  double now = 100;
  std::vector<std::string> log;
  const Zel::Ptr<Zel::Exports> exports = Zel::makeObject<Zel::Exports>();
  const Zel::Ptr<Zel::Dir> dir = Zel::makeObject<Zel::Dir>();
  const Zel::Ptr<Zel::Mounts> mounts = Zel::makeObject<Zel::Mounts>(dir);
  Zel::Ptr<Session> session;
};
