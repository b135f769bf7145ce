#include "Expectations.h"

namespace Conformance {

namespace {

using Zel::AttrKind;
using Zel::TypeKind;

// clang-format off
constexpr Expected onBootUnitAndReason[] = {
    {2, "unitName", AttrKind::key, 0, "", "Zel::String"},
    {3, "reason", AttrKind::key, 0, "", "Maintenance::Unit::InputSrc"},
};

constexpr Expected agentInfo[] = {
    {258, "agentPid", AttrKind::singular, 0, "", "U32"},
    {259, "restartCount", AttrKind::counter, 0, "", "U32"},
    {260, "onBoot", AttrKind::singular, 0, "", "bool"},
    {261, "onBootMaintEnter", AttrKind::ownKey, 0, "Zel::String",
     "Maintenance::OnBootUnitAndReason"},
    {262, "ready", AttrKind::singular, 0, "", "bool"},
};

constexpr ExpectedType types[] = {
    {"Maintenance::OnBootUnitAndReason", TypeKind::value, false, onBootUnitAndReason},
    {"Maintenance::AgentInfo", TypeKind::entity, true, agentInfo},
};
// clang-format on

} // namespace

std::span<const ExpectedType> maintenanceAgentInfoExpectations() { return types; }

} // namespace Conformance
