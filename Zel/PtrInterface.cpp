#include <Zel/PtrInterface>

#include <new>
#include <unordered_set>

namespace Zel {

bool VFPtrInterface::enableThreadSafePointers = false;
bool ptrifTrackOn_ = false;

namespace {

/// Never destroyed: objects may be released after the statics of the process are gone.
std::unordered_set<void*>& tracked() {
  static auto* const objects = new std::unordered_set<void*>;
  return *objects;
}

} // namespace

void PtrTrack::ptrifNew(void* object) { tracked().insert(object); }
void PtrTrack::ptrifDel(void* object) { tracked().erase(object); }
std::size_t PtrTrack::count() { return tracked().size(); }

void VFPtrInterface::operator delete(void* storage, std::size_t /*size*/) noexcept {
  if (ptrifTrackOn_) [[unlikely]] {
    PtrTrack::ptrifDel(storage);
  }
  ::operator delete(storage);
}

void VFPtrInterface::referenceBitsSet(unsigned bits) const noexcept {
  if (enableThreadSafePointers) {
    std::atomic_ref(references_).fetch_or(bits, std::memory_order_acq_rel);
  } else {
    references_ |= bits;
  }
}

unsigned VFPtrInterface::referenceBitsClear(unsigned bits) const noexcept {
  if (enableThreadSafePointers) {
    return std::atomic_ref(references_).fetch_and(~bits, std::memory_order_acq_rel);
  }
  const unsigned before = references_;
  references_ = before & ~bits;
  return before;
}

void* VFPtrInterface::operator new(std::size_t size) {
  void* const storage = ::operator new(size);
  if (ptrifTrackOn_) [[unlikely]] {
    try {
      PtrTrack::ptrifNew(storage);
    } catch (...) {
      ::operator delete(storage);
      throw;
    }
  }
  return storage;
}

PtrInterface::~PtrInterface() = default;

void PtrInterface::hasNotificationActiveIs(bool active) {
  if (active) {
    referenceBitsSet(notificationActiveBit);
  } else {
    referenceBitsClear(notificationActiveBit);
  }
}

unsigned PtrInterface::zelAuditErrors(unsigned /*level*/) const { return 0; }

unsigned PtrInterface::auditErrors(unsigned level) const {
  return static_cast<int>(level) < 0 ? 0 : zelAuditErrors(level);
}

void PtrInterface::zeroReferencesIs(bool /*zero*/) {}

const ZelType* PtrInterface::fwkType() const { return nullptr; }

void PtrInterface::referencesLeak() const {
  referencesInc();
  if (ptrifTrackOn_) {
    PtrTrack::ptrifDel(const_cast<PtrInterface*>(this));
  }
}

void PtrInterface::handleZeroRef() const noexcept {
  auto* const self = const_cast<PtrInterface*>(this);
  referenceBitsSet(guardBit);
  self->zeroReferencesIs(true);
  // The clearing itself tells whether somebody has kept a handle: with the atomic switch on, a
  // fresh read could see the decrement of another thread that runs into zero on its own account.
  if ((referenceBitsClear(guardBit) & countMask) == 0) {
    referenceBitsSet(guardBit); // for good: handles come and go while destructors run
    delete self;
  }
}

void PtrInterface::zelMarkedForDeletionIs(bool marked) const noexcept {
  if (marked) {
    referenceBitsSet(markedForDeletionBit);
  } else {
    referenceBitsClear(markedForDeletionBit);
  }
}

} // namespace Zel
