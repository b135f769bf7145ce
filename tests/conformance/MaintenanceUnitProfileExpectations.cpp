#include "Expectations.h"

namespace Conformance {

namespace {

using Zel::AttrKind;
using Zel::TypeKind;

// clang-format off
constexpr Expected config[] = {
    {386, "profileName", AttrKind::key, 0, "", "Zel::String"},
    {387, "onBootDuration", AttrKind::singular, 0, "", "U32"},
    {388, "minOnBootDuration", AttrKind::constant, 0, "", "U32"},
    {389, "maxOnBootDuration", AttrKind::constant, 0, "", "U32"},
    {390, "onBootEnabled", AttrKind::singular, 0, "", "bool"},
};

constexpr Expected configDir[] = {
    {258, "config", AttrKind::instantiating, 0, "Zel::String", ""},
};

constexpr ExpectedType types[] = {
    {"MaintenanceUnitProfile::Config", TypeKind::entity, false, config},
    {"MaintenanceUnitProfile::ConfigDir", TypeKind::entity, true, configDir},
};
// clang-format on

} // namespace

std::span<const ExpectedType> maintenanceUnitProfileExpectations() { return types; }

} // namespace Conformance
