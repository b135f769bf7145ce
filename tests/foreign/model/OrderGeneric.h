#pragma once

#include "Depot.h"
#include "Order.h"

#include <generic/Reactor.h>

/// The generic objects of orders and the depot.
namespace Foreign {

class Order::GenericIf_ : public Zel::EntityGenericIf<Order> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Order>& object, bool isConst);

  void onUrgency() { zelOnSingular(Attr::urgency); }
  void onItem(Zel::String8 sku) { zelOnMember(Attr::item, &sku); }

protected:
  ~GenericIf_() override;
};

class Order::GenericIf_::GenericIf_Adapter_ : public Zel::GenericAdapter<Order, Order::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onUrgency() override { zelForward(&GenericIf_::onUrgency); }
  void onItem(Zel::String8 sku) override { zelForward(&GenericIf_::onItem, sku); }
  void onItem() override { zelForwardCollection(Attr::item); }

protected:
  ~GenericIf_Adapter_() override;
};

class OrderDir::GenericIf_ : public Zel::EntityGenericIf<OrderDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<OrderDir>& object, bool isConst);

  void onOrder(Zel::Name name) { zelOnMember(Attr::order, &name); }

protected:
  ~GenericIf_() override;
};

class OrderDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<OrderDir, OrderDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onOrder(Zel::Name name) override { zelForward(&GenericIf_::onOrder, name); }
  void onOrder() override { zelForwardCollection(Attr::order); }

protected:
  ~GenericIf_Adapter_() override;
};

class Depot::GenericIf_ : public Zel::EntityGenericIf<Depot> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Depot>& object, bool isConst);

  void onPid() { zelOnSingular(Attr::pid); }
  void onRestarts() { zelOnSingular(Attr::restarts); }
  void onAlarm(Zel::String8 sensor) { zelOnMember(Attr::alarm, &sensor); }
  void onOpen() { zelOnSingular(Attr::open); }

protected:
  ~GenericIf_() override;
};

class Depot::GenericIf_::GenericIf_Adapter_ : public Zel::GenericAdapter<Depot, Depot::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onPid() override { zelForward(&GenericIf_::onPid); }
  void onRestarts() override { zelForward(&GenericIf_::onRestarts); }
  void onAlarm(Zel::String8 sensor) override { zelForward(&GenericIf_::onAlarm, sensor); }
  void onAlarm() override { zelForwardCollection(Attr::alarm); }
  void onOpen() override { zelForward(&GenericIf_::onOpen); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace Foreign
