#include "Product.h"

namespace Foreign {

namespace {

using Callbacks = Product::NotifieeConst;
using Row = Zel::Rows<Product>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Product::key>(Product::Attr::key, "key"),
    Row::singular<&Product::price, &Product::priceIs, Callbacks, &Callbacks::onPrice>(
        Product::Attr::price, "price"),
    Row::Collection<Product::SupplierMap, &Product::supplierMap>::keyed<
        &Product::supplier, &Product::supplierIs, &Product::supplierDel, &Product::supplierDelAll,
        &Product::supplierNotify, Callbacks, &Callbacks::onSupplier, &Callbacks::onSupplier,
        &Callbacks::zelPendingSupplier>(Product::Attr::supplier, "supplier"),
    Row::frameworkKey<&Product::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Product, SkuKey>(rows, {.hasFactory = false});

using DirCallbacks = ProductDir::NotifieeConst;

constexpr Zel::AttrRow dirRows[] = {
    Zel::Rows<ProductDir>::Collection<ProductDir::ProductMap, &ProductDir::productMap>::Of<>::
        instantiating<&ProductDir::product, &ProductDir::productIs, &ProductDir::productDel,
                      &ProductDir::productDelAll, &ProductDir::productNotify, DirCallbacks,
                      &DirCallbacks::onProduct, &DirCallbacks::onProduct,
                      &DirCallbacks::zelPendingProduct>(ProductDir::Attr::product, "product"),
};
static_assert(Zel::rowsAreInOrder(dirRows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable dirTable = Zel::tableOf<ProductDir, Zel::Name>(dirRows);

} // namespace

const Zel::TypeTable& Product::zelTable() { return table; }

Product::Product(const SkuKey& key) : AttrLogEntity(Zel::Name()), key_(key) {}
Product::~Product() = default;

void Product::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Product::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

void Product::priceIs(double price) {
  Zel::singularIs<&NotifieeConst::onPrice>(*this, Attr::price, price_, price);
}

bool Product::supplier(Zel::Name name) const { return Zel::keyedRead(*this, supplier_, name); }

void Product::supplierIs(Zel::Name name, bool value) {
  Zel::keyedIs<Attr::supplier, &Product::newSupplier, &Product::supplierNotify>(*this, supplier_,
                                                                                name, value);
}

bool Product::supplierDel(Zel::Name name) {
  return Zel::keyedDel<Attr::supplier, &Product::supplierNotify>(*this, supplier_, name);
}

bool Product::supplierDel(SupplierMap::Iterator& at) {
  return Zel::keyedDel<Attr::supplier, &Product::supplierNotify>(*this, supplier_, at);
}

void Product::supplierDelAll() {
  Zel::collectionDelAll(*this, supplier_, [this](SupplierMap::Iterator& at) { supplierDel(at); });
}

Zel::Ptr<Product::ZelSupplier> Product::newSupplier(Zel::Name name, bool value) {
  return Zel::keyedNew<Attr::supplier>(*this, supplier_, name, value);
}

void Product::supplierNotify(Zel::Name name) {
  Zel::notifyOwner(*this, Attr::supplier,
                   [&](NotifieeConst& notifiee) { notifiee.onSupplier(name); });
}

Product::NotifieeConst::~NotifieeConst() = default;
void Product::NotifieeConst::onPrice() {}
void Product::NotifieeConst::onSupplier(Zel::Name /*name*/) {}
void Product::NotifieeConst::onSupplierzelImmediate() {}
void Product::NotifieeConst::onSupplier() {}
Product::Notifiee::~Notifiee() = default;

const Zel::TypeTable& ProductDir::zelTable() { return dirTable; }

ProductDir::ProductDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

ProductDir::~ProductDir() {
  Zel::directoryTearDown(notifiees_, [this] { productDelAll(); });
}

void ProductDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 ProductDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(dirTable, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<Product> ProductDir::product(const SkuKey& key) const {
  return Zel::memberRead(*this, product_, key);
}

Zel::Ptr<Product> ProductDir::newProduct(const SkuKey& key) {
  return Zel::memberNew(*this, Attr::product, product_, Zel::makeObject<Product>(key));
}

Zel::ValidPtr<Product> ProductDir::productIs(const SkuKey& key) {
  return Zel::memberIs<&ProductDir::productNotify>(*this, product_, key,
                                                   [&] { return newProduct(key); });
}

Zel::Ptr<Product> ProductDir::productDel(const SkuKey& key) {
  return Zel::memberDel<Attr::product, &ProductDir::productNotify>(*this, product_, key);
}

Zel::Ptr<Product> ProductDir::productDel(ProductMap::Iterator& at) {
  return Zel::memberDel<Attr::product, &ProductDir::productNotify>(*this, product_, at);
}

void ProductDir::productDelAll() {
  Zel::collectionDelAll(*this, product_, [this](ProductMap::Iterator& at) { productDel(at); });
}

void ProductDir::productNotify(const SkuKey& key) {
  Zel::notifyOwner(*this, Attr::product, [&](NotifieeConst& notifiee) { notifiee.onProduct(key); });
}

ProductDir::NotifieeConst::~NotifieeConst() = default;
void ProductDir::NotifieeConst::onProduct(const SkuKey& /*key*/) {}
void ProductDir::NotifieeConst::onProductzelImmediate() {}
void ProductDir::NotifieeConst::onProduct() {}
ProductDir::Notifiee::~Notifiee() = default;

} // namespace Foreign
