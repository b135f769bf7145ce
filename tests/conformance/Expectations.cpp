#include "Expectations.h"

#include <vector>

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

constexpr Expected profileConfig[] = {
    {258, "key", AttrKind::key, 0, "", "Maintenance::Profile::ProfileKey"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Maintenance::Profile::ProfileKey"},
};

constexpr Expected profileConfigDir[] = {
    {258, "config", AttrKind::instantiating, 0, "Maintenance::Profile::ProfileKey", ""},
};

constexpr Expected defaultProfile[] = {
    {258, "systemDefaultProfileName", AttrKind::constant, 0, "", "Zel::String"},
    {259, "profileName", AttrKind::singular, 0, "", "Zel::String"},
    {260, "reservedProfileName", AttrKind::constant, 0, "", "Zel::String"},
};

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

constexpr Expected unitConfig[] = {
    {258, "unitName", AttrKind::computed, 0, "", "Zel::String"},
    {259, "unitType", AttrKind::singular, 0, "", "Maintenance::Unit::UnitType"},
    {260, "group", AttrKind::keyed, 0, "Group::GroupKey", "bool"},
    {261, "profileName", AttrKind::singular, 0, "", "Zel::String"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Zel::Name"},
};

constexpr Expected unitConfigDir[] = {
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

constexpr Expected skuKey[] = {
    {2, "zone", AttrKind::key, 0, "", "Foreign::Zone"},
    {3, "sku", AttrKind::key, 0, "", "Zel::String"},
    {4, "hash", AttrKind::computed, 0, "", "U32"},
};

constexpr Expected dimensions[] = {
    {2, "width", AttrKind::valueMember, 0, "", "U32"},
    {3, "fragile", AttrKind::valueMember, 0, "", "bool"},
    {4, "weight", AttrKind::valueMember, 0, "", "F64"},
    {5, "zone", AttrKind::valueMember, 0, "", "Foreign::Zone"},
};

constexpr Expected slotCode[] = {
    {2, "code", AttrKind::computedMember, Zel::constructorArgument, "", "Zel::String"},
    {3, "aisle", AttrKind::valueMember, 0, "", "Zel::String"},
    {4, "shelf", AttrKind::valueMember, 0, "", "U32"},
};

constexpr Expected alarm[] = {
    {2, "sensor", AttrKind::key, 0, "", "Zel::String"},
    {3, "urgency", AttrKind::key, 0, "", "Foreign::Urgency"},
};

constexpr Expected tourKey[] = {
    {2, "zone", AttrKind::key, 0, "", "Foreign::Zone"},
    {3, "round", AttrKind::key, 0, "", "U32"},
    {4, "hash", AttrKind::computed, Zel::internal, "", "U32"},
};

constexpr Expected limits[] = {
    {2, "maxShelf", AttrKind::constant, 0, "", "U32"},
    {3, "homeAisle", AttrKind::constant, 0, "", "Zel::Name"},
};

constexpr Expected product[] = {
    {258, "key", AttrKind::key, 0, "", "Foreign::SkuKey"},
    {259, "price", AttrKind::singular, 0, "", "F64"},
    {260, "supplier", AttrKind::keyed, 0, "Zel::Name", "bool"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Foreign::SkuKey"},
};

constexpr Expected productDir[] = {
    {258, "product", AttrKind::instantiating, 0, "Foreign::SkuKey", ""},
};

constexpr Expected perishable[] = {
    {386, "sku", AttrKind::key, 0, "", "Zel::String"},
    {387, "shelfLife", AttrKind::singular, 0, "", "U32"},
    {388, "minShelfLife", AttrKind::constant, 0, "", "U32"},
    {389, "batch", AttrKind::keyed, 0, "Zel::String", "U32"},
    {390, "recalled", AttrKind::singular, 0, "", "bool"},
    {391, "sold", AttrKind::counter, 0, "", "U32"},
};

constexpr Expected perishableDir[] = {
    {258, "perishable", AttrKind::instantiating, 0, "Zel::String", ""},
};

constexpr Expected rack[] = {
    {258, "rackName", AttrKind::computed, 0, "", "Zel::String"},
    {259, "zone", AttrKind::singular, 0, "", "Foreign::Zone"},
    {260, "allowedZone", AttrKind::keyed, 0, "Foreign::Zone", "bool"},
    {261, "reservation", AttrKind::keyed, 0, "Zel::String", "bool"},
    {262, "label", AttrKind::keyed, 0, "Zel::Name", "Zel::String"},
    {263, "footprint", AttrKind::singular, 0, "", "Foreign::Dimensions"},
    {264, "space", AttrKind::keyed, 0, "Foreign::Zone", "Foreign::Dimensions"},
    {265, "capacity", AttrKind::constant, 0, "", "U32"},
    {266, "temperature", AttrKind::singular, 0, "", "F64"},
    {267, "note", AttrKind::ordered, 0, "F64", "Zel::String"},
    {268, "reading", AttrKind::ordered, 0, "F64", "F64"},
    {269, "serial", AttrKind::singular, 0, "", "U64"},
    {270, "slot", AttrKind::singular, 0, "", "Foreign::SlotCode"},
    {271, "picks", AttrKind::counter, 0, "", "U32"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Zel::Name"},
};

constexpr Expected carrier[] = {
    {258, "load", AttrKind::keyed, Zel::virtualAccess, "Foreign::SkuKey", "bool"},
    {259, "target", AttrKind::keyed, Zel::virtualAccess, "Foreign::Zone", "Foreign::SlotCode"},
    {260, "urgency", AttrKind::singular, Zel::virtualAccess, "", "Foreign::Urgency"},
    {261, "idle", AttrKind::singular, Zel::virtualAccess, "", "bool"},
};

constexpr Expected order[] = {
    {258, "orderName", AttrKind::computed, 0, "", "Zel::Name"},
    {259, "urgency", AttrKind::singular, Zel::constructorArgument, "", "Foreign::Urgency"},
    {260, "item", AttrKind::keyed, 0, "Zel::String", "U32"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Zel::Name"},
};

constexpr Expected orderDir[] = {
    {258, "order", AttrKind::instantiating, 0, "Zel::Name", ""},
};

constexpr Expected depot[] = {
    {258, "pid", AttrKind::singular, 0, "", "U32"},
    {259, "restarts", AttrKind::counter, 0, "", "U32"},
    {260, "alarm", AttrKind::ownKey, 0, "Zel::String", "Foreign::Alarm"},
    {261, "open", AttrKind::singular, 0, "", "bool"},
};

constexpr Expected stop[] = {
    {130, "urgent", AttrKind::singular, 0, "", "bool"},
    {131, "key", AttrKind::key, 0, "", "Foreign::SkuKey"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Foreign::SkuKey"},
};

constexpr Expected mark[] = {
    {130, "key", AttrKind::key, 0, "", "Foreign::SkuKey"},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Foreign::SkuKey"},
};

constexpr Expected tour[] = {
    {130, "key", AttrKind::key, 0, "", "Foreign::TourKey"},
    {131, "metres", AttrKind::counter, 0, "", "U32"},
    {132, "complete", AttrKind::singular, 0, "", "bool"},
    {133, "helper", AttrKind::keyed, 0, "Zel::String", "bool"},
    {134, "stop", AttrKind::instantiating, 0, "Foreign::SkuKey", ""},
    {135, "mark", AttrKind::instantiating, 0, "Foreign::SkuKey", ""},
    {0, "fwkKey", AttrKind::frameworkKey, 0, "", "Foreign::TourKey"},
};

constexpr Expected pickPlan[] = {
    {130, "tour", AttrKind::instantiating, 0, "Foreign::TourKey", ""},
};

constexpr Expected pickSet[] = {
    {130, "candidate", AttrKind::keyed, Zel::silent, "Foreign::SkuKey", "bool"},
    {131, "winner", AttrKind::computed, Zel::internal, "", "Foreign::SkuKey"},
};

constexpr ExpectedType modelTypes[] = {
    {"Maintenance::Profile::ProfileKey", TypeKind::value, false, profileKey},
    {"Maintenance::Profile::Config", TypeKind::entity, false, profileConfig},
    {"Maintenance::Profile::ConfigDir", TypeKind::entity, true, profileConfigDir},
    {"Maintenance::Profile::DefaultProfile", TypeKind::entity, true, defaultProfile},
    {"Maintenance::Unit::BuiltinUnitName", TypeKind::value, false, builtinUnitName},
    {"Maintenance::Unit::MaintenanceStageClasses", TypeKind::value, false, maintenanceStageClasses},
    {"Maintenance::Unit::MaintenanceStageList", TypeKind::value, false, maintenanceStageList},
    {"Maintenance::Unit::TrafficRates", TypeKind::value, false, trafficRates},
    {"Maintenance::Unit::StageMgrInstKey", TypeKind::value, false, stageMgrInstKey},
    {"Maintenance::Unit::Config", TypeKind::entity, true, unitConfig},
    {"Maintenance::Unit::ConfigDir", TypeKind::entity, true, unitConfigDir},
    {"Maintenance::Unit::Status", TypeKind::entity, true, status},
    {"Maintenance::Unit::StatusDir", TypeKind::entity, true, statusDir},
    {"Maintenance::Unit::Input", TypeKind::entity, true, input},
    {"Maintenance::Unit::MergedInput", TypeKind::entity, true, mergedInput},
    {"Maintenance::Unit::MergedInputDir", TypeKind::entity, true, mergedInputDir},
};

constexpr ExpectedType foreignTypes[] = {
    {"Foreign::SkuKey", TypeKind::value, false, skuKey},
    {"Foreign::Dimensions", TypeKind::value, false, dimensions},
    {"Foreign::SlotCode", TypeKind::value, false, slotCode},
    {"Foreign::Alarm", TypeKind::value, false, alarm},
    {"Foreign::TourKey", TypeKind::value, false, tourKey},
    {"Foreign::Limits", TypeKind::value, false, limits},
    {"Foreign::Product", TypeKind::entity, false, product},
    {"Foreign::ProductDir", TypeKind::entity, true, productDir},
    {"Foreign::Perishable", TypeKind::entity, false, perishable},
    {"Foreign::PerishableDir", TypeKind::entity, true, perishableDir},
    {"Foreign::Rack", TypeKind::entity, true, rack},
    {"Foreign::Carrier", TypeKind::entity, true, carrier},
    {"Foreign::Order", TypeKind::entity, true, order},
    {"Foreign::OrderDir", TypeKind::entity, true, orderDir},
    {"Foreign::Depot", TypeKind::entity, true, depot},
    {"Foreign::Stop", TypeKind::object, false, stop},
    {"Foreign::Mark", TypeKind::object, false, mark},
    {"Foreign::Tour", TypeKind::object, false, tour},
    {"Foreign::PickPlan", TypeKind::object, false, pickPlan},
    {"Foreign::PickSet", TypeKind::object, false, pickSet},
};
// clang-format on

} // namespace

std::span<const ExpectedType> expectations() {
  static const std::vector<ExpectedType> all = [] {
    std::vector<ExpectedType> made;
    const auto add = [&](std::span<const ExpectedType> module) {
      made.insert(made.end(), module.begin(), module.end());
    };
    add(modelTypes);
    add(mappingExpectations());
    add(maintenanceGroupExpectations());
    add(maintenanceUnitProfileExpectations());
    add(maintenanceAgentInfoExpectations());
    add(foreignTypes);
    return made;
  }();
  return all;
}

} // namespace Conformance
