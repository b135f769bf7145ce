#pragma once

#include "LoopScript.h"

#include <algorithm>
#include <array>
#include <map>

namespace KernelRandom {

/// The rules of notification in plain structs: counts are numbers, exceptions are return values
/// (true: something was thrown).
class LoopModel {
public:
  explicit LoopModel(std::uint64_t seed) : random_(seed) {}

  void step() {
    budget_ = loopActions;
    if (act(Action(random_.word()))) {
      events.push_back({Event::escaped, -1, 0, -1, false, 0, 0, 0});
    }
  }

  /// Drops all handles of the outside.
  void end() {
    budget_ = 0;
    for (int n = 0; n < loopSlots; ++n) {
      while (notifiees_[at(n)].owners != 0) {
        notifieeDrop(n);
      }
    }
    for (int e = 0; e < loopEntities; ++e) {
      while (entities_[at(e)].owners != 0) {
        entityDrop(e);
      }
    }
  }

  NotifieeState notifiee(int n) const {
    const Notifiee& it = notifiees_[at(n)];
    if (!it.alive) {
      return {};
    }
    return {true, it.references(), it.notifier, it.registered, it.active, it.weak};
  }

  EntityState entity(int e) const {
    const Entity& it = entities_[at(e)];
    if (!it.alive) {
      return {};
    }
    return {true, it.references, it.version, it.reads, it.listVersion, it.list};
  }

  std::vector<Event> events;

private:
  struct Notifiee {
    bool alive = false;
    bool unit = false; ///< of units, else of default profiles
    bool front = false;
    unsigned owners = 0;
    unsigned pins = 0; ///< of snapshots and callers
    int notifier = -1;
    bool registered = false;
    bool active = true;
    bool remembered = false;
    bool weak = false;
    unsigned references() const { return owners + pins; }
  };
  struct Entity {
    bool alive = false;
    bool guarded = false;
    unsigned owners = 0;
    unsigned references = 0;
    unsigned version = 0;
    unsigned reads = 0;
    unsigned listVersion = 0;
    std::vector<int> list;
    int state = 0;
    unsigned genId = 0;
    int profileName = -1;
    std::map<int, bool> group;
  };

  static std::size_t at(int index) { return static_cast<std::size_t>(index); }
  static bool isUnit(int e) { return e % 2 == 0; }

  void take(int e) { ++entities_[at(e)].references; }
  void drop(int e) {
    Entity& it = entities_[at(e)];
    if (--it.references == 0 && !it.guarded) {
      entityEnd(e);
    }
  }

  void entityEnd(int e) {
    Entity& it = entities_[at(e)];
    it.guarded = true;
    ++dying_;
    loop(e, zeroReferences, 0);
    --dying_;
    it.guarded = false;
    if (it.references != 0) {
      return;
    }
    it.alive = false;
    events.push_back({Event::entityDied, e, 0, -1, false, 0, 0, 0});
    for (Notifiee& left : notifiees_) { // weak ones, in the list or out of it
      left.notifier = left.notifier == e ? -1 : left.notifier;
    }
    it.list.clear();
  }

  void unpin(int n) {
    --notifiees_[at(n)].pins;
    notifieeCheck(n);
  }
  void notifieeDrop(int n) {
    --notifiees_[at(n)].owners;
    notifieeCheck(n);
  }
  void notifieeCheck(int n) {
    Notifiee& it = notifiees_[at(n)];
    if (it.references() != 0) {
      return;
    }
    it.alive = false;
    events.push_back({Event::notifieeDied, n, 0, -1, false, 0, 0, 0});
    const int last = it.notifier;
    const bool counted = !it.weak;
    if (last < 0) {
      return;
    }
    if (it.registered) {
      unlink(n, last);
    }
    if (counted) {
      drop(last);
    }
  }
  void entityDrop(int e) {
    --entities_[at(e)].owners;
    drop(e);
  }

  void link(int n, int e) {
    Entity& it = entities_[at(e)];
    it.list.insert(notifiees_[at(n)].front ? it.list.begin() : it.list.end(), n);
    ++it.listVersion;
  }
  void unlink(int n, int e) {
    Entity& it = entities_[at(e)];
    it.list.erase(std::find(it.list.begin(), it.list.end(), n));
    ++it.listVersion;
  }

  void registeredIs(int n, bool registered) {
    Notifiee& it = notifiees_[at(n)];
    if (it.registered == registered) {
      return;
    }
    it.registered = registered;
    if (it.notifier >= 0) {
      registered ? link(n, it.notifier) : unlink(n, it.notifier);
    }
  }

  void activeIs(int n, bool active) {
    Notifiee& it = notifiees_[at(n)];
    if (it.active == active) {
      return;
    }
    it.active = active;
    if (!active) {
      it.remembered = it.registered;
      registeredIs(n, false);
    } else if (it.remembered) {
      registeredIs(n, true);
    }
  }

  void notifierIs(int n, int wanted) {
    Notifiee& it = notifiees_[at(n)];
    const int former = it.notifier;
    if (wanted >= 0 && isUnit(wanted) != it.unit) {
      wanted = -1;
    }
    if (wanted == former) {
      return;
    }
    if (former >= 0 && it.registered) {
      unlink(n, former);
    }
    it.notifier = wanted;
    if (wanted >= 0 && !it.weak) {
      take(wanted);
    }
    if (wanted >= 0 && it.registered) {
      link(n, wanted);
    }
    if (former >= 0 && !it.weak) {
      drop(former);
    }
  }

  void weakIs(int n, bool weak) {
    Notifiee& it = notifiees_[at(n)];
    if (it.weak == weak) {
      return;
    }
    it.weak = weak;
    if (it.notifier >= 0) {
      weak ? drop(it.notifier) : take(it.notifier);
    }
  }

  bool loop(int e, int id, int key) {
    const std::vector<int> snapshot = entities_[at(e)].list;
    for (const int n : snapshot) {
      ++notifiees_[at(n)].pins;
    }
    for (std::size_t index = 0; index < snapshot.size();) {
      if (callback(snapshot[index], e, id, key) && told(snapshot[index], id)) {
        while (index < snapshot.size()) {
          unpin(snapshot[index++]);
        }
        return true;
      }
      unpin(snapshot[index++]);
      while (index < snapshot.size() && notifiees_[at(snapshot[index])].references() == 1) {
        unpin(snapshot[index++]);
      }
    }
    return false;
  }

  bool callback(int n, int e, int id, int key) {
    Entity& it = entities_[at(e)];
    Event event{Event::called, n, id, e, it.alive, 0, 0, 0};
    if (it.alive) {
      event.version = it.version;
      event.reads = it.reads;
      event.value = valueOf(it, id, key);
    }
    events.push_back(event);
    const Reaction reaction(random_.word());
    return react(reaction) || reaction.throws;
  }

  int valueOf(Entity& it, int id, int key) {
    if (id == zeroReferences) {
      return 0;
    }
    ++it.reads;
    switch (id) {
    case 260:
      return it.group.contains(key) && it.group[key] ? 10 + key : key;
    case 262:
      return it.state;
    case 274:
      return static_cast<int>(it.genId);
    default:
      return it.profileName;
    }
  }

  bool told(int n, int id) {
    events.push_back({Event::told, n, id, -1, false, 0, 0, 0});
    const Reaction reaction(random_.word());
    return react(reaction) || (reaction.throws && dying_ == 0);
  }

  bool react(const Reaction& reaction) {
    if (depth_ == loopDepth) {
      return false;
    }
    ++depth_;
    bool thrown = false;
    for (int i = 0; i < reaction.actions && budget_ > 0 && !thrown; ++i) {
      --budget_;
      thrown = act(Action(random_.word()));
    }
    --depth_;
    return thrown;
  }

  bool act(const Action& action) {
    const int e = action.entity;
    if (action.kind <= Action::read) {
      if (!entities_[at(e)].alive) {
        return false;
      }
      if (action.pinned) {
        take(e);
      }
      const bool thrown = mutate(action, entities_[at(e)]);
      if (action.pinned) {
        drop(e);
      }
      return thrown;
    }
    if (action.kind >= Action::entityMake) {
      entityAction(action);
    } else {
      notifieeAction(action);
    }
    return false;
  }

  bool mutate(const Action& action, Entity& it) {
    const int e = action.entity;
    const int value = action.value;
    const auto changed = [&](auto& field, auto wanted, int id) {
      if (field == wanted) {
        return false;
      }
      field = wanted;
      ++it.version;
      return loop(e, id, 0);
    };
    const auto result = [&](unsigned yielded) {
      events.push_back({Event::result, e, static_cast<int>(yielded), -1, false, 0, 0, 0});
      return false;
    };
    if (!isUnit(e) && action.kind != Action::read) {
      return changed(it.profileName, value, 259);
    }
    switch (action.kind) {
    case Action::stateIs:
      return changed(it.state, value, 262);
    case Action::genIdIs:
      return changed(it.genId, static_cast<unsigned>(value), 274);
    case Action::genIdInc: {
      ++it.reads;
      const unsigned sum = it.genId += static_cast<unsigned>(value);
      return (value != 0 && loop(e, 274, 0)) || result(sum);
    }
    case Action::profileNameIs:
      return changed(it.profileName, value, 261);
    case Action::groupIs: {
      const auto [place, fresh] = it.group.try_emplace(value, action.flag);
      if (!fresh && place->second == action.flag) {
        return false;
      }
      place->second = action.flag;
      ++it.version;
      return loop(e, 260, value);
    }
    case Action::groupDel: {
      const auto place = it.group.find(value);
      if (place == it.group.end()) {
        return result(0);
      }
      const bool held = place->second;
      it.group.erase(place);
      ++it.version;
      return loop(e, 260, value) || result(held);
    }
    case Action::groupNotify:
      return loop(e, 260, value);
    default:
      ++it.reads;
      return result(static_cast<unsigned>(it.profileName));
    }
  }

  void notifieeAction(const Action& action) {
    const int n = action.notifiee;
    Notifiee& it = notifiees_[at(n)];
    if (action.kind == Action::notifieeMake) {
      if (!it.alive) {
        it = Notifiee();
        it.alive = true;
        it.unit = isUnit(action.entity);
        it.front = action.value == 0;
        it.owners = 1;
        registeredIs(n, action.flag);
        if (entities_[at(action.entity)].alive) {
          notifierIs(n, action.entity);
        }
      }
      return;
    }
    if (!it.alive) {
      return;
    }
    if (action.kind == Action::notifieeHold) {
      ++it.owners;
      return;
    }
    if (action.kind == Action::notifieeDrop) {
      if (it.owners != 0) {
        notifieeDrop(n);
      }
      return;
    }
    ++it.pins;
    switch (action.kind) {
    case Action::registeredIs:
      registeredIs(n, action.flag);
      break;
    case Action::notifierIs: {
      const bool toEntity = action.toEntity && entities_[at(action.entity)].alive;
      if (toEntity) {
        take(action.entity); // the argument's
      }
      notifierIs(n, toEntity ? action.entity : -1);
      if (toEntity) {
        drop(action.entity);
      }
      break;
    }
    case Action::activeIs:
      activeIs(n, action.flag);
      break;
    case Action::weakIs:
      weakIs(n, action.flag);
      break;
    default:
      it.front = action.flag;
    }
    unpin(n);
  }

  void entityAction(const Action& action) {
    int e = action.entity;
    if (action.kind == Action::entityHoldOfNotifiee) {
      const Notifiee& via = notifiees_[at(action.notifiee)];
      e = via.alive ? via.notifier : -1;
      if (e < 0) {
        return;
      }
    }
    Entity& it = entities_[at(e)];
    if (action.kind == Action::entityMake) {
      if (!it.alive) {
        it = Entity();
        it.alive = true;
        it.owners = it.references = 1;
      }
    } else if (!it.alive) {
      return;
    } else if (action.kind == Action::entityDrop) {
      if (it.owners != 0) {
        entityDrop(e);
      }
    } else {
      ++it.owners;
      take(e);
    }
  }

  Random random_;
  std::array<Notifiee, loopSlots> notifiees_;
  std::array<Entity, loopEntities> entities_;
  int budget_ = 0;
  int depth_ = 0;
  int dying_ = 0;
};

} // namespace KernelRandom
