#include "GenericFixture.h"

#include <Zel/Activity>

#include <stdexcept>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Unit::Status;

const GroupKey peers(Group::groupTypeBgp, "peers");
const char* const peersHeard =
    "260 Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})";

/// Takes what it is told to take, and counts.
class Scheduler : public Zel::ActivitySm {
public:
  Scheduler() : former_(installedIs(this)) {}
  ~Scheduler() override { installedIs(former_); }
  bool take(Zel::PtrInterface::NotifieeConst& /*reactor*/, Zel::AttributeId id) override {
    asked.push_back(id);
    return takes;
  }
  void redispatch() override { ++redispatches; }

  bool takes = false;
  std::vector<Zel::AttributeId> asked;
  unsigned redispatches = 0;

private:
  Zel::ActivitySm* const former_;
};

class Delivery : public testing::Test {
protected:
  const Ptr<Status> unit = Unit::statusFactory("System");
  Log log;
  Listener listener{log};
  const Handle object = told(Zel::generic(unit), listener);

  /// The keys that wait are kept in the adapter.
  Status::NotifieeConst& adapter() { return *unit->zelNotifieeList().head(); }

  void deliver(Zel::AttributeId pending) {
    object->pendingAttributeIs(pending);
    object->handleNotification(nullptr);
  }
};

TEST_F(Delivery, OfASingularAttributeTellsThatOne) {
  deliver(262);
  EXPECT_EQ(log, Log{"262"});
  EXPECT_EQ(object->pendingAttribute(), 0);
}

TEST_F(Delivery, OfACollectionTellsTheOneKeyThatWaits) {
  adapter().zelPendingGroup = {peers, 1};
  deliver(260);
  EXPECT_EQ(log, Log{peersHeard});
  EXPECT_EQ(adapter().zelPendingGroup.count, 0);
  EXPECT_EQ(object->pendingAttribute(), 0);
}

TEST_F(Delivery, OfACollectionTellsOfTheWholeWhereSeveralWait) {
  for (const int count : {2, 3, 255}) {
    log.clear();
    adapter().zelPendingGroup = {peers, static_cast<unsigned char>(count)};
    deliver(260);
    EXPECT_EQ(log, Log{"260"});
    EXPECT_EQ(adapter().zelPendingGroup.count, 0);
  }
}

TEST_F(Delivery, OfACollectionTellsNothingWhereNothingWaits) {
  adapter().zelPendingGroup = {peers, 0};
  deliver(260);
  EXPECT_EQ(log, Log());
  EXPECT_EQ(object->pendingAttribute(), 0);
}

TEST_F(Delivery, OfAllTellsEverySingularAttributeAndTheKeysThatWait) {
  adapter().zelPendingHistory = {2.5, 1};
  deliver(-1);
  EXPECT_EQ(log, (Log{"259", "261", "262", "263", "264", "265", "267", "268 2.5", "269", "270",
                      "271", "273", "274"}));
  EXPECT_EQ(object->pendingAttribute(), -1);
}

TEST_F(Delivery, OfAllWithNothingWaitingTellsTheSingularAttributes) {
  deliver(-1);
  EXPECT_EQ(log, (Log{"259", "261", "262", "263", "264", "265", "267", "269", "270", "271", "273",
                      "274"}));
}

TEST_F(Delivery, OfAllChangedTellsEveryCollectionToo) {
  adapter().zelPendingGroup = {peers, 1};
  deliver(-2);
  EXPECT_EQ(log, (Log{"259", "260", "261", "262", "263", "264", "265", "267", "268", "269", "270",
                      "271", "272", "273", "274"}));
  EXPECT_EQ(adapter().zelPendingGroup.count, 0);
  EXPECT_EQ(object->pendingAttribute(), -2);
}

TEST_F(Delivery, OfAnythingElseIsLeftToTheBaseWithItsFieldRestored) {
  for (const Zel::AttributeId id : {258, 266, 275, 0, 5, 130, 154, -3}) {
    deliver(id);
    EXPECT_EQ(log, Log()) << id;
    EXPECT_EQ(object->pendingAttribute(), id);
  }
}

TEST_F(Delivery, GivesWayBetweenTwoAttributes) {
  const Scheduler scheduler;
  deliver(-1);
  EXPECT_EQ(scheduler.redispatches, 15U) << "before the first and between each two";
  deliver(262);
  deliver(275);
  EXPECT_EQ(scheduler.redispatches, 15U);
}

TEST_F(Delivery, AsksAgainWhetherItIsToActNow) {
  Scheduler scheduler;
  scheduler.takes = true;
  adapter().zelPendingGroup = {peers, 1};
  deliver(-1);
  EXPECT_EQ(log, Log());
  EXPECT_EQ(scheduler.asked, (std::vector<Zel::AttributeId>{259, 260, 261, 262, 263, 264, 265, 267,
                                                            269, 270, 271, 273, 274}));
  EXPECT_EQ(adapter().zelPendingGroup.count, 1) << "it waits again";
}

TEST_F(Delivery, ToATypeWithNothingToTellIsTheBases) {
  const auto dir = Profile::configDirFactory("profiles");
  const Handle config = told(
      Zel::generic(dir->configIs(Profile::ProfileKey(Profile::profileTypeBgp, "x"))), listener);
  const Scheduler scheduler;
  for (const Zel::AttributeId id : {-1, -2, 258}) {
    config->pendingAttributeIs(id);
    config->handleNotification(nullptr);
    EXPECT_EQ(config->pendingAttribute(), id);
  }
  EXPECT_EQ(log, Log());
  EXPECT_EQ(scheduler.redispatches, 0U);
}

TEST_F(Delivery, EndsWhereAListenerThrows) {
  adapter().zelPendingGroup = {peers, 1};
  adapter().zelPendingHistory = {2.5, 1};
  listener.onCall = [&](Zel::GenericIfEntity&) {
    if (log.size() == 2) {
      throw std::runtime_error("no");
    }
  };
  EXPECT_THROW(deliver(-1), std::runtime_error);
  EXPECT_EQ(log, (Log{"259", peersHeard}));
  EXPECT_EQ(adapter().zelPendingGroup.count, 0) << "what was taken stays taken";
  EXPECT_EQ(adapter().zelPendingHistory.count, 1);
}

TEST_F(Delivery, OutlivesTheLastHandleOfTheClient) {
  Handle only = told(Zel::generic(unit), listener);
  listener.onCall = [&](Zel::GenericIfEntity&) { only = nullptr; };
  GenericIf& raw = *only;
  raw.pendingAttributeIs(-1);
  raw.handleNotification(nullptr);
  EXPECT_EQ(log.size(), 12U);
}

TEST_F(Delivery, KeepsOnlyTheLatestKey) {
  Scheduler scheduler;
  scheduler.takes = true;
  unit->groupIs(GroupKey(Group::groupTypeBgp, "first"), true);
  EXPECT_EQ(adapter().zelPendingGroup.count, 1);
  unit->groupIs(peers, true);
  EXPECT_EQ(adapter().zelPendingGroup.count, 2);
  EXPECT_EQ(adapter().zelPendingGroup.lastKey, peers);
  EXPECT_EQ(log, Log());
  scheduler.takes = false;
  deliver(260);
  EXPECT_EQ(log, Log{"260"});
}

TEST_F(Delivery, CountsUpToManyAndNotAround) {
  Scheduler scheduler;
  scheduler.takes = true;
  for (int change = 0; change < 256; ++change) {
    unit->groupNotify(peers);
  }
  EXPECT_EQ(adapter().zelPendingGroup.count, 255);
  scheduler.takes = false;
  deliver(260);
  EXPECT_EQ(log, Log{"260"});
}

TEST_F(Delivery, RemembersTheKeyOfAChangeToldAtOnce) {
  unit->groupIs(peers, true);
  EXPECT_EQ(adapter().zelPendingGroup.lastKey, peers);
  EXPECT_EQ(adapter().zelPendingGroup.count, 0);
}

TEST_F(Delivery, YieldsTheSchedulerOfTheThread) {
  EXPECT_EQ(object->actsm(), nullptr);
  EXPECT_EQ(object->zelFwkActivity(), nullptr);
  Scheduler scheduler;
  EXPECT_EQ(object->actsm(), &scheduler);
  EXPECT_EQ(object->zelFwkActivity(), &scheduler);
  EXPECT_EQ(Ptr<const GenericIf>(object)->zelFwkActivity(), &scheduler);
}

} // namespace
