#pragma once

#include <Zel/Demuxer>
#include <Zel/Dir>

#include <cstring>

/// Two ends of a connection in one process: `there` mirrors what `here` exports.
class Pair {
public:
  using Flags = Zel::PtrInterface::NotifieeConst::Zel_BitSet;

  explicit Pair(unsigned mirrorFlags = 0, const Zel::ConnectionLimits& limits = {},
                Zel::Ptr<Zel::Dir> mirrors = Zel::makeObject<Zel::Dir>())
      : roots(std::move(mirrors)),
        here(Zel::makeObject<Zel::Connection>(Zel::Connection::End::first, "there", limits)),
        there(Zel::makeObject<Zel::Connection>(
            Zel::Connection::End::second, "here", limits,
            Zel::makeObject<Zel::NboAttrLog::DirMounts>(roots, Flags(mirrorFlags)))) {}

  ~Pair() {
    here->close();
    there->close();
  }

  /// Moves up to `most` bytes from one end to the other; yields how many.
  static std::size_t move(Zel::Connection& from, Zel::Connection& to,
                          std::size_t most = ~std::size_t{0}) {
    const auto bytes = from.pendingOutput();
    const auto space = to.inputSpace();
    const std::size_t count = std::min({bytes.size(), space.size(), most});
    if (count != 0) {
      std::memcpy(space.data(), bytes.data(), count);
      from.outputConsumed(count);
      to.inputReceived(count);
    }
    return count;
  }

  /// Lets both ends do what they can, until nothing happens any more.
  void settle() {
    bool more = true;
    while (more) {
      more = here->service();
      more = there->service() || more;
      more = move(*here, *there) != 0 || more;
      more = move(*there, *here) != 0 || more;
    }
  }

  static Zel::Ptr<Zel::StreamAdapter> adapterOf(const Zel::Ptr<Zel::Entity>& entity,
                                                const Zel::Ptr<Zel::Connection>& connection) {
    return entity->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(connection->out()));
  }

  template <class T>
  Zel::Ptr<T> mirror(const char* name) const {
    return Zel::ptrCast<T>(roots->entity(name));
  }

  const Zel::Ptr<Zel::Dir> roots;
  const Zel::Ptr<Zel::Connection> here;
  const Zel::Ptr<Zel::Connection> there;
};
