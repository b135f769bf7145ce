#include "Expectations.h"

namespace Conformance {

namespace {

using Zel::AttrKind;
using Zel::TypeKind;

// clang-format off
constexpr Expected memberToGroup[] = {
    {258, "group", AttrKind::keyed, Zel::virtualAccess, "Group::GroupKey", "bool"},
    {259, "selectedProfile", AttrKind::keyed, Zel::virtualAccess,
     "Maintenance::Profile::ProfileType", "Maintenance::Profile::ProfileKey"},
    {260, "profileChangeCause", AttrKind::singular, Zel::virtualAccess, "",
     "Maintenance::ProfileChangeCause"},
    {261, "partOfDynamicUnit", AttrKind::singular, Zel::virtualAccess, "", "bool"},
};

constexpr Expected groupToUnit[] = {
    {258, "key", AttrKind::key, 0, "", "Group::GroupKey"},
    {259, "unitName", AttrKind::keyed, 0, "Zel::Name", "bool"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Group::GroupKey"},
};

constexpr Expected groupToUnitDir[] = {
    {258, "groupToUnit", AttrKind::instantiating, 0, "Group::GroupKey", ""},
};

constexpr ExpectedType types[] = {
    {"Maintenance::MemberToGroup", TypeKind::entity, true, memberToGroup},
    {"Maintenance::GroupToUnit", TypeKind::entity, false, groupToUnit},
    {"Maintenance::GroupToUnitDir", TypeKind::entity, true, groupToUnitDir},
};
// clang-format on

} // namespace

std::span<const ExpectedType> mappingExpectations() { return types; }

} // namespace Conformance
