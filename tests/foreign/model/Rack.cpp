#include "Rack.h"

namespace Foreign {

namespace {

using Attr = Rack::Attr;
using Callbacks = Rack::NotifieeConst;
using Row = Zel::Rows<Rack>;

constexpr Zel::AttrRow rows[] = {
    Row::computed<&Rack::rackName>(Attr::rackName, "rackName"),
    Row::singular<&Rack::zone, &Rack::zoneIs, Callbacks, &Callbacks::onZone>(Attr::zone, "zone"),
    Row::Collection<Rack::AllowedZoneMap, &Rack::allowedZoneMap>::keyed<
        &Rack::allowedZone, &Rack::allowedZoneIs, &Rack::allowedZoneDel, &Rack::allowedZoneDelAll,
        &Rack::allowedZoneNotify, Callbacks, &Callbacks::onAllowedZone, &Callbacks::onAllowedZone,
        &Callbacks::zelPendingAllowedZone>(Attr::allowedZone, "allowedZone"),
    Row::Collection<Rack::ReservationMap, &Rack::reservationMap>::keyed<
        &Rack::reservation, &Rack::reservationIs, &Rack::reservationDel, &Rack::reservationDelAll,
        &Rack::reservationNotify, Callbacks, &Callbacks::onReservation, &Callbacks::onReservation,
        &Callbacks::zelPendingReservation>(Attr::reservation, "reservation"),
    Row::Collection<Rack::LabelMap, &Rack::labelMap>::keyed<
        &Rack::label, &Rack::labelIs, &Rack::labelDel, &Rack::labelDelAll, &Rack::labelNotify,
        Callbacks, &Callbacks::onLabel, &Callbacks::onLabel, &Callbacks::zelPendingLabel>(
        Attr::label, "label"),
    Row::singular<&Rack::footprint, &Rack::footprintIs, Callbacks, &Callbacks::onFootprint>(
        Attr::footprint, "footprint"),
    Row::Collection<Rack::SpaceMap, &Rack::spaceMap>::keyed<
        &Rack::space, &Rack::spaceIs, &Rack::spaceDel, &Rack::spaceDelAll, &Rack::spaceNotify,
        Callbacks, &Callbacks::onSpace, &Callbacks::onSpace, &Callbacks::zelPendingSpace>(
        Attr::space, "space"),
    Row::constant<&Rack::capacity>(Attr::capacity, "capacity"),
    Row::singular<&Rack::temperature, &Rack::temperatureIs, Callbacks, &Callbacks::onTemperature>(
        Attr::temperature, "temperature"),
    Row::Collection<Rack::NoteMap, &Rack::noteMap>::keyed<
        &Rack::note, &Rack::noteIs, &Rack::noteDel, &Rack::noteDelAll, &Rack::noteNotify, Callbacks,
        &Callbacks::onNote, &Callbacks::onNote, &Callbacks::zelPendingNote>(Attr::note, "note"),
    Row::Collection<Rack::ReadingMap, &Rack::readingMap>::keyed<
        &Rack::reading, &Rack::readingIs, &Rack::readingDel, &Rack::readingDelAll,
        &Rack::readingNotify, Callbacks, &Callbacks::onReading, &Callbacks::onReading,
        &Callbacks::zelPendingReading>(Attr::reading, "reading"),
    Row::singular<&Rack::serial, &Rack::serialIs, Callbacks, &Callbacks::onSerial>(Attr::serial,
                                                                                   "serial"),
    Row::singular<&Rack::slot, &Rack::slotIs, Callbacks, &Callbacks::onSlot>(Attr::slot, "slot"),
    Row::counter<&Rack::picks, &Rack::picksIs, &Rack::picksInc, Callbacks, &Callbacks::onPicks>(
        Attr::picks, "picks"),
    Row::frameworkKey<&Rack::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Rack, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& Rack::zelTable() { return table; }

Rack::Rack(Zel::Name name) : AttrLogEntity(std::move(name)) {}
Rack::~Rack() = default;

void Rack::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Rack::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::String8 Rack::rackName() const {
  Zel::countRead(*this);
  return name();
}

Zel::Name Rack::fwkKey() const {
  Zel::countRead(*this);
  return name();
}

unsigned Rack::capacity() const noexcept {
  Zel::countRead(*this);
  return 48;
}

void Rack::zoneIs(Zone zone) {
  Zel::singularIs<&NotifieeConst::onZone>(*this, Attr::zone, zone_, zone);
}

bool Rack::allowedZone(Zone zone) const { return Zel::keyedRead(*this, allowedZone_, zone); }

void Rack::allowedZoneIs(Zone zone, bool value) {
  Zel::keyedIs<Attr::allowedZone, &Rack::newAllowedZone, &Rack::allowedZoneNotify>(
      *this, allowedZone_, zone, value);
}

bool Rack::allowedZoneDel(Zone zone) {
  return Zel::keyedDel<Attr::allowedZone, &Rack::allowedZoneNotify>(*this, allowedZone_, zone);
}

bool Rack::allowedZoneDel(AllowedZoneMap::Iterator& at) {
  return Zel::keyedDel<Attr::allowedZone, &Rack::allowedZoneNotify>(*this, allowedZone_, at);
}

void Rack::allowedZoneDelAll() {
  Zel::collectionDelAll(*this, allowedZone_,
                        [this](AllowedZoneMap::Iterator& at) { allowedZoneDel(at); });
}

Zel::Ptr<Rack::ZelAllowedZone> Rack::newAllowedZone(Zone zone, bool value) {
  return Zel::keyedNew<Attr::allowedZone>(*this, allowedZone_, zone, value);
}

void Rack::allowedZoneNotify(Zone zone) {
  Zel::notifyOwner(*this, Attr::allowedZone,
                   [&](NotifieeConst& notifiee) { notifiee.onAllowedZone(zone); });
}

bool Rack::reservation(Zel::String8 customer) const {
  return Zel::keyedRead(*this, reservation_, customer);
}

void Rack::reservationIs(Zel::String8 customer, bool value) {
  Zel::keyedIs<Attr::reservation, &Rack::newReservation, &Rack::reservationNotify>(
      *this, reservation_, customer, value);
}

bool Rack::reservationDel(Zel::String8 customer) {
  return Zel::keyedDel<Attr::reservation, &Rack::reservationNotify>(*this, reservation_, customer);
}

bool Rack::reservationDel(ReservationMap::Iterator& at) {
  return Zel::keyedDel<Attr::reservation, &Rack::reservationNotify>(*this, reservation_, at);
}

void Rack::reservationDelAll() {
  Zel::collectionDelAll(*this, reservation_,
                        [this](ReservationMap::Iterator& at) { reservationDel(at); });
}

Zel::Ptr<Rack::ZelReservation> Rack::newReservation(Zel::String8 customer, bool value) {
  return Zel::keyedNew<Attr::reservation>(*this, reservation_, customer, value);
}

void Rack::reservationNotify(Zel::String8 customer) {
  Zel::notifyOwner(*this, Attr::reservation,
                   [&](NotifieeConst& notifiee) { notifiee.onReservation(customer); });
}

Zel::String8 Rack::label(Zel::Name language) const {
  return Zel::keyedRead(*this, label_, language);
}

void Rack::labelIs(Zel::Name language, Zel::String8 text) {
  Zel::keyedIs<Attr::label, &Rack::newLabel, &Rack::labelNotify>(*this, label_, language, text);
}

Zel::String8 Rack::labelDel(Zel::Name language) {
  return Zel::keyedDel<Attr::label, &Rack::labelNotify>(*this, label_, language);
}

Zel::String8 Rack::labelDel(LabelMap::Iterator& at) {
  return Zel::keyedDel<Attr::label, &Rack::labelNotify>(*this, label_, at);
}

void Rack::labelDelAll() {
  Zel::collectionDelAll(*this, label_, [this](LabelMap::Iterator& at) { labelDel(at); });
}

Zel::Ptr<Rack::ZelLabel> Rack::newLabel(Zel::Name language, Zel::String8 text) {
  return Zel::keyedNew<Attr::label>(*this, label_, language, text);
}

void Rack::labelNotify(Zel::Name language) {
  Zel::notifyOwner(*this, Attr::label,
                   [&](NotifieeConst& notifiee) { notifiee.onLabel(language); });
}

void Rack::footprintIs(const Dimensions& footprint) {
  Zel::singularIs<&NotifieeConst::onFootprint>(*this, Attr::footprint, footprint_, footprint);
}

Dimensions Rack::space(Zone zone) const { return Zel::keyedRead(*this, space_, zone); }

void Rack::spaceIs(Zone zone, const Dimensions& free) {
  Zel::keyedIs<Attr::space, &Rack::newSpace, &Rack::spaceNotify>(*this, space_, zone, free);
}

Dimensions Rack::spaceDel(Zone zone) {
  return Zel::keyedDel<Attr::space, &Rack::spaceNotify>(*this, space_, zone);
}

Dimensions Rack::spaceDel(SpaceMap::Iterator& at) {
  return Zel::keyedDel<Attr::space, &Rack::spaceNotify>(*this, space_, at);
}

void Rack::spaceDelAll() {
  Zel::collectionDelAll(*this, space_, [this](SpaceMap::Iterator& at) { spaceDel(at); });
}

Zel::Ptr<Rack::ZelSpace> Rack::newSpace(Zone zone, const Dimensions& free) {
  return Zel::keyedNew<Attr::space>(*this, space_, zone, free);
}

void Rack::spaceNotify(Zone zone) {
  Zel::notifyOwner(*this, Attr::space, [&](NotifieeConst& notifiee) { notifiee.onSpace(zone); });
}

void Rack::temperatureIs(double temperature) {
  Zel::singularIs<&NotifieeConst::onTemperature>(*this, Attr::temperature, temperature_,
                                                 temperature);
}

Zel::String8 Rack::note(const double& time) const { return Zel::keyedRead(*this, note_, time); }

void Rack::noteIs(const double& time, Zel::String8 text) {
  Zel::keyedIs<Attr::note, &Rack::newNote, &Rack::noteNotify>(*this, note_, time, text);
}

Zel::String8 Rack::noteDel(const double& time) {
  return Zel::keyedDel<Attr::note, &Rack::noteNotify>(*this, note_, time);
}

Zel::String8 Rack::noteDel(NoteMap::Iterator& at) {
  return Zel::keyedDel<Attr::note, &Rack::noteNotify>(*this, note_, at);
}

void Rack::noteDelAll() {
  Zel::collectionDelAll(*this, note_, [this](NoteMap::Iterator& at) { noteDel(at); });
}

Zel::Ptr<Rack::ZelNote> Rack::newNote(const double& time, Zel::String8 text) {
  return Zel::keyedNew<Attr::note>(*this, note_, time, text);
}

void Rack::noteNotify(const double& time) {
  Zel::notifyOwner(*this, Attr::note, [&](NotifieeConst& notifiee) { notifiee.onNote(time); });
}

double Rack::reading(const double& time) const { return Zel::keyedRead(*this, reading_, time); }

void Rack::readingIs(const double& time, double temperature) {
  Zel::keyedIs<Attr::reading, &Rack::newReading, &Rack::readingNotify>(*this, reading_, time,
                                                                       temperature);
}

double Rack::readingDel(const double& time) {
  return Zel::keyedDel<Attr::reading, &Rack::readingNotify>(*this, reading_, time);
}

double Rack::readingDel(ReadingMap::Iterator& at) {
  return Zel::keyedDel<Attr::reading, &Rack::readingNotify>(*this, reading_, at);
}

void Rack::readingDelAll() {
  Zel::collectionDelAll(*this, reading_, [this](ReadingMap::Iterator& at) { readingDel(at); });
}

Zel::Ptr<Rack::ZelReading> Rack::newReading(const double& time, double temperature) {
  return Zel::keyedNew<Attr::reading>(*this, reading_, time, temperature);
}

void Rack::readingNotify(const double& time) {
  Zel::notifyOwner(*this, Attr::reading,
                   [&](NotifieeConst& notifiee) { notifiee.onReading(time); });
}

void Rack::serialIs(unsigned long long serial) {
  Zel::singularIs<&NotifieeConst::onSerial>(*this, Attr::serial, serial_, serial);
}

void Rack::slotIs(const SlotCode& slot) {
  Zel::singularIs<&NotifieeConst::onSlot>(*this, Attr::slot, slot_, slot);
}

void Rack::picksIs(unsigned picks) {
  Zel::singularIs<&NotifieeConst::onPicks>(*this, Attr::picks, picks_, picks);
}

unsigned Rack::picksInc(unsigned by) {
  return Zel::counterInc<&NotifieeConst::onPicks>(*this, Attr::picks, picks_, by);
}

Rack::NotifieeConst::~NotifieeConst() = default;
void Rack::NotifieeConst::onZone() {}
void Rack::NotifieeConst::onAllowedZone(Zone /*zone*/) {}
void Rack::NotifieeConst::onAllowedZonezelImmediate() {}
void Rack::NotifieeConst::onAllowedZone() {}
void Rack::NotifieeConst::onReservation(Zel::String8 /*customer*/) {}
void Rack::NotifieeConst::onReservationzelImmediate() {}
void Rack::NotifieeConst::onReservation() {}
void Rack::NotifieeConst::onLabel(Zel::Name /*language*/) {}
void Rack::NotifieeConst::onLabelzelImmediate() {}
void Rack::NotifieeConst::onLabel() {}
void Rack::NotifieeConst::onFootprint() {}
void Rack::NotifieeConst::onSpace(Zone /*zone*/) {}
void Rack::NotifieeConst::onSpacezelImmediate() {}
void Rack::NotifieeConst::onSpace() {}
void Rack::NotifieeConst::onTemperature() {}
void Rack::NotifieeConst::onNote(const double& /*time*/) {}
void Rack::NotifieeConst::onNotezelImmediate() {}
void Rack::NotifieeConst::onNote() {}
void Rack::NotifieeConst::onReading(const double& /*time*/) {}
void Rack::NotifieeConst::onReadingzelImmediate() {}
void Rack::NotifieeConst::onReading() {}
void Rack::NotifieeConst::onSerial() {}
void Rack::NotifieeConst::onSlot() {}
void Rack::NotifieeConst::onPicks() {}
Rack::Notifiee::~Notifiee() = default;

} // namespace Foreign
