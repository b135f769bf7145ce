#include <attrlog/Adapter.h>

#include <Zel/Demuxer>

#include <deque>
#include <vector>

namespace Zel {

using NboAttrLog::Demuxer;

namespace {

/// An entity made from the same arguments as this one, which nobody has written to.
Ptr<Entity> newLike(const Entity& entity, const TypeTable& table) {
  std::deque<ValueSlot> values;
  std::vector<const void*> arguments;
  const auto add = [&](const ValueRecord& type, const auto& make) {
    arguments.push_back(values.emplace_back(type, make).at());
  };
  if (table.named) {
    add(valueRecord<Name>, [&](void* at) { new (at) Name(entity.name()); });
  }
  for (const AttrRow& row : table.rows) {
    if (isConstructorArgument(row)) {
      add(*row.value, [&](void* at) { row.read(&entity, at); });
    }
  }
  return ptrCast<Entity>(table.constructor.object(arguments.data()));
}

bool isEqual(const AttrRow& row, const Entity& a, const Entity& b) {
  ValueSlot ofA(*row.value, [&](void* at) { row.read(&a, at); });
  ValueSlot ofB(*row.value, [&](void* at) { row.read(&b, at); });
  return row.value->equal(ofA.at(), ofB.at());
}

} // namespace

/// Whether a member that the directory announces now is followed by all of it, with its collections
/// between markers. A walk that has begun so goes on so, and so does what was pending when the
/// right to write was given: the peer has that right behind it.
bool AttrLogAdapter::announcesWhole(const FlowStep& step) const {
  const EntityFlowOut* const flow = owed();
  return !root() || !root()->sendsPlain() ||
         (flow != nullptr && (!flow->hasBit(step) || (isScheduled() && root()->isMarked(*flow))));
}

/// Marks as owed what differs from a new entity. What an announcement has said needs no mark.
void AttrLogAdapter::differenceOwe() {
  const Ptr<Entity> kept(rawEntity());
  if (!kept || plan().steps.empty()) {
    return; // nothing of such an entity flows
  }
  const Ptr<Entity> fresh = newLike(*kept, plan().table);
  for (const FlowStep& at : plan().steps) {
    if (isCollection(at.kind)) {
      keysOwe(at, *fresh);
    } else if (!at.startsClean && !isEqual(*at.row, *kept, *fresh)) {
      if (EntityFlowOut* const flow = owedOrMade(at.row->id)) {
        flow->bitIs(at, true);
      }
    }
  }
  if (Demuxer* const demuxer = owed() != nullptr ? streamDemuxer() : nullptr) {
    demuxer->schedule(*owed());
  }
}

/// The same of the keys of a collection, unless a walk of it is owed. Members are told of by their
/// keys, and follow in the same way.
void AttrLogAdapter::keysOwe(const FlowStep& step, const Entity& fresh) {
  const AttrRow& row = *step.row;
  const CollectionOps& ops = *row.collection;
  if (owed() != nullptr && !owed()->hasBit(step)) {
    return;
  }
  const bool isChild = step.kind == FlowKind::child;
  const auto owe = [&](const void* key, bool dirty) {
    EntityFlowOut* const flow = owedOrMade(row.id);
    if (flow != nullptr && row.key->equal(key, key)) { // no search finds one that equals nothing
      flow->dirtyKeys(row.id).mark(key, dirty);
    }
  };
  const auto forEach = [&](const Entity& entity, const auto& visit) {
    CollectionPosition at(ops.iteration, [&](void* to) { ops.iteration.first(to, &entity); });
    for (; at; at.advance()) {
      ValueSlot key(*row.key, [&](void* to) { at.key(to); });
      visit(at, key.at());
    }
  };
  forEach(*rawEntity(), [&](const CollectionPosition& at, const void* key) {
    const PtrInterface* const same = isChild ? nullptr : ops.entry(&fresh, key);
    if (same == nullptr || !row.value->equal(ops.entryValue(same), at.value())) {
      owe(key, true);
    }
  });
  forEach(fresh, [&](const CollectionPosition& /*at*/, const void* key) {
    if (ops.entry(rawEntity(), key) == nullptr) {
      owe(key, !isChild);
    }
  });
}

} // namespace Zel
