// Keys that equal nothing in an ordered collection: whatever is sent or swept, it ends.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include <foreign/model/Rack.h>
#include <foreign/model/RackAttrLog.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Foreign::Rack;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Records for a key of the collection, of an entry or a deletion, whose key is a number or is not.
std::size_t records(const std::vector<Seen>& seen, AttributeId attr, bool isNan) {
  std::size_t count = 0;
  for (const Seen& one : seen) {
    if (one.attr == attr || one.attr == -attr) {
      const std::uint64_t bits = std::uint64_t{number(one.payload)} << 32 | number(one.payload, 4);
      count += std::isnan(std::bit_cast<double>(bits)) == isNan ? 1U : 0U;
    }
  }
  return count;
}

struct NotANumber : testing::Test {
  Writer<Status> writer{statusFactory("System")};
  const Ptr<Status> unit = writer.entity;
};

TEST_F(NotANumber, AChangeUnderSuchAKeyGoesOutAsADeletion) {
  unit->historyIs(nan, "line"); // no search finds it, so it looks gone
  const auto seen = writer.seen();
  EXPECT_EQ(briefs(seen), Briefs{"-268"});
  EXPECT_EQ(records(seen, 268, true), 1U);
}

TEST_F(NotANumber, ManyChangesWithoutRoomAreOneMarkAndTheFlowEnds) {
  writer.freeIs(0);
  for (int i = 0; i < 100; ++i) {
    unit->historyIs(nan, "line");
    unit->historyIs(i, "line");
  }
  EXPECT_EQ(writer.adapter->flowOut()->zelIsHistoryDirtyMap().count(), 100U); // and beside it
  const auto seen = writer.seenWorked();
  EXPECT_EQ(seen.size(), 101U);
  EXPECT_EQ(records(seen, 268, true), 1U);
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST_F(NotANumber, AWalkEndsAndSendsARecordForEveryOtherKey) {
  for (int i = 0; i < 50; ++i) {
    unit->historyIs(i % 2 == 0 ? i : nan, "line");
  }
  writer.worked();
  writer.adapter->doThis();
  const auto seen = writer.seenWorked();
  const Briefs all = briefs(seen);
  // Of an entry or of a deletion: among such keys a look-up may miss what is there.
  EXPECT_EQ(records(seen, 268, false), 25U);
  EXPECT_EQ(records(seen, 268, true), 0U);
  EXPECT_EQ(std::count(all.begin(), all.end(), "begin 268"), 1);
  EXPECT_EQ(std::count(all.begin(), all.end(), "end 268"), 1);
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST_F(NotANumber, AWalkThatIsStoppedAndGivenUpEndsToo) {
  for (int i = 0; i < 50; ++i) {
    unit->historyIs(i % 2 == 0 ? i : nan, String8(std::string(5000, 'x')));
  }
  writer.worked();
  writer.adapter->doThis();
  writer.freeIs(Out::maxRecordSize + 4096 + 500);
  writer.connection->service();
  EXPECT_LT(records(writer.seen(), 268, false), 25U);
  ASSERT_TRUE(writer.adapter->flowOut());
  unit->historyIs(nan, "other");
  unit->historyIs(100.0, "other");
  writer.adapter->doThis();
  const auto seen = writer.seenWorked();
  EXPECT_EQ(records(seen, 268, false), 26U);
  EXPECT_EQ(brief(seen.back()), "274");
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST(NotANumberReceived, ASweepTakesSuchEntriesAndEnds) {
  Reader<Status> reader;
  const auto entry = [](double key) {
    return texts(Reader<Status>::id, Status::Attr::history, "line", 100, key)[0];
  };
  for (int i = 0; i < 20; ++i) {
    reader.feed(entry(nan));
    reader.feed(entry(i));
  }
  EXPECT_EQ(reader.entity->historyMap().count(), 40U);
  reader.feed(marker(reader.id, 268, Adapter::attrTransactionBegin));
  for (int i = 0; i < 10; ++i) {
    reader.feed(entry(i));
  }
  reader.feed(marker(reader.id, 268, Adapter::attrTransactionEnd));
  EXPECT_EQ(reader.failure(), "");
  // What was sent again among such keys may stand beside its former entry; the rest has gone.
  for (Status::HistoryMap::IteratorConst at(reader.entity->historyMap()); at; at.advance()) {
    EXPECT_TRUE(at->zelKey() < 10) << at->zelKey();
    EXPECT_FALSE(at->zelMarkedForDeletion());
  }
  EXPECT_FALSE(reader.entity->historyMap().hasUnorderedKey());
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST(NotANumberReceived, ATextInPartsUnderSuchAKeyIsPutTogether) {
  Reader<Status> reader;
  for (const std::string& one : texts(reader.id, Status::Attr::history, "fast and loose", 5, nan)) {
    EXPECT_EQ(reader.entity->historyMap().count(), 0U);
    reader.feed(one);
  }
  EXPECT_EQ(reader.failure(), "");
  const Status::HistoryMap::IteratorConst at(reader.entity->historyMap());
  ASSERT_TRUE(at);
  EXPECT_EQ(at->zelValue(), "fast and loose");
  EXPECT_EQ(reader.flowIn(), nullptr);
}

TEST(NotANumberMirrored, LongTextsUnderSuchKeysEnd) {
  Pair pair(0, rings(Zel::ConnectionLimits::smallestRing));
  const auto unit = statusFactory("System");
  pair.here->demuxer()->exportIs(unit);
  pair.settle();
  const auto mirror = pair.mirror<Status>("System");
  unit->historyIs(nan, String8(std::string(200000, 'x')));
  unit->historyIs(1.0, "line");
  unit->historyIs(nan, "short");
  unit->zelNboAttrLogSa(pair.here->out())->doThis();
  pair.settle();
  EXPECT_STREQ(pair.there->failure().charPtr(), "");
  EXPECT_EQ(pair.here->demuxer()->scheduled() + pair.here->demuxer()->parked(), 0U);
  unit->genIdIs(8);
  pair.settle();
  EXPECT_EQ(mirror->genId(), 8U);
}

TEST(NotANumberMirrored, OrderedValuesOfAnotherModelEndToo) {
  Pair pair;
  const auto rack = Zel::makeObject<Rack>("r1");
  for (int i = 0; i < 30; ++i) {
    rack->readingIs(i % 3 == 0 ? nan : i, nan); // a value that is none is a value
    rack->noteIs(i % 3 == 0 ? nan : i, "note");
  }
  pair.here->demuxer()->exportIs(rack);
  pair.settle();
  const auto mirror = pair.mirror<Rack>("r1");
  ASSERT_TRUE(mirror);
  EXPECT_STREQ(pair.there->failure().charPtr(), "");
  EXPECT_EQ(pair.here->demuxer()->scheduled() + pair.here->demuxer()->parked(), 0U);
  rack->readingDelAll();
  rack->zelNboAttrLogSa(pair.here->out())->doThis();
  rack->zoneIs(Foreign::frozen);
  pair.settle();
  EXPECT_EQ(pair.here->demuxer()->scheduled() + pair.here->demuxer()->parked(), 0U);
  EXPECT_EQ(mirror->zone(), Foreign::frozen);
}

} // namespace
