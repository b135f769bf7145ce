#include "ReactorFixture.h"

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Unit::Status;

const Group::GroupKey peers(Group::groupTypeBgp, "peers");

TEST_F(Reactor, KeepsItsEntityAlive) {
  Ptr<Status> other = Unit::statusFactory("other");
  const Handle keeper = Zel::generic(other);
  other = nullptr;
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(keeper, 130), "other");
}

TEST_F(Reactor, LeavesTheListWhenItDies) {
  const Ptr<Adapter> made = adapter();
  object = nullptr;
  EXPECT_EQ(listed(), 0U);
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(made->zelReactor(), nullptr);
  EXPECT_EQ(made->zelRawReactor(), nullptr);
  EXPECT_EQ(made->notifier(), nullptr);
  EXPECT_EQ(made->references(), 1U);
}

TEST_F(Reactor, ThatIsGoneHearsNothingOfWhatReachesItsAdapter) {
  const Ptr<Adapter> made = adapter();
  object = nullptr;
  made->onState();
  made->onGroup(peers);
  made->onGroup();
  made->onNotificationException(262);
  made->onZeroReferences();
  made->hasNotificationActiveIs(true);
  EXPECT_EQ(log, Log());
}

TEST_F(Reactor, MayLetGoOfItselfInACallback) {
  listener.onCall = [&](Zel::GenericIfEntity&) { object = nullptr; };
  unit->stateIs(Unit::active);
  unit->stateIs(Unit::init);
  EXPECT_EQ(log, Log{"262"});
  EXPECT_EQ(listed(), 0U);
}

TEST_F(Reactor, MayLetGoOfOthersInACallback) {
  Listener second(log, "second ");
  Handle other = told(Zel::generic(unit), second);
  listener.onCall = [&](Zel::GenericIfEntity&) { other = nullptr; };
  unit->stateIs(Unit::active);
  EXPECT_EQ(log, Log{"262"});
}

TEST_F(Reactor, MayBeMadeInACallbackAndHearsFromTheNextChangeOn) {
  Listener second(log, "second ");
  Handle other;
  listener.onCall = [&](Zel::GenericIfEntity&) { other = told(Zel::generic(unit), second); };
  unit->stateIs(Unit::active);
  listener.onCall = nullptr;
  unit->stateIs(Unit::init);
  EXPECT_EQ(log, (Log{"262", "262", "second 262"}));
}

TEST_F(Reactor, MovesToAnotherEntity) {
  const auto other = Unit::statusFactory("other");
  object->notifierIs(other);
  EXPECT_EQ(listed(), 0U);
  EXPECT_EQ(other->zelNotifieeList().count(), 1U);
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(other->references(), 2U);
  EXPECT_FALSE(object->isRegisteredNotifiee());
  unit->stateIs(Unit::active);
  EXPECT_EQ(log, Log());
  other->stateIs(Unit::active);
  EXPECT_EQ(log, Log{"262"});
  object->notifierIs(nullptr);
  EXPECT_EQ(other->zelNotifieeList().count(), 0U);
  EXPECT_EQ(other->references(), 1U);
}

TEST_F(Reactor, StaysWhereItIsWhenToldSo) {
  const unsigned version = unit->zelNotifieeList().version();
  object->notifierIs(unit);
  EXPECT_EQ(unit->zelNotifieeList().version(), version);
  EXPECT_EQ(unit->references(), 2U);
}

TEST_F(Reactor, TakesAnObjectOfAnotherTypeForNone) {
  const auto other = Unit::statusDirFactory("units");
  object->notifierIs(other);
  EXPECT_EQ(object->notifier(), nullptr);
  EXPECT_EQ(other->references(), 1U);
  EXPECT_EQ(messageOf<Zel::InternalException>([&] { Zel::readAttribute(object, 262); }),
            "generic object of no object");
}

TEST_F(Reactor, LeavesTheListWhileNotificationIsOffAndReturnsAtItsTail) {
  Listener second(log, "second ");
  const Handle other = told(Zel::generic(unit), second);
  const Ptr<Adapter> made = adapter();
  object->hasNotificationActiveIs(false);
  EXPECT_FALSE(object->hasNotificationActive());
  EXPECT_FALSE(made->hasNotificationActive());
  EXPECT_EQ(listed(), 1U);
  unit->stateIs(Unit::active);
  object->hasNotificationActiveIs(true);
  EXPECT_TRUE(made->hasNotificationActive());
  EXPECT_TRUE(made->isRegisteredNotifiee());
  unit->stateIs(Unit::init);
  EXPECT_EQ(log, (Log{"second 262", "second 262", "262"})) << "nothing is replayed";
}

TEST_F(Reactor, IsSwitchedByItsAdapterToo) {
  const Ptr<Adapter> made = adapter();
  made->hasNotificationActiveIs(false);
  EXPECT_FALSE(object->hasNotificationActive());
  EXPECT_EQ(listed(), 0U);
  made->hasNotificationActiveIs(true);
  EXPECT_TRUE(object->hasNotificationActive());
  EXPECT_EQ(listed(), 1U);
}

TEST_F(Reactor, IsNotSwitchedByAnAdapterMarkedForDeletion) {
  const Ptr<Adapter> made = adapter();
  made->zelMarkedForDeletionIs(true);
  made->hasNotificationActiveIs(false);
  EXPECT_TRUE(object->hasNotificationActive());
}

TEST_F(Reactor, BecomesAZombieWithItsAdapter) {
  const Ptr<Adapter> made = adapter();
  object->zelDoZombieReactors(true);
  EXPECT_TRUE(object->zelMarkedForDeletion());
  EXPECT_TRUE(made->zelMarkedForDeletion());
  EXPECT_FALSE(made->hasNotificationActive());
  EXPECT_EQ(listed(), 0U);
  unit->stateIs(Unit::active);
  EXPECT_EQ(log, Log());
  object->zelDoZombieReactors(true);
  EXPECT_EQ(unit->references(), 2U) << "alive all the same";
}

TEST_F(Reactor, RisesAgain) {
  object->zelDoZombieReactors(true);
  object->zelDoZombieReactors(false);
  EXPECT_FALSE(object->zelMarkedForDeletion());
  EXPECT_EQ(listed(), 1U);
  EXPECT_TRUE(adapter()->hasNotificationActive());
  unit->stateIs(Unit::active);
  EXPECT_EQ(log, Log{"262"});
}

TEST_F(Reactor, DiesAsAZombieInPeace) {
  object->zelDoZombieReactors(true);
  object = nullptr;
  EXPECT_EQ(listed(), 0U);
  EXPECT_EQ(unit->references(), 1U);
}

TEST_F(Reactor, LeavesTheListWhenTheEntityTellsOfItsEnd) {
  unit->zeroReferencesIs(true);
  EXPECT_EQ(listed(), 0U);
  EXPECT_FALSE(object->hasNotificationActive());
  EXPECT_EQ(object->notifier(), unit) << "which it still holds";
}

TEST_F(Reactor, ThatIsWeakForgetsAnEntityThatEnds) {
  Ptr<Status> other = Unit::statusFactory("other");
  const Handle weak = told(Zel::generic(other), listener);
  weak->isWeakReferenceIs(true);
  EXPECT_EQ(other->references(), 1U);
  other->stateIs(Unit::active);
  EXPECT_EQ(log, Log{"262"});
  other = nullptr;
  EXPECT_EQ(weak->notifier(), nullptr);
  EXPECT_EQ(messageOf<Zel::InternalException>([&] { Zel::readAttribute(weak, 262); }),
            "generic object of no object");
}

TEST_F(Reactor, ThatIsWeakMovesWithoutCounts) {
  const auto other = Unit::statusFactory("other");
  object->isWeakReferenceIs(true);
  EXPECT_EQ(unit->references(), 1U);
  object->notifierIs(other);
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(other->references(), 1U);
  object->isWeakReferenceIs(false);
  EXPECT_EQ(other->references(), 2U);
  object = nullptr;
  EXPECT_EQ(other->references(), 1U);
}

TEST_F(Reactor, ThatIsWeakDiesWithoutACount) {
  object->isWeakReferenceIs(true);
  object = nullptr;
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(listed(), 0U);
}

TEST_F(Reactor, ThatTurnsWeakWithTheLastCountLetsTheEntityGo) {
  Handle last = Zel::generic(Unit::statusFactory("other"));
  last->isWeakReferenceIs(true);
  EXPECT_EQ(last->notifier(), nullptr);
}

} // namespace
