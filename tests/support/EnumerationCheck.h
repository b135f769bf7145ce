#pragma once

#include "support/Failure.h"

#include <Zel/String>

#include <climits>
#include <string>
#include <vector>

namespace Support {

/// All that holds of every enumeration of the model. `byNumber` and `byName` are its conversions,
/// `names` its enumerators from 0 up.
template <class E>
void checkEnumeration(const std::string& enumeration, const std::vector<std::string>& names,
                      E (*byNumber)(unsigned), E (*byName)(Zel::String8)) {
  static_assert(sizeof(E) == 4);
  const unsigned count = static_cast<unsigned>(names.size());
  for (unsigned number = 0; number < count; ++number) {
    const std::string& name = names[number];
    SCOPED_TRACE(name);
    const E value = static_cast<E>(number);
    EXPECT_EQ(byNumber(number), value);
    EXPECT_EQ(byName(Zel::String8(name)), value);
    EXPECT_EQ(stringValue(value), Zel::String8(name));

    std::string otherCase = name;
    otherCase[0] = static_cast<char>(otherCase[0] ^ 0x20);
    for (const std::string& wrong :
         {otherCase, name + ' ', ' ' + name, name + '\0', name + 'x',
          name.substr(0, name.size() - 1), enumeration + "::" + name, '\'' + name + '\'',
          std::to_string(number), enumeration + '(' + std::to_string(number) + ')'}) {
      SCOPED_TRACE(wrong);
      EXPECT_EQ(rangeFailure([&] { byName(Zel::String8(wrong)); }), enumeration);
    }
  }
  EXPECT_EQ(rangeFailure([&] { byName(""); }), enumeration);
  EXPECT_EQ(rangeFailure([&] { byName(Zel::String8(enumeration)); }), enumeration);
  for (const unsigned wrong : {count, count + 1, 0x100U, 0x10000U, 0x80000000U, 0xffffffffU}) {
    SCOPED_TRACE(wrong);
    EXPECT_EQ(rangeFailure([&] { byNumber(wrong); }), enumeration);
  }
  for (const int wrong : {static_cast<int>(count), -1, 0x100, INT_MIN, INT_MAX}) {
    const Zel::String8 text = stringValue(static_cast<E>(wrong));
    EXPECT_EQ(text, Zel::String8(enumeration + '(' + std::to_string(wrong) + ')'));
    EXPECT_EQ(rangeFailure([&] { byName(text); }), enumeration);
  }
}

} // namespace Support
