#include <Zel/Mounts>

#include <Zel/Exception>
#include <Zel/Session>

#include <algorithm>

namespace Zel {

Mount::Mount(Name name, Access wanted) : name_(std::move(name)), wanted_(wanted) {}
Mount::~Mount() { guardsDel(); }

void Mount::zeroReferencesIs(bool /*zero*/) { notifyZeroReferences(*this); }

const char* Mount::stateName(State state) noexcept {
  switch (state) {
  case waiting:
    return "waiting";
  case resyncing:
    return "resyncing";
  case live:
    return "live";
  case stale:
    return "stale";
  case refused:
    break;
  }
  return "refused";
}

void Mount::stateIs(State state, double now, String8 reason) {
  reason_ = std::move(reason);
  if (root_) {
    root_->isWritableIs(state == live && access_ == accessReadWrite);
  }
  if (state != state_) {
    since_ = now;
  }
  singularIs<&NotifieeConst::onState>(*this, Attr::state, state_, state);
}

void Mount::entityIs(Ptr<Entity> entity) {
  singularIs<&NotifieeConst::onEntity>(*this, Attr::entity, entity_, std::move(entity));
}

void Mount::guardsDel() {
  for (const Ptr<NboAttrLog::Root>& root : std::exchange(guards_, {})) {
    root->guardsDel();
  }
}

/// The connection has let go of the root.
void Mount::rootGone() {
  if (!root_) {
    return;
  }
  root_->isWritableIs(false);
  for (const Ptr<NboAttrLog::Root>& older : guards_) {
    older->resyncedByIs(nullptr);
    root_->guardsDel(*older);
  }
  if (root_->guards() != 0) {
    guards_.push_back(root_);
  }
  root_ = nullptr;
}

Mount::NotifieeConst::~NotifieeConst() = default;
void Mount::NotifieeConst::onState() {}
void Mount::NotifieeConst::onEntity() {}
Mount::Notifiee::~Notifiee() = default;

Mounts::Mounts(Ptr<Dir> dir, std::size_t most) : dir_(std::move(dir)), most_(most) {}
Mounts::~Mounts() = default;

Ptr<Mount> Mounts::mountIs(const Name& name, Access wanted) {
  if (name.empty() || (wanted != accessReadOnly && wanted != accessReadWrite)) {
    throwRangeException(name.empty() ? String8("no name of a root") : "no access: " + name);
  }
  const auto [at, isNew] = mounts_.try_emplace(name);
  if (isNew) {
    at->second = makeObject<Mount>(name, wanted);
    if (session_ != nullptr && session_->offers_.count(name) != 0) {
      session_->ask(*at->second);
    }
  }
  return at->second;
}

void Mounts::allIs(Access wanted) {
  all_ = wanted;
  if (session_ != nullptr) {
    session_->askAll();
  }
}

Ptr<Mount> Mounts::mount(const Name& name) const {
  const auto at = mounts_.find(name);
  return at != mounts_.end() ? at->second : nullptr;
}

Ptr<Mount> Mounts::offered(const Name& name) {
  const Ptr<Mount> there = mount(name);
  return there || all_ == accessNone || mounts_.size() >= most_ ? there : mountIs(name, all_);
}

bool Mounts::areLive() const noexcept {
  return !mounts_.empty() && std::all_of(mounts_.begin(), mounts_.end(), [](const auto& member) {
    return member.second->state() == Mount::live;
  });
}

} // namespace Zel
