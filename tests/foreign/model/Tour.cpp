#include "Tour.h"

namespace Foreign {

namespace {

using StopCallbacks = Stop::NotifieeConst;

constexpr Zel::AttrRow stopRows[] = {
    Zel::Rows<Stop>::singular<&Stop::urgent, &Stop::urgentIs, StopCallbacks,
                              &StopCallbacks::onUrgent>(Stop::Attr::urgent, "urgent"),
    Zel::Rows<Stop>::key<&Stop::key>(Stop::Attr::key, "key"),
    Zel::Rows<Stop>::frameworkKey<&Stop::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(stopRows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable stopTable = Zel::tableOf<Stop, SkuKey>(stopRows);

constexpr Zel::AttrRow markRows[] = {
    Zel::Rows<Mark>::key<&Mark::key>(Mark::Attr::key, "key"),
    Zel::Rows<Mark>::frameworkKey<&Mark::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(markRows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable markTable = Zel::tableOf<Mark, SkuKey>(markRows);

using Attr = Tour::Attr;
using Callbacks = Tour::NotifieeConst;
using Row = Zel::Rows<Tour>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Tour::key>(Attr::key, "key"),
    Row::counter<&Tour::metres, &Tour::metresIs, &Tour::metresInc, Callbacks, &Callbacks::onMetres>(
        Attr::metres, "metres"),
    Row::singular<&Tour::complete, &Tour::completeIs, Callbacks, &Callbacks::onComplete>(
        Attr::complete, "complete"),
    Row::Collection<Tour::HelperMap, &Tour::helperMap>::keyed<
        &Tour::helper, &Tour::helperIs, &Tour::helperDel, &Tour::helperDelAll, &Tour::helperNotify,
        Callbacks, &Callbacks::onHelper, &Callbacks::onHelper, &Callbacks::zelPendingHelper>(
        Attr::helper, "helper"),
    Row::Collection<Tour::StopMap, &Tour::stopMap>::Of<>::instantiating<
        &Tour::stop, &Tour::stopIs, &Tour::stopDel, &Tour::stopDelAll, &Tour::stopNotify, Callbacks,
        &Callbacks::onStop, &Callbacks::onStop, &Callbacks::zelPendingStop>(Attr::stop, "stop"),
    Row::Collection<Tour::MarkMap, &Tour::markMap>::Of<>::instantiating<
        &Tour::mark, &Tour::markIs, &Tour::markDel, &Tour::markDelAll, &Tour::markNotify, Callbacks,
        &Callbacks::onMark, &Callbacks::onMark, &Callbacks::zelPendingMark>(Attr::mark, "mark"),
    Row::frameworkKey<&Tour::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Tour, TourKey>(rows);

} // namespace

const Zel::TypeTable& Stop::zelTable() { return stopTable; }

Stop::Stop(const SkuKey& key) : key_(key) {}
Stop::~Stop() = default;

void Stop::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

void Stop::urgentIs(bool urgent) {
  Zel::singularIs<&NotifieeConst::onUrgent>(*this, Attr::urgent, urgent_, urgent);
}

Stop::NotifieeConst::~NotifieeConst() = default;
void Stop::NotifieeConst::onUrgent() {}
Stop::Notifiee::~Notifiee() = default;

const Zel::TypeTable& Mark::zelTable() { return markTable; }

Mark::Mark(const SkuKey& key) : key_(key) {}
Mark::~Mark() = default;

const Zel::TypeTable& Tour::zelTable() { return table; }

Tour::Tour(const TourKey& key) : key_(key) {}

Tour::~Tour() {
  Zel::directoryTearDown(notifiees_, [this] {
    stopDelAll();
    markDelAll();
  });
}

void Tour::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

void Tour::metresIs(unsigned metres) {
  Zel::singularIs<&NotifieeConst::onMetres>(*this, Attr::metres, metres_, metres);
}

unsigned Tour::metresInc(unsigned by) {
  return Zel::counterInc<&NotifieeConst::onMetres>(*this, Attr::metres, metres_, by);
}

void Tour::completeIs(bool complete) {
  Zel::singularIs<&NotifieeConst::onComplete>(*this, Attr::complete, complete_, complete);
}

bool Tour::helper(Zel::String8 name) const { return Zel::keyedRead(*this, helper_, name); }

void Tour::helperIs(Zel::String8 name, bool value) {
  Zel::keyedIs<Attr::helper, &Tour::newHelper, &Tour::helperNotify>(*this, helper_, name, value);
}

bool Tour::helperDel(Zel::String8 name) {
  return Zel::keyedDel<Attr::helper, &Tour::helperNotify>(*this, helper_, name);
}

bool Tour::helperDel(HelperMap::Iterator& at) {
  return Zel::keyedDel<Attr::helper, &Tour::helperNotify>(*this, helper_, at);
}

void Tour::helperDelAll() {
  Zel::collectionDelAll(*this, helper_, [this](HelperMap::Iterator& at) { helperDel(at); });
}

Zel::Ptr<Tour::ZelHelper> Tour::newHelper(Zel::String8 name, bool value) {
  return Zel::keyedNew<Attr::helper>(*this, helper_, name, value);
}

void Tour::helperNotify(Zel::String8 name) {
  Zel::notifyOwner(*this, Attr::helper, [&](NotifieeConst& notifiee) { notifiee.onHelper(name); });
}

Zel::Ptr<Stop> Tour::stop(const SkuKey& key) const { return Zel::memberRead(*this, stop_, key); }

Zel::Ptr<Stop> Tour::newStop(const SkuKey& key) {
  return Zel::memberNew(*this, Attr::stop, stop_, Zel::makeObject<Stop>(key));
}

Zel::ValidPtr<Stop> Tour::stopIs(const SkuKey& key) {
  return Zel::memberIs<&Tour::stopNotify>(*this, stop_, key, [&] { return newStop(key); });
}

Zel::Ptr<Stop> Tour::stopDel(const SkuKey& key) {
  return Zel::memberDel<Attr::stop, &Tour::stopNotify>(*this, stop_, key);
}

Zel::Ptr<Stop> Tour::stopDel(StopMap::Iterator& at) {
  return Zel::memberDel<Attr::stop, &Tour::stopNotify>(*this, stop_, at);
}

void Tour::stopDelAll() {
  Zel::collectionDelAll(*this, stop_, [this](StopMap::Iterator& at) { stopDel(at); });
}

void Tour::stopNotify(const SkuKey& key) {
  Zel::notifyOwner(*this, Attr::stop, [&](NotifieeConst& notifiee) { notifiee.onStop(key); });
}

Zel::Ptr<Mark> Tour::mark(const SkuKey& key) const { return Zel::memberRead(*this, mark_, key); }

Zel::Ptr<Mark> Tour::newMark(const SkuKey& key) {
  return Zel::memberNew(*this, Attr::mark, mark_, Zel::makeObject<Mark>(key));
}

Zel::ValidPtr<Mark> Tour::markIs(const SkuKey& key) {
  return Zel::memberIs<&Tour::markNotify>(*this, mark_, key, [&] { return newMark(key); });
}

Zel::Ptr<Mark> Tour::markDel(const SkuKey& key) {
  return Zel::memberDel<Attr::mark, &Tour::markNotify>(*this, mark_, key);
}

Zel::Ptr<Mark> Tour::markDel(MarkMap::Iterator& at) {
  return Zel::memberDel<Attr::mark, &Tour::markNotify>(*this, mark_, at);
}

void Tour::markDelAll() {
  Zel::collectionDelAll(*this, mark_, [this](MarkMap::Iterator& at) { markDel(at); });
}

void Tour::markNotify(const SkuKey& key) {
  Zel::notifyOwner(*this, Attr::mark, [&](NotifieeConst& notifiee) { notifiee.onMark(key); });
}

Tour::NotifieeConst::~NotifieeConst() = default;
void Tour::NotifieeConst::onMetres() {}
void Tour::NotifieeConst::onComplete() {}
void Tour::NotifieeConst::onHelper(Zel::String8 /*name*/) {}
void Tour::NotifieeConst::onHelperzelImmediate() {}
void Tour::NotifieeConst::onHelper() {}
void Tour::NotifieeConst::onStop(const SkuKey& /*key*/) {}
void Tour::NotifieeConst::onStopzelImmediate() {}
void Tour::NotifieeConst::onStop() {}
void Tour::NotifieeConst::onMark(const SkuKey& /*key*/) {}
void Tour::NotifieeConst::onMarkzelImmediate() {}
void Tour::NotifieeConst::onMark() {}
Tour::Notifiee::~Notifiee() = default;

} // namespace Foreign
