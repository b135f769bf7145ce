#include <Zel/NboAttrLog>

#include <Zel/Exception>

#include <algorithm>
#include <limits>
#include <string>

namespace Zel::NboAttrLog {

namespace {

[[noreturn]] void malformed(const std::string& why) {
  throw AttrLogRecordException(String8("malformed record: " + why));
}

std::uint32_t wordLoad(const std::uint8_t* at) noexcept {
  std::uint32_t number;
  std::memcpy(&number, at, sizeof number);
  return WireWriter::networkOrder(number);
}

/// Takes in all of a header but the length.
void headerLoad(const std::uint8_t* at, MsgHeader& header) noexcept {
  std::memcpy(&header.entityId, at + 4, sizeof(EntityId));
  header.attrId = static_cast<AttributeId>(wordLoad(at + 12));
  header.variableSize = at[16];
  header.fixedSize = wordLoad(at + 17);
  header.recordTag = wordLoad(at + 21);
  header.reservedFlag = at[25];
}

} // namespace

Out::~Out() = default;

std::size_t Out::maxMessageSize() const { return maxRecordSize; }

In* Out::rawReverseLog() const noexcept {
  const Connection* const own = connection();
  return own != nullptr ? own->in().ptr() : nullptr;
}

Ptr<In> Out::reverseLog() const { return ptrCast<In>(reverse()); }

void operator<<(const Ptr<Out>& out, TypeId type) { out->putString(String8(type.name)); }

In::In(Connection* connection, std::size_t capacity)
    : Connection::In(connection), ring_(std::make_unique_for_overwrite<std::uint8_t[]>(capacity)) {
  ringIs(ring_.get(), capacity);
}

In::~In() = default;

std::span<std::uint8_t> In::space() noexcept {
  // One byte stays free, so that a full ring does not look like an empty one.
  std::size_t end = start_ + size_;
  end -= end >= capacity() ? capacity() : 0;
  const std::size_t room = capacity() - 1 - size_;
  return {ring_.get() + end, std::min(room, capacity() - end)};
}

bool In::recordIs(Record& record) {
  // The usual record: all of it there, in one piece, and well formed. Any other is looked at once
  // more, with more care.
  const std::size_t piece = std::min(size_, capacity() - start_);
  if (piece < recordOverhead) [[unlikely]] {
    return recordIsFolded(record);
  }
  const std::uint8_t* const at = begin() + start_;
  const std::uint32_t word = wordLoad(at);
  const std::size_t length = word & ~chunkFollowsBit;
  if (length < recordOverhead || length > piece || length >= Connection::Out::maxRecordSize)
      [[unlikely]] {
    return recordIsFolded(record);
  }
  MsgHeader& header = record.header;
  headerLoad(at, header);
  record.payload = length - recordOverhead;
  record.chunkFollows = chunkFollows_ = (word & chunkFollowsBit) != 0;
  const bool isWell =
      at[26] == transactBegin && at[length - 1] == transactEnd && header.variableSize <= 1 &&
      header.fixedSize == (header.variableSize == 1 ? 0 : record.payload) &&
      (header.recordTag == 0 || header.recordTag == childRecordTag) && header.reservedFlag == 0 &&
      header.attrId != std::numeric_limits<AttributeId>::min();
  if (!isWell) [[unlikely]] {
    return recordIsFolded(record);
  }
  recordSize_ = length;
  positionIs(at + headerSize + 1);
  limitIs(at + length - 1);
  return true;
}

/// The same of a record that is not there yet, lies around the ring's end, or is malformed.
bool In::recordIsFolded(Record& record) {
  if (size_ < headerSize) {
    return false;
  }
  // Up to the payload in one piece, which it is but around the ring's end.
  std::uint8_t folded[headerSize + 1];
  const std::uint8_t* at = begin() + start_;
  if (capacity() - start_ < sizeof folded) [[unlikely]] {
    const std::size_t first = capacity() - start_;
    std::memcpy(folded, at, first);
    std::memcpy(folded + first, begin(), sizeof folded - first);
    at = folded;
  }
  const std::uint32_t word = wordLoad(at);
  const std::size_t length = word & ~chunkFollowsBit;
  if (length < recordOverhead || length >= Connection::Out::maxRecordSize) {
    malformed("length " + std::to_string(length));
  }
  if (size_ < length) {
    return false;
  }
  record.chunkFollows = chunkFollows_ = (word & chunkFollowsBit) != 0;
  record.payload = length - recordOverhead;
  recordSize_ = length;
  headerLoad(at, record.header);
  const std::uint8_t opening = at[26];
  const std::uint8_t* const payload = advanced(begin() + start_, headerSize + 1);
  const std::uint8_t* const closing = advanced(payload, record.payload);
  if (opening != transactBegin || *closing != transactEnd) {
    malformed("its tokens are " + std::to_string(opening) + " and " + std::to_string(*closing));
  }
  const MsgHeader& header = record.header;
  if (header.variableSize > 1 ||
      header.fixedSize != (header.variableSize == 1 ? 0 : record.payload)) {
    malformed("a payload of " + std::to_string(record.payload) + " bytes that is told as " +
              std::to_string(header.variableSize) + ", " + std::to_string(header.fixedSize));
  }
  if (header.recordTag != 0 && header.recordTag != childRecordTag) {
    malformed("tag " + std::to_string(header.recordTag));
  }
  if (header.reservedFlag != 0) {
    malformed("reserved flag " + std::to_string(header.reservedFlag));
  }
  if (header.attrId == std::numeric_limits<AttributeId>::min()) {
    malformed("attribute id " + std::to_string(header.attrId));
  }
  positionIs(payload);
  limitIs(closing);
  return true;
}

void In::chunkRead(String8::Iterator& text) {
  const std::size_t count = nextU32();
  if (count != left()) {
    malformed("a chunk of " + std::to_string(count) + " bytes in " + std::to_string(left()));
  }
  if (count == 0 && chunkFollows_) {
    malformed("an empty chunk of a longer text");
  }
  if (count > static_cast<std::size_t>(std::numeric_limits<int>::max()) - text.data().length()) {
    malformed("a text of 2 GiB or more");
  }
  while (left() != 0) {
    const std::size_t piece = std::min(left(), static_cast<std::size_t>(end() - position()));
    text.append({reinterpret_cast<const char*>(position()), piece});
    nextBytes(piece);
  }
  text.positionIs(chunkFollows_ ? static_cast<int>(text.data().length()) : 0);
}

Demuxer* demuxFor(const In* in) noexcept {
  return in != nullptr && in->connection() != nullptr ? in->connection()->demuxer().ptr() : nullptr;
}

} // namespace Zel::NboAttrLog
