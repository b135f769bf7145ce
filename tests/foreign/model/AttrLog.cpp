#include "OrderAttrLog.h"
#include "ProductAttrLog.h"
#include "RackAttrLog.h"

#include <attrlog/MakeAdapter.h>

namespace Foreign {

Product::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Product::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Product::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

ProductDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
ProductDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
ProductDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

Perishable::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Perishable::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Perishable::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

PerishableDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
PerishableDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
PerishableDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

Rack::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Rack::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Rack::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

Carrier::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Carrier::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Carrier::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

Order::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Order::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Order::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

OrderDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
OrderDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
OrderDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

Depot::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Depot::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Depot::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

} // namespace Foreign

ZEL_ADAPTER(Foreign::Product)
ZEL_ADAPTER(Foreign::ProductDir)
ZEL_ADAPTER(Foreign::Perishable)
ZEL_ADAPTER(Foreign::PerishableDir)
ZEL_ADAPTER(Foreign::Rack)
ZEL_ADAPTER(Foreign::Carrier)
ZEL_ADAPTER(Foreign::Order)
ZEL_ADAPTER(Foreign::OrderDir)
ZEL_ADAPTER(Foreign::Depot)
