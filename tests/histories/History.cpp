#include "History.h"

#include <Zel/Exception>
#include <Zel/StreamAdapter>

namespace Histories {

using Simulation::Link;
using Zel::StreamAdapter;

Totals& Totals::operator+=(const Totals& other) {
  histories += other.histories;
  changes += other.changes;
  cuts += other.cuts;
  bytes += other.bytes;
  strangers += other.strangers;
  refusals += other.refusals;
  rounds += other.rounds;
  roundsOwing += other.roundsOwing;
  wholeTrees += other.wholeTrees;
  for (const auto& [attribute, done] : other.mutations) {
    mutations[attribute] += done;
  }
  return *this;
}

History::History(std::uint64_t seed, Over over, std::function<void(const std::string&)> told)
    : over_(over), told_(std::move(told)), world_(seed), random_(world_.random()),
      ownership_(0, 1, std::nullopt) {
  const unsigned models = random_.chance(1, 2) ? 3 : 2;
  for (unsigned i = 0; i < models; ++i) {
    models_.emplace_back(i);
    models_.back().told = told_;
  }
  hops_.resize(models - 1);
  limits_.outCapacity = Zel::ConnectionLimits::smallestRing;
  limits_.inCapacity = Zel::ConnectionLimits::smallestRing;
  if (random_.chance(1, 2)) {
    limits_.outCapacity += random_.size(1 << 18);
    limits_.inCapacity += random_.size(1 << 18);
  }
  sizes_.longest = 300000;
  sizes_.rarity = static_cast<unsigned>(random_.between(1, 32));
  trouble_ = static_cast<unsigned>(random_.size(80));
  hasAllRoots_ = random_.chance(1, 4);
  for (Zel::Ptr<Zel::Entity>& root : makeRoots()) {
    if (hasAllRoots_ || random_.chance(1, 2)) {
      rootsToCome_.push_back(std::move(root));
    }
  }
}

Totals History::run() {
  epoch(true);
  for (std::uint64_t more = random_.between(1, 4); more != 0; --more) {
    epoch(false);
  }
  for (const Hop& hop : hops_) {
    totals_.bytes += hop.link->bytesCarried();
    totals_.cuts += hop.link->cuts();
  }
  if (hasAllRoots_) {
    totals_.wholeTrees = 1;
    for (const Model& model : models_) {
      for (const auto& [attribute, done] : model.mutations()) {
        totals_.mutations[attribute] += done;
      }
    }
  }
  totals_.histories = 1;
  return totals_;
}

void History::linksIs() {
  for (unsigned i = 0; i < hops_.size(); ++i) {
    Hop& hop = hops_[i];
    hop.exporter = random_.chance(1, 2) ? End::first : End::second;
    hop.isReadOnly = random_.chance(1, 6);
    Link::Traits traits;
    traits.pieces = static_cast<std::size_t>(random_.size(1 << 17));
    traits.inFlight = static_cast<std::size_t>(random_.size(1 << 17));
    traits.haste = static_cast<unsigned>(random_.between(2, 8));
    const std::size_t least = std::min(traits.pieces, traits.inFlight);
    if (least < 64) { // bytes take long
      sizes_ = {50000, 100};
    }
    hop.exports = Zel::makeObject<Zel::Exports>();
    hop.mounts = Zel::makeObject<Zel::Mounts>(models_[i + 1].roots());
    hop.mounts->allIs(hop.isReadOnly ? Zel::accessReadOnly : Zel::accessReadWrite);
    hop.link = &world_.linkIs(traits, [this, i](End end) { return peerIs(i, end); });
    tell("link " + std::to_string(i) + ": exporter " + std::to_string(place(hop.exporter)) +
         ", pieces " + std::to_string(traits.pieces) + ", in flight " +
         std::to_string(traits.inFlight) + (hop.isReadOnly ? ", read-only" : ""));
  }
}

Link::Peer History::peerIs(unsigned hop, End end) {
  Hop& own = hops_[hop];
  own.sentBefore[place(end)] = 0;
  own.strangers[place(end)] = 0;
  own.expected[place(end)] = {};
  if (isOverSessions()) {
    return sessionIs(hop, end);
  }
  return connectionIs(hop, end);
}

Link::Peer History::sessionIs(unsigned hop, End end) {
  Hop& own = hops_[hop];
  const bool isExporter = end == own.exporter;
  Zel::SessionOptions options;
  options.name = isExporter ? "exporter" : "mirror";
  options.limits = limits_;
  options.helloTime = options.digestTime = 1e12;
  if (!isExporter) {
    own.saidBefore = 0;
  }
  const auto session = Zel::makeObject<Zel::Session>(
      end, options, isExporter ? own.exports : nullptr, isExporter ? nullptr : own.mounts);
  own.sessions[place(end)] = session;
  return {session->connection(), [this, session](std::size_t budget) {
            return session->service(static_cast<double>(world_.now()), budget);
          }};
}

/// A hello, that it offers nothing, and what it asks for.
std::uint64_t History::Hop::said() const {
  const Zel::Ptr<Zel::Session>& session = sessions[1 - place(exporter)];
  return session && session->isOpen() ? 2 + mounts->mounts().size() : 1;
}

Zel::Ptr<Zel::Connection> History::connectionIs(unsigned hop, End end) {
  const bool isExporter = end == hops_[hop].exporter;
  const bool isReadOnly = hops_[hop].isReadOnly;
  const unsigned number = isExporter ? hop : hop + 1;
  StreamAdapter::Zel_BitSet flags;
  flags.bitsIs(isExporter ? StreamAdapter::flagRemoteReadOnly : StreamAdapter::flagReadOnly,
               isReadOnly);
  const auto made = Zel::makeObject<Zel::Connection>(
      end, "peer", limits_,
      isExporter
          ? Zel::Ptr<Zel::NboAttrLog::MountPolicy>()
          : Zel::Ptr<Zel::NboAttrLog::MountPolicy>(
                Zel::makeObject<Zel::NboAttrLog::DirMounts>(models_[number].roots(), flags)));
  if (isExporter) {
    rootsExport(hop, *made);
  }
  return made;
}

/// Exports the roots of a model that are not exported yet; whether there were any. A model passes
/// on what it mirrors.
bool History::rootsExport(unsigned hop, Zel::Connection& connection) {
  StreamAdapter::Zel_BitSet flags;
  flags.bitsIs(StreamAdapter::flagRemoteReadOnly, hops_[hop].isReadOnly);
  bool isNew = false;
  for (const auto& [name, root] : models_[hop].roots()->entities()) {
    if (isOverSessions()) {
      if (hops_[hop].exports->roots().count(name) == 0) {
        hops_[hop].exports->entityIs(root, hops_[hop].isReadOnly ? Zel::accessReadOnly
                                                                 : Zel::accessReadWrite);
        isNew = true;
      }
    } else if (!root->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(connection.out()))) {
      connection.demuxer()->announcingIs(true);
      connection.demuxer()->exportIs(root, flags);
      isNew = true;
    }
  }
  return isNew;
}

bool History::rootsExport() {
  bool isNew = false;
  for (unsigned i = 0; i < hops_.size(); ++i) {
    Zel::Connection& exporter = *hops_[i].link->connection(hops_[i].exporter);
    isNew = (exporter.isUp() && rootsExport(i, exporter)) || isNew;
  }
  return isNew;
}

void History::epoch(bool isFirst) {
  tell("epoch " + std::to_string(epochs_));
  const auto models = static_cast<unsigned>(models_.size());
  bool isReadOnly = false;
  for (const Hop& hop : hops_) {
    isReadOnly = isReadOnly || hop.isReadOnly;
  }
  onlyWriter_.reset();
  if (isFirst || isReadOnly) {
    onlyWriter_ = 0;
  } else if (random_.chance(1, 3)) {
    onlyWriter_ = static_cast<unsigned>(random_.below(models));
  }
  ownership_ = Ownership(random_.next(), models, onlyWriter_);
  deleted_.clear();
  if (isFirst) {
    for (; !rootsToCome_.empty() && (hasAllRoots_ || random_.chance(7, 8));
         rootsToCome_.pop_back()) {
      models_[0].roots()->entityIs(rootsToCome_.back());
    }
    for (std::uint64_t i = random_.size(200); i != 0; --i) {
      totals_.changes += models_[0].change(random_, ownership_, sizes_, deleted_) ? 1 : 0;
    }
    linksIs();
  } else {
    for (Model& model : models_) {
      model.knownIs();
    }
  }
  baselineTake();
  for (std::uint64_t rounds = random_.size(64); rounds != 0; --rounds) {
    cutsNote();
    changes();
    owedNote();
    world_.run(random_.size(32) - 1);
    rootsExport();
    if (random_.chance(trouble_, 100)) {
      event();
    }
  }
  settle();
  check();
  for (Model& model : models_) {
    model.knownDel();
  }
  for (unsigned hop = 0; hop < hops_.size(); ++hop) {
    checkAdapters(hop, End::first);
    checkAdapters(hop, End::second);
    checkDigest(hop);
  }
  ++epochs_;
}

void History::changes() {
  const auto model = static_cast<unsigned>(random_.below(ownership_.last() + 1));
  if (isOverSessions() && model > 0) {
    const Zel::Mounts::Members& mounts = hops_[model - 1].mounts->mounts();
    if (!std::all_of(mounts.begin(), mounts.end(),
                     [](const auto& member) { return member.second->isWritable(); })) {
      return; // a mirror is written to while it may be
    }
  }
  for (std::uint64_t tries = random_.size(64); tries != 0; --tries) {
    totals_.changes += models_[model].change(random_, ownership_, sizes_, deleted_) ? 1 : 0;
  }
}

/// Counts the rounds in which somebody has to wait with what is to be sent.
void History::owedNote() {
  ++totals_.rounds;
  const auto owes = [](const Hop& hop, End end) {
    const Zel::Connection& connection = *hop.link->connection(end);
    return connection.isUp() && connection.demuxer()->scheduled() != 0;
  };
  totals_.roundsOwing += std::any_of(hops_.begin(), hops_.end(), [&](const Hop& hop) {
    return owes(hop, End::first) || owes(hop, End::second);
  });
}

void History::baselineTake() {
  for (Hop& hop : hops_) {
    hop.hasRefused = false;
    hop.saidBefore = hop.said();
    for (const End end : {End::first, End::second}) {
      hop.sentBefore[place(end)] = hop.link->connection(end)->out()->recordsWritten();
      hop.strangers[place(end)] = 0;
    }
  }
}

void History::settle() {
  tell("settling");
  announceAll();
  bool isQuiet = false;
  while (!isQuiet) {
    if (!world_.settle()) {
      broken("does not come to rest");
    }
    isQuiet = !rootsExport();
    // The ends nearest to the source first, as the others follow from them.
    for (unsigned hop = 0; hop < hops_.size(); ++hop) {
      if (!hops_[hop].link->isUp()) {
        reconnect(hop);
        isQuiet = false;
      }
    }
  }
}

} // namespace Histories
