#include "GenericFixture.h"

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Maintenance::Profile::ProfileKey;
using Unit::StageMgrInstKey;

/// What the descriptor of `V` makes of a list; it is never const.
template <class V>
Handle made(const Handle& list, bool isConst = true) {
  return Zel::fwkTypeOf<V>()->genericIf(static_cast<const GenericIf*>(list.ptr()), isConst);
}

TEST(ValueList, MakesAValueFromItsArguments) {
  const Handle key = made<ProfileKey>(Zel::arguments(Profile::profileTypeBgp, "drain"));
  EXPECT_EQ(Zel::value<ProfileKey>(key), ProfileKey(Profile::profileTypeBgp, "drain"));
  EXPECT_FALSE(key->isConst());
  EXPECT_TRUE(key->hasNotificationActive());
}

TEST(ValueList, MakesTheDefaultFromNoArguments) {
  EXPECT_EQ(Zel::value<ProfileKey>(made<ProfileKey>(Zel::arguments())), ProfileKey());
  EXPECT_EQ(Zel::value<StageMgrInstKey>(made<StageMgrInstKey>(Zel::arguments())),
            StageMgrInstKey());
  EXPECT_EQ(Zel::value<Unit::TrafficRates>(made<Unit::TrafficRates>(Zel::arguments())),
            Unit::TrafficRates());
  EXPECT_EQ(made<Unit::BuiltinUnitName>(Zel::arguments())->type()->name(), "BuiltinUnitName");
}

TEST(ValueList, IsAllOrNothing) {
  const auto with = [](const Handle& list) {
    return messageOf<Zel::TypeException>([&] { made<ProfileKey>(list); });
  };
  EXPECT_EQ(with(Zel::arguments(Profile::profileTypeBgp)),
            "argument missing or of the wrong type: name");
  EXPECT_EQ(with(Zel::arguments(nullptr, "drain")), "argument missing or of the wrong type: type");
  EXPECT_EQ(with(Zel::arguments(Profile::profileTypeBgp, nullptr)),
            "argument missing or of the wrong type: name");
}

TEST(ValueList, TakesNoArgumentOfAnotherType) {
  const auto with = [](const Handle& list) {
    return messageOf<Zel::TypeException>([&] { made<ProfileKey>(list); });
  };
  EXPECT_EQ(with(Zel::arguments("drain", Profile::profileTypeBgp)),
            "argument missing or of the wrong type: String");
  EXPECT_EQ(with(Zel::arguments(Profile::profileTypeBgp, Zel::Name("drain"))),
            "argument missing or of the wrong type: Name");
}

TEST(ValueList, TakesNoFurtherArguments) {
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made<ProfileKey>(Zel::arguments(Profile::profileTypeBgp, "drain", "now")); }),
            "too many arguments: ProfileKey");
  EXPECT_EQ(
      messageOf<Zel::UnknownArgException>([] { made<Unit::TrafficRates>(Zel::arguments(1ULL)); }),
      "too many arguments: TrafficRates");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made<Unit::BuiltinUnitName>(Zel::arguments(nullptr)); }),
            "too many arguments: BuiltinUnitName");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made<Unit::MaintenanceStageClasses>(Zel::arguments("x")); }),
            "too many arguments: MaintenanceStageClasses");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made<Unit::MaintenanceStageList>(Zel::arguments("x")); }),
            "too many arguments: MaintenanceStageList");
}

TEST(ValueList, PassesTheNameOfAStageManagerThroughItsChecks) {
  const Handle key = made<StageMgrInstKey>(Zel::arguments("unit#4"));
  EXPECT_EQ(Zel::value<StageMgrInstKey>(key).unitName(), "unit");
  EXPECT_EQ(Zel::value<StageMgrInstKey>(key).genId(), 4U);
  EXPECT_EQ(messageOf<Zel::InternalException>([] { made<StageMgrInstKey>(Zel::arguments("#4")); }),
            "Unexpected instanceName format, couldn't extract unitName");
  EXPECT_EQ(Zel::value<StageMgrInstKey>(made<StageMgrInstKey>(Zel::arguments(""))),
            StageMgrInstKey());
}

TEST(ValueList, MustBeAList) {
  const char* const refusal = "argument missing or of the wrong type: Zel::GenericIf::List_";
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made<ProfileKey>(nullptr); }), refusal);
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made<ProfileKey>(defaultOf<ProfileKey>()); }),
            refusal);
}

/// A list without a queue.
class EmptyHanded : public GenericIf::List_ {
public:
  void* voidPtrIs(const Ptr<const Zel::ZelType>& /*wanted*/) const override { return nullptr; }
};

TEST(ValueList, MustHaveAQueue) {
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made<ProfileKey>(Zel::makeObject<EmptyHanded>()); }),
            "argument missing or of the wrong type: List");
}

TEST(ValueList, IsHeldWhileItIsRead) {
  const Handle list = Zel::arguments(Profile::profileTypeBgp, "drain");
  made<ProfileKey>(list);
  EXPECT_EQ(list->references(), 1U);
  EXPECT_EQ(textOf(list), "['profileTypeBgp', 'drain']") << "the list is as it was";
}

TEST(ValueList, MakesValuesByTheirOwnOperationToo) {
  const Handle key = ProfileKey::GenericIf_::genericIfListConstructor(
      Zel::arguments(Profile::profileTypeUnit, "x"));
  EXPECT_EQ(Zel::value<ProfileKey>(key), ProfileKey(Profile::profileTypeUnit, "x"));
}

TEST(ValueList, MakesAGroupKey) {
  const Handle key = made<Group::GroupKey>(Zel::arguments(Group::groupTypeBgp, "peers"));
  EXPECT_EQ(Zel::value<Group::GroupKey>(key), Group::GroupKey(Group::groupTypeBgp, "peers"));
}

TEST(ValueList, MakesNoValueWithoutATable) {
  EXPECT_EQ(
      messageOf<Zel::OpNotSupportedException>([] { made<unsigned>(Zel::arguments(), false); }),
      "operation 128 not supported on U32");
  EXPECT_EQ(
      messageOf<Zel::OpNotSupportedException>([] { made<Vexil::IntfId>(Zel::arguments(), true); }),
      "operation 128 not supported on IntfId of a const instance");
}

using Queue = GenericIf::List::Queue;

const Queue& queueOf(const Handle& list) {
  return *static_cast<const Queue*>(
      list->voidPtrIs(Ptr<const Zel::ZelType>(GenericIf::List::_fwkType())));
}

TEST(ArgumentList, KeepsTheOrderInWhichArgumentsWereGiven) {
  const Handle list = Zel::arguments(1U, 2U, nullptr, 3U);
  const Queue& queue = queueOf(list);
  EXPECT_EQ(queue.count(), 4U);
  EXPECT_EQ(Zel::value<unsigned>(queue.head()->zelValue()), 1U);
  EXPECT_EQ(Zel::value<unsigned>(queue.head()->zelNext()->zelValue()), 2U);
  EXPECT_EQ(queue.head()->zelNext()->zelNext()->zelValue(), nullptr);
  EXPECT_EQ(Zel::value<unsigned>(queue.tail()->zelValue()), 3U);
  EXPECT_EQ(textOf(list), "[1, 2, null, 3]");
  EXPECT_EQ(textOf(Zel::arguments()), "[]");
}

TEST(ArgumentList, PassesForNothingElse) {
  const Handle list = Zel::arguments();
  EXPECT_EQ(list->type()->name(), "List");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { list->voidPtrIs(typeOf<unsigned>()); }),
            "argument missing or of the wrong type: List");
}

TEST(ArgumentList, ClonesIntoAQueueOfItsOwn) {
  const Handle list = Zel::arguments(1U);
  const Handle clone = list->clone();
  dynamic_cast<GenericIf::List_&>(*list).add(Zel::generic(2U));
  EXPECT_EQ(textOf(list), "[1, 2]");
  EXPECT_EQ(textOf(clone), "[1]");
}

TEST(ArgumentList, HoldsItsArguments) {
  const Handle argument = Zel::generic(1U);
  {
    const Handle list = Zel::arguments(argument, argument);
    EXPECT_EQ(argument->references(), 3U);
  }
  EXPECT_EQ(argument->references(), 1U);
}

} // namespace
