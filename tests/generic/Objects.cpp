#include "GenericFixture.h"

#include <Zel/Dir>
#include <generic/Mapping.h>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Unit::Status;

Ptr<const Zel::ZelType> type(const Zel::ZelType* descriptor) {
  return Ptr<const Zel::ZelType>(descriptor);
}

class GenericObject : public testing::Test {
protected:
  const Ptr<Status> unit = Unit::statusFactory("System");
  const Handle object = Zel::generic(unit);
};

TEST_F(GenericObject, PassesForItsTypeAndTheBasesOfIt) {
  EXPECT_EQ(object->voidPtrIs(type(Status::_fwkType())), unit.ptr());
  EXPECT_EQ(object->voidPtrIs(type(Zel::Entity::_fwkType())),
            static_cast<Zel::Entity*>(unit.ptr()));
  EXPECT_EQ(object->voidPtrIs(type(Zel::PtrInterface::_fwkType())),
            static_cast<Zel::PtrInterface*>(unit.ptr()));
}

TEST_F(GenericObject, PassesForNothingElse) {
  const auto as = [&](const Zel::ZelType* wanted) {
    return messageOf<Zel::TypeException>([&] { object->voidPtrIs(type(wanted)); });
  };
  const char* const refusal = "argument missing or of the wrong type: Status";
  EXPECT_EQ(as(Unit::StatusDir::_fwkType()), refusal);
  EXPECT_EQ(as(GenericIf::_fwkType()), refusal);
  EXPECT_EQ(as(Zel::Name::_fwkType()), refusal);
  EXPECT_EQ(as(nullptr), refusal);
}

TEST_F(GenericObject, FindsItsAttributesByName) {
  EXPECT_EQ(object->attributeId("unitName"), 258);
  EXPECT_EQ(object->attributeId("state"), 262);
  EXPECT_EQ(object->attributeId("history"), 268);
  EXPECT_EQ(object->attributeId("genId"), 274);
}

TEST_F(GenericObject, FindsTheAttributesOfTheFrameworkByName) {
  EXPECT_EQ(object->attributeId("fwkKey"), 0);
  EXPECT_EQ(object->attributeId("name"), 130);
  EXPECT_EQ(object->attributeId("zelHasAttrLogInterface"), 154);
}

TEST_F(GenericObject, FindsNoOtherAttributes) {
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { object->attributeId("foo"); }),
            "unknown attribute of Status: foo");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { object->attributeId(""); }),
            "unknown attribute of Status: ");
}

TEST_F(GenericObject, CountsALookUpAtTheAttributeFound) {
  const Zel::ZelAttr& attr = *Status::_fwkType()->attr("state");
  const unsigned before = attr.readCounter();
  EXPECT_EQ(movesOf(*unit, [&] { object->attributeId("state"); }), (Moves{0, 0}));
  EXPECT_EQ(attr.readCounter(), before + 1);
}

TEST_F(GenericObject, NamesItsAttributesAsTheEntityDoes) {
  for (Zel::AttributeId id = -1; id < 300; ++id) {
    EXPECT_EQ(object->attributeString(id), unit->attributeString(id)) << id;
  }
  EXPECT_EQ(object->attributeString(262), "state");
}

TEST_F(GenericObject, KnowsItsDescriptor) {
  EXPECT_EQ(object->type(), type(Status::_fwkType()));
  EXPECT_EQ(object->name(), "System");
}

TEST_F(GenericObject, SaysWhereItsObjectIs) {
  EXPECT_EQ(textOf(object), "object(Maintenance::Unit::Status)");
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto units = Unit::statusDirFactory("units");
  roots->entityIs(units);
  const Zel::Dir::Active active(roots);
  EXPECT_EQ(textOf(Zel::generic(units->statusIs("System"))), "'/units/status/System'");
  EXPECT_EQ(textOf(Status::_fwkType()->genericIf_(nullptr, false)), "null");
}

TEST_F(GenericObject, IsMadeFromATextThatSaysWhereTheObjectIs) {
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto units = Unit::statusDirFactory("units");
  roots->entityIs(units);
  const Ptr<Status> inside = units->statusIs("System");
  const Zel::Dir::Active active(roots);
  const Handle found = Status::_fwkType()->genericIf(Zel::String8("'/units/status/System'"), true);
  EXPECT_EQ(found->voidPtrIs(type(Status::_fwkType())), inside.ptr());
  EXPECT_TRUE(found->isConst());
  const Handle none = Status::_fwkType()->genericIf(Zel::String8("null"), false);
  EXPECT_EQ(none->voidPtrIs(type(Status::_fwkType())), nullptr);
  EXPECT_EQ(messageOf<Zel::RangeException>(
                [&] { Status::_fwkType()->genericIf(Zel::String8("'/units'"), false); }),
            messageOf<Zel::RangeException>(
                [&] { Zel::strepToValue<Ptr<Status>>(Zel::String8("'/units'")); }));
}

TEST_F(GenericObject, OfNullOrOfAnotherTypeHasNoObject) {
  const auto other = Unit::statusDirFactory("units");
  for (Zel::PtrInterface* const given :
       {static_cast<Zel::PtrInterface*>(nullptr), static_cast<Zel::PtrInterface*>(other.ptr())}) {
    const Handle none = Status::_fwkType()->genericIf_(given, false);
    EXPECT_EQ(none->voidPtrIs(type(Zel::Entity::_fwkType())), nullptr);
    EXPECT_EQ(none->type(), type(Status::_fwkType()));
    EXPECT_EQ(none->attributeId("state"), 262);
    EXPECT_EQ(none->attributeString(262), "state");
    EXPECT_EQ(none->attributeString(275), "unknown");
    EXPECT_EQ(none->name(), "");
    EXPECT_EQ(messageOf<Zel::InternalException>([&] { none->attributeIteratorConst(260); }),
              "generic object of no object");
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { none->attributeIteratorConst(275); }),
              "unknown attribute of Status: 275");
  }
  EXPECT_EQ(other->zelNotifieeList().count(), 0U);
}

TEST_F(GenericObject, OfAnyObjectIsOfTheObjectsOwnType) {
  const Zel::ZelType* const base = Zel::Entity::_fwkType();
  const Handle found = base->genericIf(static_cast<Zel::PtrInterface*>(unit.ptr()), true);
  EXPECT_EQ(found->type(), type(Status::_fwkType()));
  EXPECT_TRUE(found->isConst());
  EXPECT_EQ(base->genericIf(static_cast<Zel::PtrInterface*>(nullptr), true), nullptr);
}

TEST_F(GenericObject, HasNoBaseInTheModel) {
  EXPECT_EQ(dynamic_cast<Zel::GenericIfPtrInterface&>(*object).baseGenericIf(), nullptr);
}

TEST_F(GenericObject, IsNoValue) {
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>([&] {
              Status::_fwkType()->genericIf(static_cast<const void*>(unit.ptr()), false);
            }),
            "operation 0 not supported on Status");
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [&] { Zel::fwkTypeOf<unsigned>()->genericIf_(unit.ptr(), false); }),
            "operation 0 not supported on U32");
}

TEST_F(GenericObject, ClonesAsASecondOneOfTheSameObject) {
  const Handle constant = Zel::generic(unit, true);
  const Handle clone = constant->clone();
  EXPECT_NE(clone, constant);
  EXPECT_TRUE(clone->isConst());
  EXPECT_FALSE(object->clone()->isConst());
  EXPECT_EQ(clone->voidPtrIs(type(Status::_fwkType())), unit.ptr());
  const Ptr<const GenericIf> seen = clone;
  EXPECT_EQ(seen->clone()->voidPtrIs(type(Status::_fwkType())), unit.ptr());
}

TEST_F(GenericObject, YieldsItsObjectToWhoeverKnowsItsType) {
  const auto typed = ptrCast<Status::GenericIf_>(object);
  ASSERT_TRUE(typed);
  EXPECT_EQ(typed->obj(), unit.ptr());
  EXPECT_EQ(Ptr<const Status::GenericIf_>(typed)->obj(), unit.ptr());
}

// Objects made from lists of their constructor arguments.

Handle made(const Zel::ZelType* descriptor, const Handle& list) {
  return descriptor->genericIf(static_cast<const GenericIf*>(list.ptr()), true);
}

class ObjectList : public testing::TestWithParam<const Zel::ZelType*> {};

INSTANTIATE_TEST_SUITE_P(OfNamedTypes, ObjectList,
                         testing::Values(Status::_fwkType(), Unit::StatusDir::_fwkType(),
                                         Unit::Config::_fwkType(), Unit::ConfigDir::_fwkType(),
                                         Unit::Input::_fwkType(), Unit::MergedInputDir::_fwkType(),
                                         Profile::ConfigDir::_fwkType(),
                                         Profile::DefaultProfile::_fwkType()),
                         [](const auto& test) {
                           return std::string(test.param->name().view()) +
                                  std::to_string(test.index);
                         });

TEST_P(ObjectList, MakesAnObjectOutsideAnyCollection) {
  const Handle object = made(GetParam(), Zel::arguments(Zel::Name("mine")));
  EXPECT_EQ(object->type(), type(GetParam()));
  EXPECT_FALSE(object->isConst()) << "what is made is never const";
  EXPECT_EQ(Zel::readAttribute<Zel::Name>(object, 130), "mine");
  const auto& entity =
      *static_cast<const Zel::Entity*>(object->voidPtrIs(type(Zel::Entity::_fwkType())));
  EXPECT_EQ(entity.references(), 1U) << "the generic object alone holds it";
  EXPECT_EQ(entity.parent(), nullptr);
}

TEST_P(ObjectList, NeedsEveryArgument) {
  const char* const refusal = "argument missing or of the wrong type: name";
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made(GetParam(), Zel::arguments()); }), refusal);
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made(GetParam(), Zel::arguments(nullptr)); }),
            refusal);
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made(GetParam(), Zel::arguments("text")); }),
            "argument missing or of the wrong type: String");
}

TEST_P(ObjectList, TakesNoFurtherArgument) {
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made(GetParam(), Zel::arguments(Zel::Name("mine"), nullptr)); }),
            "too many arguments: " + std::string(GetParam()->name().view()));
}

TEST_P(ObjectList, MustBeAList) {
  const char* const refusal = "argument missing or of the wrong type: Zel::GenericIf::List_";
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made(GetParam(), nullptr); }), refusal);
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made(GetParam(), Zel::generic(1U)); }), refusal);
}

TEST(ObjectLists, MakeNoMemberThatOnlyItsDirectoryMakes) {
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [] { made(Profile::Config::_fwkType(), Zel::arguments(Profile::ProfileKey())); }),
            "operation 128 not supported on Config");
}

TEST(ObjectLists, AreTakenByTheClassOfTheGenericObjectToo) {
  const Handle object =
      Status::GenericIf_::genericIfListConstructor(Zel::arguments(Zel::Name("mine")));
  EXPECT_EQ(object->type(), type(Status::_fwkType()));
}

template <class T>
constexpr bool isMadeFromLists = requires(Handle list) {
  T::GenericIf_::genericIfListConstructor(list);
};
static_assert(isMadeFromLists<Status> && isMadeFromLists<GroupToUnitDir> &&
              isMadeFromLists<Profile::ConfigDir>);
static_assert(!isMadeFromLists<Profile::Config> && !isMadeFromLists<MemberToGroup> &&
              !isMadeFromLists<GroupToUnit>);

// The failures themselves.

TEST(GenericFailures, AreOneClassAndMessageEach) {
  EXPECT_EQ(messageOf<Zel::ConstException>([] { GenericIf::throwConstException("my own words"); }),
            "my own words");
  EXPECT_EQ(
      messageOf<Zel::BadIndexAttrException>([] { GenericIf::throwBadIndexAttrException("X"); }),
      "attribute takes no index: X");
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [] { GenericIf::throwOpNotSupportedException("X", Op::opDelete, false); }),
            "operation 129 not supported on X");
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [] { GenericIf::throwOpNotSupportedException("X", Op::opDelete, true); }),
            "operation 129 not supported on X of a const instance");
  EXPECT_EQ(messageOf<Zel::TypeException>([] { GenericIf::throwTypeException("X"); }),
            "argument missing or of the wrong type: X");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>([] { GenericIf::throwUnknownArgException("X"); }),
            "too many arguments: X");
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([] { GenericIf::throwUnknownAttrException("X"); }),
            "unknown attribute of X");
}

} // namespace
