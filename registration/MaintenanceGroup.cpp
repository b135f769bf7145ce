#include <registration/MaintenanceGroup.h>

namespace Maintenance::MaintenanceGroup {

namespace {

constexpr std::string_view scopes[] = {"Maintenance", "MaintenanceGroup"};
constinit Zel::ModuleOf<Types> groupModule(scopes);

} // namespace

Zel::Module& zelModule() { return groupModule; }
void zelInitMaintenanceGroup() { groupModule.zelInit(); }

const Zel::ZelType* Config::_fwkType() { return groupModule.fwkType<Config>(); }
const Zel::ZelType* ConfigDir::_fwkType() { return groupModule.fwkType<ConfigDir>(); }

} // namespace Maintenance::MaintenanceGroup
