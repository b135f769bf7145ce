#include <model/Unit/Config.h>

namespace Maintenance::Unit {

namespace {

using Attr = Config::Attr;
using Callbacks = Config::NotifieeConst;
using Row = Zel::Rows<Config>;

constexpr Zel::AttrRow rows[] = {
    Row::computed<&Config::unitName>(Attr::unitName, "unitName"),
    Row::singular<&Config::unitType, &Config::unitTypeIs, Callbacks, &Callbacks::onUnitType>(
        Attr::unitType, "unitType"),
    Row::Collection<Config::GroupMap, &Config::groupMap>::keyed<
        &Config::group, &Config::groupIs, &Config::groupDel, &Config::groupDelAll,
        &Config::groupNotify, Callbacks, &Callbacks::onGroup, &Callbacks::onGroup,
        &Callbacks::zelPendingGroup>(Attr::group, "group"),
    Row::singular<&Config::profileName, &Config::profileNameIs, Callbacks,
                  &Callbacks::onProfileName>(Attr::profileName, "profileName"),
    Row::frameworkKey<&Config::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Config, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& Config::zelTable() { return table; }

Config::Config(Zel::Name name) : AttrLogEntity(std::move(name)) {}
Config::~Config() = default;

void Config::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Config::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::String8 Config::unitName() const {
  Zel::countRead(*this);
  return name();
}

Zel::Name Config::fwkKey() const {
  Zel::countRead(*this);
  return name();
}

void Config::unitTypeIs(UnitType type) {
  Zel::singularIs<&NotifieeConst::onUnitType>(*this, Attr::unitType, unitType_, type);
}

bool Config::group(const Group::GroupKey& key) const { return Zel::keyedRead(*this, group_, key); }

void Config::groupIs(const Group::GroupKey& key, bool value) {
  Zel::keyedIs<Attr::group, &Config::newGroup, &Config::groupNotify>(*this, group_, key, value);
}

bool Config::groupDel(const Group::GroupKey& key) {
  return Zel::keyedDel<Attr::group, &Config::groupNotify>(*this, group_, key);
}

bool Config::groupDel(GroupMap::Iterator& at) {
  return Zel::keyedDel<Attr::group, &Config::groupNotify>(*this, group_, at);
}

void Config::groupDelAll() {
  Zel::collectionDelAll(*this, group_, [this](GroupMap::Iterator& at) { groupDel(at); });
}

Zel::Ptr<Config::ZelGroup> Config::newGroup(const Group::GroupKey& key, bool value) {
  return Zel::keyedNew<Attr::group>(*this, group_, key, value);
}

void Config::groupNotify(const Group::GroupKey& key) {
  Zel::notifyOwner(*this, Attr::group, [&](NotifieeConst& notifiee) { notifiee.onGroup(key); });
}

void Config::profileNameIs(Zel::String8 name) {
  Zel::singularIs<&NotifieeConst::onProfileName>(*this, Attr::profileName, profileName_,
                                                 std::move(name));
}

Config::NotifieeConst::~NotifieeConst() = default;
void Config::NotifieeConst::onUnitType() {}
void Config::NotifieeConst::onGroup(const Group::GroupKey& /*key*/) {}
void Config::NotifieeConst::onGroupzelImmediate() {}
void Config::NotifieeConst::onGroup() {}
void Config::NotifieeConst::onProfileName() {}
Config::Notifiee::~Notifiee() = default;

Zel::Ptr<Config> configFactory(Zel::Name name) { return Zel::makeObject<Config>(std::move(name)); }

} // namespace Maintenance::Unit
