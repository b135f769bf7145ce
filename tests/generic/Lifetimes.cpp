#include "GenericFixture.h"

#include <Zel/Activity>

#include "support/Slot.h"

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Unit::Status;

const GroupKey peers(Group::groupTypeBgp, "peers");
const GroupKey ports(Group::groupTypeInterface, "ports");

/// A generic object that does not keep its entity alive.
class Weak : public testing::Test {
protected:
  Ptr<Status> unit = Unit::statusFactory("System");
  const Ptr<Status> other = Unit::statusFactory("other");
  Log log;
  Listener listener{log};
  const Handle object = told(Zel::generic(unit), listener);

  void SetUp() override { object->isWeakReferenceIs(true); }
};

TEST_F(Weak, ForgetsItsEntityAtTheEnd) {
  EXPECT_EQ(unit->references(), 1U);
  unit = nullptr;
  EXPECT_EQ(object->notifier(), nullptr);
}

TEST_F(Weak, ReadsItsEntityWhileItIsSwitchedOff) {
  object->hasNotificationActiveIs(false);
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(object, 130), "System");
  object->notifierIs(other);
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(object, 130), "other");
}

TEST_F(Weak, HearsOfAnotherEntityAfterTheEndOfTheFirst) {
  unit = nullptr;
  EXPECT_FALSE(object->hasNotificationActive());
  object->notifierIs(other);
  object->hasNotificationActiveIs(true);
  other->stateIs(Unit::active);
  EXPECT_EQ(log, Log{"262"});
}

TEST(Position, KeepsTheCollectionThatItWalks) {
  auto unit = Unit::statusFactory("System");
  unit->groupIs(peers, true);
  unit->groupIs(ports, false);
  const Handle object = Zel::generic(unit);
  auto at = object->attributeIteratorConst(260);
  const auto copy = at;
  object->notifierIs(Unit::statusFactory("other"));
  unit = nullptr;
  const std::string first = textOf(at.key());
  ++at;
  EXPECT_NE(textOf(at.key()), first);
  EXPECT_EQ(textOf(copy.key()), first);
  ++at;
  EXPECT_FALSE(at);
}

TEST(Position, ThatWasMovedFromIsOfNothing) {
  const auto unit = Unit::statusFactory("System");
  unit->groupIs(peers, true);
  auto at = Zel::generic(unit)->attributeIteratorConst(260);
  auto moved = std::move(at);
  EXPECT_TRUE(moved);
  EXPECT_FALSE(at); // NOLINT(bugprone-use-after-move)
  const auto copy = at;
  EXPECT_FALSE(copy);
  at = moved;
  EXPECT_TRUE(at);
}

/// Makes a generic object of the directory that tells it.
class Latecomer : public Unit::StatusDir::Notifiee {
public:
  explicit Latecomer(Handle& made) : made_(made) {}
  void onStatus(Zel::Name /*name*/) override { made_ = Zel::generic(notifier()); }

private:
  Handle& made_;
};

TEST(GenericObjectOfADirectory, ThatIsMadeDuringItsEndForgetsIt) {
  Handle made;
  const auto latecomer = Zel::makeObject<Latecomer>(made);
  {
    const auto units = Unit::statusDirFactory("units");
    units->statusIs("System");
    latecomer->isRegisteredNotifieeIs(true);
    latecomer->notifierIs(units);
    latecomer->isWeakReferenceIs(true);
  }
  ASSERT_TRUE(made);
  EXPECT_EQ(made->notifier(), nullptr);
}

TEST(Zombie, ThatRisesAgainHearsAndCanBeSwitchedOff) {
  const auto unit = Unit::statusFactory("System");
  Log log;
  Listener listener(log);
  const Handle object = told(Zel::generic(unit), listener);
  object->zelDoZombieReactors(true);
  object->zelDoZombieReactors(false);
  EXPECT_TRUE(object->hasNotificationActive());
  {
    Zel::DeferredNotification deferred;
    unit->stateIs(Unit::active);
    EXPECT_EQ(deferred.run(), 1U);
  }
  EXPECT_EQ(log, Log{"262"});
  object->hasNotificationActiveIs(false);
  unit->stateIs(Unit::init);
  EXPECT_EQ(log, Log{"262"});
}

TEST(Descriptor, TakesALiteralForATextAndNullForTheDefault) {
  const Zel::ZelType& state = *Unit::_fwkType_State();
  EXPECT_EQ(textOf(state.genericIf("'active'", false)), "'active'");
  EXPECT_EQ(textOf(state.genericIf(nullptr, false)), "'init'");
}

TEST(ArgumentList, CannotHoldItself) {
  const auto list = Zel::makeObject<GenericIf::List_>();
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { list->add(list); }),
            "argument missing or of the wrong type: List");
}

TEST(Client, ReadsThroughAConstMemberAndCopiesConstArguments) {
  const auto units = Unit::statusDirFactory("units");
  units->statusIs("System")->stateIs(Unit::active);
  const auto at = Zel::generic(units)->attributeIteratorConst(258);
  EXPECT_EQ(Zel::readAttribute<Unit::State>(at.obj(), 262), Unit::active);
  EXPECT_EQ(Zel::count(at.obj(), 260), 0U);
  const Handle unit = Zel::generic(units->status("System"));
  const Ptr<const GenericIf> key = Zel::generic(peers);
  const Ptr<const GenericIf> truth = Zel::generic(true);
  Zel::setMember(unit, 260, key, truth);
  EXPECT_TRUE(units->status("System")->group(peers));
}

TEST(GenericIfSlots, StandInTheirOrder) {
  using Support::slotOf;
  const auto first = slotOf(&GenericIf::type);
  EXPECT_EQ(slotOf(&GenericIf::voidPtrIs), first + 1);
  EXPECT_EQ(slotOf(&GenericIf::attributeString), first + 2);
  EXPECT_EQ(slotOf(&GenericIf::attributeId), first + 3);
  EXPECT_EQ(slotOf(&GenericIf::attributeOp), first + 4);
  EXPECT_EQ(slotOf(&GenericIf::strRep), first + 5);
  EXPECT_EQ(slotOf(&GenericIf::zelDoZombieReactors), first + 6);
  EXPECT_EQ(slotOf(&GenericIf::attributeIteratorConst), first + 7);
  EXPECT_EQ(slotOf(&GenericIf::attributeIteratorKeyConst), first + 8);
  EXPECT_EQ(slotOf(&GenericIf::attributeIterator_iterInc), first + 11);
  EXPECT_EQ(slotOf(&GenericIf::attributeIterator_iterKey), first + 12);
  EXPECT_EQ(slotOf(&GenericIf::attributeIterator_iterClone), first + 13);
  EXPECT_EQ(slotOf(&GenericIf::attributeIterator_nonNull), first + 14);
  EXPECT_EQ(slotOf(&GenericIf::attributeIterator_iterDel), first + 15);
  EXPECT_EQ(slotOf(&GenericIf::attributeIterator), first + 16);
  EXPECT_EQ(slotOf(&GenericIf::attributeIteratorKey), first + 17);
}

} // namespace
