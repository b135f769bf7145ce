#include <model/Profile/Config.h>

namespace Maintenance::Profile {

namespace {

using Attr = Config::Attr;
using Row = Zel::Rows<Config>;

constexpr Zel::AttrRow rows[] = {
    Row::key<&Config::key>(Attr::key, "key"),
    Row::frameworkKey<&Config::fwkKey>(),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<Config, ProfileKey>(rows, {.hasFactory = false});

} // namespace

const Zel::TypeTable& Config::zelTable() { return table; }

Config::Config(const ProfileKey& key) : AttrLogEntity(Zel::Name()), key_(key) {}
Config::~Config() = default;

void Config::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 Config::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Config::NotifieeConst::~NotifieeConst() = default;
Config::Notifiee::~Notifiee() = default;

} // namespace Maintenance::Profile
