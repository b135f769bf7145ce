#include <attrlog/MaintenanceUnitProfile.h>

#include <attrlog/MakeAdapter.h>

namespace MaintenanceUnitProfile {

Config::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Config::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

ConfigDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
ConfigDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
ConfigDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

} // namespace MaintenanceUnitProfile

ZEL_ADAPTER(MaintenanceUnitProfile::Config)
ZEL_ADAPTER(MaintenanceUnitProfile::ConfigDir)
