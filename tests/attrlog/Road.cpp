// The road of one change, from the mutator at one end to the notifiees at the other.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using testing::ElementsAre;

TEST(Road, OfOneChange) {
  Pair pair;
  const auto dir = statusDirFactory("units");
  const Ptr<Status> unit = dir->statusIs("System");
  // A notifiee that is there before the adapter, and hears of a change after it all the same.
  std::vector<std::string> order;
  const auto local = listen<Ear>(unit);
  local->onHeard = [&](const std::string& what) {
    order.push_back(what + " with " + std::to_string(pair.here->out()->recordsWritten()));
  };
  // A third party mirrors the mirror.
  const auto beyond = Zel::makeObject<Connection>(Connection::End::first, "beyond");
  pair.here->demuxer()->exportIs(dir);
  pair.settle();
  const auto mirrors = pair.mirror<StatusDir>("units");
  const auto mirror = mirrors->status("System");
  beyond->demuxer()->exportIs(mirrors);
  while (beyond->service()) {
  }
  taken(*beyond);
  const auto remote = listen<Ear>(mirror);
  const auto written = pair.here->out()->recordsWritten();
  const unsigned version = unit->versionCounter();
  const unsigned mirrorVersion = mirror->versionCounter();

  // 1. The mutator stores, counts and tells, and stops on equality.
  unit->stateIs(init);
  EXPECT_EQ(unit->versionCounter(), version);
  unit->stateIs(underMaintenance);
  EXPECT_EQ(unit->state(), underMaintenance);
  EXPECT_EQ(unit->versionCounter(), version + 1);
  // 2, 3. The adapter is told first, and its gate is open: the record is there when others hear.
  EXPECT_THAT(order, ElementsAre("state with " + std::to_string(written + 1)));
  // 4. Header, opening token, value, closing token; and nothing is kept.
  const auto adapter = unit->zelNboAttrLogSa(pair.here->out());
  EXPECT_FALSE(adapter->flowOut());
  const auto bytes = pair.here->pendingOutput();
  ASSERT_EQ(bytes.size(), 32U);
  EXPECT_EQ(hex({reinterpret_cast<const char*>(bytes.data()), bytes.size()}), "00000020"
                                                                              "0400000000000000"
                                                                              "00000106"
                                                                              "01"
                                                                              "00000000"
                                                                              "00000000"
                                                                              "00"
                                                                              "01"
                                                                              "00000003"
                                                                              "03");
  // 6. The peer finds the adapter by the id, and calls the same mutator.
  ASSERT_EQ(Pair::move(*pair.here, *pair.there), 32U);
  EXPECT_EQ(mirror->state(), init);
  pair.there->service();
  EXPECT_EQ(mirror->state(), underMaintenance);
  EXPECT_EQ(mirror->versionCounter(), mirrorVersion + 1);
  EXPECT_THAT(remote->heard, ElementsAre("state"));
  // The adapter that applied it drops the echo, the other passes it on.
  EXPECT_FALSE(pair.there->wantsWrite());
  const auto passedOn = records(*beyond);
  ASSERT_EQ(briefs(passedOn), Briefs{"262"});
  EXPECT_EQ(hex(passedOn[0].payload), "00000003");

  // 5. Without room a mark is left, and the flow-out writes what is there when its turn comes.
  fill(*pair.here, 0);
  unit->stateIs(failedExit);
  unit->stateIs(active);
  unit->groupIs(Group::GroupKey(Group::groupTypeBgp, "peers"), true);
  EXPECT_TRUE(adapter->flowOut());
  EXPECT_EQ(pair.here->demuxer()->scheduled(), 1U);
  pair.settle();
  EXPECT_FALSE(adapter->flowOut());
  EXPECT_EQ(mirror->state(), active);
  EXPECT_TRUE(mirror->group(Group::GroupKey(Group::groupTypeBgp, "peers")));
  EXPECT_THAT(remote->heard, ElementsAre("state", "group peers", "state"));
  EXPECT_EQ(briefs(records(*beyond)), (Briefs{"260", "262"}));

  // 7. A new subscriber gets everything, each collection framed by its markers, a member behind
  // its directory's record.
  const auto late = Zel::makeObject<Connection>(Connection::End::first, "late");
  late->demuxer()->exportIs(dir);
  Briefs first;
  while (late->service()) {
  }
  for (const Seen& one : records(*late)) {
    first.push_back(brief(one));
  }
  EXPECT_THAT(
      Briefs(first.begin(), first.begin() + 8),
      ElementsAre("root", "begin 258", "258", "end 258", "259", "begin 260", "260", "end 260"));
  unit->stateIs(init);
  EXPECT_EQ(briefs(records(*late)), Briefs{"262"});
  pair.settle();
  EXPECT_EQ(mirror->state(), init);
  late->close();
  beyond->close();
}

TEST(Road, GoesBothWaysAndComesBackFromNeither) {
  Pair pair;
  const auto unit = statusFactory("System");
  pair.here->demuxer()->exportIs(unit);
  pair.settle();
  const auto mirror = pair.mirror<Status>("System");
  const auto hereHeard = listen<Ear>(unit);
  const auto thereHeard = listen<Ear>(mirror);
  const auto hereWritten = pair.here->out()->recordsWritten();
  const auto thereWritten = pair.there->out()->recordsWritten();
  mirror->genIdIs(4);
  pair.settle();
  unit->genIdIs(5);
  pair.settle();
  mirror->genIdIs(6);
  pair.settle();
  EXPECT_EQ(unit->genId(), 6U);
  EXPECT_EQ(mirror->genId(), 6U);
  EXPECT_THAT(hereHeard->heard, ElementsAre("genId", "genId", "genId"));
  EXPECT_THAT(thereHeard->heard, ElementsAre("genId", "genId", "genId"));
  EXPECT_EQ(pair.here->out()->recordsWritten(), hereWritten + 1);
  EXPECT_EQ(pair.there->out()->recordsWritten(), thereWritten + 2);
}

TEST(Road, OfAnAnswerThatANotifieeGivesAtOnce) {
  Pair pair;
  const auto unit = statusFactory("System");
  pair.here->demuxer()->exportIs(unit);
  pair.settle();
  const auto mirror = pair.mirror<Status>("System");
  const auto ear = listen<Ear>(mirror);
  ear->onHeard = [&](const std::string& what) {
    if (what == "state" && mirror->state() == maintenanceModeEnter) {
      mirror->stateIs(underMaintenance);
      mirror->reasonIs(srcCli);
    }
  };
  unit->stateIs(maintenanceModeEnter);
  pair.settle();
  EXPECT_EQ(unit->state(), underMaintenance);
  EXPECT_EQ(unit->reason(), srcCli);
  EXPECT_EQ(mirror->state(), underMaintenance);
}

} // namespace
