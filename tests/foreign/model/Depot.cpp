#include "Depot.h"

namespace Foreign {

namespace {

using Attr = Depot::Attr;
using Callbacks = Depot::NotifieeConst;
using Row = Zel::Rows<Depot>;

constexpr Zel::AttrRow rows[] = {
    Row::singular<&Depot::pid, &Depot::pidIs, Callbacks, &Callbacks::onPid>(Attr::pid, "pid"),
    Row::counter<&Depot::restarts, &Depot::restartsIs, &Depot::restartsInc, Callbacks,
                 &Callbacks::onRestarts>(Attr::restarts, "restarts"),
    Row::Collection<Depot::AlarmMap, &Depot::alarmMap>::ownKey<
        &Depot::alarm, &Depot::alarmIs, &Depot::alarmDel, &Depot::alarmDelAll, &Depot::alarmNotify,
        Callbacks, &Callbacks::onAlarm, &Callbacks::onAlarm, &Callbacks::zelPendingAlarm>(
        Attr::alarm, "alarm"),
    Row::singular<&Depot::open, &Depot::openIs, Callbacks, &Callbacks::onOpen>(Attr::open, "open"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Depot, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& Depot::zelTable() { return table; }

Depot::Depot(Zel::Name name) : AttrLogEntity(std::move(name)) {}
Depot::~Depot() = default;

void Depot::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Depot::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

void Depot::pidIs(unsigned pid) {
  Zel::singularIs<&NotifieeConst::onPid>(*this, Attr::pid, pid_, pid);
}

void Depot::restartsIs(unsigned restarts) {
  Zel::singularIs<&NotifieeConst::onRestarts>(*this, Attr::restarts, restarts_, restarts);
}

unsigned Depot::restartsInc(unsigned by) {
  return Zel::counterInc<&NotifieeConst::onRestarts>(*this, Attr::restarts, restarts_, by);
}

Alarm Depot::alarm(Zel::String8 sensor) const { return Zel::keyedRead(*this, alarm_, sensor); }

// The steps of `Zel::keyedIs`, with the key taken from the value.
void Depot::alarmIs(const Alarm& alarm) {
  Zel::ownKeyIs<Attr::alarm, &Depot::newAlarm, &Depot::alarmNotify>(*this, alarm_, alarm.sensor(),
                                                                    alarm);
}

Alarm Depot::alarmDel(Zel::String8 sensor) {
  return Zel::keyedDel<Attr::alarm, &Depot::alarmNotify>(*this, alarm_, sensor);
}

Alarm Depot::alarmDel(AlarmMap::Iterator& at) {
  return Zel::keyedDel<Attr::alarm, &Depot::alarmNotify>(*this, alarm_, at);
}

void Depot::alarmDelAll() {
  Zel::collectionDelAll(*this, alarm_, [this](AlarmMap::Iterator& at) { alarmDel(at); });
}

Zel::Ptr<Depot::ZelAlarm> Depot::newAlarm(const Alarm& alarm) {
  return Zel::keyedNew<Attr::alarm>(*this, alarm_, alarm.sensor(), alarm);
}

void Depot::alarmNotify(Zel::String8 sensor) {
  Zel::notifyOwner(*this, Attr::alarm, [&](NotifieeConst& notifiee) { notifiee.onAlarm(sensor); });
}

void Depot::openIs(bool open) {
  Zel::singularIs<&NotifieeConst::onOpen>(*this, Attr::open, open_, open);
}

Depot::NotifieeConst::~NotifieeConst() = default;
void Depot::NotifieeConst::onPid() {}
void Depot::NotifieeConst::onRestarts() {}
void Depot::NotifieeConst::onAlarm(Zel::String8 /*sensor*/) {}
void Depot::NotifieeConst::onAlarmzelImmediate() {}
void Depot::NotifieeConst::onAlarm() {}
void Depot::NotifieeConst::onOpen() {}
Depot::Notifiee::~Notifiee() = default;

} // namespace Foreign
