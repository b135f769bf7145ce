#include <attrlog/Write.h>

#include <Zel/Demuxer>
#include <Zel/Expect>
#include <attrlog/Arguments.h>

namespace Zel {

using NboAttrLog::Demuxer;
using NboAttrLog::FlowOut;
using NboAttrLog::MsgHeader;

namespace {

using Flags = PtrInterface::NotifieeConst::Zel_BitSet;

/// What a member's adapter takes over from its directory's.
Flags memberFlags(const StreamAdapter& parent) {
  return Flags(parent.zel_bitSet().word() & Flags::notificationBitMask() &
               ~StreamAdapter::flagsOfOne);
}

/// Whether the tree of a member is frozen: what has been done to the member here is dropped then.
bool isFrozen(const Entity& member) {
  Ptr<const Entity> at(&member);
  while (const Ptr<const Entity> holder = at->parent()) {
    at = holder;
  }
  return at->zelIsFrozen();
}

} // namespace

void AttrLogAdapter::zelSerializeChild(AttributeId attr, const void* key, Entity* child) {
  const FlowStep& collection = step(attr);
  bool active = hasFlag(flagReactorActive);
  if (hasFlag(flagSyncFanOut)) {
    return;
  }
  if (!active) {
    if (handlingFlowInFor(attr)) {
      keyOweBehind(collection, key, child != nullptr);
      return;
    }
    active = hasFlag(flagReactorActive);
    if (!active && isMute()) {
      return;
    }
  }
  reactorActiveIs(false);
  if (!nboAttrLogOut()) {
    return;
  }
  const Ptr<Entity> kept(child);
  if (active) {
    if (child != nullptr) {
      childAttach(collection, *child);
      deletionForget(attr, key, *child);
    }
    return;
  }
  if (isGone()) {
    return;
  }
  readOnlyCheck(collection);
  const bool sufficient = hasRoom(*nboAttrLogOut());
  if (hasFlag(flagNoFlowOut)) {
    if (!isScheduled() && (!sufficient || hasFlag(flagForceFlowOut))) {
      if (EntityFlowOut* const flow = absorb(attr)) {
        keyOwe(*flow, attr, key, child != nullptr);
      }
      return;
    }
  } else if (prepareImmediateTransmission(attr, false) && sufficient &&
             (child == nullptr || !owed()->dirtyKeys(attr).isFalse(key))) {
    owed()->dirtyKeys(attr).del(key);
  } else {
    keyOwe(*owed(), attr, key, child != nullptr);
    return;
  }
  if (child == nullptr) {
    writeDeletion(collection, key);
  } else {
    childAnnounce(collection, key, *child);
  }
}

void AttrLogAdapter::childAnnounce(const FlowStep& step, const void* key, Entity& child) {
  const Expect unavailable(EntityIdUnavailableException::id);
  for (;;) {
    try {
      const Ptr<ZelNboAttrLogSa> adapter =
          childIs(*this, step, memberFlags(*this), child, 1, channelEntry());
      if (!adapter) {
        return; // the type has no attribute log
      }
      if (!announcesWhole(step)) {
        adapter->flagsIs(flagMember, true);
        adapter->flagsIs(flagChildPending, false);
        if (!FreshMember::is(&child) || isScheduled()) {
          static_cast<AttrLogAdapter&>(*adapter).differenceOwe();
        }
        return;
      }
      doFixChildFlags(Ptr<StreamAdapter>(adapter));
      if (syncMode() == syncModeResync || isScheduled()) {
        adapter->doThis();
      }
      return;
    } catch (const EntityIdUnavailableException&) {
      EntityFlowOut* flow = owed();
      flow = flow != nullptr ? flow : absorb(step.row->id);
      if (flow != nullptr) {
        flow->dirtyKeys(step.row->id).mark(key, true);
        flow->dataBitIs(FlowOut::dataBitSuspended, true);
      }
      return;
    } catch (const AttrLogRecordException&) {
      continue; // the same child once more
    }
  }
}

Ptr<Entity::ZelNboAttrLogSa> AttrLogAdapter::childIs(Entity::ZelNboAttrLogSa& parent,
                                                     const FlowStep& step, Zel_BitSet flags,
                                                     Entity& child, unsigned option,
                                                     PtrInterface* owner) {
  auto& own = static_cast<AttrLogAdapter&>(parent);
  Ptr<ZelNboAttrLogSa> adapter = child.zelNboAttrLogSaIs(flags, option, own.nboAttrLogOut(), owner);
  if (!adapter) {
    return nullptr;
  }
  own.rootPass(*adapter);
  const Demuxer* const demuxer = own.streamDemuxer();
  if (demuxer == nullptr || demuxer->adapter(adapter->entityId()) != adapter.ptr()) {
    adapter->zelOnInit();
    adapter->doAssignEntityId();
  } else if (adapter->hasFlag(flagAnnounced)) {
    return adapter;
  }
  const CollectionOps& ops = *step.row->collection;
  ValueSlot key(*step.row->key, [&](void* at) { ops.memberKey(&child, at); });
  own.write(step, MsgHeader::variable(own.entityId(), step.row->id, NboAttrLog::childRecordTag),
            [&](WireWriter& out) {
              encodeValue(*step.row->key, key.at(), out);
              forArguments(ops, [&](const AttrRow& row) {
                ValueSlot argument(*row.value, [&](void* at) { row.read(&child, at); });
                encodeValue(*row.value, argument.at(), out);
              });
              out.putEntityId(adapter->entityId());
            });
  return adapter;
}

void AttrLogAdapter::childAttach(const FlowStep& step, Entity& child) {
  NboAttrLog::In* const in = nboAttrLogOut()->rawReverseLog();
  Demuxer* const demuxer = NboAttrLog::demuxFor(in);
  if (demuxer == nullptr) {
    return;
  }
  const Ptr<ZelNboAttrLogSa> adapter =
      child.zelNboAttrLogSaIs(memberFlags(*this), 1, nboAttrLogOut(), channelEntry());
  const std::uint8_t* const place = in->position();
  const EntityId id = in->nextEntityId();
  if (!adapter) {
    return;
  }
  rootPass(*adapter);
  if (StreamAdapter* const former = demuxer->adapter(id);
      former != nullptr && !former->isInTree()) {
    former->doRemountSelf(nullptr); // of a member that somebody holds still
  }
  const bool isKnown = demuxer->adapter(adapter->entityId()) == adapter.ptr();
  const bool isSame = isKnown && adapter->entityId() == id;
  // A member that this end announced may have gone here, by a walk that it has crossed or by
  // itself, when the peer tells of it.
  const bool isAgain =
      hasFlag(flagImported) && demuxer->hasGiven(id) && demuxer->adapter(id) == nullptr;
  if (id.value() == 0 || id == orphanEntityId ||
      (demuxer->isOwnId(id) && !id.isUnified() && !isSame && !isAgain)) {
    throw AttrLogRecordException("malformed record: a member's id");
  }
  // Where both ends have announced the same member, the id of the end that exports the tree wins.
  const bool isOurs = isKnown && demuxer->isOwnId(adapter->entityId());
  if (!isKnown || (isOurs && hasFlag(flagImported))) {
    demuxer->announcedLimit();
  }
  if (!isOurs || hasFlag(flagImported)) {
    adapter->doEntityIdIs(id, Ptr<Demuxer>(demuxer), true);
    if (isOurs && !isSame && !isFrozen(child) && !isRefusing()) {
      // What went out under the other id has reached nobody.
      announcesWhole(step) ? adapter->doThis()
                           : static_cast<AttrLogAdapter&>(*adapter).differenceOwe();
    }
  }
  if (!hasUnifiedEntityId()) {
    // Later readers of this record see the directory's id in the place of the member's.
    in->overwrite(place, &entityId(), sizeof(EntityId));
  }
  adapter->flagsIs(flagMember, true);
  adapter->flagsIs(flagChildPending, false);
}

/// The peer has announced a member under a key whose former member it was still to hear the
/// deletion of. To the peer they are one: what stands here goes out, if there is anything.
void AttrLogAdapter::deletionForget(AttributeId attr, const void* key, const Entity& child) {
  EntityFlowOut* const flow = owed();
  if (flow == nullptr || !flow->dirtyKeys(attr).isFalse(key)) {
    return;
  }
  flow->dirtyKeys(attr).del(key);
  if (!FreshMember::is(&child)) {
    keyOwe(*flow, attr, key, true);
  }
}

/// Takes a member out of its directory on the peer's word.
Ptr<PtrInterface> AttrLogAdapter::memberTake(Entity& directory, const FlowStep& step,
                                             const void* key) const {
  const WritePermission permission(directory, step.row->id, mayPermit());
  return step.row->collection->takeMember(&directory, key);
}

/// A member has been taken out of its directory on the peer's word: whoever holds it still, it is
/// not mirrored any more.
void AttrLogAdapter::childGone(const Ptr<PtrInterface>& child) const {
  if (!child) {
    return;
  }
  if (const Ptr<ZelNboAttrLogSa> adapter = zelChildAdapter(static_cast<Entity*>(child.ptr()))) {
    adapter->doRemountSelf(nullptr);
  }
}

Ptr<Entity::ZelNboAttrLogSa> AttrLogAdapter::zelChildAdapterIs(AttributeId attr, Zel_BitSet flags,
                                                               Entity* child, unsigned option,
                                                               PtrInterface* owner) {
  return childIs(*this, step(attr), flags, *child, option, owner);
}

Ptr<Entity::ZelNboAttrLogSa> AttrLogAdapter::zelChildAdapter(Entity* child) const {
  return child != nullptr ? child->zelNboAttrLogSa(Ptr<const NboAttrLog::Out>(nboAttrLogOut()))
                          : nullptr;
}

Ptr<Entity::ZelNboAttrLogSa> AttrLogAdapter::zelChildAdapterDel(Entity* child) {
  Ptr<ZelNboAttrLogSa> adapter = zelChildAdapter(child);
  if (adapter) {
    adapter->doRemountSelf(nullptr);
  }
  return adapter;
}

} // namespace Zel
