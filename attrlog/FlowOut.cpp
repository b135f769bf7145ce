#include <attrlog/FlowOut.h>

namespace Zel {

EntityFlowOut::EntityFlowOut(const Ptr<NboAttrLog::Out>& out,
                             const Ptr<Entity::ZelNboAttrLogSa>& adapter,
                             const ConnectDesc& connect, bool flag, AttributeId start)
    : FlowOut(out, adapter, connect, flag, start), plan_(adapter->plan()) {
  for (const FlowStep& step : plan_.steps) {
    const bool isOwed = start <= step.row->id;
    bitIs(step, isCollection(step.kind) ? !isOwed : isOwed && !step.startsClean);
  }
}

EntityFlowOut::~EntityFlowOut() = default;

bool EntityFlowOut::hasDirtyAttributes() const {
  if (FlowOut::hasDirtyAttributes()) {
    return true;
  }
  for (const FlowStep& step : plan_.steps) {
    if (hasBit(step) != isCollection(step.kind)) {
      return true;
    }
  }
  for (const DirtyKeysGeneric* keys = dirtyKeys_; keys != nullptr; keys = keys->next()) {
    if (!keys->empty()) {
      return true;
    }
  }
  return false;
}

DirtyKeysGeneric& EntityFlowOut::dirtyKeys(AttributeId attr) const noexcept {
  DirtyKeysGeneric* keys = dirtyKeys_;
  while (keys->attr() != attr) {
    keys = keys->next();
  }
  return *keys;
}

} // namespace Zel
