// Records of the attribute log as a hostile peer may send them. The first byte of an input selects
// which end reads and how the rest is turned into bytes:
//
//   bit 0  the mirror reads, else the exporter, where the peer may write nothing
//   bit 1  the rest are the bytes of the stream, else it is made into well-formed records
//   bit 2  the mirror is read-only
//
// Whatever comes, the process lives, the models stay whole, an exporter's is unchanged, and a new
// connection brings the mirror back in step.

#include "Tree.h"

#include <Zel/Demuxer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using Zel::Connection;
using Zel::Entity;
using Zel::Ptr;
using Zel::NboAttrLog::MsgHeader;
using Flags = Zel::PtrInterface::NotifieeConst::Zel_BitSet;
using Adapter = Zel::StreamAdapter;

void require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "attrlog: %s\n", what);
    std::abort();
  }
}

Zel::ConnectionLimits limits() {
  Zel::ConnectionLimits small;
  small.outCapacity = small.inCapacity = Zel::ConnectionLimits::smallestRing;
  small.maxEntities = 64;
  small.maxKeys = 64;
  small.maxPartialText = 1 << 20;
  return small;
}

/// A connection between an exporter and a mirror, with everything mounted.
struct Link {
  Link(const Tree& tree, const Ptr<Zel::Dir>& mirrors, unsigned mirrorFlags)
      : here(Zel::makeObject<Connection>(Connection::End::first, "mirror", limits())),
        there(Zel::makeObject<Connection>(Connection::End::second, "exporter", limits(),
                                          Zel::makeObject<Zel::NboAttrLog::DirMounts>(
                                              mirrors, Flags(mirrorFlags), std::size_t{16}))) {
    // One after another, so that the ids in the corpus stay: 2 is units, 4 its System, 12 is
    // configured, 14 input, 16 merged, 22 and on the others.
    const std::span<const Ptr<Entity>> roots(tree.roots);
    exportIs(roots.first(3));
    exportIs(roots.subspan(3, 3));
    exportIs(roots.subspan(6));
  }
  ~Link() {
    here->close();
    there->close();
  }

  void exportIs(std::span<const Ptr<Entity>> roots) {
    for (const Ptr<Entity>& root : roots) {
      here->demuxer()->exportIs(root, Flags(Adapter::flagRemoteReadOnly));
    }
    settle();
  }

  static bool feed(Connection& to, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty() && to.isUp()) {
      const auto space = to.inputSpace();
      const std::size_t count = std::min(space.size(), bytes.size());
      if (count == 0) {
        return false; // a record that never ends
      }
      std::memcpy(space.data(), bytes.data(), count);
      to.inputReceived(count);
      bytes = bytes.subspan(count);
      while (to.service()) {
      }
    }
    return true;
  }

  static bool move(Connection& from, Connection& to) {
    const auto bytes = from.pendingOutput();
    if (bytes.empty()) {
      return false;
    }
    const std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
    from.outputConsumed(copy.size());
    feed(to, copy);
    return true;
  }

  void settle() {
    bool more = true;
    while (more) {
      more = here->service();
      more = there->service() || more;
      more = move(*here, *there) || more;
      more = move(*there, *here) || more;
    }
  }

  const Ptr<Connection> here;
  const Ptr<Connection> there;
};

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

private:
  std::span<const std::uint8_t> bytes_;
};

/// Well-formed records, whose payloads are the input's.
void feedRecords(Connection& to, Input& input, std::uint32_t ownEnd) {
  const auto out = Zel::makeObject<Zel::NboAttrLog::Out>(Zel::ConnectionLimits::smallestRing);
  while (!input.empty() && to.isUp()) {
    MsgHeader header;
    header.entityId = {input.next() % 32 * 2, ownEnd};
    const unsigned kind = input.next();
    header.attrId = kind < 32    ? 130 + static_cast<int>(kind)
                    : kind < 224 ? 258 + static_cast<int>(kind % 20)
                                 : 386 + static_cast<int>(kind % 8);
    if (header.attrId == Zel::NboAttrLog::attrIdOrphan) {
      header.entityId = Zel::orphanEntityId;
    }
    const unsigned form = input.next();
    header.attrId = (form & 1) != 0 ? -header.attrId : header.attrId;
    header.recordTag = (form & 2) != 0 ? Zel::NboAttrLog::childRecordTag : 0;
    const auto payload = input.rest(input.next());
    header.variableSize = (form & 4) != 0 ? 0 : 1;
    header.fixedSize = (form & 4) != 0 ? static_cast<std::uint32_t>(payload.size()) : 0;
    out->nextHeaderIs(header);
    out->tokenIs(Zel::NboAttrLog::transactBegin);
    out->putBytes(payload.data(), payload.size());
    out->tokenIs(Zel::NboAttrLog::transactEnd);
    std::vector<std::uint8_t> bytes(out->pending().begin(), out->pending().end());
    out->consumed(bytes.size());
    bytes[0] |= (form & 8) != 0 ? 0x80 : 0; // more of the text follows
    Link::feed(to, bytes);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const unsigned form = input.next();
  const Tree tree;
  const std::uint64_t digest = tree.digest();
  const auto mirrors = Zel::makeObject<Zel::Dir>();
  const unsigned mirrorFlags = (form & 4) != 0 ? Adapter::flagReadOnly : 0;
  {
    const Link link(tree, mirrors, mirrorFlags);
    Connection& reader = (form & 1) != 0 ? *link.there : *link.here;
    if ((form & 2) != 0) {
      Link::feed(reader, input.rest(size));
    } else {
      feedRecords(reader, input, (form & 1) != 0 ? 0 : 0x80000000);
    }
    require(reader.isUp() || !reader.failure().empty(), "a connection is down for no reason");
    require(reader.demuxer()->announced() <= limits().maxEntities, "more adapters than allowed");
  }
  require(tree.digest() == digest, "a peer without the right has changed the model");
  for (const auto& [name, root] : mirrors->entities()) {
    Zel::stateDigest(*root);
  }
  const Link again(tree, mirrors, mirrorFlags);
  require(again.here->isUp() && again.there->isUp(), "a new connection fails");
  for (const Ptr<Entity>& root : tree.roots) {
    const Ptr<Entity> mirror = mirrors->entity(root->name());
    require(mirror && Zel::stateDigest(*mirror) == Zel::stateDigest(*root),
            "a new connection does not bring a mirror back in step");
  }
  return 0;
}
