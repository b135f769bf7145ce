#include "History.h"

#include <Zel/Exception>
#include <Zel/FlowPlan>
#include <Zel/StreamAdapter>

namespace Histories {

using Zel::StreamAdapter;
namespace Log = Zel::NboAttrLog;

/// Something that happens to the links.
void History::event() {
  const auto number = static_cast<unsigned>(random_.below(hops_.size()));
  Hop& hop = hops_[number];
  Simulation::Link& link = *hop.link;
  const End end = random_.chance(1, 2) ? End::first : End::second;
  const std::string where =
      "link " + std::to_string(number) + ", end " + std::to_string(place(end)) + ": ";
  switch (random_.below(9)) {
  case 0:
  case 1: {
    const std::uint64_t duration = random_.size(500);
    tell(where + "stalls for " + std::to_string(duration));
    link.stall(end, duration);
    break;
  }
  case 2:
    if (link.isUp()) {
      tell(where + "cut");
      link.cut(random_.below(20));
      world_.run(1);
    }
    break;
  case 3:
    if (link.isUp()) {
      const std::uint64_t bytes = random_.size(1 << 16);
      tell(where + "is to be cut after " + std::to_string(bytes) + " bytes");
      link.cutAfter(end, bytes, random_.below(20));
    }
    break;
  case 4:
    if (link.isDown()) {
      reconnect(number);
    }
    break;
  case 5:
    if (link.isUp()) {
      // A session exports whenever it is asked to.
      const bool announcing = random_.chance(1, 2) || (isOverSessions() && end == hop.exporter);
      tell(where + (announcing ? "announces" : "announces nothing"));
      link.connection(end)->demuxer()->announcingIs(announcing);
    }
    break;
  case 6:
    if (!rootsToCome_.empty() && onlyWriter_.value_or(0) == 0) {
      tell("a new root");
      models_[0].roots()->entityIs(rootsToCome_.back());
      rootsToCome_.pop_back();
    }
    break;
  case 7:
    refusedWrite();
    break;
  default:
    strangerSend(number, end);
  }
  cutsNote();
}

void History::cutsNote() {
  for (unsigned hop = 0; hop < hops_.size(); ++hop) {
    if (!hops_[hop].link->isUp()) {
      ownership_.cutBehind(hop);
    }
  }
}

void History::announceAll() {
  for (const Hop& hop : hops_) {
    for (const End end : {End::first, End::second}) {
      if (hop.link->connection(end)->isUp()) {
        hop.link->connection(end)->demuxer()->announcingIs(true);
      }
    }
  }
}

void History::reconnect(unsigned hop) {
  cutsNote();
  // What models behind this one have sent has arrived before this one hears anew what they sent
  // it to change.
  announceAll();
  for (unsigned next = hop + 1; next < hops_.size(); ++next) {
    if (!world_.settle(*hops_[next].link)) {
      broken("does not come to rest");
    }
  }
  cutsNote();
  tell("link " + std::to_string(hop) + ": reconnects");
  hops_[hop].link->reconnect();
}

/// A read-only mirror is written to. It refuses, and has what it then lacks sent anew. It is the
/// last of the chain: of what is refused, listeners further back in the list hear nothing.
void History::refusedWrite() {
  const auto number = static_cast<unsigned>(hops_.size() - 1);
  Hop& hop = hops_[number];
  if (!hop.isReadOnly || !isOverSessions()) {
    return; // over a bare connection what is refused stands in the mirror all the same
  }
  tell("model " + std::to_string(number + 1) + " writes what it may only read");
  const Ownership own(random_.next(), static_cast<unsigned>(models_.size()), number + 1);
  for (std::uint64_t tries = random_.size(8); tries != 0; --tries) {
    try {
      models_[number + 1].change(random_, own, sizes_, deleted_);
    } catch (const Zel::ReadOnlyException&) {
      hop.hasRefused = true;
      ++totals_.refusals;
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
  tell("link " + std::to_string(number) + ", end " + std::to_string(place(end)) +
       ": sends a record of nobody, kind " + std::to_string(kind));
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
