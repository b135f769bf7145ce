#include <attrlog/Adapter.h>

#include <Zel/NboAttrLogFlow>

namespace Zel {

using NboAttrLog::FlowOut;

bool AttrLogAdapter::zelSerializeColl(AttributeId attr) {
  const FlowStep& collection = step(attr);
  if (hasFlag(flagSyncFanOut) || (!hasFlag(flagReactorActive) && handlingFlowInFor(attr))) {
    return false;
  }
  if (hasFlag(flagChildPending | flagMuted | flagReactorActive) || !hasFlag(flagStreaming) ||
      !nboAttrLogOut() || isGone()) {
    return true;
  }
  const Ptr<FlowOut> kept = flowOut();
  EntityFlowOut* const flow = owed();
  if (flow == nullptr || owes(collection, *flow)) {
    readOnlyCheck(collection);
  }
  if (flow == nullptr) {
    walk(collection, nullptr);
    return true;
  }
  if (!textResume(collection, *flow)) {
    return false;
  }
  if (!flow->hasBit(collection) && flow->endDeferred() != attr) {
    if (flow->endDeferred() != 0) {
      return false; // one collection's end at a time
    }
    switch (walk(collection, flow)) {
    case Walked::suspended:
      return false;
    case Walked::stoppedAtLast:
      return walkEnd(collection, *flow);
    case Walked::ranOut:
      break;
    }
  }
  return keysWork(collection, *flow);
}

/// Whether anything of a collection is owed.
bool AttrLogAdapter::owes(const FlowStep& step, const EntityFlowOut& flow) const {
  return !flow.hasBit(step) || !flow.dirtyKeys(step.row->id).empty() ||
         (flow.attrId() == step.row->id && flow.valueIterKey() != nullptr);
}

/// Goes on with the text of an entry that is under way; whether none is any more.
bool AttrLogAdapter::textResume(const FlowStep& step, EntityFlowOut& flow) {
  if (step.kind != FlowKind::keyedText || flow.attrId() != step.row->id ||
      flow.valueIterKey() == nullptr) {
    return true;
  }
  void* const heap = flow.valueIterKey();
  ValueSlot key(*step.row->key, [&](void* at) { step.row->key->copy(at, heap); });
  zelHeapFree(*step.row->key, heap);
  flow.valueIterKeyIs(nullptr);
  if (!serializeTextEntry(step, key.at(), String8(), false)) {
    flow.dirtyKeys(step.row->id).mark(key.at(), true);
    return false;
  }
  flow.dirtyKeys(step.row->id).del(key.at());
  return true;
}

/// Marks every key as owed, but those that equal nothing, which no search finds again.
void AttrLogAdapter::allMark(const FlowStep& step, EntityFlowOut& flow) {
  const AttrRow& row = *step.row;
  CollectionPosition at(row.collection->iteration,
                        [&](void* to) { row.collection->iteration.first(to, rawEntity()); });
  for (; at; at.advance()) {
    ValueSlot key(*row.key, [&](void* to) { at.key(to); });
    if (row.key->equal(key.at(), key.at())) {
      flow.dirtyKeys(row.id).mark(key.at(), true);
    }
  }
}

/// Sends a marker of a walk.
void AttrLogAdapter::walkMark(const FlowStep& step, EntityFlowOut& flow, AttrTransactionType type) {
  sendTransactionMarker(step.row->id, type, 0);
  flow.openWalkIs(type == attrTransactionBegin ? step.row->id : 0);
}

/// Sends the entries from the bookmark on, or all of them, as far as the run goes.
AttrLogAdapter::Walked AttrLogAdapter::walk(const FlowStep& step, EntityFlowOut* flow) {
  const AttrRow& row = *step.row;
  const CollectionOps& ops = *row.collection;
  const Ptr<Entity> kept(rawEntity());
  if (flow != nullptr && flow->bookmark() == nullptr) {
    walkMark(step, *flow, attrTransactionBegin);
  }
  if (flow != nullptr && ops.hasUnorderedKey != nullptr && ops.hasUnorderedKey(rawEntity())) {
    // Among such keys no bookmark can be found again. Each key is marked instead, and the end is
    // told when the last of them has been sent.
    freeResyncState(flowOut());
    allMark(step, *flow);
    flow->endDeferredIs(row.id);
    return Walked::ranOut;
  }
  CollectionPosition at(ops.iteration, [&](void* to) {
    void* const from = flow != nullptr ? flow->bookmark() : nullptr;
    if (from == nullptr) {
      ops.iteration.first(to, rawEntity());
      return;
    }
    ops.iteration.fromKey(to, rawEntity(), from);
    zelHeapFree(*row.key, from);
    flow->bookmarkIs(nullptr);
  });
  const auto bookmark = [&] {
    ValueSlot next(*row.key, [&](void* to) { at.key(to); });
    flow->bookmarkIs(zelHeapCopy(*row.key, next.at()));
  };
  for (; at; at.advance()) {
    if (flow != nullptr && !hasRoom(*nboAttrLogOut())) {
      bookmark(); // the marker has taken the room
      return Walked::suspended;
    }
    ValueSlot key(*row.key, [&](void* to) { at.key(to); });
    const Ptr<PtrInterface> entry(at.entry());
    if (step.kind == FlowKind::child) {
      zelSerializeChild(row.id, key.at(), static_cast<Entity*>(entry.ptr()));
    } else {
      entrySerialize(step, key.at(), entry.ptr());
    }
    if (rawEntity() == nullptr || (flow != nullptr && owed() != flow)) {
      return Walked::suspended;
    }
    if (flow == nullptr) {
      continue;
    }
    const bool suspended = flow->hasDataBit(FlowOut::dataBitSuspended);
    if (!suspended && !flow->dirtyKeys(row.id).isFalse(key.at())) { // whose turn is after the walk
      flow->dirtyKeys(row.id).del(key.at());
    }
    if (!suspended && continueFlowOut()) {
      continue;
    }
    if (!suspended) {
      at.advance();
    }
    if (!at) {
      return Walked::stoppedAtLast;
    }
    bookmark();
    return Walked::suspended;
  }
  return Walked::ranOut;
}

/// The walk has stopped at the last entry.
bool AttrLogAdapter::walkEnd(const FlowStep& step, EntityFlowOut& flow) {
  DirtyKeysGeneric& keys = flow.dirtyKeys(step.row->id);
  if (flow.valueIterKey() != nullptr) {
    // Its text is not out: the peer is not to sweep before.
    keys.mark(flow.valueIterKey(), true);
    flow.endDeferredIs(step.row->id);
    return false;
  }
  walkMark(step, flow, attrTransactionEnd);
  flow.bitIs(step, true);
  return keys.empty();
}

/// Sends what is under the keys that are marked, as far as the run goes.
bool AttrLogAdapter::keysWork(const FlowStep& step, EntityFlowOut& flow) {
  const AttrRow& row = *step.row;
  if (flow.attrId() != row.id) {
    return true;
  }
  if (!flow.hasBit(step) && flow.endDeferred() != row.id) {
    flow.bitIs(step, true); // the walk has ended by itself
    walkMark(step, flow, attrTransactionEnd);
  }
  DirtyKeysGeneric& keys = flow.dirtyKeys(row.id);
  while (!keys.empty()) {
    if (!continueFlowOut()) {
      return false;
    }
    bool isSame = true;
    ValueSlot key(*row.key, [&](void* to) { isSame = keys.takeFirst(to); });
    if (!isSame && row.collection->entry(rawEntity(), key.at()) != nullptr) {
      // Deleted and made again meanwhile. The peer would take the new member for the old one, if
      // that has an id of the peer's own.
      writeDeletion(step, key.at());
      keys.mark(key.at(), true);
      continue;
    }
    zelOnKey(row.id, key.at());
    if (rawEntity() == nullptr || owed() != &flow) {
      return false;
    }
    if (flow.hasDataBit(FlowOut::dataBitSuspended) || flow.valueIterKey() != nullptr) {
      keys.mark(key.at(), true);
      return false;
    }
    keys.del(key.at()); // which the attempt may have marked again
  }
  if (flow.endDeferred() == row.id && !flow.hasBit(step)) {
    flow.endDeferredIs(0);
    walkMark(step, flow, attrTransactionEnd);
    flow.bitIs(step, true);
  }
  return true;
}

} // namespace Zel
