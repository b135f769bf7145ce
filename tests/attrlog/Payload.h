#pragma once

#include "Bytes.h"

#include <Zel/NboAttrLog>

#include <string>

/// The payload of a record into which `write` puts values.
template <class Write>
std::string payloadOf(Write&& write) {
  const auto out = Zel::makeObject<Zel::NboAttrLog::Out>(65536U);
  out->nextHeaderIs(Zel::NboAttrLog::MsgHeader::variable({2, 0}, 258));
  out << Zel::NboAttrLog::transactBegin;
  write(Zel::Ptr<Zel::NboAttrLog::Out>(out));
  out << Zel::NboAttrLog::transactEnd;
  const std::string_view record = viewOf(out->pending());
  return hexOf(record.substr(27, record.size() - 28));
}

/// A receiving half without a connection, into whose ring bytes are put at any place.
class Ring : public Zel::NboAttrLog::In {
public:
  explicit Ring(std::size_t capacity) : In(nullptr, capacity) {}

  /// These bytes are to be read next, the first of them at that place of the ring.
  void put(std::string_view hex, std::size_t place = 0) {
    const std::string bytes = bytesOf(hex);
    positionIs(begin() + place);
    limitIs(advanced(position(), bytes.size()));
    overwrite(position(), bytes.data(), bytes.size());
  }
  std::size_t place() const { return static_cast<std::size_t>(position() - begin()); }
};

inline Zel::Ptr<Ring> ringOf(std::string_view hex) {
  auto ring = Zel::makeObject<Ring>(bytesOf(hex).size() + 1);
  ring->put(hex);
  return ring;
}

/// Calls `read` with these bytes to be read, from every place of a ring that just holds them, so
/// that every place of the bytes lies at the ring's end once.
template <class Read>
void atEveryPlace(std::string_view hex, Read&& read) {
  const std::size_t capacity = bytesOf(hex).size() + 1;
  const auto ring = Zel::makeObject<Ring>(capacity);
  for (std::size_t place = 0; place < capacity; ++place) {
    ring->put(hex, place);
    read(*ring);
  }
}
