#include "Perishable.h"

namespace Foreign {

namespace {

using Attr = Perishable::Attr;
using Callbacks = Perishable::NotifieeConst;
using Row = Zel::Rows<Perishable>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Perishable::sku>(Attr::sku, "sku"),
    Row::singular<&Perishable::shelfLife, &Perishable::shelfLifeIs, Callbacks,
                  &Callbacks::onShelfLife>(Attr::shelfLife, "shelfLife"),
    Row::constant<&Perishable::minShelfLife>(Attr::minShelfLife, "minShelfLife"),
    Row::Collection<Perishable::BatchMap, &Perishable::batchMap>::keyed<
        &Perishable::batch, &Perishable::batchIs, &Perishable::batchDel, &Perishable::batchDelAll,
        &Perishable::batchNotify, Callbacks, &Callbacks::onBatch, &Callbacks::onBatch,
        &Callbacks::zelPendingBatch>(Attr::batch, "batch"),
    Row::singular<&Perishable::recalled, &Perishable::recalledIs, Callbacks,
                  &Callbacks::onRecalled>(Attr::recalled, "recalled"),
    Row::counter<&Perishable::sold, &Perishable::soldIs, &Perishable::soldInc, Callbacks,
                 &Callbacks::onSold>(Attr::sold, "sold"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstAttributeId(3)));

using DirCallbacks = PerishableDir::NotifieeConst;

constexpr Zel::AttrRow dirRows[] = {
    Zel::Rows<PerishableDir>::Collection<PerishableDir::PerishableMap,
                                         &PerishableDir::perishableMap>::Of<>::
        instantiating<&PerishableDir::perishable, &PerishableDir::perishableIs,
                      &PerishableDir::perishableDel, &PerishableDir::perishableDelAll,
                      &PerishableDir::perishableNotify, DirCallbacks, &DirCallbacks::onPerishable,
                      &DirCallbacks::onPerishable, &DirCallbacks::zelPendingPerishable>(
            PerishableDir::Attr::perishable, "perishable"),
};
static_assert(Zel::rowsAreInOrder(dirRows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable dirTable = Zel::tableOf<PerishableDir, Zel::Name>(dirRows);

constexpr Zel::TypeTable table =
    Zel::tableOf<Perishable, Zel::String8>(rows, {.base = Product::zelTable});

} // namespace

const Zel::TypeTable& Perishable::zelTable() { return table; }

Perishable::Perishable(Zel::String8 sku)
    : AttrLogEntity(SkuKey(chilled, sku)), sku_(std::move(sku)) {}
Perishable::~Perishable() = default;

Zel::String8 Perishable::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(zelTable(), id, [&] { return Product::attributeString(id); });
}

void Perishable::shelfLifeIs(unsigned days) {
  Zel::singularIs(*this, Attr::shelfLife, shelfLife_, days,
                  Zel::tellDerived<NotifieeConst, &NotifieeConst::onShelfLife>);
}

unsigned Perishable::minShelfLife() const noexcept {
  Zel::countRead(*this);
  return 3;
}

unsigned Perishable::batch(Zel::String8 name) const { return Zel::keyedRead(*this, batch_, name); }

void Perishable::batchIs(Zel::String8 name, unsigned pieces) {
  Zel::keyedIs<Attr::batch, &Perishable::newBatch, &Perishable::batchNotify>(*this, batch_, name,
                                                                             pieces);
}

unsigned Perishable::batchDel(Zel::String8 name) {
  return Zel::keyedDel<Attr::batch, &Perishable::batchNotify>(*this, batch_, name);
}

unsigned Perishable::batchDel(BatchMap::Iterator& at) {
  return Zel::keyedDel<Attr::batch, &Perishable::batchNotify>(*this, batch_, at);
}

void Perishable::batchDelAll() {
  Zel::collectionDelAll(*this, batch_, [this](BatchMap::Iterator& at) { batchDel(at); });
}

Zel::Ptr<Perishable::ZelBatch> Perishable::newBatch(Zel::String8 name, unsigned pieces) {
  return Zel::keyedNew<Attr::batch>(*this, batch_, name, pieces);
}

void Perishable::batchNotify(Zel::String8 name) {
  Zel::notifyDerived<NotifieeConst>(*this, Attr::batch,
                                    [&](NotifieeConst& notifiee) { notifiee.onBatch(name); });
}

void Perishable::recalledIs(bool recalled) {
  Zel::singularIs(*this, Attr::recalled, recalled_, recalled,
                  Zel::tellDerived<NotifieeConst, &NotifieeConst::onRecalled>);
}

void Perishable::soldIs(unsigned pieces) {
  Zel::singularIs(*this, Attr::sold, sold_, pieces,
                  Zel::tellDerived<NotifieeConst, &NotifieeConst::onSold>);
}

unsigned Perishable::soldInc(unsigned pieces) {
  return Zel::counterInc(*this, Attr::sold, sold_, pieces,
                         Zel::tellDerived<NotifieeConst, &NotifieeConst::onSold>);
}

Perishable::NotifieeConst::~NotifieeConst() = default;
void Perishable::NotifieeConst::onShelfLife() {}
void Perishable::NotifieeConst::onBatch(Zel::String8 /*name*/) {}
void Perishable::NotifieeConst::onBatchzelImmediate() {}
void Perishable::NotifieeConst::onBatch() {}
void Perishable::NotifieeConst::onRecalled() {}
void Perishable::NotifieeConst::onSold() {}
Perishable::Notifiee::~Notifiee() = default;

const Zel::TypeTable& PerishableDir::zelTable() { return dirTable; }

PerishableDir::PerishableDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

PerishableDir::~PerishableDir() {
  Zel::directoryTearDown(notifiees_, [this] { perishableDelAll(); });
}

void PerishableDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 PerishableDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(dirTable, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<Perishable> PerishableDir::perishable(Zel::String8 sku) const {
  return Zel::memberRead(*this, perishable_, sku);
}

Zel::Ptr<Perishable> PerishableDir::newPerishable(Zel::String8 sku) {
  return Zel::memberNew(*this, Attr::perishable, perishable_, Zel::makeObject<Perishable>(sku));
}

Zel::ValidPtr<Perishable> PerishableDir::perishableIs(Zel::String8 sku) {
  return Zel::memberIs<&PerishableDir::perishableNotify>(*this, perishable_, sku,
                                                         [&] { return newPerishable(sku); });
}

Zel::Ptr<Perishable> PerishableDir::perishableDel(Zel::String8 sku) {
  return Zel::memberDel<Attr::perishable, &PerishableDir::perishableNotify>(*this, perishable_,
                                                                            sku);
}

Zel::Ptr<Perishable> PerishableDir::perishableDel(PerishableMap::Iterator& at) {
  return Zel::memberDel<Attr::perishable, &PerishableDir::perishableNotify>(*this, perishable_, at);
}

void PerishableDir::perishableDelAll() {
  Zel::collectionDelAll(*this, perishable_,
                        [this](PerishableMap::Iterator& at) { perishableDel(at); });
}

void PerishableDir::perishableNotify(Zel::String8 sku) {
  Zel::notifyOwner(*this, Attr::perishable,
                   [&](NotifieeConst& notifiee) { notifiee.onPerishable(sku); });
}

PerishableDir::NotifieeConst::~NotifieeConst() = default;
void PerishableDir::NotifieeConst::onPerishable(Zel::String8 /*sku*/) {}
void PerishableDir::NotifieeConst::onPerishablezelImmediate() {}
void PerishableDir::NotifieeConst::onPerishable() {}
PerishableDir::Notifiee::~Notifiee() = default;

} // namespace Foreign
