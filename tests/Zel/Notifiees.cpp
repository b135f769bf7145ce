#include "support/Recorder.h"
#include "support/Slot.h"

#include <Zel/NotificationException>
#include <Zel/StreamAdapter>
#include <Zel/Trace>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

namespace {

using Maintenance::Profile::DefaultProfile;
using Maintenance::Profile::defaultProfileFactory;
using Support::listen;
using Support::Log;
using Support::Recorder;
using Zel::Ptr;
using Base = Zel::PtrInterface::NotifieeConst;
using Flags = Base::Zel_BitSet;

struct Notifiees : testing::Test {
  const Ptr<DefaultProfile> profile = defaultProfileFactory("default");
  Log log;

  Log heard() {
    log.clear();
    profile->profileNameIs(profile->profileName() + "x");
    return log;
  }
};

TEST_F(Notifiees, AreBornActiveUnregisteredAndMarkedAsTyped) {
  const auto notifiee = Zel::makeObject<Recorder>("a", log);
  EXPECT_EQ(notifiee->referenceWord(), 0x20000001U);
  EXPECT_EQ(notifiee->references(), 1U);
  EXPECT_EQ(notifiee->zel_bitSet(), Flags(0x4000000));
  EXPECT_FALSE(notifiee->isRegisteredNotifiee());
  EXPECT_FALSE(notifiee->isWeakReference());
  EXPECT_FALSE(notifiee->notifier());
  EXPECT_EQ(notifiee->pendingAttribute(), 0);
  EXPECT_EQ(notifiee->name(), Zel::Name());
}

TEST_F(Notifiees, StandInTheListWithANotifierAndRegistrationInEitherOrder) {
  const auto first = Zel::makeObject<Recorder>("a", log);
  first->notifierIs(profile);
  EXPECT_EQ(heard(), Log{});
  first->isRegisteredNotifieeIs(true);
  EXPECT_EQ(heard(), (Log{"a"}));
  first->notifierIs(nullptr);
  EXPECT_EQ(heard(), Log{});
  first->notifierIs(profile);
  EXPECT_EQ(heard(), (Log{"a"}));
  first->isRegisteredNotifieeIs(false);
  EXPECT_EQ(heard(), Log{});
  EXPECT_EQ(first->name(), Zel::Name("default"));
}

TEST_F(Notifiees, CountListVersionsForEachJoinAndLeave) {
  auto& list = profile->zelNotifieeList();
  EXPECT_EQ(list.version(), 0U);
  auto first = listen(profile, "a", log);
  EXPECT_EQ(list.version(), 1U);
  EXPECT_EQ(list.count(), 1U);
  first->isRegisteredNotifieeIs(true);
  first->notifierIs(profile);
  EXPECT_EQ(list.version(), 1U);
  first = nullptr;
  EXPECT_EQ(list.version(), 2U);
  EXPECT_EQ(list.count(), 0U);
  EXPECT_EQ(list.head(), nullptr);
  EXPECT_EQ(list.tail(), nullptr);
}

TEST_F(Notifiees, HoldTheirNotifierUnlessTheyAreWeak) {
  EXPECT_EQ(profile->references(), 1U);
  const auto notifiee = listen(profile, "a", log);
  EXPECT_EQ(profile->references(), 2U);
  notifiee->isWeakReferenceIs(true);
  EXPECT_EQ(profile->references(), 1U);
  const auto other = defaultProfileFactory("other");
  notifiee->notifierIs(other);
  EXPECT_EQ(profile->references(), 1U);
  EXPECT_EQ(other->references(), 1U);
  notifiee->isWeakReferenceIs(false);
  EXPECT_EQ(other->references(), 2U);
  notifiee->notifierIs(nullptr);
  EXPECT_EQ(other->references(), 1U);
}

TEST_F(Notifiees, AWeakOneThatDiesLeavesTheCountAlone) {
  {
    const auto notifiee = listen(profile, "a", log);
    notifiee->isWeakReferenceIs(true);
  }
  EXPECT_EQ(profile->references(), 1U);
  EXPECT_EQ(profile->zelNotifieeList().count(), 0U);
}

TEST_F(Notifiees, AWeakOneIsLeftWithoutANotifierThatDies) {
  const auto notifiee = Zel::makeObject<Recorder>("a", log);
  {
    const auto dying = defaultProfileFactory("dying");
    notifiee->isRegisteredNotifieeIs(true);
    notifiee->notifierIs(dying);
    notifiee->isWeakReferenceIs(true);
  }
  EXPECT_EQ(log, (Log{"a zero"}));
  EXPECT_FALSE(notifiee->notifier());
  notifiee->notifierIs(profile);
  EXPECT_EQ(heard(), (Log{"a"}));
}

TEST_F(Notifiees, OffAndOnMovesFromTheMiddleToTheTail) {
  const auto a = listen(profile, "a", log);
  const auto b = listen(profile, "b", log);
  const auto c = listen(profile, "c", log);
  b->hasNotificationActiveIs(false);
  EXPECT_TRUE(b->zel_bitSet().has(Flags::registeredBit));
  EXPECT_EQ(heard(), (Log{"a", "c"}));
  b->hasNotificationActiveIs(false);
  b->hasNotificationActiveIs(true);
  EXPECT_EQ(heard(), (Log{"a", "c", "b"}));
}

TEST_F(Notifiees, OffAndOnMovesAStreamAdapterToTheHead) {
  const auto m = Support::mirror(profile, "m", log);
  const auto n = Support::mirror(profile, "n", log);
  const auto a = listen(profile, "a", log);
  EXPECT_EQ(heard(), (Log{"n", "m", "a"}));
  m->hasNotificationActiveIs(false);
  m->hasNotificationActiveIs(true);
  EXPECT_EQ(heard(), (Log{"m", "n", "a"}));
}

TEST_F(Notifiees, OffAndOnLeavesAnUnregisteredOneUnregistered) {
  const auto notifiee = Zel::makeObject<Recorder>("a", log);
  notifiee->notifierIs(profile);
  notifiee->hasNotificationActiveIs(false);
  EXPECT_FALSE(notifiee->zel_bitSet().has(Flags::registeredBit));
  notifiee->hasNotificationActiveIs(true);
  EXPECT_FALSE(notifiee->isRegisteredNotifiee());
  EXPECT_EQ(heard(), Log{});
}

TEST_F(Notifiees, ANotifierOfAnotherTypeCountsAsNull) {
  const auto notifiee = listen(profile, "a", log);
  notifiee->notifierIs(Maintenance::Unit::statusFactory("unit"));
  EXPECT_FALSE(notifiee->notifier());
  EXPECT_EQ(profile->references(), 1U);
  EXPECT_EQ(heard(), Log{});
}

TEST_F(Notifiees, OneMarkedForDeletionCanStillBeTakenOut) {
  const auto notifiee = listen(profile, "a", log);
  notifiee->zelMarkedForDeletionIs(true);
  notifiee->isRegisteredNotifieeIs(false);
  EXPECT_EQ(profile->zelNotifieeList().count(), 0U);
}

TEST_F(Notifiees, ReactForThemselves) {
  const auto notifiee = Zel::makeObject<Recorder>("a", log);
  EXPECT_EQ(notifiee->zelReactor(), notifiee);
  EXPECT_EQ(notifiee->zelRawReactor(), notifiee.ptr());
  EXPECT_FALSE(notifiee->isStreamAdapter());
  EXPECT_TRUE(Zel::makeObject<Support::Mirror>()->isStreamAdapter());
}

TEST_F(Notifiees, DeferNothing) {
  const auto notifiee = Zel::makeObject<Recorder>("a", log);
  unsigned char pending = 3;
  EXPECT_FALSE(notifiee->zelOnAttribute(259, &pending));
  EXPECT_EQ(pending, 3);
  EXPECT_EQ(notifiee->actsm(), nullptr);
}

TEST(NotifieeFlags, PassOnOnlyTheBitsOfTheMask) {
  static_assert(Flags::notificationBitMask() == 0xfa8fffff);
  Flags flags(0x05700000);
  flags.notificationFlagsIs(Flags(0xffffffff));
  EXPECT_EQ(flags.word(), 0xffffffffU);
  flags = Flags(0xffffffff);
  flags.notificationFlagsIs(Flags(0));
  EXPECT_EQ(flags.word(), 0x05700000U);
  EXPECT_TRUE(flags != Flags(0));
}

/// The handler is a function of the process: what the tests' one is told, and what it does besides.
struct NotificationExceptions : testing::Test {
  struct Thrower : DefaultProfile::Notifiee {
    void onProfileName() override { throw std::runtime_error("refused"); }
    void onZeroReferences() override { throw 7; }
  };
  struct Told {
    const Base* notifiee;
    Zel::AttributeId id;
    std::string what;
    bool operator==(const Told&) const = default;
  };

  NotificationExceptions() {
    told.clear();
    rethrows = false;
    thrower->isRegisteredNotifieeIs(true);
    thrower->notifierIs(profile);
  }
  ~NotificationExceptions() override { Zel::notificationExceptionHandlerIs(nullptr); }

  static void handle(Base& notifiee, Zel::AttributeId id, const std::exception_ptr& failure) {
    try {
      std::rethrow_exception(failure);
    } catch (const std::exception& known) {
      told.push_back({&notifiee, id, known.what()});
    } catch (int number) {
      told.push_back({&notifiee, id, std::to_string(number)});
    }
    if (rethrows) {
      std::rethrow_exception(failure);
    }
  }

  static std::vector<Told> told;
  static bool rethrows;
  Ptr<DefaultProfile> profile = defaultProfileFactory("default");
  const Ptr<Thrower> thrower = Zel::makeObject<Thrower>();
  Log log;
};

std::vector<NotificationExceptions::Told> NotificationExceptions::told;
bool NotificationExceptions::rethrows = false;

TEST_F(NotificationExceptions, AreToldToTheHandlerThatTheProgramSets) {
  EXPECT_EQ(Zel::notificationExceptionHandlerIs(handle), nullptr);
  const auto behind = listen(profile, "behind", log);
  profile->profileNameIs("x");
  EXPECT_EQ(told, (std::vector<Told>{{thrower.ptr(), 259, "refused"}}));
  EXPECT_EQ(log, Log{"behind"});
  EXPECT_EQ(Zel::notificationExceptionHandler(), &handle);
  EXPECT_EQ(Zel::notificationExceptionHandlerIs(nullptr), &handle);
}

TEST_F(NotificationExceptions, WithoutAHandlerAreHeardOfByNobody) {
  std::ostringstream out;
  Zel::coverageStream_ = &out;
  profile->profileNameIs("x");
  Zel::coverageStream_ = nullptr;
  EXPECT_EQ(out.str(), "");
  EXPECT_TRUE(told.empty());
  EXPECT_EQ(profile->profileName(), "x");
}

TEST_F(NotificationExceptions, NeedNotBeOfAnyClass) {
  Zel::notificationExceptionHandlerIs(handle);
  thrower->isWeakReferenceIs(true);
  profile = nullptr;
  EXPECT_EQ(told, (std::vector<Told>{{thrower.ptr(), 5, "7"}}));
}

TEST_F(NotificationExceptions, LeaveTheMutatorIfTheHandlerThrows) {
  Zel::notificationExceptionHandlerIs(handle);
  rethrows = true;
  const auto behind = listen(profile, "behind", log);
  EXPECT_THROW(profile->profileNameIs("x"), std::runtime_error);
  EXPECT_EQ(profile->profileName(), "x");
  EXPECT_EQ(log, Log{});
}

TEST_F(NotificationExceptions, OfANotifieeThatSeesToThemItselfAreItsOwn) {
  Zel::notificationExceptionHandlerIs(handle);
  thrower->notifierIs(nullptr);
  const auto own = listen(profile, "own", log);
  own->onCall = [] { throw std::runtime_error("own"); };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"own", "own exception 259"}));
  EXPECT_TRUE(told.empty());
}

TEST_F(NotificationExceptions, ToldWithoutOneAreNone) {
  Zel::notificationExceptionHandlerIs(handle);
  thrower->onNotificationException(259);
  EXPECT_TRUE(told.empty());
}

// What the list knows of weak references costs nobody a word.
static_assert(sizeof(Base) == 48 && sizeof(Zel::Entity) == 48);
static_assert(sizeof(Zel::ListRaw<DefaultProfile::NotifieeConst>) == 32);

TEST(NotifieeSlots, StandInTheirOrder) {
  using Support::slotOf;
  EXPECT_EQ(slotOf(&Base::zelReactor), 7);
  EXPECT_EQ(slotOf(&Base::zelRawReactor), 8);
  EXPECT_EQ(slotOf(&Base::isStreamAdapter), 9);
  EXPECT_EQ(slotOf(&Base::isRegisteredNotifieeIs), 10);
  EXPECT_EQ(slotOf(&Base::zel_bitSetIs), 11);
  EXPECT_EQ(slotOf(&Base::name), 12);
  EXPECT_EQ(slotOf(&Base::notifierIs), 13);
  EXPECT_EQ(slotOf(&Base::handleNotification), 14);
  EXPECT_EQ(slotOf(&Base::handleDefault), 15);
  EXPECT_EQ(slotOf(&Base::onAttribute), 16);
  EXPECT_EQ(slotOf(&Base::onNotification), 17);
  EXPECT_EQ(slotOf(&Base::onCollectionNotification), 18);
  EXPECT_EQ(slotOf<void (Base::*)()>(&Base::onNotificationException), 19);
  EXPECT_EQ(slotOf<void (Base::*)(Zel::AttributeId)>(&Base::onNotificationException), 20);
  EXPECT_EQ(slotOf<void (Base::*)(Zel::AttributeId)>(&Base::handleNotificationException), 21);
  EXPECT_EQ(slotOf<void (Base::*)()>(&Base::handleNotificationException), 22);
  EXPECT_EQ(slotOf(&Base::onZeroReferences), 23);
  EXPECT_EQ(slotOf(&Base::activityPtr), 24);
  EXPECT_EQ(slotOf<Zel::ActivitySm* (Base::*)()>(&Base::zelFwkActivity), 25);
  EXPECT_EQ(slotOf<const Zel::ActivitySm* (Base::*)() const>(&Base::zelFwkActivity), 26);
  EXPECT_EQ(slotOf(&Base::actsm), 27);
  EXPECT_EQ(slotOf(&Zel::Entity::NotifieeConst::onParent), 28);
  EXPECT_EQ(slotOf(&Zel::Entity::NotifieeConst::onVersion), 29);
  EXPECT_EQ(slotOf(&DefaultProfile::NotifieeConst::onProfileName), 30);
}

TEST(BareNotifiees, WhatNobodyOverridesDoesNothing) {
  struct Bare : Zel::PtrInterface::NotifieeConst {};
  const auto bare = Zel::makeObject<Bare>();
  const auto flags = bare->zel_bitSet().word();
  bare->handleDefault(nullptr, 1, true);
  bare->onAttribute(1);
  bare->onNotification();
  bare->onCollectionNotification("key");
  bare->onNotificationException();
  bare->handleNotificationException(1);
  bare->handleNotificationException();
  EXPECT_FALSE(bare->activityPtr());
  EXPECT_EQ(bare->zelFwkActivity(), nullptr);
  EXPECT_EQ(std::as_const(*bare).zelFwkActivity(), nullptr);
  EXPECT_EQ(bare->zel_bitSet().word(), flags);
  bare->zel_bitSetIs(Zel::PtrInterface::NotifieeConst::Zel_BitSet(flags | 1U << 10));
  EXPECT_EQ(bare->zel_bitSet().word(), flags | 1U << 10);
}

} // namespace
