#include <attrlog/MaintenanceAgentInfo.h>

#include <attrlog/MakeAdapter.h>

namespace Maintenance {

AgentInfo::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
AgentInfo::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
AgentInfo::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

OnBootUnitAndReason::OnBootUnitAndReason(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const OnBootUnitAndReason& value) {
  Zel::encode(value, *out);
}

} // namespace Maintenance

ZEL_ADAPTER(Maintenance::AgentInfo)
