#pragma once

#include "Random.h"

#include <ostream>
#include <tuple>
#include <vector>

/// What the library and the reference model of the notification loop have in common: the script of
/// actions, drawn from a seed as they are needed, and the record of what came of them.
///
/// Both draw one word for each action, each callback and each exception told, so they stay in step
/// exactly as long as they behave alike; the records differ from the first difference on.
namespace KernelRandom {

inline constexpr int loopSlots = 24;   ///< notifiees at a time
inline constexpr int loopEntities = 3; ///< entities at a time: even numbers are units
inline constexpr int loopDepth = 5;    ///< callbacks within callbacks that still act
inline constexpr int loopActions = 40; ///< actions for each step from outside

inline constexpr int zeroReferences = 5;

/// One thing to do. An action that is not possible at its time does nothing.
struct Action {
  enum Kind {
    stateIs,
    genIdIs,
    genIdInc,
    profileNameIs,
    groupIs,
    groupDel,
    groupNotify,
    read,
    notifieeMake,
    notifieeHold,
    notifieeDrop,
    registeredIs,
    notifierIs,
    activeIs,
    weakIs,
    frontIs,
    entityMake,
    entityHold,
    entityHoldOfNotifiee,
    entityDrop,
    kinds
  };

  explicit Action(std::uint64_t word)
      : kind(drawn(static_cast<int>(word % 100))),
        notifiee(static_cast<int>((word >> 8) % loopSlots)),
        entity(static_cast<int>((word >> 16) % loopEntities)),
        value(static_cast<int>((word >> 24) % 4)), flag((word >> 32) % 3 != 0),
        pinned((word >> 40) % 2 != 0), toEntity((word >> 48) % 6 != 0) {}

  const Kind kind;
  const int notifiee;
  const int entity;
  const int value;
  const bool flag;
  const bool pinned;   ///< the mutator's caller holds a handle on the entity
  const bool toEntity; ///< `notifierIs` gets the entity and not null

private:
  static Kind drawn(int percent) {
    static constexpr int shares[kinds] = {9,  6, 6, 9, 6, 4, 4, 3, // what is told, and the read
                                          18, 3, 4, 4, 5, 5, 3, 2, // notifiees
                                          5,  1, 1, 2};            // entities
    int kind = 0;
    while (percent >= shares[kind]) {
      percent -= shares[kind++];
    }
    return static_cast<Kind>(kind);
  }
};

/// How one callback behaves.
struct Reaction {
  explicit Reaction(std::uint64_t word)
      : actions(static_cast<int>(word % 4)), throws((word >> 8) % 5 == 0),
        thrown(static_cast<int>((word >> 16) % 3)) {}

  const int actions;
  const bool throws;
  const int thrown; ///< what is thrown: text failure, number, standard exception
};

struct Event {
  enum What { called, told, escaped, result, notifieeDied, entityDied };

  What what;
  int who;    ///< the notifiee or the entity
  int id;     ///< of the attribute; for a result the result
  int entity; ///< whose loop it is
  bool alive; ///< whether that entity still is; the rest is 0 if not
  unsigned version;
  unsigned reads;
  int value; ///< the attribute as read by the callback

  friend bool operator==(const Event&, const Event&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Event& e) {
    static constexpr const char* names[] = {"called", "told",          "escaped",
                                            "result", "notifiee died", "entity died"};
    return out << names[e.what] << " who " << e.who << " id " << e.id << " entity " << e.entity
               << (e.alive ? " version " : " dead ") << e.version << " reads " << e.reads
               << " value " << e.value;
  }
};

/// The state of one notifiee and one entity as far as it can be seen from outside.
struct NotifieeState {
  bool alive = false;
  unsigned references = 0;
  int notifier = -1;
  bool registered = false;
  bool active = false;
  bool weak = false;
  friend bool operator==(const NotifieeState&, const NotifieeState&) = default;
};

struct EntityState {
  bool alive = false;
  unsigned references = 0;
  unsigned version = 0;
  unsigned reads = 0;
  unsigned listVersion = 0;
  std::vector<int> list;
  friend bool operator==(const EntityState&, const EntityState&) = default;
};

} // namespace KernelRandom
