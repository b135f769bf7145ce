#include <attrlog/Unit.h>

#include <attrlog/MakeAdapter.h>

namespace Maintenance::Unit {

Config::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Config::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

ConfigDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
ConfigDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
ConfigDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

Status::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Status::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Status::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

StatusDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
StatusDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
StatusDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

Input::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Input::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Input::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

MergedInput::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
MergedInput::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
MergedInput::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

MergedInputDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
MergedInputDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
MergedInputDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

TrafficRates::TrafficRates(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

StageMgrInstKey::StageMgrInstKey(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

BuiltinUnitName::BuiltinUnitName(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

MaintenanceStageClasses::MaintenanceStageClasses(Zel::NboAttrLog::In* in,
                                                 Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

MaintenanceStageList::MaintenanceStageList(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const TrafficRates& value) {
  Zel::encode(value, *out);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const StageMgrInstKey& value) {
  Zel::encode(value, *out);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const BuiltinUnitName& value) {
  Zel::encode(value, *out);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const MaintenanceStageClasses& value) {
  Zel::encode(value, *out);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const MaintenanceStageList& value) {
  Zel::encode(value, *out);
}

} // namespace Maintenance::Unit

ZEL_ADAPTER(Maintenance::Unit::Config)
ZEL_ADAPTER(Maintenance::Unit::ConfigDir)
ZEL_ADAPTER(Maintenance::Unit::Status)
ZEL_ADAPTER(Maintenance::Unit::StatusDir)
ZEL_ADAPTER(Maintenance::Unit::Input)
ZEL_ADAPTER(Maintenance::Unit::MergedInput)
ZEL_ADAPTER(Maintenance::Unit::MergedInputDir)
