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

constexpr Expected groupProfileSelKey[] = {
    {2, "groupType", AttrKind::key, 0, "", "Group::GroupType"},
    {3, "profileSelReqId", AttrKind::key, 0, "", "U32"},
    {4, "hash", AttrKind::computed, Zel::internal, "", "U32"},
};

constexpr Expected groupProfileSelectionIn[] = {
    {130, "trigger", AttrKind::singular, 0, "", "bool"},
    {131, "groupProfileSelKey", AttrKind::key, 0, "", "Maintenance::GroupProfileSelKey"},
    {132, "groupName", AttrKind::keyed, 0, "Zel::String", "bool"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Maintenance::GroupProfileSelKey"},
};

constexpr Expected groupProfileSelectionOut[] = {
    {130, "groupProfileSelKey", AttrKind::key, 0, "", "Maintenance::GroupProfileSelKey"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Maintenance::GroupProfileSelKey"},
};

constexpr Expected unitProfileSelKey[] = {
    {2, "unitName", AttrKind::key, 0, "", "Zel::String"},
    {3, "profileChangeCause", AttrKind::key, 0, "", "Maintenance::ProfileChangeCause"},
    {4, "hash", AttrKind::computed, Zel::internal, "", "U32"},
};

constexpr Expected unitProfileSelection[] = {
    {130, "unitProfileSelKey", AttrKind::key, 0, "", "Maintenance::UnitProfileSelKey"},
    {131, "genId", AttrKind::counter, 0, "", "U32"},
    {132, "complete", AttrKind::singular, 0, "", "bool"},
    {133, "considerUnitState", AttrKind::singular, 0, "", "bool"},
    {134, "groupProfileSelectionIn", AttrKind::instantiating, 0,
     "Maintenance::GroupProfileSelKey", ""},
    {135, "groupProfileSelectionOut", AttrKind::instantiating, 0,
     "Maintenance::GroupProfileSelKey", ""},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Maintenance::UnitProfileSelKey"},
};

constexpr Expected profileSelection[] = {
    {130, "unitProfileSelection", AttrKind::instantiating, 0, "Maintenance::UnitProfileSelKey", ""},
};

constexpr Expected profileKeySet[] = {
    {130, "profileKey", AttrKind::keyed, Zel::silent, "Maintenance::Profile::ProfileKey", "bool"},
    {131, "winningProfile", AttrKind::computed, Zel::internal, "",
     "Maintenance::Profile::ProfileKey"},
};

constexpr ExpectedType types[] = {
    {"Maintenance::MemberToGroup", TypeKind::entity, true, memberToGroup},
    {"Maintenance::GroupToUnit", TypeKind::entity, false, groupToUnit},
    {"Maintenance::GroupToUnitDir", TypeKind::entity, true, groupToUnitDir},
    {"Maintenance::GroupProfileSelKey", TypeKind::value, false, groupProfileSelKey},
    {"Maintenance::GroupProfileSelectionIn", TypeKind::object, false, groupProfileSelectionIn},
    {"Maintenance::GroupProfileSelectionOut", TypeKind::object, false, groupProfileSelectionOut},
    {"Maintenance::UnitProfileSelKey", TypeKind::value, false, unitProfileSelKey},
    {"Maintenance::UnitProfileSelection", TypeKind::object, false, unitProfileSelection},
    {"Maintenance::ProfileSelection", TypeKind::object, false, profileSelection},
    {"Maintenance::ProfileKeySet", TypeKind::object, false, profileKeySet},
};
// clang-format on

} // namespace

std::span<const ExpectedType> mappingExpectations() { return types; }

} // namespace Conformance
