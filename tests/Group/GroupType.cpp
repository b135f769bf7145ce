#include "support/EnumerationCheck.h"

#include <Group/GroupType>
#include <Zel/Text>

#include <iomanip>
#include <sstream>

namespace {

using namespace Group;
using Zel::String8;

GroupType numbered(int number) { return static_cast<GroupType>(number); }

std::string written(GroupType type) {
  std::ostringstream out;
  out << std::setw(40) << std::setfill('*') << type;
  return out.str();
}

TEST(GroupType, ConvertsBothWaysAndRefusesTheRest) {
  Support::checkEnumeration<GroupType>("GroupType",
                                       {"groupTypeUnknown", "groupTypeBgp", "groupTypeInterface"},
                                       &GroupTypeInstance, &GroupTypeInstance);
}

TEST(GroupType, TheEnumeratorsHaveTheirNumbers) {
  EXPECT_EQ(std::vector<int>({groupTypeUnknown, groupTypeBgp, groupTypeInterface}),
            std::vector<int>({0, 1, 2}));
}

TEST(GroupType, ItsTextIsItsNameInQuotesAndReadsBack) {
  EXPECT_EQ(valueToStrep(groupTypeUnknown), "'groupTypeUnknown'");
  EXPECT_EQ(valueToStrep(groupTypeBgp), "'groupTypeBgp'");
  EXPECT_EQ(valueToStrep(groupTypeInterface), "'groupTypeInterface'");
  for (GroupType const type : {groupTypeUnknown, groupTypeBgp, groupTypeInterface}) {
    EXPECT_EQ(Zel::strepToValue<GroupType>(valueToStrep(type)), type);
  }
}

TEST(GroupType, TheTextOfANumberThatIsNoEnumeratorDoesNotReadBack) {
  EXPECT_EQ(valueToStrep(numbered(3)), "'GroupType(3)'");
  EXPECT_EQ(valueToStrep(numbered(-1)), "'GroupType(-1)'");
  EXPECT_EQ(Support::rangeFailure([] { Zel::strepToValue<GroupType>(valueToStrep(numbered(3))); }),
            "GroupType");
}

TEST(GroupType, ATextIsReadInEitherQuotesWithWhiteSpaceBeforeIt) {
  EXPECT_EQ(Zel::strepToValue<GroupType>("\"groupTypeBgp\""), groupTypeBgp);
  EXPECT_EQ(Zel::strepToValue<GroupType>(" \t\n\v\f\r'groupTypeBgp'"), groupTypeBgp);
  EXPECT_EQ(Zel::strepToValue<GroupType>("'group\\x54ypeBgp'"), groupTypeBgp);
}

TEST(GroupType, ABadTextIsRefused) {
  auto const refusal = [](char const* text) {
    return Support::rangeFailure([&] { Zel::strepToValue<GroupType>(text); });
  };
  EXPECT_EQ(refusal(""), "expected a quoted text at column 0");
  EXPECT_EQ(refusal("groupTypeBgp"), "expected a quoted text at column 0");
  EXPECT_EQ(refusal("1"), "expected a quoted text at column 0");
  EXPECT_EQ(refusal("'groupTypeBgp"), "expected the closing quote at column 13");
  EXPECT_EQ(refusal("'GroupTypeBgp'"), "GroupType");
  EXPECT_EQ(refusal("' groupTypeBgp'"), "GroupType");
  EXPECT_EQ(refusal("''"), "GroupType");
  EXPECT_EQ(refusal("'groupTypeBgp'x"), "junk at column 14 deserializing 'groupTypeBgp'x");
  EXPECT_EQ(refusal("'groupTypeBgp' "), "junk at column 14 deserializing 'groupTypeBgp' ");
}

TEST(GroupType, AStreamGetsTheNameAloneWhateverItsFormat) {
  EXPECT_EQ(written(groupTypeBgp), "groupTypeBgp");
  EXPECT_EQ(written(numbered(9)), "GroupType(9)");
}

} // namespace
