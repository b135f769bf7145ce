#include "GenericFixture.h"

namespace {

using namespace TestGeneric;
using namespace Maintenance;

template <class E>
class EnumerationWrapper : public testing::Test {};

using Enumerations = testing::Types<Profile::ProfileType, Unit::UnitType, Unit::InputSrc,
                                    Unit::State, Unit::MaintenanceOp, Group::GroupType>;
TYPED_TEST_SUITE(EnumerationWrapper, Enumerations);

template <class E>
std::string nameOf() {
  return std::string(Zel::enumTableOf<E>.name);
}

TYPED_TEST(EnumerationWrapper, HoldsTheEnumeratorZeroByDefault) {
  EXPECT_EQ(Zel::value<TypeParam>(defaultOf<TypeParam>()), static_cast<TypeParam>(0));
}

TYPED_TEST(EnumerationWrapper, SaysAndReadsEveryEnumerator) {
  for (const Zel::Enumerator& row : Zel::enumTableOf<TypeParam>.rows) {
    std::string text("'");
    text.append(row.name).append("'");
    const auto value = static_cast<TypeParam>(row.number);
    EXPECT_EQ(textOf(writable(value)), text);
    EXPECT_EQ(Zel::value<TypeParam>(fromText<TypeParam>(text.c_str())), value);
  }
}

TYPED_TEST(EnumerationWrapper, HasOneAttributeByName) {
  const Handle wrapper = defaultOf<TypeParam>();
  EXPECT_EQ(wrapper->attributeId("value"), 1);
  EXPECT_EQ(wrapper->attributeString(1), "value");
  EXPECT_EQ(wrapper->attributeString(0), "unknown");
  EXPECT_EQ(wrapper->attributeString(2), "unknown");
}

TYPED_TEST(EnumerationWrapper, HasNoEnumeratorAsAnAttributeButCountsTheLook) {
  const Handle wrapper = defaultOf<TypeParam>();
  for (const Zel::Enumerator& row : Zel::enumTableOf<TypeParam>.rows) {
    const Zel::String8 name(row.name);
    const Zel::ZelAttr& attr = *wrapper->type()->attr(row.name);
    const unsigned before = attr.readCounter();
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { wrapper->attributeId(name); }),
              "unknown attribute of " + nameOf<TypeParam>() + ": " + std::string(row.name));
    EXPECT_EQ(attr.readCounter(), before + 1);
  }
}

TYPED_TEST(EnumerationWrapper, ReadsItsValueWhateverTheOperation) {
  const auto last = static_cast<TypeParam>(Zel::enumTableOf<TypeParam>.rows.back().number);
  const Handle constant = Zel::generic(last, true);
  for (const int op : {0, 1, 2, 3, 77, 100, 128, 129}) {
    const Handle read = attributeOp(constant, 1, static_cast<Op::OpId>(op), Zel::generic(1U),
                                    defaultOf<TypeParam>());
    EXPECT_EQ(Zel::value<TypeParam>(read), last);
    EXPECT_FALSE(read->isConst());
    EXPECT_NE(read, constant);
  }
  EXPECT_EQ(Zel::value<TypeParam>(constant), last);
}

TYPED_TEST(EnumerationWrapper, HasNoOtherAttributeNotEvenToRefuse) {
  const Handle constant = defaultOf<TypeParam>(true);
  for (const Zel::AttributeId id : {0, 2, 258, -1}) {
    for (const Op::OpId op : {Op::opRead, Op::opEquals, Op::opWrite}) {
      EXPECT_EQ(
          messageOf<Zel::UnknownAttrException>([&] { attributeOp(constant, id, op, constant); }),
          "unknown attribute of " + nameOf<TypeParam>());
    }
  }
}

TYPED_TEST(EnumerationWrapper, PassesForNoOtherType) {
  EXPECT_EQ(
      messageOf<Zel::TypeException>([] { defaultOf<TypeParam>()->voidPtrIs(typeOf<unsigned>()); }),
      "argument missing or of the wrong type: " + nameOf<TypeParam>());
}

TYPED_TEST(EnumerationWrapper, IsMadeFromNoList) {
  const Handle list = Zel::arguments();
  const Zel::ZelType* const type = Zel::fwkTypeOf<TypeParam>();
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [&] { type->genericIf(static_cast<const GenericIf*>(list.ptr()), false); }),
            "operation 128 not supported on " + nameOf<TypeParam>());
}

TYPED_TEST(EnumerationWrapper, ClonesItsNumberAndFlavour) {
  const auto odd = static_cast<TypeParam>(77);
  EXPECT_EQ(Zel::value<TypeParam>(Zel::generic(odd, true)->clone()), odd);
  EXPECT_TRUE(Zel::generic(odd, true)->clone()->isConst());
  EXPECT_FALSE(Zel::generic(odd, false)->clone()->isConst());
}

TEST(EnumerationWrappers, AreMadeByTheirFactories) {
  const auto state = Unit::State_GenericIf_Is(Unit::failedExit, true);
  EXPECT_EQ(state->val(), Unit::failedExit);
  EXPECT_TRUE(state->isConst());
  EXPECT_EQ(Profile::ProfileType_GenericIf_Is(Profile::profileTypeUnit, false)->val(),
            Profile::profileTypeUnit);
  EXPECT_EQ(Unit::UnitType_GenericIf_Is(Unit::builtin, false)->val(), Unit::builtin);
  EXPECT_EQ(Unit::InputSrc_GenericIf_Is(Unit::srcCli, false)->val(), Unit::srcCli);
  EXPECT_EQ(Unit::MaintenanceOp_GenericIf_Is(Unit::maintenanceExit, false)->val(),
            Unit::maintenanceExit);
  EXPECT_EQ(Group::GroupType_GenericIf_Is(Group::groupTypeBgp, false)->val(), Group::groupTypeBgp);
}

TEST(EnumerationWrappers, TakeANewNumber) {
  const auto state = Unit::State_GenericIf_Is(Unit::init, true);
  state->valIs(Unit::active);
  EXPECT_EQ(textOf(state), "'active'");
}

} // namespace
