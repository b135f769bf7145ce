#include <model/Profile/ConfigDir.h>

namespace Maintenance::Profile {

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

Zel::Ptr<Config> ConfigDir::config(const ProfileKey& key) const {
  return Zel::memberRead(*this, config_, key);
}

Zel::Ptr<Config> ConfigDir::newConfig(const ProfileKey& key) {
  return Zel::memberNew(*this, Attr::config, config_, Zel::makeObject<Config>(key));
}

Zel::ValidPtr<Config> ConfigDir::configIs(const ProfileKey& key) {
  return Zel::memberIs<&ConfigDir::configNotify>(*this, config_, key,
                                                 [&] { return newConfig(key); });
}

Zel::Ptr<Config> ConfigDir::configDel(const ProfileKey& key) {
  return Zel::memberDel<Attr::config, &ConfigDir::configNotify>(*this, config_, key);
}

Zel::Ptr<Config> ConfigDir::configDel(ConfigMap::Iterator& at) {
  return Zel::memberDel<Attr::config, &ConfigDir::configNotify>(*this, config_, at);
}

void ConfigDir::configDelAll() {
  Zel::collectionDelAll(*this, config_, [this](ConfigMap::Iterator& at) { configDel(at); });
}

void ConfigDir::configNotify(const ProfileKey& key) {
  Zel::notifyOwner(*this, Attr::config, [&](NotifieeConst& notifiee) { notifiee.onConfig(key); });
}

ConfigDir::NotifieeConst::~NotifieeConst() = default;
void ConfigDir::NotifieeConst::onConfig(const ProfileKey& /*key*/) {}
void ConfigDir::NotifieeConst::onConfigzelImmediate() {}
void ConfigDir::NotifieeConst::onConfig() {}
ConfigDir::Notifiee::~Notifiee() = default;

Zel::Ptr<ConfigDir> configDirFactory(Zel::Name name) {
  return Zel::makeObject<ConfigDir>(std::move(name));
}

} // namespace Maintenance::Profile
