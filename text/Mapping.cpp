#include <text/EnumerationText.h>

#include <model/Mapping.h>

namespace Maintenance {

ZEL_ENUMERATION_TEXT(ProfileChangeCause, ProfileChangeCauseInstance)

GroupProfileSelKey::GroupProfileSelKey(Zel::String8::IteratorConst& first,
                                       const Zel::String8::IteratorConst& last) {
  Zel::readInto(first, last, *this);
}

UnitProfileSelKey::UnitProfileSelKey(Zel::String8::IteratorConst& first,
                                     const Zel::String8::IteratorConst& last) {
  Zel::readInto(first, last, *this);
}

Zel::String8 valueToStrep(const GroupProfileSelKey& value) { return Zel::textOf(value); }
Zel::String8 valueToStrep(const UnitProfileSelKey& value) { return Zel::textOf(value); }

std::ostream& operator<<(std::ostream& out, const GroupProfileSelKey& value) {
  return Zel::printText(out, value);
}

std::ostream& operator<<(std::ostream& out, const UnitProfileSelKey& value) {
  return Zel::printText(out, value);
}

} // namespace Maintenance

#undef ZEL_ENUMERATION_TEXT
