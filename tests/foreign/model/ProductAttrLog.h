#pragma once

#include "Perishable.h"
#include "Product.h"

#include <attrlog/AdapterOf.h>

namespace Foreign {

class Product::ZelNboAttrLogSa : public Zel::AdapterOf<Product> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onPrice() { zelOnSingular(Attr::price); }
  virtual void onSupplier(Zel::Name key) { zelOnKey(Attr::supplier, &key); }

  void zelHandleSupplierSerializeSing(Zel::Name key, bool value, bool deleted) {
    zelSerializeSing(Attr::supplier, &key, &value, deleted);
  }
  bool zelHandleSupplierSerializeColl() { return zelSerializeColl(Attr::supplier); }

protected:
  ~ZelNboAttrLogSa() override;
};

class Product::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_ : public Zel::AdapterNotifiee<Product> {
public:
  void onPrice() override { zelForward(&ZelNboAttrLogSa::onPrice); }
  using Product::Notifiee::onSupplier;
  void onSupplier(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onSupplier, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class Product::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelIsPriceDirtyIs(bool dirty) noexcept { is(Attr::price, dirty); }
    void zelSupplierHasSyncedIs(bool synced) noexcept { is(Attr::supplier, synced); }
  };
  class ZelZelIsSupplierDirty : public Zel::MapEntry<ZelZelIsSupplierDirty, Zel::Name, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsSupplierDirtyMap = Zel::HashMap<ZelZelIsSupplierDirty, Zel::Name, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsSupplierDirtyIs(Zel::Name key, bool dirty) { zelIsSupplierDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsSupplierDirty> newZelIsSupplierDirty(Zel::Name key, bool dirty) {
    return zelIsSupplierDirty_.add(key, dirty);
  }
  bool zelIsSupplierDirtyDel(Zel::Name key) { return zelIsSupplierDirty_.del(key); }
  bool zelIsSupplierDirtyDel(ZelIsSupplierDirtyMap::Iterator& at) {
    return zelIsSupplierDirty_.del(at);
  }
  const ZelIsSupplierDirtyMap& zelIsSupplierDirtyMap() const noexcept {
    return zelIsSupplierDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsSupplierDirtyMap> zelIsSupplierDirty_{*this, Attr::supplier};
};

class ProductDir::ZelNboAttrLogSa : public Zel::AdapterOf<ProductDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onProduct(const SkuKey& key) { zelOnKey(Attr::product, &key); }

  void zelHandleProductSerializeSing(const SkuKey& key, const Zel::Ptr<Product>& child) {
    zelSerializeChild(Attr::product, &key, child.ptr());
  }
  bool zelHandleProductSerializeColl() { return zelSerializeColl(Attr::product); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  productNboAttrLogAdapter(const Zel::Ptr<const Product>& child) const {
    return zelChildAdapter(const_cast<Product*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  productNboAttrLogAdapter(const Zel::Ptr<const Product>& child) {
    return zelChildAdapter(const_cast<Product*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  productNboAttrLogAdapterIs(Zel_BitSet flags, const Zel::Ptr<Product>& child, unsigned option,
                             const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/,
                             Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::product, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  productNboAttrLogAdapterDel(const Zel::Ptr<Product>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class ProductDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<ProductDir> {
public:
  using ProductDir::Notifiee::onProduct;
  void onProduct(const SkuKey& key) override { zelForward(&ZelNboAttrLogSa::onProduct, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class ProductDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelProductHasSyncedIs(bool synced) noexcept { is(Attr::product, synced); }
  };
  class ZelZelIsProductDirty : public Zel::MapEntry<ZelZelIsProductDirty, SkuKey, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsProductDirtyMap = Zel::HashMap<ZelZelIsProductDirty, SkuKey, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsProductDirtyIs(const SkuKey& key, bool dirty) { zelIsProductDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsProductDirty> newZelIsProductDirty(const SkuKey& key, bool dirty) {
    return zelIsProductDirty_.add(key, dirty);
  }
  bool zelIsProductDirtyDel(const SkuKey& key) { return zelIsProductDirty_.del(key); }
  bool zelIsProductDirtyDel(ZelIsProductDirtyMap::Iterator& at) {
    return zelIsProductDirty_.del(at);
  }
  const ZelIsProductDirtyMap& zelIsProductDirtyMap() const noexcept {
    return zelIsProductDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsProductDirtyMap> zelIsProductDirty_{*this, Attr::product};
};

class Perishable::ZelNboAttrLogSa : public Zel::AdapterOf<Perishable, Product::ZelNboAttrLogSa> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onShelfLife() { zelOnSingular(Attr::shelfLife); }
  virtual void onBatch(Zel::String8 key) { zelOnKey(Attr::batch, &key); }
  virtual void onRecalled() { zelOnSingular(Attr::recalled); }
  virtual void onSold() { zelOnSingular(Attr::sold); }

  void zelHandleBatchSerializeSing(Zel::String8 key, unsigned value, bool deleted) {
    zelSerializeSing(Attr::batch, &key, &value, deleted);
  }
  bool zelHandleBatchSerializeColl() { return zelSerializeColl(Attr::batch); }

protected:
  ~ZelNboAttrLogSa() override;
};

class Perishable::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<Perishable> {
public:
  void onPrice() override { zelForward(&ZelNboAttrLogSa::onPrice); }
  using Perishable::Notifiee::onSupplier;
  void onSupplier(Zel::Name key) override { zelForward(&ZelNboAttrLogSa::onSupplier, key); }
  void onShelfLife() override { zelForward(&ZelNboAttrLogSa::onShelfLife); }
  using Perishable::Notifiee::onBatch;
  void onBatch(Zel::String8 key) override { zelForward(&ZelNboAttrLogSa::onBatch, key); }
  void onRecalled() override { zelForward(&ZelNboAttrLogSa::onRecalled); }
  void onSold() override { zelForward(&ZelNboAttrLogSa::onSold); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class Perishable::ZelNboAttrLogSa::FlowOut : public Product::ZelNboAttrLogSa::FlowOut {
public:
  class ZelDirtyBitSet1 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(1); }
    void zelIsShelfLifeDirtyIs(bool dirty) noexcept { is(Attr::shelfLife, dirty); }
    void zelBatchHasSyncedIs(bool synced) noexcept { is(Attr::batch, synced); }
    void zelIsRecalledDirtyIs(bool dirty) noexcept { is(Attr::recalled, dirty); }
    void zelIsSoldDirtyIs(bool dirty) noexcept { is(Attr::sold, dirty); }
  };
  class ZelZelIsBatchDirty : public Zel::MapEntry<ZelZelIsBatchDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsBatchDirtyMap = Zel::HashMap<ZelZelIsBatchDirty, Zel::String8, bool>;

  using Product::ZelNboAttrLogSa::FlowOut::FlowOut;

  ZelDirtyBitSet1 zelDirtyBitSet1() noexcept { return ZelDirtyBitSet1(*this); }

  void zelIsBatchDirtyIs(Zel::String8 key, bool dirty) { zelIsBatchDirty_.is(key, dirty); }
  Zel::Ptr<ZelZelIsBatchDirty> newZelIsBatchDirty(Zel::String8 key, bool dirty) {
    return zelIsBatchDirty_.add(key, dirty);
  }
  bool zelIsBatchDirtyDel(Zel::String8 key) { return zelIsBatchDirty_.del(key); }
  bool zelIsBatchDirtyDel(ZelIsBatchDirtyMap::Iterator& at) { return zelIsBatchDirty_.del(at); }
  const ZelIsBatchDirtyMap& zelIsBatchDirtyMap() const noexcept { return zelIsBatchDirty_.map(); }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsBatchDirtyMap> zelIsBatchDirty_{*this, Attr::batch};
};

class PerishableDir::ZelNboAttrLogSa : public Zel::AdapterOf<PerishableDir> {
public:
  using AdapterOf::AdapterOf;
  class ZelNboAttrLogSaAdapter_;
  class FlowOut;

  virtual void onPerishable(Zel::String8 key) { zelOnKey(Attr::perishable, &key); }

  void zelHandlePerishableSerializeSing(Zel::String8 key, const Zel::Ptr<Perishable>& child) {
    zelSerializeChild(Attr::perishable, &key, child.ptr());
  }
  bool zelHandlePerishableSerializeColl() { return zelSerializeColl(Attr::perishable); }

  Zel::Ptr<const Zel::Entity::ZelNboAttrLogSa>
  perishableNboAttrLogAdapter(const Zel::Ptr<const Perishable>& child) const {
    return zelChildAdapter(const_cast<Perishable*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  perishableNboAttrLogAdapter(const Zel::Ptr<const Perishable>& child) {
    return zelChildAdapter(const_cast<Perishable*>(child.ptr()));
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  perishableNboAttrLogAdapterIs(Zel_BitSet flags, const Zel::Ptr<Perishable>& child,
                                unsigned option, const Zel::Ptr<Zel::NboAttrLog::Out>& /*out*/,
                                Zel::PtrInterface* owner) {
    return zelChildAdapterIs(Attr::perishable, flags, child.ptr(), option, owner);
  }
  Zel::Ptr<Zel::Entity::ZelNboAttrLogSa>
  perishableNboAttrLogAdapterDel(const Zel::Ptr<Perishable>& child) {
    return zelChildAdapterDel(child.ptr());
  }

protected:
  ~ZelNboAttrLogSa() override;
};

class PerishableDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_
    : public Zel::AdapterNotifiee<PerishableDir> {
public:
  using PerishableDir::Notifiee::onPerishable;
  void onPerishable(Zel::String8 key) override { zelForward(&ZelNboAttrLogSa::onPerishable, key); }

protected:
  ~ZelNboAttrLogSaAdapter_() override;
};

class PerishableDir::ZelNboAttrLogSa::FlowOut : public Zel::EntityFlowOut {
public:
  class ZelDirtyBitSet0 : public Bits {
  public:
    using Bits::Bits;
    unsigned word() const noexcept { return wordOf(0); }
    void zelPerishableHasSyncedIs(bool synced) noexcept { is(Attr::perishable, synced); }
  };
  class ZelZelIsPerishableDirty
      : public Zel::MapEntry<ZelZelIsPerishableDirty, Zel::String8, bool> {
    using MapEntry::MapEntry;
  };
  using ZelIsPerishableDirtyMap = Zel::HashMap<ZelZelIsPerishableDirty, Zel::String8, bool>;

  using EntityFlowOut::EntityFlowOut;

  ZelDirtyBitSet0 zelDirtyBitSet0() noexcept { return ZelDirtyBitSet0(*this); }

  void zelIsPerishableDirtyIs(Zel::String8 key, bool dirty) {
    zelIsPerishableDirty_.is(key, dirty);
  }
  Zel::Ptr<ZelZelIsPerishableDirty> newZelIsPerishableDirty(Zel::String8 key, bool dirty) {
    return zelIsPerishableDirty_.add(key, dirty);
  }
  bool zelIsPerishableDirtyDel(Zel::String8 key) { return zelIsPerishableDirty_.del(key); }
  bool zelIsPerishableDirtyDel(ZelIsPerishableDirtyMap::Iterator& at) {
    return zelIsPerishableDirty_.del(at);
  }
  const ZelIsPerishableDirtyMap& zelIsPerishableDirtyMap() const noexcept {
    return zelIsPerishableDirty_.map();
  }

protected:
  ~FlowOut() override;

private:
  Zel::DirtyKeys<ZelIsPerishableDirtyMap> zelIsPerishableDirty_{*this, Attr::perishable};
};

} // namespace Foreign
