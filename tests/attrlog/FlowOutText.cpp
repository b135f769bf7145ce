// How a text is sent: when it is begun, in how many records, and what becomes of it if it changes
// on its way.

#include "Log.h"

#include <Zel/NboAttrLogFlow>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance;
using namespace Wiretap;
using testing::IsEmpty;
using Unit::Status;
using Position = String8::IteratorConst;

/// A text whose every byte tells its place.
String8 longText(std::size_t length, char start = 'a') {
  std::string text(length, ' ');
  for (std::size_t i = 0; i < length; ++i) {
    text[i] = static_cast<char>(static_cast<unsigned char>(start) + i % 17);
  }
  return String8(text);
}

/// The text that records carry, behind `skip` bytes each.
std::string textOf(const std::vector<Seen>& seen, AttributeId attr, std::size_t skip = 0) {
  std::string text;
  for (const Seen& one : seen) {
    if (one.attr == attr) {
      EXPECT_EQ(number(one.payload, skip), one.payload.size() - skip - 4);
      text += one.payload.substr(skip + 4);
    }
  }
  return text;
}

struct FlowOutText : testing::Test {
  const Position& position() const {
    return *static_cast<Position*>(writer.adapter->flowOut()->valueIter());
  }

  Writer<Profile::DefaultProfile> writer{Profile::defaultProfileFactory("default")};
  const Ptr<Profile::DefaultProfile> profile = writer.entity;
};

TEST_F(FlowOutText, AShortTextIsOneRecordAtOnce) {
  profile->profileNameIs("fast");
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"259"});
  EXPECT_EQ(hex(seen[0].payload), "0000000466617374");
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST_F(FlowOutText, IsBegunAtOnceInAGoodDealOfRoom) {
  writer.freeIs(49152);
  profile->profileNameIs("fast");
  EXPECT_FALSE(writer.adapter->flowOut());
  EXPECT_EQ(writer.sent(), Briefs{"259"});
}

TEST_F(FlowOutText, WithOneByteLessItWaitsWithItsPosition) {
  writer.freeIs(49151);
  profile->profileNameIs("fast");
  const auto flow = writer.adapter->flowOut();
  ASSERT_TRUE(flow);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(flow->attrId(), 259);
  EXPECT_EQ(flow->zelDirtyBitSet0().word(), 0x2U);
  EXPECT_EQ(flow->outstandingKeys(), 1U);
  ASSERT_NE(flow->valueIter(), nullptr);
  EXPECT_EQ(position().position(), 0);
  EXPECT_EQ(position().rest(), "fast");
  EXPECT_EQ(writer.worked(), Briefs{"259"});
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST_F(FlowOutText, AnEmptyTextIsOneRecordInAGoodDealOfRoom) {
  profile->profileNameIs("fast");
  writer.sent();
  writer.freeIs(49152);
  profile->profileNameIs("");
  EXPECT_FALSE(writer.adapter->flowOut());
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"259"});
  EXPECT_EQ(hex(seen[0].payload), "00000000");
}

TEST_F(FlowOutText, AnEmptyTextWithOneByteLessGoesThroughAFlowOut) {
  profile->profileNameIs("fast");
  writer.sent();
  writer.freeIs(49151);
  profile->profileNameIs("");
  ASSERT_TRUE(writer.adapter->flowOut());
  EXPECT_THAT(writer.sent(), IsEmpty());
  const auto seen = writer.seenWorked();
  ASSERT_EQ(briefs(seen), Briefs{"259"});
  EXPECT_EQ(hex(seen[0].payload), "00000000");
}

TEST_F(FlowOutText, OnADownConnectionItWaits) {
  writer.connection->fail("cut");
  profile->profileNameIs("fast");
  ASSERT_TRUE(writer.adapter->flowOut());
  EXPECT_NE(writer.adapter->flowOut()->valueIter(), nullptr);
}

TEST_F(FlowOutText, ALongOneIsBegunAndTheRestIsLeftToTheFlow) {
  const String8 text = longText(100000);
  profile->profileNameIs(text);
  auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"259+"});
  EXPECT_EQ(seen[0].bytes.size(), 32767U);
  const std::size_t first = seen[0].payload.size() - 4;
  ASSERT_TRUE(writer.adapter->flowOut());
  EXPECT_EQ(position().position(), static_cast<int>(first));
  for (const Seen& one : writer.seenWorked()) {
    seen.push_back(one);
  }
  EXPECT_EQ(briefs(seen), (Briefs{"259+", "259+", "259+", "259"}));
  EXPECT_TRUE(textOf(seen, 259) == text.view());
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST_F(FlowOutText, TheFlowWritesAsFarAsAnyRecordAndItsMarkersFit) {
  const String8 text = longText(100000);
  writer.freeIs(49151);
  profile->profileNameIs(text);
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(259), 0);
  EXPECT_EQ(position().position(), 32735);
  EXPECT_EQ(writer.connection->out()->freeSpace(), 49151U - 32767);
  EXPECT_EQ(writer.sent(), Briefs{"259+"});
  writer.freeIs(32768 + 4095);
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(259), 0);
  EXPECT_EQ(position().position(), 32735);
  EXPECT_THAT(writer.sent(), IsEmpty());
  writer.freeIs(32768 + 4096);
  writer.adapter->handleAttrFlowOut(259);
  EXPECT_EQ(position().position(), 2 * 32735);
}

TEST_F(FlowOutText, APositionIsWorkedOffThoughTheMarkIsClear) {
  writer.freeIs(0);
  profile->profileNameIs("fast");
  const auto flow = writer.adapter->flowOut();
  flow->zelDirtyBitSet0().zelIsProfileNameDirtyIs(false);
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(259), 0);
  EXPECT_EQ(flow->valueIter(), nullptr);
  EXPECT_EQ(writer.sent(), Briefs{"259"});
}

TEST_F(FlowOutText, ACleanOneIsPassedOver) {
  writer.freeIs(0);
  profile->profileNameIs("fast");
  const auto flow = writer.adapter->flowOut();
  EXPECT_THAT(writer.sent(), IsEmpty());
  writer.adapter->handleAttrFlowOut(259);
  writer.sent();
  EXPECT_EQ(flow->zelDirtyBitSet0().word(), 0U);
  EXPECT_FALSE(flow->hasDirtyAttributes());
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(259), 0);
  EXPECT_THAT(writer.sent(), IsEmpty());
}

TEST_F(FlowOutText, ANewerTextTakesThePlaceOfTheOneOnItsWay) {
  const String8 former = longText(100000);
  const String8 newer = longText(70000, 'A');
  profile->profileNameIs(former);
  EXPECT_EQ(writer.sent(), Briefs{"259+"});
  profile->profileNameIs(newer);
  const auto flow = writer.adapter->flowOut();
  EXPECT_EQ(flow->valueIter(), nullptr);
  EXPECT_NE(flow->pendingAbort()[259], nullptr);
  EXPECT_EQ(flow->zelDirtyBitSet0().word(), 0x2U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"abort 259", "259+", "259+", "259"}));
  EXPECT_TRUE(textOf(seen, 259) == newer.view());
}

TEST_F(FlowOutText, BesideAFlowOutAChangeOnlyMarks) {
  writer.connection->demuxer()->createFlowOut(writer.adapter, {}, false, Zel::attrIdFlowEnd);
  profile->profileNameIs("fast");
  EXPECT_THAT(writer.sent(), IsEmpty());
  EXPECT_EQ(writer.adapter->flowOut()->zelDirtyBitSet0().word(), 0x2U);
  EXPECT_EQ(writer.adapter->flowOut()->valueIter(), nullptr);
  EXPECT_EQ(writer.worked(), Briefs{"259"});
}

TEST_F(FlowOutText, ThePositionKeepsItsTextWhole) {
  writer.freeIs(49151);
  profile->profileNameIs(longText(40000));
  writer.adapter->flagsIs(Adapter::flagMuted, true); // so that the flow hears nothing of this
  profile->profileNameIs("other");
  writer.adapter->flagsIs(Adapter::flagMuted, false);
  EXPECT_TRUE(position().rest() == longText(40000).view());
  EXPECT_TRUE(textOf(writer.seenWorked(), 259) == longText(40000).view());
}

// A text that is not the first attribute of its entity: its position is nobody else's.

struct FlowOutTextOfMany : testing::Test {
  Writer<Status> writer{Unit::statusFactory("System")};
  const Ptr<Status> unit = writer.entity;
};

TEST_F(FlowOutTextOfMany, ALongTextIsSentUnderItsOwnId) {
  const String8 text = longText(100000);
  unit->maintEnterInstanceIs(text);
  auto seen = writer.seen();
  for (const Seen& one : writer.seenWorked()) {
    seen.push_back(one);
  }
  EXPECT_EQ(briefs(seen), (Briefs{"269+", "269+", "269+", "269"}));
  EXPECT_TRUE(textOf(seen, 269) == text.view());
}

TEST_F(FlowOutTextOfMany, ALongEntryIsSentUnderItsOwnId) {
  const String8 text = longText(100000);
  unit->historyIs(2.0, text);
  auto seen = writer.seen();
  for (const Seen& one : writer.seenWorked()) {
    seen.push_back(one);
  }
  EXPECT_EQ(briefs(seen), (Briefs{"268+", "268+", "268+", "268"}));
  EXPECT_TRUE(textOf(seen, 268, 8) == text.view());
}

TEST_F(FlowOutTextOfMany, ATextThatGotNoRoomIsSentUnderItsOwnId) {
  writer.freeIs(1000);
  unit->maintExitInstanceIs("exit");
  EXPECT_EQ(writer.worked(), Briefs{"270"});
  writer.freeIs(1000);
  unit->historyIs(1.5, "line");
  EXPECT_EQ(writer.worked(), Briefs{"268"});
}

TEST_F(FlowOutTextOfMany, ANewerTextBeforeTheFirstRunTakesItsPlace) {
  unit->maintEnterInstanceIs(longText(100000));
  EXPECT_EQ(writer.sent(), Briefs{"269+"});
  unit->maintEnterInstanceIs("short");
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"abort 269", "269"}));
  EXPECT_EQ(textOf(seen, 269), "short");
}

using FlowOutTextDeath = FlowOutText;

TEST_F(FlowOutTextDeath, ASecondPositionEndsTheProcess) {
  const auto flow = Zel::makeObject<Zel::NboAttrLog::FlowOut>(
      writer.connection->out(), writer.adapter, Zel::ConnectDesc{}, false, Zel::attrIdFlowEnd);
  const Ptr<Zel::NboAttrLog::FlowOut> base(flow);
  Zel::zelFlowOutValueEnq(base, Position("text"));
  EXPECT_DEATH(Zel::zelFlowOutValueEnq(base, Position("text")), "!rsc->valueIter\\(\\)");
  EXPECT_EQ(Zel::zelFlowOutValueDeq<Position>(base).rest(), "text");
  EXPECT_EQ(Zel::zelFlowOutValueDeq<Position>(base).rest(), "");
  Zel::zelFlowOutBookmarkEnq(base, String8("key"));
  EXPECT_DEATH(Zel::zelFlowOutBookmarkEnq(base, String8("other")), "!rsc->bookmark\\(\\)");
  EXPECT_EQ(Zel::zelFlowOutBookmarkDeq<String8>(base), "key");
  EXPECT_EQ(Zel::zelFlowOutBookmarkDeq<String8>(base), "");
}

} // namespace
