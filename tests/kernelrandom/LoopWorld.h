#pragma once

#include "LoopScript.h"

#include <attrlog/AdapterOf.h>
#include <model/Profile/DefaultProfile.h>
#include <model/Unit/Status.h>

#include <array>
#include <memory>

namespace KernelRandom {

/// The same script as `LoopModel`, run on the library.
class LoopWorld {
public:
  explicit LoopWorld(std::uint64_t seed);
  ~LoopWorld();
  LoopWorld(const LoopWorld&) = delete;
  LoopWorld& operator=(const LoopWorld&) = delete;

  void step();
  /// Drops all handles of the outside.
  void end();
  NotifieeState notifiee(int n) const;
  EntityState entity(int e) const;

  std::vector<Event> events;

private:
  struct StreamAdapterDouble : Zel::Entity::ZelNboAttrLogSa {
    StreamAdapterDouble()
        : ZelNboAttrLogSa(Zel::planOf<Maintenance::Profile::DefaultProfile>(), {}, 1, nullptr,
                          nullptr) {}
  };
  struct Unit;
  struct Profile;
  template <class Base>
  struct Actor;
  struct UnitActor;
  struct ProfileActor;

  using AnyNotifiee = Zel::PtrInterface::NotifieeConst;
  struct NotifieeSlot {
    AnyNotifiee* object = nullptr; ///< null from the start of its destructor on
    bool front = false;
    std::vector<Zel::Ptr<AnyNotifiee>> owners;
  };
  struct EntitySlot {
    Zel::Entity* object = nullptr;
    std::vector<Zel::Ptr<Zel::Entity>> owners;
  };

  static std::size_t at(int index) { return static_cast<std::size_t>(index); }
  static bool isUnit(int e) { return e % 2 == 0; }
  int numberOf(const Zel::PtrInterface* entity) const;
  Unit& unit(int e) const;
  Profile& profile(int e) const;
  int valueOf(int e, int id, int key) const;
  void result(int e, unsigned yielded);

  void callback(int n, int id, int key);
  void told(int n, int id);
  void react(const Reaction& reaction);
  void act(const Action& action);
  void mutate(const Action& action);
  void notifieeAction(const Action& action);
  void entityAction(const Action& action);

  Random random_;
  std::array<NotifieeSlot, loopSlots> notifiees_;
  std::array<EntitySlot, loopEntities> entities_;
  std::vector<int> loops_; ///< whose loops run, the innermost last
  int budget_ = 0;
  int depth_ = 0;
  int dying_ = 0;
  Zel::Ptr<AnyNotifiee> adapter_;
};

} // namespace KernelRandom
