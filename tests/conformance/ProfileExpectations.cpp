#include "Expectations.h"

namespace Conformance {

namespace {

using Zel::AttrKind;
using Zel::TypeKind;

// clang-format off
constexpr Expected profileKey[] = {
    {2, "type", AttrKind::key, 0, "", "Maintenance::Profile::ProfileType"},
    {3, "name", AttrKind::key, 0, "", "Zel::String"},
    {4, "hash", AttrKind::computed, 0, "", "U32"},
};

constexpr Expected config[] = {
    {258, "key", AttrKind::key, 0, "", "Maintenance::Profile::ProfileKey"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Maintenance::Profile::ProfileKey"},
};

constexpr Expected configDir[] = {
    {258, "config", AttrKind::instantiating, 0, "Maintenance::Profile::ProfileKey", ""},
};

constexpr Expected defaultProfile[] = {
    {258, "systemDefaultProfileName", AttrKind::constant, 0, "", "Zel::String"},
    {259, "profileName", AttrKind::singular, 0, "", "Zel::String"},
    {260, "reservedProfileName", AttrKind::constant, 0, "", "Zel::String"},
};

constexpr ExpectedType types[] = {
    {"Maintenance::Profile::ProfileKey", TypeKind::value, false, profileKey},
    {"Maintenance::Profile::Config", TypeKind::entity, false, config},
    {"Maintenance::Profile::ConfigDir", TypeKind::entity, true, configDir},
    {"Maintenance::Profile::DefaultProfile", TypeKind::entity, true, defaultProfile},
};
// clang-format on

} // namespace

std::span<const ExpectedType> profileExpectations() { return types; }

} // namespace Conformance
