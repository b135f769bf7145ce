#pragma once

#include <simulation/Link.h>

#include <Zel/NboAttrLog>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <unordered_map>

namespace Histories {

/// One record as it stands on the wire.
struct WireRecord {
  Zel::EntityId entity;
  Zel::AttributeId attribute = 0;
  bool isMember = false;    ///< announces one
  bool textFollows = false; ///< another part of the text does
  std::string_view payload;

  bool isSession() const { return attribute == Zel::NboAttrLog::attrIdSession; }
  bool isSyncMode() const { return attribute == Zel::NboAttrLog::attrIdSyncMode; }
  bool isMarker() const { return attribute == Zel::NboAttrLog::attrIdTransaction; }
  /// A change of an attribute, an entry or a member.
  bool isChange() const { return attribute < 0 || attribute >= 258; }
  /// What is said in a session; 0 if nothing is.
  unsigned kind() const;
  /// The number at a place of the payload.
  std::uint32_t number(std::size_t at) const;
};

/// Takes records out of bytes.
class WireReader {
public:
  void take(std::span<const std::uint8_t> bytes,
            const std::function<void(const WireRecord&)>& each);
  /// Whether the last record has come in part.
  bool isInRecord() const { return !bytes_.empty(); }

private:
  std::string bytes_;
};

/// What goes over a link in one direction.
class WireWay {
public:
  /// What is between its first record and its last, as far as it has been sent, or has arrived.
  struct Open {
    std::set<std::uint64_t> walks;                                 ///< ids of roots
    std::set<std::uint64_t> walked;                                ///< those whose walk is over
    std::set<std::pair<std::uint64_t, std::uint32_t>> collections; ///< of entities
    std::map<std::uint64_t, Zel::AttributeId> texts;               ///< of entities
  };

  const Open& sent() const { return sent_; }
  const Open& arrived() const { return arrived_; }
  bool isInRecord() const { return reader_.isInRecord(); }
  std::uint64_t bytesSent() const { return bytesSent_; }
  std::uint64_t bytesArrived() const { return bytesArrived_; }
  /// Records sent that say something of an entity: all but those of the session and of walks.
  std::uint64_t changesSent() const { return changesSent_; }

  /// Whether a record like this one is on its way.
  bool isOnItsWay(const WireRecord& record) const;

  using Each = std::function<void(const WireRecord&)>;
  void send(std::span<const std::uint8_t> bytes, const Each& each);
  void arrive(std::span<const std::uint8_t> bytes, const Each& each);

private:
  static std::uint64_t hash(const WireRecord& record);
  static void note(Open& open, const WireRecord& record);

  WireReader writer_;
  WireReader reader_;
  Open sent_;
  Open arrived_;
  std::uint64_t bytesSent_ = 0;
  std::uint64_t bytesArrived_ = 0;
  std::uint64_t changesSent_ = 0;
  std::unordered_map<std::uint64_t, unsigned> onTheirWay_;
};

} // namespace Histories
