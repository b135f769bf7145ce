#include "Descriptors.h"
#include "GenericSide.h"

namespace Conformance {

namespace {

using Support::messageOf;
using Support::rangeFailure;

/// Generic objects of all types that are shared.
class GenericObjectType : public testing::TestWithParam<ExpectedDescriptor> {
protected:
  const ExpectedDescriptor& expected() const { return GetParam(); }
  const Zel::ZelType& type() const { return *Zel::ZelType::type(expected().name); }
  const Zel::TypeTable& table() const { return *type().table(); }
  std::string shortName() const { return std::string(type().name().view()); }

  std::vector<std::optional<AnyValue>> arguments() const {
    std::vector<std::optional<AnyValue>> all;
    for (const Zel::ValueRecord* const record : table().constructor.arguments) {
      all.emplace_back(samplesOf(*record)[1]);
    }
    return all;
  }
  Generic fromList(const std::vector<std::optional<AnyValue>>& list) const {
    return type().genericIf(listOf(list).ptr(), true);
  }
  /// A new instance, whether anybody may make one or not.
  Zel::Ptr<Zel::PtrInterface> make() const {
    const auto all = arguments();
    std::vector<const void*> addresses;
    for (const auto& argument : all) {
      addresses.push_back(argument->at());
    }
    return table().constructor.object(addresses.data());
  }
  static Zel::Ptr<const Zel::ZelType> as(const Zel::ZelType* wanted) {
    return Zel::Ptr<const Zel::ZelType>(wanted);
  }

  const Zel::Ptr<Zel::PtrInterface> object = make();
  const Generic generic = type().genericIf(object.ptr(), false);
};

TEST_P(GenericObjectType, IsMadeFromAListOfItsArgumentsIfAnybodyMayMakeOne) {
  if (!expected().madeByList) {
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>([&] { fromList(arguments()); }),
              "operation 128 not supported on " + shortName());
    return;
  }
  const Generic made = fromList(arguments());
  EXPECT_FALSE(made->isConst());
  EXPECT_EQ(made->type().ptr(), &type());
  EXPECT_NE(made->voidPtrIs(as(&type())), nullptr);
  const auto all = arguments();
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Zel::AttributeId id = made->attributeId(type().constructorArgNameQ()[i]);
    EXPECT_EQ(unpack(made->attributeOp({id, Op::opRead}, nullptr, nullptr), all[i]->record()),
              *all[i]);
  }
}

TEST_P(GenericObjectType, TakesEachArgumentAndNoMore) {
  if (!expected().madeByList) {
    EXPECT_FALSE(table().hasFactory);
    return;
  }
  const auto all = arguments();
  for (std::size_t i = 0; i < all.size(); ++i) {
    const std::string message =
        "argument missing or of the wrong type: " + std::string(expected().arguments[i].name);
    std::vector<std::optional<AnyValue>> tooFew(all.begin(), all.begin() + static_cast<int>(i));
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { fromList(tooFew); }), message);
    auto withNull = all;
    withNull[i].reset();
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { fromList(withNull); }), message);
    // No list's element is of this type.
    auto wrong = all;
    wrong[i] = AnyValue::of(true);
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { fromList(wrong); }),
              "argument missing or of the wrong type: bool");
  }
  auto tooMany = all;
  tooMany.emplace_back(AnyValue::of(true));
  EXPECT_EQ(messageOf<Zel::UnknownArgException>([&] { fromList(tooMany); }),
            "too many arguments: " + shortName());
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { type().genericIf(pack(AnyValue::of(true)).ptr(), false); }),
            "argument missing or of the wrong type: Zel::GenericIf::List_");
}

TEST_P(GenericObjectType, StandsForTheObjectAndHoldsIt) {
  EXPECT_EQ(object->references(), 2U);
  const Generic second = type().genericIf(object.ptr(), true);
  EXPECT_EQ(object->references(), 3U);
  EXPECT_EQ(object->fwkType(), &type());
  EXPECT_EQ(second->type().ptr(), &type());
  EXPECT_TRUE(second->isConst());
  EXPECT_FALSE(generic->isConst());
  EXPECT_EQ(Zel::PtrInterface::_fwkType()->genericIf(object.ptr(), false)->type().ptr(), &type());
}

TEST_P(GenericObjectType, IsSeenAsItsBasesToo) {
  for (const Zel::ZelType* const wanted : Zel::ZelType::types()) {
    SCOPED_TRACE(wanted->fullName());
    bool isBase = false;
    for (const Zel::ZelType* base = &type(); base != nullptr; base = base->base()) {
      isBase = isBase || base == wanted;
    }
    if (isBase) {
      EXPECT_EQ(generic->voidPtrIs(as(wanted)), object.ptr());
    } else {
      EXPECT_EQ(messageOf<Zel::TypeException>([&] { generic->voidPtrIs(as(wanted)); }),
                "argument missing or of the wrong type: " + shortName());
    }
  }
  EXPECT_EQ(generic->voidPtrIs(as(Zel::PtrInterface::_fwkType())), object.ptr());
}

TEST_P(GenericObjectType, IsClonedOntoTheSameObject) {
  for (const Generic& made : {generic, type().genericIf(object.ptr(), true)}) {
    const Generic copy = made->clone();
    EXPECT_NE(copy, made);
    EXPECT_EQ(copy->isConst(), made->isConst());
    EXPECT_EQ(copy->type().ptr(), &type());
    EXPECT_EQ(copy->voidPtrIs(as(&type())), object.ptr());
    const Zel::GenericIf& constant = *made;
    EXPECT_EQ(constant.clone()->voidPtrIs(as(&type())), object.ptr());
  }
  EXPECT_EQ(object->references(), 2U);
}

TEST_P(GenericObjectType, KnowsNoOtherAttributes) {
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { generic->attributeId("noSuchAttribute"); }),
            "unknown attribute of " + shortName() + ": noSuchAttribute");
  EXPECT_EQ(generic->attributeString(100000), "unknown");
  for (const Op::OpId id : {Op::opRead, Op::opWrite, Op::opEquals}) {
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] {
                generic->attributeOp({100000, id}, nullptr, nullptr);
              }),
              "unknown attribute of " + shortName() + ": 100000");
  }
  const Generic sealed = type().genericIf(object.ptr(), true);
  for (const Op::OpId id : {Op::opWrite, Op::opDelete, static_cast<Op::OpId>(1000)}) {
    EXPECT_EQ(messageOf<Zel::ConstException>([&] {
                sealed->attributeOp({100000, id}, nullptr, nullptr);
              }),
              "attempting to modify a const instance");
  }
}

TEST_P(GenericObjectType, ServesTheFrameworksAttributesOfAnEntity) {
  const auto* const entity = dynamic_cast<const Zel::Entity*>(object.ptr());
  ASSERT_EQ(entity != nullptr, type().isEntity());
  if (entity == nullptr) {
    EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] {
                generic->attributeOp({154, Op::opRead}, nullptr, nullptr);
              }),
              "unknown attribute of " + shortName() + ": 154");
    return;
  }
  EXPECT_EQ(generic->attributeId("zelHasAttrLogInterface"), 154);
  EXPECT_EQ(
      unpack(generic->attributeOp({154, Op::opRead}, nullptr, nullptr), Zel::valueRecord<bool>),
      AnyValue::of(entity->zelHasAttrLogInterface()));
  EXPECT_EQ(unpack(generic->attributeOp({130, Op::opRead}, nullptr, nullptr),
                   Zel::valueRecord<Zel::Name>),
            AnyValue::of(entity->name()));
  for (const Zel::AttributeId id : {154, 130}) {
    const std::string name(type().attr(id)->name().view());
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>([&] {
                generic->attributeOp({id, Op::opWrite}, nullptr, nullptr);
              }),
              "operation 128 not supported on " + name);
    EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] {
                generic->attributeOp({id, Op::opRead}, generic, nullptr);
              }),
              "attribute takes no index: " + name);
  }
}

TEST_P(GenericObjectType, OfNoObjectIsThereButHasNothingToOffer) {
  // An object of a type that no type under test derives from.
  const auto other = Zel::makeObject<Zel::GenericIf::List_>();
  for (Zel::PtrInterface* const none :
       {static_cast<Zel::PtrInterface*>(nullptr), static_cast<Zel::PtrInterface*>(other.ptr())}) {
    const Generic made = type().genericIf_(none, false);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->type().ptr(), &type());
    EXPECT_EQ(made->voidPtrIs(as(&type())), nullptr);
    EXPECT_EQ(made->clone()->voidPtrIs(as(&type())), nullptr);
    EXPECT_EQ(made->strRep(), "null");
    const Zel::AttrRow& row = table().rows.front();
    EXPECT_EQ(messageOf<Zel::InternalException>([&] {
                made->attributeOp({row.id, Op::opRead}, nullptr, nullptr);
              }),
              "generic object of no object");
  }
}

TEST_P(GenericObjectType, HasAReferenceForAText) {
  EXPECT_EQ(type().genericIf(Zel::String8("null"), true)->voidPtrIs(as(&type())), nullptr);
  EXPECT_TRUE(type().genericIf(Zel::String8("null"), true)->isConst());
  // No root leads to the object: its text can be told from all others, but not read.
  const Zel::String8 text = generic->strRep();
  EXPECT_EQ(text.view(), "object(" + std::string(expected().name) + ")");
  EXPECT_NE(rangeFailure([&] { type().genericIf(text, false); }), "");
  EXPECT_NE(rangeFailure([&] { type().genericIf(Zel::String8("'/no/such/root'"), false); }), "");
}

TEST_P(GenericObjectType, IsNotMadeFromAnAddress) {
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                [&] { type().genericIf(static_cast<const void*>(nullptr), false); }),
            "operation 0 not supported on " + shortName());
}

std::vector<ExpectedDescriptor> sharedTypes() {
  std::vector<ExpectedDescriptor> some;
  for (const ExpectedDescriptor& type : expectedDescriptors()) {
    if (!type.base.empty()) {
      some.push_back(type);
    }
  }
  return some;
}

std::string typeName(const testing::TestParamInfo<ExpectedDescriptor>& type) {
  std::string name(type.param.name);
  std::erase(name, ':');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Types, GenericObjectType, testing::ValuesIn(sharedTypes()), typeName);

} // namespace

} // namespace Conformance
