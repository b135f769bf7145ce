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
  if (flow && type == attrTransactionBegin) {
    flow->passedIs(isWalkAhead(attr) ? attr : 0);
  }
  // A sweep may be refused. The transaction is over all the same.
  const Finally over([&] { ZelNboAttrLogSa::handleAttrTransaction(attr, type, n); });
  if (flow && flow->passed() == attr && type != attrTransactionAbort) {
    return;
  }
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

/// Whether the peer's walk of a collection has crossed one of this end's. Each would wait for the
/// other, so that of the end which exports the root goes ahead: the other's is taken without its
/// markers.
bool AttrLogAdapter::isWalkAhead(AttributeId attr) const {
  const EntityFlowOut* const flow = owed();
  return !hasFlag(flagImported) && flow != nullptr && flow->openWalk() == attr;
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

/// Marks all entries, or deletes those that are marked still, but for what is owed: the peer cannot
/// have sent what it has not got. A deletion changes what is walked, so the walk is repeated until
/// it has changed nothing.
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
      } else if (at.entry()->zelMarkedForDeletion() && !entrySpare(step, at)) {
        deletions.attempt([&] { entryDelete(step, at); });
      }
    }
  } while (version != ops.version(kept.ptr()));
  deletions.done();
}

/// Whether an entry outlives the sweep because it is owed. Takes the mark off then.
bool AttrLogAdapter::entrySpare(const FlowStep& step, const CollectionPosition& at) {
  if (owed() == nullptr) {
    return false;
  }
  ValueSlot key(*step.row->key, [&](void* to) { at.key(to); });
  if (!isOwed(step, key.at())) {
    return false;
  }
  at.entry()->zelMarkedForDeletionIs(false);
  return true;
}

void AttrLogAdapter::entryDelete(const FlowStep& step, const CollectionPosition& at) {
  const CollectionOps& ops = *step.row->collection;
  ValueSlot key(*step.row->key, [&](void* to) { at.key(to); });
  reactorActiveIs(true);
  const Finally done([this] { reactorActiveIs(false); });
  const WritePermission permission(*rawEntity(), step.row->id, mayPermit());
  if (ops.eraseEntry != nullptr && !step.row->key->equal(key.at(), key.at())) {
    ops.eraseEntry(rawEntity(), step.row->id, at.entry()); // no search finds such a key
  } else {
    ops.erase(rawEntity(), key.at());
  }
}

/// The same for members, whose mark is on their adapters. A member that this connection does not
/// know was not in the walk, unless it is yet to be announced. Those that a notifiee makes in
/// answer to the deletions stay.
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
      const auto isOwedHere = [&] {
        ValueSlot key(*step.row->key, [&](void* to) { at.key(to); });
        return isOwed(step, key.at());
      };
      if (adapter ? adapter->hasFlag(flagChildPending) : !isOwedHere()) {
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
