#include "Recorder.h"

#include <Zel/ZelType>
#include <foreign/model/Perishable.h>

#include <gmock/gmock.h>

namespace Foreign {

namespace {

using testing::ElementsAre;

struct BaseRecorder : Product::Notifiee {
  void onPrice() override { heard.emplace_back("price"); }
  void onSupplier(Zel::Name name) override { heard.push_back(word("supplier", name)); }
  Words heard;
};

struct FullRecorder : Perishable::Notifiee {
  void onPrice() override { heard.emplace_back("price"); }
  void onShelfLife() override { heard.emplace_back("shelfLife"); }
  void onBatch(Zel::String8 name) override { heard.push_back(word("batch", name)); }
  void onRecalled() override { heard.emplace_back("recalled"); }
  void onSold() override { heard.emplace_back("sold"); }
  void onZeroReferences() override { heard.emplace_back("end"); }
  Words heard;
};

TEST(ForeignProduct, HasAnEmptyNameWhateverItsKey) {
  const auto product = Zel::makeObject<Product>(SkuKey(frozen, "peas"));
  EXPECT_TRUE(product->name().empty());
  EXPECT_EQ(product->key(), SkuKey(frozen, "peas"));
  EXPECT_EQ(product->fwkKey(), product->key());
  EXPECT_EQ(product->readCounter(), 3U);
}

TEST(ForeignProduct, KnowsWhichAttributeOfItsParentHoldsIt) {
  const auto products = Zel::makeObject<ProductDir>("products");
  const Zel::Ptr<Product> peas = products->productIs(SkuKey(frozen, "peas"));
  ASSERT_NE(peas->parentAttr(), nullptr);
  EXPECT_EQ(peas->parentAttr()->name(), "product");
  EXPECT_EQ(peas->parentAttr(), products->fwkType()->attr("product"));
  products->productDelAll();
  EXPECT_EQ(peas->parentAttr(), nullptr);
  EXPECT_EQ(peas->parentAttrId(), ProductDir::Attr::product);
}

TEST(ForeignProduct, KnowsAnAttributeThatItsParentHasFromABase) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  const auto part = Zel::makeObject<Product>(SkuKey());
  part->parentIs(milk);
  for (const auto& [id, name] : {std::pair{Product::Attr::supplier, "supplier"},
                                 std::pair{Perishable::Attr::batch, "batch"}}) {
    part->parentAttrIdIs(id);
    ASSERT_NE(part->parentAttr(), nullptr);
    EXPECT_EQ(part->parentAttr()->name(), name);
    EXPECT_EQ(part->parentAttr()->container(), milk->fwkType());
  }
  part->parentAttrIdIs(999);
  EXPECT_EQ(part->parentAttr(), nullptr);
}

TEST(ForeignProduct, ASetKeyedByNameHoldsFalseAsWellAsTrue) {
  const auto product = Zel::makeObject<Product>(SkuKey());
  const auto recorder = listen<BaseRecorder>(product);
  product->supplierIs("Kent", false);
  product->supplierIs("Kent", false);
  product->supplierIs("Kent", true);
  EXPECT_TRUE(product->supplierDel("Kent"));
  EXPECT_FALSE(product->supplierDel("Kent"));
  EXPECT_THAT(recorder->heard, ElementsAre("supplier Kent", "supplier Kent", "supplier Kent"));
  EXPECT_EQ(product->versionCounter(), 3U);
}

TEST(ForeignPerishable, MakesTheKeyOfItsBaseFromItsOwn) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  EXPECT_EQ(milk->sku(), "milk");
  EXPECT_EQ(milk->key(), SkuKey(chilled, "milk"));
  EXPECT_TRUE(milk->name().empty());
}

TEST(ForeignPerishable, StoresAnyShelfLife) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  EXPECT_EQ(milk->minShelfLife(), 3U);
  milk->shelfLifeIs(1);
  EXPECT_EQ(milk->shelfLife(), 1U);
  milk->shelfLifeIs(100000);
  EXPECT_EQ(milk->shelfLife(), 100000U);
}

TEST(ForeignPerishable, TellsANotifieeOfTheBaseOnlyWhatTheBaseHas) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  const auto base = listen<BaseRecorder>(milk);
  const auto full = listen<FullRecorder>(milk);
  EXPECT_EQ(milk->zelNotifieeList().count(), 2U);

  milk->shelfLifeIs(7);
  milk->priceIs(1.25);
  milk->batchIs("b1", 12);
  milk->recalledIs(true);
  milk->soldInc(2);
  milk->soldIs(0);

  EXPECT_THAT(base->heard, ElementsAre("price"));
  EXPECT_THAT(full->heard,
              ElementsAre("shelfLife", "price", "batch b1", "recalled", "sold", "sold"));
  EXPECT_EQ(milk->versionCounter(), 5U);
}

TEST(ForeignPerishable, ItsNotifieeTakesABaseObjectForNoNotifier) {
  const auto product = Zel::makeObject<Product>(SkuKey());
  const auto recorder = listen<FullRecorder>(product);
  EXPECT_EQ(recorder->notifier(), nullptr);
  EXPECT_EQ(product->zelNotifieeList().count(), 0U);
  EXPECT_EQ(product->references(), 1U);
}

TEST(ForeignPerishable, ItsNotifieeMovesBetweenObjectsOfItsType) {
  const auto milk = Zel::makeObject<Perishable>("milk");
  const auto cream = Zel::makeObject<Perishable>("cream");
  const auto recorder = listen<FullRecorder>(milk);
  recorder->notifierIs(Zel::Ptr<const Zel::PtrInterface>(cream));
  milk->shelfLifeIs(1);
  EXPECT_TRUE(recorder->heard.empty());
  cream->shelfLifeIs(1);
  EXPECT_THAT(recorder->heard, ElementsAre("shelfLife"));
  EXPECT_EQ(milk->references(), 1U);
  EXPECT_EQ(cream->references(), 2U);
}

TEST(ForeignPerishable, TellsWeakNotifieesOfItsEnd) {
  auto milk = Zel::makeObject<Perishable>("milk");
  const auto recorder = listen<FullRecorder>(milk);
  recorder->isWeakReferenceIs(true);
  milk = nullptr;
  EXPECT_THAT(recorder->heard, ElementsAre("end"));
  EXPECT_EQ(recorder->notifier(), nullptr);
}

struct DirRecorder : PerishableDir::Notifiee {
  void onPerishable(Zel::String8 sku) override {
    heard.push_back(word(notifier()->perishable(sku) ? "came" : "went", sku));
  }
  Words heard;
};

TEST(ForeignPerishableDir, KeepsMembersByATextOfTheirs) {
  const auto dir = Zel::makeObject<PerishableDir>("dir");
  const auto recorder = listen<DirRecorder>(dir);
  const auto milk = dir->perishableIs("milk");
  EXPECT_EQ(dir->perishableIs("milk"), milk);
  EXPECT_EQ(milk->parent(), dir);
  EXPECT_EQ(milk->parentAttrId(), 258);
  EXPECT_EQ(dir->perishableDel("milk"), milk);
  EXPECT_EQ(milk->parent(), nullptr);
  EXPECT_THAT(recorder->heard, ElementsAre("came milk", "went milk"));
  EXPECT_EQ(dir->versionCounter(), 3U);
}

TEST(ForeignPerishableDir, NewRefusesAKeyThatIsThereAndCountsNothing) {
  const auto dir = Zel::makeObject<PerishableDir>("dir");
  const auto milk = dir->newPerishable("milk");
  EXPECT_EQ(dir->versionCounter(), 0U);
  EXPECT_THROW(dir->newPerishable("milk"), Zel::NameInUseException);
  EXPECT_EQ(dir->perishableMap().count(), 1U);
  EXPECT_EQ(dir->perishable("milk"), milk);
}

TEST(ForeignProductDir, GoesDownWithItsMembersTellingOfEach) {
  struct Recorder : ProductDir::Notifiee {
    void onProduct(const SkuKey& key) override { heard.push_back(word("product", key.sku())); }
    Words heard;
  };
  auto dir = Zel::makeObject<ProductDir>("dir");
  const auto kept = Zel::Ptr<Product>(dir->productIs(SkuKey(frozen, "peas")));
  dir->productIs(SkuKey(frozen, "ice"));
  Words order;
  for (ProductDir::ProductMap::IteratorConst at(dir->productMap()); at; at.advance()) {
    order.push_back(word("product", at->key().sku()));
  }
  const auto recorder = listen<Recorder>(dir);
  recorder->isWeakReferenceIs(true);
  dir = nullptr;
  EXPECT_EQ(recorder->heard, order);
  EXPECT_EQ(kept->parent(), nullptr);
  EXPECT_EQ(kept->references(), 1U);
}

} // namespace

} // namespace Foreign
