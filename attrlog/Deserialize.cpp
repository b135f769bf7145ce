#include <attrlog/Adapter.h>

#include <Zel/Demuxer>
#include <Zel/Exception>
#include <Zel/MsgChannel>
#include <Zel/NboAttrLogFlow>

#include <attrlog/Arguments.h>
#include <attrlog/Finally.h>

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace Zel {

using NboAttrLog::attrIdCompound;
using NboAttrLog::attrIdSyncMode;
using NboAttrLog::Demuxer;
using NboAttrLog::FlowIn;
using NboAttrLog::In;
using Entry = MsgChannel::Constrainer::ZelEntry;

void AttrLogAdapter::handleAttrDeserialization(AttributeId attr, DeserializationOptions options,
                                               unsigned size, const Ptr<In>& in) {
  if (in || !numberRead(attr)) {
    recordRead(attr, options, size, in);
  }
}

void AttrLogAdapter::recordRead(AttributeId attr, DeserializationOptions options, unsigned size,
                                const Ptr<In>& in) {
  In* const source = in ? in.ptr() : nboAttrLogOut() ? nboAttrLogOut()->rawReverseLog() : nullptr;
  if (source == nullptr) {
    return;
  }
  const bool apply = !in;
  const Ptr<Entity> kept(rawEntity());
  if (!kept) {
    return;
  }
  IsActiveAnchor active;
  if (apply) {
    if (hasFlag(flagReactorActive)) {
      throwInternalException("entity reactor is already active");
    }
    active.telIs(this);
    if (hasFlag(flagRemoteReadOnly) && !readOnlyRemoteOk(attr) && !convertedToWritable(false)) {
      const Connection* const connection = nboAttrLogOut()->connection();
      throwInternalException(
          "write-update from readonly proxy: " + rawEntity()->fullName() +
          " peerName: " + (connection != nullptr ? connection->peerName() : String8()));
    }
  }
  const std::size_t payload = source->left();
  std::size_t entityIdAt = 0; // in the payload of a compound record; 0 if it follows at once
  if ((attr == attrIdCompound || attr == -attrIdCompound) && !plan().steps.empty() &&
      plan().steps.front().kind == FlowKind::child) {
    attr = compoundRead(attr, *source, entityIdAt);
  }
  if (attr == attrIdSyncMode) {
    syncModeRead(*source);
    return;
  }
  const FlowStep* const at = plan().step(attr < 0 ? -attr : attr);
  if (at == nullptr || (attr < 0 && !isCollection(at->kind))) {
    ZelNboAttrLogSa::doBaseZelNboAttrLogSaMsg(attr, options, size, in);
  } else if (attr < 0) {
    deletionRead(*at, *source, apply);
  } else {
    switch (at->kind) {
    case FlowKind::plain:
      singularRead(*at, *source, apply);
      break;
    case FlowKind::text:
      textRead(*at, *source, size, apply);
      break;
    case FlowKind::keyed:
      keyedRead(*at, *source, apply);
      break;
    case FlowKind::keyedText:
      textEntryRead(*at, *source, size, apply);
      break;
    case FlowKind::child:
      childRead(*at, *source, payload, entityIdAt, apply);
    }
  }
}

/// Applies the record of a number, which is what most records are. False, with nothing done, if it
/// is anything else or there is anything unusual about it.
bool AttrLogAdapter::numberRead(AttributeId attr) {
  const FlowStep* const at = plan().step(attr);
  if (at == nullptr || at->numberSize == 0 || at->row->value->enumeration != nullptr ||
      hasFlag(flagReactorActive | flagRemoteReadOnly) || !nboAttrLogOut() ||
      rawEntity() == nullptr) {
    return false;
  }
  In* const source = nboAttrLogOut()->rawReverseLog();
  if (source == nullptr) {
    return false;
  }
  const Ptr<Entity> kept(rawEntity());
  IsActiveAnchor active;
  active.telIs(this);
  const WritePermission permission(*kept, at->row->id, mayPermit());
  if (at->numberSize == sizeof(std::uint32_t)) {
    const std::uint32_t value = source->nextU32();
    at->row->write(kept.ptr(), &value);
  } else {
    const std::uint64_t value = source->nextU64();
    at->row->write(kept.ptr(), &value);
  }
  return true;
}

void AttrLogAdapter::channelModeIs(unsigned mode) const {
  if (channelEntry() != nullptr) {
    static_cast<Entry*>(channelEntry())->modeIs(static_cast<Entry::Mode>(mode));
  }
}

/// Reads an enumerator; a number that none has goes through, and is counted.
void AttrLogAdapter::enumRead(const ValueRecord& record, void* to, In& in) {
  const int number = in.nextint();
  Demuxer* const demuxer = streamDemuxer();
  if (demuxer != nullptr && record.enumeration->row(number) == nullptr) {
    demuxer->unknownEnumsInc(1);
  }
  std::memcpy(to, &number, sizeof number);
}

void AttrLogAdapter::singularRead(const FlowStep& step, In& in, bool apply) {
  const AttrRow& row = *step.row;
  ValueSlot value(*row.value);
  if (row.value->enumeration != nullptr) {
    enumRead(*row.value, value.at(), in);
  } else {
    decodeValue(*row.value, value.at(), in);
  }
  if (apply) {
    const WritePermission permission(*rawEntity(), row.id, mayPermit());
    row.write(rawEntity(), value.at());
  } else {
    row.tell(*notifiee());
  }
}

void AttrLogAdapter::keyLimit(const FlowStep& step, const void* key) const {
  const CollectionOps& ops = *step.row->collection;
  const Connection* const connection = nboAttrLogOut()->connection();
  if (connection != nullptr && ops.count(rawEntity()) >= connection->limits().maxKeys &&
      ops.entry(rawEntity(), key) == nullptr) {
    throw AttrLogRecordException(String8(step.row->name) + " of " + rawEntity()->fullName() +
                                 ": more keys than are kept for a peer");
  }
}

/// Writes an entry, which then survives the sweep, whatever its notifiees do.
void AttrLogAdapter::entryApply(const FlowStep& step, const void* key, const void* value) {
  keyLimit(step, key);
  const CollectionOps& ops = *step.row->collection;
  const Ptr<Entity> kept(rawEntity());
  const Finally unmark([&] {
    if (PtrInterface* const entry = ops.entry(kept.ptr(), key)) {
      entry->zelMarkedForDeletionIs(false);
    }
  });
  const WritePermission permission(*kept, step.row->id, mayPermit());
  ops.write(kept.ptr(), key, value);
}

void AttrLogAdapter::keyedRead(const FlowStep& step, In& in, bool apply) {
  const AttrRow& row = *step.row;
  ValueSlot key(*row.key);
  decodeValue(*row.key, key.at(), in);
  ValueSlot value(*row.value);
  decodeValue(*row.value, value.at(), in);
  if (!apply) {
    row.collection->tellKey(*notifiee(), key.at());
    return;
  }
  if (row.kind == AttrKind::ownKey) { // it is kept under what it brings, whatever stands before it
    const AttrRow& brought = *row.value->table().row(keyAttributeName(row));
    ValueSlot own(*row.key, [&](void* to) { brought.read(value.at(), to); });
    entryApply(step, own.at(), value.at());
    return;
  }
  entryApply(step, key.at(), value.at());
}

void AttrLogAdapter::deletionRead(const FlowStep& step, In& in, bool apply) {
  const AttrRow& row = *step.row;
  ValueSlot key(*row.key);
  decodeValue(*row.key, key.at(), in);
  if (!apply) {
    row.collection->tellKey(*notifiee(), key.at());
  } else if (step.kind == FlowKind::child) {
    childGone(memberTake(*rawEntity(), step, key.at()));
  } else {
    const WritePermission permission(*rawEntity(), row.id, mayPermit());
    row.collection->erase(rawEntity(), key.at());
  }
}

namespace {

[[noreturn]] void brokenText(const FlowStep& step) {
  throw AttrLogRecordException("malformed record: " + String8(step.row->name) +
                               " goes on where another text is under way");
}

} // namespace

void AttrLogAdapter::textRead(const FlowStep& step, In& in, unsigned size, bool apply) {
  const AttrRow& row = *step.row;
  channelModeIs(Entry::receiving);
  if (!apply) {
    row.tell(*notifiee());
    return;
  }
  Demuxer& demuxer = *streamDemuxer();
  const Ptr<FlowIn> flow(demuxer.flowIn(entityId()));
  if (flow && flow->iter() != nullptr && (flow->aid() != row.id || flow->idx() != nullptr)) {
    brokenText(step);
  }
  String8::Iterator local;
  String8::Iterator* const text =
      flow ? zelFlowInIterator<String8::Iterator>(flow.ptr(), row.id, false) : &local;
  if (size != 0) {
    const ConnectionInSizeAnchor bounds(in, size);
    in.chunkRead(*text);
  }
  if (text->position() != 0) {
    const Ptr<FlowIn> kept = demuxer.flowInIs(entityId());
    if (!flow) {
      zelFlowInIteratorIs(kept.ptr(), row.id, local);
    }
    demuxer.partialTextIs(*kept, text->data().length());
    return;
  }
  const String8 whole(*text);
  if (flow) {
    textEnd(*flow);
  }
  const WritePermission permission(*rawEntity(), row.id, mayPermit());
  row.write(rawEntity(), &whole);
}

void AttrLogAdapter::textEntryRead(const FlowStep& step, In& in, unsigned size, bool apply) {
  const AttrRow& row = *step.row;
  const ConnectionInSizeAnchor bounds(in, size);
  ValueSlot key(*row.key);
  decodeValue(*row.key, key.at(), in);
  channelModeIs(Entry::receiving);
  if (!apply) {
    row.collection->tellKey(*notifiee(), key.at());
    return;
  }
  Demuxer& demuxer = *streamDemuxer();
  const Ptr<FlowIn> flow(demuxer.flowIn(entityId()));
  const bool goesOn = flow && flow->idx() != nullptr && flow->aid() == row.id &&
                      isSameKey(*row.key, flow->idx(), key.at());
  if (!goesOn && in.chunkFollows() && flow && flow->iter() != nullptr) {
    brokenText(step);
  }
  String8::Iterator local;
  String8::Iterator* const text =
      goesOn ? zelFlowInIterator<String8::Iterator>(flow.ptr(), row.id, false) : &local;
  in.chunkRead(*text);
  if (text->position() != 0) {
    const Ptr<FlowIn> kept = demuxer.flowInIs(entityId());
    if (!goesOn) {
      keyLimit(step, key.at());
      kept->idxIs(zelHeapCopy(*row.key, key.at()), row.key);
      zelFlowInIteratorIs(kept.ptr(), row.id, local);
    }
    demuxer.partialTextIs(*kept, text->data().length());
    return;
  }
  const String8 whole(*text);
  if (goesOn) {
    textEnd(*flow);
  }
  entryApply(step, key.at(), &whole);
}

namespace {

/// What a member is made with behind its key. As long as that is little, it takes no heap.
class Arguments {
public:
  explicit Arguments(std::size_t count)
      : many_(count > few ? count : 0), manyAt_(many_.size()),
        values_(many_.empty() ? std::span(few_) : std::span(many_)),
        at_(many_.empty() ? fewAt_.data() : manyAt_.data()) {}

  /// A default value behind those that are there; yields where it is.
  void* add(const ValueRecord& type) {
    void* const value = values_[count_].emplace(type).at();
    at_[count_++] = value;
    return value;
  }
  const void* const* data() const noexcept { return at_; }

private:
  static constexpr std::size_t few = 4;
  using Value = std::optional<ValueSlot>;

  std::array<Value, few> few_;
  std::array<const void*, few> fewAt_;
  std::vector<Value> many_;
  std::vector<const void*> manyAt_;
  const std::span<Value> values_;
  const void** const at_;
  std::size_t count_ = 0;
};

/// Members of entities' directories are entities.
Ptr<Entity> memberMade(Ptr<PtrInterface> made) {
  return Ptr<Entity>::adopt(static_cast<Entity*>(made.release()));
}

/// Writes what a mirrored member is announced with to one that is there. Each is a write of its
/// own, so the directory must not find a difference: it has permission for none of them.
void argumentsApply(const CollectionOps& ops, Entity& member, StreamAdapter* adapter,
                    const void* const* values, bool mayPermit) {
  forArguments(ops, [&](const AttrRow& row) {
    if (row.write != nullptr) {
      IsActiveAnchor active;
      active.telIs(adapter);
      const WritePermission permission(member, row.id, mayPermit);
      row.write(&member, *values);
    }
    ++values;
  });
}

} // namespace

AttributeId AttrLogAdapter::compoundRead(AttributeId attr, In& in, std::size_t& entityIdAt) {
  const AttributeId collection = plan().steps.front().row->id;
  const std::size_t size = in.left();
  const std::uint8_t* const start = in.position();
  const std::size_t valueOffset = in.nextU16();
  entityIdAt = in.nextU16();
  while (size - in.left() < valueOffset) {
    const AttributeId id = in.nextint();
    if (id == collection || id == -collection) {
      if (valueOffset > size) {
        throwRangeException("record too short");
      }
      in.positionIs(in.advanced(start, valueOffset));
      attr = id;
      break;
    }
  }
  if (attr > 0) {
    in.nextU32();
  }
  return attr;
}

void AttrLogAdapter::childRead(const FlowStep& step, In& in, std::size_t payload,
                               std::size_t entityIdAt, bool apply) {
  const AttrRow& row = *step.row;
  const CollectionOps& ops = *row.collection;
  ValueSlot key(*row.key);
  decodeValue(*row.key, key.at(), in);
  Arguments arguments(ops.arguments.size());
  for (const ValueRecord* const type : ops.arguments) {
    void* const value = arguments.add(*type);
    if (type->enumeration != nullptr) {
      enumRead(*type, value, in);
    } else {
      decodeValue(*type, value, in);
    }
  }
  if (entityIdAt != 0) {
    const std::size_t consumed = payload - in.left();
    if (entityIdAt < consumed) {
      throwRangeException("member's id inside its key");
    }
    in.nextBytes(entityIdAt - consumed);
  }
  const Expect expected(NameInUseException::id);
  if (!apply) {
    ops.tellKey(*notifiee(), key.at());
    return;
  }
  const std::uint8_t* const idPlace = in.position();
  const EntityId id = in.nextEntityId();
  in.positionIs(idPlace); // the id stays to be read where the member is attached
  Demuxer* const demuxer = streamDemuxer();
  if (demuxer != nullptr && !hasFlag(flagImported) && demuxer->hasGiven(id)) {
    const StreamAdapter* const known = demuxer->adapter(id);
    if (known == nullptr || !known->isInTree()) {
      demuxer->refusedInc(); // deleted here meanwhile, as the peer is going to read
      return;
    }
  }
  keyLimit(step, key.at());
  Entity* const entity = rawEntity();
  const Ptr<Entity> keptEntity(entity);
  const auto make = [&] {
    const WritePermission permission(*entity, row.id, mayPermit());
    return memberMade(ops.create(entity, key.at(), arguments.data()));
  };
  const auto remove = [&] {
    childGone(memberTake(*entity, step, key.at()));
    reactorActiveIs(true); // the deletion was the echo
  };
  Ptr<Entity> child(static_cast<Entity*>(ops.entry(entity, key.at())));
  if (child && demuxer != nullptr && demuxer->checkEphemeralEntityDeletion(child.ptr(), id, true)) {
    remove();
    child = nullptr;
  }
  // Arguments may change a member that is there, which is this record's doing too.
  const Ptr<ZelNboAttrLogSa> memberAdapter = zelChildAdapter(child.ptr());
  if (child && child->zelIsMirrored()) {
    argumentsApply(ops, *child, memberAdapter.ptr(), arguments.data(), mayPermit());
  }
  IsActiveAnchor memberActive;
  {
    const DeserializingEidAnchor anchor(id, entity);
    memberActive.telIs(memberAdapter.ptr());
    try {
      child = make();
    } catch (const NameInUseException&) {
      remove();
      child = make();
    }
  }
  memberActive.telIs(nullptr);
  if (hasFlag(flagReactorActive) && rawEntity() != nullptr) {
    ops.tellKey(*notifiee(), key.at()); // nobody was told, for the member was there
  }
  child->zelMarkedForDeletionIs(false);
  channelModeIs(Entry::receiving);
}

void AttrLogAdapter::syncModeRead(In& in) {
  const SyncMode mode = SyncModeInstance(in.nextU32());
  if (hasUnifiedEntityId()) {
    for (const Ptr<Demuxer>& demuxer : globalNboAttrLogDemuxerManager().demuxers()) {
      const Ptr<StreamAdapter> same(demuxer->adapter(entityId()));
      if (same && same->zelNotifierEntity() == rawEntity()) {
        same->flagsIs(flagSyncFanOut, true);
        const Finally done([&] { same->flagsIs(flagSyncFanOut, false); });
        same->syncModeIs(mode);
      }
    }
  }
  channelModeIs(Entry::settled);
  if (mode == syncModeSynced) {
    reactorActiveIs(false);
  }
  const Demuxer* const demuxer = streamDemuxer();
  if (demuxer != nullptr && demuxer->policy() != nullptr && rawEntity() != nullptr) {
    const Ptr<Entity> entity(rawEntity());
    mode == syncModeSynced ? demuxer->policy()->synced(entity)
                           : demuxer->policy()->resyncing(entity);
  }
}

} // namespace Zel
