#pragma once

#include <Zel/Layers>

namespace Maintenance {

/// Why the profile of a member or a unit changed, or is to be worked out again.
enum ZEL_API ProfileChangeCause : int {
  initialCreation = 0,
  maintenanceOperation = 1,
  userConfigChange = 2,
};

inline constexpr Zel::Enumerator profileChangeCauseRows[] = {
    {initialCreation, "initialCreation"},
    {maintenanceOperation, "maintenanceOperation"},
    {userConfigChange, "userConfigChange"},
};

ZEL_API const Zel::ZelType* _fwkType_ProfileChangeCause();
constexpr Zel::EnumTable enumTable(ProfileChangeCause) {
  return {"Maintenance::ProfileChangeCause", "ProfileChangeCause", profileChangeCauseRows,
          _fwkType_ProfileChangeCause};
}
using ProfileChangeCause__Type = Zel::TypeOf<ProfileChangeCause>;
using ProfileChangeCause_GenericIf_ = Zel::ValueGenericIf<ProfileChangeCause>;
ZEL_API Zel::Ptr<ProfileChangeCause_GenericIf_>
ProfileChangeCause_GenericIf_Is(ProfileChangeCause value, bool isConst);

/// The enumerator of a number or of exactly this name. Throws `Zel::RangeException`
/// "ProfileChangeCause" on any other.
ZEL_API ProfileChangeCause ProfileChangeCauseInstance(unsigned number);
ZEL_API ProfileChangeCause ProfileChangeCauseInstance(Zel::String8 name);

/// The enumerator's name; "ProfileChangeCause(9)" for the number 9.
ZEL_API Zel::String8 stringValue(ProfileChangeCause cause);
ZEL_API Zel::String8 valueToStrep(const ProfileChangeCause& value);
ZEL_API ProfileChangeCause sequenceToValue(Zel::String8::IteratorConst& first,
                                           const Zel::String8::IteratorConst& last,
                                           ProfileChangeCause* selector);
ZEL_API std::ostream& operator<<(std::ostream& out, const ProfileChangeCause& value);

} // namespace Maintenance
