#include "Order.h"

namespace Foreign {

namespace {

using Callbacks = Order::NotifieeConst;
using Row = Zel::Rows<Order>;

constexpr Zel::AttrRow rows[] = {
    Row::computed<&Order::orderName>(Order::Attr::orderName, "orderName"),
    Row::singular<&Order::urgency, &Order::urgencyIs, Callbacks, &Callbacks::onUrgency>(
        Order::Attr::urgency, "urgency", Zel::constructorArgument),
    Row::Collection<Order::ItemMap, &Order::itemMap>::keyed<
        &Order::item, &Order::itemIs, &Order::itemDel, &Order::itemDelAll, &Order::itemNotify,
        Callbacks, &Callbacks::onItem, &Callbacks::onItem, &Callbacks::zelPendingItem>(
        Order::Attr::item, "item"),
    Row::frameworkKey<&Order::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Order, Zel::Name, Urgency>(rows);

using DirCallbacks = OrderDir::NotifieeConst;

constexpr Zel::AttrRow dirRows[] = {
    Zel::Rows<OrderDir>::Collection<OrderDir::OrderMap, &OrderDir::orderMap>::Of<
        Urgency>::instantiating<&OrderDir::order, &OrderDir::orderIs, &OrderDir::orderDel,
                                &OrderDir::orderDelAll, &OrderDir::orderNotify, DirCallbacks,
                                &DirCallbacks::onOrder, &DirCallbacks::onOrder,
                                &DirCallbacks::zelPendingOrder>(OrderDir::Attr::order, "order"),
};
static_assert(Zel::rowsAreInOrder(dirRows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable dirTable = Zel::tableOf<OrderDir, Zel::Name>(dirRows);

} // namespace

const Zel::TypeTable& Order::zelTable() { return table; }

Order::Order(Zel::Name name, Urgency urgency) : AttrLogEntity(std::move(name)), urgency_(urgency) {}
Order::~Order() = default;

void Order::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Order::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::Name Order::orderName() const {
  Zel::countRead(*this);
  return name();
}

Zel::Name Order::fwkKey() const {
  Zel::countRead(*this);
  return name();
}

void Order::urgencyIs(Urgency urgency) {
  Zel::singularIs<&NotifieeConst::onUrgency>(*this, Attr::urgency, urgency_, urgency);
}

unsigned Order::item(Zel::String8 sku) const { return Zel::keyedRead(*this, item_, sku); }

void Order::itemIs(Zel::String8 sku, unsigned pieces) {
  Zel::keyedIs<Attr::item, &Order::newItem, &Order::itemNotify>(*this, item_, sku, pieces);
}

unsigned Order::itemDel(Zel::String8 sku) {
  return Zel::keyedDel<Attr::item, &Order::itemNotify>(*this, item_, sku);
}

unsigned Order::itemDel(ItemMap::Iterator& at) {
  return Zel::keyedDel<Attr::item, &Order::itemNotify>(*this, item_, at);
}

void Order::itemDelAll() {
  Zel::collectionDelAll(*this, item_, [this](ItemMap::Iterator& at) { itemDel(at); });
}

Zel::Ptr<Order::ZelItem> Order::newItem(Zel::String8 sku, unsigned pieces) {
  return Zel::keyedNew<Attr::item>(*this, item_, sku, pieces);
}

void Order::itemNotify(Zel::String8 sku) {
  Zel::notifyOwner(*this, Attr::item, [&](NotifieeConst& notifiee) { notifiee.onItem(sku); });
}

Order::NotifieeConst::~NotifieeConst() = default;
void Order::NotifieeConst::onUrgency() {}
void Order::NotifieeConst::onItem(Zel::String8 /*sku*/) {}
void Order::NotifieeConst::onItemzelImmediate() {}
void Order::NotifieeConst::onItem() {}
Order::Notifiee::~Notifiee() = default;

const Zel::TypeTable& OrderDir::zelTable() { return dirTable; }

OrderDir::OrderDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

OrderDir::~OrderDir() {
  Zel::directoryTearDown(notifiees_, [this] { orderDelAll(); });
}

void OrderDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 OrderDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(dirTable, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<Order> OrderDir::order(Zel::Name name) const {
  return Zel::memberRead(*this, order_, name);
}

Zel::Ptr<Order> OrderDir::newOrder(Zel::Name name, Urgency urgency) {
  return Zel::memberNew(*this, Attr::order, order_, Zel::makeObject<Order>(name, urgency));
}

Zel::ValidPtr<Order> OrderDir::orderIs(Zel::Name name, Urgency urgency) {
  return Zel::memberIs<&OrderDir::orderNotify>(
      *this, order_, name, [&] { return newOrder(name, urgency); },
      [&](Order& order) { order.urgencyIs(urgency); });
}

Zel::Ptr<Order> OrderDir::orderDel(Zel::Name name) {
  return Zel::memberDel<Attr::order, &OrderDir::orderNotify>(*this, order_, name);
}

Zel::Ptr<Order> OrderDir::orderDel(OrderMap::Iterator& at) {
  return Zel::memberDel<Attr::order, &OrderDir::orderNotify>(*this, order_, at);
}

void OrderDir::orderDelAll() {
  Zel::collectionDelAll(*this, order_, [this](OrderMap::Iterator& at) { orderDel(at); });
}

void OrderDir::orderNotify(Zel::Name name) {
  Zel::notifyOwner(*this, Attr::order, [&](NotifieeConst& notifiee) { notifiee.onOrder(name); });
}

OrderDir::NotifieeConst::~NotifieeConst() = default;
void OrderDir::NotifieeConst::onOrder(Zel::Name /*name*/) {}
void OrderDir::NotifieeConst::onOrderzelImmediate() {}
void OrderDir::NotifieeConst::onOrder() {}
OrderDir::Notifiee::~Notifiee() = default;

} // namespace Foreign
