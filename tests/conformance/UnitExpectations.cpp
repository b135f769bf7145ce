#include "Expectations.h"

namespace Conformance {

namespace {

using Zel::AttrKind;
using Zel::TypeKind;

// clang-format off
constexpr Expected builtinUnitName[] = {
    {2, "system", AttrKind::constant, 0, "", "Zel::Name"},
    {3, "linecard", AttrKind::constant, 0, "", "Zel::Name"},
};

constexpr Expected maintenanceStageClasses[] = {
    {2, "maintEnterClass", AttrKind::constant, 0, "", "Zel::Name"},
    {3, "maintExitClass", AttrKind::constant, 0, "", "Zel::Name"},
};

constexpr Expected maintenanceStageList[] = {
    {2, "bgpStage", AttrKind::constant, 0, "", "Zel::String"},
    {3, "rateMonStage", AttrKind::constant, 0, "", "Zel::String"},
};

constexpr Expected trafficRates[] = {
    {2, "outBitsRate", AttrKind::valueMember, 0, "", "U64"},
    {3, "inBitsRate", AttrKind::valueMember, 0, "", "U64"},
    {4, "statsUpdateTime", AttrKind::valueMember, 0, "", "F64"},
};

constexpr Expected stageMgrInstKey[] = {
    {2, "instanceName", AttrKind::computedMember, Zel::constructorArgument, "", "Zel::String"},
    {3, "unitName", AttrKind::valueMember, 0, "", "Zel::String"},
    {4, "genId", AttrKind::valueMember, 0, "", "U32"},
};

constexpr Expected config[] = {
    {258, "unitName", AttrKind::computed, 0, "", "Zel::String"},
    {259, "unitType", AttrKind::singular, 0, "", "Maintenance::Unit::UnitType"},
    {260, "group", AttrKind::keyed, 0, "Group::GroupKey", "bool"},
    {261, "profileName", AttrKind::singular, 0, "", "Zel::String"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Zel::Name"},
};

constexpr Expected configDir[] = {
    {258, "config", AttrKind::instantiating, 0, "Zel::Name", ""},
};

constexpr Expected status[] = {
    {258, "unitName", AttrKind::computed, 0, "", "Zel::String"},
    {259, "unitType", AttrKind::singular, 0, "", "Maintenance::Unit::UnitType"},
    {260, "group", AttrKind::keyed, 0, "Group::GroupKey", "bool"},
    {261, "profileName", AttrKind::singular, 0, "", "Zel::String"},
    {262, "state", AttrKind::singular, 0, "", "Maintenance::Unit::State"},
    {263, "reason", AttrKind::singular, 0, "", "Maintenance::Unit::InputSrc"},
    {264, "timeOfStateChange", AttrKind::singular, 0, "", "F64"},
    {265, "onBootMaintExitTime", AttrKind::singular, 0, "", "F64"},
    {266, "defaultHistorySize", AttrKind::constant, 0, "", "U32"},
    {267, "historySize", AttrKind::singular, 0, "", "U32"},
    {268, "history", AttrKind::ordered, 0, "F64", "Zel::String"},
    {269, "maintEnterInstance", AttrKind::singular, 0, "", "Zel::String"},
    {270, "maintExitInstance", AttrKind::singular, 0, "", "Zel::String"},
    {271, "aggTrafficRate", AttrKind::singular, 0, "", "Maintenance::Unit::TrafficRates"},
    {272, "intfsViolatingTrafficThreshold", AttrKind::keyed, 0, "Vexil::IntfId", "bool"},
    {273, "totalIntfTrafficViolations", AttrKind::counter, 0, "", "U32"},
    {274, "genId", AttrKind::counter, 0, "", "U32"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Zel::Name"},
};

constexpr Expected statusDir[] = {
    {258, "status", AttrKind::instantiating, 0, "Zel::Name", ""},
};

constexpr Expected input[] = {
    {258, "priority", AttrKind::singular, 0, "", "Maintenance::Unit::InputSrc"},
    {259, "unit", AttrKind::keyed, 0, "Zel::String", "bool"},
};

constexpr Expected mergedInput[] = {
    {258, "unitName", AttrKind::computed, 0, "", "Zel::Name"},
    {259, "priority", AttrKind::singular, Zel::constructorArgument, "", "Maintenance::Unit::InputSrc"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Zel::Name"},
};

constexpr Expected mergedInputDir[] = {
    {258, "unit", AttrKind::instantiating, 0, "Zel::Name", ""},
};

constexpr ExpectedType types[] = {
    {"Maintenance::Unit::BuiltinUnitName", TypeKind::value, false, builtinUnitName},
    {"Maintenance::Unit::MaintenanceStageClasses", TypeKind::value, false, maintenanceStageClasses},
    {"Maintenance::Unit::MaintenanceStageList", TypeKind::value, false, maintenanceStageList},
    {"Maintenance::Unit::TrafficRates", TypeKind::value, false, trafficRates},
    {"Maintenance::Unit::StageMgrInstKey", TypeKind::value, false, stageMgrInstKey},
    {"Maintenance::Unit::Config", TypeKind::entity, true, config},
    {"Maintenance::Unit::ConfigDir", TypeKind::entity, true, configDir},
    {"Maintenance::Unit::Status", TypeKind::entity, true, status},
    {"Maintenance::Unit::StatusDir", TypeKind::entity, true, statusDir},
    {"Maintenance::Unit::Input", TypeKind::entity, true, input},
    {"Maintenance::Unit::MergedInput", TypeKind::entity, true, mergedInput},
    {"Maintenance::Unit::MergedInputDir", TypeKind::entity, true, mergedInputDir},
};
// clang-format on

} // namespace

std::span<const ExpectedType> unitExpectations() { return types; }

} // namespace Conformance
