#include <registration/Mapping.h>

namespace Maintenance {

namespace {

constexpr std::string_view scopes[] = {"Maintenance"};
constinit Zel::ModuleOf<MappingTypes> mappingModule(scopes);

} // namespace

Zel::Module& zelMappingModule() { return mappingModule; }
void zelInitMapping() { mappingModule.zelInit(); }

const Zel::ZelType* _fwkType_ProfileChangeCause() {
  return mappingModule.fwkType<ProfileChangeCause>();
}
const Zel::ZelType* MemberToGroup::_fwkType() { return mappingModule.fwkType<MemberToGroup>(); }
const Zel::ZelType* GroupToUnit::_fwkType() { return mappingModule.fwkType<GroupToUnit>(); }
const Zel::ZelType* GroupToUnitDir::_fwkType() { return mappingModule.fwkType<GroupToUnitDir>(); }
const Zel::ZelType* GroupProfileSelKey::_fwkType() {
  return mappingModule.fwkType<GroupProfileSelKey>();
}
const Zel::ZelType* GroupProfileSelectionIn::_fwkType() {
  return mappingModule.fwkType<GroupProfileSelectionIn>();
}
const Zel::ZelType* GroupProfileSelectionOut::_fwkType() {
  return mappingModule.fwkType<GroupProfileSelectionOut>();
}
const Zel::ZelType* UnitProfileSelKey::_fwkType() {
  return mappingModule.fwkType<UnitProfileSelKey>();
}
const Zel::ZelType* UnitProfileSelection::_fwkType() {
  return mappingModule.fwkType<UnitProfileSelection>();
}
const Zel::ZelType* ProfileSelection::_fwkType() {
  return mappingModule.fwkType<ProfileSelection>();
}
const Zel::ZelType* ProfileKeySet::_fwkType() { return mappingModule.fwkType<ProfileKeySet>(); }

} // namespace Maintenance
