#pragma once

#include "Perishable.h"

#include <generic/Reactor.h>

/// The generic objects of products.
namespace Foreign {

class Product::GenericIf_ : public Zel::EntityGenericIf<Product> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Product>& object, bool isConst);

  void onPrice() { zelOnSingular(Attr::price); }
  void onSupplier(Zel::Name name) { zelOnMember(Attr::supplier, &name); }

protected:
  ~GenericIf_() override;
};

class Product::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Product, Product::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onPrice() override { zelForward(&GenericIf_::onPrice); }
  void onSupplier(Zel::Name name) override { zelForward(&GenericIf_::onSupplier, name); }
  void onSupplier() override { zelForwardCollection(Attr::supplier); }

protected:
  ~GenericIf_Adapter_() override;
};

class ProductDir::GenericIf_ : public Zel::EntityGenericIf<ProductDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<ProductDir>& object, bool isConst);

  void onProduct(const SkuKey& key) { zelOnMember(Attr::product, &key); }

protected:
  ~GenericIf_() override;
};

class ProductDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<ProductDir, ProductDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onProduct(const SkuKey& key) override { zelForward(&GenericIf_::onProduct, key); }
  void onProduct() override { zelForwardCollection(Attr::product); }

protected:
  ~GenericIf_Adapter_() override;
};

class Perishable::GenericIf_ : public Zel::EntityGenericIf<Perishable> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Perishable>& object, bool isConst);

  void onPrice() { zelOnSingular(Product::Attr::price); }
  void onSupplier(Zel::Name name) { zelOnMember(Product::Attr::supplier, &name); }
  void onShelfLife() { zelOnSingular(Attr::shelfLife); }
  void onBatch(Zel::String8 name) { zelOnMember(Attr::batch, &name); }
  void onRecalled() { zelOnSingular(Attr::recalled); }
  void onSold() { zelOnSingular(Attr::sold); }

protected:
  ~GenericIf_() override;
};

class Perishable::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Perishable, Perishable::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onPrice() override { zelForward(&GenericIf_::onPrice); }
  void onSupplier(Zel::Name name) override { zelForward(&GenericIf_::onSupplier, name); }
  void onSupplier() override { zelForwardCollection(Product::Attr::supplier); }
  void onShelfLife() override { zelForward(&GenericIf_::onShelfLife); }
  void onBatch(Zel::String8 name) override { zelForward(&GenericIf_::onBatch, name); }
  void onBatch() override { zelForwardCollection(Attr::batch); }
  void onRecalled() override { zelForward(&GenericIf_::onRecalled); }
  void onSold() override { zelForward(&GenericIf_::onSold); }

protected:
  ~GenericIf_Adapter_() override;
};

class PerishableDir::GenericIf_ : public Zel::EntityGenericIf<PerishableDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<PerishableDir>& object, bool isConst);

  void onPerishable(Zel::String8 sku) { zelOnMember(Attr::perishable, &sku); }

protected:
  ~GenericIf_() override;
};

class PerishableDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<PerishableDir, PerishableDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onPerishable(Zel::String8 sku) override { zelForward(&GenericIf_::onPerishable, sku); }
  void onPerishable() override { zelForwardCollection(Attr::perishable); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace Foreign
