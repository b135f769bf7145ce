#include "Descriptors.h"

#include <foreign/model/Carrier.h>
#include <foreign/model/Depot.h>
#include <foreign/model/Order.h>
#include <foreign/model/Perishable.h>
#include <foreign/model/PickPlan.h>
#include <foreign/model/Rack.h>

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedAttr zone[] = {
    {1, "value",     {0x20001, 0x400},      0, "Foreign::Zone"},
    {0, "ambient",   {0x20001, 0x40200400}, 0, "Foreign::Zone"},
    {1, "chilled",   {0x20001, 0x40200400}, 0, "Foreign::Zone"},
    {2, "frozen",    {0x20001, 0x40200400}, 0, "Foreign::Zone"},
    {9, "hazardous", {0x20001, 0x40200400}, 0, "Foreign::Zone"},
};

constexpr ExpectedAttr urgency[] = {
    {1, "value",          {0x20001, 0x400},      0, "Foreign::Urgency"},
    {0, "urgencyUnknown", {0x20001, 0x40200400}, 0, "Foreign::Urgency"},
    {1, "routine",        {0x20001, 0x40200400}, 0, "Foreign::Urgency"},
    {2, "express",        {0x20001, 0x40200400}, 0, "Foreign::Urgency"},
};

constexpr ExpectedArgument skuKeyArguments[] = {{"zone", "Foreign::Zone"}, {"sku", "Zel::String"}};
constexpr ExpectedAttr skuKey[] = {
    {2, "zone", {0x220109, 0x40000400}, 2, "Foreign::Zone"},
    {3, "sku",  {0x220109, 0x40000400}, 2, "Zel::String"},
    {4, "hash", {0x220001, 0x400},      0, "U32"},
};

constexpr ExpectedAttr dimensions[] = {
    {2, "width",   {0x220107, 0x400}, 2, "U32"},
    {3, "fragile", {0x220107, 0x400}, 2, "bool"},
    {4, "weight",  {0x220107, 0x400}, 2, "F64"},
    {5, "zone",    {0x220107, 0x400}, 2, "Foreign::Zone"},
};

constexpr ExpectedArgument slotCodeArguments[] = {{"code", "Zel::String"}};
constexpr ExpectedAttr slotCode[] = {
    {2, "code",  {0x2000b, 0x400},  0, "Zel::String"},
    {3, "aisle", {0x220107, 0x400}, 2, "Zel::String"},
    {4, "shelf", {0x220107, 0x400}, 2, "U32"},
};

constexpr ExpectedArgument alarmArguments[] = {
    {"sensor", "Zel::String"}, {"urgency", "Foreign::Urgency"},
};
constexpr ExpectedAttr alarm[] = {
    {2, "sensor",  {0x220109, 0x40000400}, 2, "Zel::String"},
    {3, "urgency", {0x220109, 0x40000400}, 2, "Foreign::Urgency"},
};

constexpr ExpectedArgument tourKeyArguments[] = {{"zone", "Foreign::Zone"}, {"round", "U32"}};
constexpr ExpectedAttr tourKey[] = {
    {2, "zone",  {0x220109, 0x40000400}, 2, "Foreign::Zone"},
    {3, "round", {0x220109, 0x40000400}, 2, "U32"},
    {4, "hash",  {0x20001, 0x400},       0, "U32"},
};

constexpr ExpectedAttr limits[] = {
    {2, "maxShelf",  {0x220001, 0x40000410}, 0, "U32"},
    {3, "homeAisle", {0x220001, 0x40000410}, 0, "Zel::Name"},
};

constexpr ExpectedArgument skuArgument[] = {{"key", "Foreign::SkuKey"}};
constexpr ExpectedAttr product[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "key",      {0x220109, 0x40000400}, 2, "Foreign::SkuKey"},
    {259, "price",    {0x220143, 0x1000400},  2, "F64"},
    {260, "supplier", {0x1a20143, 0x1000400}, 2, "bool", "Zel::Name"},
    {0,   "fwkKey",   {0x200001, 0x400},      0, "Foreign::SkuKey"},
};

constexpr ExpectedAttr productDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "product", {0x9a20143, 0x11000400}, 0, "Foreign::Product", "Foreign::SkuKey", "key"},
};

constexpr ExpectedArgument perishableArguments[] = {{"sku", "Zel::String"}};
constexpr ExpectedAttr perishable[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {386, "sku",          {0x220109, 0x40000400}, 2, "Zel::String"},
    {387, "shelfLife",    {0x220143, 0x1000400},  2, "U32"},
    {388, "minShelfLife", {0x220001, 0x40000410}, 0, "U32"},
    {389, "batch",        {0x1a20143, 0x1000400}, 2, "U32", "Zel::String"},
    {390, "recalled",     {0x220143, 0x1000400},  2, "bool"},
    {391, "sold",         {0x220143, 0x1000400},  2, "U32"},
};

constexpr ExpectedAttr perishableDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "perishable", {0x9a20143, 0x11000400}, 0, "Foreign::Perishable", "Zel::String", "sku"},
};

constexpr ExpectedAttr rack[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "rackName",    {0x220001, 0x400},      0, "Zel::String"},
    {259, "zone",        {0x220143, 0x1000400},  2, "Foreign::Zone"},
    {260, "allowedZone", {0x1a20143, 0x1000400}, 2, "bool", "Foreign::Zone"},
    {261, "reservation", {0x1a20143, 0x1000400}, 2, "bool", "Zel::String"},
    {262, "label",       {0x1a20143, 0x1000400}, 2, "Zel::String", "Zel::Name"},
    {263, "footprint",   {0x220143, 0x1000400},  2, "Foreign::Dimensions"},
    {264, "space",       {0x1a20143, 0x1000400}, 2, "Foreign::Dimensions", "Foreign::Zone"},
    {265, "capacity",    {0x220001, 0x40000410}, 0, "U32"},
    {266, "temperature", {0x220143, 0x1000400},  2, "F64"},
    {267, "note",        {0x1a20143, 0x1000400}, 2, "Zel::String", "F64"},
    {268, "reading",     {0x1a20143, 0x1000400}, 2, "F64", "F64"},
    {269, "serial",      {0x220143, 0x1000400},  2, "U64"},
    {270, "slot",        {0x220143, 0x1000400},  2, "Foreign::SlotCode"},
    {271, "picks",       {0x220143, 0x1000400},  2, "U32"},
    {0,   "fwkKey",      {0x200001, 0x400},      0, "Zel::Name"},
};

constexpr ExpectedAttr carrier[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "load",    {0x1a22143, 0x1000400}, 2, "bool", "Foreign::SkuKey"},
    {259, "target",  {0x1a22143, 0x1000400}, 2, "Foreign::SlotCode", "Foreign::Zone"},
    {260, "urgency", {0x222143, 0x1000400},  2, "Foreign::Urgency"},
    {261, "idle",    {0x222143, 0x1000400},  2, "bool"},
};

constexpr ExpectedArgument orderArguments[] = {
    {"name", "Zel::Name"}, {"urgency", "Foreign::Urgency"},
};
constexpr ExpectedAttr order[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "orderName", {0x220001, 0x400},      0, "Zel::Name"},
    {259, "urgency",   {0x22014b, 0x1000400},  2, "Foreign::Urgency"},
    {260, "item",      {0x1a20143, 0x1000400}, 2, "U32", "Zel::String"},
    {0,   "fwkKey",    {0x200001, 0x400},      0, "Zel::Name"},
};

constexpr ExpectedAttr orderDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "order", {0x9a20143, 0x11000400}, 0, "Foreign::Order", "Zel::Name", "name"},
};

constexpr ExpectedAttr depot[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "pid",      {0x220143, 0x1000400},  2, "U32"},
    {259, "restarts", {0x220143, 0x1000400},  2, "U32"},
    {260, "alarm",    {0x1a20143, 0x1000400}, 0, "Foreign::Alarm", "Zel::String", "sensor"},
    {261, "open",     {0x220143, 0x1000400},  2, "bool"},
};

constexpr ExpectedAttr stop[] = {
    {130, "urgent", {0x220143, 0x400},      2, "bool"},
    {131, "key",    {0x220109, 0x40000400}, 2, "Foreign::SkuKey"},
    {0,   "fwkKey", {0x200001, 0x400},      0, "Foreign::SkuKey"},
};

constexpr ExpectedAttr mark[] = {
    {130, "key",    {0x220109, 0x40000400}, 2, "Foreign::SkuKey"},
    {0,   "fwkKey", {0x200001, 0x400},      0, "Foreign::SkuKey"},
};

constexpr ExpectedArgument tourArguments[] = {{"key", "Foreign::TourKey"}};
constexpr ExpectedAttr tour[] = {
    {130, "key",      {0x220109, 0x40000400},  2, "Foreign::TourKey"},
    {131, "metres",   {0x220143, 0x400},       2, "U32"},
    {132, "complete", {0x220143, 0x400},       2, "bool"},
    {133, "helper",   {0x1a20143, 0x400},      2, "bool", "Zel::String"},
    {134, "stop",     {0x9a20143, 0x10000400}, 0, "Foreign::Stop", "Foreign::SkuKey", "key"},
    {135, "mark",     {0x9a20143, 0x10000400}, 0, "Foreign::Mark", "Foreign::SkuKey", "key"},
    {0,   "fwkKey",   {0x200001, 0x400},       0, "Foreign::TourKey"},
};

constexpr ExpectedAttr pickPlan[] = {
    {130, "tour", {0x9a20143, 0x10000400}, 0, "Foreign::Tour", "Foreign::TourKey", "key"},
};

constexpr ExpectedAttr pickSet[] = {
    {130, "candidate", {0x1a20103, 0x400}, 2, "bool", "Foreign::SkuKey"},
    {131, "winner",    {0x20001, 0x400},   0, "Foreign::SkuKey"},
};
// clang-format on

} // namespace

std::vector<ExpectedDescriptor> foreignDescriptors() {
  using namespace Foreign;
  // clang-format off
  return {
      {"Foreign::Zone", "", enumerationFlags, 4, false, false, {}, zone},
      {"Foreign::Urgency", "", enumerationFlags, 4, false, false, {}, urgency},
      {"Foreign::SkuKey", "", valueFlags, sizeof(SkuKey), true, false, skuKeyArguments, skuKey},
      {"Foreign::Dimensions", "", valueFlags, sizeof(Dimensions), true, false, {}, dimensions},
      {"Foreign::SlotCode", "", valueFlags, sizeof(SlotCode), true, false, slotCodeArguments,
       slotCode},
      {"Foreign::Alarm", "", valueFlags, sizeof(Alarm), true, false, alarmArguments, alarm},
      {"Foreign::TourKey", "", valueFlags, sizeof(TourKey), true, false, tourKeyArguments, tourKey},
      {"Foreign::Limits", "", valueFlags, 1, true, false, {}, limits},
      {"Foreign::Product", "Zel::Entity", entityFlags, sizeof(Product), false, false, skuArgument,
       product},
      {"Foreign::ProductDir", "Zel::Entity", entityFlags, sizeof(ProductDir), true, true,
       nameArgument, productDir},
      {"Foreign::Perishable", "Foreign::Product", entityFlags, sizeof(Perishable), true, false,
       perishableArguments, perishable},
      {"Foreign::PerishableDir", "Zel::Entity", entityFlags, sizeof(PerishableDir), true, true,
       nameArgument, perishableDir},
      {"Foreign::Rack", "Zel::Entity", entityFlags, sizeof(Rack), true, false, nameArgument, rack},
      {"Foreign::Carrier", "Zel::Entity", entityFlags, sizeof(Carrier), true, true, nameArgument,
       carrier},
      {"Foreign::Order", "Zel::Entity", entityFlags, sizeof(Order), true, false, orderArguments,
       order},
      {"Foreign::OrderDir", "Zel::Entity", entityFlags, sizeof(OrderDir), true, true, nameArgument,
       orderDir},
      {"Foreign::Depot", "Zel::Entity", entityFlags, sizeof(Depot), true, true, nameArgument,
       depot},
      {"Foreign::Stop", "Zel::PtrInterface", objectFlags, sizeof(Stop), true, false, skuArgument,
       stop},
      {"Foreign::Mark", "Zel::PtrInterface", objectFlags, sizeof(Mark), true, false, skuArgument,
       mark},
      {"Foreign::Tour", "Zel::PtrInterface", objectFlags, sizeof(Tour), true, false, tourArguments,
       tour},
      {"Foreign::PickPlan", "Zel::PtrInterface", objectFlags, sizeof(PickPlan), true, false, {},
       pickPlan},
      {"Foreign::PickSet", "Zel::PtrInterface", objectFlags, sizeof(PickSet), true, false, {},
       pickSet},
  };
  // clang-format on
}

} // namespace Conformance
