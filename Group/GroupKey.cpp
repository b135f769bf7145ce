#include <Group/GroupKey>

#include <Zel/Hash>
#include <Zel/Text>

#include <ostream>

namespace Group {

using Zel::needString;
using Zel::String8;

GroupType GroupTypeInstance(unsigned number) {
  return static_cast<GroupType>(Zel::enumInstance(enumTable(GroupType()), number));
}

GroupType GroupTypeInstance(String8 name) {
  return static_cast<GroupType>(Zel::enumInstance(enumTable(GroupType()), name));
}

String8 stringValue(GroupType type) { return Zel::enumString(enumTable(type), type); }

String8 valueToStrep(const GroupType& type) { return "'" + stringValue(type) + "'"; }

GroupType sequenceToValue(String8::IteratorConst& first, const String8::IteratorConst& last,
                          GroupType* /*selector*/) {
  return GroupTypeInstance(Zel::sequenceToValue(first, last, static_cast<String8*>(nullptr)));
}

std::ostream& operator<<(std::ostream& out, const GroupType& type) {
  return out << stringValue(type);
}

GroupKey::GroupKey(String8::IteratorConst& first, const String8::IteratorConst& last) {
  for (const char* const token : {" Value", " (", " 'Group::GroupKey'", " ,", " **", " {"}) {
    needString(first, last, token);
  }
  for (bool isFirst = true;; isFirst = false) {
    needString(first, last, " ");
    if (first == last) {
      Zel::throwRangeException("premature end of value type GroupKey");
    }
    if (*first == '}') {
      break;
    }
    if (!isFirst) {
      needString(first, last, ", ");
    }
    const String8 name = Zel::sequenceToValue(first, last, static_cast<String8*>(nullptr));
    needString(first, last, " : ");
    if (name == "type") {
      type_ = sequenceToValue(first, last, static_cast<GroupType*>(nullptr));
    } else if (name == "name") {
      name_ = Zel::sequenceToValue(first, last, static_cast<String8*>(nullptr));
    } else {
      Zel::throwRangeException("GroupKey has no such attribute: " + name);
    }
  }
  needString(first, last, "} ");
  needString(first, last, ") ");
}

unsigned GroupKey::hash() const noexcept {
  return Zel::oneAtATimeEnd(Zel::oneAtATimeStep(0, static_cast<unsigned>(type_)) ^ name_.hash());
}

String8 valueToStrep(const GroupKey& key) {
  return "Value('Group::GroupKey', ** {'type': " + valueToStrep(key.type()) +
         ", 'name': " + Zel::valueToStrep(key.name()) + "})";
}

std::ostream& operator<<(std::ostream& out, const GroupKey& key) {
  return out << valueToStrep(key);
}

} // namespace Group
