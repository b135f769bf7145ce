#include <Zel/Enumeration>

#include <Zel/Exception>
#include <Zel/Format>

namespace Zel {

int enumInstance(EnumTable const& table, unsigned number) {
  for (Enumerator const& row : table.rows) {
    if (static_cast<unsigned>(row.number) == number) {
      return row.number;
    }
  }
  throwRangeException(String8(table.name));
}

int enumInstance(EnumTable const& table, String8 const& name) {
  for (Enumerator const& row : table.rows) {
    if (row.name == name.view()) {
      return row.number;
    }
  }
  throwRangeException(String8(table.name));
}

String8 enumString(EnumTable const& table, int number) {
  for (Enumerator const& row : table.rows) {
    if (row.number == number) {
      return String8(row.name);
    }
  }
  return String8(table.name) + format("(%d)", number);
}

} // namespace Zel
