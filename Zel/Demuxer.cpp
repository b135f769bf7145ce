#include <Zel/Demuxer>

#include <Zel/Dir>
#include <Zel/Exception>
#include <Zel/ZelType>

#include <algorithm>
#include <new>
#include <string>

namespace Zel {

NboAttrLogDemuxerManager& globalNboAttrLogDemuxerManager() {
  static thread_local NboAttrLogDemuxerManager manager;
  return manager;
}

namespace NboAttrLog {

namespace {

using Flags = PtrInterface::NotifieeConst::Zel_BitSet;

/// What one run of one adapter writes, about. Small enough that a member's attributes follow the
/// member soon, and that no adapter waits for long.
constexpr std::size_t runBudget = 16384;

/// Room for the markers that one step of a run may write beside a record, all of them of 40 bytes.
constexpr std::size_t markerRoom = 4096;

bool hasRoomForStep(const Out& out) {
  return out.isUp() && out.freeSpace() >= Out::maxRecordSize + markerRoom;
}

Flags with(Flags flags, unsigned bits) {
  flags.bitsIs(bits, true);
  return flags;
}

} // namespace

MountPolicy::~MountPolicy() = default;
bool MountPolicy::mayWrite(const StreamAdapter& /*adapter*/) { return false; }
void MountPolicy::mounted(const Ptr<Entity::ZelNboAttrLogSa>& /*root*/) {}
void MountPolicy::resyncing(const Ptr<Entity>& /*entity*/) {}
void MountPolicy::synced(const Ptr<Entity>& /*entity*/) {}
bool MountPolicy::sessionRecord(In& /*in*/) { return false; }

DirMounts::DirMounts(Ptr<Dir> dir, Flags flags, std::size_t most)
    : dir_(std::move(dir)), flags_(flags), most_(most) {}
DirMounts::~DirMounts() = default;

MountPolicy::Mount DirMounts::mount(const Ptr<Entity>& fresh) {
  Ptr<Entity> there = dir_->entity(fresh->name());
  if (!there && dir_->entities().size() < most_) {
    dir_->entityIs(fresh);
    there = fresh;
  } else if (there && there->fwkType() != fresh->fwkType()) {
    there = nullptr;
  }
  return {there, flags_};
}

void DirMounts::synced(const Ptr<Entity>& entity) {
  const Ptr<Dir::Entry> entry = dir_->entry(entity->name());
  if (entry && entry->entity() == entity) {
    entry->statusIs(Dir::loaded);
  }
}

Demuxer::Demuxer(Connection& connection, Ptr<MountPolicy> policy)
    : connection_(&connection), policy_(std::move(policy)) {
  globalNboAttrLogDemuxerManager().demuxerIs(this);
}

Demuxer::~Demuxer() { globalNboAttrLogDemuxerManager().demuxerDel(this); }

void Demuxer::close() {
  closed_ = true;
  while (StreamAdapter* const adapter = adapters_.any()) {
    const Ptr<StreamAdapter> kept = reactorDel(adapter->entityId());
    if (const Ptr<Root> root = kept->root()) {
      root->demuxerDel();
    }
    kept->doRemountSelf(nullptr);
  }
  while (FlowIn* const flow = flowIns_.any()) {
    flowInFree(*flow);
  }
}

void Demuxer::rootDel(Root& root) {
  root.demuxerDel();
  std::vector<Ptr<StreamAdapter>> adapters;
  adapters_.forEach([&](StreamAdapter& adapter) {
    if (adapter.root_.ptr() == &root) {
      adapters.emplace_back(&adapter);
    }
  });
  for (const Ptr<StreamAdapter>& adapter : adapters) {
    if (reactorDel(adapter->entityId())) {
      adapter->doRemountSelf(nullptr);
    }
  }
}

Ptr<Entity::ZelNboAttrLogSa> Demuxer::exportIs(const Ptr<Entity>& root, Flags flags) {
  const EntityId id = newEntityId();
  Ptr<Entity::ZelNboAttrLogSa> adapter = root->zelNboAttrLogSaIs(
      with(flags, StreamAdapter::flagWeakNotifiee), 1, connection_->out(), nullptr);
  if (!adapter) {
    throwRangeException("no attribute log: " + root->fullName());
  }
  rootIs(*adapter, id, false);
  adapterIs(adapter, id);
  try {
    adapter->doSerializeOrphan();
  } catch (...) {
    adapter->doRemountSelf(nullptr); // the peer knows nothing of it
    throw;
  }
  return adapter;
}

void Demuxer::rootIs(StreamAdapter& adapter, EntityId id, bool isImported) {
  const Ptr<Root> root = makeObject<Root>(*this, isImported);
  root->entityId_ = id;
  const Ptr<FlowOut> flowOut = adapter.flowOut(); // where a peer announces a root once more
  if (flowOut && adapter.root_) {
    adapter.root_->flowGone(*flowOut);
  }
  adapter.root_ = root;
  if (flowOut) {
    root->flowCome(*flowOut);
  }
}

void Demuxer::announcingIs(bool announcing) {
  announcing_ = announcing;
  while (announcing && parked_.head != nullptr) {
    schedule(*parked_.head);
  }
}

EntityId Demuxer::newEntityId() {
  if (!announcing_ || closed_ || connection_ == nullptr) {
    throw EntityIdUnavailableException(closed_ ? "connection closed" : "no entity ids yet");
  }
  ++lastId_;
  const auto end = static_cast<std::uint32_t>(connection_->end() == Connection::End::second);
  return {static_cast<std::uint32_t>(lastId_ << 1),
          static_cast<std::uint32_t>(lastId_ >> 31) | end << 31};
}

bool Demuxer::isOwnId(EntityId id) const noexcept {
  return (id.second >> 31 != 0) == (connection_->end() == Connection::End::second);
}

bool Demuxer::hasGiven(EntityId id) const noexcept {
  const std::uint64_t number = id.first >> 1 | std::uint64_t{id.second & 0x7fffffffU} << 31;
  return isOwnId(id) && !id.isUnified() && number != 0 && number <= lastId_;
}

void Demuxer::adapterIs(const Ptr<StreamAdapter>& adapter, const EntityId& id) {
  if (closed_) {
    throwInternalException("connection closed");
  }
  ahead_ = nullptr; // which may be somebody else now
  if (adapters_.find(adapter->entityId_) == adapter.ptr()) {
    flowInDel(adapter->entityId_);
    adapters_.remove(*adapter);
    announced_ -= isOwnId(adapter->entityId_) ? 0 : 1;
    announced_ += isOwnId(id) ? 0 : 1;
    adapter->entityId_ = id;
    adapters_.insert(*adapter);
    return;
  }
  announced_ += isOwnId(id) ? 0 : 1;
  adapter->entityId_ = id;
  adapters_.insert(*adapter);
  adapter->referencesInc();
}

void Demuxer::announcedLimit() const {
  if (connection_ != nullptr && announced_ >= connection_->limits().maxEntities) {
    throw AttrLogRecordException("more entities than are kept for a peer");
  }
}

Ptr<StreamAdapter> Demuxer::reactorDel(const EntityId& id) {
  StreamAdapter* const found = adapters_.find(id);
  if (found == nullptr) {
    return nullptr;
  }
  adapters_.remove(*found);
  announced_ -= isOwnId(id) ? 0 : 1;
  ahead_ = nullptr;
  flowInDel(id);
  if (found->flowOut()) {
    dequeue(*found->flowOut());
    found->flowOutSet(nullptr);
  }
  return Ptr<StreamAdapter>::adopt(found);
}

/// Closes what the peer has half sent below a root.
void Demuxer::flowInsDel(const Root& root) {
  std::vector<EntityId> ids;
  flowIns_.forEach([&](const FlowIn& flow) {
    const StreamAdapter* const adapter = adapters_.find(flow.entityId_);
    if (adapter != nullptr && adapter->root_.ptr() == &root) {
      ids.push_back(flow.entityId_);
    }
  });
  for (const EntityId id : ids) {
    flowInDel(id);
  }
}

Ptr<FlowIn> Demuxer::flowInIs(const EntityId& id) {
  if (FlowIn* const there = flowIns_.find(id)) {
    return Ptr<FlowIn>(there);
  }
  Ptr<FlowIn> flow = makeObject<FlowIn>(id);
  flowIns_.insert(*flow);
  flow->referencesInc();
  if (StreamAdapter* const adapter = adapters_.find(id)) {
    adapter->rawFlagsIs(StreamAdapter::flagFlowIn, true);
  }
  return flow;
}

void Demuxer::flowInDel(const EntityId& id) {
  FlowIn* const flow = flowIns_.find(id);
  if (flow == nullptr) {
    return;
  }
  flowInFree(*flow);
  StreamAdapter* const adapter = adapters_.find(id);
  if (adapter == nullptr) {
    return;
  }
  adapter->rawFlagsIs(StreamAdapter::flagFlowIn, false);
  if (adapter->flowOut()) {
    schedule(*adapter->flowOut()); // which may have waited for the end of the transaction
  }
}

void Demuxer::flowInFree(FlowIn& flow) noexcept {
  flowIns_.remove(flow);
  partialText_ -= flow.partial_;
  flow.partial_ = 0;
  flow.referencesDec();
}

void Demuxer::partialTextIs(FlowIn& flow, std::size_t length) {
  partialText_ += length - flow.partial_;
  flow.partial_ = length;
  if (connection_ != nullptr && partialText_ > connection_->limits().maxPartialText) {
    throw AttrLogRecordException(
        String8("unfinished texts of " + std::to_string(partialText_) + " bytes, at most " +
                std::to_string(connection_->limits().maxPartialText) + " are kept"));
  }
}

void Demuxer::createFlowOut(const Ptr<StreamAdapter>& adapter, const ConnectDesc& connect,
                            bool flag, AttributeId start) {
  if (closed_ || adapters_.find(adapter->entityId_) != adapter.ptr()) {
    return; // nobody would work it off
  }
  const FlowPlan& plan = static_cast<Entity::ZelNboAttrLogSa&>(*adapter).plan();
  if (plan.steps.empty() && start != attrIdFlowEnd && !adapter->flowOut()) {
    return; // nothing of such an entity flows, and a walk may ask for a million of them
  }
  const Ptr<FlowOut> flowOut = adapter->flowOutIs(adapter->out_, connect, flag, start);
  if (adapter->root_) {
    // What a marked flow announces belongs to it.
    const std::uint32_t mark = adapter->root_->mark_;
    const bool isOfMarked = running_ != nullptr && running_->isMarked(mark) &&
                            running_->streamAdapter()->root_ == adapter->root_;
    flowOut->since_ = isOfMarked ? mark - 1 : mark;
  }
  if (const Ptr<FlowOut> former = adapter->flowOut()) {
    for (FlowOut::ZelPendingAbort::IteratorConst at(former->pendingAbort_); at; at.advance()) {
      flowOut->pendingAbortIs(at->zelKey(), at->zelValue());
    }
    flowOut->openWalk_ = former->openWalk_;
    if (adapter->root_ && former->isMarked(adapter->root_->mark_)) {
      flowOut->since_ = former->since_;
    }
    if (former->valueIter() != nullptr) {
      flowOut->pendingAbortIs(former->attrId(), true);
    }
    for (const FlowStep& step : plan.steps) {
      if (step.startsClean && former->hasBit(step)) {
        flowOut->bitIs(step, true);
      }
    }
    dequeue(*former);
  } else if (start != attrIdFlowEnd && !flowOut->hasDirtyAttributes()) {
    return;
  }
  adapter->flowOutSet(flowOut);
  schedule(*flowOut);
}

void Demuxer::enqueue(Queue& queue, FlowOut& flowOut) noexcept {
  flowOut.previous_ = queue.tail;
  flowOut.next_ = nullptr;
  (queue.tail != nullptr ? queue.tail->next_ : queue.head) = &flowOut;
  queue.tail = &flowOut;
  ++queue.count;
  enoughSet();
}

/// Leaves some room to those that are scheduled.
void Demuxer::enoughSet() noexcept {
  constexpr std::size_t kept = Out::maxRecordSize + 2 * markerRoom;
  if (connection_ != nullptr) {
    connection_->out()->enough_ = scheduled_.head != nullptr ? kept : Out::maxRecordSize;
  }
}

void Demuxer::dequeue(FlowOut& flowOut) noexcept {
  if (!flowOut.isScheduled_ && !flowOut.isParked_) {
    return;
  }
  Queue& queue = flowOut.isScheduled_ ? scheduled_ : parked_;
  (flowOut.previous_ != nullptr ? flowOut.previous_->next_ : queue.head) = flowOut.next_;
  (flowOut.next_ != nullptr ? flowOut.next_->previous_ : queue.tail) = flowOut.previous_;
  --queue.count;
  flowOut.isScheduled_ = flowOut.isParked_ = false;
  enoughSet();
}

void Demuxer::schedule(FlowOut& flowOut) noexcept {
  if (flowOut.isScheduled_ || flowOut.isRunning_) {
    return;
  }
  dequeue(flowOut);
  flowOut.isScheduled_ = true;
  enqueue(scheduled_, flowOut);
}

bool Demuxer::continueRun(const FlowOut* flowOut) noexcept {
  const Out& out = *connection_->out();
  const bool goesOn = !runIsOver_ && hasRoomForStep(out) && out.bytesWritten() < runEnd_ &&
                      (flowOut == nullptr || flowOut->valueIter() == nullptr);
  runIsOver_ = runIsOver_ || (!goesOn && flowOut != nullptr && flowOut->isRunning_);
  return goesOn;
}

namespace {

/// Whether a flow that is over has been through all attributes. A run that stops in the last one is
/// over as well, but has not.
bool isOnceThrough(const StreamAdapter& adapter, const FlowOut& flowOut) {
  const auto& steps = static_cast<const Entity::ZelNboAttrLogSa&>(adapter).plan().steps;
  return flowOut.valueIter() == nullptr &&
         std::all_of(steps.begin(), steps.end(), [&](const FlowStep& step) {
           return !isCollection(step.kind) || flowOut.hasBit(step);
         });
}

/// Says for its scope that records are being applied or written.
class Serving {
public:
  explicit Serving(bool& flag) noexcept : flag_(flag) { flag_ = true; }
  ~Serving() { flag_ = false; }
  Serving(const Serving&) = delete;
  Serving& operator=(const Serving&) = delete;

private:
  bool& flag_;
};

} // namespace

bool Demuxer::outputWrite(std::size_t budget) {
  if (isServing_) {
    return false;
  }
  const Serving serving(isServing_);
  const Out& out = *connection_->out();
  const std::uint64_t end = out.bytesWritten() + budget;
  while (scheduled_.head != nullptr && hasRoomForStep(out) && out.bytesWritten() < end) {
    run(*scheduled_.head);
  }
  return scheduled_.head != nullptr && hasRoomForStep(out);
}

void Demuxer::run(FlowOut& flowOut) {
  const Ptr<FlowOut> kept(&flowOut);
  const Ptr<StreamAdapter> adapter(flowOut.streamAdapter());
  const Out& out = *connection_->out();
  dequeue(flowOut);
  if (adapter->hasFlag(StreamAdapter::flagMember) && !adapter->rawEntity()->zelHasParent()) {
    adapter->doRemountSelf(nullptr); // taken out of its directory: nothing of it is owed any more
    return;
  }
  const std::uint64_t before = out.bytesWritten();
  const AttributeId start = flowOut.heldIn() != 0 ? flowOut.heldIn() : flowOut.resumeAt_;
  AttributeId next = 0;
  runEnd_ = before + runBudget;
  runIsOver_ = false;
  flowOut.isRunning_ = true;
  running_ = &flowOut;
  const Ptr<Root> root = adapter->root_;
  if (start == 0 && root) {
    flowOut.passSince_ = root->mark_;
    flowOut.isPassWhole_ = true;
  }
  try {
    next = adapter->handleAttrFlowOut(start);
  } catch (const std::exception& failure) {
    connection_->fail(String8("flow of an entity's attributes ended: ") + failure.what());
  }
  flowOut.isRunning_ = false;
  running_ = nullptr;
  runIsOver_ = false;
  runEnd_ = ~std::uint64_t{0};
  if (adapter->flowOut() != kept) {
    return; // replaced, or gone with the entity
  }
  flowOut.resumeAt_ = next;
  if (next == 0 && root && flowOut.isMarked(root->mark_) && flowOut.passSince_ == root->mark_ &&
      flowOut.isPassWhole_ && isOnceThrough(*adapter, flowOut)) {
    flowOut.since_ = root->mark_;
    --root->marked_;
  }
  if (next == 0 && !flowOut.hasDirtyAttributes()) {
    adapter->flowOutSet(nullptr);
    return;
  }
  // One that could do nothing waits until something happens to it, or it would be run for ever.
  constexpr unsigned char manyRuns = 2 * maxFlowingAttributes;
  const bool wrote = out.bytesWritten() != before;
  flowOut.idleRuns_ = static_cast<unsigned char>(wrote ? 0 : flowOut.idleRuns_ + 1);
  const bool isIdle = !wrote && (next == start || flowOut.isHeld() || flowOut.idleRuns_ > manyRuns);
  flowOut.isParked_ = isIdle;
  flowOut.isScheduled_ = !isIdle;
  enqueue(isIdle ? parked_ : scheduled_, flowOut);
}

bool Demuxer::checkEphemeralEntityDeletion(Entity* child, const EntityId& id, bool /*announced*/) {
  const Ptr<Entity::ZelNboAttrLogSa> adapter = child->zelNboAttrLogSa(connection_->out());
  // An entity that this end has announced as well is the same one, under two ids. Otherwise a new
  // id from the peer is a new entity of the peer's.
  return adapter && !(adapter->entityId() == id) && !adapter->hasUnifiedEntityId() &&
         adapters_.find(adapter->entityId()) == adapter.ptr() && !isOwnId(adapter->entityId());
}

bool Demuxer::inputApply(std::size_t budget) {
  if (isServing_) {
    return false;
  }
  const Serving serving(isServing_);
  const Ptr<In> kept = connection_->in();
  In& in = *kept;
  Record record;
  std::size_t applied = 0;
  budget = std::max<std::size_t>(budget, 1);
  try {
    while (connection_->isUp() && applied < budget && in.recordIs(record)) {
      struct Done {
        In& in;
        ~Done() { in.recordDone(); }
      } const done{in};
      StreamAdapter* const known = ahead_;
      aheadPrefetch(in, record.payload + recordOverhead);
      applied += record.payload + recordOverhead;
      ++counts_.records;
      try {
        recordApply(record, known);
      } catch (const AttrLogRecordException&) {
        throw;
      } catch (const RangeException&) {
        ++counts_.badValues;
      } catch (const ReadOnlyException&) {
        ++counts_.refused;
      }
    }
  } catch (const AttrLogRecordException& failure) {
    connection_->fail(failure.message());
  } catch (const std::bad_alloc&) {
    connection_->fail("no memory for what the peer sends");
  } catch (const std::exception& failure) {
    connection_->fail(String8("a record could not be applied: ") + failure.what());
  }
  return connection_->isUp() && applied >= budget;
}

/// Looks at whom the records behind one of `size` bytes are for: what the next will touch has
/// arrived in the cache when its turn comes, and where it lies has when that is to be found out.
void Demuxer::aheadPrefetch(const In& in, std::size_t size) noexcept {
  ahead_ = nullptr;
  EntityId next;
  if (!in.entityAhead(size, next)) {
    return;
  }
  ahead_ = adapters_.find(next);
  if (ahead_ != nullptr) {
    static_cast<const Entity::ZelNboAttrLogSa*>(ahead_)->prefetch();
  }
  if (in.entityAhead(size, next)) {
    adapters_.prefetch(next);
  }
}

namespace {

/// Whether the peer may send this record where it may not write.
bool isGranted(const StreamAdapter& adapter, AttributeId attr) {
  return adapter.readOnlyRemoteOk(attr) ||
         static_cast<const Entity::ZelNboAttrLogSa&>(adapter).convertedToWritable(false);
}

} // namespace

/// `known` is whom the record is for, if it is for that one; null if nobody has looked ahead.
void Demuxer::recordApply(const Record& record, StreamAdapter* known) {
  const MsgHeader& header = record.header;
  if (header.attrId == attrIdOrphan || header.entityId == orphanEntityId) [[unlikely]] {
    if (header.attrId != attrIdSession) {
      orphanApply(record);
    } else if (!policy_ || !policy_->sessionRecord(*connection_->in())) {
      ++counts_.unknownAttributes;
    }
    return;
  }
  StreamAdapter* const found = known != nullptr && known->entityId_ == header.entityId
                                   ? known
                                   : adapters_.find(header.entityId);
  if (found == nullptr) [[unlikely]] {
    ++counts_.unknownEntities;
    if (droppingRoots_ != 0) { // it may be of a member whose announcement was dropped
      ++counts_.dropped;
    }
    return;
  }
  const Ptr<StreamAdapter> adapter(found);
  if (adapter->hasFlag(StreamAdapter::flagMember) && !adapter->rawEntity()->zelHasParent()) {
    // Taken out of its directory here, where the peer does not know it yet.
    adapter->doRemountSelf(nullptr);
    ++counts_.unknownEntities;
    return;
  }
  if (adapter->hasFlag(StreamAdapter::flagRemoteReadOnly) && !isGranted(*adapter, header.attrId))
      [[unlikely]] {
    ++counts_.refused;
    return;
  }
  if (adapter->root_ && !adapter->root_->isInputApplied()) [[unlikely]] {
    unsoughtApply(record, *adapter);
  } else if (header.attrId == attrIdTransaction) {
    transactionApply(*adapter);
  } else if (header.attrId == attrIdSyncMode && adapter->root_ && !adapter->root_->isImported() &&
             adapter->root_->input() == Root::Input::changes) {
    ++counts_.refused; // as a marker is
  } else {
    adapter->handleAttrDeserialization(header.attrId, {}, static_cast<unsigned>(record.payload),
                                       nullptr);
  }
}

/// A record for a root below which nothing of the peer's is applied. Where it is dropped, what
/// stands here is pending from now on, to that peer alone.
void Demuxer::unsoughtApply(const Record& record, StreamAdapter& adapter) {
  const Ptr<Root> root = adapter.root_;
  if (root->input() == Root::Input::refused) {
    ++counts_.refused;
    return;
  }
  const AttributeId attr = std::abs(record.header.attrId);
  const auto& plan = static_cast<const Entity::ZelNboAttrLogSa&>(adapter).plan();
  const bool isOfBase = plan.step(attr) == nullptr && attr != attrIdCompound;
  if (isOfBase || record.chunkFollows) {
    return; // a marker, or a part of a text: what it belongs to is dropped with its last part
  }
  ++counts_.dropped;
  ++root->dropped_;
  // The adapter hears of it as of a change here.
  adapter.handleAttrDeserialization(record.header.attrId, {}, static_cast<unsigned>(record.payload),
                                    connection_->in());
}

void Demuxer::transactionApply(StreamAdapter& adapter) {
  In& in = *connection_->in();
  const AttributeId attr = in.nextint();
  const unsigned type = in.nextU32();
  const unsigned n = in.nextU32();
  if (type > StreamAdapter::attrTransactionEnd) {
    throwRangeException("AttrTransactionType");
  }
  if (adapter.root_ && adapter.root_->input() == Root::Input::changes &&
      type != StreamAdapter::attrTransactionAbort) {
    ++counts_.refused; // who may write only what he changes has nothing to sweep
    return;
  }
  adapter.handleAttrTransaction(attr, static_cast<StreamAdapter::AttrTransactionType>(type), n);
}

void Demuxer::orphanApply(const Record& record) {
  const auto malformed = [](const char* why) {
    throw AttrLogRecordException(String8("malformed record: ") + why);
  };
  if (record.header.attrId != attrIdOrphan || !(record.header.entityId == orphanEntityId)) {
    malformed("a root under an id");
  }
  In& in = *connection_->in();
  const auto section = [&](PayloadSection wanted) {
    if (in.next8() != wanted) {
      malformed("a root's sections");
    }
  };
  section(payloadSectionType);
  const String8 name = in.nextString();
  while (in.left() != 0 && *in.position() == 0) {
    in.nextString(); // a base's name: its length begins with 0, which numbers no section
  }
  const ZelType* const type = ZelType::type(name.view());
  if (type == nullptr || !type->isEntity()) {
    ++counts_.unknownTypes;
    return;
  }
  section(payloadSectionArgs);
  const Ptr<Entity> fresh = type->newEntity(Ptr<In>(&in), {}, 1, nullptr);
  if (!fresh) {
    ++counts_.unknownTypes;
    return;
  }
  section(payloadSectionEntityId);
  const EntityId id = in.nextEntityId();
  if (id.value() == 0 || id == orphanEntityId || (isOwnId(id) && !id.isUnified())) {
    malformed("a root's id");
  }
  if (adapters_.find(id) != nullptr) {
    malformed("a root under an id in use");
  }
  announcedLimit();
  const MountPolicy::Mount mount = policy_ ? policy_->mount(fresh) : MountPolicy::Mount{};
  const Ptr<Entity::ZelNboAttrLogSa> former =
      mount.entity ? mount.entity->zelNboAttrLogSa(Ptr<const Out>(connection_->out())) : nullptr;
  if (!mount.entity || (former && !former->hasFlag(StreamAdapter::flagImported))) {
    ++counts_.refused; // what this end exports over the connection is not the peer's to mount
    return;
  }
  if (!(mount.entity == fresh) && type->table() != nullptr) {
    // What the record has made the entity with holds for one from an earlier connection too.
    for (const AttrRow& row : type->table()->rows) {
      if ((row.options & constructorArgument) != 0 && row.write != nullptr) {
        ValueSlot value(*row.value, [&](void* to) { row.read(fresh.ptr(), to); });
        const WritePermission permission(*mount.entity, row.id);
        row.write(mount.entity.ptr(), value.at());
      }
    }
  }
  const Ptr<Entity::ZelNboAttrLogSa> adapter = mount.entity->zelNboAttrLogSaIs(
      with(mount.flags, StreamAdapter::flagWeakNotifiee | StreamAdapter::flagImported), 1,
      connection_->out(), nullptr);
  if (adapter) {
    rootIs(*adapter, id, true);
    adapter->doEntityIdIs(id, Ptr<Demuxer>(this), true);
    policy_->mounted(adapter);
  }
}

} // namespace NboAttrLog

} // namespace Zel
