#include <Zel/Enumeration>

#include <Zel/Exception>
#include <Zel/Format>

namespace Zel {

int enumInstance(const EnumTable& table, unsigned number) {
  if (const Enumerator* const row = table.row(static_cast<int>(number))) {
    return row->number;
  }
  throwRangeException(String8(table.name));
}

int enumInstance(const EnumTable& table, std::string_view name) {
  if (const Enumerator* const row = table.row(name)) {
    return row->number;
  }
  throwRangeException(String8(table.name));
}

String8 enumString(const EnumTable& table, int number) {
  if (const Enumerator* const row = table.row(number)) {
    return String8(row->name);
  }
  return String8(table.name) + format("(%d)", number);
}

} // namespace Zel
