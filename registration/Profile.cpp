#include <registration/Profile.h>

namespace Maintenance::Profile {

namespace {

constexpr std::string_view scopes[] = {"Maintenance", "Profile"};
constinit Zel::ModuleOf<Types> profileModule(scopes);

} // namespace

Zel::Module& zelModule() { return profileModule; }
void zelInitProfile() { profileModule.zelInit(); }

const Zel::ZelType* _fwkType_ProfileType() { return profileModule.fwkType<ProfileType>(); }
const Zel::ZelType* ProfileKey::_fwkType() { return profileModule.fwkType<ProfileKey>(); }
const Zel::ZelType* Config::_fwkType() { return profileModule.fwkType<Config>(); }
const Zel::ZelType* ConfigDir::_fwkType() { return profileModule.fwkType<ConfigDir>(); }
const Zel::ZelType* DefaultProfile::_fwkType() { return profileModule.fwkType<DefaultProfile>(); }

} // namespace Maintenance::Profile
