#include "Watch.h"

#include <attrlog/FlowOut.h>

namespace Histories {

namespace Log = Zel::NboAttrLog;

namespace {

/// What the entity's adapter owes over the connection; null if nothing.
const Log::FlowOut* flowOf(Zel::Entity& entity, const Zel::Connection& connection) {
  const auto adapter = entity.zelNboAttrLogSa(Zel::Ptr<const Log::Out>(connection.out()));
  return adapter ? adapter->flowOut().ptr() : nullptr;
}

/// A record of a session that says what may be mirrored, see docs/wire-format.md.
constexpr unsigned wireGrant = 5;

/// Bytes of texts that follow each other in records of one text, at least.
constexpr std::size_t longText = Zel::ConnectionLimits::smallestRing;

} // namespace

void Watch::sent(End from, std::span<const std::uint8_t> bytes) {
  way(from).send(bytes, [&](const WireRecord& record) {
    const bool crosses = way(other(from)).isOnItsWay(record);
    if (record.isMember) {
      reached_.addIf(Branch::membersCross, crosses);
    } else if (record.isMarker()) {
      const std::uint32_t what = record.number(4);
      reached_.addIf(Branch::markersCross,
                     crosses && what == Zel::StreamAdapter::attrTransactionBegin);
      reached_.addIf(Branch::textAborted, what == Zel::StreamAdapter::attrTransactionAbort);
    } else if (record.isChange()) {
      reached_.addIf(Branch::collectionCrosses, crosses);
    } else if (record.isSyncMode()) {
      const WireWay::Open& open = way(from).sent();
      const std::uint64_t root = record.entity.value();
      const bool begins = record.number(0) == Zel::StreamAdapter::syncModeResync;
      reached_.addIf(Branch::twoWalks, begins && open.walks.size() > open.walks.count(root));
    }
    textBytes_ = record.textFollows ? textBytes_ + record.payload.size() : 0;
    reached_.addIf(Branch::longText, textBytes_ > longText);
  });
}

void Watch::arrived(End to, std::span<const std::uint8_t> bytes) {
  way(other(to)).arrive(bytes, [&](const WireRecord& record) {
    hasGrants_ = hasGrants_ || record.kind() == wireGrant;
  });
}

bool Watch::isWalking() const { return !way(of_.exporter).sent().walks.empty(); }

bool Watch::owes(End end) const {
  return connection(end).isUp() && connection(end).demuxer()->scheduled() != 0;
}

void Watch::look() {
  for (const End end : {End::first, End::second}) {
    if (!connection(end).isUp()) {
      continue;
    }
    const Log::Demuxer& demuxer = *connection(end).demuxer();
    reached_.addIf(Branch::noRoom, !connection(end).out()->hasSufficientBuffer());
    reached_.addIf(Branch::parked, demuxer.parked() != 0);
    reached_.addIf(Branch::strangeEnum, demuxer.counts().unknownEnums != 0);
    reached_.addIf(Branch::middleDrops, end == of_.exporter && demuxer.counts().dropped != 0 &&
                                            of_.original->number() != 0);
    if (demuxer.scheduled() != 0) {
      flowsLook(end, end == of_.exporter ? *of_.original : *of_.copy);
    }
  }
  const bool isUp = of_.link->isUp();
  const bool exporterIsUp = connection(of_.exporter).isUp();
  const bool mirrorIsUp = connection(mirror()).isUp();
  reached_.addIf(Branch::cutHeardByExporterFirst, !isUp && !exporterIsUp && mirrorIsUp);
  reached_.addIf(Branch::cutHeardByMirrorFirst, !isUp && exporterIsUp && !mirrorIsUp);
  if (isUp) {
    wasOwing_ = owes(End::first) || owes(End::second);
  } else {
    reached_.addIf(Branch::cutWhileOwing, wasOwing_);
  }
}

/// What adapters are in the midst of.
void Watch::flowsLook(End end, const Model& model) {
  if (reached_.has(Branch::walkSuspended) && reached_.has(Branch::textSuspended) &&
      reached_.has(Branch::endDeferred) && reached_.has(Branch::coalesced)) {
    return;
  }
  forEntities(*model.roots(), [&](Zel::Entity& entity) {
    const auto adapter = entity.zelNboAttrLogSa(Zel::Ptr<const Log::Out>(connection(end).out()));
    if (!adapter) {
      return;
    }
    reached_.addIf(Branch::coalesced, adapter->root() && adapter->root()->coalesced() != 0);
    if (const Log::FlowOut* const flow = adapter->flowOut().ptr()) {
      reached_.addIf(Branch::walkSuspended, flow->bookmark() != nullptr);
      reached_.addIf(Branch::textSuspended, flow->valueIter() != nullptr);
      reached_.addIf(Branch::endDeferred, flow->hasDataBit(Log::FlowOut::dataBitEndDeferred));
    }
  });
}

void Watch::ended() {
  cutLook();
  membersLook();
  ++connections_;
  for (const End end : {End::first, End::second}) {
    way(end) = WireWay();
    deletedWhileDown_[end == End::second ? 1 : 0].clear();
  }
  textBytes_ = 0;
  hasGrants_ = false;
  wasOwing_ = false;
}

void Watch::cutLook() {
  const WireWay::Open& down = way(of_.exporter).arrived();
  reached_.addIf(Branch::cutInWalk, !down.walks.empty());
  reached_.addIf(Branch::cutInAnotherWalk, !down.walks.empty() && connections_ != 0);
  for (const End end : {End::first, End::second}) {
    const WireWay& from = way(end);
    reached_.addIf(Branch::cutInCollection, !from.arrived().collections.empty());
    reached_.addIf(Branch::cutInText, !from.arrived().texts.empty());
    reached_.addIf(Branch::cutInRecord, from.isInRecord());
    reached_.addIf(Branch::cutLost, from.bytesSent() != from.bytesArrived());
  }
  if (of_.mounts) {
    const auto isOpen = [&](End end) {
      const Zel::Ptr<Zel::Session>& session = of_.sessions[end == End::second ? 1 : 0];
      return session && session->isOpen();
    };
    reached_.addIf(Branch::cutBeforeHello, !isOpen(End::first) || !isOpen(End::second));
    reached_.addIf(Branch::cutBeforeWalk, hasGrants_ && down.walks.empty() && down.walked.empty());
  }
}

/// What the mirror has that its original has not.
void Watch::membersLook() {
  if (reached_.has(Branch::memberGone)) {
    return;
  }
  std::unordered_set<Path> there;
  forEntities(*of_.original->roots(),
              [&](Zel::Entity& /*entity*/, Path path) { there.insert(path); });
  forEntities(*of_.copy->roots(), [&](Zel::Entity& /*entity*/, Path path) {
    reached_.addIf(Branch::memberGone, there.count(path) == 0);
  });
}

bool Watch::isStalled() const {
  return of_.link->isStalled(End::first) || of_.link->isStalled(End::second);
}

void Watch::healed() {
  reached_.addIf(Branch::healedInWalk, of_.link->isUp() && isWalking());
  reached_.addIf(Branch::healedCut, !of_.link->isUp());
  reached_.addIf(Branch::healedStalled, isStalled());
  reached_.addIf(Branch::healedOwing, owes(End::first) || owes(End::second));
}

void Watch::newRoot() { reached_.addIf(Branch::newRootInWalk, of_.link->isUp() && isWalking()); }

void Watch::withdrawing() {
  if (!of_.link->isUp()) {
    return;
  }
  const WireWay& up = way(mirror());
  reached_.addIf(Branch::withdrawnInWalk, isWalking());
  reached_.addIf(Branch::withdrawnInFlight, up.bytesSent() != up.bytesArrived() || owes(mirror()));
}

void Watch::refused() {
  if (!of_.mounts) {
    reached_.add(Branch::refusedReadOnly);
    return;
  }
  for (const auto& [name, mount] : of_.mounts->mounts()) {
    reached_.addIf(Branch::refusedStale, mount->state() == Zel::Mount::stale);
    reached_.addIf(Branch::refusedResyncing, mount->state() == Zel::Mount::resyncing);
    reached_.addIf(Branch::refusedReadOnly, mount->state() == Zel::Mount::live);
  }
}

void Watch::about(const Deed& deed, bool isOriginal) {
  const End end = isOriginal ? of_.exporter : mirror();
  std::unordered_set<Path>& deleted = deletedWhileDown_[isOriginal ? 0 : 1];
  if (!of_.link->isUp()) {
    reached_.addIf(Branch::writtenIntoCut, connection(end).isUp());
    if (deed.what == Deed::memberDeleted) {
      deleted.insert(deed.path);
    } else if (deed.what == Deed::memberMade && deleted.count(deed.path) != 0) {
      reached_.add(isOriginal ? Branch::memberOther : Branch::memberOtherBehind);
    }
    return;
  }
  if (deed.what == Deed::memberDeleted) {
    memberDeleted(deed, end, isOriginal);
  }
  const Log::FlowOut* const flow = flowOf(deed.entity, connection(end));
  if (flow == nullptr) {
    return;
  }
  const bool isWalked = flow->bookmark() != nullptr && flow->attrId() == deed.row.id;
  reached_.addIf(Branch::writtenInWalk, isWalked);
  reached_.addIf(Branch::clearedInWalk, isWalked && deed.what == Deed::cleared);
  reached_.addIf(Branch::textGivenUp,
                 flow->valueIter() != nullptr && flow->attrId() == deed.row.id);
  reached_.addIf(
      Branch::remadeWhilePending,
      deed.what == Deed::memberMade &&
          static_cast<const Zel::EntityFlowOut*>(flow)->dirtyKeys(deed.row.id).isFalse(deed.key));
}

void Watch::memberDeleted(const Deed& deed, End end, bool isOriginal) {
  auto* const member =
      static_cast<Zel::Entity*>(deed.row.collection->entry(&deed.entity, deed.key));
  const auto out = Zel::Ptr<const Log::Out>(connection(end).out());
  if (!deed.entity.zelNboAttrLogSa(out)) {
    return;
  }
  const auto adapter = member->zelNboAttrLogSa(out);
  reached_.addIf(Branch::deletedUnannounced, isOriginal && !adapter);
  if (const Log::FlowOut* const flow = flowOf(*member, connection(end))) {
    reached_.addIf(Branch::deletedInWalk, flow->bookmark() != nullptr);
    reached_.addIf(Branch::deletedInText, flow->valueIter() != nullptr);
  }
}

} // namespace Histories
