#include "support/OneAtATime.h"
#include "support/Ordering.h"

#include <Group/GroupKey>

#include <gtest/gtest.h>

#include <iomanip>
#include <random>
#include <sstream>

namespace {

using namespace Group;
using Support::expectEqual;
using Support::expectLess;
using Zel::String8;

GroupType numbered(int number) { return static_cast<GroupType>(number); }

TEST(GroupKey, ADefaultKeyIsOfNoTypeAndSharesTheEmptyName) {
  GroupKey const key;
  EXPECT_EQ(key.type(), groupTypeUnknown);
  EXPECT_EQ(&key.name().data(), &String8::nullStringData_);
  expectEqual(key, GroupKey(groupTypeUnknown, ""));
  EXPECT_EQ(key.hash(), GroupKey(groupTypeUnknown, "").hash());
}

TEST(GroupKey, ItTakesItsNameWithoutCopyingTheText) {
  String8 const name = "peers";
  GroupKey const key(groupTypeBgp, name);
  EXPECT_EQ(key.type(), groupTypeBgp);
  EXPECT_EQ(&key.name().data(), &name.data());
}

TEST(GroupKey, TheTypeDecidesBeforeTheName) {
  expectLess(GroupKey(groupTypeBgp, "z"), GroupKey(groupTypeInterface, "a"));
  expectLess(GroupKey(groupTypeUnknown, "z"), GroupKey(groupTypeBgp, ""));
}

TEST(GroupKey, KeysOfOneTypeAreInTheOrderOfTheirNames) {
  expectLess(GroupKey(groupTypeBgp, ""), GroupKey(groupTypeBgp, "a"));
  expectLess(GroupKey(groupTypeBgp, "a"), GroupKey(groupTypeBgp, "aa"));
  expectLess(GroupKey(groupTypeBgp, "B"), GroupKey(groupTypeBgp, "a"));
  expectLess(GroupKey(groupTypeBgp, "a"), GroupKey(groupTypeBgp, "\xff"));
  expectEqual(GroupKey(groupTypeBgp, "a"), GroupKey(groupTypeBgp, "a"));
}

TEST(GroupKey, NumbersOutsideTheEnumerationCompareSigned) {
  expectLess(GroupKey(numbered(-1), "z"), GroupKey(groupTypeUnknown, ""));
  expectLess(GroupKey(groupTypeInterface, "z"), GroupKey(numbered(3), ""));
}

TEST(GroupKey, ItsHashIsTheOneAtATimeHashCutByThatOfTheName) {
  std::mt19937_64 random(27);
  for (int round = 0; round < 1000; ++round) {
    std::string name(random() % 20, '\0');
    for (char& byte : name) {
      byte = static_cast<char>(random());
    }
    int const type = round % 4 == 3 ? static_cast<int>(random()) : round % 4;
    GroupKey const key(numbered(type), String8(name));
    unsigned const described = Support::OneAtATime()
                                   .add(Support::bytesOf(static_cast<unsigned>(type)))
                                   .mix(key.name().hash())
                                   .end();
    ASSERT_EQ(key.hash(), described) << "type " << type << ", round " << round;
  }
}

TEST(GroupKey, ItsHashNeverChanges) {
  EXPECT_EQ(GroupKey().hash(), 0xd2a1221bU);
  EXPECT_EQ(GroupKey(groupTypeBgp, "peers").hash(), 0x49099aeeU);
  EXPECT_EQ(GroupKey(groupTypeInterface, "drain-slowly").hash(), 0xe2a04d57U);
  EXPECT_EQ(GroupKey(numbered(-1), "x").hash(), 0x208a1f71U);
}

TEST(GroupKey, AStreamGetsTheTextFormWhateverItsFormat) {
  std::ostringstream out;
  out << std::setw(200) << std::setfill('*') << GroupKey(groupTypeBgp, "peers");
  EXPECT_EQ(out.str(), "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})");
}

} // namespace
