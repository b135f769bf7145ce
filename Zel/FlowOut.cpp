#include <Zel/FlowOut>

#include <Zel/ValueRecord>

namespace Zel::NboAttrLog {

FlowOut::FlowOut(const Ptr<Out>& /*out*/, const Ptr<StreamAdapter>& adapter,
                 const ConnectDesc& /*connect*/, bool /*flag*/, AttributeId start)
    : resumeAt_(start), adapter_(adapter.ptr()) {}

FlowOut::~FlowOut() { delete static_cast<String8::IteratorConst*>(valueIter_); }

bool FlowOut::hasDirtyAttributes() const {
  return pendingAbort_.count() != 0 || valueIter_ != nullptr ||
         (forwardRefs_ && !forwardRefs_->empty());
}

void FlowOut::forwardRefDel(unsigned key) {
  if (forwardRefs_) {
    forwardRefs_->erase(key);
  }
}

void FlowOut::forwardRefDel(ForwardRefs::iterator& at) {
  if (forwardRefs_ && at != forwardRefs_->end()) {
    at = forwardRefs_->erase(at);
  }
}

void FlowOut::forwardRefNotify(unsigned /*key*/) {}

void FlowOut::forwardRefEnq(const Ptr<StreamAdapter>& adapter) {
  const unsigned last = forwardRefs_ && !forwardRefs_->empty() ? forwardRefs_->rbegin()->first : 0;
  forwardRefIs(last + 1, adapter);
}

Ptr<StreamAdapter> FlowOut::forwardRefDeq() {
  if (!forwardRefs_ || forwardRefs_->empty()) {
    return nullptr;
  }
  Ptr<StreamAdapter> first = forwardRefs_->begin()->second;
  forwardRefs_->erase(forwardRefs_->begin());
  return first;
}

void FlowOut::forwardRefIs(unsigned key, const Ptr<StreamAdapter>& adapter) {
  if (!forwardRefs_) {
    forwardRefs_ = std::make_unique<ForwardRefs>();
  }
  forwardRefs_->insert_or_assign(key, adapter);
}

void FlowOut::attrIdIs(AttributeId attr) { attrId_ = attr; }
void FlowOut::bookmarkIs(void* bookmark) { bookmark_ = bookmark; }
void FlowOut::entityIdStatusIs(EntityIdStatus /*status*/) {}
void FlowOut::entityIdSeqnoIs(unsigned /*number*/) {}
void FlowOut::valueIterIs(void* position) { valueIter_ = position; }
void FlowOut::valueIterKeyIs(void* key) { valueIterKey_ = key; }
void FlowOut::outstandingKeysInc(unsigned by) { outstandingKeys_ += by; }
void FlowOut::outstandingKeysIs(unsigned count) { outstandingKeys_ = count; }
void FlowOut::zelDataBitsIs(unsigned char bits) { zelDataBits_ = bits; }
void FlowOut::indIs(int /*ind*/) {}
void FlowOut::entityVersionIs(unsigned /*version*/) {}

void FlowOut::pendingAbortDel(AttributeId attr) { pendingAbort_.deleteKey(attr); }

void FlowOut::pendingAbortDel(ZelPendingAbort::Iterator& at) {
  if (at) {
    pendingAbortDel(at->zelKey());
  }
}

void FlowOut::pendingAbortNotify(AttributeId /*attr*/) {}
void FlowOut::pendingAbortIs(AttributeId attr, bool abort) {
  if (ZelAttributeToAbort* const there = pendingAbort_[attr]) {
    there->zelValueIs(abort);
    return;
  }
  const auto entry = makeObject<ZelAttributeToAbort>(attr, abort);
  pendingAbort_.newMemberG(entry, &entry->zelKey());
}
void FlowOut::streamAdapterIs(const Ptr<StreamAdapter>& adapter) { adapter_ = adapter.ptr(); }

FlowIn::~FlowIn() {
  delete static_cast<String8::Iterator*>(iter_);
  idxDel();
}

void FlowIn::idxDel() noexcept {
  if (idx_ != nullptr && idxType_ != nullptr) {
    idxType_->destroy(idx_);
    ::operator delete(idx_);
  }
  idx_ = nullptr;
}

} // namespace Zel::NboAttrLog
