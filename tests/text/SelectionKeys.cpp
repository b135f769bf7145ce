#include "Texts.h"

// The texts of the keys of profile selection.

namespace {

using namespace TestText;
using namespace Maintenance;

const std::string group =
    "Value('Maintenance::GroupProfileSelKey', ** {'groupType': 'groupTypeBgp', "
    "'profileSelReqId': 4294967295})";
const std::string unit = "Value('Maintenance::UnitProfileSelKey', ** {'unitName': 'System', "
                         "'profileChangeCause': 'maintenanceOperation'})";

TEST(SelectionKeyText, HasBothFieldsAndNoHash) {
  EXPECT_EQ(print(GroupProfileSelKey(Group::groupTypeBgp, ~0U)), group);
  EXPECT_EQ(print(UnitProfileSelKey("System", maintenanceOperation)), unit);
  EXPECT_EQ(print(UnitProfileSelKey("it's", static_cast<ProfileChangeCause>(9))),
            "Value('Maintenance::UnitProfileSelKey', ** {'unitName': 'it\\'s', "
            "'profileChangeCause': 'ProfileChangeCause(9)'})");
  EXPECT_EQ(print(GroupProfileSelKey()), "Value('Maintenance::GroupProfileSelKey', ** "
                                         "{'groupType': 'groupTypeUnknown', 'profileSelReqId': "
                                         "0})");
}

TEST(SelectionKeyText, OnAStreamIsTheSameBytes) {
  EXPECT_EQ(written(GroupProfileSelKey(Group::groupTypeBgp, ~0U)), group);
  EXPECT_EQ(written(UnitProfileSelKey("System", maintenanceOperation)), unit);
}

TEST(SelectionKeyReading, TakesWhatIsWrittenAndTheFieldsInAnyOrder) {
  EXPECT_EQ(read<GroupProfileSelKey>(group), GroupProfileSelKey(Group::groupTypeBgp, ~0U));
  EXPECT_EQ(read<UnitProfileSelKey>(unit), UnitProfileSelKey("System", maintenanceOperation));
  EXPECT_EQ(read<GroupProfileSelKey>(framed<GroupProfileSelKey>(
                "'profileSelReqId': 3, 'groupType': 'groupTypeInterface'")),
            GroupProfileSelKey(Group::groupTypeInterface, 3));
  EXPECT_EQ(read<UnitProfileSelKey>(framed<UnitProfileSelKey>(
                "'profileChangeCause': 'userConfigChange', 'unitName': 'a'")),
            UnitProfileSelKey("a", userConfigChange));
}

TEST(SelectionKeyReading, KeepsTheDefaultOfAMissingField) {
  EXPECT_EQ(read<GroupProfileSelKey>(framed<GroupProfileSelKey>("")), GroupProfileSelKey());
  EXPECT_EQ(read<UnitProfileSelKey>(framed<UnitProfileSelKey>("'unitName': 'a'")),
            UnitProfileSelKey("a", initialCreation));
}

TEST(SelectionKeyReading, KeepsTheLow32BitsOfARequest) {
  const auto request = [](const std::string& text) {
    return read<GroupProfileSelKey>(framed<GroupProfileSelKey>("'profileSelReqId': " + text))
        .profileSelReqId();
  };
  EXPECT_EQ(request("4294967297"), 1U);
  EXPECT_EQ(request("-1"), ~0U);
}

TEST(SelectionKeyReading, RefusesTheHashAndBadFields) {
  EXPECT_EQ(refusal<GroupProfileSelKey>(framed<GroupProfileSelKey>("'hash': 1")),
            "GroupProfileSelKey has no such attribute: hash");
  EXPECT_EQ(refusal<UnitProfileSelKey>(framed<UnitProfileSelKey>("'hash': 1")),
            "UnitProfileSelKey has no such attribute: hash");
  EXPECT_EQ(refusal<GroupProfileSelKey>(framed<GroupProfileSelKey>("'groupType': 'bgp'")),
            "groupType: GroupType");
  EXPECT_EQ(refusal<UnitProfileSelKey>(
                framed<UnitProfileSelKey>("'profileChangeCause': 'ProfileChangeCause(9)'")),
            "profileChangeCause: ProfileChangeCause");
  EXPECT_EQ(refusal<UnitProfileSelKey>(group),
            "expected \" 'Maintenance::UnitProfileSelKey'\" at column 20");
}

} // namespace
