#include <generic/MaintenanceUnitProfile.h>

#include <generic/TypeOf.h>

namespace MaintenanceUnitProfile {

Config::GenericIf_::GenericIf_(const Zel::Ptr<Config>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
Config::GenericIf_::~GenericIf_() = default;
Config::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

ConfigDir::GenericIf_::GenericIf_(const Zel::Ptr<ConfigDir>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
ConfigDir::GenericIf_::~GenericIf_() = default;
ConfigDir::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

} // namespace MaintenanceUnitProfile

namespace Zel {

template class ZEL_API TypeOf<MaintenanceUnitProfile::Config>;
template class ZEL_API TypeOf<MaintenanceUnitProfile::ConfigDir>;

} // namespace Zel
