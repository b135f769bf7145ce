#include "HandMade.h"
#include "support/Failure.h"

#include <Zel/GenericIf>
#include <foreign/model/Product.h>
#include <model/Unit.h>

namespace Registration {

namespace {

class Descriptor : public HandMadeTest {};

TEST_F(Descriptor, FlagsTellOfEachRealChangeOnce) {
  EXPECT_EQ(type->flags(), (Zel::FlagWords{0, 0}));
  type->isValueIs(false);
  EXPECT_EQ(type->flagWrites, 0U);
  type->isValueIs(true);
  EXPECT_EQ(type->flags(), (Zel::FlagWords{0x1, 0}));
  type->isValueIs(true);
  EXPECT_EQ(type->flagWrites, 1U);
  type->isEnumTypeIs(true);
  type->isEnumTypeIs(true);
  EXPECT_EQ(type->flags(), (Zel::FlagWords{0x11, 0}));
  EXPECT_EQ(type->flagWrites, 2U);
  type->isEntityIs(true);
  type->isEntityIs(true);
  EXPECT_EQ(type->flags(), (Zel::FlagWords{0x11, 0x8000000}));
  EXPECT_EQ(type->flagWrites, 3U);
  type->hasGenericIfSupportIs(true);
  type->hasGenericIfSupportIs(true);
  EXPECT_EQ(type->flags(), (Zel::FlagWords{0x11, 0x28000000}));
  EXPECT_EQ(type->flagWrites, 4U);
  type->isValueIs(false);
  type->isEnumTypeIs(false);
  type->isEntityIs(false);
  type->hasGenericIfSupportIs(false);
  EXPECT_EQ(type->flags(), (Zel::FlagWords{0, 0}));
  EXPECT_EQ(type->flagWrites, 8U);
}

TEST_F(Descriptor, AnEnumerationHasItsNumberForAnAttribute) {
  type->isEnumTypeIs(true);
  ASSERT_EQ(type->attributeQ().size(), 1U);
  const Zel::ZelAttr& value = *type->attr("value");
  EXPECT_EQ(value.id(), 1);
  EXPECT_EQ(value.attrType(), type.ptr());
  EXPECT_EQ(value.flags(), (Zel::FlagWords{0x20001, 0x400}));
  type->isEnumTypeIs(false);
  type->isEnumTypeIs(true);
  EXPECT_EQ(type->attributeQ().size(), 1U);
}

TEST_F(Descriptor, ADescriptorTellsWhatItWasMadeWith) {
  const auto inner = Zel::makeObject<HandMade>("Chuck", Zel::Entity::_fwkType(), type.ptr(),
                                               Zel::FlagWords{0x1, 0x20000000});
  EXPECT_EQ(inner->name(), "Chuck");
  EXPECT_EQ(inner->fullName(), "Chuck"); // it is not in the tree of types
  EXPECT_EQ(inner->outerType(), type.ptr());
  EXPECT_EQ(inner->base(), Zel::Entity::_fwkType());
  EXPECT_EQ(inner->flags(), (Zel::FlagWords{0x1, 0x20000000}));
  EXPECT_TRUE(inner->isA(inner.ptr()));
  EXPECT_TRUE(inner->isA(Zel::Entity::_fwkType()));
  EXPECT_TRUE(inner->isA(Zel::PtrInterface::_fwkType()));
  EXPECT_FALSE(inner->isA(type.ptr()));
  EXPECT_FALSE(inner->isA(nullptr));
  EXPECT_EQ(inner->table(), nullptr);
  EXPECT_EQ(inner->record(), nullptr);
  EXPECT_EQ(inner->newEntity("x", nullptr), nullptr);
}

TEST_F(Descriptor, AttributesAreFoundAmongManyAndGoOneByOne) {
  const Open open(type);
  std::vector<Zel::Ptr<Zel::ZelAttr>> all;
  for (int i = 0; i < 100; ++i) {
    all.push_back(define(Zel::format("attribute%d", i).charPtr(), 1000 + i));
  }
  for (int i = 0; i < 100; ++i) {
    const Zel::ZelAttr* const wanted = all[static_cast<std::size_t>(i)].ptr();
    EXPECT_EQ(type->attr(Zel::Name(Zel::format("attribute%d", i))), wanted);
    EXPECT_EQ(type->attr(1000 + i), wanted);
  }
  EXPECT_EQ(type->attr("attribute"), nullptr);
  EXPECT_EQ(type->attr("attribute100"), nullptr);
  EXPECT_EQ(type->attr(999), nullptr);

  type->attrDel("attribute50");
  type->attrDel("noSuchAttribute");
  EXPECT_EQ(type->attributeQ().size(), 99U);
  EXPECT_EQ(type->attr("attribute50"), nullptr);
  EXPECT_EQ(type->attr(1050), nullptr);
  EXPECT_EQ(type->attr("attribute51"), all[51].ptr());
  EXPECT_EQ(type->attr("attribute49"), all[49].ptr());
}

TEST_F(Descriptor, OfTwoAttributesWithOneNameTheLaterIsFound) {
  const Open open(type);
  const auto inherited = define("speed", 258);
  const auto own = define("speed", 386);
  EXPECT_EQ(type->attr("speed"), own.ptr());
  EXPECT_EQ(type->attr(258), inherited.ptr());
  EXPECT_EQ(type->attr(386), own.ptr());
  type->attrDel("speed");
  EXPECT_TRUE(type->attributeQ().empty());
}

TEST_F(Descriptor, ACollectionThatBringsItsKeyIsMadeApartFromTheList) {
  const Zel::ZelType* const element = Foreign::Product::_fwkType();
  const Zel::FlagWords flags{0x9a20143, 0x11000400};
  const auto made = type->attrIs("product", element, element->attr("key"), nullptr, flags, 258);
  EXPECT_TRUE(type->attributeQ().empty());
  EXPECT_EQ(made->attrType(), element);
  EXPECT_EQ(made->keyAttr(), element->attr("key"));
  EXPECT_EQ(made->indexType(), nullptr);
  made->indexTypeIs(Foreign::SkuKey::_fwkType());
  made->keyAttrNameIs("key");
  made->keyTypeNameIs("Foreign::SkuKey");
  made->indexNameIs("index");
  made->indexOptionIs(7);
  made->indexFlagsIs(0x22);

  const auto copy = made->zelCopyFor(Foreign::Product::_fwkType());
  EXPECT_NE(copy, made);
  EXPECT_EQ(copy->container(), Foreign::Product::_fwkType());
  EXPECT_EQ(made->container(), type.ptr());
  for (const auto& attr : {made, copy}) {
    EXPECT_EQ(attr->name(), "product");
    EXPECT_EQ(attr->id(), 258);
    EXPECT_EQ(attr->flags(), flags);
    EXPECT_EQ(attr->introspectionFlags(), 0U);
    EXPECT_EQ(attr->attrType(), element);
    EXPECT_EQ(attr->keyAttr(), element->attr("key"));
    EXPECT_EQ(attr->indexType(), Foreign::SkuKey::_fwkType());
    EXPECT_EQ(attr->keyAttrName(), "key");
    EXPECT_EQ(attr->keyTypeName(), "Foreign::SkuKey");
    EXPECT_EQ(attr->indexName(), "index");
    EXPECT_EQ(attr->indexOption(), 7U);
    EXPECT_EQ(attr->indexFlags(), 0x22U);
  }
}

TEST_F(Descriptor, ALookByNameLeavesTheReadCounterToWhoeverLooked) {
  const Zel::ZelAttr& state = *Maintenance::Unit::Status::_fwkType()->attr("state");
  const unsigned looks = state.readCounter();
  EXPECT_EQ(Maintenance::Unit::Status::_fwkType()->attr("state"), &state);
  EXPECT_EQ(state.readCounter(), looks);
  state.zelReadInc();
  EXPECT_EQ(state.readCounter(), looks + 1);
}

TEST(BareDescriptor, OfWhatIsNoEntityMakesNone) {
  const Zel::Ptr<Zel::NboAttrLog::In> none;
  const auto made = [&](const Zel::ZelType* type) { return type->newEntity(none, {}, 1, nullptr); };
  EXPECT_FALSE(made(Maintenance::Unit::TrafficRates::_fwkType()));
  EXPECT_FALSE(made(Maintenance::Unit::_fwkType_State()));
  EXPECT_FALSE(made(Zel::makeObject<HandMade>("Plane").ptr()));
  Maintenance::Unit::_fwkType_State()->childAttrLogIs(nullptr, nullptr, nullptr);
}

TEST(BareDescriptor, MadeByHandHasNoGenericObjects) {
  const auto type = Zel::makeObject<HandMade>("Plane");
  const auto refusal = [](const auto& make) {
    return Support::messageOf<Zel::OpNotSupportedException>([&] { static_cast<void>(make()); });
  };
  EXPECT_EQ(refusal([&] { return type->genericIf(Zel::String8("text"), true); }),
            "operation 0 not supported on Plane of a const instance");
  EXPECT_EQ(refusal([&] { return type->genericIf(static_cast<const void*>(nullptr), false); }),
            "operation 0 not supported on Plane");
}

TEST(TypeTree, KeepsTheFirstTypeOfAName) {
  const auto first = Zel::makeObject<HandMade>("Drill");
  const auto second = Zel::makeObject<HandMade>("Drill");
  first->referencesLeak();
  EXPECT_EQ(Zel::ZelType::type("Testbed::Drill"), nullptr);
  const std::size_t types = Zel::ZelType::types().size();

  Zel::ZelType::typeNodeIs(first.ptr(), "Testbed::Drill");
  Zel::ZelType::typeNodeIs(second.ptr(), "Testbed::Drill");

  EXPECT_EQ(Zel::ZelType::type("Testbed::Drill"), first.ptr());
  EXPECT_EQ(Zel::ZelType::types().size(), types + 1);
  EXPECT_EQ(Zel::ZelType::types().back(), first.ptr());
  EXPECT_EQ(first->fullName(), "Testbed::Drill");
  EXPECT_EQ(second->fullName(), "Drill");
  EXPECT_EQ(Zel::ZelType::type("Testbed::Dril"), nullptr);
  EXPECT_EQ(Zel::ZelType::type(""), nullptr);
}

} // namespace

} // namespace Registration
