#include <Zel/Exception>
#include <Zel/Ptr>
#include <Zel/ValidPtr>

#include "Objects.h"
#include "support/Slot.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <type_traits>

namespace {

using TestZel::Object;
using Zel::Ptr;
using Zel::PtrInterface;
using Zel::ValidPtr;

static_assert(sizeof(Ptr<Object>) == sizeof(void*));
static_assert(sizeof(ValidPtr<Object>) == sizeof(void*));
static_assert(sizeof(Zel::String8) == sizeof(void*));
static_assert(sizeof(Zel::VFPtrInterface) == 4 && !std::is_polymorphic_v<Zel::VFPtrInterface>);

TEST(ReferenceWord, ANewObjectHasOneReferenceAndNoFlags) {
  Object::Told told;
  auto* const object = new Object(told);
  EXPECT_EQ(object->referenceWord(), 1U);
  EXPECT_EQ(object->referencesDec(), 0U);
  EXPECT_EQ(told.zero, 1);
  EXPECT_EQ(told.destroyed, 1);
}

TEST(ReferenceWord, AFactoryLeavesOneReference) {
  Object::Told told;
  const auto object = Zel::makeObject<Object>(told);
  EXPECT_EQ(object->references(), 1U);
}

TEST(ReferenceWord, AssigningAHandleToItselfDoesNothingAndCannotFree) {
  Object::Told told;
  auto object = Zel::makeObject<Object>(told);
  auto& same = object;
  object = same;
  object.ptrAssign(object.ptr());
  object = std::move(same);
  EXPECT_EQ(told.zero, 0);
  EXPECT_EQ(object->referenceWord(), 1U);
}

TEST(ReferenceWord, AssignmentTakesTheNewBeforeItDropsTheOld) {
  Object::Told firstTold;
  Object::Told secondTold;
  auto handle = Zel::makeObject<Object>(firstTold);
  const auto second = Zel::makeObject<Object>(secondTold);
  unsigned seenCount = 0;
  const void* seen = nullptr;
  handle->onZero = [&] {
    seenCount = second->references();
    seen = handle.ptr();
  };
  handle = second;
  EXPECT_EQ(seenCount, 2U);
  EXPECT_EQ(seen, second.ptr());
  EXPECT_EQ(firstTold.destroyed, 1);
}

TEST(ReferenceWord, BitsTwentyNineAndThirtyOneDoNotHoldAnObject) {
  for (const bool notification : {true, false}) {
    Object::Told told;
    auto* const object = new Object(told);
    if (notification) {
      object->hasNotificationActiveIs(true);
      EXPECT_EQ(object->referenceWord(), 0x20000001U);
    } else {
      object->zelMarkedForDeletionIs(true);
      EXPECT_EQ(object->referenceWord(), 0x80000001U);
      EXPECT_TRUE(object->zelMarkedForDeletion());
    }
    EXPECT_EQ(object->referencesDec(), 0U);
    EXPECT_EQ(told.zero, 1);
    EXPECT_EQ(told.destroyed, 1);
  }
}

TEST(ReferenceWord, BitThirtyHoldsAnObject) {
  Object::Told told;
  auto* const object = new Object(told);
  object->guardIs(true);
  EXPECT_EQ(object->referenceWord(), 0x40000001U);
  EXPECT_EQ(object->referencesDec(), 0x40000000U);
  EXPECT_EQ(told.zero, 0);
  object->guardIs(false);
  object->referencesInc();
  EXPECT_EQ(object->referencesDec(), 0U);
  EXPECT_EQ(told.destroyed, 1);
}

TEST(ReferenceWord, FlagsAreNotPartOfTheCount) {
  Object::Told told;
  const auto object = Zel::makeObject<Object>(told);
  object->hasNotificationActiveIs(true);
  EXPECT_EQ(object->references(), 1U);
  object->zelMarkedForDeletionIs(true);
  EXPECT_EQ(object->references(), 1U);
  EXPECT_EQ(object->referenceWord(), 0xa0000001U);
  object->hasNotificationActiveIs(false);
  object->zelMarkedForDeletionIs(false);
  EXPECT_EQ(object->referenceWord(), 1U);
}

TEST(ReferenceWord, AHandleTakenAndDroppedInTheZeroPathStartsItOnce) {
  Object::Told told;
  auto* const object = new Object(told);
  object->onZero = [object] {
    for (int i = 0; i < 3; ++i) {
      const Ptr<Object> temporary(object);
    }
  };
  object->onDestruction = [object] { const Ptr<PtrInterface> temporary(object); };
  object->referencesDec();
  EXPECT_EQ(told.zero, 1);
  EXPECT_EQ(told.destroyed, 1);
}

TEST(ReferenceWord, AHandleKeptInTheZeroPathKeepsTheObjectAlive) {
  Object::Told told;
  Ptr<Object> kept;
  auto* const object = new Object(told);
  object->onZero = [&] {
    if (told.zero == 1) {
      kept = Ptr<Object>(object);
    }
  };
  object->referencesDec();
  EXPECT_EQ(told.destroyed, 0);
  EXPECT_EQ(kept->referenceWord(), 1U);
  kept = nullptr;
  EXPECT_EQ(told.zero, 2);
  EXPECT_EQ(told.destroyed, 1);
}

TEST(ReferenceWord, TheZeroPathPassesTrue) {
  Object::Told told;
  auto* const object = new Object(told);
  bool argument = false;
  object->onZero = [&] { argument = object->lastArgument; };
  object->referencesDec();
  EXPECT_TRUE(argument);
}

TEST(ReferenceWord, ALeakedObjectIsImmortal) {
  Object::Told told;
  Object* object = nullptr;
  {
    const auto handle = Zel::makeObject<Object>(told);
    object = handle.ptr();
    handle->referencesLeak();
    EXPECT_EQ(handle->references(), 2U);
  }
  EXPECT_EQ(told.zero, 0);
  EXPECT_EQ(object->references(), 1U);
  object->referencesDec(); // gives the leaked reference back, so that the test itself leaks nothing
  EXPECT_EQ(told.destroyed, 1);
}

TEST(ReferenceWord, TheTrackerFollowsObjectsUntilTheyEndOrAreLeaked) {
  Object::Told told;
  Zel::ptrifTrackOn_ = true;
  const std::size_t before = Zel::PtrTrack::count();
  auto ends = Zel::makeObject<Object>(told);
  auto leaked = Zel::makeObject<Object>(told);
  EXPECT_EQ(Zel::PtrTrack::count(), before + 2);
  ends = nullptr;
  EXPECT_EQ(Zel::PtrTrack::count(), before + 1);
  leaked->referencesLeak();
  EXPECT_EQ(Zel::PtrTrack::count(), before);
  leaked->referencesDec();
  leaked = nullptr;
  EXPECT_EQ(Zel::PtrTrack::count(), before);
  Zel::ptrifTrackOn_ = false;
  EXPECT_EQ(told.destroyed, 2);
}

TEST(ReferenceWord, ACopyIsANewObjectWithACountOfItsOwn) {
  struct Plain : PtrInterface {
    int value = 7;
  };
  const auto first = Zel::makeObject<Plain>();
  const Ptr<Plain> second = first;
  const auto copy = Zel::makeObject<Plain>(*first);
  EXPECT_EQ(first->references(), 2U);
  EXPECT_EQ(copy->references(), 1U);
  *copy = *first;
  EXPECT_EQ(copy->references(), 1U);
  EXPECT_EQ(copy->value, 7);
}

TEST(ReferenceWord, AuditsTakeNegativeLevelsAsZero) {
  struct Audited : PtrInterface {
    unsigned zelAuditErrors(unsigned level) const override { return level + 1; }
  };
  const auto object = Zel::makeObject<Audited>();
  EXPECT_EQ(object->auditErrors(4), 5U);
  EXPECT_EQ(object->auditErrors(0x80000000U), 0U);
  Object::Told told;
  EXPECT_EQ(Zel::makeObject<Object>(told)->auditErrors(4), 0U);
}

TEST(ReferenceWord, TheVirtualOperationsStandInTheirOrder) {
  using Support::slotOf;
  EXPECT_EQ(slotOf(&PtrInterface::hasNotificationActiveIs), 0);
  EXPECT_EQ(slotOf(&PtrInterface::zelAuditErrors), 1);
  EXPECT_EQ(slotOf(&PtrInterface::auditErrors), 2);
  EXPECT_EQ(slotOf(&PtrInterface::zeroReferencesIs), 3);
  EXPECT_EQ(slotOf(&PtrInterface::fwkType), 4); // the destructor takes 5 and 6
}

TEST(ValidPtr, MadeFromNullItThrowsAndLeavesTheHandleAlone) {
  const Ptr<Object> null;
  try {
    const ValidPtr<Object> valid(null);
    FAIL() << "nothing thrown";
  } catch (const Zel::RangeException& failure) {
    EXPECT_EQ(failure.message(), Zel::String8("null ValidPtr"));
  }
  EXPECT_FALSE(null);
}

TEST(ValidPtr, HoldsAReferenceOfItsOwn) {
  Object::Told told;
  const auto handle = Zel::makeObject<Object>(told);
  {
    const ValidPtr<Object> valid(handle);
    const Ptr<PtrInterface> base = valid;
    EXPECT_EQ(handle->references(), 3U);
    EXPECT_EQ(valid, handle);
  }
  EXPECT_EQ(handle->references(), 1U);
}

TEST(ValidPtr, AMovedFromOneIsStillValid) {
  Object::Told told;
  ValidPtr<Object> first(Zel::makeObject<Object>(told));
  const ValidPtr<Object> second = std::move(first);
  EXPECT_EQ(first.ptr(), second.ptr());
}

TEST(Handles, ConvertToBasesAndToReadOnlyUse) {
  Object::Told told;
  const auto object = Zel::makeObject<Object>(told);
  const Ptr<const PtrInterface> base = object;
  EXPECT_EQ(base, object);
  EXPECT_EQ(Zel::ptrCast<const Object>(base), object);
  EXPECT_EQ(object->references(), 2U);
  static_assert(!std::is_convertible_v<Ptr<const Object>, Ptr<Object>>);
  static_assert(!std::is_convertible_v<Ptr<PtrInterface>, Ptr<Object>>);
  static_assert(!std::is_destructible_v<PtrInterface>);
}

TEST(Handles, AFailedConstructionLeavesNothing) {
  struct Refuses : PtrInterface {
    Refuses() { throw 1; }
  };
  Zel::ptrifTrackOn_ = true;
  const std::size_t before = Zel::PtrTrack::count();
  EXPECT_THROW(Zel::makeObject<Refuses>(), int);
  EXPECT_EQ(Zel::PtrTrack::count(), before);
  Zel::ptrifTrackOn_ = false;
}

} // namespace
