#include <model/Unit/MergedInputDir.h>

namespace Maintenance::Unit {

namespace {

using Attr = MergedInputDir::Attr;
using Callbacks = MergedInputDir::NotifieeConst;
using Row = Zel::Rows<MergedInputDir>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<MergedInputDir::UnitMap, &MergedInputDir::unitMap>::Of<InputSrc>::instantiating<
        &MergedInputDir::unit, &MergedInputDir::unitIs, &MergedInputDir::unitDel,
        &MergedInputDir::unitDelAll, &MergedInputDir::unitNotify, Callbacks, &Callbacks::onUnit,
        &Callbacks::onUnit, &Callbacks::zelPendingUnit>(Attr::unit, "unit"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<MergedInputDir, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& MergedInputDir::zelTable() { return table; }

MergedInputDir::MergedInputDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

MergedInputDir::~MergedInputDir() {
  Zel::directoryTearDown(notifiees_, [this] { unitDelAll(); });
}

void MergedInputDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 MergedInputDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<MergedInput> MergedInputDir::unit(Zel::Name name) const {
  return Zel::memberRead(*this, unit_, name);
}

Zel::Ptr<MergedInput> MergedInputDir::newUnit(Zel::Name name, InputSrc priority) {
  return Zel::memberNew(*this, Attr::unit, unit_, Zel::makeObject<MergedInput>(name, priority));
}

Zel::ValidPtr<MergedInput> MergedInputDir::unitIs(Zel::Name name, InputSrc priority) {
  return Zel::memberIs<&MergedInputDir::unitNotify>(
      *this, unit_, name, [&] { return newUnit(name, priority); },
      [&](MergedInput& member) { member.priorityIs(priority); });
}

Zel::Ptr<MergedInput> MergedInputDir::unitDel(Zel::Name name) {
  return Zel::memberDel<Attr::unit, &MergedInputDir::unitNotify>(*this, unit_, name);
}

Zel::Ptr<MergedInput> MergedInputDir::unitDel(UnitMap::Iterator& at) {
  return Zel::memberDel<Attr::unit, &MergedInputDir::unitNotify>(*this, unit_, at);
}

void MergedInputDir::unitDelAll() {
  Zel::collectionDelAll(*this, unit_, [this](UnitMap::Iterator& at) { unitDel(at); });
}

void MergedInputDir::unitNotify(Zel::Name name) {
  Zel::notifyOwner(*this, Attr::unit, [&](NotifieeConst& notifiee) { notifiee.onUnit(name); });
}

MergedInputDir::NotifieeConst::~NotifieeConst() = default;
void MergedInputDir::NotifieeConst::onUnit(Zel::Name /*name*/) {}
void MergedInputDir::NotifieeConst::onUnitzelImmediate() {}
void MergedInputDir::NotifieeConst::onUnit() {}
MergedInputDir::Notifiee::~Notifiee() = default;

Zel::Ptr<MergedInputDir> mergedInputDirFactory(Zel::Name name) {
  return Zel::makeObject<MergedInputDir>(std::move(name));
}

} // namespace Maintenance::Unit
