#include "support/OneAtATime.h"
#include "support/Ordering.h"

#include <model/Mapping.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance;
using Support::bytesOf;
using Support::expectEqual;
using Support::expectLess;
using Support::OneAtATime;
using Zel::String8;

constexpr unsigned allOnes = ~0U;
constexpr auto groupType = [](int number) { return static_cast<Group::GroupType>(number); };
constexpr auto cause = [](int number) { return static_cast<ProfileChangeCause>(number); };

TEST(GroupProfileSelKeys, ADefaultKeyIsOfNoTypeAndTheFirstRequest) {
  expectEqual(GroupProfileSelKey(), GroupProfileSelKey(Group::groupTypeUnknown, 0));
}

TEST(GroupProfileSelKeys, TheTypeDecidesBeforeTheRequest) {
  expectLess(GroupProfileSelKey(Group::groupTypeBgp, allOnes),
             GroupProfileSelKey(Group::groupTypeInterface, 0));
  expectLess(GroupProfileSelKey(groupType(-1), 7), GroupProfileSelKey(Group::groupTypeUnknown, 0));
}

TEST(GroupProfileSelKeys, RequestsOfOneTypeCompareUnsignedWithAllOnesTheGreatest) {
  for (const unsigned id : {0U, 1U, 0x7fffffffU, 0x80000000U, allOnes - 1}) {
    expectLess(GroupProfileSelKey(Group::groupTypeBgp, id),
               GroupProfileSelKey(Group::groupTypeBgp, allOnes));
  }
  expectLess(GroupProfileSelKey(Group::groupTypeBgp, 0x7fffffff),
             GroupProfileSelKey(Group::groupTypeBgp, 0x80000000));
}

TEST(GroupProfileSelKeys, EqualityNeedsBothFields) {
  expectEqual(GroupProfileSelKey(Group::groupTypeBgp, 9), GroupProfileSelKey(groupType(1), 9));
  EXPECT_FALSE(GroupProfileSelKey(Group::groupTypeBgp, 9) ==
               GroupProfileSelKey(Group::groupTypeBgp, 8));
  EXPECT_FALSE(GroupProfileSelKey(Group::groupTypeBgp, 9) ==
               GroupProfileSelKey(Group::groupTypeInterface, 9));
}

TEST(GroupProfileSelKeys, TheHashIsThatOfTheEightBytesOfBothFields) {
  for (const int type : {0, 1, 2, -1, 0x01020304}) {
    for (const unsigned id : {0U, 1U, 256U, 0x01020304U, allOnes}) {
      const unsigned described =
          OneAtATime().add(bytesOf(static_cast<unsigned>(type))).add(bytesOf(id)).end();
      EXPECT_EQ(GroupProfileSelKey(groupType(type), id).hash(), described) << type << ' ' << id;
    }
  }
}

TEST(GroupProfileSelKeys, TheHashDependsOnBothFieldsAndTakesNoRoom) {
  const unsigned hash = GroupProfileSelKey(Group::groupTypeBgp, 1).hash();
  EXPECT_NE(GroupProfileSelKey(Group::groupTypeInterface, 1).hash(), hash);
  EXPECT_NE(GroupProfileSelKey(Group::groupTypeBgp, 2).hash(), hash);
  EXPECT_EQ(sizeof(GroupProfileSelKey), 8U);
}

TEST(UnitProfileSelKeys, ADefaultKeyIsOfNoUnitAndItsCreation) {
  expectEqual(UnitProfileSelKey(), UnitProfileSelKey("", initialCreation));
}

TEST(UnitProfileSelKeys, TheNameDecidesBeforeTheCause) {
  expectLess(UnitProfileSelKey("a", userConfigChange), UnitProfileSelKey("b", initialCreation));
  expectLess(UnitProfileSelKey("a", cause(100)), UnitProfileSelKey("aa", cause(-100)));
  expectLess(UnitProfileSelKey("a", userConfigChange), UnitProfileSelKey("\xff", initialCreation));
}

TEST(UnitProfileSelKeys, CausesOfOneNameCompareSigned) {
  expectLess(UnitProfileSelKey("a", initialCreation), UnitProfileSelKey("a", userConfigChange));
  expectLess(UnitProfileSelKey("a", cause(-1)), UnitProfileSelKey("a", initialCreation));
}

TEST(UnitProfileSelKeys, EqualityNeedsBothFields) {
  expectEqual(UnitProfileSelKey("a", userConfigChange), UnitProfileSelKey("a", cause(2)));
  EXPECT_FALSE(UnitProfileSelKey("a", initialCreation) == UnitProfileSelKey("a", userConfigChange));
  EXPECT_FALSE(UnitProfileSelKey("a", initialCreation) == UnitProfileSelKey("b", initialCreation));
}

/// The description's hash: it starts from the hash of the name.
unsigned describedHash(const char* name, ProfileChangeCause of) {
  return OneAtATime().mix(String8(name).hash()).add(bytesOf(static_cast<unsigned>(of))).end();
}

TEST(UnitProfileSelKeys, TheHashGoesOnFromThatOfTheName) {
  for (const char* name : {"", "a", "System", "Linecard3"}) {
    for (const ProfileChangeCause of :
         {initialCreation, maintenanceOperation, userConfigChange, cause(-1)}) {
      EXPECT_EQ(UnitProfileSelKey(name, of).hash(), describedHash(name, of)) << name << ' ' << of;
    }
  }
}

TEST(SelectionKeys, TheirHashesNeverChange) {
  EXPECT_EQ(GroupProfileSelKey().hash(), 0U);
  EXPECT_EQ(GroupProfileSelKey(Group::groupTypeBgp, 1).hash(), 0x24f6c07bU);
  EXPECT_EQ(UnitProfileSelKey("System", maintenanceOperation).hash(), 0x882718a0U);
}

} // namespace
