#pragma once

#include <model/Profile.h>
#include <registration/Module.h>

namespace Maintenance::Profile {

/// The types of the module, in the order of declaration.
using Types = Zel::TypeList<ProfileType, ProfileKey, Config, ConfigDir, DefaultProfile>;

ZEL_API Zel::Module& zelModule();
/// The module's registration procedure, see `Zel::Module::zelInit`.
ZEL_API void zelInitProfile();

} // namespace Maintenance::Profile
