#include <registration/MaintenanceAgentInfo.h>

namespace Maintenance {

namespace {

constexpr std::string_view scopes[] = {"Maintenance"};
constinit Zel::ModuleOf<MaintenanceAgentInfoTypes> maintenanceAgentInfoModule(scopes);

} // namespace

Zel::Module& zelMaintenanceAgentInfoModule() { return maintenanceAgentInfoModule; }
void zelInitMaintenanceAgentInfo() { maintenanceAgentInfoModule.zelInit(); }

const Zel::ZelType* OnBootUnitAndReason::_fwkType() {
  return maintenanceAgentInfoModule.fwkType<OnBootUnitAndReason>();
}
const Zel::ZelType* AgentInfo::_fwkType() {
  return maintenanceAgentInfoModule.fwkType<AgentInfo>();
}

} // namespace Maintenance
