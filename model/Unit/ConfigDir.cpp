#include <model/Unit/ConfigDir.h>

namespace Maintenance::Unit {

namespace {

using Attr = ConfigDir::Attr;
using Callbacks = ConfigDir::NotifieeConst;
using Row = Zel::Rows<ConfigDir>;

constexpr Zel::AttrRow rows[] = {
    Row::Collection<ConfigDir::ConfigMap, &ConfigDir::configMap>::Of<>::instantiating<
        &ConfigDir::config, &ConfigDir::configIs, &ConfigDir::configDel, &ConfigDir::configDelAll,
        &ConfigDir::configNotify, Callbacks, &Callbacks::onConfig, &Callbacks::onConfig,
        &Callbacks::zelPendingConfig>(Attr::config, "config"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<ConfigDir, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& ConfigDir::zelTable() { return table; }

ConfigDir::ConfigDir(Zel::Name name) : AttrLogEntity(std::move(name)) {}

ConfigDir::~ConfigDir() {
  Zel::directoryTearDown(notifiees_, [this] { configDelAll(); });
}

void ConfigDir::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 ConfigDir::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::Ptr<Config> ConfigDir::config(Zel::Name unit) const {
  return Zel::memberRead(*this, config_, unit);
}

Zel::Ptr<Config> ConfigDir::newConfig(Zel::Name unit) {
  return Zel::memberNew(*this, Attr::config, config_, Zel::makeObject<Config>(unit));
}

Zel::ValidPtr<Config> ConfigDir::configIs(Zel::Name unit) {
  return Zel::memberIs<&ConfigDir::configNotify>(*this, config_, unit,
                                                 [&] { return newConfig(unit); });
}

Zel::Ptr<Config> ConfigDir::configDel(Zel::Name unit) {
  return Zel::memberDel<Attr::config, &ConfigDir::configNotify>(*this, config_, unit);
}

Zel::Ptr<Config> ConfigDir::configDel(ConfigMap::Iterator& at) {
  return Zel::memberDel<Attr::config, &ConfigDir::configNotify>(*this, config_, at);
}

void ConfigDir::configDelAll() {
  Zel::collectionDelAll(*this, config_, [this](ConfigMap::Iterator& at) { configDel(at); });
}

void ConfigDir::configNotify(Zel::Name unit) {
  Zel::notifyOwner(*this, Attr::config, [&](NotifieeConst& notifiee) { notifiee.onConfig(unit); });
}

ConfigDir::NotifieeConst::~NotifieeConst() = default;
void ConfigDir::NotifieeConst::onConfig(Zel::Name /*unit*/) {}
void ConfigDir::NotifieeConst::onConfigzelImmediate() {}
void ConfigDir::NotifieeConst::onConfig() {}
ConfigDir::Notifiee::~Notifiee() = default;

Zel::Ptr<ConfigDir> configDirFactory(Zel::Name name) {
  return Zel::makeObject<ConfigDir>(std::move(name));
}

} // namespace Maintenance::Unit
