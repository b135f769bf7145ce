#include <Zel/Enumeration>

#include <Zel/Exception>
#include <Zel/Format>

namespace Zel {

int enumInstance(const EnumTable& table, unsigned number) {
  for (const Enumerator& row : table.rows) {
    if (static_cast<unsigned>(row.number) == number) {
      return row.number;
    }
  }
  throwRangeException(String8(table.name));
}

int enumInstance(const EnumTable& table, const String8& name) {
  for (const Enumerator& row : table.rows) {
    if (row.name == name.view()) {
      return row.number;
    }
  }
  throwRangeException(String8(table.name));
}

String8 enumString(const EnumTable& table, int number) {
  for (const Enumerator& row : table.rows) {
    if (row.number == number) {
      return String8(row.name);
    }
  }
  return String8(table.name) + format("(%d)", number);
}

} // namespace Zel
