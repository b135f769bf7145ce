#include "GenericFixture.h"

#include "foreign/model/ProductGeneric.h"

#include <Zel/Activity>

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

class DerivedType : public testing::Test {
protected:
  const Ptr<Perishable> product = Zel::makeObject<Perishable>("milk");
  Log log;
  Listener listener{log};
  const Handle object = told(Zel::generic(product), listener);

  void deliver(Zel::AttributeId pending) {
    object->pendingAttributeIs(pending);
    object->handleNotification(nullptr);
  }
};

TEST_F(DerivedType, PassesForItsBasesToo) {
  EXPECT_EQ(object->type(), type(Perishable::_fwkType()));
  for (const Zel::ZelType* const base : {Perishable::_fwkType(), Product::_fwkType(),
                                         Zel::Entity::_fwkType(), Zel::PtrInterface::_fwkType()}) {
    EXPECT_EQ(object->voidPtrIs(type(base)), product.ptr());
  }
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { object->voidPtrIs(type(ProductDir::_fwkType())); }),
            "argument missing or of the wrong type: Perishable");
}

TEST_F(DerivedType, FindsTheAttributesOfItsBase) {
  EXPECT_EQ(object->attributeId("sku"), 386);
  EXPECT_EQ(object->attributeId("key"), 258);
  EXPECT_EQ(object->attributeId("price"), 259);
}

TEST_F(DerivedType, ReadsAndWritesTheAttributesOfItsBase) {
  Zel::writeAttribute(object, 259, 1.5);
  Zel::setMember(object, 260, Zel::Name("farm"), true);
  Zel::writeAttribute(object, 387, 9U);
  EXPECT_EQ(product->price(), 1.5);
  EXPECT_TRUE(product->supplier("farm"));
  EXPECT_EQ(product->shelfLife(), 9U);
  EXPECT_EQ(Zel::readAttribute<SkuKey>(object, 258), product->key());
  EXPECT_EQ(Zel::readAttribute<SkuKey>(object, 0), product->key()) << "the framework's key too";
  EXPECT_EQ(Zel::value<Zel::Name>(object->attributeIteratorConst(260).key()), "farm");
  EXPECT_EQ(log, (Log{"259", "260 'farm'", "387"}));
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { Zel::readAttribute(object, 392); }),
            "unknown attribute of Perishable: 392");
  EXPECT_EQ(
      messageOf<Zel::OpNotSupportedException>([&] { Zel::writeAttribute(object, 258, milk); }),
      "operation 128 not supported on key");
}

TEST_F(DerivedType, YieldsAGenericObjectOfItsBase) {
  const Handle base = dynamic_cast<Zel::GenericIfPtrInterface&>(*object).baseGenericIf();
  EXPECT_EQ(base->type(), type(Product::_fwkType()));
  EXPECT_EQ(base->voidPtrIs(type(Product::_fwkType())), static_cast<Product*>(product.ptr()));
  EXPECT_FALSE(base->isConst());
  EXPECT_EQ(Zel::readAttribute<SkuKey>(base, 258), product->key());
  EXPECT_EQ(messageOf<Zel::UnknownAttrException>([&] { Zel::readAttribute(base, 387); }),
            "unknown attribute of Product: 387");
  EXPECT_EQ(dynamic_cast<Zel::GenericIfPtrInterface&>(*base).baseGenericIf(), nullptr);
  const Handle constant = Zel::generic(product, true);
  const auto& seen = dynamic_cast<const Zel::GenericIfPtrInterface&>(*constant);
  EXPECT_TRUE(seen.baseGenericIf()->isConst());
}

TEST_F(DerivedType, DeliversTheAttributesOfItsBaseFirst) {
  deliver(-2);
  EXPECT_EQ(log, (Log{"259", "260", "387", "389", "390", "391"}));
  log.clear();
  product->zelNotifieeList().head()->zelPendingSupplier = {"farm", 1};
  deliver(260);
  EXPECT_EQ(log, Log{"260 'farm'"});
}

TEST_F(DerivedType, IsAlsoHeardOfByAGenericObjectOfItsBase) {
  Listener ofBase(log, "base ");
  const Handle base =
      told(dynamic_cast<Zel::GenericIfPtrInterface&>(*object).baseGenericIf(), ofBase);
  product->priceIs(2.5);
  product->shelfLifeIs(3);
  EXPECT_EQ(log, (Log{"259", "base 259", "387"}));
}

TEST_F(DerivedType, IsMadeFromItsOwnArguments) {
  const Handle one = made(Perishable::_fwkType(), Zel::arguments("cream"));
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(one, 386), "cream");
  EXPECT_EQ(messageOf<Zel::TypeException>([] { made(Perishable::_fwkType(), Zel::arguments()); }),
            "argument missing or of the wrong type: sku");
}

TEST(Counters, DeferTogetherInADerivedType) {
  const auto product = Zel::makeObject<Perishable>("milk");
  Log log;
  Listener listener(log);
  const Handle object = told(Zel::generic(product), listener);
  Zel::DeferredNotification deferred;
  product->soldInc(2);
  product->soldInc(3);
  deferred.run();
  EXPECT_EQ(log, Log{"391"});
}

} // namespace
