#include "AtRest.h"

#include <Zel/FlowOut>
#include <Zel/StateDigest>
#include <Zel/StreamAdapter>

#include <algorithm>

namespace Histories {

using Simulation::Link;
using Zel::StreamAdapter;
using Out = Zel::Ptr<const Zel::NboAttrLog::Out>;

std::string unrest(const Zel::Connection& connection) {
  const Zel::NboAttrLog::Demuxer& demuxer = *connection.demuxer();
  if (!connection.isUp()) {
    return std::string("down: ") + connection.failure().charPtr();
  }
  if (demuxer.scheduled() != 0 || demuxer.parked() != 0) {
    return std::to_string(demuxer.scheduled()) + " scheduled, " + std::to_string(demuxer.parked()) +
           " parked";
  }
  if (connection.out()->capacity() != connection.limits().outCapacity) {
    return "ring grew to " + std::to_string(connection.out()->capacity());
  }
  return {};
}

namespace {

/// What an adapter is in the middle of; empty if of nothing.
std::string unrestOf(const Link& link, Link::End end, Zel::Entity& entity) {
  const Zel::Connection& connection = *link.connection(end);
  const Zel::Connection& other =
      *link.connection(end == Link::End::first ? Link::End::second : Link::End::first);
  const auto adapter = entity.zelNboAttrLogSa(Out(connection.out()));
  if (!adapter) {
    return "has no adapter";
  }
  if (connection.demuxer()->adapter(adapter->entityId()) != adapter.ptr() ||
      other.demuxer()->adapter(adapter->entityId()) == nullptr) {
    return "has an id that is not known";
  }
  constexpr unsigned passing = StreamAdapter::flagReactorActive | StreamAdapter::flagChildPending |
                               StreamAdapter::flagSyncFanOut | StreamAdapter::flagScheduledFlowOut |
                               StreamAdapter::flagMuted;
  if ((adapter->zel_bitSet().word() & passing) != 0 || adapter->flowOut()) {
    return "is in the middle of something, flags " +
           std::to_string(adapter->zel_bitSet().word() & passing);
  }
  // What was for a text that was given up may wait for the next one.
  const Zel::NboAttrLog::FlowIn* const in = connection.demuxer()->flowIn(adapter->entityId());
  if (in != nullptr && (in->iter() != nullptr || in->idx() != nullptr || in->isTransaction())) {
    return "has half received attribute " + std::to_string(in->aid());
  }
  if (!adapter->hasFlag(StreamAdapter::flagNoFlowOut) ||
      !adapter->hasFlag(StreamAdapter::flagStreaming)) {
    return "does not stream";
  }
  if (const std::size_t marked = markedEntries(entity); marked != 0) {
    return "has " + std::to_string(marked) + " entries marked for deletion";
  }
  return {};
}

} // namespace

std::string unrestOfAdapters(const Link& link, Link::End end, const Zel::Dir& roots) {
  std::size_t entities = 0;
  std::string wrong;
  forEntities(roots, [&](Zel::Entity& entity, Path /*path*/) {
    ++entities;
    if (const std::string of = unrestOf(link, end, entity); wrong.empty() && !of.empty()) {
      wrong = std::string(tableOf(entity).name) + " " + entity.fullName().charPtr() + " " + of;
    }
  });
  const std::size_t adapters = link.connection(end)->demuxer()->adapters();
  if (wrong.empty() && adapters != entities) {
    wrong = std::to_string(adapters) + " adapters for " + std::to_string(entities) + " entities";
  }
  return wrong;
}

bool haveEqualDigests(const Zel::Dir& some, const Zel::Dir& others) {
  const Zel::Dir::Entities& roots = some.entities();
  return std::all_of(roots.begin(), roots.end(), [&](const auto& member) {
    const Zel::Ptr<Zel::Entity> other = others.entity(member.first);
    return other && Zel::stateDigest(*member.second) == Zel::stateDigest(*other);
  });
}

} // namespace Histories
