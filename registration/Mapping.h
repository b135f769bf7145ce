#pragma once

#include <model/Mapping.h>
#include <registration/Module.h>

namespace Maintenance {

/// The types of the module, in the order of declaration.
using MappingTypes =
    Zel::TypeList<ProfileChangeCause, MemberToGroup, GroupToUnit, GroupToUnitDir,
                  GroupProfileSelKey, GroupProfileSelectionIn, GroupProfileSelectionOut,
                  UnitProfileSelKey, UnitProfileSelection, ProfileSelection, ProfileKeySet>;

/// Not `zelModule`: its namespace holds the types of another module too.
ZEL_API Zel::Module& zelMappingModule();
/// The module's registration procedure, see `Zel::Module::zelInit`.
ZEL_API void zelInitMapping();

} // namespace Maintenance
