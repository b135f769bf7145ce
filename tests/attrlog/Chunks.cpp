#include "Payload.h"

#include "support/Failure.h"

#include <Zel/Exception>

#include <gtest/gtest.h>

// A text that is cut into chunks, and put together again.

namespace {

using namespace Zel::NboAttrLog;
using Zel::AttrLogRecordException;
using Zel::Ptr;
using Zel::String8;

/// Writes one record with what is next of the text; yields its first four bytes and its payload.
std::pair<std::string, std::string> chunkOf(String8::IteratorConst& text, std::size_t limit) {
  const auto out = Zel::makeObject<Out>(65536U);
  out->chunkLimitIs(limit);
  out->nextHeaderIs(MsgHeader::variable({2, 0}, 261));
  out << transactBegin;
  Ptr<Zel::Connection::Out>(out) << text;
  out << transactEnd;
  const std::string_view record = viewOf(out->pending());
  return {hexOf(record.substr(0, 4)), hexOf(record.substr(27, record.size() - 28))};
}

using Chunk = std::pair<std::string, std::string>;

TEST(Chunks, TheRecordsLengthTellsThatMoreFollows) {
  String8::IteratorConst text(String8("abcdefgh"));
  EXPECT_EQ(chunkOf(text, 7), Chunk("80 00 00 23", "00 00 00 03 61 62 63"));
  EXPECT_EQ(text.position(), 3);
  EXPECT_EQ(chunkOf(text, 7), Chunk("80 00 00 23", "00 00 00 03 64 65 66"));
  EXPECT_EQ(text.position(), 6);
  EXPECT_EQ(chunkOf(text, 7), Chunk("00 00 00 22", "00 00 00 02 67 68"));
  EXPECT_TRUE(text.eot());
}

TEST(Chunks, AnEmptyTextIsOneEmptyChunk) {
  String8::IteratorConst text{String8()};
  EXPECT_EQ(chunkOf(text, 7), Chunk("00 00 00 20", "00 00 00 00"));
  EXPECT_TRUE(text.eot());
}

TEST(Chunks, ATextThatJustFitsIsOneChunk) {
  String8::IteratorConst text(String8("abc"));
  EXPECT_EQ(chunkOf(text, 7), Chunk("00 00 00 23", "00 00 00 03 61 62 63"));
  String8::IteratorConst longest{String8(std::string(32735, 'a'))};
  EXPECT_EQ(chunkOf(longest, Out::defaultChunkLimit),
            Chunk("00 00 7f ff", "00 00 7f df 61 * 32735"));
  String8::IteratorConst longer{String8(std::string(32736, 'a'))};
  EXPECT_EQ(chunkOf(longer, Out::defaultChunkLimit),
            Chunk("80 00 7f ff", "00 00 7f df 61 * 32735"));
  EXPECT_EQ(chunkOf(longer, Out::defaultChunkLimit), Chunk("00 00 00 21", "00 00 00 01 61"));
}

TEST(Chunks, ThePositionIsNotZeroWhileMoreIsToCome) {
  String8::Iterator text;
  atEveryPlace("00 00 00 03 61 62 63", [&](Ring& ring) {
    text = String8::Iterator();
    ring.chunkFollowsIs(true);
    Ptr<Zel::Connection::In>(&ring) >> text;
    EXPECT_EQ(text.position(), 3);
    EXPECT_EQ(ring.left(), 0U);
  });
  atEveryPlace("00 00 00 02 64 65", [&](Ring& ring) {
    String8::Iterator rest = text;
    ring.chunkFollowsIs(false);
    Ptr<Zel::Connection::In>(&ring) >> rest;
    EXPECT_EQ(rest.position(), 0);
    EXPECT_EQ(String8(rest), "abcde");
  });
}

TEST(Chunks, AnEmptyOneMakesAnEmptyText) {
  String8::Iterator text;
  ringOf("00 00 00 00")->chunkRead(text);
  EXPECT_EQ(text.position(), 0);
  EXPECT_EQ(String8(text), "");
}

/// What reading this as a chunk says.
template <class Failure>
std::string failureOf(std::string_view hex, bool follows) {
  const auto ring = ringOf(hex);
  ring->chunkFollowsIs(follows);
  return Support::messageOf<Failure>([&] {
    String8::Iterator text;
    ring->chunkRead(text);
  });
}

TEST(Chunks, OneIsTheRestOfItsPayload) {
  EXPECT_EQ(failureOf<AttrLogRecordException>("00 00 00 02 61", false),
            "malformed record: a chunk of 2 bytes in 1");
  EXPECT_EQ(failureOf<AttrLogRecordException>("00 00 00 01 61 62", false),
            "malformed record: a chunk of 1 bytes in 2");
  EXPECT_EQ(failureOf<AttrLogRecordException>("ff ff ff ff 61", false),
            "malformed record: a chunk of 4294967295 bytes in 1");
}

TEST(Chunks, AnEmptyOneEndsAText) {
  EXPECT_EQ(failureOf<AttrLogRecordException>("00 00 00 00", true),
            "malformed record: an empty chunk of a longer text");
}

TEST(Chunks, ALengthCutShortIsARangeFailure) {
  EXPECT_EQ(failureOf<Zel::RangeException>("00 00 00", false), "record too short");
}

} // namespace
