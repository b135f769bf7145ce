#include <Group/GroupKey>
#include <Vexil/IntfId>
#include <Zel/NboAttrLog>
#include <Zel/ValueCodec>

namespace Group {

GroupKey::GroupKey(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) {
  Zel::decode(*this, *in);
}

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const GroupKey& value) {
  Zel::encode(value, *out);
}

} // namespace Group

namespace Vexil {

IntfId::IntfId(Zel::NboAttrLog::In* in, Zel::StreamBogon /*stream*/) { Zel::decode(*this, *in); }

void operator<<(const Zel::Ptr<Zel::NboAttrLog::Out>& out, const IntfId& value) {
  Zel::encode(value, *out);
}

} // namespace Vexil
