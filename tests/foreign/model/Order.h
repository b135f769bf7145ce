#pragma once

#include "Enumerations.h"

#include <Zel/AttrLogEntity>
#include <Zel/Attribute>
#include <Zel/Layers>

namespace Foreign {

/// An order. Its urgency is a constructor argument that anybody may change afterwards.
class Order : public Zel::AttrLogEntity<Order> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::Order";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<Order>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  class ZelItem : public Zel::MapEntry<ZelItem, Zel::String8, unsigned> {
    using MapEntry::MapEntry;
  };
  using ItemMap = Zel::HashMap<ZelItem, Zel::String8, unsigned>;

  struct Attr {
    static constexpr Zel::AttributeId orderName = 258;
    static constexpr Zel::AttributeId urgency = 259;
    static constexpr Zel::AttributeId item = 260;
  };

  Order(Zel::Name name, Urgency urgency);

  Zel::Name orderName() const;
  Zel::Name fwkKey() const;

  Urgency urgency() const noexcept { return Zel::read(*this, urgency_); }
  void urgencyIs(Urgency urgency);

  /// Pieces by sku.
  unsigned item(Zel::String8 sku) const;
  void itemIs(Zel::String8 sku, unsigned pieces);
  unsigned itemDel(Zel::String8 sku);
  unsigned itemDel(ItemMap::Iterator& at);
  void itemDelAll();
  Zel::Ptr<ZelItem> newItem(Zel::String8 sku, unsigned pieces);
  void itemNotify(Zel::String8 sku);
  const ItemMap& itemMap() const noexcept { return item_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }
  Zel::Name zelKey() const { return name(); }
  static constexpr Zel::Ptr<Order> Order::*zelMemberNext() noexcept { return &Order::memberNext_; }

protected:
  ~Order() override;

private:
  Urgency urgency_;
  ItemMap item_;
  Zel::Ptr<Order> memberNext_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class Order::NotifieeConst
    : public Zel::NotifieeOf<Order, Order::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onUrgency();
  virtual void onItem(Zel::String8 sku);
  virtual void onItemzelImmediate();
  virtual void onItem();

  Zel::PendingKey<Zel::String8> zelPendingItem;
};

class Order::Notifiee : public Order::NotifieeConst {
protected:
  ~Notifiee() override;
};

/// The directory of orders: an order is made with a name and an urgency, and asking for one that is
/// there sets the urgency.
class OrderDir : public Zel::AttrLogEntity<OrderDir> {
public:
  static constexpr std::string_view zelTypeName = "Foreign::OrderDir";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<OrderDir>;
  class GenericIf_;
  class ZelNboAttrLogSa;

  class NotifieeConst;
  class Notifiee;
  using OrderMap = Zel::HashMap<Order, Zel::Name, Order>;

  struct Attr {
    static constexpr Zel::AttributeId order = 258;
  };

  explicit OrderDir(Zel::Name name);

  Zel::Ptr<Order> order(Zel::Name name) const;
  Zel::Ptr<Order> newOrder(Zel::Name name, Urgency urgency);
  Zel::ValidPtr<Order> orderIs(Zel::Name name, Urgency urgency);
  Zel::Ptr<Order> orderDel(Zel::Name name);
  Zel::Ptr<Order> orderDel(OrderMap::Iterator& at);
  void orderDelAll();
  void orderNotify(Zel::Name name);
  const OrderMap& orderMap() const noexcept { return order_; }

  void zeroReferencesIs(bool zero) override;
  Zel::String8 attributeString(Zel::AttributeId id) const override;

  Zel::ListRaw<NotifieeConst>& zelNotifieeList() const noexcept { return notifiees_; }

protected:
  ~OrderDir() override;

private:
  OrderMap order_;
  mutable Zel::ListRaw<NotifieeConst> notifiees_;
};

class OrderDir::NotifieeConst
    : public Zel::NotifieeOf<OrderDir, OrderDir::NotifieeConst, Zel::Entity::NotifieeConst> {
protected:
  ~NotifieeConst() override;

public:
  virtual void onOrder(Zel::Name name);
  virtual void onOrderzelImmediate();
  virtual void onOrder();

  Zel::PendingKey<Zel::Name> zelPendingOrder;
};

class OrderDir::Notifiee : public OrderDir::NotifieeConst {
protected:
  ~Notifiee() override;
};

} // namespace Foreign
