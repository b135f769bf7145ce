#include <attrlog/Adapter.h>

#include <Zel/Demuxer>
#include <Zel/Exception>
#include <Zel/NboAttrLogFlow>
#include <attrlog/Finally.h>

#include <exception>
#include <vector>

namespace Zel {

using NboAttrLog::Demuxer;
using NboAttrLog::FlowIn;

void AttrLogAdapter::handleAttrTransaction(AttributeId attr, AttrTransactionType type, unsigned n) {
  const Ptr<StreamAdapter> kept(this);
  Demuxer* const demuxer = streamDemuxer();
  const FlowStep* const at = plan().step(attr);
  if (demuxer == nullptr || rawEntity() == nullptr || at == nullptr ||
      at->kind == FlowKind::plain) {
    ZelNboAttrLogSa::handleAttrTransaction(attr, type, n);
    return;
  }
  Ptr<FlowIn> flow(demuxer->flowIn(entityId()));
  if (flow && type == attrTransactionEnd && flow->aid() == attr) {
    flow->handlingTransactionIs(true);
  }
  if (!flow && !hasFlag(flagSyncFanOut) && type == attrTransactionBegin) {
    flow = demuxer->flowInIs(entityId());
  }
  if (flow && flow->iter() == nullptr && type == attrTransactionBegin) {
    flow->aidIs(attr); // also in the place of a transaction that has not come to its end
  }
  if (at->kind == FlowKind::text && (!flow || flow->aid() != attr)) {
    return;
  }
  // A sweep may be refused by a guard. The transaction is over all the same.
  const Finally over([&] { ZelNboAttrLogSa::handleAttrTransaction(attr, type, n); });
  switch (at->kind) {
  case FlowKind::text:
    if (type != attrTransactionBegin) {
      textEnd(*flow);
    }
    break;
  case FlowKind::child:
    childrenSweep(*at, type);
    break;
  case FlowKind::keyedText:
    if (type == attrTransactionAbort && flow) {
      if (flow->iter() != nullptr && flow->aid() == attr) {
        textDrop(*flow);
      }
      break;
    }
    [[fallthrough]];
  default:
    entriesSweep(*at, type);
  }
}

namespace {

/// Works through things each of which may be refused: the others are done as well, and the first
/// refusal is told when all are.
class Attempts {
public:
  template <class Work>
  void attempt(Work&& work) {
    try {
      work();
    } catch (const ReadOnlyException&) {
      if (!refusal_) {
        refusal_ = std::current_exception();
      }
    }
  }
  void done() const {
    if (refusal_) {
      std::rethrow_exception(refusal_);
    }
  }

private:
  std::exception_ptr refusal_;
};

} // namespace

/// The text that is under way has come to its end. The `FlowIn` stays for a transaction that it
/// stands for.
void AttrLogAdapter::textEnd(FlowIn& flow) {
  if (flow.isTransaction()) {
    textDrop(flow);
  } else {
    streamDemuxer()->flowInDel(entityId());
  }
}

/// Lets go of the text that is under way, and of its key.
void AttrLogAdapter::textDrop(FlowIn& flow) {
  zelFlowInIteratorDel<String8::Iterator>(&flow, flow.aid());
  flow.idxDel();
  flow.aidIs(flow.transaction());
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
  Attempts deletions;
  unsigned version;
  do {
    version = ops.version(kept.ptr());
    CollectionPosition at(ops.iteration, [&](void* to) { ops.iteration.first(to, kept.ptr()); });
    for (; at && rawEntity() == kept.ptr(); at.advance()) {
      if (type == attrTransactionBegin) {
        at.entry()->zelMarkedForDeletionIs(true);
      } else if (at.entry()->zelMarkedForDeletion()) {
        deletions.attempt([&] { entryDelete(step, at); });
      }
    }
  } while (version != ops.version(kept.ptr()));
  deletions.done();
}

void AttrLogAdapter::entryDelete(const FlowStep& step, const CollectionPosition& at) {
  const CollectionOps& ops = *step.row->collection;
  ValueSlot key(*step.row->key, [&](void* to) { at.key(to); });
  reactorActiveIs(true);
  const Finally done([this] { reactorActiveIs(false); });
  const WritePermission permission(*rawEntity(), step.row->id);
  if (ops.eraseEntry != nullptr && !step.row->key->equal(key.at(), key.at())) {
    ops.eraseEntry(rawEntity(), step.row->id, at.entry()); // no search finds such a key
  } else {
    ops.erase(rawEntity(), key.at());
  }
}

/// The same for members, whose mark is on their adapters. A member that this connection does not
/// know was not in the walk. Those that a notifiee makes in answer to the deletions stay.
void AttrLogAdapter::childrenSweep(const FlowStep& step, AttrTransactionType type) {
  if (type == attrTransactionAbort) {
    return;
  }
  const CollectionOps& ops = *step.row->collection;
  const Ptr<Entity> kept(rawEntity());
  std::vector<Ptr<Entity>> swept;
  CollectionPosition at(ops.iteration, [&](void* to) { ops.iteration.first(to, kept.ptr()); });
  for (; at; at.advance()) {
    auto* const child = static_cast<Entity*>(at.member());
    const Ptr<ZelNboAttrLogSa> adapter = zelChildAdapter(child);
    if (type == attrTransactionEnd) {
      if (!adapter || adapter->hasFlag(flagChildPending)) {
        swept.emplace_back(child);
      }
    } else if (adapter) {
      adapter->flagsIs(flagChildPending, true);
    }
  }
  Attempts deletions;
  for (const Ptr<Entity>& child : swept) {
    if (rawEntity() != kept.ptr()) {
      break;
    }
    ValueSlot key(*step.row->key, [&](void* to) { ops.memberKey(child.ptr(), to); });
    if (ops.entry(kept.ptr(), key.at()) == child.ptr()) {
      reactorActiveIs(true);
      const Finally done([this] { reactorActiveIs(false); });
      deletions.attempt([&] { memberTake(*kept, step, key.at()); });
      childGone(child);
    }
  }
  deletions.done();
}

} // namespace Zel
