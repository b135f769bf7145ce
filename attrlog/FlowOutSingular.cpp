#include <attrlog/Write.h>

#include <Zel/NboAttrLogFlow>

namespace Zel {

using NboAttrLog::FlowOut;
using NboAttrLog::MsgHeader;
using TextPosition = String8::IteratorConst;

namespace {

bool isAtEnd(const TextPosition& at) { return at.position() < 0 || at.eot(); }

} // namespace

void AttrLogAdapter::zelOnSingular(AttributeId attr) {
  if (isEcho()) {
    return;
  }
  const FlowStep& plain = step(attr);
  if (gate(plain) != Gate::pass) {
    return;
  }
  NboAttrLog::Out& out = *nboAttrLogOut();
  const bool sufficient = hasRoom(out);
  if (hasFlag(flagNoFlowOut)) {
    if (!isScheduled() && (!sufficient || hasFlag(flagForceFlowOut))) {
      if (EntityFlowOut* const flow = absorb(attr)) {
        valueOwe(*flow, plain);
      }
      return;
    }
  } else {
    if (!prepareImmediateTransmission(attr, !sufficient)) {
      valueOwe(*owed(), plain);
      return;
    }
    owed()->bitIs(plain, false);
  }
  const MsgHeader header{entityId(), attr, plain.variableSize, plain.fixedSize, 0, 0};
  const ValueRecord& type = *plain.row->value;
  std::uint64_t small;
  const bool isSmall = type.isTrivial && type.size <= sizeof small;
  if (isSmall) [[likely]] {
    plain.row->read(rawEntity(), &small);
    if (plain.numberSize != 0 && out.numberRecordIs(header, plain.numberSize, &small)) [[likely]] {
      return;
    }
  }
  write(plain, header, [&](WireWriter& to) {
    if (isSmall) {
      encodeValue(type, &small, to);
      return;
    }
    ValueSlot value(type, [&](void* at) { plain.row->read(rawEntity(), at); });
    encodeValue(type, value.at(), to);
  });
}

bool AttrLogAdapter::zelSerializeText(AttributeId attr) {
  const FlowStep& text = step(attr);
  if (const Gate open = gate(text); open != Gate::pass) {
    EntityFlowOut* const behind = open == Gate::notDone ? owedBehind(attr) : nullptr;
    if (behind != nullptr && !isScheduled()) {
      prepareImmediateTransmission(attr, true);
      valueOwe(*behind, text);
    }
    return open == Gate::done;
  }
  EntityFlowOut* flow = hasFlag(flagNoFlowOut) ? nullptr : owed();
  const NboAttrLog::Out& out = *nboAttrLogOut();
  TextPosition at;
  if (flow != nullptr && !isScheduled()) {
    prepareImmediateTransmission(attr, true);
    valueOwe(*flow, text);
    return false;
  }
  if (flow != nullptr && flow->valueIter() != nullptr) {
    at = zelFlowOutValueDeq<TextPosition>(flowOut());
  } else {
    ValueSlot value(*text.row->value, [&](void* to) { text.row->read(rawEntity(), to); });
    at = TextPosition(*static_cast<const String8*>(value.at()));
  }
  for (bool continuing = at.position() != 0;; continuing = true) {
    if (continuing && isAtEnd(at)) {
      return true;
    }
    if (flow == nullptr) {
      if (continuing || freeSpace() < textBeginSpace) {
        break;
      }
    } else if ((isScheduled() && !continueFlowOut()) || freeSpace() < out.maxMessageSize()) {
      zelFlowOutValueEnq(flowOut(), at);
      return false;
    }
    writeText(text, nullptr, at);
    if (isAtEnd(at)) {
      return true;
    }
  }
  flow = absorb(attr);
  if (flow != nullptr) {
    flow->bitIs(text, true);
    flow->outstandingKeysIs(1);
    zelFlowOutValueEnq(flowOut(), at);
  }
  return false;
}

/// Writes one chunk, behind the key of its entry if there is one.
void AttrLogAdapter::writeText(const FlowStep& step, const void* key, TextPosition& position) {
  write(step, MsgHeader::variable(entityId(), step.row->id), [&](NboAttrLog::Out& to) {
    if (key != nullptr) {
      encodeValue(*step.row->key, key, to);
    }
    // Header, key and chunk stay below the size of a message.
    struct Limit {
      NboAttrLog::Out& out;
      const std::size_t saved = out.chunkLimit();
      ~Limit() { out.chunkLimitIs(saved); }
    } const limit{to};
    const std::size_t written = NboAttrLog::Out::maxRecordSize - 1 - to.room();
    to.chunkLimitIs(to.maxMessageSize() - written - 2);
    to.putChunk(position);
  });
}

AttributeId AttrLogAdapter::handleAttrFlowOut(AttributeId start) {
  const Ptr<StreamAdapter> keptAdapter(this);
  const Ptr<FlowOut> kept = flowOut();
  EntityFlowOut* const flow = owed();
  const HandlingScheduledFlowOutAnchor anchor(*this, flow != nullptr);
  if (flow != nullptr) {
    flow->dataBitIs(FlowOut::dataBitSuspended, false);
    for (FlowOut::ZelPendingAbort::Iterator at(flow->pendingAbort()); at; at.advance()) {
      sendTransactionMarker(at->zelKey(), attrTransactionAbort, 0);
      flow->pendingAbortDel(at);
    }
  }
  const std::vector<FlowStep>& steps = plan().steps;
  std::size_t place = 0;
  if (start < plan().first()) {
    const AttributeId base = ZelNboAttrLogSa::handleAttrFlowOut(start);
    if (base != 0 || steps.empty() || (flow != nullptr && !flow->hasDirtyAttributes())) {
      return base;
    }
    if (!continueFlowOut()) {
      return plan().first();
    }
  } else if (const FlowStep* const first = plan().step(start)) {
    place = static_cast<std::size_t>(first - steps.data());
  } else {
    return 0;
  }
  for (;; ++place) {
    if (isGone()) {
      return 0;
    }
    const FlowStep& at = steps[place];
    const AttributeId attr = at.row->id;
    const bool isLast = place + 1 == steps.size();
    const AttributeId next = isLast ? 0 : steps[place + 1].row->id;
    bool done = true;
    // A place that is held elsewhere stays there: another text or collection would take it for its
    // own, so it waits with its mark.
    const AttributeId heldIn = flow != nullptr ? flow->heldIn() : 0;
    const bool isFree = heldIn == 0 || heldIn == attr;
    if (flow != nullptr && isFree) {
      flow->attrIdIs(attr);
    }
    if (at.kind == FlowKind::plain) {
      if (flow != nullptr && flow->hasBit(at)) {
        at.row->tell(*notifiee());
      }
    } else if (at.kind == FlowKind::text && isFree) {
      if (flow != nullptr && (flow->valueIter() != nullptr || flow->hasBit(at))) {
        done = zelSerializeText(attr);
        flow->bitIs(at, !done);
      }
    } else if (isFree) {
      done = zelSerializeColl(attr);
    }
    if (flowOut() != kept) {
      return 0; // given up within the step
    }
    if (flow != nullptr && flow->hasDataBit(FlowOut::dataBitSuspended)) {
      return attr;
    }
    if (flow != nullptr && !done &&
        (isLast || (continueFlowOut() && flow->bookmark() == nullptr))) {
      flow->isPassedBy();
    }
    if (isLast) {
      return 0;
    }
    // Where a walk has stopped the run ends, as it does where a text has.
    if (continueFlowOut() && (flow == nullptr || flow->bookmark() == nullptr)) {
      continue;
    }
    if (at.kind == FlowKind::plain) {
      return next;
    }
    if (!done) {
      return attr;
    }
    return flow != nullptr && flow->hasDirtyAttributes() ? next : 0;
  }
}

void AttrLogAdapter::freeResyncState(const Ptr<FlowOut>& flow) {
  const FlowStep* const at = plan().step(flow->attrId());
  if (at == nullptr || at->kind == FlowKind::plain) {
    return;
  }
  if (isCollection(at->kind)) {
    zelHeapFree(*at->row->key, flow->bookmark());
    flow->bookmarkIs(nullptr);
  }
  if (at->kind == FlowKind::text || at->kind == FlowKind::keyedText) {
    delete static_cast<TextPosition*>(flow->valueIter());
    flow->valueIterIs(nullptr);
  }
  if (at->kind == FlowKind::keyedText) {
    zelHeapFree(*at->row->key, flow->valueIterKey());
    flow->valueIterKeyIs(nullptr);
  }
}

} // namespace Zel
