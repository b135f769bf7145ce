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

} // namespace Maintenance
