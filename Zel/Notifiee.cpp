#include <Zel/Notifiee>

#include <Zel/Activity>
#include <Zel/Entity>
#include <Zel/NotificationException>
#include <Zel/StreamAdapter>

#include <atomic>
#include <limits>
#include <typeinfo>

namespace Zel {

using NotifieeConst = PtrInterface::NotifieeConst;

namespace {

constinit std::atomic<NotificationExceptionHandler> exceptionHandler = nullptr;

} // namespace

NotificationExceptionHandler
notificationExceptionHandlerIs(NotificationExceptionHandler handler) noexcept {
  return exceptionHandler.exchange(handler);
}

NotificationExceptionHandler notificationExceptionHandler() noexcept {
  return exceptionHandler.load();
}

NotifieeConst::NotifieeConst() noexcept { referenceBitsSet(notificationActiveBit); }

NotifieeConst::~NotifieeConst() = default;

void NotifieeConst::hasNotificationActiveIs(bool active) {
  if (active == hasNotificationActive()) {
    return;
  }
  PtrInterface::hasNotificationActiveIs(active);
  if (!active) {
    flags_.bitsIs(Zel_BitSet::registeredBit, registered_);
    isRegisteredNotifieeIs(false);
  } else if (flags_.has(Zel_BitSet::registeredBit)) {
    isRegisteredNotifieeIs(true);
  }
}

Ptr<NotifieeConst> NotifieeConst::zelReactor() const {
  return Ptr<NotifieeConst>(const_cast<NotifieeConst*>(this));
}

NotifieeConst* NotifieeConst::zelRawReactor() const { return const_cast<NotifieeConst*>(this); }

bool NotifieeConst::isStreamAdapter() const { return false; }

void NotifieeConst::isRegisteredNotifieeIs(bool registered) const { registered_ = registered; }

void NotifieeConst::zel_bitSetIs(Zel_BitSet flags) { flags_ = flags; }

Name NotifieeConst::name() const {
  const auto* const entity = dynamic_cast<const Entity*>(notifier_.ptr());
  return entity != nullptr ? entity->name() : Name();
}

void NotifieeConst::notifierIs(const Ptr<const PtrInterface>& notifier) {
  const PtrInterface* const former = notifier_.ptr();
  if (weak_ && former != nullptr) {
    former->referencesInc(); // a weak reference holds none of the counts that the handle drops
  }
  notifier_.ptrAssign(notifier.ptr());
  if (weak_ && notifier_) {
    notifier_.ptr()->referencesDec();
  }
}

void NotifieeConst::isWeakReferenceIs(bool weak) {
  if (weak == weak_) {
    return;
  }
  if (weak && notifier_ && notifier_.ptr()->references() == 1 && listPlace_ == 0 && !isServed_) {
    notifierIs(nullptr); // of whose end, which is now, nobody would tell
  }
  weak_ = weak;
  const PtrInterface* const notifier = notifier_.ptr();
  if (notifier == nullptr) {
    return;
  }
  if (weak) {
    absenceBegin();
    notifier->referencesDec();
  } else {
    absenceEnd();
    notifier->referencesInc();
  }
}

void NotifieeConst::absenteeIs(bool absentee) const noexcept {
  auto* const notifier = reinterpret_cast<char*>(const_cast<PtrInterface*>(notifier_.ptr()));
  auto& list = *reinterpret_cast<ListRawGeneric*>(notifier + listPlace_);
  auto* const self = const_cast<NotifieeConst*>(this);
  if (absentee) {
    list.absenteeIs(self);
  } else {
    list.absenteeDel(self);
  }
}

void NotifieeConst::notifierGone() noexcept {
  // Nothing is dropped: a weak reference holds no count, and a count that a notifiee has taken on a
  // dying notifier keeps nothing alive.
  const PtrInterface* const gone = notifier_.release();
  // Whom it serves stands in no list, and forgets with it.
  const Ptr<NotifieeConst> reactor(zelRawReactor());
  if (reactor && reactor->notifier_.ptr() == gone) {
    [[maybe_unused]] const PtrInterface* const reactorsGone = reactor->notifier_.release();
    if (auto* const adapter = dynamic_cast<StreamAdapter*>(reactor.ptr())) {
      adapter->doRemountSelf(nullptr); // it was off, and not told before
    }
  }
}

bool NotifieeConst::goesFirst() const {
  // The cast walks the chain of classes, so the cheap question comes first; and a walk makes many
  // adapters of one type in a row, whose answer is kept.
  const Ptr<NotifieeConst> reactor = zelReactor();
  if (!reactor || !reactor->isStreamAdapter()) {
    return false;
  }
  static constinit thread_local const std::type_info* known = nullptr;
  const NotifieeConst& object = *reactor;
  const std::type_info& type = typeid(object);
  if (&type != known) {
    if (dynamic_cast<const Entity::ZelNboAttrLogSa*>(&object) == nullptr) {
      return false;
    }
    known = &type;
  }
  return true;
}

void NotifieeConst::handleNotification(ActivityConfig* /*config*/) {}
void NotifieeConst::handleDefault(ActivityConfig* /*config*/, AttributeId /*id*/, bool /*force*/) {}
void NotifieeConst::onAttribute(AttributeId /*id*/) {}
void NotifieeConst::onNotification() {}
void NotifieeConst::onCollectionNotification(String8 /*key*/) {}
void NotifieeConst::onNotificationException() {}
void NotifieeConst::handleNotificationException(AttributeId /*id*/) {}
void NotifieeConst::handleNotificationException() {}
void NotifieeConst::onZeroReferences() {}

void NotifieeConst::onNotificationException(AttributeId id) {
  const NotificationExceptionHandler handler = notificationExceptionHandler();
  const std::exception_ptr failure = std::current_exception();
  if (handler != nullptr && failure) {
    handler(*this, id, failure);
  }
}

Ptr<PtrInterface> NotifieeConst::activityPtr() const { return nullptr; }
ActivitySm* NotifieeConst::zelFwkActivity() { return nullptr; }
const ActivitySm* NotifieeConst::zelFwkActivity() const { return nullptr; }
ActivitySm* NotifieeConst::actsm() { return nullptr; }

bool NotifieeConst::zelOnAttribute(AttributeId id, unsigned char* pending) {
  ActivitySm* const scheduler = ActivitySm::installed();
  if (scheduler == nullptr || !scheduler->take(*this, id)) {
    return false;
  }
  // It counts up to many, and does not wrap around to none.
  if (pending != nullptr && *pending != std::numeric_limits<unsigned char>::max()) {
    ++*pending;
  }
  return true;
}

void NotifieeConst::redispatch(ActivitySm* sm) {
  if (sm != nullptr) {
    sm->redispatch();
  }
}

PtrInterface::Notifiee::~Notifiee() = default;

} // namespace Zel
