#include <model/MaintenanceGroup/ConfigDir.h>

namespace Maintenance::MaintenanceGroup {

namespace {

using Attr = ConfigDir::Attr;
using Callbacks = ConfigDir::NotifieeConst;
using Row = Zel::Rows<ConfigDir>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<ConfigDir::MaintenanceGroupMap, &ConfigDir::maintenanceGroupMap>::Of<>::
        instantiating<&ConfigDir::maintenanceGroup, &ConfigDir::maintenanceGroupIs,
                      &ConfigDir::maintenanceGroupDel, &ConfigDir::maintenanceGroupDelAll,
                      &ConfigDir::maintenanceGroupNotify, Callbacks, &Callbacks::onMaintenanceGroup,
                      &Callbacks::onMaintenanceGroup, &Callbacks::zelPendingMaintenanceGroup>(
            Attr::maintenanceGroup, "maintenanceGroup"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<ConfigDir, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& ConfigDir::zelTable() { return table; }

ConfigDir::ConfigDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

ConfigDir::~ConfigDir() {
  Zel::directoryTearDown(notifiees_, [this] { maintenanceGroupDelAll(); });
}

void ConfigDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 ConfigDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<Config> ConfigDir::maintenanceGroup(const Group::GroupKey& key) const {
  return Zel::memberRead(*this, maintenanceGroup_, key);
}

Zel::Ptr<Config> ConfigDir::newMaintenanceGroup(const Group::GroupKey& key) {
  return Zel::memberNew(*this, Attr::maintenanceGroup, maintenanceGroup_,
                        Zel::makeObject<Config>(Zel::Name(Group::valueToStrep(key)), key));
}

Zel::ValidPtr<Config> ConfigDir::maintenanceGroupIs(const Group::GroupKey& key) {
  return Zel::memberIs<&ConfigDir::maintenanceGroupNotify>(
      *this, maintenanceGroup_, key, [&] { return newMaintenanceGroup(key); });
}

Zel::Ptr<Config> ConfigDir::maintenanceGroupDel(const Group::GroupKey& key) {
  return Zel::memberDel<Attr::maintenanceGroup, &ConfigDir::maintenanceGroupNotify>(
      *this, maintenanceGroup_, key);
}

Zel::Ptr<Config> ConfigDir::maintenanceGroupDel(MaintenanceGroupMap::Iterator& at) {
  return Zel::memberDel<Attr::maintenanceGroup, &ConfigDir::maintenanceGroupNotify>(
      *this, maintenanceGroup_, at);
}

void ConfigDir::maintenanceGroupDelAll() {
  Zel::collectionDelAll(*this, maintenanceGroup_,
                        [this](MaintenanceGroupMap::Iterator& at) { maintenanceGroupDel(at); });
}

void ConfigDir::maintenanceGroupNotify(const Group::GroupKey& key) {
  Zel::notifyOwner(*this, Attr::maintenanceGroup,
                   [&](NotifieeConst& notifiee) { notifiee.onMaintenanceGroup(key); });
}

ConfigDir::NotifieeConst::~NotifieeConst() = default;
void ConfigDir::NotifieeConst::onMaintenanceGroup(const Group::GroupKey& /*key*/) {}
void ConfigDir::NotifieeConst::onMaintenanceGroupzelImmediate() {}
void ConfigDir::NotifieeConst::onMaintenanceGroup() {}
ConfigDir::Notifiee::~Notifiee() = default;

Zel::Ptr<ConfigDir> configDirFactory(Zel::Name name) {
  return Zel::makeObject<ConfigDir>(std::move(name));
}

} // namespace Maintenance::MaintenanceGroup
