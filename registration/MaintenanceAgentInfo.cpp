#include <registration/MaintenanceAgentInfo.h>

namespace Maintenance {

namespace {

constexpr std::string_view scopes[] = {"Maintenance"};
constinit Zel::ModuleOf<MaintenanceAgentInfoTypes> agentInfoModule(scopes);

} // namespace

Zel::Module& zelModuleMaintenanceAgentInfo() { return agentInfoModule; }
void zelInitMaintenanceAgentInfo() { agentInfoModule.zelInit(); }

const Zel::ZelType* OnBootUnitAndReason::_fwkType() {
  return agentInfoModule.fwkType<OnBootUnitAndReason>();
}
const Zel::ZelType* AgentInfo::_fwkType() { return agentInfoModule.fwkType<AgentInfo>(); }

} // namespace Maintenance
