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

std::size_t nanRecords(const std::vector<Seen>& seen, AttributeId attr) {
  std::size_t count = 0;
  for (const Seen& one : seen) {
    if (one.attr == attr || one.attr == -attr) {
      const std::uint64_t bits = std::uint64_t{number(one.payload)} << 32 | number(one.payload, 4);
      count += std::isnan(std::bit_cast<double>(bits)) ? 1U : 0U;
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
  EXPECT_EQ(nanRecords(seen, 268), 1U);
}

TEST_F(NotANumber, ManyChangesWithoutRoomAreOneMarkAndTheFlowEnds) {
  writer.freeIs(0);
  for (int i = 0; i < 100; ++i) {
    unit->historyIs(nan, "line");
    unit->historyIs(i, "line");
  }
  EXPECT_EQ(writer.adapter->flowOut()->zelIsHistoryDirtyMap().count(), 101U);
  const auto seen = writer.seenWorked();
  EXPECT_EQ(seen.size(), 101U);
  EXPECT_EQ(nanRecords(seen, 268), 1U);
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST_F(NotANumber, AWalkEndsAndSendsEveryOtherEntry) {
  for (int i = 0; i < 50; ++i) {
    unit->historyIs(i % 2 == 0 ? i : nan, "line");
  }
  writer.worked();
  writer.adapter->doThis();
  const auto seen = writer.seenWorked();
  const Briefs all = briefs(seen);
  EXPECT_EQ(std::count(all.begin(), all.end(), "268"), 25);
  EXPECT_EQ(nanRecords(seen, 268), 0U);
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
  writer.connection->service(1);
  unit->historyIs(nan, "other");
  unit->historyIs(100.0, "other");
  writer.adapter->doThis();
  const Briefs all = writer.worked();
  EXPECT_GE(std::count(all.begin(), all.end(), "268"), 26);
  EXPECT_EQ(all.back(), "274");
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

TEST(NotANumberReceived, ATextInPartsUnderSuchAKeyDoesNotGoOn) {
  Reader<Status> reader;
  const auto letters = texts(reader.id, Status::Attr::history, "fast and loose", 5, nan);
  reader.feed(letters[0]);
  reader.feed(letters[1]);
  EXPECT_EQ(reader.failure(), "malformed record: history goes on where another text is under way");
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
  for (int i = 0; i < 30; ++i) {
    if (i % 3 != 0) {
      EXPECT_EQ(mirror->note(i), "note") << i;
      EXPECT_TRUE(std::isnan(mirror->reading(i))) << i;
    }
  }
  rack->readingDelAll();
  rack->zelNboAttrLogSa(pair.here->out())->doThis();
  pair.settle();
  EXPECT_EQ(pair.here->demuxer()->scheduled() + pair.here->demuxer()->parked(), 0U);
}

} // namespace
