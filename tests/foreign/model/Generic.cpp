#include "OrderGeneric.h"
#include "ProductGeneric.h"
#include "RackGeneric.h"
#include "TourGeneric.h"

#include <generic/TypeOf.h>

namespace Foreign {

Zel::Ptr<Zone_GenericIf_> Zone_GenericIf_Is(Zone value, bool isConst) {
  return Zone_GenericIf_::GenericIf_Is(value, isConst);
}

Zel::Ptr<Urgency_GenericIf_> Urgency_GenericIf_Is(Urgency value, bool isConst) {
  return Urgency_GenericIf_::GenericIf_Is(value, isConst);
}

Product::GenericIf_::GenericIf_(const Zel::Ptr<Product>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Product::GenericIf_::~GenericIf_() = default;
Product::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

ProductDir::GenericIf_::GenericIf_(const Zel::Ptr<ProductDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
ProductDir::GenericIf_::~GenericIf_() = default;
ProductDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Perishable::GenericIf_::GenericIf_(const Zel::Ptr<Perishable>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Perishable::GenericIf_::~GenericIf_() = default;
Perishable::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

PerishableDir::GenericIf_::GenericIf_(const Zel::Ptr<PerishableDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
PerishableDir::GenericIf_::~GenericIf_() = default;
PerishableDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Rack::GenericIf_::GenericIf_(const Zel::Ptr<Rack>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Rack::GenericIf_::~GenericIf_() = default;
Rack::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Carrier::GenericIf_::GenericIf_(const Zel::Ptr<Carrier>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Carrier::GenericIf_::~GenericIf_() = default;
Carrier::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Order::GenericIf_::GenericIf_(const Zel::Ptr<Order>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Order::GenericIf_::~GenericIf_() = default;
Order::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

OrderDir::GenericIf_::GenericIf_(const Zel::Ptr<OrderDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
OrderDir::GenericIf_::~GenericIf_() = default;
OrderDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Depot::GenericIf_::GenericIf_(const Zel::Ptr<Depot>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Depot::GenericIf_::~GenericIf_() = default;
Depot::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

Stop::GenericIf_::~GenericIf_() = default;
Mark::GenericIf_::~GenericIf_() = default;
Tour::GenericIf_::~GenericIf_() = default;
PickPlan::GenericIf_::~GenericIf_() = default;
PickSet::GenericIf_::~GenericIf_() = default;

} // namespace Foreign

namespace Zel {

template class TypeOf<Foreign::Zone>;
template class TypeOf<Foreign::Urgency>;
template class TypeOf<Foreign::SkuKey>;
template class TypeOf<Foreign::Dimensions>;
template class TypeOf<Foreign::SlotCode>;
template class TypeOf<Foreign::Alarm>;
template class TypeOf<Foreign::TourKey>;
template class TypeOf<Foreign::Limits>;
template class TypeOf<Foreign::Product>;
template class TypeOf<Foreign::ProductDir>;
template class TypeOf<Foreign::Perishable>;
template class TypeOf<Foreign::PerishableDir>;
template class TypeOf<Foreign::Rack>;
template class TypeOf<Foreign::Carrier>;
template class TypeOf<Foreign::Order>;
template class TypeOf<Foreign::OrderDir>;
template class TypeOf<Foreign::Depot>;
template class TypeOf<Foreign::Stop>;
template class TypeOf<Foreign::Mark>;
template class TypeOf<Foreign::Tour>;
template class TypeOf<Foreign::PickPlan>;
template class TypeOf<Foreign::PickSet>;

} // namespace Zel
