#include "Ends.h"
#include "Payload.h"

#include "support/Failure.h"

#include <gtest/gtest.h>

// The two halves of a connection as the adapters use them.

namespace {

using namespace Zel::NboAttrLog;
using Zel::makeObject;
using Zel::Ptr;

/// A sending half that sends smaller records.
class SmallOut : public Out {
public:
  SmallOut() : Out(65536) {}
  std::size_t maxMessageSize() const override { return 1000; }
};

std::string pendingOf(const Ptr<Out>& out) {
  const std::string bytes(viewOf(out->pending()));
  out->consumed(bytes.size());
  return hexOf(bytes);
}

TEST(Transport, TheHeaderStandsInFrontOfTheTokens) {
  const auto out = makeObject<Out>(65536U);
  MsgHeader header;
  header.entityId = {0x44332211, 0x88776655};
  header.attrId = -260;
  header.variableSize = 1;
  header.recordTag = 151;
  out->nextHeaderIs(header);
  EXPECT_TRUE(out->pending().empty());
  out << transactBegin;
  out->put8(0x5a);
  EXPECT_TRUE(out->pending().empty());
  out << transactEnd;
  EXPECT_EQ(pendingOf(out), plain("00 00 00 1d 11 22 33 44 55 66 77 88 ff ff fe fc 01 00 00 00 00 "
                                  "00 00 00 97 00 01 5a 03"));
  EXPECT_EQ(out->recordsWritten(), 1U);
  EXPECT_EQ(out->bytesWritten(), 29U);
}

TEST(Transport, TheHeaderHasEveryFieldOfItsRow) {
  MsgHeader row{{2, 0}, 274, 0, 4, 0, 0};
  EXPECT_EQ(MsgHeader::fixed({2, 0}, 274, 4), row);
  row = {{2, 0}, 262, 1, 0, 0, 0};
  EXPECT_EQ(MsgHeader::variable({2, 0}, 262), row);
  row = {{2, 0}, 258, 1, 0, 151, 0};
  EXPECT_EQ(MsgHeader::variable({2, 0}, 258, childRecordTag), row);
}

TEST(Transport, TheNumbersOfTheProtocol) {
  EXPECT_EQ(attrIdSyncMode, 135);
  EXPECT_EQ(attrIdOrphan, 136);
  EXPECT_EQ(attrIdTransaction, 137);
  EXPECT_EQ(attrIdCompound, 144);
  EXPECT_EQ(childRecordTag, 151U);
  EXPECT_EQ(payloadSectionType, 1);
  EXPECT_EQ(payloadSectionArgs, 3);
  EXPECT_EQ(payloadSectionEntityId, 4);
  EXPECT_EQ(transactBegin, 1);
  EXPECT_EQ(transactEnd, 3);
  EXPECT_EQ(Zel::orphanEntityId, (Zel::EntityId{1, 0}));
}

TEST(Transport, ARecordThatIsOpenIsDroppedByTheNext) {
  const auto out = makeObject<Out>(65536U);
  out->nextHeaderIs(MsgHeader::variable({2, 0}, 262));
  out << transactBegin;
  out << 1U;
  out->nextHeaderIs(MsgHeader::fixed({2, 0}, 138, 0));
  out << transactBegin;
  out << transactEnd;
  EXPECT_EQ(pendingOf(out), plain("00 00 00 1c 02 00 00 00 00 00 00 00 00 00 00 8a 00 00 00 00 00 "
                                  "00 00 00 00 00 01 03"));
}

TEST(Transport, SectionsAreNamedByOneByte) {
  EXPECT_EQ(payloadOf([](const Ptr<Out>& out) {
              out->currentPayloadSectionIs(payloadSectionType);
              out->currentPayloadSectionIs(payloadSectionArgs);
              out->currentPayloadSectionIs(payloadSectionEntityId);
            }),
            "01 03 04");
}

TEST(Transport, AWholeRecordNeedsTheSizeOfAMessage) {
  const auto out = makeObject<Out>(65536U);
  EXPECT_EQ(out->maxMessageSize(), 32768U);
  EXPECT_EQ(makeObject<SmallOut>()->maxMessageSize(), 1000U);
  const auto fill = [&](std::size_t size) {
    out->nextHeaderIs(MsgHeader::variable({2, 0}, 262));
    out << transactBegin;
    const std::string bytes(size - 28, 'z');
    out->putBytes(bytes.data(), bytes.size());
    out << transactEnd;
  };
  EXPECT_TRUE(out->hasSufficientBuffer());
  fill(32767);
  EXPECT_EQ(out->freeSpace(), 32769U);
  EXPECT_TRUE(out->hasSufficientBuffer());
  fill(29);
  EXPECT_EQ(out->freeSpace(), 32740U);
  EXPECT_FALSE(out->hasSufficientBuffer());
  out->consumed(28);
  EXPECT_EQ(out->freeSpace(), 32768U);
  EXPECT_TRUE(out->hasSufficientBuffer());
}

TEST(Transport, AConnectionThatIsDownTakesNothing) {
  const Sender sender;
  EXPECT_TRUE(sender.out()->hasSufficientBuffer());
  sender.connection->fail("why not");
  EXPECT_FALSE(sender.out()->hasSufficientBuffer());
  EXPECT_FALSE(sender.out()->isUp());
}

TEST(Transport, TheReverseOfAHalfIsTheOther) {
  const Sender sender;
  EXPECT_EQ(sender.out()->reverseLog(), sender.connection->in());
  EXPECT_EQ(sender.out()->rawReverseLog(), sender.connection->in().ptr());
  EXPECT_EQ(demuxFor(sender.connection->in().ptr()), sender.connection->demuxer().ptr());
}

TEST(Transport, AHalfByItselfHasNoReverse) {
  const auto out = makeObject<Out>(65536U);
  EXPECT_FALSE(out->reverseLog());
  EXPECT_EQ(out->rawReverseLog(), nullptr);
  EXPECT_EQ(demuxFor(nullptr), nullptr);
  EXPECT_EQ(demuxFor(ringOf("").ptr()), nullptr);
}

TEST(Transport, AHalfThatOutlivesItsConnectionHasNoReverse) {
  Ptr<Out> out;
  Ptr<In> in;
  {
    const Sender sender;
    out = sender.out();
    in = sender.connection->in();
  }
  EXPECT_FALSE(out->reverseLog());
  EXPECT_EQ(demuxFor(in.ptr()), nullptr);
}

} // namespace
