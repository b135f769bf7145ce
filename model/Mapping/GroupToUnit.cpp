#include <model/Mapping/GroupToUnit.h>

namespace Maintenance {

namespace {

using Attr = GroupToUnit::Attr;
using Callbacks = GroupToUnit::NotifieeConst;
using Row = Zel::Rows<GroupToUnit>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&GroupToUnit::key>(Attr::key, "key"),
    Row::Collection<GroupToUnit::UnitNameMap, &GroupToUnit::unitNameMap>::keyed<
        &GroupToUnit::unitName, &GroupToUnit::unitNameIs, &GroupToUnit::unitNameDel,
        &GroupToUnit::unitNameDelAll, &GroupToUnit::unitNameNotify, Callbacks,
        &Callbacks::onUnitName, &Callbacks::onUnitName, &Callbacks::zelPendingUnitName>(
        Attr::unitName, "unitName"),
    Row::frameworkKey<&GroupToUnit::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table =
    Zel::tableOf<GroupToUnit, Group::GroupKey>(rows, {.hasFactory = false});

} // namespace

const Zel::TypeTable& GroupToUnit::zelTable() { return table; }

GroupToUnit::GroupToUnit(const Group::GroupKey& key) : AttrLogEntity(Zel::Name()), key_(key) {}
GroupToUnit::~GroupToUnit() = default;

void GroupToUnit::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 GroupToUnit::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

bool GroupToUnit::unitName(Zel::Name name) const { return Zel::keyedRead(*this, unitName_, name); }

void GroupToUnit::unitNameIs(Zel::Name name, bool value) {
  Zel::keyedIs<Attr::unitName, &GroupToUnit::newUnitName, &GroupToUnit::unitNameNotify>(
      *this, unitName_, name, value);
}

bool GroupToUnit::unitNameDel(Zel::Name name) {
  return Zel::keyedDel<Attr::unitName, &GroupToUnit::unitNameNotify>(*this, unitName_, name);
}

bool GroupToUnit::unitNameDel(UnitNameMap::Iterator& at) {
  return Zel::keyedDel<Attr::unitName, &GroupToUnit::unitNameNotify>(*this, unitName_, at);
}

void GroupToUnit::unitNameDelAll() {
  Zel::collectionDelAll(*this, unitName_, [this](UnitNameMap::Iterator& at) { unitNameDel(at); });
}

Zel::Ptr<GroupToUnit::ZelUnitName> GroupToUnit::newUnitName(Zel::Name name, bool value) {
  return Zel::keyedNew<Attr::unitName>(*this, unitName_, name, value);
}

void GroupToUnit::unitNameNotify(Zel::Name name) {
  Zel::notifyOwner(*this, Attr::unitName,
                   [&](NotifieeConst& notifiee) { notifiee.onUnitName(name); });
}

GroupToUnit::NotifieeConst::~NotifieeConst() = default;
void GroupToUnit::NotifieeConst::onUnitName(Zel::Name /*name*/) {}
void GroupToUnit::NotifieeConst::onUnitNamezelImmediate() {}
void GroupToUnit::NotifieeConst::onUnitName() {}
GroupToUnit::Notifiee::~Notifiee() = default;

} // namespace Maintenance
