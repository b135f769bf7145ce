#pragma once

#include "Product.h"

namespace Foreign {

/// A product that does not keep: the one type here that is derived from another of the model. Both
/// share one list of notifiees, that of `Product`.
class Perishable : public Zel::AttrLogEntity<Perishable, Product> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Perishable";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Perishable>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  class ZelBatch : public Zel::MapEntry<ZelBatch, Zel::String8, unsigned> {
    using MapEntry::MapEntry;
  };
  using BatchMap = Zel::HashMap<ZelBatch, Zel::String8, unsigned>;

  struct Attr {
    static constexpr Zel::AttributeId sku = 386;
    static constexpr Zel::AttributeId shelfLife = 387;
    static constexpr Zel::AttributeId minShelfLife = 388;
    static constexpr Zel::AttributeId batch = 389;
    static constexpr Zel::AttributeId recalled = 390;
    static constexpr Zel::AttributeId sold = 391;
  };

  /// Perishables are chilled: the key of the base is made from that and the sku.
  explicit Perishable(Zel::String8 sku);

  Zel::String8 sku() const noexcept { return Zel::read(*this, sku_); }

  /// In days; nothing keeps it above the minimum.
  unsigned shelfLife() const noexcept { return Zel::read(*this, shelfLife_); }
  void shelfLifeIs(unsigned days);
  unsigned minShelfLife() const noexcept;

  unsigned batch(Zel::String8 name) const;
  void batchIs(Zel::String8 name, unsigned pieces);
  unsigned batchDel(Zel::String8 name);
  unsigned batchDel(BatchMap::Iterator& at);
  void batchDelAll();
  Zel::Ptr<ZelBatch> newBatch(Zel::String8 name, unsigned pieces);
  void batchNotify(Zel::String8 name);
  const BatchMap& batchMap() const noexcept { return batch_; }

  bool recalled() const noexcept { return Zel::read(*this, recalled_); }
  void recalledIs(bool recalled);

  unsigned sold() const noexcept { return Zel::read(*this, sold_); }
  void soldIs(unsigned pieces);
  unsigned soldInc(unsigned pieces);

  Zel::String8 attributeString(Zel::AttributeId id) const override;

  const Zel::String8& zelKey() const noexcept { return sku_; }
  static constexpr Zel::Ptr<Perishable> Perishable::*zelMemberNext() noexcept {
    return &Perishable::memberNext_;
  }

protected:
  ~Perishable() override;

private:
  const Zel::String8 sku_;
  unsigned shelfLife_ = 30;
  BatchMap batch_;
  bool recalled_ = false;
  unsigned sold_ = 0;
  Zel::Ptr<Perishable> memberNext_;
};

class Perishable::NotifieeConst
    : public Zel::DerivedNotifieeOf<Perishable, Product::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onShelfLife();
  virtual void onBatch(Zel::String8 name);
  virtual void onBatchzelImmediate();
  virtual void onBatch();
  virtual void onRecalled();
  virtual void onSold();

  Zel::PendingKey<Zel::String8> zelPendingBatch;
};

class Perishable::Notifiee : public Perishable::NotifieeConst {
protected:
  ~Notifiee() override;
};

/// The directory of perishables, by sku and not by key.
class PerishableDir : public Zel::AttrLogEntity<PerishableDir> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::PerishableDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<PerishableDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using PerishableMap = Zel::HashMap<Perishable, Zel::String8, Perishable>;

  struct Attr {
    static constexpr Zel::AttributeId perishable = 258;
  };

  explicit PerishableDir(Zel::Name name);

  Zel::Ptr<Perishable> perishable(Zel::String8 sku) const;
  Zel::Ptr<Perishable> newPerishable(Zel::String8 sku);
  Zel::ValidPtr<Perishable> perishableIs(Zel::String8 sku);
  Zel::Ptr<Perishable> perishableDel(Zel::String8 sku);
  Zel::Ptr<Perishable> perishableDel(PerishableMap::Iterator& at);
  void perishableDelAll();
  void perishableNotify(Zel::String8 sku);
  const PerishableMap& perishableMap() const noexcept { return perishable_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~PerishableDir() override;

private:
  PerishableMap perishable_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class PerishableDir::NotifieeConst
    : public Zel::NotifieeOf<PerishableDir, PerishableDir::NotifieeConst,
                             Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onPerishable(Zel::String8 sku);
  virtual void onPerishablezelImmediate();
  virtual void onPerishable();

  Zel::PendingKey<Zel::String8> zelPendingPerishable;
};

class PerishableDir::Notifiee : public PerishableDir::NotifieeConst {
protected:
  ~Notifiee() override;
};

} // namespace Foreign
