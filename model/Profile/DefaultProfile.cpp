#include <model/Profile/DefaultProfile.h>

namespace Maintenance::Profile {

namespace {

using Attr = DefaultProfile::Attr;
using Callbacks = DefaultProfile::NotifieeConst;
using Row = Zel::Rows<DefaultProfile>;

constexpr Zel::AttrRow rows[] = {
    Row::constant<&DefaultProfile::systemDefaultProfileName>(Attr::systemDefaultProfileName,
                                                             "systemDefaultProfileName"),
    Row::singular<&DefaultProfile::profileName, &DefaultProfile::profileNameIs, Callbacks,
                  &Callbacks::onProfileName>(Attr::profileName, "profileName"),
    Row::constant<&DefaultProfile::reservedProfileName>(Attr::reservedProfileName,
                                                        "reservedProfileName"),
};
static_assert(Zel::rowsAreInOrder(rows, Zel::firstEntityAttributeId));

constexpr Zel::TypeTable table = Zel::tableOf<DefaultProfile, Zel::Name>(rows);

} // namespace

const Zel::TypeTable& DefaultProfile::zelTable() { return table; }

DefaultProfile::DefaultProfile(Zel::Name name) : AttrLogEntity(std::move(name)) {}
DefaultProfile::~DefaultProfile() = default;

void DefaultProfile::zeroReferencesIs(bool /*zero*/) { Zel::notifyZeroReferences(*this); }

Zel::String8 DefaultProfile::attributeString(Zel::AttributeId id) const {
  return Zel::attributeString(table, id, [&] { return Entity::attributeString(id); });
}

Zel::String8 DefaultProfile::systemDefaultProfileName() const {
  Zel::countRead(*this);
  return "#DEFAULTPROFILE";
}

void DefaultProfile::profileNameIs(Zel::String8 name) {
  Zel::singularIs<&NotifieeConst::onProfileName>(*this, Attr::profileName, profileName_,
                                                 std::move(name));
}

Zel::String8 DefaultProfile::reservedProfileName() const {
  Zel::countRead(*this);
  return "default";
}

DefaultProfile::NotifieeConst::~NotifieeConst() = default;
void DefaultProfile::NotifieeConst::onProfileName() {}
DefaultProfile::Notifiee::~Notifiee() = default;

Zel::Ptr<DefaultProfile> defaultProfileFactory(Zel::Name name) {
  return Zel::makeObject<DefaultProfile>(std::move(name));
}

} // namespace Maintenance::Profile
