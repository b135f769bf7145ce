#include <generic/MaintenanceGroup.h>

#include <generic/TypeOf.h>

namespace Maintenance::MaintenanceGroup {

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

} // namespace Maintenance::MaintenanceGroup

namespace Zel {

template class ZEL_API TypeOf<Maintenance::MaintenanceGroup::Config>;
template class ZEL_API TypeOf<Maintenance::MaintenanceGroup::ConfigDir>;

} // namespace Zel
