#include <model/Mapping/UnitProfileSelection.h>

namespace Maintenance {

namespace {

using Self = UnitProfileSelection;
using Attr = Self::Attr;
using Callbacks = Self::NotifieeConst;
using Row = Zel::Rows<Self>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Self::unitProfileSelKey>(Attr::unitProfileSelKey, "unitProfileSelKey"),
    Row::counter<&Self::genId, &Self::genIdIs, &Self::genIdInc, Callbacks, &Callbacks::onGenId>(
        Attr::genId, "genId"),
    Row::singular<&Self::complete, &Self::completeIs, Callbacks, &Callbacks::onComplete>(
        Attr::complete, "complete"),
    Row::singular<&Self::considerUnitState, &Self::considerUnitStateIs, Callbacks,
                  &Callbacks::onConsiderUnitState>(Attr::considerUnitState, "considerUnitState"),
    Row::Collection<Self::GroupProfileSelectionInMap, &Self::groupProfileSelectionInMap>::Of<>::
        instantiating<&Self::groupProfileSelectionIn, &Self::groupProfileSelectionInIs,
                      &Self::groupProfileSelectionInDel, &Self::groupProfileSelectionInDelAll,
                      &Self::groupProfileSelectionInNotify, Callbacks,
                      &Callbacks::onGroupProfileSelectionIn, &Callbacks::onGroupProfileSelectionIn,
                      &Callbacks::zelPendingGroupProfileSelectionIn>(Attr::groupProfileSelectionIn,
                                                                     "groupProfileSelectionIn"),
    Row::Collection<Self::GroupProfileSelectionOutMap, &Self::groupProfileSelectionOutMap>::Of<>::
        instantiating<&Self::groupProfileSelectionOut, &Self::groupProfileSelectionOutIs,
                      &Self::groupProfileSelectionOutDel, &Self::groupProfileSelectionOutDelAll,
                      &Self::groupProfileSelectionOutNotify, Callbacks,
                      &Callbacks::onGroupProfileSelectionOut,
                      &Callbacks::onGroupProfileSelectionOut,
                      &Callbacks::zelPendingGroupProfileSelectionOut>(
            Attr::groupProfileSelectionOut, "groupProfileSelectionOut"),
    Row::frameworkKey<&Self::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Self, UnitProfileSelKey>(rows);

} // namespace

const Zel::TypeTable& UnitProfileSelection::zelTable() { return table; }

UnitProfileSelection::UnitProfileSelection(const UnitProfileSelKey& unitProfileSelKey)
    : unitProfileSelKey_(unitProfileSelKey) {}

UnitProfileSelection::~UnitProfileSelection() {
  Zel::directoryTearDown(notifiees_, [this] {
    groupProfileSelectionInDelAll();
    groupProfileSelectionOutDelAll();
  });
}

void UnitProfileSelection::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

void UnitProfileSelection::genIdIs(unsigned id) {
  Zel::singularIs<&NotifieeConst::onGenId>(*this, Attr::genId, genId_, id);
}

unsigned UnitProfileSelection::genIdInc(unsigned by) {
  return Zel::counterInc<&NotifieeConst::onGenId>(*this, Attr::genId, genId_, by);
}

void UnitProfileSelection::completeIs(bool complete) {
  Zel::singularIs<&NotifieeConst::onComplete>(*this, Attr::complete, complete_, complete);
}

void UnitProfileSelection::considerUnitStateIs(bool consider) {
  Zel::singularIs<&NotifieeConst::onConsiderUnitState>(*this, Attr::considerUnitState,
                                                       considerUnitState_, consider);
}

Zel::Ptr<GroupProfileSelectionIn>
UnitProfileSelection::groupProfileSelectionIn(const GroupProfileSelKey& key) const {
  return Zel::memberRead(*this, groupProfileSelectionIn_, key);
}

Zel::Ptr<GroupProfileSelectionIn>
UnitProfileSelection::newGroupProfileSelectionIn(const GroupProfileSelKey& key) {
  return Zel::memberNew(*this, Attr::groupProfileSelectionIn, groupProfileSelectionIn_,
                        Zel::makeObject<GroupProfileSelectionIn>(key));
}

Zel::ValidPtr<GroupProfileSelectionIn>
UnitProfileSelection::groupProfileSelectionInIs(const GroupProfileSelKey& key) {
  return Zel::memberIs<&Self::groupProfileSelectionInNotify>(
      *this, groupProfileSelectionIn_, key, [&] { return newGroupProfileSelectionIn(key); });
}

Zel::Ptr<GroupProfileSelectionIn>
UnitProfileSelection::groupProfileSelectionInDel(const GroupProfileSelKey& key) {
  return Zel::memberDel<Attr::groupProfileSelectionIn, &Self::groupProfileSelectionInNotify>(
      *this, groupProfileSelectionIn_, key);
}

Zel::Ptr<GroupProfileSelectionIn>
UnitProfileSelection::groupProfileSelectionInDel(GroupProfileSelectionInMap::Iterator& at) {
  return Zel::memberDel<Attr::groupProfileSelectionIn, &Self::groupProfileSelectionInNotify>(
      *this, groupProfileSelectionIn_, at);
}

void UnitProfileSelection::groupProfileSelectionInDelAll() {
  Zel::collectionDelAll(
      *this, groupProfileSelectionIn_,
      [this](GroupProfileSelectionInMap::Iterator& at) { groupProfileSelectionInDel(at); });
}

void UnitProfileSelection::groupProfileSelectionInNotify(const GroupProfileSelKey& key) {
  Zel::notifyOwner(*this, Attr::groupProfileSelectionIn,
                   [&](NotifieeConst& notifiee) { notifiee.onGroupProfileSelectionIn(key); });
}

Zel::Ptr<GroupProfileSelectionOut>
UnitProfileSelection::groupProfileSelectionOut(const GroupProfileSelKey& key) const {
  return Zel::memberRead(*this, groupProfileSelectionOut_, key);
}

Zel::Ptr<GroupProfileSelectionOut>
UnitProfileSelection::newGroupProfileSelectionOut(const GroupProfileSelKey& key) {
  return Zel::memberNew(*this, Attr::groupProfileSelectionOut, groupProfileSelectionOut_,
                        Zel::makeObject<GroupProfileSelectionOut>(key));
}

Zel::ValidPtr<GroupProfileSelectionOut>
UnitProfileSelection::groupProfileSelectionOutIs(const GroupProfileSelKey& key) {
  return Zel::memberIs<&Self::groupProfileSelectionOutNotify>(
      *this, groupProfileSelectionOut_, key, [&] { return newGroupProfileSelectionOut(key); });
}

Zel::Ptr<GroupProfileSelectionOut>
UnitProfileSelection::groupProfileSelectionOutDel(const GroupProfileSelKey& key) {
  return Zel::memberDel<Attr::groupProfileSelectionOut, &Self::groupProfileSelectionOutNotify>(
      *this, groupProfileSelectionOut_, key);
}

Zel::Ptr<GroupProfileSelectionOut>
UnitProfileSelection::groupProfileSelectionOutDel(GroupProfileSelectionOutMap::Iterator& at) {
  return Zel::memberDel<Attr::groupProfileSelectionOut, &Self::groupProfileSelectionOutNotify>(
      *this, groupProfileSelectionOut_, at);
}

void UnitProfileSelection::groupProfileSelectionOutDelAll() {
  Zel::collectionDelAll(
      *this, groupProfileSelectionOut_,
      [this](GroupProfileSelectionOutMap::Iterator& at) { groupProfileSelectionOutDel(at); });
}

void UnitProfileSelection::groupProfileSelectionOutNotify(const GroupProfileSelKey& key) {
  Zel::notifyOwner(*this, Attr::groupProfileSelectionOut,
                   [&](NotifieeConst& notifiee) { notifiee.onGroupProfileSelectionOut(key); });
}

UnitProfileSelection::NotifieeConst::~NotifieeConst() = default;
void UnitProfileSelection::NotifieeConst::onGenId() {}
void UnitProfileSelection::NotifieeConst::onComplete() {}
void UnitProfileSelection::NotifieeConst::onConsiderUnitState() {}
void UnitProfileSelection::NotifieeConst::onGroupProfileSelectionIn(
    const GroupProfileSelKey& /*key*/) {}
void UnitProfileSelection::NotifieeConst::onGroupProfileSelectionInzelImmediate() {}
void UnitProfileSelection::NotifieeConst::onGroupProfileSelectionIn() {}
void UnitProfileSelection::NotifieeConst::onGroupProfileSelectionOut(
    const GroupProfileSelKey& /*key*/) {}
void UnitProfileSelection::NotifieeConst::onGroupProfileSelectionOutzelImmediate() {}
void UnitProfileSelection::NotifieeConst::onGroupProfileSelectionOut() {}
UnitProfileSelection::Notifiee::~Notifiee() = default;

Zel::Ptr<UnitProfileSelection>
unitProfileSelectionFactory(const UnitProfileSelKey& unitProfileSelKey) {
  return Zel::makeObject<UnitProfileSelection>(unitProfileSelKey);
}

} // namespace Maintenance
