#include <generic/MaintenanceAgentInfo.h>

#include <generic/TypeOf.h>

namespace Maintenance {

AgentInfo::GenericIf_::GenericIf_(const Zel::Ptr<AgentInfo>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
AgentInfo::GenericIf_::~GenericIf_() = default;
AgentInfo::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

} // namespace Maintenance

namespace Zel {

template class ZEL_API TypeOf<Maintenance::OnBootUnitAndReason>;
template class ZEL_API TypeOf<Maintenance::AgentInfo>;

} // namespace Zel
