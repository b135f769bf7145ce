#include "Carrier.h"

namespace Foreign {

namespace {

using Attr = Carrier::Attr;
using Callbacks = Carrier::NotifieeConst;
using Row = Zel::Rows<Carrier>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<Carrier::LoadMap, &Carrier::loadMap>::keyed<
        &Carrier::load, &Carrier::loadIs, &Carrier::loadDel, &Carrier::loadDelAll,
        &Carrier::loadNotify, Callbacks, &Callbacks::onLoad, &Callbacks::onLoad,
        &Callbacks::zelPendingLoad>(Attr::load, "load", Zel::virtualAccess),
    Row::Collection<Carrier::TargetMap, &Carrier::targetMap>::keyed<
        &Carrier::target, &Carrier::targetIs, &Carrier::targetDel, &Carrier::targetDelAll,
        &Carrier::targetNotify, Callbacks, &Callbacks::onTarget, &Callbacks::onTarget,
        &Callbacks::zelPendingTarget>(Attr::target, "target", Zel::virtualAccess),
    Row::singular<&Carrier::urgency, &Carrier::urgencyIs, Callbacks, &Callbacks::onUrgency>(
        Attr::urgency, "urgency", Zel::virtualAccess),
    Row::singular<&Carrier::idle, &Carrier::idleIs, Callbacks, &Callbacks::onIdle>(
        Attr::idle, "idle", Zel::virtualAccess),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Carrier, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& Carrier::zelTable() { return table; }

Carrier::Carrier(Zel::Name name) : AttrLogEntity(std::move(name)) {}
Carrier::~Carrier() = default;

void Carrier::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Carrier::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

bool Carrier::load(const SkuKey& key) const { return Zel::keyedRead(*this, load_, key); }

void Carrier::loadIs(const SkuKey& key, bool value) {
  Zel::keyedIs<Attr::load, &Carrier::newLoad, &Carrier::loadNotify>(*this, load_, key, value);
}

bool Carrier::loadDel(const SkuKey& key) {
  return Zel::keyedDel<Attr::load, &Carrier::loadNotify>(*this, load_, key);
}

bool Carrier::loadDel(LoadMap::Iterator& at) {
  return Zel::keyedDel<Attr::load, &Carrier::loadNotify>(*this, load_, at);
}

void Carrier::loadDelAll() {
  Zel::collectionDelAll(*this, load_, [this](LoadMap::Iterator& at) { loadDel(at); });
}

Zel::Ptr<Carrier::ZelLoad> Carrier::newLoad(const SkuKey& key, bool value) {
  return Zel::keyedNew<Attr::load>(*this, load_, key, value);
}

void Carrier::loadNotify(const SkuKey& key) {
  Zel::notifyOwner(*this, Attr::load, [&](NotifieeConst& notifiee) { notifiee.onLoad(key); });
}

SlotCode Carrier::target(Zone zone) const { return Zel::keyedRead(*this, target_, zone); }

void Carrier::targetIs(Zone zone, const SlotCode& slot) {
  Zel::keyedIs<Attr::target, &Carrier::newTarget, &Carrier::targetNotify>(*this, target_, zone,
                                                                          slot);
}

SlotCode Carrier::targetDel(Zone zone) {
  return Zel::keyedDel<Attr::target, &Carrier::targetNotify>(*this, target_, zone);
}

SlotCode Carrier::targetDel(TargetMap::Iterator& at) {
  return Zel::keyedDel<Attr::target, &Carrier::targetNotify>(*this, target_, at);
}

void Carrier::targetDelAll() {
  Zel::collectionDelAll(*this, target_, [this](TargetMap::Iterator& at) { targetDel(at); });
}

Zel::Ptr<Carrier::ZelTarget> Carrier::newTarget(Zone zone, const SlotCode& slot) {
  return Zel::keyedNew<Attr::target>(*this, target_, zone, slot);
}

void Carrier::targetNotify(Zone zone) {
  Zel::notifyOwner(*this, Attr::target, [&](NotifieeConst& notifiee) { notifiee.onTarget(zone); });
}

void Carrier::urgencyIs(Urgency urgency) {
  Zel::singularIs<&NotifieeConst::onUrgency>(*this, Attr::urgency, urgency_, urgency);
}

void Carrier::idleIs(bool idle) {
  Zel::singularIs<&NotifieeConst::onIdle>(*this, Attr::idle, idle_, idle);
}

Carrier::NotifieeConst::~NotifieeConst() = default;
void Carrier::NotifieeConst::onLoad(const SkuKey& /*key*/) {}
void Carrier::NotifieeConst::onLoadzelImmediate() {}
void Carrier::NotifieeConst::onLoad() {}
void Carrier::NotifieeConst::onTarget(Zone /*zone*/) {}
void Carrier::NotifieeConst::onTargetzelImmediate() {}
void Carrier::NotifieeConst::onTarget() {}
void Carrier::NotifieeConst::onUrgency() {}
void Carrier::NotifieeConst::onIdle() {}
Carrier::Notifiee::~Notifiee() = default;

} // namespace Foreign
