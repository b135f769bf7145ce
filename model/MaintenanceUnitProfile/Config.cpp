#include <model/MaintenanceUnitProfile/Config.h>

namespace MaintenanceUnitProfile {

namespace {

namespace Profile = Maintenance::Profile;

using Attr = Config::Attr;
using Callbacks = Config::NotifieeConst;
using Row = Zel::Rows<Config>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Config::profileName>(Attr::profileName, "profileName"),
    Row::singular<&Config::onBootDuration, &Config::onBootDurationIs, Callbacks,
                  &Callbacks::onOnBootDuration>(Attr::onBootDuration, "onBootDuration"),
    Row::constant<&Config::minOnBootDuration>(Attr::minOnBootDuration, "minOnBootDuration"),
    Row::constant<&Config::maxOnBootDuration>(Attr::maxOnBootDuration, "maxOnBootDuration"),
    Row::singular<&Config::onBootEnabled, &Config::onBootEnabledIs, Callbacks,
                  &Callbacks::onOnBootEnabled>(Attr::onBootEnabled, "onBootEnabled"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstAttributeId(3)));

constexpr Zel::TypeTable table =
    Zel::tableOf<Config, Zel::String8>(rows, {.base = Profile::Config::zelTable});

} // namespace

const Zel::TypeTable& Config::zelTable() { return table; }

Config::Config(Zel::String8 profileName)
    : AttrLogEntity(Profile::ProfileKey(Profile::profileTypeUnit, profileName)),
      profileName_(std::move(profileName)) {}
Config::~Config() = default;

Zel::String8 Config::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Profile::Config::attributeString(id); });
}

void Config::onBootDurationIs(unsigned duration) {
  Zel::singularIs(*this, Attr::onBootDuration, onBootDuration_, duration,
                  Zel::tellDerived<NotifieeConst, &NotifieeConst::onOnBootDuration>);
}

unsigned Config::minOnBootDuration() const noexcept {
  Zel::countRead(*this);
  return minOnBootDuration_;
}

unsigned Config::maxOnBootDuration() const noexcept {
  Zel::countRead(*this);
  return maxOnBootDuration_;
}

void Config::onBootEnabledIs(bool enabled) {
  Zel::singularIs(*this, Attr::onBootEnabled, onBootEnabled_, enabled,
                  Zel::tellDerived<NotifieeConst, &NotifieeConst::onOnBootEnabled>);
}

Config::NotifieeConst::~NotifieeConst() = default;
void Config::NotifieeConst::onOnBootDuration() {}
void Config::NotifieeConst::onOnBootEnabled() {}
Config::Notifiee::~Notifiee() = default;

Zel::Ptr<Config> configFactory(Zel::String8 profileName) {
  return Zel::makeObject<Config>(std::move(profileName));
}

} // namespace MaintenanceUnitProfile
