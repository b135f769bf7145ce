#include <registration/MaintenanceUnitProfile.h>

namespace MaintenanceUnitProfile {

namespace {

constexpr std::string_view scopes[] = {"MaintenanceUnitProfile"};
constinit Zel::ModuleOf<Types> unitProfileModule(scopes);

} // namespace

Zel::Module& zelModule() { return unitProfileModule; }
void zelInitMaintenanceUnitProfile() { unitProfileModule.zelInit(); }

const Zel::ZelType* Config::_fwkType() { return unitProfileModule.fwkType<Config>(); }
const Zel::ZelType* ConfigDir::_fwkType() { return unitProfileModule.fwkType<ConfigDir>(); }

} // namespace MaintenanceUnitProfile
