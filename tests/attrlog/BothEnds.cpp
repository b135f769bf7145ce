// What the two ends of a connection do to each other's members, arguments and rights.

#include "Pair.h"

#include "foreign/model/OrderAttrLog.h"

#include <Zel/Exception>
#include <Zel/StateDigest>
#include <model/Unit.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Unit;
using Zel::StreamAdapter;

TEST(BothEnds, MakeTheSameMemberAndAgree) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  const auto mirrors = pair.mirror<StatusDir>("units");
  dir->statusIs("System");
  mirrors->statusIs("System")->genIdIs(7);
  const auto mirror = mirrors->status("System");
  pair.settle();
  EXPECT_EQ(dir->status("System")->genId(), 7U);
  EXPECT_EQ(mirrors->status("System"), mirror);
  EXPECT_EQ(Pair::adapterOf(mirror, pair.there)->entityId(),
            Pair::adapterOf(dir->status("System"), pair.here)->entityId());
  EXPECT_TRUE(pair.here->demuxer()->isOwnId(Pair::adapterOf(mirror, pair.there)->entityId()));
}

TEST(BothEnds, AWalkOverWhatTheMirrorHasMadeBringsNothingBack) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  const auto mirrors = pair.mirror<StatusDir>("units");
  mirrors->statusIs("System");
  pair.settle();
  const std::uint64_t before = pair.there->out()->recordsWritten();
  Pair::adapterOf(dir, pair.here)->doThis();
  while (pair.here->service() || Pair::move(*pair.here, *pair.there) != 0) {
    pair.there->service();
  }
  dir->status("System")->genIdIs(7); // which anything that comes back would cross
  pair.settle();
  EXPECT_EQ(pair.there->out()->recordsWritten(), before);
  EXPECT_EQ(dir->status("System")->genId(), 7U);
  EXPECT_EQ(mirrors->status("System")->genId(), 7U);
}

TEST(BothEnds, APeerDoesNotMountWhatThisEndExports) {
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto dir = statusDirFactory("units");
  dir->statusIs("System");
  roots->entityIs(dir);
  Pair pair(0, {}, roots); // the other end mounts into the directory of its own roots
  pair.there->demuxer()->exportIs(dir, Pair::Flags(StreamAdapter::flagRemoteReadOnly));
  const auto imposter = statusDirFactory("units");
  imposter->statusIs("System")->genIdIs(9);
  pair.here->demuxer()->exportIs(imposter);
  pair.settle();
  EXPECT_EQ(pair.there->demuxer()->counts().refused, 1U);
  EXPECT_TRUE(Pair::adapterOf(dir, pair.there)->hasFlag(StreamAdapter::flagRemoteReadOnly));
  EXPECT_EQ(dir->status("System")->genId(), 0U);
}

struct Orders : testing::Test {
  Orders() {
    dir->orderIs("a", Foreign::express);
    pair.here->demuxer()->exportIs(dir);
    pair.settle();
    mirrors = pair.mirror<Foreign::OrderDir>("orders");
  }
  Pair pair;
  const Zel::Ptr<Foreign::OrderDir> dir = Zel::makeObject<Foreign::OrderDir>("orders");
  Zel::Ptr<Foreign::OrderDir> mirrors;
};

TEST_F(Orders, AnArgumentThatComesWithAKnownMemberIsNoEcho) {
  dir->order("a")->urgencyIs(Foreign::urgencyUnknown);
  Pair::adapterOf(dir, pair.here)->doThis(); // announces the member with what it has now
  Pair::move(*pair.here, *pair.there);       // nothing yet but the change itself
  const std::uint64_t before = pair.there->out()->recordsWritten();
  pair.settle();
  EXPECT_EQ(mirrors->order("a")->urgency(), Foreign::urgencyUnknown);
  EXPECT_EQ(pair.there->out()->recordsWritten(), before);
}

TEST_F(Orders, AChangedArgumentSurvivesThatAllIsSentAnew) {
  const auto order = Pair::adapterOf(dir->order("a"), pair.here);
  order->flagsIs(StreamAdapter::flagForceFlowOut, true);
  dir->order("a")->urgencyIs(Foreign::urgencyUnknown); // owed
  order->doThis();
  pair.settle();
  EXPECT_EQ(mirrors->order("a")->urgency(), Foreign::urgencyUnknown);
}

TEST(BothEnds, ALineThatIsDeletedAndWrittenAgainInTransferIsWhole) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  const Zel::Ptr<Status> unit(dir->statusIs("System").ptr());
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  unit->historyIs(1.0, Zel::String8(std::string(200000, 'x')));
  pair.here->service();
  Pair::move(*pair.here, *pair.there);
  pair.there->service();
  unit->historyDel(1.0);
  unit->historyIs(1.0, "short");
  pair.settle();
  EXPECT_EQ(pair.mirror<StatusDir>("units")->status("System")->history(1.0), "short");
}

TEST(BothEnds, ATextOfAMutedAdapterWaits) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  const Zel::Ptr<Status> unit(dir->statusIs("System").ptr());
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  const Zel::String8 text(std::string(100000, 'x'));
  unit->maintExitInstanceIs(text);
  Pair::adapterOf(unit, pair.here)->flagsIs(StreamAdapter::flagMuted, true);
  pair.settle(); // which ends
  EXPECT_EQ(pair.here->demuxer()->parked(), 1U);
  const auto mirror = pair.mirror<StatusDir>("units")->status("System");
  EXPECT_EQ(mirror->maintExitInstance(), "");
  Pair::adapterOf(unit, pair.here)->flagsIs(StreamAdapter::flagMuted, false);
  pair.settle();
  EXPECT_EQ(mirror->maintExitInstance(), text);
  EXPECT_EQ(pair.here->demuxer()->parked(), 0U);
}

TEST(BothEnds, LimitsHowMuchAPeerMayMake) {
  Zel::ConnectionLimits limits;
  limits.maxEntities = 3;
  limits.maxKeys = 4;
  {
    Pair pair(0, limits);
    const auto dir = statusDirFactory("units");
    pair.here->demuxer()->exportIs(dir);
    dir->statusIs("a");
    dir->statusIs("b");
    pair.settle();
    EXPECT_TRUE(pair.there->isUp());
    dir->statusIs("c");
    pair.settle();
    EXPECT_FALSE(pair.there->isUp());
  }
  {
    Pair pair(0, limits);
    const auto dir = statusDirFactory("units");
    const Zel::Ptr<Status> unit(dir->statusIs("a").ptr());
    pair.here->demuxer()->exportIs(dir);
    for (int i = 0; i < 4; ++i) {
      unit->historyIs(i, "line");
    }
    pair.settle();
    EXPECT_TRUE(pair.there->isUp());
    unit->historyIs(3, "another"); // a key that is there takes no room
    pair.settle();
    EXPECT_TRUE(pair.there->isUp());
    unit->historyIs(4, "line");
    pair.settle();
    EXPECT_EQ(pair.there->failure(), "history of units/a: more keys than are kept for a peer");
    EXPECT_EQ(pair.mirror<StatusDir>("units")->status("a")->historyMap().count(), 4U);
  }
  {
    Pair pair(0, limits);
    const auto unit = statusFactory("a");
    pair.here->demuxer()->exportIs(unit);
    for (int i = 0; i < 4; ++i) {
      unit->historyIs(i, "line");
    }
    pair.settle();
    unit->historyIs(4, Zel::String8(std::string(100000, 'x')));
    Pair::move(*pair.here, *pair.there);
    pair.there->service(); // with its first record
    EXPECT_EQ(pair.there->failure(), "history of a: more keys than are kept for a peer");
  }
}

} // namespace
