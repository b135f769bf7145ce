#pragma once

#include <Zel/Enumeration>

namespace Maintenance::Profile {

/// What a profile is for.
enum ProfileType : int {
  profileTypeNone = 0,      ///< no kind; the default of `ProfileKey`
  profileTypeBgp = 1,       ///< for BGP peers
  profileTypeInterface = 2, ///< for interfaces
  profileTypeUnit = 3,      ///< for a maintenance unit
};

inline constexpr Zel::Enumerator profileTypeRows[] = {
    {profileTypeNone, "profileTypeNone"},
    {profileTypeBgp, "profileTypeBgp"},
    {profileTypeInterface, "profileTypeInterface"},
    {profileTypeUnit, "profileTypeUnit"},
};

constexpr Zel::EnumTable enumTable(ProfileType) {
  return {"Maintenance::Profile::ProfileType", "ProfileType", profileTypeRows};
}

/// The enumerator of a number or of exactly this name. Throws `Zel::RangeException` "ProfileType"
/// on any other.
ZEL_API ProfileType ProfileTypeInstance(unsigned number);
ZEL_API ProfileType ProfileTypeInstance(Zel::String8 name);

/// The enumerator's name; "ProfileType(9)" for the number 9.
ZEL_API Zel::String8 stringValue(ProfileType type);

} // namespace Maintenance::Profile
