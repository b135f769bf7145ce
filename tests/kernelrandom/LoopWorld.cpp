#include "LoopWorld.h"

#include <Zel/Exception>

#include <stdexcept>
#include <string>

namespace KernelRandom {

using Group::GroupKey;
using Maintenance::Profile::DefaultProfile;
using Maintenance::Unit::State;
using Maintenance::Unit::Status;

namespace {

Zel::String8 textOf(int number) { return Zel::String8(std::to_string(number)); }
int numberOf(const Zel::String8& text) { return text.empty() ? -1 : std::stoi(text.charPtr()); }
GroupKey groupOf(int number) { return {Group::groupTypeBgp, textOf(number)}; }

/// Counts in as long as it stands.
class Within {
public:
  explicit Within(int& counter) : counter_(counter) { ++counter_; }
  Within(const Within&) = delete;
  Within& operator=(const Within&) = delete;
  ~Within() { --counter_; }

private:
  int& counter_;
};

class WithinLoop {
public:
  WithinLoop(std::vector<int>& loops, int e) : loops_(loops) { loops_.push_back(e); }
  WithinLoop(const WithinLoop&) = delete;
  WithinLoop& operator=(const WithinLoop&) = delete;
  ~WithinLoop() { loops_.pop_back(); }

private:
  std::vector<int>& loops_;
};

} // namespace

struct LoopWorld::Unit : Status {
  Unit(LoopWorld& world, int e) : Status(Zel::Name("unit")), world_(world), e_(e) {}
  ~Unit() override {
    world_.entities_[at(e_)].object = nullptr;
    world_.events.push_back({Event::entityDied, e_, 0, -1, false, 0, 0, 0});
  }
  void zeroReferencesIs(bool zero) override {
    const Within dying(world_.dying_);
    const WithinLoop loop(world_.loops_, e_);
    Status::zeroReferencesIs(zero);
  }
  LoopWorld& world_;
  const int e_;
};

struct LoopWorld::Profile : DefaultProfile {
  Profile(LoopWorld& world, int e) : DefaultProfile(Zel::Name("p")), world_(world), e_(e) {}
  ~Profile() override {
    world_.entities_[at(e_)].object = nullptr;
    world_.events.push_back({Event::entityDied, e_, 0, -1, false, 0, 0, 0});
  }
  void zeroReferencesIs(bool zero) override {
    const Within dying(world_.dying_);
    const WithinLoop loop(world_.loops_, e_);
    DefaultProfile::zeroReferencesIs(zero);
  }
  LoopWorld& world_;
  const int e_;
};

template <class Base>
struct LoopWorld::Actor : Base {
  Actor(LoopWorld& world, int n) : world_(world), n_(n) {}
  ~Actor() override {
    world_.notifiees_[at(n_)].object = nullptr;
    world_.events.push_back({Event::notifieeDied, n_, 0, -1, false, 0, 0, 0});
  }
  Zel::Ptr<AnyNotifiee> zelReactor() const override {
    return world_.notifiees_[at(n_)].front ? world_.adapter_ : Base::zelReactor();
  }
  void onZeroReferences() override { world_.callback(n_, zeroReferences, 0); }
  using Base::onNotificationException;
  void onNotificationException(Zel::AttributeId id) override { world_.told(n_, id); }
  LoopWorld& world_;
  const int n_;
};

struct LoopWorld::UnitActor : Actor<Status::Notifiee> {
  using Actor::Actor;
  using Status::Notifiee::onGroup;
  void onGroup(const GroupKey& key) override {
    world_.callback(n_, Status::Attr::group, KernelRandom::numberOf(key.name()));
  }
  void onProfileName() override { world_.callback(n_, Status::Attr::profileName, 0); }
  void onState() override { world_.callback(n_, Status::Attr::state, 0); }
  void onGenId() override { world_.callback(n_, Status::Attr::genId, 0); }
};

struct LoopWorld::ProfileActor : Actor<DefaultProfile::Notifiee> {
  using Actor::Actor;
  void onProfileName() override { world_.callback(n_, DefaultProfile::Attr::profileName, 0); }
};

LoopWorld::LoopWorld(std::uint64_t seed)
    : random_(seed), adapter_(Zel::makeObject<StreamAdapterDouble>()) {}
LoopWorld::~LoopWorld() { end(); }

void LoopWorld::step() {
  budget_ = loopActions;
  try {
    act(Action(random_.word()));
  } catch (...) {
    events.push_back({Event::escaped, -1, 0, -1, false, 0, 0, 0});
  }
}

void LoopWorld::end() {
  budget_ = 0;
  for (NotifieeSlot& slot : notifiees_) {
    while (!slot.owners.empty()) {
      const auto last = std::move(slot.owners.back());
      slot.owners.pop_back();
    }
  }
  for (EntitySlot& slot : entities_) {
    while (!slot.owners.empty()) {
      const auto last = std::move(slot.owners.back());
      slot.owners.pop_back();
    }
  }
}

int LoopWorld::numberOf(const Zel::PtrInterface* entity) const {
  for (int e = 0; entity != nullptr && e < loopEntities; ++e) {
    if (entities_[at(e)].object == entity) {
      return e;
    }
  }
  return -1;
}

LoopWorld::Unit& LoopWorld::unit(int e) const {
  return static_cast<Unit&>(*entities_[at(e)].object);
}
LoopWorld::Profile& LoopWorld::profile(int e) const {
  return static_cast<Profile&>(*entities_[at(e)].object);
}

NotifieeState LoopWorld::notifiee(int n) const {
  const AnyNotifiee* const it = notifiees_[at(n)].object;
  if (it == nullptr) {
    return {};
  }
  return {true,
          it->references(),
          numberOf(it->notifier().ptr()),
          it->isRegisteredNotifiee(),
          it->hasNotificationActive(),
          it->isWeakReference()};
}

EntityState LoopWorld::entity(int e) const {
  const Zel::Entity* const it = entities_[at(e)].object;
  if (it == nullptr) {
    return {};
  }
  EntityState state{true, it->references(), it->versionCounter(), it->readCounter(), 0, {}};
  const auto listed = [&](const auto& list) {
    state.listVersion = list.version();
    auto* last = list.head();
    for (auto* member = list.head(); member != nullptr; member = member->notifierLink()) {
      for (int n = 0; n < loopSlots; ++n) {
        if (notifiees_[at(n)].object == member) {
          state.list.push_back(n);
        }
      }
      last = member;
    }
    if (list.count() != state.list.size() || (last != nullptr && list.tail() != last)) {
      state.list.push_back(-1); // is in no list of the model
    }
  };
  if (isUnit(e)) {
    listed(unit(e).zelNotifieeList());
  } else {
    listed(profile(e).zelNotifieeList());
  }
  return state;
}

int LoopWorld::valueOf(int e, int id, int key) const {
  if (!isUnit(e)) {
    return KernelRandom::numberOf(profile(e).profileName());
  }
  switch (id) {
  case Status::Attr::group:
    return unit(e).group(groupOf(key)) ? 10 + key : key;
  case Status::Attr::state:
    return unit(e).state();
  case Status::Attr::genId:
    return static_cast<int>(unit(e).genId());
  default:
    return KernelRandom::numberOf(unit(e).profileName());
  }
}

void LoopWorld::callback(int n, int id, int key) {
  const int e = loops_.back();
  const Zel::Entity* const entity = entities_[at(e)].object;
  Event event{Event::called, n, id, e, entity != nullptr, 0, 0, 0};
  if (entity != nullptr) {
    event.version = entity->versionCounter();
    event.reads = entity->readCounter();
    event.value = id == zeroReferences ? 0 : valueOf(e, id, key);
  }
  events.push_back(event);
  const Reaction reaction(random_.word());
  react(reaction);
  if (!reaction.throws) {
    return;
  }
  switch (reaction.thrown) {
  case 0:
    throw Zel::RangeException("from a callback");
  case 1:
    throw 17;
  default:
    throw std::runtime_error("from a callback");
  }
}

void LoopWorld::told(int n, int id) {
  events.push_back({Event::told, n, id, -1, false, 0, 0, 0});
  const Reaction reaction(random_.word());
  react(reaction);
  // An exception that left the zero path would end the process.
  if (reaction.throws && dying_ == 0) {
    throw std::runtime_error("from onNotificationException");
  }
}

void LoopWorld::react(const Reaction& reaction) {
  if (depth_ == loopDepth) {
    return;
  }
  const Within deeper(depth_);
  for (int i = 0; i < reaction.actions && budget_ > 0; ++i) {
    --budget_;
    act(Action(random_.word()));
  }
}

void LoopWorld::act(const Action& action) {
  if (action.kind <= Action::read) {
    if (Zel::Entity* const it = entities_[at(action.entity)].object) {
      const Zel::Ptr<Zel::Entity> pin(action.pinned ? it : nullptr);
      const WithinLoop loop(loops_, action.entity);
      mutate(action);
    }
  } else if (action.kind >= Action::entityMake) {
    entityAction(action);
  } else {
    notifieeAction(action);
  }
}

void LoopWorld::result(int e, unsigned yielded) {
  events.push_back({Event::result, e, static_cast<int>(yielded), -1, false, 0, 0, 0});
}

void LoopWorld::mutate(const Action& action) {
  const int e = action.entity;
  if (action.kind == Action::read) {
    const auto name = isUnit(e) ? unit(e).profileName() : profile(e).profileName();
    return result(e, static_cast<unsigned>(KernelRandom::numberOf(name)));
  }
  if (!isUnit(e)) {
    return profile(e).profileNameIs(textOf(action.value));
  }
  Unit& it = unit(e);
  switch (action.kind) {
  case Action::stateIs:
    return it.stateIs(static_cast<State>(action.value));
  case Action::genIdIs:
    return it.genIdIs(static_cast<unsigned>(action.value));
  case Action::genIdInc:
    return result(e, it.genIdInc(static_cast<unsigned>(action.value)));
  case Action::profileNameIs:
    return it.profileNameIs(textOf(action.value));
  case Action::groupIs:
    return it.groupIs(groupOf(action.value), action.flag);
  case Action::groupDel:
    return result(e, it.groupDel(groupOf(action.value)));
  default:
    return it.groupNotify(groupOf(action.value));
  }
}

void LoopWorld::notifieeAction(const Action& action) {
  NotifieeSlot& slot = notifiees_[at(action.notifiee)];
  const EntitySlot& target = entities_[at(action.entity)];
  if (action.kind == Action::notifieeMake) {
    if (slot.object == nullptr) {
      Zel::Ptr<AnyNotifiee> made;
      if (isUnit(action.entity)) {
        made = Zel::makeObject<UnitActor>(*this, action.notifiee);
      } else {
        made = Zel::makeObject<ProfileActor>(*this, action.notifiee);
      }
      slot.object = made.ptr();
      slot.front = action.value == 0;
      made->isRegisteredNotifieeIs(action.flag);
      made->notifierIs(Zel::Ptr<Zel::PtrInterface const>(target.object));
      slot.owners.push_back(std::move(made));
    }
    return;
  }
  if (slot.object == nullptr) {
    return;
  }
  if (action.kind == Action::notifieeHold) {
    slot.owners.emplace_back(slot.object);
    return;
  }
  if (action.kind == Action::notifieeDrop) {
    if (!slot.owners.empty()) {
      const auto last = std::move(slot.owners.back());
      slot.owners.pop_back();
    }
    return;
  }
  const Zel::Ptr<AnyNotifiee> it(slot.object);
  switch (action.kind) {
  case Action::registeredIs:
    it->isRegisteredNotifieeIs(action.flag);
    break;
  case Action::notifierIs:
    it->notifierIs(Zel::Ptr<Zel::PtrInterface const>(action.toEntity ? target.object : nullptr));
    break;
  case Action::activeIs:
    it->hasNotificationActiveIs(action.flag);
    break;
  case Action::weakIs:
    it->isWeakReferenceIs(action.flag);
    break;
  default:
    slot.front = action.flag;
  }
}

void LoopWorld::entityAction(const Action& action) {
  int e = action.entity;
  if (action.kind == Action::entityHoldOfNotifiee) {
    const AnyNotifiee* const via = notifiees_[at(action.notifiee)].object;
    e = via != nullptr ? numberOf(via->notifier().ptr()) : -1;
    if (e < 0) {
      return;
    }
  }
  EntitySlot& slot = entities_[at(e)];
  if (action.kind == Action::entityMake) {
    if (slot.object == nullptr) {
      Zel::Ptr<Zel::Entity> made;
      if (isUnit(e)) {
        made = Zel::makeObject<Unit>(*this, e);
      } else {
        made = Zel::makeObject<Profile>(*this, e);
      }
      slot.object = made.ptr();
      slot.owners.push_back(std::move(made));
    }
  } else if (slot.object == nullptr) {
    return;
  } else if (action.kind == Action::entityDrop) {
    if (!slot.owners.empty()) {
      const auto last = std::move(slot.owners.back());
      slot.owners.pop_back();
    }
  } else {
    slot.owners.emplace_back(slot.object);
  }
}

} // namespace KernelRandom
