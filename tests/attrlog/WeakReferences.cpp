#include "Ends.h"

#include <attrlog/Unit.h>
#include <generic/Client.h>
#include <model/Mapping.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <vector>

// Weak, registered, active: three states that do not touch one another. Every order in which they
// can change, with the notifier set to others and dying meanwhile, beside a model that knows the
// rule and nothing else.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;
using Base = Zel::PtrInterface::NotifieeConst;

enum Step : unsigned {
  weak,
  strong,
  off,
  on,
  toFirst,
  toSecond,
  toNone,
  firstGoes, // the last handle on it but the notifiee's own
  zombie,
  alive,
  registered,
  unregistered,
};
constexpr std::array<const char*, 12> stepNames = {
    "weak",   "strong",    "off",    "on",    "toFirst",    "toSecond",
    "toNone", "firstGoes", "zombie", "alive", "registered", "unregistered"};

/// One of the three kinds, and what of it differs.
struct Kind {
  Ptr<Base> notifiee;
  bool isReactor; ///< a notifiee of its own stands in the list for it, and is registered always
  bool isAdapter; ///< goes to the head
  std::function<void(bool)> zombieIs; ///< null: has no such state
  /// Whether what stands in a list stands for this one.
  bool isServedBy(const Base* member) const {
    return member == notifiee.ptr() ||
           (member != nullptr && member->zelRawReactor() == notifiee.ptr());
  }
};

/// What the rule says. Places are the numbers of the entities, -1 for none.
struct Model {
  explicit Model(bool isReactor) : isReactor_(isReactor), isRegistered(isReactor) {}

  bool isListed() const { return place >= 0 && isRegistered; }
  bool isHeld(int number) const {
    return handles.at(static_cast<unsigned>(number)) || (place == number && !isWeak);
  }

  void activeIs(bool value) {
    if (value != isActive) {
      isActive = value;
      standingIs(value);
    }
  }

  /// Of what stands in the list; whether that changes it.
  bool standingIs(bool value) {
    if (value == isStanding) {
      return false;
    }
    isStanding = value;
    if (!value) {
      wasRegistered = isRegistered;
      isRegistered = false;
    } else if (wasRegistered) {
      isRegistered = true;
    }
    return true;
  }

  void zombieIs(bool value) {
    if (value == isZombie) {
      return;
    }
    if (place >= 0 && standingIs(!value) && value) {
      isActive = false;
    }
    isZombie = value;
    if (!value) {
      activeIs(isStanding);
    }
  }

  /// An entity that nobody holds tells who hears it of its end, and those who refer to it forget.
  void endsTell() {
    for (int number = 0; number < 2; ++number) {
      if (isAlive.at(static_cast<unsigned>(number)) && !isHeld(number)) {
        isAlive.at(static_cast<unsigned>(number)) = false;
        if (place == number) {
          if (isReactor_ && isListed() && standingIs(false) && !isZombie) {
            isActive = false;
          }
          place = -1;
        }
      }
    }
  }

  const bool isReactor_;
  bool isWeak = false;
  bool isActive = true;
  bool isStanding = true;
  bool isRegistered;
  bool wasRegistered = false;
  bool isZombie = false;
  int place = 0;
  std::array<bool, 2> handles = {true, true};
  std::array<bool, 2> isAlive = {true, true};
};

/// Two entities, each with a listener that holds no count on it, and a notifiee of the first.
class World {
public:
  explicit World(const std::function<Kind(const Ptr<Status>&)>& make)
      : kind_(make(entities_[0])), model_(kind_.isReactor) {
    for (unsigned number = 0; number < 2; ++number) {
      ears_[number]->isRegisteredNotifieeIs(true);
      ears_[number]->notifierIs(entities_[number]);
      ears_[number]->isWeakReferenceIs(true);
    }
    kind_.notifiee->notifierIs(nullptr); // so that it has come behind the listener
    kind_.notifiee->notifierIs(entities_[0]);
    check("made");
  }

  void step(Step step) {
    switch (step) {
    case weak:
    case strong:
      kind_.notifiee->isWeakReferenceIs(step == weak);
      model_.isWeak = step == weak;
      break;
    case off:
    case on:
      kind_.notifiee->hasNotificationActiveIs(step == on);
      model_.activeIs(step == on);
      break;
    case toFirst:
    case toSecond:
      moveTo(step == toFirst ? 0 : 1);
      break;
    case toNone:
      kind_.notifiee->notifierIs(nullptr);
      model_.place = -1;
      break;
    case firstGoes:
      entities_[0] = nullptr;
      model_.handles[0] = false;
      break;
    case zombie:
    case alive:
      kind_.zombieIs(step == zombie);
      model_.zombieIs(step == zombie);
      break;
    case registered:
    case unregistered:
      kind_.notifiee->isRegisteredNotifieeIs(step == registered);
      model_.isRegistered = step == registered;
      break;
    }
    model_.endsTell();
    check(stepNames[step]);
  }

  /// The notifiee goes before its notifier.
  void notifieeGoes() {
    kind_ = {};
    model_.isWeak = true;
    model_.endsTell();
    for (unsigned number = 0; number < 2; ++number) {
      if (model_.isAlive[number]) {
        ASSERT_EQ(entities_[number]->references(), 1U);
        ASSERT_EQ(entities_[number]->zelNotifieeList().count(), 1U);
        ASSERT_EQ(entities_[number]->zelNotifieeList().tail(), ears_[number].ptr());
      }
    }
  }

private:
  void moveTo(int number) {
    const Ptr<Status> to = entities_.at(static_cast<unsigned>(number));
    kind_.notifiee->notifierIs(to);
    model_.place = to ? number : -1;
  }

  void check(const char* step) {
    ASSERT_EQ(kind_.notifiee->isWeakReference(), model_.isWeak) << step;
    ASSERT_EQ(kind_.notifiee->hasNotificationActive(), model_.isActive) << step;
    if (!kind_.isReactor) {
      ASSERT_EQ(kind_.notifiee->isRegisteredNotifiee(), model_.isRegistered) << step;
    }
    ASSERT_EQ(static_cast<bool>(kind_.notifiee->notifier()), model_.place >= 0) << step;
    for (int number = 0; number < 2; ++number) {
      const auto at = static_cast<unsigned>(number);
      const Ptr<const Status> entity = ears_[at]->notifier();
      ASSERT_EQ(static_cast<bool>(entity), model_.isAlive[at]) << step;
      if (!entity) {
        continue;
      }
      const bool isHere = model_.place == number;
      ASSERT_EQ(kind_.notifiee->notifier() == entity, isHere) << step;
      const unsigned counts = (model_.handles[at] ? 1U : 0U) + (isHere && !model_.isWeak ? 1U : 0U);
      ASSERT_EQ(entity->references(), counts + 1) << step; // and the one here
      auto& list = entity->zelNotifieeList();
      const bool isListed = isHere && model_.isListed();
      ASSERT_EQ(list.count(), isListed ? 2U : 1U) << step;
      if (isListed) {
        ASSERT_TRUE(kind_.isServedBy(kind_.isAdapter ? list.head() : list.tail())) << step;
        ASSERT_EQ(kind_.isAdapter ? list.tail() : list.head(), ears_[at].ptr()) << step;
      } else {
        ASSERT_EQ(list.head(), ears_[at].ptr()) << step;
        ASSERT_EQ(list.tail(), ears_[at].ptr()) << step;
      }
      ASSERT_EQ(list.tail()->notifierLink(), nullptr) << step;
    }
  }

  std::array<Ptr<Status>, 2> entities_ = {statusFactory("first"), statusFactory("second")};
  std::array<Ptr<Status::Notifiee>, 2> ears_ = {Zel::makeObject<Status::Notifiee>(),
                                                Zel::makeObject<Status::Notifiee>()};
  Kind kind_;
  Model model_;
};

/// Runs every order of `length` of the steps, and ends each in both ways.
void allOrders(const std::function<Kind(const Ptr<Status>&)>& make, const std::vector<Step>& steps,
               unsigned length) {
  std::vector<unsigned> order(length, 0);
  for (std::size_t runs = 0;; ++runs) {
    {
      World world(make);
      for (const unsigned step : order) {
        world.step(steps[step]);
      }
      if (runs % 2 == 0 && !testing::Test::HasFatalFailure()) {
        world.notifieeGoes();
      }
    }
    if (testing::Test::HasFatalFailure()) {
      std::string names;
      for (const unsigned step : order) {
        names += std::string(" ") + stepNames[steps[step]];
      }
      FAIL() << "in the order" << names;
    }
    unsigned digit = 0;
    while (digit < length && ++order[digit] == steps.size()) {
      order[digit++] = 0;
    }
    if (digit == length) {
      return;
    }
  }
}

TEST(WeakReferences, OfPlainNotifieesKeepTheRuleInEveryOrder) {
  allOrders(
      [](const Ptr<Status>&) {
        return Kind{Zel::makeObject<Status::Notifiee>(), false, false, {}};
      },
      {weak, strong, off, on, toFirst, toSecond, toNone, firstGoes, registered, unregistered}, 5);
}

TEST(WeakReferences, OfGenericObjectsKeepTheRuleInEveryOrder) {
  allOrders(
      [](const Ptr<Status>& unit) {
        const Ptr<Zel::GenericIf> object = Zel::generic(unit);
        return Kind{object, true, false,
                    [object = object.ptr()](bool value) { object->zelDoZombieReactors(value); }};
      },
      {weak, strong, off, on, toFirst, toSecond, toNone, firstGoes, zombie, alive}, 5);
}

TEST(WeakReferences, OfStreamAdaptersKeepTheRuleInEveryOrder) {
  const Sender sender;
  allOrders(
      [&](const Ptr<Status>& unit) {
        const auto adapter = Zel::makeObject<Status::ZelNboAttrLogSa>(AnEnd::Flags(), unit, 1U,
                                                                      sender.out(), nullptr);
        adapter->hasNotificationActiveIs(true);
        return Kind{adapter, true, true,
                    [adapter = adapter.ptr()](bool value) { adapter->zelDoZombieReactors(value); }};
      },
      {weak, strong, off, on, toFirst, toSecond, toNone, firstGoes, zombie, alive}, 5);
}

struct Ear : Status::Notifiee {
  void onState() override {
    ++heard;
    if (const auto call = onCall) { // a copy: the call may replace it
      call();
    }
  }
  std::function<void()> onCall;
  int heard = 0;
};

Ptr<Ear> listen(const Ptr<Status>& unit) {
  auto ear = Zel::makeObject<Ear>();
  ear->isRegisteredNotifieeIs(true);
  ear->notifierIs(unit);
  return ear;
}

TEST(WeakReferences, ThatLeaveInANotificationLoopInWhichTheNotifierDiesReferToNone) {
  Ptr<Status> unit = statusFactory("unit");
  const Ptr<Ear> first = listen(unit);
  const Ptr<Ear> second = listen(unit);
  first->isWeakReferenceIs(true);
  second->isWeakReferenceIs(true);
  auto* const raw = unit.ptr();
  first->onCall = [&] {
    first->hasNotificationActiveIs(false);
    second->hasNotificationActiveIs(false);
    unit = nullptr;
    EXPECT_FALSE(first->notifier());
    EXPECT_FALSE(second->notifier());
  };
  raw->stateIs(active);
  EXPECT_EQ(first->heard, 1);
  EXPECT_EQ(second->heard, 1) << "of the snapshot";
}

TEST(WeakReferences, AnyNumberOfThemOutsideTheListLeavesItsOrderAlone) {
  Ptr<Status> unit = statusFactory("unit");
  std::vector<Ptr<Ear>> ears;
  for (int number = 0; number < 9; ++number) {
    ears.push_back(listen(unit));
    ears.back()->isWeakReferenceIs(true);
  }
  // Out of the head, the middle and the tail; back from the middle of those who are out.
  for (const unsigned number : {8U, 0U, 4U, 3U}) {
    ears[number]->hasNotificationActiveIs(false);
  }
  ears.push_back(listen(unit));
  ears.back()->isWeakReferenceIs(true);
  ears[4]->hasNotificationActiveIs(true);
  ears[0] = nullptr;
  std::vector<const Base*> members;
  for (auto* at = unit->zelNotifieeList().head(); at != nullptr; at = at->notifierLink()) {
    members.push_back(at);
  }
  EXPECT_EQ(members,
            (std::vector<const Base*>{ears[1].ptr(), ears[2].ptr(), ears[5].ptr(), ears[6].ptr(),
                                      ears[7].ptr(), ears[9].ptr(), ears[4].ptr()}));
  EXPECT_EQ(unit->zelNotifieeList().tail(), ears[4].ptr());
  EXPECT_EQ(unit->references(), 1U);
  unit->stateIs(active);
  EXPECT_EQ(ears[3]->heard, 0);
  EXPECT_EQ(ears[4]->heard, 1);
  for (const unsigned number : {1U, 2U, 5U, 6U, 7U, 9U, 4U}) {
    ears[number]->isRegisteredNotifieeIs(false);
  }
  EXPECT_EQ(unit->zelNotifieeList().head(), nullptr);
  EXPECT_EQ(unit->zelNotifieeList().tail(), nullptr);
  ears[6]->isRegisteredNotifieeIs(true);
  EXPECT_EQ(unit->zelNotifieeList().head(), ears[6].ptr());
  EXPECT_EQ(unit->zelNotifieeList().tail(), ears[6].ptr());
  unit = nullptr;
  for (const Ptr<Ear>& ear : ears) {
    EXPECT_FALSE(ear && ear->notifier());
  }
}

TEST(WeakReferences, OfObjectsThatAreNoEntitiesKeepTheRuleToo) {
  using Maintenance::ProfileSelection;
  auto selection = Zel::makeObject<ProfileSelection>();
  const auto ear = Zel::makeObject<ProfileSelection::Notifiee>();
  ear->notifierIs(selection);
  ear->isWeakReferenceIs(true);
  EXPECT_EQ(selection->references(), 1U);
  EXPECT_TRUE(ear->notifier());
  selection = nullptr;
  EXPECT_FALSE(ear->notifier());
}

TEST(WeakReferences, AnEndThatSomebodyPreventsLeavesThemAsTheyAre) {
  struct Keeper : Status::Notifiee {
    void onZeroReferences() override { kept = notifier(); }
    Ptr<Status> kept;
  };
  const auto keeper = Zel::makeObject<Keeper>();
  keeper->isRegisteredNotifieeIs(true);
  Ptr<Status> unit = statusFactory("unit");
  const Ptr<Zel::GenericIf> object = Zel::generic(unit);
  keeper->notifierIs(unit);
  keeper->isWeakReferenceIs(true);
  object->hasNotificationActiveIs(false);
  unit = nullptr;
  object->isWeakReferenceIs(true); // gives up the last count
  ASSERT_TRUE(keeper->kept);
  EXPECT_EQ(object->notifier(), keeper->kept);
  EXPECT_EQ(keeper->kept->references(), 1U);
  keeper->kept = nullptr;
  ASSERT_TRUE(keeper->kept) << "again";
  keeper->isRegisteredNotifieeIs(false);
  keeper->kept = nullptr;
  EXPECT_FALSE(object->notifier());
  EXPECT_FALSE(keeper->notifier());
}

// What a derived class holds goes before the notifiee leaves its notifier.
TEST(WeakReferences, ThatHoldTheLastHandleOnTheirNotifierTakeItAlong) {
  struct Owner : Status::Notifiee {
    Ptr<Status> own = statusFactory("unit");
  };
  for (const bool isListed : {true, false}) {
    auto owner = Zel::makeObject<Owner>();
    const auto other = Zel::makeObject<Status::Notifiee>();
    for (Status::Notifiee* const each :
         {static_cast<Status::Notifiee*>(owner.ptr()), other.ptr()}) {
      each->isRegisteredNotifieeIs(isListed);
      each->notifierIs(owner->own);
      each->isWeakReferenceIs(true);
    }
    const Ptr<Zel::GenericIf> object = Zel::generic(owner->own);
    object->isWeakReferenceIs(true);
    object->hasNotificationActiveIs(isListed);
    EXPECT_EQ(owner->own->references(), 1U);
    owner = nullptr;
    EXPECT_FALSE(other->notifier()) << isListed;
    EXPECT_FALSE(object->notifier()) << isListed;
  }
}

} // namespace
