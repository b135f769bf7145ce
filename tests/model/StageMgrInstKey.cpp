#include "support/Failure.h"

#include <model/Unit/StageMgrInstKey.h>

#include <locale>

namespace {

using Maintenance::Unit::StageMgrInstKey;
using Zel::String8;

constexpr const char* noMark = "Unexpected instanceName format";
constexpr const char* noUnitName = "Unexpected instanceName format, couldn't extract unitName";
constexpr const char* noGenId = "Unexpected instanceName format, couldn't extract genId";
constexpr const char* badGenId = "Unexpected instanceName format, genId is invalid";

StageMgrInstKey keyOf(const char* unitName, unsigned genId) {
  StageMgrInstKey key;
  key.unitNameIs(unitName);
  key.genIdIs(genId);
  return key;
}

/// Reads `text` into a key of unit "old" and generation 9, and yields what is left behind.
StageMgrInstKey failing(const String8& text, const std::string& message) {
  StageMgrInstKey key = keyOf("old", 9);
  EXPECT_EQ(Support::messageOf<Zel::InternalException>([&] { key.instanceNameIs(text); }), message);
  return key;
}

template <class K>
concept Ordered = requires(const K& a, const K& b) {
  a < b;
};
template <class K>
concept Hashed = requires(const K& key) {
  key.hash();
};
static_assert(!Ordered<StageMgrInstKey> && !Hashed<StageMgrInstKey>);

TEST(StageMgrInstKey, ADefaultKeyIsEmptyAndReadsAsALoneMarkAndAZero) {
  const StageMgrInstKey key;
  EXPECT_EQ(key.unitName(), "");
  EXPECT_EQ(&key.unitName().data(), &String8::nullStringData_);
  EXPECT_EQ(key.genId(), 0U);
  EXPECT_EQ(key.instanceName(), "#0");
  EXPECT_TRUE(key == StageMgrInstKey(""));
}

TEST(StageMgrInstKey, AnInstanceNameIsTakenApartAndReadsAsItWas) {
  StageMgrInstKey key;
  key.instanceNameIs("a#7");
  EXPECT_EQ(key.unitName(), "a");
  EXPECT_EQ(key.genId(), 7U);
  EXPECT_EQ(key.instanceName(), "a#7");
  EXPECT_TRUE(StageMgrInstKey("a#7") == key);
}

TEST(StageMgrInstKey, TheEmptyTextLeavesAKeyAsItIs) {
  StageMgrInstKey key = keyOf("unit", 3);
  key.instanceNameIs("");
  EXPECT_TRUE(key == keyOf("unit", 3));
}

TEST(StageMgrInstKey, ATextWithoutAMarkChangesNothing) {
  EXPECT_TRUE(failing("a", noMark) == keyOf("old", 9));
  EXPECT_TRUE(failing("7", noMark) == keyOf("old", 9));
  EXPECT_TRUE(failing(" ", noMark) == keyOf("old", 9));
}

TEST(StageMgrInstKey, ATextWithoutAUnitNameChangesNothing) {
  EXPECT_TRUE(failing("#", noUnitName) == keyOf("old", 9));
  EXPECT_TRUE(failing("#7", noUnitName) == keyOf("old", 9));
  EXPECT_TRUE(failing("##7", noUnitName) == keyOf("old", 9));
}

TEST(StageMgrInstKey, ATextWithNothingBehindTheMarkLeavesTheNewUnitName) {
  EXPECT_TRUE(failing("b#", noGenId) == keyOf("b", 9));
}

TEST(StageMgrInstKey, ATextWithGenerationZeroLeavesTheNewUnitName) {
  EXPECT_TRUE(failing("a#0", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a#000", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a#-0", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a#0x10", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a#0 7", badGenId) == keyOf("a", 9));
}

TEST(StageMgrInstKey, ATextWithoutANumberBehindTheMarkLeavesTheNewUnitName) {
  EXPECT_TRUE(failing("a#b", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a# ", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a#-", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a#+", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a#- 5", badGenId) == keyOf("a", 9));
  EXPECT_TRUE(failing("a##7", badGenId) == keyOf("a", 9));
}

TEST(StageMgrInstKey, TheFirstMarkSplitsTheText) {
  EXPECT_TRUE(failing("a#b#7", badGenId) == keyOf("a", 9));
}

TEST(StageMgrInstKey, TheGenerationIsReadLikeANumberFromAStream) {
  struct Case {
    const char* text;
    unsigned genId;
  };
  for (const Case& c :
       {Case{"a#12x", 12}, Case{"a# 12x", 12}, Case{"a#\t\n\v\f\r 12", 12}, Case{"a#3#4", 3},
        Case{"a#+5", 5}, Case{"a#007", 7}, Case{"a#1e3", 1}, Case{"a#1.9", 1}, Case{"a#1 2", 1},
        Case{"a#4294967295", 4294967295},
        // What is out of range or negative comes out as streams have it.
        Case{"a#4294967296", 4294967295}, Case{"a#99999999999999999999", 4294967295},
        Case{"a#-1", 4294967295}, Case{"a#-4294967295", 1}}) {
    SCOPED_TRACE(c.text);
    EXPECT_TRUE(StageMgrInstKey(c.text) == keyOf("a", c.genId));
  }
}

TEST(StageMgrInstKey, AUnitNameMayHoldAnyByteButTheMark) {
  const String8 name(std::string_view(" a\0b\xff/'\n ", 9));
  const StageMgrInstKey key(name + "#1");
  EXPECT_EQ(key.unitName(), name);
  EXPECT_EQ(key.genId(), 1U);
  EXPECT_EQ(key.instanceName(), name + "#1");
}

TEST(StageMgrInstKey, ATextCutByAZeroByteBehindTheMarkIsReadUpToIt) {
  EXPECT_TRUE(StageMgrInstKey(String8(std::string_view("a#1\0"
                                                       "2",
                                                       5))) == keyOf("a", 1));
  EXPECT_TRUE(failing(String8(std::string_view("a#\0", 3)), badGenId) == keyOf("a", 9));
}

TEST(StageMgrInstKey, TheConstructorFailsLikeTheMutator) {
  static_assert(!std::is_convertible_v<String8, StageMgrInstKey>);
  const auto made = [](const char* text) {
    return Support::messageOf<Zel::InternalException>([&] { StageMgrInstKey key{text}; });
  };
  EXPECT_EQ(made("a"), noMark);
  EXPECT_EQ(made("#1"), noUnitName);
  EXPECT_EQ(made("a#"), noGenId);
  EXPECT_EQ(made("a#0"), badGenId);
}

TEST(StageMgrInstKey, AFailureCarriesOnlyTheIdsOfItsClasses) {
  try {
    StageMgrInstKey key("a");
    FAIL() << "nothing was thrown";
  } catch (const Zel::InternalException& failure) {
    EXPECT_TRUE(failure.ids() == Zel::Exception::IdBitArray().add(0).add(11));
  }
}

TEST(StageMgrInstKey, ThePartsAreSetByThemselvesWithoutAnyCheck) {
  StageMgrInstKey key("a#7");
  key.unitNameIs("x#y");
  EXPECT_EQ(key.unitName(), "x#y");
  EXPECT_EQ(key.genId(), 7U);
  EXPECT_EQ(key.instanceName(), "x#y#7");
  key.genIdIs(4294967295);
  EXPECT_EQ(key.instanceName(), "x#y#4294967295");
  key.unitNameIs("");
  EXPECT_EQ(key.instanceName(), "#4294967295");
}

TEST(StageMgrInstKey, ATextOfGenerationZeroIsWrittenButNotReadBack) {
  EXPECT_EQ(keyOf("unit", 0).instanceName(), "unit#0");
  EXPECT_TRUE(failing(keyOf("unit", 0).instanceName(), badGenId) == keyOf("unit", 9));
  EXPECT_TRUE(failing(StageMgrInstKey().instanceName(), noUnitName) == keyOf("old", 9));
}

TEST(StageMgrInstKey, KeysAreEqualIfBothPartsAre) {
  const StageMgrInstKey key = keyOf("a", 1);
  EXPECT_TRUE(key == keyOf("a", 1));
  EXPECT_FALSE(key != keyOf("a", 1));
  EXPECT_TRUE(key != keyOf("a", 2));
  EXPECT_TRUE(key != keyOf("b", 1));
  EXPECT_FALSE(key == keyOf("b", 1));
  EXPECT_TRUE(keyOf("a#1", 2) != keyOf("a", 2));
}

TEST(StageMgrInstKey, TheIdsOfItsAttributesFollowOneAnother) {
  EXPECT_EQ(StageMgrInstKey::Attr::instanceName, 2);
  EXPECT_EQ(StageMgrInstKey::Attr::unitName, 3);
  EXPECT_EQ(StageMgrInstKey::Attr::genId, 4);
}

/// Groups digits by commas.
struct Grouped : std::numpunct<char> {
  char do_thousands_sep() const override { return ','; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(StageMgrInstKey, ReadsNumbersAlikeInEveryLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new Grouped));
  StageMgrInstKey key("a#1,234");
  std::locale::global(before);
  EXPECT_EQ(key.genId(), 1U);
}

} // namespace
