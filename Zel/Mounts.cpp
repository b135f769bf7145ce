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
  if (root_) {
    root_->isWritableIs(state == live && access_ == accessReadWrite);
  }
  if (state == state_) {
    return; // it is so since then, and for that reason
  }
  since_ = now;
  reason_ = state == stale || state == refused ? std::move(reason) : String8();
  singularIs<&NotifieeConst::onState>(*this, Attr::state, state_, state);
}

void Mount::entityIs(Ptr<Entity> entity) {
  singularIs<&NotifieeConst::onEntity>(*this, Attr::entity, entity_, std::move(entity));
}

void Mount::guardsDel() {
  for (const Ptr<NboAttrLog::Root>& root : std::exchange(guards_, {})) {
    root->guardsDel();
  }
  if (root_) {
    root_->guardsDel();
  }
}

/// The connection has let go of the root.
void Mount::rootGone() {
  if (!root_) {
    return;
  }
  root_->isWritableIs(false);
  guards_.push_back(std::exchange(root_, nullptr));
  isWalkOver_ = isRepairOwed_ = false;
  repairs_ = 0;
  // One guard is enough for an entity, however often a resync is cut.
  std::unordered_set<const Entity*> guarded;
  for (const Ptr<NboAttrLog::Root>& root : guards_) {
    root->resyncedByIs(nullptr);
    if (guards_.size() > 1) {
      root->guardsDel(guarded);
    }
  }
  std::erase_if(guards_, [](const Ptr<NboAttrLog::Root>& root) { return root->guards() == 0; });
}

Mount::NotifieeConst::~NotifieeConst() = default;
void Mount::NotifieeConst::onState() {}
void Mount::NotifieeConst::onEntity() {}
Mount::Notifiee::~Notifiee() = default;

Mounts::Mounts(Ptr<Dir> dir, std::size_t most) : dir_(std::move(dir)), most_(most) {}
Mounts::~Mounts() {
  for (const auto& [name, mount] : mounts_) {
    if (dir_ && mount->entity() && dir_->entity(name) == mount->entity()) {
      dir_->entityDel(name);
    }
  }
}

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
  Ptr<Mount> there = mount(name);
  if (there || all_ == accessNone || mounts_.size() >= most_) {
    return there;
  }
  return mounts_.emplace(name, makeObject<Mount>(name, all_)).first->second;
}

bool Mounts::isNameInUse(const Mount& mount) const {
  const Ptr<Entity> there = dir_ ? dir_->entity(mount.name()) : nullptr;
  return there && !(there == mount.entity());
}

bool Mounts::areLive() const noexcept {
  return !mounts_.empty() && std::all_of(mounts_.begin(), mounts_.end(), [](const auto& member) {
    return member.second->state() == Mount::live;
  });
}

} // namespace Zel
