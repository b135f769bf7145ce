#include "History.h"

#include <Zel/FlowOut>
#include <Zel/StateDigest>
#include <Zel/StreamAdapter>

/// What has to hold whenever everything has come to rest.
namespace Histories {

using Zel::StreamAdapter;

void History::broken(const std::string& why) const {
  throw Broken("epoch " + std::to_string(epochs_) + ": " + why);
}

void History::check() {
  checkLinks();
  checkMounts();
  checkModels();
  checkIdentity();
  checkEchoes();
}

void History::checkLinks() {
  for (unsigned hop = 0; hop < hops_.size(); ++hop) {
    const Simulation::Link& link = *hops_[hop].link;
    if (!link.failure().empty()) {
      broken("link " + std::to_string(hop) + " failed: " + link.failure().charPtr());
    }
    for (const End end : {End::first, End::second}) {
      const Zel::Connection& connection = *link.connection(end);
      const std::string where =
          "link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": ";
      if (!connection.isUp()) {
        broken(where + "down: " + connection.failure().charPtr());
      }
      if (connection.demuxer()->scheduled() != 0 || connection.demuxer()->parked() != 0) {
        broken(where + std::to_string(connection.demuxer()->scheduled()) + " scheduled, " +
               std::to_string(connection.demuxer()->parked()) + " parked");
      }
      if (connection.out()->capacity() != limits_.outCapacity) {
        broken(where + "ring grew to " + std::to_string(connection.out()->capacity()));
      }
      checkCounts(hop, end);
    }
  }
}

void History::checkCounts(unsigned hop, End end) {
  const Zel::NboAttrLog::Demuxer::Counts& counts =
      hops_[hop].link->connection(end)->demuxer()->counts();
  const Zel::NboAttrLog::Demuxer::Counts& expected = hops_[hop].expected[place(end)];
  const auto is = [&](const char* what, std::uint64_t counted, std::uint64_t wanted) {
    if (counted != wanted) {
      broken("link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": " +
             std::to_string(counted) + " records with " + what + ", not " + std::to_string(wanted));
    }
  };
  is("unknown attributes", counts.unknownAttributes, expected.unknownAttributes);
  is("unknown types", counts.unknownTypes, expected.unknownTypes);
  is("bad values", counts.badValues, expected.badValues);
  // A model in the midst of a chain refuses what comes while its own mount is not live.
  if (!isOverSessions() || models_.size() == 2) {
    is("refused writes", counts.refused, 0);
  }
  if (counts.unknownEntities < expected.unknownEntities) {
    is("unknown entities", counts.unknownEntities, expected.unknownEntities);
  }
}

void History::checkMounts() {
  for (unsigned hop = 0; hop < hops_.size() && isOverSessions(); ++hop) {
    const Zel::Mounts::Members& mounts = hops_[hop].mounts->mounts();
    if (mounts.size() != models_[hop].roots()->entities().size()) {
      broken("link " + std::to_string(hop) + ": " + std::to_string(mounts.size()) + " mounts");
    }
    for (const auto& [name, mount] : mounts) {
      if (mount->state() != Zel::Mount::live || mount->isWritable() == hops_[hop].isReadOnly) {
        broken("link " + std::to_string(hop) + ": " + name.charPtr() + " is " +
               Zel::Mount::stateName(mount->state()));
      }
    }
  }
}

/// One of the roots is equal by the session's own word.
void History::checkDigest(unsigned hop) {
  const Zel::Mounts::Members& mounts = hops_[hop].mounts->mounts();
  if (!isOverSessions() || mounts.empty()) {
    return;
  }
  const Zel::Name name = std::next(mounts.begin(), epochs_ % mounts.size())->first;
  auto result = Zel::Session::digestUnknown;
  hops_[hop].sessions[place(mirror(hops_[hop]))]->digestAsk(
      name, [&](Zel::Session::DigestResult answer) { result = answer; });
  Simulation::Link& link = *hops_[hop].link;
  link.wake(mirror(hops_[hop]));
  const bool isQuiet = world_.settle(link);
  if (isQuiet && !link.isUp()) {
    return; // it was to be cut after some more bytes
  }
  if (!isQuiet || result != Zel::Session::digestEqual) {
    broken("link " + std::to_string(hop) + ": digest of " + name.charPtr() + " has result " +
           std::to_string(result));
  }
}

void History::checkModels() {
  const std::string first = dump(*models_.front().roots());
  for (unsigned i = 1; i < models_.size(); ++i) {
    if (const std::string other = dump(*models_[i].roots()); other != first) {
      broken("models 0 and " + std::to_string(i) + " differ: " + difference(first, other));
    }
    for (const auto& [name, root] : models_.front().roots()->entities()) {
      if (Zel::stateDigest(*root) != Zel::stateDigest(*models_[i].roots()->entity(name))) {
        broken("models 0 and " + std::to_string(i) + ": digests of " + name.charPtr() + " differ");
      }
    }
  }
}

/// Entities that nobody has deleted are the same objects as before, in all models.
void History::checkIdentity() {
  for (const Model& model : models_) {
    std::unordered_map<Path, Zel::Entity*> now;
    forEntities(*model.roots(), [&](Zel::Entity& entity, Path path) { now[path] = &entity; });
    for (const auto& [path, entity] : model.known()) {
      if (deleted_.count(path) == 0 && now[path] != entity.ptr()) {
        broken("model " + std::to_string(model.number()) + ": another object in the place of " +
               std::string(tableOf(*entity).name) + " " + shown(path) + " " +
               entity->fullName().charPtr());
      }
    }
  }
}

/// Where only one model wrote, nothing came back to it.
void History::checkEchoes() {
  if (!onlyWriter_ || *onlyWriter_ > ownership_.last()) {
    return;
  }
  for (unsigned i = 0; i < hops_.size(); ++i) {
    const Hop& hop = hops_[i];
    const End reader = i < *onlyWriter_ ? hop.exporter : mirror(hop);
    const std::uint64_t sent = hop.link->connection(reader)->out()->recordsWritten();
    std::uint64_t expected = hop.sentBefore[place(reader)] + hop.strangers[place(reader)];
    if (isOverSessions() && reader == mirror(hop)) {
      expected += hop.said() - hop.saidBefore;
    }
    if (sent != expected && !hop.hasRefused) {
      broken("link " + std::to_string(i) + ": " + std::to_string(sent - expected) +
             " records came back");
    }
  }
}

/// An end's adapters are those of the entities that it shares, and none of them is left in the
/// middle of anything.
void History::checkAdapters(unsigned hop, End end) {
  const Hop& own = hops_[hop];
  const Zel::Connection& connection = *own.link->connection(end);
  const Zel::Connection& other =
      *own.link->connection(end == End::first ? End::second : End::first);
  const unsigned number = end == own.exporter ? hop : hop + 1;
  std::size_t entities = 0;
  forEntities(*models_[number].roots(), [&](Zel::Entity& entity, Path /*path*/) {
    ++entities;
    const auto wrong = [&](const std::string& what) {
      broken("link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": " +
             std::string(tableOf(entity).name) + " " + entity.fullName().charPtr() + " " + what);
    };
    const auto adapter =
        entity.zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(connection.out()));
    if (!adapter) {
      wrong("has no adapter");
    }
    if (connection.demuxer()->adapter(adapter->entityId()) != adapter.ptr() ||
        other.demuxer()->adapter(adapter->entityId()) == nullptr) {
      wrong("has an id that is not known");
    }
    constexpr unsigned passing = StreamAdapter::flagReactorActive |
                                 StreamAdapter::flagChildPending | StreamAdapter::flagSyncFanOut |
                                 StreamAdapter::flagScheduledFlowOut | StreamAdapter::flagMuted;
    if ((adapter->zel_bitSet().word() & passing) != 0 || adapter->flowOut()) {
      wrong("is in the middle of something, flags " +
            std::to_string(adapter->zel_bitSet().word() & passing));
    }
    // What was for a text that was given up may wait for the next one.
    const Zel::NboAttrLog::FlowIn* const in = connection.demuxer()->flowIn(adapter->entityId());
    if (in != nullptr && (in->iter() != nullptr || in->idx() != nullptr || in->isTransaction())) {
      wrong("has half received attribute " + std::to_string(in->aid()));
    }
    if (!adapter->hasFlag(StreamAdapter::flagNoFlowOut) ||
        !adapter->hasFlag(StreamAdapter::flagStreaming)) {
      wrong("does not stream");
    }
    if (const std::size_t marked = markedEntries(entity); marked != 0) {
      wrong("has " + std::to_string(marked) + " entries marked for deletion");
    }
  });
  if (connection.demuxer()->adapters() != entities) {
    broken("link " + std::to_string(hop) + ", end " + std::to_string(place(end)) + ": " +
           std::to_string(connection.demuxer()->adapters()) + " adapters for " +
           std::to_string(entities) + " entities");
  }
}

} // namespace Histories
