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

NotifieeConst::NotifieeConst() noexcept { referenceBitsSet(notificationActiveBit); }
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
  const PtrInterface* const notifier = notifier_.ptr();
  if (weak && notifier != nullptr && !registered_ &&
      (notifier->references() == 1 || !hasNotificationActive())) {
    // The count that is given up is the last, or notification is off: outside the list nobody would
    // tell of the end.
    notifierIs(nullptr);
  }
  weak_ = weak;
  if (!notifier_) {
    return;
  }
  if (weak) {
    notifier->referencesDec();
  } else {
    notifier->referencesInc();
  }
}

void NotifieeConst::notifierGone() noexcept {
  // An adapter's reactor stands in no list, and forgets with it.
  NotifieeConst* const reactor = zelRawReactor();
  if (reactor != nullptr && reactor != this && reactor->notifier_ == notifier_) {
    [[maybe_unused]] const PtrInterface* const reactorsGone = reactor->notifier_.release();
  }
  // Nothing is dropped: a weak reference holds no count, and a count that a notifiee has taken on a
  // dying notifier keeps nothing alive.
  [[maybe_unused]] const PtrInterface* const gone = notifier_.release();
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
