#include <attrlog/Write.h>

#include <Zel/NboAttrLogFlow>
#include <attrlog/Finally.h>

namespace Zel {

using NboAttrLog::MsgHeader;
using TextPosition = String8::IteratorConst;

namespace {

/// Bytes of a record that carries a key, at most.
std::size_t sizeWithKey(const ValueRecord& type, const void* key) {
  std::uint8_t bytes[NboAttrLog::Out::maxRecordSize];
  WireWriter writer(bytes, sizeof bytes);
  encodeValue(type, key, writer);
  return static_cast<std::size_t>(writer.at() - bytes) + NboAttrLog::recordOverhead + 1;
}

} // namespace

void AttrLogAdapter::zelOnKey(AttributeId attr, const void* key) {
  const FlowStep& keyed = step(attr);
  const CollectionOps& ops = *keyed.row->collection;
  PtrInterface* const entry = ops.entry(rawEntity(), key);
  if (keyed.kind == FlowKind::child) {
    zelSerializeChild(attr, key, static_cast<Entity*>(entry));
  } else {
    entrySerialize(keyed, key, entry);
  }
}

/// Writes or marks what is under a key; null if the key has gone.
void AttrLogAdapter::entrySerialize(const FlowStep& step, const void* key, PtrInterface* entry) {
  if (entry == nullptr) {
    const ValueSlot none(*step.row->value);
    zelSerializeSing(step.row->id, key, const_cast<ValueSlot&>(none).at(), true);
    return;
  }
  const Ptr<PtrInterface> kept(entry);
  zelSerializeSing(step.row->id, key, step.row->collection->entryValue(entry), false);
}

bool AttrLogAdapter::zelSerializeSing(AttributeId attr, const void* key, const void* value,
                                      bool deleted) {
  const FlowStep& keyed = step(attr);
  if (keyed.kind == FlowKind::keyedText) {
    return serializeTextEntry(keyed, key, *static_cast<const String8*>(value), deleted);
  }
  serializeKeyed(keyed, key, value, deleted);
  return true;
}

void AttrLogAdapter::serializeKeyed(const FlowStep& step, const void* key, const void* value,
                                    bool deleted) {
  if (const Gate open = gate(step); open != Gate::pass) {
    if (open == Gate::notDone) {
      keyOweBehind(step, key, true);
    }
    return;
  }
  const AttributeId attr = step.row->id;
  const bool sufficient = hasRoom(*nboAttrLogOut());
  if (hasFlag(flagNoFlowOut)) {
    if (!isScheduled() && (!sufficient || hasFlag(flagForceFlowOut))) {
      if (EntityFlowOut* const flow = absorb(attr)) {
        keyOwe(*flow, attr, key, true);
      }
      return;
    }
  } else if (prepareImmediateTransmission(attr, false) && sufficient) {
    owed()->dirtyKeys(attr).del(key);
  } else {
    keyOwe(*owed(), attr, key, true);
    return;
  }
  if (deleted) {
    writeDeletion(step, key);
    return;
  }
  write(step, MsgHeader::variable(entityId(), attr), [&](WireWriter& out) {
    encodeValue(*step.row->key, key, out);
    encodeValue(*step.row->value, value, out);
  });
}

void AttrLogAdapter::writeDeletion(const FlowStep& step, const void* key) {
  write(step, MsgHeader::variable(entityId(), -step.row->id),
        [&](WireWriter& out) { encodeValue(*step.row->key, key, out); });
}

void AttrLogAdapter::valueEnq(const FlowStep& step, const TextPosition& position, const void* key) {
  zelFlowOutValueEnq(flowOut(), position);
  zelFlowOutValueKeyEnq(flowOut(), *step.row->key, key);
}

bool AttrLogAdapter::serializeTextEntry(const FlowStep& step, const void* key, const String8& text,
                                        bool deleted) {
  if (const Gate open = gate(step); open != Gate::pass) {
    EntityFlowOut* const behind = open == Gate::notDone ? owedBehind(step.row->id) : nullptr;
    if (behind != nullptr && !textEntryRestart(*behind, step, key, TextPosition(text), deleted)) {
      keyOwe(*behind, step.row->id, key, true);
    }
    return open == Gate::done;
  }
  const AttributeId attr = step.row->id;
  const NboAttrLog::Out& out = *nboAttrLogOut();
  const std::size_t bare = sizeWithKey(*step.row->key, key);
  std::size_t needed = deleted ? bare : bare + sizeof(std::uint32_t) + text.length();
  const bool enough = freeSpace() >= needed + textBeginSpace;
  EntityFlowOut* const flow = hasFlag(flagNoFlowOut) ? nullptr : owed();
  TextPosition at(text);
  if (flow != nullptr && isScheduled()) {
    if (!deleted && flow->valueIter() != nullptr) {
      at = zelFlowOutValueDeq<TextPosition>(flowOut());
      needed = bare + sizeof(std::uint32_t) + at.rest().size();
    }
  } else if (flow != nullptr) {
    if (textEntryRestart(*flow, step, key, at, deleted)) {
      return false;
    }
    // The abort of a text that was under way goes before anything else of this collection.
    if (!prepareImmediateTransmission(attr, false) || flow->pendingAbort()[attr] != nullptr ||
        needed > NboAttrLog::Out::maxRecordSize || !enough) {
      keyOwe(*flow, attr, key, true);
      return false;
    }
    flow->dirtyKeys(attr).del(key);
  } else if (deleted && !enough && !isScheduled()) {
    if (EntityFlowOut* const made = absorb(attr)) {
      keyOwe(*made, attr, key, true);
    }
    return false;
  }
  if (deleted) {
    writeDeletion(step, key);
    return true;
  }
  for (bool continuing = at.position() != 0;; continuing = true) {
    if (continuing && at.eot()) {
      return true;
    }
    if (flow != nullptr) {
      if ((isScheduled() && !continueFlowOut()) ||
          freeSpace() < std::min(needed, out.maxMessageSize())) {
        valueEnq(step, at, key);
        if (!isScheduled()) {
          keyOwe(*flow, attr, key, true);
        }
        return false;
      }
    } else if (continuing || (!enough && freeSpace() < textBeginSpace)) {
      return textEntryAbsorbed(step, key, at);
    }
    writeText(step, key, at);
    if (at.eot()) {
      return true;
    }
  }
}

/// If the text that is under way belongs to this entry, the peer drops what it has of it, and gets
/// the new one from the start, or hears that the entry has gone. Whether it does.
bool AttrLogAdapter::textEntryRestart(EntityFlowOut& flow, const FlowStep& step, const void* key,
                                      const TextPosition& position, bool deleted) {
  const AttributeId attr = step.row->id;
  if (flow.attrId() != attr || flow.valueIterKey() == nullptr ||
      !isSameKey(*step.row->key, flow.valueIterKey(), key)) {
    return false;
  }
  prepareImmediateTransmission(attr, true);
  flow.pendingAbortIs(attr, true);
  zelFlowOutValueDeq<TextPosition>(flowOut());
  if (deleted) {
    zelHeapFree(*step.row->key, flow.valueIterKey());
    flow.valueIterKeyIs(nullptr);
    keyOwe(flow, attr, key, true);
  } else {
    zelFlowOutValueEnq(flowOut(), position);
  }
  return true;
}

bool AttrLogAdapter::textEntryAbsorbed(const FlowStep& step, const void* key,
                                       const TextPosition& position) {
  if (EntityFlowOut* const made = absorb(step.row->id)) {
    made->dirtyKeys(step.row->id).mark(key, true);
    made->outstandingKeysIs(1);
    valueEnq(step, position, key);
  }
  return false;
}

} // namespace Zel
