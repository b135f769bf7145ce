#pragma once

#include "Bytes.h"

#include <Zel/Demuxer>
#include <Zel/Dir>

#include <cstring>
#include <stdexcept>

/// Ends of connections whose other end is a test.
class AnEnd {
public:
  using Flags = Zel::PtrInterface::NotifieeConst::Zel_BitSet;

  ~AnEnd() { connection->close(); }
  AnEnd(const AnEnd&) = delete;
  AnEnd& operator=(const AnEnd&) = delete;

  Zel::NboAttrLog::Demuxer& demuxer() const { return *connection->demuxer(); }
  const Zel::Ptr<Zel::NboAttrLog::Out>& out() const { return connection->out(); }
  const Zel::NboAttrLog::Demuxer::Counts& counts() const { return demuxer().counts(); }

  /// Lets it write all that it owes; yields what it has written since the last call.
  std::string written() const {
    std::string bytes;
    for (bool more = true; more;) {
      more = connection->service();
      const auto pending = connection->pendingOutput();
      bytes += viewOf(pending);
      more = more || !pending.empty();
      connection->outputConsumed(pending.size());
    }
    return hexOf(bytes);
  }

  /// Takes in what the test sends.
  void apply(std::string_view hex) const {
    const std::string bytes = bytesOf(hex);
    for (std::size_t at = 0; at < bytes.size();) {
      const auto space = connection->inputSpace();
      const std::size_t count = std::min(space.size(), bytes.size() - at);
      if (count == 0) {
        throw std::runtime_error("down: " + failure());
      }
      std::memcpy(space.data(), bytes.data() + at, count);
      connection->inputReceived(count);
      at += count;
      connection->service();
    }
  }

  std::string failure() const { return std::string(connection->failure().view()); }

  const Zel::Ptr<Zel::Connection> connection;

protected:
  explicit AnEnd(Zel::Connection::End end, Zel::Ptr<Zel::NboAttrLog::MountPolicy> policy = nullptr,
                 const Zel::ConnectionLimits& limits = {})
      : connection(Zel::makeObject<Zel::Connection>(end, "tester", limits, std::move(policy))) {}
};

/// An end that exports. Its first entity has the id (2, 0), the next (4, 0), and so on.
class Sender : public AnEnd {
public:
  explicit Sender(const Zel::ConnectionLimits& limits = {})
      : AnEnd(Zel::Connection::End::first, nullptr, limits) {}

  /// Exports a root and lets everything go that this writes.
  void announce(const Zel::Ptr<Zel::Entity>& root, unsigned flags = 0) const {
    demuxer().exportIs(root, Flags(flags));
    written();
  }
};

/// An end that mirrors.
class Receiver : public AnEnd {
public:
  explicit Receiver(unsigned flags = 0, const Zel::ConnectionLimits& limits = {})
      : Receiver(Zel::makeObject<Zel::Dir>(), flags, limits) {}

  template <class T>
  Zel::Ptr<T> mirror(const char* name) const {
    return Zel::ptrCast<T>(roots->entity(name));
  }

  const Zel::Ptr<Zel::Dir> roots;

private:
  Receiver(Zel::Ptr<Zel::Dir> dir, unsigned flags, const Zel::ConnectionLimits& limits)
      : AnEnd(Zel::Connection::End::second,
              Zel::makeObject<Zel::NboAttrLog::DirMounts>(dir, Flags(flags)), limits),
        roots(dir) {}
};
