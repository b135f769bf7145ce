#include <model/Mapping/ProfileSelection.h>

namespace Maintenance {

namespace {

using Self = ProfileSelection;
using Attr = Self::Attr;
using Callbacks = Self::NotifieeConst;
using Row = Zel::Rows<Self>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<Self::UnitProfileSelectionMap, &Self::unitProfileSelectionMap>::Of<>::
        instantiating<&Self::unitProfileSelection, &Self::unitProfileSelectionIs,
                      &Self::unitProfileSelectionDel, &Self::unitProfileSelectionDelAll,
                      &Self::unitProfileSelectionNotify, Callbacks,
                      &Callbacks::onUnitProfileSelection, &Callbacks::onUnitProfileSelection,
                      &Callbacks::zelPendingUnitProfileSelection>(Attr::unitProfileSelection,
                                                                  "unitProfileSelection"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Self>(rows);

} // namespace

const Zel::TypeTable& ProfileSelection::zelTable() { return table; }

ProfileSelection::ProfileSelection() = default;

ProfileSelection::~ProfileSelection() {
  Zel::directoryTearDown(notifiees_, [this] { unitProfileSelectionDelAll(); });
}

void ProfileSelection::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::Ptr<UnitProfileSelection>
ProfileSelection::unitProfileSelection(const UnitProfileSelKey& key) const {
  return Zel::memberRead(*this, unitProfileSelection_, key);
}

Zel::Ptr<UnitProfileSelection>
ProfileSelection::newUnitProfileSelection(const UnitProfileSelKey& key) {
  return Zel::memberNew(*this, Attr::unitProfileSelection, unitProfileSelection_,
                        Zel::makeObject<UnitProfileSelection>(key));
}

Zel::ValidPtr<UnitProfileSelection>
ProfileSelection::unitProfileSelectionIs(const UnitProfileSelKey& key) {
  return Zel::memberIs<&Self::unitProfileSelectionNotify>(
      *this, unitProfileSelection_, key, [&] { return newUnitProfileSelection(key); });
}

Zel::Ptr<UnitProfileSelection>
ProfileSelection::unitProfileSelectionDel(const UnitProfileSelKey& key) {
  return Zel::memberDel<Attr::unitProfileSelection, &Self::unitProfileSelectionNotify>(
      *this, unitProfileSelection_, key);
}

Zel::Ptr<UnitProfileSelection>
ProfileSelection::unitProfileSelectionDel(UnitProfileSelectionMap::Iterator& at) {
  return Zel::memberDel<Attr::unitProfileSelection, &Self::unitProfileSelectionNotify>(
      *this, unitProfileSelection_, at);
}

void ProfileSelection::unitProfileSelectionDelAll() {
  Zel::collectionDelAll(
      *this, unitProfileSelection_,
      [this](UnitProfileSelectionMap::Iterator& at) { unitProfileSelectionDel(at); });
}

void ProfileSelection::unitProfileSelectionNotify(const UnitProfileSelKey& key) {
  Zel::notifyOwner(*this, Attr::unitProfileSelection,
                   [&](NotifieeConst& notifiee) { notifiee.onUnitProfileSelection(key); });
}

ProfileSelection::NotifieeConst::~NotifieeConst() = default;
void ProfileSelection::NotifieeConst::onUnitProfileSelection(const UnitProfileSelKey& /*key*/) {}
void ProfileSelection::NotifieeConst::onUnitProfileSelectionzelImmediate() {}
void ProfileSelection::NotifieeConst::onUnitProfileSelection() {}
ProfileSelection::Notifiee::~Notifiee() = default;

Zel::Ptr<ProfileSelection> profileSelectionFactory() { return Zel::makeObject<ProfileSelection>(); }

} // namespace Maintenance
