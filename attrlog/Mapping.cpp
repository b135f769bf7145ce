#include <attrlog/Mapping.h>

#include <attrlog/MakeAdapter.h>

namespace Maintenance {

MemberToGroup::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
MemberToGroup::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
MemberToGroup::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

GroupToUnit::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
GroupToUnit::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
GroupToUnit::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

GroupToUnitDir::ZelNboAttrLogSa::~ZelNboAttrLogSa() = default;
GroupToUnitDir::ZelNboAttrLogSa::ZelNboAttrLogSaAdapter_::~ZelNboAttrLogSaAdapter_() = default;
GroupToUnitDir::ZelNboAttrLogSa::FlowOut::~FlowOut() = default;

GroupProfileSelKey::GroupProfileSelKey(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

UnitProfileSelKey::UnitProfileSelKey(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const GroupProfileSelKey& value) {
  Zel::encode(value, *out);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const UnitProfileSelKey& value) {
  Zel::encode(value, *out);
}

} // namespace Maintenance

ZEL_ADAPTER(Maintenance::MemberToGroup)
ZEL_ADAPTER(Maintenance::GroupToUnit)
ZEL_ADAPTER(Maintenance::GroupToUnitDir)
