#include <attrlog/MaintenanceGroup.h>

#include <attrlog/MakeAdapter.h>

namespace Maintenance::MaintenanceGroup {

Config::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Config::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

ConfigDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
ConfigDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
ConfigDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

} // namespace Maintenance::MaintenanceGroup

ZEL_ADAPTER(Maintenance::MaintenanceGroup::Config)
ZEL_ADAPTER(Maintenance::MaintenanceGroup::ConfigDir)
