#include <model/Mapping/GroupProfileSelectionIn.h>

namespace Maintenance {

namespace {

using Self = GroupProfileSelectionIn;
using Attr = Self::Attr;
using Callbacks = Self::NotifieeConst;
using Row = Zel::Rows<Self>;

constexpr Zel::AttrRow rows[] = {
    Row::singular<&Self::trigger, &Self::triggerIs, Callbacks, &Callbacks::onTrigger>(Attr::trigger,
                                                                                      "trigger"),
    Row::key<&Self::groupProfileSelKey>(Attr::groupProfileSelKey, "groupProfileSelKey"),
    Row::Collection<Self::GroupNameMap, &Self::groupNameMap>::keyed<
        &Self::groupName, &Self::groupNameIs, &Self::groupNameDel, &Self::groupNameDelAll,
        &Self::groupNameNotify, Callbacks, &Callbacks::onGroupName, &Callbacks::onGroupName,
        &Callbacks::zelPendingGroupName>(Attr::groupName, "groupName"),
    Row::frameworkKey<&Self::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstObjectAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Self, GroupProfileSelKey>(rows);

} // namespace

const Zel::TypeTable& GroupProfileSelectionIn::zelTable() { return table; }

GroupProfileSelectionIn::GroupProfileSelectionIn(const GroupProfileSelKey& groupProfileSelKey)
    : groupProfileSelKey_(groupProfileSelKey) {}
GroupProfileSelectionIn::~GroupProfileSelectionIn() = default;

void GroupProfileSelectionIn::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

void GroupProfileSelectionIn::triggerIs(bool trigger) {
  Zel::singularIs<&NotifieeConst::onTrigger>(*this, Attr::trigger, trigger_, trigger);
}

bool GroupProfileSelectionIn::groupName(Zel::String8 name) const {
  return Zel::keyedRead(*this, groupName_, name);
}

void GroupProfileSelectionIn::groupNameIs(Zel::String8 name, bool value) {
  Zel::keyedIs<Attr::groupName, &Self::newGroupName, &Self::groupNameNotify>(*this, groupName_,
                                                                             name, value);
}

bool GroupProfileSelectionIn::groupNameDel(Zel::String8 name) {
  return Zel::keyedDel<Attr::groupName, &Self::groupNameNotify>(*this, groupName_, name);
}

bool GroupProfileSelectionIn::groupNameDel(GroupNameMap::Iterator& at) {
  return Zel::keyedDel<Attr::groupName, &Self::groupNameNotify>(*this, groupName_, at);
}

void GroupProfileSelectionIn::groupNameDelAll() {
  Zel::collectionDelAll(*this, groupName_,
                        [this](GroupNameMap::Iterator& at) { groupNameDel(at); });
}

Zel::Ptr<GroupProfileSelectionIn::ZelGroupName>
GroupProfileSelectionIn::newGroupName(Zel::String8 name, bool value) {
  return Zel::keyedNew<Attr::groupName>(*this, groupName_, name, value);
}

void GroupProfileSelectionIn::groupNameNotify(Zel::String8 name) {
  Zel::notifyOwner(*this, Attr::groupName,
                   [&](NotifieeConst& notifiee) { notifiee.onGroupName(name); });
}

GroupProfileSelectionIn::NotifieeConst::~NotifieeConst() = default;
void GroupProfileSelectionIn::NotifieeConst::onTrigger() {}
void GroupProfileSelectionIn::NotifieeConst::onGroupName(Zel::String8 /*name*/) {}
void GroupProfileSelectionIn::NotifieeConst::onGroupNamezelImmediate() {}
void GroupProfileSelectionIn::NotifieeConst::onGroupName() {}
GroupProfileSelectionIn::Notifiee::~Notifiee() = default;

Zel::Ptr<GroupProfileSelectionIn>
groupProfileSelectionInFactory(const GroupProfileSelKey& groupProfileSelKey) {
  return Zel::makeObject<GroupProfileSelectionIn>(groupProfileSelKey);
}

} // namespace Maintenance
