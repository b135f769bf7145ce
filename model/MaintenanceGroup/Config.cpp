#include <model/MaintenanceGroup/Config.h>

namespace Maintenance::MaintenanceGroup {

namespace {

using Attr = Config::Attr;
using Callbacks = Config::NotifieeConst;
using Row = Zel::Rows<Config>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Config::key>(Attr::key, "key"),
    Row::Collection<Config::ProfileMap, &Config::profileMap>::keyed<
        &Config::profile, &Config::profileIs, &Config::profileDel, &Config::profileDelAll,
        &Config::profileNotify, Callbacks, &Callbacks::onProfile, &Callbacks::onProfile,
        &Callbacks::zelPendingProfile>(Attr::profile, "profile"),
    Row::frameworkKey<&Config::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Config, Zel::Name, Group::GroupKey>(rows);

} // namespace

const Zel::TypeTable& Config::zelTable() { return table; }

Config::Config(Zel::Name name, const Group::GroupKey& key)
    : AttrLogEntity(std::move(name)), key_(key) {}
Config::~Config() = default;

void Config::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Config::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

bool Config::profile(const Profile::ProfileKey& key) const {
  return Zel::keyedRead(*this, profile_, key);
}

void Config::profileIs(const Profile::ProfileKey& key, bool value) {
  Zel::keyedIs<Attr::profile, &Config::newProfile, &Config::profileNotify>(*this, profile_, key,
                                                                           value);
}

bool Config::profileDel(const Profile::ProfileKey& key) {
  return Zel::keyedDel<Attr::profile, &Config::profileNotify>(*this, profile_, key);
}

bool Config::profileDel(ProfileMap::Iterator& at) {
  return Zel::keyedDel<Attr::profile, &Config::profileNotify>(*this, profile_, at);
}

void Config::profileDelAll() {
  Zel::collectionDelAll(*this, profile_, [this](ProfileMap::Iterator& at) { profileDel(at); });
}

Zel::Ptr<Config::ZelProfile> Config::newProfile(const Profile::ProfileKey& key, bool value) {
  return Zel::keyedNew<Attr::profile>(*this, profile_, key, value);
}

void Config::profileNotify(const Profile::ProfileKey& key) {
  Zel::notifyOwner(*this, Attr::profile, [&](NotifieeConst& notifiee) { notifiee.onProfile(key); });
}

Config::NotifieeConst::~NotifieeConst() = default;
void Config::NotifieeConst::onProfile(const Profile::ProfileKey& /*key*/) {}
void Config::NotifieeConst::onProfilezelImmediate() {}
void Config::NotifieeConst::onProfile() {}
Config::Notifiee::~Notifiee() = default;

Zel::Ptr<Config> configFactory(Zel::Name name, const Group::GroupKey& key) {
  return Zel::makeObject<Config>(std::move(name), key);
}

} // namespace Maintenance::MaintenanceGroup
