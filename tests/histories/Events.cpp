#include "History.h"

#include <Zel/Exception>
#include <Zel/FlowPlan>
#include <Zel/StateDigest>
#include <Zel/StreamAdapter>

#include <algorithm>

namespace Histories {

using Zel::StreamAdapter;
namespace Log = Zel::NboAttrLog;

/// What may happen, each as often as it is to come.
std::vector<Doing> History::eventsIn() const {
  std::vector<Doing> events;
  for (const Doing doing :
       {Doing::stall, Doing::stall, Doing::cut, Doing::cutAfter, Doing::reconnect, Doing::half,
        Doing::silence, Doing::newRoot, Doing::withdraw, Doing::writeFrozen, Doing::stranger}) {
    if (swarm_.may(doing)) {
      events.push_back(doing);
    }
  }
  return events;
}

/// Something that happens to the links.
void History::event() {
  const std::vector<Doing> events = eventsIn();
  if (events.empty()) {
    return;
  }
  const auto number = static_cast<unsigned>(random_.below(hops_.size()));
  const Hop& hop = hops_[number];
  Link& link = *hop.link;
  const End end = random_.chance(1, 2) ? End::first : End::second;
  switch (events[random_.below(events.size())]) {
  case Doing::stall: {
    const std::uint64_t duration = random_.size(500);
    tell(where(number, end) + "stalls for " + std::to_string(duration));
    link.stall(end, duration);
    break;
  }
  case Doing::cut:
    if (link.isUp()) {
      tell(where(number, end) + "cut");
      link.cut(random_.below(20));
      pass(1);
    }
    break;
  case Doing::cutAfter:
    if (link.isUp()) {
      const std::uint64_t bytes = random_.size(1 << 16);
      tell(where(number, end) + "is to be cut after " + std::to_string(bytes) + " bytes");
      link.cutAfter(end, bytes, random_.below(20));
    }
    break;
  case Doing::reconnect:
    if (link.isDown()) {
      reconnect(number);
    }
    break;
  case Doing::half:
    newerSession(number);
    break;
  case Doing::silence:
    if (link.isUp()) {
      // A session exports whenever it is asked to.
      const bool announcing = random_.chance(1, 2) || (isOverSessions() && end == hop.exporter);
      tell(where(number, end) + (announcing ? "announces" : "announces nothing"));
      link.connection(end)->demuxer()->announcingIs(announcing);
    }
    break;
  case Doing::newRoot:
    newRoot();
    break;
  case Doing::withdraw:
    if (!offerAgain(number)) {
      withdraw(number);
    }
    break;
  case Doing::writeFrozen:
    frozenWrite();
    break;
  default:
    strangerSend(number, end);
  }
  cutsNote();
}

void History::cutsNote() {
  for (unsigned hop = 0; hop < hops_.size(); ++hop) {
    if (!hops_[hop].link->isUp()) {
      ownership_.cutBehind(hop, isOverSessions());
    }
  }
}

void History::newRoot() {
  if (!rootsToCome_.empty() && onlyWriter_.value_or(0) == 0) {
    tell("a new root");
    models_[0].roots()->entityIs(rootsToCome_.back());
    rootsToCome_.pop_back();
  }
}

/// The mirror has heard of a cut and connects anew before the exporter hears.
void History::newerSession(unsigned number) {
  Hop& hop = hops_[number];
  if (!isOverSessions() || !hop.link->isUp()) {
    return;
  }
  constexpr Simulation::Time hears = 200;
  tell("link " + std::to_string(number) + ": cut, as one end is going to hear");
  hop.link->cut(hears);
  const auto isUp = [&](End end) { return hop.link->connection(end)->isUp(); };
  while (hop.link->isUp() || (isUp(hop.exporter) && isUp(mirror(hop)))) {
    pass(1);
  }
  cutsNote();
  if (isUp(mirror(hop)) || !isUp(hop.exporter)) {
    return; // it is the exporter that has heard
  }
  settleBehind(number);
  if (!isUp(hop.exporter)) {
    return; // by now it has
  }
  ownership_.joinBehind(number);
  tell("link " + std::to_string(number) + ": a newer session");
  hop.watch->newerSession();
  hop.watch->ended();
  linkIs(number);
}

/// A root is offered no more.
void History::withdraw(unsigned number) {
  Hop& hop = hops_[number];
  if (!isOverSessions() || hop.exports->roots().empty()) {
    return;
  }
  const auto at =
      std::next(hop.exports->roots().begin(),
                static_cast<std::ptrdiff_t>(random_.below(hop.exports->roots().size())));
  const Zel::Name name = at->first;
  tell("link " + std::to_string(number) + ": withdraws " + name.charPtr());
  hop.watch->withdrawing();
  hop.withdrawn.insert(name);
  hop.hasWithdrawn = true;
  hop.exports->entityDel(name);
  ownership_.cutBehind(number, isOverSessions(), rootPath(name));
}

/// What has been withdrawn is offered again; whether there was anything.
bool History::offerAgain(unsigned number) {
  Hop& hop = hops_[number];
  if (hop.withdrawn.empty()) {
    return false;
  }
  settleBehind(number);
  ownership_.joinBehind(number);
  tell("link " + std::to_string(number) + ": offers all");
  hop.withdrawn.clear();
  hop.watch->offeredAnew();
  rootsExport(number, *hop.link->connection(hop.exporter));
  return true;
}

namespace {

std::uint64_t digestOf(const Zel::Dir& roots) {
  std::uint64_t digest = 0;
  for (const auto& [name, root] : roots.entities()) {
    digest = Random::mixed(digest) + Zel::stateDigest(*root);
  }
  return digest;
}

} // namespace

/// A mirror is written to that may not be: it throws, unless the write changes nothing, and nothing
/// has changed in either case. It is the last of the chain.
void History::frozenWrite() {
  const auto number = static_cast<unsigned>(hops_.size() - 1);
  Hop& hop = hops_[number];
  if (!isOverSessions()) {
    return; // over a bare connection what is refused stands in the mirror all the same
  }
  tell("model " + std::to_string(number + 1) + " writes what it may only read");
  Model& model = models_[number + 1];
  Ownership own(random_.fork().next(), static_cast<unsigned>(models_.size()), number + 1);
  closedIs(own, number + 1, true);
  for (std::uint64_t tries = random_.size(8); tries != 0; --tries) {
    const std::uint64_t before = digestOf(*model.roots());
    try {
      model.change(random_, own, sizes_, deleted_, swarm_);
    } catch (const Zel::ReadOnlyException&) {
      hop.hasRefused = true;
      hop.watch->refused();
      ++totals_.refusals;
    }
    if (digestOf(*model.roots()) != before) {
      broken("model " + std::to_string(number + 1) + " has been changed and may only be read");
    }
  }
}

/// Sends a record that is well formed and that the other end has no use for.
void History::strangerSend(unsigned number, End end) {
  Hop& hop = hops_[number];
  Zel::Connection& connection = *hop.link->connection(end);
  const Zel::Ptr<Log::Out>& out = connection.out();
  if (!hop.link->isUp() || !connection.isUp() || !out->hasSufficientBuffer()) {
    return;
  }
  const bool isExporter = end == hop.exporter;
  const Zel::Dir::Entities& roots = models_[isExporter ? number : number + 1].roots()->entities();
  Log::Demuxer::Counts& expected = hop.expected[1 - place(end)];
  constexpr Zel::EntityId nobody{0x7ffffff0, 0x7fffffff};
  Log::MsgHeader header = Log::MsgHeader::variable(nobody, 259);
  std::uint64_t kind = random_.below(4);
  if (kind == 1 || kind == 2) {
    auto root = roots.begin();
    std::advance(root, random_.below(roots.size()));
    const auto adapter =
        roots.empty() ? nullptr : root->second->zelNboAttrLogSa(Zel::Ptr<const Log::Out>(out));
    if (!adapter || (!isExporter && (hop.isReadOnly || isOverSessions()))) {
      kind = 0;
    } else {
      header.entityId = adapter->entityId();
    }
    if (adapter && kind == 2) {
      const auto& steps = adapter->plan().steps;
      const Zel::FlowStep& step = steps[random_.below(steps.size())];
      // A text may be empty, but nothing else.
      kind = step.kind == Zel::FlowKind::text ? 1 : 2;
      header.attrId = step.row->id;
    }
  }
  std::string payload(random_.size(500), static_cast<char>(random_.below(256)));
  if (kind == 0) {
    ++expected.unknownEntities;
  } else if (kind == 1) {
    header.attrId = random_.chance(1, 2) ? 500 : -500;
    ++expected.unknownAttributes;
  } else if (kind == 2) {
    payload.clear();
    ++expected.badValues;
  } else {
    header = Log::MsgHeader::variable(Zel::orphanEntityId, Log::attrIdOrphan);
    ++expected.unknownTypes;
  }
  tell(where(number, end) + "sends a record of nobody, kind " + std::to_string(kind));
  out->nextHeaderIs(header);
  out << Log::transactBegin;
  if (kind == 3) {
    out->currentPayloadSectionIs(Log::payloadSectionType);
    out << Zel::TypeId{"Nobody::Nothing"};
    out->currentPayloadSectionIs(Log::payloadSectionArgs);
    out << Zel::String8("nothing");
    out->currentPayloadSectionIs(Log::payloadSectionEntityId);
    out << nobody;
  } else {
    out->putBytes(payload.data(), payload.size());
  }
  out << Log::transactEnd;
  ++hop.strangers[place(end)];
  ++totals_.strangers;
}

} // namespace Histories
