#include "support/OneAtATime.h"
#include "support/Ordering.h"

#include <model/Profile/ProfileKey.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace Maintenance::Profile;
using Support::expectEqual;
using Support::expectLess;
using Zel::String8;

constexpr auto numbered = [](int number) { return static_cast<ProfileType>(number); };

unsigned describedHash(const ProfileKey& key) {
  return Support::OneAtATime()
      .add(Support::bytesOf(static_cast<unsigned>(key.type())))
      .mix(key.name().hash())
      .end();
}

TEST(ProfileKey, ADefaultKeyIsOfNoTypeAndSharesTheEmptyName) {
  const ProfileKey key;
  EXPECT_EQ(key.type(), profileTypeNone);
  EXPECT_EQ(key.name(), "");
  EXPECT_EQ(&key.name().data(), &String8::nullStringData_);
}

TEST(ProfileKey, ADefaultKeyEqualsOneMadeOfNoTypeAndTheEmptyName) {
  expectEqual(ProfileKey(), ProfileKey(profileTypeNone, ""));
  EXPECT_EQ(ProfileKey().hash(), ProfileKey(profileTypeNone, "").hash());
}

TEST(ProfileKey, ItTakesItsNameWithoutCopyingTheText) {
  const String8 name = "drain";
  const ProfileKey key(profileTypeUnit, name);
  EXPECT_EQ(key.type(), profileTypeUnit);
  EXPECT_EQ(&key.name().data(), &name.data());
  const ProfileKey copy = key; // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(&copy.name().data(), &name.data());
}

TEST(ProfileKey, AWholeNewKeyIsAssigned) {
  ProfileKey key(profileTypeBgp, "a");
  key = ProfileKey(profileTypeUnit, "b");
  expectEqual(key, ProfileKey(profileTypeUnit, "b"));
}

TEST(ProfileKey, TheTypeDecidesBeforeTheName) {
  expectLess(ProfileKey(profileTypeBgp, "z"), ProfileKey(profileTypeInterface, "a"));
  expectLess(ProfileKey(profileTypeNone, "z"), ProfileKey(profileTypeUnit, ""));
}

TEST(ProfileKey, KeysOfOneTypeAreInTheOrderOfTheirNames) {
  expectLess(ProfileKey(profileTypeBgp, ""), ProfileKey(profileTypeBgp, "a"));
  expectLess(ProfileKey(profileTypeBgp, "a"), ProfileKey(profileTypeBgp, "aa"));
  expectLess(ProfileKey(profileTypeBgp, "B"), ProfileKey(profileTypeBgp, "a"));
  expectLess(ProfileKey(profileTypeBgp, "a"), ProfileKey(profileTypeBgp, "\xff"));
}

TEST(ProfileKey, EqualKeysAreNeitherLessNorGreater) {
  expectEqual(ProfileKey(profileTypeBgp, "a"), ProfileKey(profileTypeBgp, "a"));
}

TEST(ProfileKey, NumbersOutsideTheEnumerationCompareSigned) {
  expectLess(ProfileKey(numbered(-1), "z"), ProfileKey(profileTypeNone, ""));
  expectLess(ProfileKey(profileTypeUnit, "z"), ProfileKey(numbered(4), ""));
}

TEST(ProfileKey, ItsHashIsTheOneAtATimeHashCutByThatOfTheName) {
  std::mt19937_64 random(20);
  for (int round = 0; round < 1000; ++round) {
    std::string name(random() % 20, '\0');
    for (char& byte : name) {
      byte = static_cast<char>(random());
    }
    const int type = round % 5 == 4 ? static_cast<int>(random()) : round % 5;
    const ProfileKey key(numbered(type), String8(name));
    ASSERT_EQ(key.hash(), describedHash(key)) << "type " << type << ", round " << round;
  }
}

TEST(ProfileKey, ItsHashNeverChanges) {
  EXPECT_EQ(ProfileKey().hash(), 0xd2a1221bU);
  EXPECT_EQ(ProfileKey(profileTypeBgp, "peers").hash(), 0x49099aeeU);
  EXPECT_EQ(ProfileKey(profileTypeInterface, "drain-slowly").hash(), 0xe2a04d57U);
  EXPECT_EQ(ProfileKey(profileTypeUnit, "peers").hash(), 0xd427ad5bU);
  EXPECT_EQ(ProfileKey(numbered(-1), "x").hash(), 0x208a1f71U);
}

TEST(ProfileKey, TheIdsOfItsAttributesFollowOneAnother) {
  EXPECT_EQ(ProfileKey::Attr::type, 2);
  EXPECT_EQ(ProfileKey::Attr::name, 3);
  EXPECT_EQ(ProfileKey::Attr::hash, 4);
}

} // namespace
