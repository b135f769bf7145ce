#include <model/Mapping/GroupToUnitDir.h>

namespace Maintenance {

namespace {

using Attr = GroupToUnitDir::Attr;
using Callbacks = GroupToUnitDir::NotifieeConst;
using Row = Zel::Rows<GroupToUnitDir>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<GroupToUnitDir::GroupToUnitMap, &GroupToUnitDir::groupToUnitMap>::Of<>::
        instantiating<&GroupToUnitDir::groupToUnit, &GroupToUnitDir::groupToUnitIs,
                      &GroupToUnitDir::groupToUnitDel, &GroupToUnitDir::groupToUnitDelAll,
                      &GroupToUnitDir::groupToUnitNotify, Callbacks, &Callbacks::onGroupToUnit,
                      &Callbacks::onGroupToUnit, &Callbacks::zelPendingGroupToUnit>(
            Attr::groupToUnit, "groupToUnit"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<GroupToUnitDir, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& GroupToUnitDir::zelTable() { return table; }

GroupToUnitDir::GroupToUnitDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

GroupToUnitDir::~GroupToUnitDir() {
  Zel::directoryTearDown(notifiees_, [this] { groupToUnitDelAll(); });
}

void GroupToUnitDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 GroupToUnitDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<GroupToUnit> GroupToUnitDir::groupToUnit(const Group::GroupKey& key) const {
  return Zel::memberRead(*this, groupToUnit_, key);
}

Zel::Ptr<GroupToUnit> GroupToUnitDir::newGroupToUnit(const Group::GroupKey& key) {
  return Zel::memberNew(*this, Attr::groupToUnit, groupToUnit_, Zel::makeObject<GroupToUnit>(key));
}

Zel::ValidPtr<GroupToUnit> GroupToUnitDir::groupToUnitIs(const Group::GroupKey& key) {
  return Zel::memberIs<&GroupToUnitDir::groupToUnitNotify>(*this, groupToUnit_, key,
                                                           [&] { return newGroupToUnit(key); });
}

Zel::Ptr<GroupToUnit> GroupToUnitDir::groupToUnitDel(const Group::GroupKey& key) {
  return Zel::memberDel<Attr::groupToUnit, &GroupToUnitDir::groupToUnitNotify>(*this, groupToUnit_,
                                                                               key);
}

Zel::Ptr<GroupToUnit> GroupToUnitDir::groupToUnitDel(GroupToUnitMap::Iterator& at) {
  return Zel::memberDel<Attr::groupToUnit, &GroupToUnitDir::groupToUnitNotify>(*this, groupToUnit_,
                                                                               at);
}

void GroupToUnitDir::groupToUnitDelAll() {
  Zel::collectionDelAll(*this, groupToUnit_,
                        [this](GroupToUnitMap::Iterator& at) { groupToUnitDel(at); });
}

void GroupToUnitDir::groupToUnitNotify(const Group::GroupKey& key) {
  Zel::notifyOwner(*this, Attr::groupToUnit,
                   [&](NotifieeConst& notifiee) { notifiee.onGroupToUnit(key); });
}

GroupToUnitDir::NotifieeConst::~NotifieeConst() = default;
void GroupToUnitDir::NotifieeConst::onGroupToUnit(const Group::GroupKey& /*key*/) {}
void GroupToUnitDir::NotifieeConst::onGroupToUnitzelImmediate() {}
void GroupToUnitDir::NotifieeConst::onGroupToUnit() {}
GroupToUnitDir::Notifiee::~Notifiee() = default;

Zel::Ptr<GroupToUnitDir> groupToUnitDirFactory(Zel::Name name) {
  return Zel::makeObject<GroupToUnitDir>(std::move(name));
}

} // namespace Maintenance
