#include <text/EnumerationText.h>

#include <model/Profile/ProfileKey.h>

namespace Maintenance::Profile {

ZEL_ENUMERATION_TEXT(ProfileType, ProfileTypeInstance)

ProfileKey::ProfileKey(Zel::String8::IteratorConst& first,
                       const Zel::String8::IteratorConst& last) {
  Zel::readInto(first, last, *this);
}

Zel::String8 valueToStrep(const ProfileKey& value) { return Zel::textOf(value); }

std::ostream& operator<<(std::ostream& out, const ProfileKey& value) {
  return Zel::printText(out, value);
}

} // namespace Maintenance::Profile

#undef ZEL_ENUMERATION_TEXT
