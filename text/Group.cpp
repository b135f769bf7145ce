#include <text/EnumerationText.h>

#include <Group/GroupKey>

namespace Group {

ZEL_ENUMERATION_TEXT(GroupType, GroupTypeInstance)

GroupKey::GroupKey(Zel::String8::IteratorConst& first, const Zel::String8::IteratorConst& last) {
  Zel::readInto(first, last, *this);
}

Zel::String8 valueToStrep(const GroupKey& key) { return Zel::textOf(key); }

std::ostream& operator<<(std::ostream& out, const GroupKey& key) {
  return Zel::printText(out, key);
}

} // namespace Group

#undef ZEL_ENUMERATION_TEXT
