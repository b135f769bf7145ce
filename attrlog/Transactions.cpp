#include <attrlog/Adapter.h>

#include <Zel/Demuxer>
#include <Zel/NboAttrLogFlow>

namespace Zel {

using NboAttrLog::Demuxer;
using NboAttrLog::FlowIn;

void AttrLogAdapter::handleAttrTransaction(AttributeId attr, AttrTransactionType type, unsigned n) {
  Demuxer* const demuxer = streamDemuxer();
  const FlowStep* const at = plan().step(attr);
  if (demuxer == nullptr || at == nullptr || at->kind == FlowKind::plain) {
    ZelNboAttrLogSa::handleAttrTransaction(attr, type, n);
    return;
  }
  Ptr<FlowIn> flow(demuxer->flowIn(entityId()));
  if (flow && type == attrTransactionEnd && flow->aid() == attr) {
    flow->handlingTransactionIs(true);
  }
  if (!flow && !hasFlag(flagSyncFanOut) && type == attrTransactionBegin) {
    flow = demuxer->flowInIs(entityId());
    flow->aidIs(attr);
  }
  switch (at->kind) {
  case FlowKind::text:
    if (!flow || flow->aid() != attr) {
      return;
    }
    if (type != attrTransactionBegin) {
      zelFlowInIteratorDel<String8::Iterator>(flow.ptr(), attr);
      demuxer->flowInDel(entityId());
    }
    break;
  case FlowKind::child:
    childrenSweep(*at, type);
    break;
  case FlowKind::keyedText:
    if (type == attrTransactionAbort && flow) {
      textDrop(*at, *flow);
      break;
    }
    [[fallthrough]];
  default:
    entriesSweep(*at, type);
  }
  ZelNboAttrLogSa::handleAttrTransaction(attr, type, n);
}

/// Drops the text of an entry that is under way; what else the `FlowIn` stands for stays.
void AttrLogAdapter::textDrop(const FlowStep& step, FlowIn& flow) {
  const bool isOfThis = flow.idx() != nullptr || flow.aid() == step.row->id;
  if (!isOfThis) {
    return;
  }
  zelFlowInIteratorDel<String8::Iterator>(&flow, step.row->id);
  if (flow.idx() != nullptr) {
    step.row->key->destroy(flow.idx());
    ::operator delete(flow.idx());
    flow.idxIs(nullptr);
  }
  if (flow.isTransaction()) {
    flow.aidIs(step.row->id);
  }
  streamDemuxer()->partialTextIs(flow, 0);
}

/// Marks all entries, or deletes those that are marked still. A deletion changes what is walked, so
/// the walk is repeated until it has changed nothing.
void AttrLogAdapter::entriesSweep(const FlowStep& step, AttrTransactionType type) {
  if (type == attrTransactionAbort) {
    return;
  }
  const CollectionOps& ops = *step.row->collection;
  const Ptr<Entity> kept(rawEntity());
  unsigned version;
  do {
    version = ops.version(kept.ptr());
    CollectionPosition at(ops.iteration, [&](void* to) { ops.iteration.first(to, kept.ptr()); });
    for (; at; at.advance()) {
      if (type == attrTransactionBegin) {
        at.entry()->zelMarkedForDeletionIs(true);
      } else if (at.entry()->zelMarkedForDeletion()) {
        entryDelete(step, at);
      }
    }
  } while (version != ops.version(kept.ptr()));
}

void AttrLogAdapter::entryDelete(const FlowStep& step, const CollectionPosition& at) {
  const CollectionOps& ops = *step.row->collection;
  ValueSlot key(*step.row->key, [&](void* to) { at.key(to); });
  reactorActiveIs(true);
  if (step.kind == FlowKind::child) {
    childGone(ops.takeMember(rawEntity(), key.at()));
  } else if (ops.eraseEntry != nullptr && !step.row->key->equal(key.at(), key.at())) {
    ops.eraseEntry(rawEntity(), at.entry()); // no search finds such a key
  } else {
    ops.erase(rawEntity(), key.at());
  }
  reactorActiveIs(false);
}

/// The same for members, whose mark is on their adapters. A member that this connection does not
/// know was not in the walk.
void AttrLogAdapter::childrenSweep(const FlowStep& step, AttrTransactionType type) {
  if (type == attrTransactionAbort) {
    return;
  }
  const CollectionOps& ops = *step.row->collection;
  const Ptr<Entity> kept(rawEntity());
  unsigned version;
  do {
    version = ops.version(kept.ptr());
    CollectionPosition at(ops.iteration, [&](void* to) { ops.iteration.first(to, kept.ptr()); });
    for (; at; at.advance()) {
      const Ptr<ZelNboAttrLogSa> adapter = zelChildAdapter(static_cast<Entity*>(at.member()));
      if (type == attrTransactionEnd) {
        if (!adapter || adapter->hasFlag(flagChildPending)) {
          entryDelete(step, at);
        }
      } else if (adapter) {
        adapter->flagsIs(flagChildPending, true);
      }
    }
  } while (version != ops.version(kept.ptr()));
}

} // namespace Zel
