#include <Zel/Mounts>

#include <Zel/Exception>
#include <Zel/Session>

#include <algorithm>
#include <random>

namespace Zel {

Mount::Mount(Name name, Access wanted) : name_(std::move(name)), wanted_(wanted) {}
Mount::~Mount() { entityFree(); }

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
  if (state == state_) {
    return; // it is so since then, and for that reason
  }
  since_ = now;
  reason_ = state == stale || state == refused ? std::move(reason) : String8();
  singularIs<&NotifieeConst::onState>(*this, Attr::state, state_, state);
}

/// What belongs to no mount is nobody's mirror.
void Mount::entityFree() {
  if (entity_) {
    entity_->zelFrozenIs(false);
    Session::rightChanged(*entity_);
  }
}

/// A mirror is frozen from its making on.
void Mount::entityIs(Ptr<Entity> entity) {
  entityFree();
  entity->zelFrozenIs(true);
  singularIs<&NotifieeConst::onEntity>(*this, Attr::entity, entity_, std::move(entity));
}

/// Those downstream are frozen and thawed with it, before anybody is told.
void Mount::writableIs(bool writable) {
  if (writable == isWritable_) {
    return;
  }
  entity_->zelFrozenIs(!writable);
  Session::rightChanged(*entity_);
  singularIs<&NotifieeConst::onWritable>(*this, Attr::writable, isWritable_, writable);
}

void Mount::droppedInc(std::uint64_t by) {
  if (by != 0) {
    singularIs<&NotifieeConst::onDropped>(*this, Attr::dropped, dropped_, dropped_ + by);
  }
}

/// The connection has let go of the root.
void Mount::rootGone() {
  if (root_) {
    root_ = nullptr;
    isFrozenOwed_ = false;
    freezes_ = 0;
    Session::cutDownstream(*entity_);
    writableIs(false);
  }
}

Mount::NotifieeConst::~NotifieeConst() = default;
void Mount::NotifieeConst::onState() {}
void Mount::NotifieeConst::onEntity() {}
void Mount::NotifieeConst::onWritable() {}
void Mount::NotifieeConst::onDropped() {}
Mount::Notifiee::~Notifiee() = default;

namespace {

Mounts::Instance drawn() {
  std::random_device entropy;
  const auto word = [&] { return std::uint64_t{entropy()} << 32 | entropy(); };
  return {word(), word()};
}

} // namespace

Mounts::Mounts(Ptr<Dir> dir, std::size_t most, Instance instance)
    : dir_(std::move(dir)), most_(most), instance_(instance == Instance{} ? drawn() : instance) {}
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
