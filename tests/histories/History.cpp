#include "History.h"

#include <Zel/Exception>
#include <Zel/StreamAdapter>

#include <algorithm>

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
  healed += other.healed;
  restUsed = std::max(restUsed, other.restUsed);
  sometimes += other.sometimes;
  for (const auto& [attribute, done] : other.mutations) {
    mutations[attribute] += done;
  }
  return *this;
}

History::History(Random random, Over over, std::function<void(const std::string&)> told)
    : over_(over), told_(std::move(told)), random_(random), swarm_(random_), world_(0),
      ownership_(0, 1, std::nullopt) {
  const unsigned models = swarm_.may(Doing::chain) ? 3 : 2;
  for (unsigned i = 0; i < models; ++i) {
    models_.emplace_back(i);
    models_.back().told = told_;
  }
  hops_.resize(models - 1);
  limits_.outCapacity = Zel::ConnectionLimits::smallestRing;
  limits_.inCapacity = Zel::ConnectionLimits::smallestRing;
  if (swarm_.may(Doing::roomy)) {
    limits_.outCapacity += random_.size(1 << 18);
    limits_.inCapacity += random_.size(1 << 18);
  }
  sizes_.longest = 300000;
  sizes_.rarity = static_cast<unsigned>(random_.between(1, 32));
  trouble_ = static_cast<unsigned>(random_.size(80));
  hasAllRoots_ = swarm_.may(Doing::allRoots);
  std::vector<Zel::Ptr<Zel::Entity>> roots = makeRoots();
  if (!hasAllRoots_ && swarm_.may(Doing::onlyChild)) {
    rootsToCome_.push_back(roots[random_.below(roots.size())]);
    roots.clear();
  }
  for (Zel::Ptr<Zel::Entity>& root : roots) {
    if (hasAllRoots_ || random_.chance(1, 2)) {
      rootsToCome_.push_back(std::move(root));
    }
  }
  tell("may: " + swarm_.told());
}

History historyOf(std::span<const std::uint8_t> bytes,
                  std::function<void(const std::string&)> told) {
  const bool isOdd = !bytes.empty() && (bytes.front() & 1) != 0;
  return History(Random(bytes.subspan(bytes.empty() ? 0 : 1)),
                 isOdd ? History::Over::sessions : History::Over::connections, std::move(told));
}

Totals History::run() {
  epoch(true);
  for (std::uint64_t more = random_.between(1, 4); more != 0 && !random_.isSpent(); --more) {
    epoch(false);
  }
  for (const Link* const link : links_) {
    totals_.bytes += link->bytesCarried();
    totals_.cuts += link->cuts();
  }
  if (hasAllRoots_) {
    totals_.wholeTrees = 1;
    for (const Model& model : models_) {
      for (const auto& [attribute, done] : model.mutations()) {
        totals_.mutations[attribute] += done;
      }
    }
  }
  totals_.sometimes.add(reached_);
  totals_.histories = 1;
  return totals_;
}

void History::linksIs() {
  for (unsigned i = 0; i < hops_.size(); ++i) {
    Hop& hop = hops_[i];
    hop.exporter = random_.chance(1, 2) ? End::first : End::second;
    hop.isReadOnly = swarm_.may(Doing::readOnly) && random_.chance(1, 2);
    hop.traits.pieces = static_cast<std::size_t>(random_.size(1 << 17));
    hop.traits.inFlight = static_cast<std::size_t>(random_.size(1 << 17));
    hop.traits.haste = static_cast<unsigned>(random_.between(2, 8));
    if (!swarm_.may(Doing::sluggish)) {
      hop.traits.pieces += 1024;
      hop.traits.inFlight += 1024;
    }
    if (std::min(hop.traits.pieces, hop.traits.inFlight) < 64) { // bytes take long
      sizes_ = {50000, 100};
    }
    hop.original = &models_[i];
    hop.copy = &models_[i + 1];
    if (isOverSessions()) {
      hop.exports = Zel::makeObject<Zel::Exports>();
      hop.mounts = Zel::makeObject<Zel::Mounts>(models_[i + 1].roots());
      hop.mounts->allIs(hop.isReadOnly ? Zel::accessReadOnly : Zel::accessReadWrite);
    }
    hop.watch = std::make_unique<Watch>(reached_, hop);
    tell("link " + std::to_string(i) + ": exporter " + std::to_string(place(hop.exporter)) +
         ", pieces " + std::to_string(hop.traits.pieces) + ", in flight " +
         std::to_string(hop.traits.inFlight) + (hop.isReadOnly ? ", read-only" : ""));
    linkIs(i);
  }
  for (Model& model : models_) {
    model.about = [this, &model](const Deed& deed) {
      if (model.number() < hops_.size()) {
        hops_[model.number()].watch->about(deed, true);
      }
      if (model.number() != 0) {
        hops_[model.number() - 1].watch->about(deed, false);
      }
    };
  }
}

/// A new link, which may come in the place of another.
void History::linkIs(unsigned number) {
  Hop& hop = hops_[number];
  if (hop.link != nullptr) {
    hop.link->watcherIs(nullptr);
  }
  hop.link = &world_.linkIs(hop.traits, [this, number](End end) { return peerIs(number, end); });
  hop.link->watcherIs(hop.watch.get());
  links_.push_back(hop.link);
}

Link::Peer History::peerIs(unsigned hop, End end) {
  Hop& own = hops_[hop];
  own.sentBefore[place(end)] = 0;
  own.strangers[place(end)] = 0;
  own.expected[place(end)] = {};
  own.hasWithdrawn = false;
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
  const auto session = Zel::makeObject<Zel::Session>(
      end, options, isExporter ? own.exports : nullptr, isExporter ? nullptr : own.mounts);
  own.sessions[place(end)] = session;
  return {session->connection(), [this, session](std::size_t budget) {
            return session->service(static_cast<double>(world_.now()), budget);
          }};
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
      if (hops_[hop].exports->roots().count(name) == 0 && hops_[hop].withdrawn.count(name) == 0) {
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
  if (isNew && hops_[hop].link != nullptr) { // which is not there yet where it is being made
    hops_[hop].watch->newRoot();
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
  ownership_ = Ownership(random_.fork().next(), models, onlyWriter_,
                         isOverSessions() && swarm_.may(Doing::writeOn));
  deleted_.clear();
  if (isFirst) {
    for (; !rootsToCome_.empty() && (hasAllRoots_ || random_.chance(7, 8));
         rootsToCome_.pop_back()) {
      models_[0].roots()->entityIs(rootsToCome_.back());
    }
    for (std::uint64_t i = random_.size(200); i != 0; --i) {
      totals_.changes += models_[0].change(random_, ownership_, sizes_, deleted_, swarm_) ? 1 : 0;
    }
    linksIs();
  } else {
    for (Model& model : models_) {
      model.knownIs();
    }
  }
  baselineTake();
  for (std::uint64_t rounds = random_.size(64); rounds != 0 && !random_.isSpent(); --rounds) {
    cutsNote();
    changes();
    owedNote();
    pass(random_.size(32) - 1);
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

/// Time passes. What the links do in it follows from one draw.
void History::pass(Simulation::Time duration) {
  world_.random() = random_.fork();
  world_.run(duration);
  for (const Hop& hop : hops_) {
    hop.watch->look();
  }
  chainLook();
}

/// Branches that no link has by itself.
void History::chainLook() {
  for (std::size_t hop = 1; hop < hops_.size(); ++hop) {
    const Hop& before = hops_[hop - 1];
    const Hop& own = hops_[hop];
    reached_.addIf(Branch::cutBoth, !before.link->isUp() && !own.link->isUp());
    reached_.addIf(Branch::bothHopsWalk, before.watch->isWalking() && own.watch->isWalking());
    reached_.addIf(Branch::middleStale,
                   isOverSessions() && !before.mounts->areLive() && own.mounts->areLive());
  }
}

/// Closes the roots of a mirror that may be written, or those that may not.
void History::closedIs(Ownership& ownership, unsigned model, bool isWritable) const {
  if (!isOverSessions() || model == 0) {
    return;
  }
  for (const auto& [name, mount] : hops_[model - 1].mounts->mounts()) {
    if (mount->isWritable() == isWritable) {
      ownership.closedIs(rootPath(name));
    }
  }
}

void History::changes() {
  const auto model = static_cast<unsigned>(random_.below(ownership_.last() + 1));
  Ownership own = ownership_;
  closedIs(own, model, false);
  for (std::uint64_t tries = random_.size(64); tries != 0; --tries) {
    totals_.changes += models_[model].change(random_, own, sizes_, deleted_, swarm_) ? 1 : 0;
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
    for (const End end : {End::first, End::second}) {
      hop.sentBefore[place(end)] = hop.watch->changesSent(end);
      hop.strangers[place(end)] = 0;
    }
  }
}

} // namespace Histories
