#include "Wire.h"

#include <Zel/StreamAdapter>
#include <simulation/Random.h>

#include <cstring>

namespace Histories {

namespace Log = Zel::NboAttrLog;

namespace {

std::uint32_t numberAt(const char* at) {
  std::uint32_t number = 0;
  std::memcpy(&number, at, sizeof number);
  return Zel::WireWriter::networkOrder(number);
}

} // namespace

unsigned WireRecord::kind() const {
  return isSession() && !payload.empty() ? static_cast<unsigned char>(payload.front()) : 0;
}

std::uint32_t WireRecord::number(std::size_t at) const {
  return at + 4 <= payload.size() ? numberAt(payload.data() + at) : 0;
}

void WireReader::take(std::span<const std::uint8_t> bytes,
                      const std::function<void(const WireRecord&)>& each) {
  bytes_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  std::size_t done = 0;
  while (bytes_.size() - done >= Log::recordOverhead) {
    const char* const at = bytes_.data() + done;
    const std::uint32_t word = numberAt(at);
    const std::size_t length = word & ~Log::chunkFollowsBit;
    if (bytes_.size() - done < length) {
      break;
    }
    WireRecord record;
    std::memcpy(&record.entity, at + 4, sizeof record.entity);
    record.attribute = static_cast<Zel::AttributeId>(numberAt(at + 12));
    record.isMember = numberAt(at + 21) == Log::childRecordTag;
    record.textFollows = (word & Log::chunkFollowsBit) != 0;
    record.payload = {at + Log::headerSize + 1, length - Log::recordOverhead};
    each(record);
    done += length;
  }
  bytes_.erase(0, done);
}

void WireWay::send(std::span<const std::uint8_t> bytes, const Each& each) {
  bytesSent_ += bytes.size();
  writer_.take(bytes, [&](const WireRecord& record) {
    each(record);
    note(sent_, record);
    ++onTheirWay_[hash(record)];
    changesSent_ += !record.isSession() && !record.isSyncMode() ? 1 : 0;
  });
}

void WireWay::arrive(std::span<const std::uint8_t> bytes, const Each& each) {
  bytesArrived_ += bytes.size();
  reader_.take(bytes, [&](const WireRecord& record) {
    each(record);
    note(arrived_, record);
    const auto at = onTheirWay_.find(hash(record));
    if (at != onTheirWay_.end() && --at->second == 0) {
      onTheirWay_.erase(at);
    }
  });
}

bool WireWay::isOnItsWay(const WireRecord& record) const {
  return onTheirWay_.count(hash(record)) != 0;
}

/// Equal for announcements of one member, for markers of one collection, and for changes of one
/// attribute of an entity.
std::uint64_t WireWay::hash(const WireRecord& record) {
  std::string_view what;
  if (record.isMember && record.payload.size() >= 8) {
    what = record.payload.substr(0, record.payload.size() - 8); // all but the id
  } else if (record.isMarker() || record.isSession()) {
    what = record.payload.substr(0, 8);
  }
  const std::uint64_t number = std::hash<std::string_view>()(what) ^ record.entity.value();
  return Simulation::Random::mixed(number) + static_cast<std::uint32_t>(record.attribute);
}

void WireWay::note(Open& open, const WireRecord& record) {
  const std::uint64_t id = record.entity.value();
  if (record.isSyncMode()) {
    if (record.number(0) == Zel::StreamAdapter::syncModeResync) {
      open.walks.insert(id);
    } else {
      open.walks.erase(id);
      open.walked.insert(id);
    }
  } else if (record.isMarker()) {
    const std::pair collection(id, record.number(0));
    if (record.number(4) == Zel::StreamAdapter::attrTransactionBegin) {
      open.collections.insert(collection);
    } else if (record.number(4) == Zel::StreamAdapter::attrTransactionEnd) {
      open.collections.erase(collection);
    } else {
      open.texts.erase(id);
    }
  } else if (record.textFollows) {
    open.texts[id] = record.attribute;
  } else if (const auto at = open.texts.find(id);
             at != open.texts.end() && at->second == record.attribute) {
    open.texts.erase(at);
  }
}

} // namespace Histories
