#include "Carrier.h"
#include "Depot.h"
#include "Order.h"
#include "Perishable.h"
#include "PickPlan.h"
#include "Rack.h"

#include <registration/Module.h>

namespace Foreign {

namespace {

/// In the order of declaration: each type behind its base and what its attributes name.
using Types = Zel::TypeList<Zone, Urgency, SkuKey, Dimensions, SlotCode, Alarm, TourKey, Limits,
                            Product, ProductDir, Perishable, PerishableDir, Rack, Carrier, Order,
                            OrderDir, Depot, Stop, Mark, Tour, PickPlan, PickSet>;

constexpr std::string_view scopes[] = {"Foreign"};
constinit Zel::ModuleOf<Types> module(scopes);
// Here, among functions that every user of the types needs: in a file of its own, a static library
// would leave it behind.
const Zel::LoadModule atLoad(module);

} // namespace

const Zel::ZelType* _fwkType_Zone() { return module.fwkType<Zone>(); }
const Zel::ZelType* _fwkType_Urgency() { return module.fwkType<Urgency>(); }
const Zel::ZelType* SkuKey::_fwkType() { return module.fwkType<SkuKey>(); }
const Zel::ZelType* Dimensions::_fwkType() { return module.fwkType<Dimensions>(); }
const Zel::ZelType* SlotCode::_fwkType() { return module.fwkType<SlotCode>(); }
const Zel::ZelType* Alarm::_fwkType() { return module.fwkType<Alarm>(); }
const Zel::ZelType* TourKey::_fwkType() { return module.fwkType<TourKey>(); }
const Zel::ZelType* Limits::_fwkType() { return module.fwkType<Limits>(); }
const Zel::ZelType* Product::_fwkType() { return module.fwkType<Product>(); }
const Zel::ZelType* ProductDir::_fwkType() { return module.fwkType<ProductDir>(); }
const Zel::ZelType* Perishable::_fwkType() { return module.fwkType<Perishable>(); }
const Zel::ZelType* PerishableDir::_fwkType() { return module.fwkType<PerishableDir>(); }
const Zel::ZelType* Rack::_fwkType() { return module.fwkType<Rack>(); }
const Zel::ZelType* Carrier::_fwkType() { return module.fwkType<Carrier>(); }
const Zel::ZelType* Order::_fwkType() { return module.fwkType<Order>(); }
const Zel::ZelType* OrderDir::_fwkType() { return module.fwkType<OrderDir>(); }
const Zel::ZelType* Depot::_fwkType() { return module.fwkType<Depot>(); }
const Zel::ZelType* Stop::_fwkType() { return module.fwkType<Stop>(); }
const Zel::ZelType* Mark::_fwkType() { return module.fwkType<Mark>(); }
const Zel::ZelType* Tour::_fwkType() { return module.fwkType<Tour>(); }
const Zel::ZelType* PickPlan::_fwkType() { return module.fwkType<PickPlan>(); }
const Zel::ZelType* PickSet::_fwkType() { return module.fwkType<PickSet>(); }

} // namespace Foreign
