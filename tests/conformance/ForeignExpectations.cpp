#include "Expectations.h"

namespace Conformance {

namespace {

using Zel::AttrKind;
using Zel::TypeKind;

// clang-format off
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

constexpr ExpectedType types[] = {
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

std::span<const ExpectedType> foreignExpectations() { return types; }

} // namespace Conformance
