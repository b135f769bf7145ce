#include <Zel/Session>

#include <Zel/Exception>
#include <Zel/ValueCodec>
#include <Zel/ZelType>

#include <algorithm>
#include <optional>
#include <string>

// Writes that depend on what stands there: the end that has the original decides.

namespace Zel {

using NboAttrLog::In;
using NboAttrLog::Out;

namespace {

using Value = Session::WriteIf::Value;

/// The row of an attribute whose values such a write can be about; null if there is none.
const AttrRow* decidedRow(const Entity& entity, AttributeId attribute) {
  const ZelType* const type = entity.fwkType();
  const AttrRow* const row =
      type != nullptr && type->table() != nullptr ? type->table()->row(attribute) : nullptr;
  const bool isDecided = row != nullptr && row->flows() && row->value != nullptr &&
                         (row->isCollection() || row->write != nullptr);
  return isDecided ? row : nullptr;
}

bool isOf(const Value& value, const ValueRecord* record) {
  return value.record == record ||
         (value.record != nullptr && record != nullptr && value.record->name == record->name);
}

/// Whether a write is of an entry that is not there yet.
bool isOfNew(const AttrRow& row, const Session::WriteIf& what) {
  return row.isCollection() && what.old.record == nullptr;
}

/// The row of what a write is about. Throws `RangeException`.
const AttrRow& rowOf(const Session::WriteIf& what) {
  const AttrRow* const row = what.entity ? decidedRow(*what.entity, what.attribute) : nullptr;
  if (row == nullptr) {
    throwRangeException("no value to write: attribute " + String8(std::to_string(what.attribute)));
  }
  if (!isOf(what.key, row->key) || !isOf(what.value, row->value) ||
      !(isOf(what.old, row->value) || isOfNew(*row, what))) {
    throwRangeException("values of another type: " + String8(row->name));
  }
  return *row;
}

/// Whether a value may stand under a key: one that brings its own under no other.
bool isUnder(const AttrRow& row, const void* key, const void* value) {
  if (row.kind != AttrKind::ownKey) {
    return true;
  }
  const AttrRow* const own = row.value->table().row(keyAttributeName(row));
  if (own == nullptr) {
    return false;
  }
  ValueSlot its(*row.key, [&](void* to) { own->read(value, to); });
  return row.key->equal(its.at(), key);
}

/// Whether the original is another program's.
bool isMirror(const Entity& entity) {
  const auto& demuxers = globalNboAttrLogDemuxerManager().nboDemuxerIterator();
  return std::any_of(demuxers.begin(), demuxers.end(), [&](NboAttrLog::Demuxer* demuxer) {
    Connection* const connection = demuxer->connection();
    const auto adapter =
        connection != nullptr ? entity.zelNboAttrLogSa(Ptr<const Out>(connection->out())) : nullptr;
    return adapter && adapter->hasFlag(StreamAdapter::flagImported);
  });
}

} // namespace

Session::WriteResult Session::decide(const WriteIf& what) {
  const AttrRow& row = rowOf(what);
  Entity* const entity = what.entity.ptr();
  if (row.isCollection() && !isUnder(row, what.key.at, what.value.at)) {
    return writeUnknown;
  }
  const bool isNew = isOfNew(row, what);
  if (row.isCollection() && row.collection->exists(entity, what.key.at) == isNew) {
    return isNew ? writeDiffers : writeUnknown;
  }
  const auto stands = [&](const void* value) {
    ValueSlot now(*row.value, [&](void* to) {
      row.isCollection() ? row.collection->read(entity, what.key.at, to) : row.read(entity, to);
    });
    return row.value->equal(now.at(), value);
  };
  if (!isNew && !stands(what.old.at)) {
    return writeDiffers;
  }
  try {
    row.isCollection() ? row.collection->write(entity, what.key.at, what.value.at)
                       : row.write(entity, what.value.at);
    return writeDone;
  } catch (const ReadOnlyException&) {
    return writeRefused;
  }
}

void Session::writeIf(const WriteIf& what, WriteAnswer answerTo) {
  const AttrRow& row = rowOf(what);
  // With what the record says besides, which is known later.
  constexpr std::size_t besides = 1 + 2 * sizeof(std::uint32_t) + sizeof(EntityId);
  std::uint8_t bytes[Out::maxRecordSize - NboAttrLog::recordOverhead - besides];
  WireWriter to(bytes, sizeof bytes);
  if (row.key != nullptr) {
    encodeValue(*row.key, what.key.at, to);
  }
  if (!isOfNew(row, what)) {
    encodeValue(*row.value, what.old.at, to);
  }
  encodeValue(*row.value, what.value.at, to);
  if (!isUp()) {
    tell(answerTo, writeLost);
    return;
  }
  writesWanted_.push_back({isOfNew(row, what) ? kindWriteNew : kindWriteIf,
                           what.entity,
                           what.attribute,
                           {reinterpret_cast<const char*>(bytes), sizeof bytes - to.room()},
                           std::move(answerTo)});
}

/// Asks for those that are not to wait for what is owed of their roots, in order.
void Session::writesAsk() {
  while (isOpen_ && isUp() && !writesWanted_.empty() && hasRoom()) {
    const WriteAsked& first = writesWanted_.front();
    const Ptr<const Entity::ZelNboAttrLogSa> adapter =
        Ptr<const Entity>(first.entity)->zelNboAttrLogSa(Ptr<const Out>(connection_->out()));
    const bool isMirrored =
        adapter && adapter->hasFlag(StreamAdapter::flagImported) && adapter->isInTree();
    if (isMirrored && owes(adapter->root())) {
      return;
    }
    const WriteAsked asked = std::move(writesWanted_.front());
    writesWanted_.pop_front();
    if (!isMirrored) {
      tell(asked.to, writeUnknown);
      continue;
    }
    const std::uint32_t serial = ++lastSerial_;
    writesAsked_.emplace(serial, asked.to);
    write(asked.kind, [&](WireWriter& out) {
      out.put32(serial);
      out.putEntityId(adapter->entityId());
      out.put32(static_cast<std::uint32_t>(asked.attribute));
      out.putBytes(asked.values.data(), asked.values.size());
    });
  }
}

/// Decides at once: what came before has been applied, and what comes behind has not.
void Session::writeIfRead(Kind kind, In& in) {
  const std::uint32_t serial = in.nextU32();
  const auto answer = [&](WriteResult result) {
    write(kindWritten, [&](WireWriter& out) {
      out.put32(serial);
      out.put8(result);
    });
  };
  try {
    answer(writeIfApply(kind, in));
  } catch (const RangeException&) { // values that cannot be, which is counted
    answer(writeUnknown);
    throw;
  }
}

Session::WriteResult Session::writeIfApply(Kind kind, In& in) {
  const EntityId id = in.nextEntityId();
  const AttributeId attribute = in.nextint();
  const Ptr<StreamAdapter> adapter(connection_->demuxer()->adapter(id));
  const Ptr<Entity> entity(adapter && adapter->isInTree() ? adapter->zelNotifierEntity() : nullptr);
  const AttrRow* const row = entity ? decidedRow(*entity, attribute) : nullptr;
  const bool isNew = kind == kindWriteNew;
  if (row == nullptr || (isNew && !row->isCollection())) {
    return writeUnknown;
  }
  std::optional<ValueSlot> key;
  WriteIf what{entity, attribute, {}, {}, {}};
  if (row->key != nullptr) {
    key.emplace(*row->key);
    decodeValue(*row->key, key->at(), in);
    what.key = {*row->key, key->at()};
  }
  ValueSlot old(*row->value);
  ValueSlot value(*row->value);
  if (!isNew) {
    decodeValue(*row->value, old.at(), in);
    what.old = {*row->value, old.at()};
  }
  decodeValue(*row->value, value.at(), in);
  what.value = {*row->value, value.at()};
  try {
    const bool isFull =
        isNew && row->collection->count(entity.ptr()) >= connection_->limits().maxKeys;
    if (!isFull && mayDecide(*adapter, attribute)) {
      return decide(what);
    }
    connection_->demuxer()->refusedInc();
  } catch (const std::exception& failure) { // of the program's: the peer has done nothing wrong
    log(LogLevel::error, String8("a write was not taken: ") + failure.what());
  }
  return writeRefused;
}

bool Session::mayDecide(const StreamAdapter& adapter, AttributeId attribute) const {
  const Entity& entity = *adapter.zelNotifierEntity();
  const auto at = std::find_if(exported_.begin(), exported_.end(), [&](const auto& member) {
    return member.second.root == adapter.root();
  });
  return at != exported_.end() && mayPeerWrite(at->second) && !isMirror(entity) &&
         exports_->mayWriteIf(*this, entity, attribute);
}

void Session::writtenRead(In& in) {
  const auto at = writesAsked_.find(in.nextU32());
  const std::uint8_t result = in.next8();
  if (at == writesAsked_.end() || result > writeUnknown) {
    throwRangeException("an answer to no write");
  }
  const WriteAnswer to = std::move(at->second);
  writesAsked_.erase(at);
  tell(to, static_cast<WriteResult>(result));
}

void Session::writesEnd() {
  for (const auto& [serial, to] : std::exchange(writesAsked_, {})) {
    tell(to, writeLost);
  }
  for (const WriteAsked& asked : std::exchange(writesWanted_, {})) {
    tell(asked.to, writeLost);
  }
}

} // namespace Zel
