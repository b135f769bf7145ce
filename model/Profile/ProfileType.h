#pragma once

#include <Zel/Layers>

namespace Maintenance::Profile {

/// What a profile is for.
enum ZEL_API ProfileType : int {
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

ZEL_API const Zel::ZelType* _fwkType_ProfileType();
constexpr Zel::EnumTable enumTable(ProfileType) {
  return {"Maintenance::Profile::ProfileType", "ProfileType", profileTypeRows,
          _fwkType_ProfileType};
}
using ProfileType__Type = Zel::TypeOf<ProfileType>;
using ProfileType_GenericIf_ = Zel::ValueGenericIf<ProfileType>;
ZEL_API Zel::Ptr<ProfileType_GenericIf_> ProfileType_GenericIf_Is(ProfileType value, bool isConst);

/// The enumerator of a number or of exactly this name. Throws `Zel::RangeException` "ProfileType"
/// on any other.
ZEL_API ProfileType ProfileTypeInstance(unsigned number);
ZEL_API ProfileType ProfileTypeInstance(Zel::String8 name);

/// The enumerator's name; "ProfileType(9)" for the number 9.
ZEL_API Zel::String8 stringValue(ProfileType type);
ZEL_API Zel::String8 valueToStrep(const ProfileType& value);
ZEL_API ProfileType sequenceToValue(Zel::String8::IteratorConst& first,
                                    const Zel::String8::IteratorConst& last, ProfileType* selector);
ZEL_API std::ostream& operator<<(std::ostream& out, const ProfileType& value);

} // namespace Maintenance::Profile
