#include <Zel/Activity>

#include <algorithm>
#include <exception>
#include <utility>

namespace Zel {

namespace {

constinit thread_local ActivitySm* installedScheduler = nullptr;

} // namespace

ActivitySm::~ActivitySm() = default;

void ActivitySm::redispatch() {}

ActivitySm* ActivitySm::installed() noexcept { return installedScheduler; }

ActivitySm* ActivitySm::installedIs(ActivitySm* scheduler) noexcept {
  return std::exchange(installedScheduler, scheduler);
}

DeferredNotification::DeferredNotification() : former_(installedIs(this)) {}

DeferredNotification::~DeferredNotification() {
  if (installed() == this) {
    installedIs(former_);
  }
}

bool DeferredNotification::take(PtrInterface::NotifieeConst& reactor, AttributeId id) {
  if (&reactor == served_) {
    return false;
  }
  const auto [place, isNew] = places_.try_emplace(&reactor, waiting_.size());
  try {
    if (isNew) {
      waiting_.push_back({Ptr<PtrInterface::NotifieeConst>(&reactor), {id}});
      return true;
    }
    std::vector<AttributeId>& ids = waiting_[place->second].ids;
    const auto at = std::lower_bound(ids.begin(), ids.end(), id);
    if (at == ids.end() || *at != id) {
      ids.insert(at, id);
    }
    return true;
  } catch (...) {
    if (isNew) {
      places_.erase(place);
    }
    throw;
  }
}

namespace {

bool hears(const PtrInterface::NotifieeConst& reactor) {
  return reactor.hasNotificationActive() && !reactor.zelMarkedForDeletion();
}

/// Throws what the reactor's `onNotificationException` throws.
void deliver(PtrInterface::NotifieeConst& reactor, AttributeId id) {
  if (!hears(reactor)) { // not any more
    return;
  }
  ActivityConfig config;
  reactor.pendingAttributeIs(id);
  try {
    reactor.handleNotification(&config);
  } catch (...) {
    reactor.onNotificationException(id);
  }
}

} // namespace

unsigned DeferredNotification::run() {
  std::vector<Waiting> turns;
  turns.swap(waiting_);
  places_.clear();

  const PtrInterface::NotifieeConst* const outer = served_;
  std::exception_ptr failure;
  unsigned served = 0;
  for (Waiting& turn : turns) {
    // Each handle is dropped in its turn: a reactor whose owner has gone meanwhile dies here.
    const Ptr<PtrInterface::NotifieeConst> reactor = std::move(turn.reactor);
    const unsigned ours = places_.contains(reactor.ptr()) ? 2 : 1;
    if (reactor->references() == ours || !hears(*reactor)) {
      continue;
    }
    ++served;
    served_ = reactor.ptr();
    for (const AttributeId id : turn.ids) {
      try {
        deliver(*reactor, id);
      } catch (...) {
        failure = failure ? failure : std::current_exception();
      }
    }
    served_ = outer;
  }
  if (failure) {
    std::rethrow_exception(failure);
  }
  return served;
}

} // namespace Zel
