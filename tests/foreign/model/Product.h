#pragma once

#include "Values.h"

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>

namespace Foreign {

/// Something that is stored. An entity that is known by a key: its entity name is empty.
class Product : public Zel::AttrLogEntity<Product> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Product";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Product>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  class ZelSupplier : public Zel::MapEntry<ZelSupplier, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using SupplierMap = Zel::HashMap<ZelSupplier, Zel::Name, bool>;

  struct Attr {
    static constexpr Zel::AttributeId key = 258;
    static constexpr Zel::AttributeId price = 259;
    static constexpr Zel::AttributeId supplier = 260;
  };

  explicit Product(const SkuKey& key);

  const SkuKey& key() const noexcept { return Zel::read(*this, key_); }
  const SkuKey& fwkKey() const noexcept { return Zel::read(*this, key_); }

  double price() const noexcept { return Zel::read(*this, price_); }
  void priceIs(double price);

  bool supplier(Zel::Name name) const;
  void supplierIs(Zel::Name name, bool value);
  bool supplierDel(Zel::Name name);
  bool supplierDel(SupplierMap::Iterator& at);
  void supplierDelAll();
  Zel::Ptr<ZelSupplier> newSupplier(Zel::Name name, bool value);
  void supplierNotify(Zel::Name name);
  const SupplierMap& supplierMap() const noexcept { return supplier_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  const SkuKey& zelKey() const noexcept { return key_; }
  static constexpr Zel::Ptr<Product> Product::*zelMemberNext() noexcept {
    return &Product::memberNext_;
  }

protected:
  ~Product() override;

private:
  const SkuKey key_;
  double price_ = 0.0;
  SupplierMap supplier_;
  Zel::Ptr<Product> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Product::NotifieeConst
    : public Zel::NotifieeOf<Product, Product::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onPrice();
  virtual void onSupplier(Zel::Name name);
  virtual void onSupplierzelImmediate();
  virtual void onSupplier();

  Zel::PendingKey<Zel::Name> zelPendingSupplier;
};

class Product::Notifiee : public Product::NotifieeConst {
protected:
  ~Notifiee() override;
};

/// The directory of products by key.
class ProductDir : public Zel::AttrLogEntity<ProductDir> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::ProductDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<ProductDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using ProductMap = Zel::HashMap<Product, SkuKey, Product>;

  struct Attr {
    static constexpr Zel::AttributeId product = 258;
  };

  explicit ProductDir(Zel::Name name);

  Zel::Ptr<Product> product(const SkuKey& key) const;
  Zel::Ptr<Product> newProduct(const SkuKey& key);
  Zel::ValidPtr<Product> productIs(const SkuKey& key);
  Zel::Ptr<Product> productDel(const SkuKey& key);
  Zel::Ptr<Product> productDel(ProductMap::Iterator& at);
  void productDelAll();
  void productNotify(const SkuKey& key);
  const ProductMap& productMap() const noexcept { return product_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~ProductDir() override;

private:
  ProductMap product_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class ProductDir::NotifieeConst
    : public Zel::NotifieeOf<ProductDir, ProductDir::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onProduct(const SkuKey& key);
  virtual void onProductzelImmediate();
  virtual void onProduct();

  Zel::PendingKey<SkuKey> zelPendingProduct;
};

class ProductDir::Notifiee : public ProductDir::NotifieeConst {
protected:
  ~Notifiee() override;
};

} // namespace Foreign
