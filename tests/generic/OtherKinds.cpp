#include "GenericFixture.h"

#include "foreign/model/OrderGeneric.h"
#include "foreign/model/TourGeneric.h"

#include <set>

// Kinds of types and attributes that the library's own model does not have.

namespace {

using namespace TestGeneric;
using namespace Foreign;

Ptr<const Zel::ZelType> type(const Zel::ZelType* descriptor) {
  return Ptr<const Zel::ZelType>(descriptor);
}

Handle made(const Zel::ZelType* descriptor, const Handle& list) {
  return descriptor->genericIf(static_cast<const GenericIf*>(list.ptr()), false);
}

const SkuKey milk(chilled, "milk");
const SkuKey tea(ambient, "tea");

class PointerObject : public testing::Test {
protected:
  const Ptr<Tour> tour = Zel::makeObject<Tour>(TourKey(frozen, 7));
  const Handle object = Zel::generic(tour);
};

TEST_F(PointerObject, IsHeldAndHearsNothing) {
  EXPECT_EQ(tour->references(), 2U);
  EXPECT_EQ(tour->zelNotifieeList().count(), 0U);
  EXPECT_EQ(object->notifier(), nullptr);
  EXPECT_EQ(dynamic_cast<Zel::GenericIfEntity*>(object.ptr()), nullptr);
}

TEST_F(PointerObject, PassesForItsTypeAndTheRootAlone) {
  EXPECT_EQ(object->voidPtrIs(type(Tour::_fwkType())), tour.ptr());
  EXPECT_EQ(object->voidPtrIs(type(Zel::PtrInterface::_fwkType())), tour.ptr());
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] { object->voidPtrIs(type(Zel::Entity::_fwkType())); }),
      "argument missing or of the wrong type: Tour");
}

TEST_F(PointerObject, IsReadAndWritten) {
  Zel::writeAttribute(object, 131, 20U);
  Zel::writeAttribute(object, 132, true);
  EXPECT_EQ(tour->metres(), 20U);
  EXPECT_TRUE(Zel::readAttribute<bool>(object, 132));
  EXPECT_EQ(Zel::readAttribute<TourKey>(object, 130), TourKey(frozen, 7));
  Zel::setMember(object, 133, "Ann", true);
  EXPECT_EQ(Zel::count(object, 133), 1U);
  EXPECT_TRUE(Zel::readMember<bool>(object, 133, "Ann"));
}

TEST_F(PointerObject, HasNoAttributeOfTheFrameworkButTheKey) {
  EXPECT_EQ(Zel::readAttribute<TourKey>(object, 0), TourKey(frozen, 7));
  for (const Zel::AttributeId id : {154, 136, 258}) {
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { Zel::readAttribute(object, id); }),
              "unknown attribute of Tour: " + std::to_string(id));
  }
  EXPECT_EQ(object->attributeString(130), "key");
  EXPECT_EQ(object->attributeString(136), "unknown");
  EXPECT_EQ(object->attributeId("helper"), 133);
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { object->attributeId("name"); }),
            "unknown attribute of Tour: name");
}

TEST_F(PointerObject, MakesItsMembersWhichAreSuchObjectsToo) {
  const Handle stop = Zel::createMember(object, 134, milk);
  EXPECT_EQ(stop->type(), type(Stop::_fwkType()));
  EXPECT_EQ(stop->voidPtrIs(type(Stop::_fwkType())), tour->stop(milk).ptr());
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::readMember(object, 134, nullptr); }),
            "argument missing or of the wrong type: key");
  const auto at = object->attributeIterator(134);
  Zel::writeAttribute(at.obj(), 130, true);
  EXPECT_TRUE(tour->stop(milk)->urgent());
}

TEST_F(PointerObject, IsGivenToItsGenericObject) {
  const auto typed = ptrCast<Tour::GenericIf_>(object);
  ASSERT_TRUE(typed);
  EXPECT_EQ(typed->obj(), tour.ptr());
  typed->objIs(nullptr);
  EXPECT_EQ(tour->references(), 1U);
  EXPECT_EQ(typed->voidPtrIs(type(Tour::_fwkType())), nullptr);
  EXPECT_EQ(messageOf<Zel::InternalException>([&] { Zel::readAttribute(object, 131); }),
            "generic object of no object");
  typed->objIs(tour.ptr());
  EXPECT_EQ(Zel::readAttribute<unsigned>(object, 131), 0U);
}

TEST_F(PointerObject, IsSharedByClones) {
  const Handle clone = Zel::generic(tour, true)->clone();
  EXPECT_TRUE(clone->isConst());
  EXPECT_EQ(clone->voidPtrIs(type(Tour::_fwkType())), tour.ptr());
  EXPECT_EQ(tour->references(), 3U);
}

TEST_F(PointerObject, HasATextThatNobodyReads) {
  const Zel::String8 text = object->strRep();
  EXPECT_EQ(text, Zel::valueToStrepOfRawPtr(tour.ptr(), Zel::PtrInterface::_fwkType()));
  EXPECT_THROW(Tour::_fwkType()->genericIf(text, false), Zel::RangeException);
}

TEST_F(PointerObject, IsMadeFromItsArgumentsWhichMayBeNone) {
  const Handle one = made(Tour::_fwkType(), Zel::arguments(TourKey(chilled, 3)));
  EXPECT_EQ(Zel::readAttribute<TourKey>(one, 130), TourKey(chilled, 3));
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made(Tour::_fwkType(), Zel::arguments()); }),
            "argument missing or of the wrong type: key");
  const Handle plan = made(PickPlan::_fwkType(), Zel::arguments());
  EXPECT_EQ(Zel::count(plan, 130), 0U);
  EXPECT_EQ(
      messageOf<Zel::UnknownArgException>([] { made(PickPlan::_fwkType(), Zel::arguments(1U)); }),
      "too many arguments: PickPlan");
}

TEST(SetWithoutNotification, IsReadAndWrittenAllTheSame) {
  const auto set = Zel::makeObject<PickSet>();
  const Handle object = Zel::generic(set);
  Zel::setMember(object, 130, milk, true);
  Zel::setMember(object, 130, tea, false);
  EXPECT_EQ(Zel::count(object, 130), 2U);
  EXPECT_EQ(Zel::readAttribute<SkuKey>(object, 131), set->winner()) << "worked out at each read";
  EXPECT_EQ(
      messageOf<Zel::OpNotSupportedException>([&] { Zel::writeAttribute(object, 131, milk); }),
      "operation 128 not supported on winner");
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] { object->voidPtrIs(type(Zel::Entity::_fwkType())); }),
      "argument missing or of the wrong type: PickSet");
  std::set<std::string> skus;
  for (auto at = object->attributeIteratorConst(130); at; ++at) {
    skus.insert(std::string(Zel::value<SkuKey>(at.key()).sku().view()));
  }
  EXPECT_EQ(skus, (std::set<std::string>{"milk", "tea"}));
}

class OwnKey : public testing::Test {
protected:
  static constexpr Zel::AttributeId alarm = 260;
  const Ptr<Depot> depot = Zel::makeObject<Depot>("depot");
  const Handle object = Zel::generic(depot);
  const Alarm smoke{"smoke", express};
};

TEST_F(OwnKey, IsWrittenWithoutAnIndexAndFoundByTheKeyOfTheValue) {
  EXPECT_EQ(attributeOp(object, alarm, Op::opWrite, nullptr, Zel::generic(smoke)), nullptr);
  EXPECT_EQ(depot->alarm("smoke"), smoke);
  EXPECT_EQ(Zel::readMember<Alarm>(object, alarm, "smoke"), smoke);
  EXPECT_TRUE(Zel::exists(object, alarm, "smoke"));
  EXPECT_EQ(Zel::count(object, alarm), 1U);
  EXPECT_EQ(Zel::value<Alarm>(Zel::deleteMember(object, alarm, "smoke")), smoke);
  EXPECT_FALSE(Zel::exists(object, alarm, "smoke"));
}

TEST_F(OwnKey, YieldsTheDefaultForAKeyThatIsNotThere) {
  EXPECT_EQ(Zel::readMember<Alarm>(object, alarm, "smoke"), Alarm());
  EXPECT_EQ(Zel::value<Alarm>(Zel::deleteMember(object, alarm, "smoke")), Alarm());
}

TEST_F(OwnKey, TakesNoIndexAtAWriteAndNeedsAValue) {
  EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] {
              attributeOp(object, alarm, Op::opWrite, Zel::generic("smoke"), Zel::generic(smoke));
            }),
            "attribute takes no index: alarm");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(object, alarm, Op::opWrite); }),
            "argument missing or of the wrong type: alarm");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::writeAttribute(object, alarm, 1U); }),
            "argument missing or of the wrong type: U32");
  EXPECT_EQ(Zel::count(object, alarm), 0U);
}

TEST_F(OwnKey, NeedsTheKeyByItsName) {
  for (const Op::OpId op : {Op::opRead, Op::opExists, Op::opDelete}) {
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(object, alarm, op); }),
              "argument missing or of the wrong type: sensor");
  }
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] { object->attributeIteratorKeyConst(alarm, nullptr); }),
      "argument missing or of the wrong type: sensor");
}

TEST_F(OwnKey, IsWalkedWithKeysAndValues) {
  depot->alarmIs(smoke);
  const auto at = object->attributeIteratorConst(alarm);
  EXPECT_EQ(Zel::value<Zel::String8>(at.key()), "smoke");
  EXPECT_EQ(Zel::value<Alarm>(at.obj()), smoke);
}

TEST_F(OwnKey, IsToldByKey) {
  Log log;
  Listener listener(log);
  told(object, listener);
  depot->alarmIs(smoke);
  EXPECT_EQ(log, Log{"260 'smoke'"});
}

class CreationArguments : public testing::Test {
protected:
  static constexpr Zel::AttributeId order = 258;
  const Ptr<OrderDir> dir = Zel::makeObject<OrderDir>("orders");
  const Handle object = Zel::generic(dir);
};

TEST_F(CreationArguments, StandBehindTheKey) {
  const Handle made = Zel::createMember(object, order, Zel::Name("o1"), express);
  EXPECT_EQ(dir->order("o1")->urgency(), express);
  Zel::createMember(object, order, Zel::Name("o1"), routine);
  EXPECT_EQ(dir->order("o1")->urgency(), routine) << "given to a member that is there too";
  EXPECT_EQ(Zel::readAttribute<Urgency>(made, 259), routine);
}

TEST_F(CreationArguments, AreAllNeededAndNoMore) {
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] { Zel::createMember(object, order, Zel::Name("o1")); }),
      "argument missing or of the wrong type: urgency");
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { Zel::createMember(object, order, Zel::Name("o1"), nullptr); }),
            "argument missing or of the wrong type: urgency");
  EXPECT_EQ(
      messageOf<Zel::TypeException>([&] { Zel::createMember(object, order, nullptr, express); }),
      "argument missing or of the wrong type: name");
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { Zel::createMember(object, order, Zel::Name("o1"), chilled); }),
            "argument missing or of the wrong type: Zone");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [&] { Zel::createMember(object, order, Zel::Name("o1"), express, 1U); }),
            "too many arguments: order");
  EXPECT_EQ(dir->orderMap().count(), 0U);
}

TEST_F(CreationArguments, MakeAnObjectOutsideACollectionToo) {
  const Handle one = made(Order::_fwkType(), Zel::arguments(Zel::Name("o1"), express));
  EXPECT_EQ(Zel::readAttribute<Urgency>(one, 259), express);
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [] { made(Order::_fwkType(), Zel::arguments(Zel::Name("o1"))); }),
            "argument missing or of the wrong type: urgency");
}

} // namespace
