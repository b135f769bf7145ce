#include <Zel/Format>
#include <Zel/Hash>
#include <Zel/String>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <random>
#include <sstream>
#include <string>

namespace {

using Zel::Name;
using Zel::String8;

TEST(String8, FromANullPointerIsTheEmptyRecord) {
  const String8 text(static_cast<const char*>(nullptr));
  EXPECT_EQ(text.length(), 0U);
  EXPECT_TRUE(text.data() == String8::nullStringData_);
  EXPECT_STREQ(text.charPtr(), "");
}

TEST(String8, EveryEmptyStringSharesTheEmptyRecord) {
  EXPECT_EQ(&String8().data(), &String8::nullStringData_);
  EXPECT_EQ(&String8("").data(), &String8::nullStringData_);
  EXPECT_EQ(&(String8("a").substr(1, 5)).data(), &String8::nullStringData_);
}

TEST(String8, CopiesShareTheRecord) {
  const String8 first("linecard");
  const String8 second = first;
  EXPECT_EQ(&first.data(), &second.data());
  EXPECT_EQ(first.data().references(), 2U);
}

TEST(String8, EqualTextsAreEqualWhateverTheirRecords) {
  const String8 first("linecard");
  const String8 second("linecard");
  EXPECT_NE(&first.data(), &second.data());
  EXPECT_TRUE(first == second);
  EXPECT_FALSE(first == String8("linecare"));
  EXPECT_FALSE(first == String8("linecar"));
}

TEST(String8, HoldsAnyByteAndEndsInZero) {
  const std::string bytes("a\0b\xff", 4);
  const String8 text{std::string_view(bytes)};
  EXPECT_EQ(text.length(), 4U);
  EXPECT_EQ(text.view(), bytes);
  EXPECT_EQ(text.charPtr()[4], '\0');
  EXPECT_FALSE(text == String8("a"));
}

TEST(String8, AMovedFromStringIsEmpty) {
  String8 first("text");
  const String8 second = std::move(first);
  EXPECT_TRUE(first.empty());
  EXPECT_EQ(second, String8("text"));
}

TEST(String8, OrderIsByteWiseUnsignedShorterFirst) {
  EXPECT_TRUE(String8("a") < String8("b"));
  EXPECT_TRUE(String8("a") < String8("aa"));
  EXPECT_TRUE(String8("") < String8("a"));
  EXPECT_TRUE(String8("z") < String8("\x80"));
  EXPECT_FALSE(String8("a") < String8("a"));
}

TEST(String8, SubstrCutsToTheText) {
  const String8 text("0123456789");
  EXPECT_EQ(text.substr(3, 4), String8("3456"));
  EXPECT_EQ(text.substr(8, 0xffffffff), String8("89"));
  EXPECT_EQ(text.substr(8, 100), String8("89"));
  EXPECT_EQ(text.substr(10, 1), String8());
  EXPECT_EQ(text.substr(1LL << 40, 1), String8());
  EXPECT_EQ(text.substr(-3, 2), String8("01"));
}

TEST(String8, PosFindsTheFirstMatchFromAStart) {
  const String8 text("a#b#c");
  const auto* const mark = reinterpret_cast<const unsigned char*>("#");
  EXPECT_EQ(text.pos(0, mark, 1), 1U);
  EXPECT_EQ(text.pos(1, mark, 1), 1U);
  EXPECT_EQ(text.pos(2, mark, 1), 3U);
  EXPECT_EQ(text.pos(4, mark, 1), String8::npos);
  EXPECT_EQ(text.pos(99, mark, 1), String8::npos);
  EXPECT_EQ(text.byteIndexOf(3), 3U);
  EXPECT_EQ(text.charIndexOf(3), 3U);
}

TEST(String8, ConcatenatesInAllForms) {
  const String8 b("b");
  EXPECT_EQ(String8("a") + b, String8("ab"));
  EXPECT_EQ(String8("a") + "b", String8("ab"));
  EXPECT_EQ("a" + b, String8("ab"));
  EXPECT_EQ(b + static_cast<const char*>(nullptr), b);
  String8 text("x");
  text += b;
  text += "c";
  text += text;
  EXPECT_EQ(text, String8("xbcxbc"));
  text = "y";
  EXPECT_EQ(text, String8("y"));
  text = static_cast<const char*>(nullptr);
  EXPECT_TRUE(text.empty());
}

TEST(String8, AConcatenationLeavesTheOperandsAlone) {
  const String8 a("a");
  const String8 sum = a + "b";
  EXPECT_EQ(a, String8("a"));
  EXPECT_EQ(sum, String8("ab"));
}

TEST(String8, WritesItsBytesAsTheyAre) {
  std::ostringstream out;
  out.width(20);
  out << String8(std::string_view("a\0b", 3));
  EXPECT_EQ(out.str(), std::string("a\0b", 3));
}

TEST(String8, ANameIsAString) {
  const Name name("unit");
  const String8 text = name;
  EXPECT_EQ(&name.data(), &text.data());
  EXPECT_TRUE(name == String8("unit"));
}

TEST(StringIterator, EndsAtTheLengthAndNotBeforeZero) {
  const String8 text("abc");
  EXPECT_FALSE(String8::IteratorConst(text, 2).eot());
  EXPECT_TRUE(String8::IteratorConst(text, 3).eot());
  EXPECT_TRUE(String8::IteratorConst(text, 4).eot());
  EXPECT_FALSE(String8::IteratorConst(text, -1).eot());
}

TEST(StringIterator, ADefaultOneStandsOnTheEmptyRecordAtZero) {
  const String8::Iterator at;
  EXPECT_EQ(at.position(), 0);
  EXPECT_EQ(&at.data(), &String8::nullStringData_);
  EXPECT_TRUE(at.eot());
}

TEST(StringIterator, PinsItsRecord) {
  String8::IteratorConst at(String8("pinned"), 2);
  EXPECT_EQ(at.data().references(), 1U);
  EXPECT_EQ(*at, 'n');
  ++at;
  EXPECT_EQ(String8(at), String8("ned"));
  at.positionIs(6);
  EXPECT_EQ(String8(at), String8());
  at.positionIs(-2);
  EXPECT_EQ(String8(at), String8("pinned"));
}

/// The hash told once more, byte by byte, as its comment describes it.
unsigned hashByDescription(const std::string& text) {
  auto word = [&](std::size_t at, std::size_t bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes; i-- > 0;) {
      value = value << 8 | static_cast<unsigned char>(text[at + i]);
    }
    return value;
  };
  auto step = [](std::uint64_t state, std::uint64_t value) {
    state = (state ^ value) * 0x9fb21c651e98df25;
    return state ^ state >> 32;
  };
  const std::size_t length = text.size();
  std::uint64_t state = step(0xd6e8feb86659fd93, length);
  if (length > 0) {
    for (std::size_t at = 0; at + 8 < length; at += 8) {
      state = step(state, word(at, 8));
    }
    const auto byte = [&](std::size_t at) { return word(at, 1); };
    state = step(state, length >= 8   ? word(length - 8, 8)
                        : length >= 4 ? word(0, 4) << 32 | word(length - 4, 4)
                                      : byte(0) << 16 | byte(length / 2) << 8 | byte(length - 1));
  }
  state *= 0xd6e8feb86659fd93;
  state ^= state >> 32;
  return static_cast<unsigned>(state * 0xd6e8feb86659fd93 >> 32);
}

TEST(StringHash, AgreesWithItsDescriptionForAllLengths) {
  std::mt19937_64 random(7);
  for (std::size_t length = 0; length < 70; ++length) {
    std::string text(length, '\0');
    for (char& byte : text) {
      byte = static_cast<char>(random());
    }
    EXPECT_EQ(String8(std::string_view(text)).hash(), hashByDescription(text)) << length;
  }
}

TEST(StringHash, HasItsKnownAnswers) {
  const std::map<std::string, unsigned> answers = {
      {"", 0x39106561U},         {"a", 0x4e019d4cU},       {"System", 0xea5af728U},
      {"Linecard", 0x5fc682aeU}, {"default", 0x1c940cafU}, {"unit-0000001-port-07", 0xb927c850U},
  };
  for (const auto& [text, hash] : answers) {
    EXPECT_EQ(String8(std::string_view(text)).hash(), hash) << text;
  }
}

TEST(StringHash, EachBitOfTheTextMovesEachBitOfTheHashHalfOfTheTime) {
  std::mt19937_64 random(11);
  for (const std::size_t length : {3U, 4U, 7U, 8U, 9U, 20U, 33U}) {
    constexpr int rounds = 4000;
    for (std::size_t bit = 0; bit < length * 8; bit += 5) {
      std::array<int, 32> flips{};
      for (int round = 0; round < rounds; ++round) {
        std::string text(length, '\0');
        for (char& byte : text) {
          byte = static_cast<char>(random());
        }
        const unsigned before = String8(std::string_view(text)).hash();
        text[bit / 8] = static_cast<char>(text[bit / 8] ^ 1 << bit % 8);
        const unsigned changed = before ^ String8(std::string_view(text)).hash();
        for (unsigned i = 0; i < 32; ++i) {
          flips[i] += static_cast<int>(changed >> i & 1);
        }
      }
      for (unsigned i = 0; i < 32; ++i) {
        EXPECT_NEAR(flips[i], rounds / 2, rounds * 0.06) << length << ' ' << bit << ' ' << i;
      }
    }
  }
}

TEST(StringHash, SpreadsNumberedNamesOverTheLowBits) {
  constexpr unsigned buckets = 1 << 12;
  std::array<int, buckets> load{};
  for (int i = 0; i < 4 * static_cast<int>(buckets); ++i) {
    ++load[Zel::format("unit-%07d-port-07", i).hash() % buckets];
  }
  // 4 expected in each; a fair throw leaves none above 20.
  EXPECT_LT(*std::max_element(load.begin(), load.end()), 20);
}

TEST(Format, MakesWhatPrintfWrites) {
  EXPECT_EQ(Zel::format("State(%d)", -1), String8("State(-1)"));
  EXPECT_EQ(Zel::format("junk at column %lld deserializing %s", 12345678901LL, "x"),
            String8("junk at column 12345678901 deserializing x"));
  EXPECT_EQ(Zel::format("%s", std::string(5000, 'x').c_str()).length(), 5000U);
}

TEST(BitReverse, ReversesTheBits) {
  EXPECT_EQ(Zel::bitReverse(1), 0x80000000U);
  EXPECT_EQ(Zel::bitReverse(0x80000000U), 1U);
  EXPECT_EQ(Zel::bitReverse(0xf0), 0x0f000000U);
  std::mt19937 random(3);
  for (int round = 0; round < 1000; ++round) {
    const unsigned word = static_cast<unsigned>(random());
    unsigned reversed = 0;
    for (unsigned bit = 0; bit < 32; ++bit) {
      reversed |= (word >> bit & 1) << (31 - bit);
    }
    ASSERT_EQ(Zel::bitReverse(word), reversed);
  }
}

TEST(OneAtATime, IsTheByteWiseHashOverTheBytesOfAWord) {
  // Of the four bytes "abcd" and of none.
  const unsigned word = 'a' | 'b' << 8 | 'c' << 16 | 'd' << 24;
  unsigned hash = 0;
  for (const char byte : std::string("abcd")) {
    hash += static_cast<unsigned char>(byte);
    hash += hash << 10;
    hash ^= hash >> 6;
  }
  hash += hash << 3;
  hash ^= hash >> 11;
  hash += hash << 15;
  EXPECT_EQ(Zel::oneAtATimeEnd(Zel::oneAtATimeStep(0, word)), hash);
  EXPECT_EQ(Zel::oneAtATimeEnd(0), 0U);
}

} // namespace
