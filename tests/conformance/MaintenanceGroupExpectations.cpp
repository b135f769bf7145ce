#include "Expectations.h"

namespace Conformance {

namespace {

using Zel::AttrKind;
using Zel::TypeKind;

// clang-format off
constexpr Expected config[] = {
    {258, "key", AttrKind::key, 0, "", "Group::GroupKey"},
    {259, "profile", AttrKind::keyed, 0, "Maintenance::Profile::ProfileKey", "bool"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Group::GroupKey"},
};

constexpr Expected configDir[] = {
    {258, "maintenanceGroup", AttrKind::instantiating, 0, "Group::GroupKey", ""},
};

constexpr ExpectedType types[] = {
    {"Maintenance::MaintenanceGroup::Config", TypeKind::entity, true, config},
    {"Maintenance::MaintenanceGroup::ConfigDir", TypeKind::entity, true, configDir},
};
// clang-format on

} // namespace

std::span<const ExpectedType> maintenanceGroupExpectations() { return types; }

} // namespace Conformance
