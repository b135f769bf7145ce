#pragma once

#include <Zel/Demuxer>
#include <Zel/Dir>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

/// Records as they wait at one end of a connection: to be read, counted and withheld; and records
/// made by hand, to be given to one end.
namespace Wiretap {

using Adapter = Zel::StreamAdapter;
using Flags = Zel::PtrInterface::NotifieeConst::Zel_BitSet;
using Zel::AttributeId;
using Zel::Connection;
using Zel::EntityId;
using Zel::Ptr;
using Zel::String8;
using Zel::NboAttrLog::Demuxer;
using Zel::NboAttrLog::MsgHeader;
using Zel::NboAttrLog::Out;

/// Whom records are for that only take up room.
inline constexpr EntityId nobody{0xfffffffe, 0x7fffffff};

/// One record.
struct Seen {
  EntityId entity;
  AttributeId attr = 0;
  std::uint32_t tag = 0;
  bool goesOn = false; ///< more chunks of its text follow
  std::string payload;
  std::string bytes; ///< all of it
};

inline std::uint32_t number(std::string_view bytes, std::size_t at = 0) {
  std::uint32_t raw = 0;
  std::memcpy(&raw, bytes.data() + at, sizeof raw);
  return Zel::WireWriter::networkOrder(raw);
}

inline std::vector<Seen> parsed(std::string_view bytes) {
  std::vector<Seen> seen;
  while (!bytes.empty()) {
    const std::uint32_t word = number(bytes);
    const std::size_t length = word & ~Zel::NboAttrLog::chunkFollowsBit;
    Seen one;
    std::memcpy(&one.entity, bytes.data() + 4, sizeof one.entity);
    one.attr = static_cast<AttributeId>(number(bytes, 12));
    one.tag = number(bytes, 21);
    one.goesOn = word != length;
    one.payload =
        bytes.substr(Zel::NboAttrLog::headerSize + 1, length - Zel::NboAttrLog::recordOverhead);
    one.bytes = bytes.substr(0, length);
    bytes.remove_prefix(length);
    if (!(one.entity == nobody)) {
      seen.push_back(std::move(one));
    }
  }
  return seen;
}

/// All bytes that are pending, taken away.
inline std::string taken(Connection& from) {
  std::string bytes;
  while (from.wantsWrite()) {
    const auto piece = from.pendingOutput();
    bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
    from.outputConsumed(piece.size());
  }
  return bytes;
}

inline std::vector<Seen> records(Connection& from) { return parsed(taken(from)); }

/// What a record is: "262", "-260", "261+" if its text goes on, "begin 260", "abort 268", "end
/// 260", "root".
inline std::string brief(const Seen& seen) {
  static const char* const markers[] = {"begin ", "abort ", "end "};
  switch (seen.attr) {
  case Zel::NboAttrLog::attrIdTransaction:
    return markers[number(seen.payload, 4)] + std::to_string(number(seen.payload));
  case Zel::NboAttrLog::attrIdOrphan:
    return "root";
  default:
    return std::to_string(seen.attr) + (seen.goesOn ? "+" : "");
  }
}

using Briefs = std::vector<std::string>;

/// Of all records, or those for one entity.
inline Briefs briefs(const std::vector<Seen>& seen, std::optional<EntityId> of = {}) {
  Briefs result;
  for (const Seen& one : seen) {
    if (!of || one.entity == *of) {
      result.push_back(brief(one));
    }
  }
  return result;
}

/// Bytes as two hexadecimal digits each.
inline std::string hex(std::string_view bytes) {
  static const char* const digits = "0123456789abcdef";
  std::string result;
  for (const char byte : bytes) {
    result += digits[static_cast<unsigned char>(byte) >> 4];
    result += digits[static_cast<unsigned char>(byte) & 15];
  }
  return result;
}

/// Takes up room at the sending end until exactly `free` bytes are left, with records for nobody.
inline void fill(Connection& at, std::size_t free) {
  Out& out = *at.out();
  const std::size_t overhead = Zel::NboAttrLog::recordOverhead;
  while (out.freeSpace() > free) {
    std::size_t length = std::min<std::size_t>(out.freeSpace() - free, Out::maxRecordSize - 1);
    const std::size_t rest = out.freeSpace() - free - length;
    length -= rest != 0 && rest < overhead ? overhead : 0;
    out.nextHeaderIs(MsgHeader::variable(nobody, 258));
    out.tokenIs(Zel::NboAttrLog::transactBegin);
    const std::string bytes(length - overhead, '.');
    out.putBytes(bytes.data(), bytes.size());
    out.tokenIs(Zel::NboAttrLog::transactEnd);
  }
}

/// The bytes of one record; `payload` writes into an `Out`.
template <class Payload>
std::string letter(EntityId to, AttributeId attr, Payload&& payload, std::uint32_t tag = 0) {
  const auto out = Zel::makeObject<Out>(std::size_t{1} << 16);
  out->nextHeaderIs(MsgHeader::variable(to, attr, tag));
  out->tokenIs(Zel::NboAttrLog::transactBegin);
  payload(*out);
  out->tokenIs(Zel::NboAttrLog::transactEnd);
  const auto bytes = out->pending();
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline std::string marker(EntityId to, AttributeId attr, unsigned type) {
  return letter(to, Zel::NboAttrLog::attrIdTransaction, [&](Out& out) {
    out.put32(static_cast<std::uint32_t>(attr));
    out.put32(type);
    out.put32(0);
  });
}

/// A text in records of up to `piece` bytes of it each, behind the key of an entry if there is one.
inline std::vector<std::string> texts(EntityId to, AttributeId attr, const String8& text,
                                      std::size_t piece, std::optional<double> key = {}) {
  std::vector<std::string> letters;
  String8::IteratorConst at(text);
  do {
    letters.push_back(letter(to, attr, [&](Out& out) {
      if (key) {
        Zel::appendWire(out, *key);
      }
      out.chunkLimitIs(piece + sizeof(std::uint32_t));
      out.putChunk(at);
    }));
  } while (!at.eot());
  return letters;
}

/// Gives bytes to an end, which applies what is whole.
inline void feed(Connection& to, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto space = to.inputSpace();
    if (space.empty()) {
      return; // it is down
    }
    const std::size_t count = std::min(space.size(), bytes.size());
    std::memcpy(space.data(), bytes.data(), count);
    to.inputReceived(count);
    bytes.remove_prefix(count);
    to.service();
  }
}

inline Zel::ConnectionLimits rings(std::size_t capacity) {
  Zel::ConnectionLimits limits;
  limits.outCapacity = limits.inCapacity = capacity;
  return limits;
}

/// An end that exports one entity, with nobody at the other end: the first flow has been taken
/// away.
template <class T>
class Writer {
public:
  using TypeAdapter = typename T::ZelNboAttrLogSa;

  explicit Writer(const Ptr<T>& exported, unsigned flags = 0,
                  std::size_t ring = std::size_t{1} << 18)
      : connection(Zel::makeObject<Connection>(Connection::End::first, "somebody", rings(ring))),
        entity(exported),
        adapter(Zel::ptrCast<TypeAdapter>(connection->demuxer()->exportIs(entity, Flags(flags)))) {
    worked();
  }
  ~Writer() { connection->close(); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  /// What is pending, taken away.
  std::vector<Seen> seen() { return records(*connection); }
  Briefs sent() { return briefs(seen()); }
  /// The same with all that the flow-out adds as long as anything happens.
  std::vector<Seen> seenWorked() {
    std::vector<Seen> all;
    for (bool more = true; more;) {
      more = connection->service();
      const std::string bytes = taken(*connection);
      more = more || !bytes.empty();
      for (Seen& one : parsed(bytes)) {
        all.push_back(std::move(one));
      }
    }
    return all;
  }
  Briefs worked() { return briefs(seenWorked()); }
  void freeIs(std::size_t free) { fill(*connection, free); }
  bool has(unsigned flag) const { return adapter->hasFlag(flag); }

  const Ptr<Connection> connection;
  const Ptr<T> entity;
  const Ptr<TypeAdapter> adapter;
};

/// An end that mirrors one entity, which somebody announces under `id`, and has got nothing yet.
template <class T>
class Reader {
public:
  using TypeAdapter = typename T::ZelNboAttrLogSa;
  static constexpr EntityId id{2, 0};

  explicit Reader(unsigned flags = 0, const Zel::ConnectionLimits& limits = {})
      : roots(Zel::makeObject<Zel::Dir>()),
        connection(Zel::makeObject<Connection>(
            Connection::End::second, "somebody", limits,
            Zel::makeObject<Zel::NboAttrLog::DirMounts>(roots, Flags(flags)))) {
    feed(letter(Zel::orphanEntityId, Zel::NboAttrLog::attrIdOrphan, [](Out& out) {
      out.put8(Zel::NboAttrLog::payloadSectionType);
      out.putString(String8(T::zelTypeName));
      out.put8(Zel::NboAttrLog::payloadSectionArgs);
      out.putString("mirror");
      out.put8(Zel::NboAttrLog::payloadSectionEntityId);
      out.putEntityId(id);
    }));
    entity = Zel::ptrCast<T>(roots->entity("mirror"));
    adapter = Zel::ptrCast<TypeAdapter>(Ptr<Adapter>(connection->demuxer()->adapter(id)));
  }
  ~Reader() { connection->close(); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  void feed(std::string_view bytes) { Wiretap::feed(*connection, bytes); }
  Briefs sent() { return briefs(records(*connection)); }
  const Demuxer::Counts& counts() const { return connection->demuxer()->counts(); }
  Zel::NboAttrLog::FlowIn* flowIn() const { return connection->demuxer()->flowIn(id); }
  std::string failure() const { return connection->failure().charPtr(); }

  const Ptr<Zel::Dir> roots;
  const Ptr<Connection> connection;
  Ptr<T> entity;
  Ptr<TypeAdapter> adapter;
};

} // namespace Wiretap
