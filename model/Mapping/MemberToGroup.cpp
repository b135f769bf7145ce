#include <model/Mapping/MemberToGroup.h>

namespace Maintenance {

using Profile::ProfileKey;
using Profile::ProfileType;

namespace {

using Attr = MemberToGroup::Attr;
using Callbacks = MemberToGroup::NotifieeConst;
using Row = Zel::Rows<MemberToGroup>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<MemberToGroup::GroupMap, &MemberToGroup::groupMap>::keyed<
        &MemberToGroup::group, &MemberToGroup::groupIs, &MemberToGroup::groupDel,
        &MemberToGroup::groupDelAll, &MemberToGroup::groupNotify, Callbacks, &Callbacks::onGroup,
        &Callbacks::onGroup, &Callbacks::zelPendingGroup>(Attr::group, "group", Zel::virtualAccess),
    Row::Collection<MemberToGroup::SelectedProfileMap, &MemberToGroup::selectedProfileMap>::keyed<
        &MemberToGroup::selectedProfile, &MemberToGroup::selectedProfileIs,
        &MemberToGroup::selectedProfileDel, &MemberToGroup::selectedProfileDelAll,
        &MemberToGroup::selectedProfileNotify, Callbacks, &Callbacks::onSelectedProfile,
        &Callbacks::onSelectedProfile, &Callbacks::zelPendingSelectedProfile>(
        Attr::selectedProfile, "selectedProfile", Zel::virtualAccess),
    Row::singular<&MemberToGroup::profileChangeCause, &MemberToGroup::profileChangeCauseIs,
                  Callbacks, &Callbacks::onProfileChangeCause>(
        Attr::profileChangeCause, "profileChangeCause", Zel::virtualAccess),
    Row::singular<&MemberToGroup::partOfDynamicUnit, &MemberToGroup::partOfDynamicUnitIs, Callbacks,
                  &Callbacks::onPartOfDynamicUnit>(Attr::partOfDynamicUnit, "partOfDynamicUnit",
                                                   Zel::virtualAccess),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table =
    Zel::tableOf<MemberToGroup, Zel::Name>(rows, {.hasFactory = false});

} // namespace

const Zel::TypeTable& MemberToGroup::zelTable() { return table; }

MemberToGroup::MemberToGroup(Zel::Name name) : AttrLogEntity(std::move(name)) {}
MemberToGroup::~MemberToGroup() = default;

void MemberToGroup::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 MemberToGroup::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

bool MemberToGroup::group(const Group::GroupKey& key) const {
  return Zel::keyedRead(*this, group_, key);
}

void MemberToGroup::groupIs(const Group::GroupKey& key, bool value) {
  Zel::keyedIs<Attr::group, &MemberToGroup::newGroup, &MemberToGroup::groupNotify>(*this, group_,
                                                                                   key, value);
}

bool MemberToGroup::groupDel(const Group::GroupKey& key) {
  return Zel::keyedDel<Attr::group, &MemberToGroup::groupNotify>(*this, group_, key);
}

bool MemberToGroup::groupDel(GroupMap::Iterator& at) {
  return Zel::keyedDel<Attr::group, &MemberToGroup::groupNotify>(*this, group_, at);
}

void MemberToGroup::groupDelAll() {
  Zel::collectionDelAll(*this, group_, [this](GroupMap::Iterator& at) { groupDel(at); });
}

Zel::Ptr<MemberToGroup::ZelGroup> MemberToGroup::newGroup(const Group::GroupKey& key, bool value) {
  return Zel::keyedNew<Attr::group>(*this, group_, key, value);
}

void MemberToGroup::groupNotify(const Group::GroupKey& key) {
  Zel::notifyOwner(*this, Attr::group, [&](NotifieeConst& notifiee) { notifiee.onGroup(key); });
}

ProfileKey MemberToGroup::selectedProfile(ProfileType type) const {
  return Zel::keyedRead(*this, selectedProfile_, type);
}

void MemberToGroup::selectedProfileIs(ProfileType type, const ProfileKey& key) {
  Zel::keyedIs<Attr::selectedProfile, &MemberToGroup::newSelectedProfile,
               &MemberToGroup::selectedProfileNotify>(*this, selectedProfile_, type, key);
}

ProfileKey MemberToGroup::selectedProfileDel(ProfileType type) {
  return Zel::keyedDel<Attr::selectedProfile, &MemberToGroup::selectedProfileNotify>(
      *this, selectedProfile_, type);
}

ProfileKey MemberToGroup::selectedProfileDel(SelectedProfileMap::Iterator& at) {
  return Zel::keyedDel<Attr::selectedProfile, &MemberToGroup::selectedProfileNotify>(
      *this, selectedProfile_, at);
}

void MemberToGroup::selectedProfileDelAll() {
  Zel::collectionDelAll(*this, selectedProfile_,
                        [this](SelectedProfileMap::Iterator& at) { selectedProfileDel(at); });
}

Zel::Ptr<MemberToGroup::ZelSelectedProfile>
MemberToGroup::newSelectedProfile(ProfileType type, const ProfileKey& key) {
  return Zel::keyedNew<Attr::selectedProfile>(*this, selectedProfile_, type, key);
}

void MemberToGroup::selectedProfileNotify(ProfileType type) {
  Zel::notifyOwner(*this, Attr::selectedProfile,
                   [&](NotifieeConst& notifiee) { notifiee.onSelectedProfile(type); });
}

void MemberToGroup::profileChangeCauseIs(ProfileChangeCause cause) {
  Zel::singularIs<&NotifieeConst::onProfileChangeCause>(*this, Attr::profileChangeCause,
                                                        profileChangeCause_, cause);
}

void MemberToGroup::partOfDynamicUnitIs(bool part) {
  Zel::singularIs<&NotifieeConst::onPartOfDynamicUnit>(*this, Attr::partOfDynamicUnit,
                                                       partOfDynamicUnit_, part);
}

MemberToGroup::NotifieeConst::~NotifieeConst() = default;
void MemberToGroup::NotifieeConst::onGroup(const Group::GroupKey& /*key*/) {}
void MemberToGroup::NotifieeConst::onGroupzelImmediate() {}
void MemberToGroup::NotifieeConst::onGroup() {}
void MemberToGroup::NotifieeConst::onSelectedProfile(ProfileType /*type*/) {}
void MemberToGroup::NotifieeConst::onSelectedProfilezelImmediate() {}
void MemberToGroup::NotifieeConst::onSelectedProfile() {}
void MemberToGroup::NotifieeConst::onProfileChangeCause() {}
void MemberToGroup::NotifieeConst::onPartOfDynamicUnit() {}
MemberToGroup::Notifiee::~Notifiee() = default;

} // namespace Maintenance
