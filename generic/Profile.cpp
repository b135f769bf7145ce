#include <generic/Profile.h>

#include <generic/TypeOf.h>

namespace Maintenance::Profile {

Zel::Ptr<ProfileType_GenericIf_> ProfileType_GenericIf_Is(ProfileType value, bool isConst) {
  return ProfileType_GenericIf_::GenericIf_Is(value, isConst);
}

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

DefaultProfile::GenericIf_::GenericIf_(const Zel::Ptr<DefaultProfile>& object, bool isConst)
    : EntityGenericIf(isConst) {
  zelAttach(this, object);
}
DefaultProfile::GenericIf_::~GenericIf_() = default;
DefaultProfile::GenericIf_::GenericIf_Adapter_::~GenericIf_Adapter_() = default;

} // namespace Maintenance::Profile

namespace Zel {

template class ZEL_API TypeOf<Maintenance::Profile::ProfileType>;
template class ZEL_API TypeOf<Maintenance::Profile::ProfileKey>;
template class ZEL_API TypeOf<Maintenance::Profile::Config>;
template class ZEL_API TypeOf<Maintenance::Profile::ConfigDir>;
template class ZEL_API TypeOf<Maintenance::Profile::DefaultProfile>;

} // namespace Zel
