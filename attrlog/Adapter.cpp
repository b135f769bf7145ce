#include <attrlog/Adapter.h>

#include <Zel/Demuxer>
#include <Zel/Exception>
#include <Zel/ZelType>
#include <attrlog/Finally.h>

namespace Zel {

using NboAttrLog::Demuxer;
using NboAttrLog::MsgHeader;

AttrLogAdapter::AttrLogAdapter(const FlowPlan& plan, Zel_BitSet flags, unsigned option,
                               const Ptr<NboAttrLog::Out>& out, PtrInterface* owner)
    : ZelNboAttrLogSa(plan, flags, option, out, owner) {}

AttrLogAdapter::~AttrLogAdapter() = default;

void AttrLogAdapter::attach(const Ptr<PtrInterface::NotifieeConst>& heard,
                            const Ptr<const Entity>& entity) {
  referenceBitsClear(notificationActiveBit); // until whoever makes the adapter turns it on
  notifieeIs(heard);
  if (hasFlag(flagWeakNotifiee)) {
    isWeakReferenceIs(true);
  }
  try {
    AttrLogAdapter::notifierIs(Ptr<const PtrInterface>(entity));
    if (streamDemuxer() != nullptr) {
      AttrLogAdapter::syncModeIs(syncMode());
    }
  } catch (...) {
    detach();
    throw;
  }
}

void AttrLogAdapter::detach() noexcept {
  isWeakReferenceIs(false);
  if (notifiee() != nullptr) {
    notifiee()->notifierIs(nullptr);
    notifiee()->isRegisteredNotifieeIs(false);
    notifieeIs(nullptr);
  }
}

void AttrLogAdapter::hasNotificationActiveIs(bool active) {
  if (active == hasNotificationActive()) {
    return;
  }
  ZelNboAttrLogSa::hasNotificationActiveIs(active);
  if (notifiee() != nullptr) {
    notifiee()->hasNotificationActiveIs(active);
  }
}

void AttrLogAdapter::notifierIs(const Ptr<const PtrInterface>& wanted) {
  const Ptr<const PtrInterface> former = notifier(); // whose last count may be our notifiee's
  if (wanted == former) {
    isRegisteredNotifieeIs(false);
    return;
  }
  if (notifiee() != nullptr) {
    notifiee()->notifierIs(wanted);
  }
  ZelNboAttrLogSa::notifierIs(wanted);
}

/// Whether there is nothing to mirror any more. A member that has been taken out of its directory
/// is let go of here: the peer has been told, or will be, and knows it no more.
bool AttrLogAdapter::isGone() {
  if (rawEntity() == nullptr) {
    return true;
  }
  if (hasFlag(flagMember) && !rawEntity()->zelHasParent()) {
    doRemountSelf(nullptr);
    return true;
  }
  return false;
}

AttrLogAdapter::Gate AttrLogAdapter::gateSlow(const FlowStep& step) {
  if (hasFlag(flagSyncFanOut)) {
    return Gate::notDone;
  }
  if (!hasFlag(flagReactorActive) && handlingFlowInFor(step.row->id)) {
    return Gate::notDone;
  }
  const bool isSilent = hasFlag(flagReactorActive) || isMute();
  reactorActiveIs(false);
  if (isSilent || !nboAttrLogOut() || isGone()) {
    return Gate::done;
  }
  readOnlyCheck(step);
  return Gate::pass;
}

void AttrLogAdapter::valueOwe(EntityFlowOut& flow, const FlowStep& step) {
  if (flow.hasBit(step) && root()) {
    root()->coalescedInc();
  }
  flow.bitIs(step, true);
}

void AttrLogAdapter::keyOwe(EntityFlowOut& flow, AttributeId attr, const void* key, bool dirty) {
  DirtyKeysGeneric& keys = flow.dirtyKeys(attr);
  if (root() && root()->input() == NboAttrLog::Root::Input::dropped &&
      keys.count() >= nboAttrLogOut()->connection()->limits().maxKeys) {
    // More keys than are kept for a peer, which may invent them: the collection is sent whole.
    if (flow.heldIn() == attr) {
      freeResyncState(flowOut());
    }
    if (flow.endDeferred() == attr) {
      flow.endDeferredIs(0); // the walk begins anew
    }
    keys.clear();
    flow.bitIs(step(attr), false);
    return;
  }
  if (!keys.mark(key, dirty) && root()) {
    root()->coalescedInc();
  }
}

/// What is owed, made if nothing is; null if the connection has none to give.
EntityFlowOut* AttrLogAdapter::owedOrMade(AttributeId attr) {
  EntityFlowOut* const there = owed();
  return there != nullptr ? there : absorb(attr);
}

/// What is owed, for a change of an attribute that is held back because it came between the peer's
/// markers; null if the change stays here for another reason.
EntityFlowOut* AttrLogAdapter::owedBehind(AttributeId attr) {
  if (hasFlag(flagSyncFanOut) || isMute() || !nboAttrLogOut() || isGone()) {
    return nullptr;
  }
  return owedOrMade(attr);
}

/// The change of a key goes behind the peer's end marker, which does not sweep it either.
void AttrLogAdapter::keyOweBehind(const FlowStep& step, const void* key, bool dirty) {
  if (EntityFlowOut* const flow = owedBehind(step.row->id)) {
    keyOwe(*flow, step.row->id, key, dirty);
  }
}

/// Whether the peer has not got what is under a key of a collection, and is to get it.
bool AttrLogAdapter::isOwed(const FlowStep& step, const void* key) const {
  const EntityFlowOut* const flow = owed();
  return flow != nullptr && (flow->dirtyKeys(step.row->id).has(key) ||
                             (flow->attrId() == step.row->id && flow->valueIterKey() != nullptr &&
                              isSameKey(*step.row->key, flow->valueIterKey(), key)));
}

/// Whether changes stay here.
bool AttrLogAdapter::isMute() const {
  return hasFlag(flagMuted | flagChildPending) || !hasFlag(flagStreaming);
}

bool AttrLogAdapter::isRefusing() const {
  return hasFlag(flagReadOnly) && !convertedToWritable(false);
}

void AttrLogAdapter::readOnlyCheck(const FlowStep& step) {
  if (isRefusing()) {
    const ZelType* const type = rawEntity()->fwkType();
    doThrowReadOnly(Ptr<const ZelAttr>(type != nullptr ? type->attr(step.row->id) : nullptr));
  }
}

EntityFlowOut* AttrLogAdapter::absorb(AttributeId attr) {
  if (Demuxer* const demuxer = streamDemuxer()) {
    demuxer->createFlowOut(Ptr<StreamAdapter>(this), {}, false, attrIdFlowEnd);
  }
  EntityFlowOut* const made = owed();
  if (made != nullptr) {
    made->attrIdIs(attr);
  }
  return made;
}

std::size_t AttrLogAdapter::freeSpace() const noexcept {
  const NboAttrLog::Out& out = *nboAttrLogOut();
  return out.isUp() ? out.freeSpace() : 0;
}

void AttrLogAdapter::recordFailed(const FlowStep& step, const String8& why) {
  if (Connection* const connection = nboAttrLogOut()->connection()) {
    connection->fail(String8(step.row->name) + " of " + rawEntity()->fullName() + ": " + why);
  }
}

void AttrLogAdapter::doNotification(AttributeId attr, void* key) {
  const FlowStep* const wanted = plan().step(attr < 0 ? -attr : attr);
  if (wanted == nullptr || notifiee() == nullptr) {
    return;
  }
  if (isCollection(wanted->kind)) {
    wanted->row->collection->tellKey(*notifiee(), key);
  } else if (attr > 0) {
    wanted->row->tell(*notifiee());
  }
}

void AttrLogAdapter::syncModeIs(SyncMode mode) {
  ZelNboAttrLogSa::syncModeIs(mode);
  if (streamDemuxer() == nullptr || !hasFlag(flagReactorActive)) {
    return;
  }
  for (const FlowStep& collection : plan().steps) {
    if (isCollection(collection.kind)) {
      handleAttrTransaction(collection.row->id,
                            mode == syncModeResync ? attrTransactionBegin : attrTransactionEnd, 0);
    }
  }
}

void AttrLogAdapter::zelInstantiateSerialize() {
  ZelNboAttrLogSa::zelInstantiateSerialize();
  for (const FlowStep& collection : plan().steps) {
    if (collection.kind == FlowKind::child && !flowOut()) { // which sends what is owed by itself
      zelSerializeColl(collection.row->id);
    }
  }
}

void AttrLogAdapter::doSerializeOrphan() {
  const Ptr<NboAttrLog::Out>& out = nboAttrLogOut();
  const Ptr<const Entity> kept(rawEntity());
  const Entity* const entity = kept.ptr();
  if (!out || entity == nullptr) {
    return;
  }
  const TypeTable& table = plan().table;
  out->nextHeaderIs(MsgHeader::variable(orphanEntityId, NboAttrLog::attrIdOrphan));
  out << NboAttrLog::transactBegin;
  out->currentPayloadSectionIs(NboAttrLog::payloadSectionType);
  for (const TypeTable& type : table.chain()) {
    out << TypeId{type.name};
  }
  out->currentPayloadSectionIs(NboAttrLog::payloadSectionArgs);
  if (table.named) {
    out << String8(entity->name());
  }
  for (const AttrRow& row : table.rows) {
    if (isConstructorArgument(row)) {
      ValueSlot argument(*row.value, [&](void* at) { row.read(entity, at); });
      encodeValue(*row.value, argument.at(), *out);
    }
  }
  out->currentPayloadSectionIs(NboAttrLog::payloadSectionEntityId);
  out << entityId();
  out << NboAttrLog::transactEnd;
  doThis();
}

} // namespace Zel
