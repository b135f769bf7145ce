#include <attrlog/Profile.h>

#include <attrlog/MakeAdapter.h>

namespace Maintenance::Profile {

Config::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
Config::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
Config::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

ConfigDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
ConfigDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
ConfigDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

DefaultProfile::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
DefaultProfile::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
DefaultProfile::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

ProfileKey::ProfileKey(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const ProfileKey& value) {
  Zel::encode(value, *out);
}

} // namespace Maintenance::Profile

ZEL_ADAPTER(Maintenance::Profile::Config)
ZEL_ADAPTER(Maintenance::Profile::ConfigDir)
ZEL_ADAPTER(Maintenance::Profile::DefaultProfile)
