#include "Texts.h"

#include <cmath>
#include <limits>

namespace {

using namespace TestText;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// A text and a position in it.
class Cursor {
public:
  explicit Cursor(const std::string& text, int start = 0)
      : text_(text), first_(text_, start), last_(text_, static_cast<int>(text_.length())) {}

  template <class T>
  T read() {
    return Zel::sequenceToValue(first_, last_, static_cast<T*>(nullptr));
  }
  void need(const char* pattern) { Zel::needString(first_, last_, pattern); }
  int position() const { return first_.position(); }

private:
  const String8 text_;
  String8::IteratorConst first_;
  const String8::IteratorConst last_;
};

double readDouble(const std::string& text) { return static_cast<double>(read<long double>(text)); }

unsigned long long readBits(const std::string& text) {
  return static_cast<unsigned long long>(read<long long>(text));
}

TEST(StringText, TakesALiteralForATextAndNotForATruth) {
  EXPECT_EQ(Zel::valueToStrep("peers"), String8("'peers'"));
  EXPECT_EQ(Zel::valueToStrep(true), String8("true"));
  EXPECT_EQ(Zel::valueToStrep(7U), String8("7"));
}

TEST(WholeText, IsReadAsABuiltin) {
  EXPECT_EQ(Zel::strepToValue<double>(String8("-0.5 ").substr(0, 4)), -0.5);
  EXPECT_EQ(Zel::strepToValue<unsigned>("4294967297"), 1U);
  EXPECT_EQ(Zel::strepToValue<unsigned long long>("18446744073709551615"), ~0ULL);
  EXPECT_EQ(Support::messageOf<Zel::RangeException>([] { Zel::strepToValue<unsigned>("7x"); }),
            "junk at column 1 deserializing 7x");
}

TEST(Positions, BeyondTheTextAreCutToIt) {
  const String8 text("'a");
  String8::IteratorConst first(text);
  const String8::IteratorConst last(text, 100);
  EXPECT_EQ(Support::messageOf<Zel::RangeException>(
                [&] { Zel::sequenceToValue(first, last, static_cast<String8*>(nullptr)); }),
            "expected the closing quote at column 2");
}

TEST(StringText, EscapesQuotesBackslashesAndControlBytes) {
  EXPECT_EQ(print(String8("")), "''");
  EXPECT_EQ(print(String8("plain \"text\"")), "'plain \"text\"'");
  EXPECT_EQ(print(String8(std::string_view("it's\\\n\t\r\0\x1f\x7f\x80\xff", 13))),
            "'it\\'s\\\\\\n\\t\\r\\x00\\x1f\\x7f\x80\xff'");
}

TEST(StringText, OfEveryByteReadsBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
    const std::string one(1, static_cast<char>(byte));
    EXPECT_EQ(read<String8>(print(String8(one))), String8(one)) << byte;
  }
  EXPECT_EQ(read<String8>(print(String8(all))), String8(all));
}

TEST(StringText, OfAnyLengthReadsBack) {
  for (const char byte : {'x', '\'', '\x01'}) {
    for (std::size_t length = 0; length < 600; ++length) {
      const String8 text(std::string(length, byte));
      ASSERT_EQ(read<String8>(print(text)), text) << length;
    }
  }
}

TEST(StringText, IsReadInEitherQuotesWithEscapesOfBothKinds) {
  EXPECT_EQ(read<String8>(" \t\n\v\f\r'a\"b'"), String8("a\"b"));
  EXPECT_EQ(read<String8>("\"it's\""), String8("it's"));
  EXPECT_EQ(read<String8>("'\\'\\\"\\\\\\n\\t\\r\\x4A\\x4a'"), String8("'\"\\\n\t\rJJ"));
}

TEST(StringText, IsRefusedWhereItIsBad) {
  EXPECT_EQ(refusal<String8>(""), "expected a quoted text at column 0");
  EXPECT_EQ(refusal<String8>("  x'"), "expected a quoted text at column 2");
  EXPECT_EQ(refusal<String8>("'abc"), "expected the closing quote at column 4");
  EXPECT_EQ(refusal<String8>("'abc\""), "expected the closing quote at column 5");
  EXPECT_EQ(refusal<String8>("'a\\"), "expected an escaped character at column 3");
  EXPECT_EQ(refusal<String8>("'a\\a'"), "expected an escaped character at column 3");
  EXPECT_EQ(refusal<String8>("'\\xg0'"), "expected a hexadecimal digit at column 3");
  EXPECT_EQ(refusal<String8>("'\\x0'"), "expected a hexadecimal digit at column 4");
  EXPECT_EQ(refusal<String8>("'\\x0"), "expected a hexadecimal digit at column 4");
}

TEST(IntegerText, ReadsBackOverAll64Bits) {
  for (const unsigned long long number :
       {0ULL, 1ULL, 4294967295ULL, 4294967296ULL, (1ULL << 63) - 1, 1ULL << 63, ~0ULL}) {
    EXPECT_EQ(print(number), std::to_string(number));
    EXPECT_EQ(readBits(print(number)), number);
  }
}

TEST(IntegerText, MayBeNegativeDownToTheLeastSignedNumber) {
  EXPECT_EQ(read<long long>(" -1"), -1);
  EXPECT_EQ(read<long long>("-0"), 0);
  EXPECT_EQ(read<long long>("-9223372036854775808"), std::numeric_limits<long long>::min());
  EXPECT_EQ(read<long long>("007"), 7);
}

TEST(IntegerText, IsRefusedOutOfRange) {
  EXPECT_EQ(refusal<long long>("18446744073709551616"), "number out of range at column 0");
  EXPECT_EQ(refusal<long long>("-9223372036854775809"), "number out of range at column 0");
  EXPECT_EQ(refusal<long long>("  -18446744073709551616"), "number out of range at column 2");
  EXPECT_EQ(refusal<long long>(std::string(300, '9')), "number out of range at column 0");
}

TEST(IntegerText, IsRefusedWhereItIsNone) {
  EXPECT_EQ(refusal<long long>(""), "expected an integer at column 0");
  EXPECT_EQ(refusal<long long>(" -"), "expected an integer at column 1");
  EXPECT_EQ(refusal<long long>("+1"), "expected an integer at column 0");
  EXPECT_EQ(refusal<long long>("- 1"), "expected an integer at column 0");
  EXPECT_EQ(refusal<long long>("'1'"), "expected an integer at column 0");
  EXPECT_EQ(refusal<long long>("1.5"), "junk at column 1 deserializing 1.5");
  EXPECT_EQ(refusal<long long>("0x10"), "junk at column 1 deserializing 0x10");
}

TEST(DoubleText, IsTheShortestThatReadsBack) {
  EXPECT_EQ(print(0.0), "0");
  EXPECT_EQ(print(-0.0), "-0");
  EXPECT_EQ(print(0.1), "0.1");
  EXPECT_EQ(print(1e23), "1e+23");
  EXPECT_EQ(print(12345.5), "12345.5");
  EXPECT_EQ(print(5e-324), "5e-324");
  EXPECT_EQ(print(1.7976931348623157e308), "1.7976931348623157e+308");
}

TEST(DoubleText, KnowsInfinitiesAndWhatIsNoNumber) {
  EXPECT_EQ(print(infinity), "inf");
  EXPECT_EQ(print(-infinity), "-inf");
  EXPECT_EQ(print(std::nan("")), "nan");
  EXPECT_EQ(print(-std::nan("")), "nan");
  EXPECT_EQ(readDouble("inf"), infinity);
  EXPECT_EQ(readDouble(" -inf"), -infinity);
  EXPECT_TRUE(std::isnan(readDouble("nan")));
}

TEST(DoubleText, OfAnyBitsReadsBack) {
  Random random(4711);
  for (int round = 0; round < 50000; ++round) {
    const double number = randomDouble(random);
    const double back = readDouble(print(number));
    if (std::isnan(number)) {
      ASSERT_TRUE(std::isnan(back));
    } else {
      ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(number))
          << print(number);
    }
  }
}

TEST(DoubleText, IsRoundedOnce) {
  // Half a unit above 2^53 and a trifle more: by way of a wider type it would be rounded down.
  EXPECT_EQ(readDouble("9007199254740993.00000000000000000001"), 9007199254740994.0);
  EXPECT_EQ(readDouble("9007199254740993"), 9007199254740992.0);
}

TEST(DoubleText, IsReadInTheUsualForms) {
  EXPECT_EQ(readDouble("1"), 1.0);
  EXPECT_EQ(readDouble("-1.25"), -1.25);
  EXPECT_EQ(readDouble(".5"), 0.5);
  EXPECT_EQ(readDouble("5."), 5.0);
  EXPECT_EQ(readDouble("1E3"), 1000.0);
  EXPECT_EQ(readDouble("1e-3"), 0.001);
}

TEST(DoubleText, IsRefusedOutOfRange) {
  EXPECT_EQ(refusal<long double>("1e999"), "number out of range at column 0");
  EXPECT_EQ(refusal<long double>(" -1e999"), "number out of range at column 1");
  EXPECT_EQ(refusal<long double>("1e-999"), "number out of range at column 0");
}

TEST(DoubleText, IsRefusedWhereItIsNone) {
  EXPECT_EQ(refusal<long double>(""), "expected a number at column 0");
  EXPECT_EQ(refusal<long double>("-"), "expected a number at column 0");
  EXPECT_EQ(refusal<long double>("+1"), "expected a number at column 0");
  EXPECT_EQ(refusal<long double>("--1"), "expected a number at column 0");
  EXPECT_EQ(refusal<long double>("."), "expected a number at column 0");
  EXPECT_EQ(refusal<long double>("INF"), "expected a number at column 0");
  EXPECT_EQ(refusal<long double>("-nan"), "expected a number at column 0");
  EXPECT_EQ(refusal<long double>("infinity"), "junk at column 3 deserializing infinity");
  EXPECT_EQ(refusal<long double>("1e"), "junk at column 1 deserializing 1e");
}

TEST(BoolText, IsTrueOrFalse) {
  EXPECT_EQ(print(true), "true");
  EXPECT_EQ(print(false), "false");
  EXPECT_TRUE(read<bool>(" true"));
  EXPECT_FALSE(read<bool>("false"));
  EXPECT_EQ(refusal<bool>(" True"), "expected true or false at column 1");
  EXPECT_EQ(refusal<bool>("tru"), "expected true or false at column 0");
  EXPECT_EQ(refusal<bool>("1"), "expected true or false at column 0");
  EXPECT_EQ(refusal<bool>("true "), "junk at column 4 deserializing true ");
}

TEST(NeededText, MatchesAnyWhiteSpaceWhereThePatternHasABlank) {
  for (const char* const text : {"':x", "' : x", "'\t\n:\v\f\r x", "'  :  x"}) {
    Cursor cursor(text);
    cursor.need("' : x");
    EXPECT_EQ(cursor.position(), static_cast<int>(std::string_view(text).size())) << text;
  }
}

TEST(NeededText, ThatIsNotThereIsNamedWithThePatternAndTheColumn) {
  Cursor cursor("  (]", 1);
  EXPECT_EQ(Support::rangeFailure([&] { cursor.need(" () "); }), "expected \" () \" at column 3");
  EXPECT_EQ(cursor.position(), 3);
}

TEST(Readers, StopWhereTheyFail) {
  Cursor number("  12345678901234567890123");
  Support::rangeFailure([&] { number.read<long long>(); });
  EXPECT_EQ(number.position(), 2);
  Cursor text("'a\\q'");
  Support::rangeFailure([&] { text.read<String8>(); });
  EXPECT_EQ(text.position(), 3);
}

TEST(Readers, ReadOneAfterTheOther) {
  Cursor cursor("x'a'1 2.5true", 1);
  EXPECT_EQ(cursor.read<String8>(), String8("a"));
  EXPECT_EQ(cursor.read<long long>(), 1);
  EXPECT_EQ(cursor.read<long double>(), 2.5L);
  EXPECT_TRUE(cursor.read<bool>());
  EXPECT_EQ(cursor.position(), 13);
}

TEST(Readers, ReadNothingBehindTheEndThatTheyAreGiven) {
  const String8 text("12345");
  String8::IteratorConst first(text);
  EXPECT_EQ(Zel::sequenceToValue(first, String8::IteratorConst(text, 2),
                                 static_cast<long long*>(nullptr)),
            12);
  EXPECT_EQ(first.position(), 2);
}

TEST(AttributeReader, BringsTheNameOfTheAttributeIntoTheFailure) {
  const String8 text("x");
  String8::IteratorConst first(text);
  const String8::IteratorConst last(text, 1);
  EXPECT_EQ(Support::rangeFailure([&] {
              Zel::deserializeAttr(first, last, static_cast<unsigned long long*>(nullptr), "genId");
            }),
            "genId: expected an integer at column 0");
  EXPECT_EQ(Support::rangeFailure([&] {
              Zel::deserializeAttr(first, last, static_cast<String8*>(nullptr), "unitName");
            }),
            "unitName: expected a quoted text at column 0");
}

TEST(AttributeReader, YieldsTheValueWithAll64Bits) {
  const String8 text("-1 'x'");
  String8::IteratorConst first(text);
  const String8::IteratorConst last(text, static_cast<int>(text.length()));
  EXPECT_EQ(Zel::deserializeAttr(first, last, static_cast<unsigned long long*>(nullptr), "a"),
            ~0ULL);
  EXPECT_EQ(Zel::deserializeAttr(first, last, static_cast<String8*>(nullptr), "b"), String8("x"));
}

TEST(AttributeReader, KeepsTheIdsOfTheFailure) {
  Zel::Exception::IdBitArray ids;
  ids.add(40);
  const String8 name("state");
  try {
    Zel::rethrowFromDeserializeAttr(Zel::RangeException("State", ids), name);
    FAIL();
  } catch (const Zel::RangeException& failure) {
    EXPECT_EQ(failure.message(), String8("state: State"));
    EXPECT_TRUE(failure.ids().has(40));
    EXPECT_TRUE(failure.ids().has(Zel::rangeExceptionId));
  }
}

TEST(JunkBehindAValue, IsReportedWithNoIdsButThoseOfItsClass) {
  try {
    read<bool>("truex");
    FAIL();
  } catch (const Zel::RangeException& failure) {
    EXPECT_EQ(failure.ids(), Zel::RangeException("other").ids());
  }
}

TEST(JunkBehindAValue, IsShownUpToTheFirstZeroByte) {
  EXPECT_EQ(refusal<bool>(std::string("true\0x", 6)), "junk at column 4 deserializing true");
}

} // namespace
