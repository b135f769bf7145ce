#include "Dumps.h"
#include "Payload.h"

#include "support/Failure.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

// The operators of the transport and what reads behind them.

namespace {

using Support::rangeFailure;

/// These bytes are what is written, and read back by `read` as the same value at every place.
template <class V, class Read>
void expectBytes(const V& value, std::string_view hex, Read read) {
  EXPECT_EQ(payloadOf([&](const auto& out) { out << value; }), plain(hex));
  atEveryPlace(hex, [&](Ring& ring) {
    EXPECT_TRUE((ring.*read)() == value);
    EXPECT_EQ(ring.left(), 0U);
  });
  const std::string bytes = bytesOf(hex);
  for (std::size_t count = 0; count < bytes.size(); ++count) {
    const auto cut = ringOf(hexOf(bytes.substr(0, count)));
    EXPECT_EQ(rangeFailure([&] { static_cast<void>((*cut.*read)()); }), "record too short");
  }
}

TEST(Builtins, Bools) {
  expectBytes(true, dump("value-bool"), &Ring::nextbool);
  expectBytes(false, "00", &Ring::nextbool);
}

TEST(Builtins, AReaderTakesAnyByteButZeroForTrue) {
  EXPECT_TRUE(ringOf("02")->nextbool());
  EXPECT_TRUE(ringOf("ff")->nextbool());
}

TEST(Builtins, Ints) {
  expectBytes(-2, dump("value-int"), &Ring::nextint);
  expectBytes(258, "00 00 01 02", &Ring::nextint);
  expectBytes(std::numeric_limits<int>::min(), "80 00 00 00", &Ring::nextint);
}

TEST(Builtins, UnsignedInts) {
  expectBytes(258U, dump("value-unsigned"), &Ring::nextU32);
  expectBytes(4294967295U, "ff ff ff ff", &Ring::nextU32);
}

TEST(Builtins, UnsignedShortsAreOnlyRead) {
  atEveryPlace("01 02", [](Ring& ring) { EXPECT_EQ(ring.nextU16(), 258); });
  EXPECT_EQ(rangeFailure([] { ringOf("01")->nextU16(); }), "record too short");
}

TEST(Builtins, UnsignedLongLongs) {
  expectBytes(1ULL << 40, dump("value-unsigned-long-long"), &Ring::nextU64);
  expectBytes(0x0102030405060708ULL, "01 02 03 04 05 06 07 08", &Ring::nextU64);
}

TEST(Builtins, Doubles) {
  expectBytes(-0.25, dump("value-double"), &Ring::nextSeconds);
  expectBytes(std::numeric_limits<double>::infinity(), "7f f0 00 00 00 00 00 00",
              &Ring::nextSeconds);
  expectBytes(std::numeric_limits<double>::denorm_min(), "00 00 00 00 00 00 00 01",
              &Ring::nextSeconds);
  expectBytes(-0.0, "80 00 00 00 00 00 00 00", &Ring::nextSeconds);
  EXPECT_TRUE(std::signbit(ringOf("80 00 00 00 00 00 00 00")->nextSeconds()));
}

TEST(Builtins, ANotANumberKeepsItsBits) {
  const auto number = std::bit_cast<double>(std::uint64_t{0x7ff8000000c0ffee});
  const char* const hex = "7f f8 00 00 00 c0 ff ee";
  EXPECT_EQ(payloadOf([&](const auto& out) { out << number; }), hex);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(ringOf(hex)->nextSeconds()), 0x7ff8000000c0ffeeU);
}

TEST(Builtins, StringsOfAnyBytes) {
  const Zel::String8 text(std::string_view("a\0\xff", 3));
  expectBytes(text, dump("value-string"), &Ring::nextString);
  expectBytes(Zel::String8(), "00 00 00 00", &Ring::nextString);
  EXPECT_EQ(payloadOf([](const auto& out) { out << Zel::Name("ab"); }), "00 00 00 02 61 62");
}

TEST(Builtins, AStringOfTheLongestKindAtEveryWrap) {
  const std::string bytes = bytesOf("00 00 3e 80 61 * 16000");
  const Zel::String8 text(std::string(16000, 'a'));
  const auto ring = Zel::makeObject<Ring>(16010U);
  for (std::size_t place = 0; place < 16010; place += 89) {
    ring->put(hexOf(bytes), place);
    EXPECT_TRUE(ring->nextString() == text);
  }
}

TEST(Builtins, AStringIsOfLimitedLength) {
  const Zel::String8 text(std::string(16001, 'a'));
  EXPECT_EQ(rangeFailure([&] { payloadOf([&](const auto& out) { out << text; }); }),
            "string of 16001 bytes where at most 16000 are sent");
  EXPECT_EQ(rangeFailure([] { ringOf("00 00 3e 81 61 * 16001")->nextString(); }),
            "string too long");
  EXPECT_EQ(rangeFailure([] { ringOf("00 00 00 03 61 61")->nextString(); }), "record too short");
}

TEST(Builtins, EntityIdsAsTheyLieInMemory) {
  expectBytes(Zel::EntityId{4, 0x80000000}, dump("value-entity-id"), &Ring::nextEntityId);
  expectBytes(Zel::EntityId{0x01020304, 0x05060708}, "04 03 02 01 08 07 06 05",
              &Ring::nextEntityId);
}

TEST(Builtins, ATypesNameIsAString) {
  EXPECT_EQ(payloadOf([](const auto& out) { out << Zel::TypeId{"a:b"}; }), dump("value-type-name"));
  EXPECT_EQ(ringOf(dump("value-type-name"))->nextString(), "a:b");
}

TEST(Builtins, ValuesStandBehindOneAnother) {
  EXPECT_EQ(payloadOf([](const auto& out) {
              out << true;
              out << 1U;
              out << Zel::String8("x");
            }),
            "01 00 00 00 01 00 00 00 01 78");
  atEveryPlace("01 00 00 00 01 00 00 00 01 78", [](Ring& ring) {
    EXPECT_TRUE(ring.nextbool());
    EXPECT_EQ(ring.nextU32(), 1U);
    EXPECT_EQ(ring.nextString(), "x");
  });
}

TEST(Builtins, ARecordEndsBelowTheSizeOfAMessage) {
  const Zel::String8 text(std::string(16000, 'a'));
  // Behind 27 bytes of header 32740 are left, of which two strings take 32008 and a length 4.
  EXPECT_EQ(rangeFailure([&] {
              payloadOf([&](const auto& out) {
                out << text;
                out << text;
                out << text;
              });
            }),
            "record too large: 16000 bytes more where 728 fit");
}

} // namespace
