#include <registration/Unit.h>

namespace Maintenance::Unit {

namespace {

constexpr std::string_view scopes[] = {"Maintenance", "Unit"};
constinit Zel::ModuleOf<Types> unitModule(scopes);

} // namespace

Zel::Module& zelModule() { return unitModule; }
void zelInitUnit() { unitModule.zelInit(); }

const Zel::ZelType* _fwkType_UnitType() { return unitModule.fwkType<UnitType>(); }
const Zel::ZelType* _fwkType_InputSrc() { return unitModule.fwkType<InputSrc>(); }
const Zel::ZelType* BuiltinUnitName::_fwkType() { return unitModule.fwkType<BuiltinUnitName>(); }
const Zel::ZelType* MaintenanceStageClasses::_fwkType() {
  return unitModule.fwkType<MaintenanceStageClasses>();
}
const Zel::ZelType* MaintenanceStageList::_fwkType() {
  return unitModule.fwkType<MaintenanceStageList>();
}
const Zel::ZelType* TrafficRates::_fwkType() { return unitModule.fwkType<TrafficRates>(); }
const Zel::ZelType* Config::_fwkType() { return unitModule.fwkType<Config>(); }
const Zel::ZelType* ConfigDir::_fwkType() { return unitModule.fwkType<ConfigDir>(); }
const Zel::ZelType* _fwkType_State() { return unitModule.fwkType<State>(); }
const Zel::ZelType* Status::_fwkType() { return unitModule.fwkType<Status>(); }
const Zel::ZelType* StatusDir::_fwkType() { return unitModule.fwkType<StatusDir>(); }
const Zel::ZelType* Input::_fwkType() { return unitModule.fwkType<Input>(); }
const Zel::ZelType* MergedInput::_fwkType() { return unitModule.fwkType<MergedInput>(); }
const Zel::ZelType* MergedInputDir::_fwkType() { return unitModule.fwkType<MergedInputDir>(); }
const Zel::ZelType* _fwkType_MaintenanceOp() { return unitModule.fwkType<MaintenanceOp>(); }
const Zel::ZelType* StageMgrInstKey::_fwkType() { return unitModule.fwkType<StageMgrInstKey>(); }

} // namespace Maintenance::Unit
