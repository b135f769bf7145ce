#include <Zel/StreamAdapter>

#include <Zel/AttrLogEntity>
#include <Zel/Demuxer>
#include <Zel/Exception>
#include <Zel/FlowPlan>
#include <Zel/ZelType>

#include <algorithm>
#include <exception>
#include <string>

namespace Zel {

using NboAttrLog::Demuxer;
using NboAttrLog::FlowOut;
using NboAttrLog::MsgHeader;

StreamAdapter::SyncMode StreamAdapter::SyncModeInstance(unsigned number) {
  if (number != syncModeSynced && number != syncModeResync) {
    throwRangeException("SyncMode");
  }
  return static_cast<SyncMode>(number);
}

StreamAdapter::StreamAdapter(Zel_BitSet flags, const Ptr<NboAttrLog::Out>& out, PtrInterface* owner)
    : out_(out), channelEntry_(owner) {
  Zel_BitSet own;
  own.notificationFlagsIs(flags);
  own.bitsIs(flagStreaming | flagNoFlowOut, true);
  bitSetStore(own);
}

StreamAdapter::~StreamAdapter() = default;

bool StreamAdapter::isStreamAdapter() const { return true; }

void StreamAdapter::handleSyncMode() {}

AttributeId StreamAdapter::handleAttrFlowOut(AttributeId /*start*/) { return 0; }

void StreamAdapter::freeResyncState(const Ptr<FlowOut>& /*flowOut*/) {}
void StreamAdapter::zelOnInit() {}
void StreamAdapter::zelInstantiateSerialize() {}

const Demuxer* StreamAdapter::streamDemuxer() const {
  return out_ ? NboAttrLog::demuxFor(out_->rawReverseLog()) : nullptr;
}
Demuxer* StreamAdapter::streamDemuxer() {
  return out_ ? NboAttrLog::demuxFor(out_->rawReverseLog()) : nullptr;
}

const Entity* StreamAdapter::zelNotifierEntity() const { return rawEntity(); }
Entity* StreamAdapter::zelNotifierEntity() { return rawEntity(); }

void StreamAdapter::doSerializeOrphan() {}
void StreamAdapter::handleAttrDeserialization(AttributeId attr, DeserializationOptions options,
                                              unsigned size, const Ptr<NboAttrLog::In>& in) {
  doBaseZelNboAttrLogSaMsg(attr, options, size, in);
}
void StreamAdapter::handleAttrTransaction(AttributeId /*attr*/, AttrTransactionType /*type*/,
                                          unsigned /*n*/) {}

void StreamAdapter::doAssignEntityId() {
  Demuxer* const demuxer = streamDemuxer();
  if (demuxer == nullptr) {
    throw EntityIdUnavailableException("no connection to take an entity id from");
  }
  demuxer->adapterIs(Ptr<StreamAdapter>(this), demuxer->newEntityId());
}

Ptr<FlowOut> StreamAdapter::flowOutIs(const Ptr<NboAttrLog::Out>& out, const ConnectDesc& connect,
                                      bool flag, AttributeId start) {
  return makeObject<FlowOut>(out, Ptr<StreamAdapter>(this), connect, flag, start);
}

EntityId StreamAdapter::realEntityId() const { return entityId_; }
void StreamAdapter::doNotification(AttributeId /*attr*/, void* /*key*/) {}
unsigned StreamAdapter::audit() const { return 0; }
void StreamAdapter::entityIdInitializedIs(bool /*initialized*/) {}
void StreamAdapter::syncModeIs(SyncMode mode) { syncMode_ = mode; }

void StreamAdapter::entityIdIs(const EntityId& id) {
  doEntityIdIs(id, Ptr<Demuxer>(streamDemuxer()), false);
}

void StreamAdapter::streamDemuxerIs(Demuxer* /*demuxer*/) {}
void StreamAdapter::filterDel() {}
void StreamAdapter::filterIs() {}
void StreamAdapter::msgChannelIs(PtrInterface* entry) { channelEntry_ = entry; }
void StreamAdapter::notificationDisabledDueToMsgChannelIs(bool disabled) {
  flagsIs(flagMuted, disabled);
}
void StreamAdapter::zelDoZombieReactors(bool zombie) { zelMarkedForDeletionIs(zombie); }
void StreamAdapter::doRemountSelf(const Ptr<NboAttrLog::Out>& /*out*/) {}
void StreamAdapter::setFilter(const Ptr<MountFilter>& /*filter*/) {}

void StreamAdapter::flagsIs(unsigned bits, bool set) {
  rawFlagsIs(bits, set);
  // What was held back by a flag may go on.
  if ((bits & (flagChildPending | flagMuted | flagStreaming | flagSyncFanOut)) != 0) {
    flowWake();
  }
}

void StreamAdapter::flowWake() {
  Demuxer* const demuxer = flowOut_ ? streamDemuxer() : nullptr;
  if (demuxer != nullptr) {
    demuxer->schedule(*flowOut_);
  }
}

void StreamAdapter::notificationFlagsIs(Zel_BitSet flags) {
  Zel_BitSet own = zel_bitSet();
  own.notificationFlagsIs(flags);
  bitSetStore(own);
  flowWake();
}

bool StreamAdapter::continueFlowOut() const noexcept {
  auto* const demuxer = const_cast<StreamAdapter*>(this)->streamDemuxer();
  return demuxer != nullptr && demuxer->continueRun(flowOut_.ptr());
}

void StreamAdapter::flowOutSet(const Ptr<FlowOut>& flowOut) {
  if (flowOut_ && flowOut_ != flowOut) {
    freeResyncState(flowOut_);
  }
  if (root_ && flowOut_) {
    root_->flowGone(*flowOut_);
  }
  if (root_ && flowOut) {
    root_->flowCome(*flowOut);
  }
  flowOut_ = flowOut;
  rawFlagsIs(flagNoFlowOut, !flowOut);
}

void StreamAdapter::doThis() {
  if (Demuxer* const demuxer = streamDemuxer()) {
    demuxer->createFlowOut(Ptr<StreamAdapter>(this), {}, true, 0);
  }
}

void StreamAdapter::doFixChildFlags(const Ptr<StreamAdapter>& child) {
  child->rawFlagsIs(flagMember, true);
  child->flagsIs(flagChildPending, false);
  if (!FreshMember::is(child->rawEntity()) && !hasFlag(flagScheduledFlowOut) &&
      syncMode_ != syncModeResync) {
    child->doThis();
  }
}

void StreamAdapter::doEntityIdIs(const EntityId& id, const Ptr<Demuxer>& demuxer, bool takeOver) {
  if (!demuxer) {
    return;
  }
  StreamAdapter* const other = demuxer->adapter(id);
  if (other == this) {
    return;
  }
  if (other != nullptr) {
    // Only from a member that has left its directory here, and that the peer has in it still.
    if (!takeOver || !other->hasFlag(flagMember) || other->rawEntity()->zelHasParent()) {
      throw AttrLogRecordException("entity id in use");
    }
    other->doRemountSelf(nullptr);
    demuxer->reactorDel(id);
  }
  demuxer->adapterIs(Ptr<StreamAdapter>(this), id);
}

void StreamAdapter::doThrowReadOnly(const Ptr<const ZelAttr>& attr) const {
  const Entity* const entity = rawEntity();
  throwReadOnlyException(attr ? String8(attr->name()) : String8("unknown"),
                         entity != nullptr ? entity->fullName() : String8("nothing"));
}

bool StreamAdapter::readOnlyRemoteOk(AttributeId /*attr*/) const noexcept { return false; }

void StreamAdapter::doBaseZelNboAttrLogSaMsg(AttributeId /*attr*/,
                                             DeserializationOptions /*options*/, unsigned /*size*/,
                                             const Ptr<NboAttrLog::In>& /*in*/) {
  if (Demuxer* const demuxer = streamDemuxer()) {
    demuxer->unknownAttributesInc();
  }
}

bool StreamAdapter::isInTree() const noexcept {
  const Entity* const entity = rawEntity();
  return entity != nullptr && (!hasFlag(flagMember) || entity->zelHasParent());
}

Entity::ZelNboAttrLogSa::ZelNboAttrLogSa(const FlowPlan& plan, Zel_BitSet flags,
                                         unsigned /*option*/, const Ptr<NboAttrLog::Out>& out,
                                         PtrInterface* owner)
    : StreamAdapter(flags, out, owner), plan_(plan) {}

Entity::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;

void Entity::ZelNboAttrLogSa::prefetch() const noexcept {
  // An entity's counters come first and its list of notifiees last, with the attribute between.
  constexpr std::size_t line = 64;
  constexpr std::size_t most = 8 * line;
  const auto* const entity = reinterpret_cast<const char*>(rawNotifier());
  for (std::size_t at = 0, size = std::min(plan_.table.size, most); at < size; at += line) {
    __builtin_prefetch(entity + at);
  }
  const auto* const notifiee = reinterpret_cast<const char*>(notifiee_.ptr());
  __builtin_prefetch(notifiee);
  __builtin_prefetch(notifiee + line);
}

void Entity::ZelNboAttrLogSa::onNotificationException(AttributeId attr) {
  const std::exception_ptr failure = std::current_exception();
  if (!failure) {
    return;
  }
  const Ptr<NboAttrLog::Out> out = nboAttrLogOut();
  const auto lost = [&](const char* why) {
    if (Connection* const connection = out ? out->connection() : nullptr) {
      connection->fail(String8("change of attribute " + std::to_string(attr) + " lost: ") + why);
    }
  };
  try {
    std::rethrow_exception(failure);
  } catch (const ReadOnlyException&) {
    throw;
  } catch (const std::exception& other) {
    lost(other.what());
  } catch (...) {
    lost("unknown failure");
  }
}

void Entity::ZelNboAttrLogSa::onZeroReferences() { doRemountSelf(nullptr); }

void Entity::ZelNboAttrLogSa::doRemountSelf(const Ptr<NboAttrLog::Out>& out) {
  if (out) {
    return;
  }
  const Ptr<ZelNboAttrLogSa> kept(this);
  Demuxer* const demuxer = streamDemuxer();
  if (demuxer != nullptr && demuxer->adapter(entityId()) == this) {
    demuxer->reactorDel(entityId());
  }
  notifierIs(nullptr);
}

void Entity::ZelNboAttrLogSa::handleAttrTransaction(AttributeId attr, AttrTransactionType type,
                                                    unsigned /*n*/) {
  Demuxer* const demuxer = streamDemuxer();
  NboAttrLog::FlowIn* const flow = demuxer != nullptr ? demuxer->flowIn(entityId()) : nullptr;
  if (flow == nullptr) {
    return;
  }
  if (type == attrTransactionBegin && flow->aid() == attr) {
    flow->transactionIs(attr);
  } else if (type == attrTransactionEnd && (flow->aid() == attr || flow->transaction() == attr)) {
    demuxer->flowInDel(entityId());
  }
}

bool Entity::ZelNboAttrLogSa::convertedToWritable(bool /*force*/) const {
  const Demuxer* const demuxer = streamDemuxer();
  return demuxer != nullptr && demuxer->policy() != nullptr && demuxer->policy()->mayWrite(*this);
}

bool Entity::ZelNboAttrLogSa::isHandlingFlowIn(AttributeId attr) const {
  // Where local writes are refused, they are so in a transaction too.
  const Demuxer* const demuxer = streamDemuxer();
  const NboAttrLog::FlowIn* const flow =
      demuxer != nullptr && (!hasFlag(flagReadOnly) || convertedToWritable(false))
          ? demuxer->flowIn(entityId())
          : nullptr;
  return flow != nullptr && flow->transaction() == attr && flow->passed() != attr;
}

bool Entity::ZelNboAttrLogSa::prepareImmediateTransmission(AttributeId attr, bool noRoom) {
  const Ptr<FlowOut> owed = flowOut();
  if (!owed) {
    return !noRoom;
  }
  if (hasFlag(flagScheduledFlowOut)) {
    return !noRoom;
  }
  if (Demuxer* const demuxer = streamDemuxer()) {
    demuxer->schedule(*owed);
  }
  const FlowStep* const step = plan().step(attr);
  if (step != nullptr && step->kind == FlowKind::text && owed->valueIter() != nullptr &&
      owed->attrId() == attr) {
    // The text that is under way gives way to a newer one.
    freeResyncState(owed);
    owed->pendingAbortIs(attr, true);
  }
  return !noRoom && (step == nullptr || !isCollection(step->kind) || owed->hasBit(*step));
}

void Entity::ZelNboAttrLogSa::sendTransactionMarker(AttributeId attr, AttrTransactionType type,
                                                    unsigned n) {
  const Ptr<NboAttrLog::Out>& out = nboAttrLogOut();
  if (!out) {
    return;
  }
  out->nextHeaderIs(
      MsgHeader::fixed(entityId(), NboAttrLog::attrIdTransaction, 3 * sizeof(std::uint32_t)));
  out << NboAttrLog::transactBegin;
  out << int{attr};
  out << static_cast<unsigned>(type);
  out << n;
  out << NboAttrLog::transactEnd;
}

bool AdapterSearch::looksAt(const PtrInterface::NotifieeConst& notifiee) {
  PtrInterface::NotifieeConst* const reactor = notifiee.zelRawReactor();
  if (reactor == nullptr || !reactor->isStreamAdapter()) {
    return false;
  }
  // Every stream adapter is one of an entity.
  auto* const adapter = static_cast<Entity::ZelNboAttrLogSa*>(reactor);
  if (out_ == nullptr) {
    if (adapter->hasUnifiedEntityId() && adapter->nboAttrLogOut()->carriesChannel()) {
      found_.ptrAssign(adapter);
    }
    return static_cast<bool>(found_);
  }
  if (adapter->nboAttrLogOut().ptr() == out_) {
    found_.ptrAssign(adapter);
    return true;
  }
  const Demuxer* const demuxer = NboAttrLog::demuxFor(out_->rawReverseLog());
  if (demuxer == nullptr) {
    return true;
  }
  if (adapter->hasUnifiedEntityId()) {
    StreamAdapter* const same = demuxer->adapter(adapter->entityId());
    if (same != nullptr && same->zelNotifierEntity() == &entity_) {
      found_.ptrAssign(static_cast<Entity::ZelNboAttrLogSa*>(same));
      return true;
    }
  }
  return false;
}

bool ChannelSearch::looksAt(const PtrInterface::NotifieeConst& notifiee) {
  PtrInterface::NotifieeConst* const reactor = notifiee.zelRawReactor();
  if (reactor == nullptr || !reactor->isStreamAdapter()) {
    return false;
  }
  auto* const adapter = static_cast<Entity::ZelNboAttrLogSa*>(reactor);
  const PtrInterface* const entry = other_ != nullptr ? other_->channelEntry() : nullptr;
  if (adapter == other_ || !adapter->hasUnifiedEntityId() ||
      !adapter->nboAttrLogOut()->carriesChannel() ||
      (entry != nullptr && adapter->channelEntry() != entry)) {
    return false;
  }
  found_.ptrAssign(adapter);
  return true;
}

Demuxer* zelDemuxerOf(const NboAttrLog::Out* out) noexcept {
  return out != nullptr ? NboAttrLog::demuxFor(out->rawReverseLog()) : nullptr;
}

void zelAdapterDel(Demuxer& demuxer, Entity::ZelNboAttrLogSa* adapter) {
  if (adapter != nullptr && demuxer.adapter(adapter->entityId()) == adapter) {
    demuxer.reactorDel(adapter->entityId());
  }
}

} // namespace Zel
