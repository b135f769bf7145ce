#include "Texts.h"

namespace {

using namespace TestText;

template <class E>
class EnumerationText : public testing::Test {};
using Enumerations = testing::Types<ProfileType, UnitType, MaintenanceOp, InputSrc, State,
                                    GroupType, ProfileChangeCause>;
TYPED_TEST_SUITE(EnumerationText, Enumerations);

template <class E>
std::string bareName() {
  return std::string(Zel::enumTableOf<E>.name);
}

TYPED_TEST(EnumerationText, IsTheNameInSingleQuotesAndOnAStreamWithout) {
  for (const Zel::Enumerator& row : Zel::enumTableOf<TypeParam>.rows) {
    const auto value = static_cast<TypeParam>(row.number);
    const std::string name(row.name);
    SCOPED_TRACE(name);
    EXPECT_EQ(stringValue(value), String8(name));
    EXPECT_EQ(print(value), "'" + name + "'");
    EXPECT_EQ(written(value), name);
  }
}

TYPED_TEST(EnumerationText, ReadsBack) {
  for (const Zel::Enumerator& row : Zel::enumTableOf<TypeParam>.rows) {
    const auto value = static_cast<TypeParam>(row.number);
    EXPECT_EQ(read<TypeParam>(print(value)), value) << row.name;
    EXPECT_EQ(read<TypeParam>(" \n\"" + std::string(row.name) + "\""), value) << row.name;
  }
}

TYPED_TEST(EnumerationText, OfANumberOutsideItHasTheFallbackTextWhichIsNotReadBack) {
  for (const int number : {-1, 9, INT_MIN, INT_MAX}) {
    const auto value = static_cast<TypeParam>(number);
    const std::string text = bareName<TypeParam>() + "(" + std::to_string(number) + ")";
    EXPECT_EQ(stringValue(value), String8(text));
    EXPECT_EQ(print(value), "'" + text + "'");
    EXPECT_EQ(written(value), text);
    EXPECT_EQ(refusal<TypeParam>(print(value)), bareName<TypeParam>());
  }
}

TYPED_TEST(EnumerationText, IsRefusedInAnotherCaseWithTheBareNameOfTheEnumeration) {
  for (const Zel::Enumerator& row : Zel::enumTableOf<TypeParam>.rows) {
    std::string name(row.name);
    name[0] = static_cast<char>(name[0] ^ 0x20);
    EXPECT_EQ(refusal<TypeParam>("'" + name + "'"), bareName<TypeParam>());
  }
}

TYPED_TEST(EnumerationText, IsRefusedWithoutQuotesAndWithMoreBehindIt) {
  EXPECT_EQ(refusal<TypeParam>(""), "expected a quoted text at column 0");
  EXPECT_EQ(refusal<TypeParam>("1"), "expected a quoted text at column 0");
  const std::string text = print(static_cast<TypeParam>(1));
  EXPECT_EQ(refusal<TypeParam>(text.substr(0, text.size() - 1)),
            "expected the closing quote at column " + std::to_string(text.size() - 1));
  EXPECT_EQ(refusal<TypeParam>(text + " "),
            "junk at column " + std::to_string(text.size()) + " deserializing " + text + " ");
}

TYPED_TEST(EnumerationText, LeavesThePositionBehindItself) {
  const String8 text(print(static_cast<TypeParam>(1)) + " " + print(static_cast<TypeParam>(2)) +
                     "rest");
  String8::IteratorConst first(text);
  const String8::IteratorConst last(text, static_cast<int>(text.length()));
  auto* const selector = static_cast<TypeParam*>(nullptr);
  EXPECT_EQ(sequenceToValue(first, last, selector), static_cast<TypeParam>(1));
  EXPECT_EQ(sequenceToValue(first, last, selector), static_cast<TypeParam>(2));
  EXPECT_EQ(first.rest(), "rest");
}

TEST(EnumerationTexts, OfTheNumberBehindTheLastUnitTypeIsItsNumber) {
  const auto value = static_cast<UnitType>(3);
  EXPECT_EQ(stringValue(value), String8("UnitType(3)"));
  EXPECT_EQ(print(value), "'UnitType(3)'");
}

TEST(EnumerationTexts, OfTheFirstMaintenanceOpIsUnknown) {
  EXPECT_EQ(print(Maintenance::Unit::unknown), "'unknown'");
  EXPECT_EQ(read<MaintenanceOp>("'unknown'"), Maintenance::Unit::unknown);
}

TEST(EnumerationTexts, AreThese) {
  EXPECT_EQ(print(Maintenance::Profile::profileTypeInterface), "'profileTypeInterface'");
  EXPECT_EQ(print(Maintenance::Unit::builtin), "'builtin'");
  EXPECT_EQ(print(Maintenance::Unit::maintenanceExitAbort), "'maintenanceExitAbort'");
  EXPECT_EQ(print(Maintenance::Unit::srcOnBootCli), "'srcOnBootCli'");
  EXPECT_EQ(print(Maintenance::Unit::failedExit), "'failedExit'");
  EXPECT_EQ(print(Maintenance::userConfigChange), "'userConfigChange'");
  EXPECT_EQ(print(Group::groupTypeBgp), "'groupTypeBgp'");
}

} // namespace
