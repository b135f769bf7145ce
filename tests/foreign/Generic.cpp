#include <foreign/model/OrderGeneric.h>
#include <foreign/model/ProductGeneric.h>
#include <foreign/model/RackGeneric.h>
#include <foreign/model/TourGeneric.h>

#include <Zel/Activity>
#include <generic/Client.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Foreign {

namespace {

using testing::ElementsAre;

/// Writes down what a generic object hears.
struct Hearer : Zel::GenericIfEntity::Listener {
  void onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId id) override {
    heard.push_back(std::to_string(id));
  }
  void onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId id,
                   const Zel::Ptr<const Zel::GenericIf>& key) override {
    heard.push_back(std::to_string(id) + " " + std::string(key->strRep().view()));
  }
  std::vector<std::string> heard;
};

template <class T>
Zel::Ptr<typename T::GenericIf_> genericOf(const Zel::Ptr<T>& object) {
  return Zel::ptrCast<typename T::GenericIf_>(Zel::generic(object, false));
}

TEST(ForeignGeneric, KnowsItsObjectByType) {
  const auto rack = Zel::makeObject<Rack>("north");
  const Zel::Ptr<Rack::GenericIf_> generic = genericOf(rack);
  ASSERT_TRUE(generic);
  EXPECT_EQ(generic->obj(), rack.ptr());
  EXPECT_EQ(rack->zelNotifieeList().count(), 1U);
  EXPECT_EQ(rack->references(), 2U); // the generic object's; its adapter holds none
}

TEST(ForeignGeneric, OfAnObjectThatIsNoEntityMovesToAnother) {
  const auto tour = Zel::makeObject<Tour>(TourKey(frozen, 1));
  const auto other = Zel::makeObject<Tour>(TourKey(frozen, 2));
  const Zel::Ptr<Tour::GenericIf_> generic = genericOf(tour);
  EXPECT_EQ(tour->zelNotifieeList().count(), 0U);
  generic->objIs(other.ptr());
  EXPECT_EQ(generic->obj(), other.ptr());
  EXPECT_EQ(Zel::readAttribute<TourKey>(generic, Tour::Attr::key), TourKey(frozen, 2));
  EXPECT_EQ(tour->references(), 1U);
  generic->objIs(nullptr);
  EXPECT_EQ(other->references(), 1U);
}

TEST(ForeignGeneric, OfADerivedTypeHearsWhatTheBaseHasToo) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  const auto generic = genericOf(milk);
  Hearer hearer;
  generic->listenerIs(&hearer);

  milk->shelfLifeIs(7);
  milk->priceIs(1.25);
  milk->supplierIs("Kent", true);
  milk->batchIs("b1", 12);
  milk->recalledIs(true);
  milk->soldInc(2);

  EXPECT_THAT(hearer.heard, ElementsAre("387", "259", "260 'Kent'", "389 'b1'", "390", "391"));
}

TEST(ForeignGeneric, OfTheBaseHearsOnlyWhatTheBaseHas) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  const auto generic =
      Zel::ptrCast<Product::GenericIf_>(Product::_fwkType()->genericIf_(milk.ptr(), false));
  ASSERT_TRUE(generic);
  Hearer hearer;
  generic->listenerIs(&hearer);

  milk->shelfLifeIs(7);
  milk->priceIs(1.25);

  EXPECT_THAT(hearer.heard, ElementsAre("259"));
  EXPECT_EQ(generic->obj(), milk.ptr());
  EXPECT_EQ(generic->type().ptr(), Product::_fwkType());
}

TEST(ForeignGeneric, OfADerivedTypeDeliversTheBasesAttributesFirst) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  const auto generic = genericOf(milk);
  Hearer hearer;
  generic->listenerIs(&hearer);

  generic->pendingAttributeIs(-2);
  generic->handleNotification(nullptr);
  EXPECT_THAT(hearer.heard, ElementsAre("259", "260", "387", "389", "390", "391"));

  hearer.heard.clear();
  generic->pendingAttributeIs(-1); // no member change is waiting
  generic->handleNotification(nullptr);
  EXPECT_THAT(hearer.heard, ElementsAre("259", "387", "390", "391"));
}

TEST(ForeignGeneric, IsToldOfManyChangesAtOnceByAScheduler) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  const auto generic = genericOf(milk);
  Hearer hearer;
  generic->listenerIs(&hearer);
  Zel::DeferredNotification deferred;

  milk->supplierIs("Kent", true);
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_THAT(hearer.heard, ElementsAre("260 'Kent'"));

  hearer.heard.clear();
  milk->batchIs("b1", 1);
  milk->batchIs("b2", 2);
  EXPECT_TRUE(hearer.heard.empty());
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_THAT(hearer.heard, ElementsAre("389"));
  EXPECT_EQ(deferred.waiting(), 0U);
}

TEST(ForeignGeneric, ReachesVirtualMutatorsThatADerivedClassIntercepts) {
  struct Guarded : Carrier {
    explicit Guarded(Zel::Name name) : Carrier(std::move(name)) {}
    void idleIs(bool wanted) override { asked.push_back(wanted); }
    std::vector<bool> asked;
  };
  const auto carrier = Zel::makeObject<Guarded>("fork");
  const auto generic = Carrier::_fwkType()->genericIf(carrier.ptr(), false);
  Zel::writeAttribute(generic, Carrier::Attr::idle, false);
  EXPECT_THAT(carrier->asked, ElementsAre(false));
  EXPECT_TRUE(carrier->idle());
}

TEST(ForeignGeneric, WrapsEnumerationsByTheirOwnFactory) {
  const auto zone = Zone_GenericIf_Is(hazardous, true);
  EXPECT_EQ(zone->val(), hazardous);
  EXPECT_TRUE(zone->isConst());
  EXPECT_TRUE(zone->hasNotificationActive());
  zone->valIs(frozen);
  EXPECT_EQ(zone->strRep(), "'frozen'");
  EXPECT_EQ(Urgency_GenericIf_Is(express, false)->strRep(), "'express'");
}

TEST(ForeignGeneric, BuildsAWholeTreeWithoutItsTypes) {
  const auto orders = Zel::ZelType::type("Foreign::OrderDir")
                          ->genericIf(Zel::arguments(Zel::Name("orders")).ptr(), false);
  const auto order =
      Zel::createMember(orders, orders->attributeId("order"), Zel::Name("o1"), express);
  Zel::setMember(order, order->attributeId("item"), Zel::String8("peas"), 3U);

  EXPECT_EQ(Zel::count(orders, OrderDir::Attr::order), 1U);
  EXPECT_TRUE(Zel::exists(orders, OrderDir::Attr::order, Zel::Name("o1")));
  EXPECT_EQ(Zel::readAttribute<Urgency>(order, Order::Attr::urgency), express);
  EXPECT_EQ(Zel::readMember<unsigned>(order, Order::Attr::item, Zel::String8("peas")), 3U);
  Zel::createMember(orders, OrderDir::Attr::order, Zel::Name("o1"), routine);
  EXPECT_EQ(Zel::readAttribute<Urgency>(order, Order::Attr::urgency), routine);
  EXPECT_TRUE(Zel::deleteMember(orders, OrderDir::Attr::order, Zel::Name("o1")));
  EXPECT_EQ(Zel::count(orders, OrderDir::Attr::order), 0U);
}

} // namespace

} // namespace Foreign
