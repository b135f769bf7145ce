// A mirror that is frozen follows its exporter as one that is not, and refuses all else.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include "support/Failure.h"

#include <foreign/model/Order.h>
#include <model/Mapping.h>

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace Maintenance::Unit;
using Group::GroupKey;
using Support::messageOf;
using testing::ElementsAre;
using Zel::Ptr;
using Zel::ReadOnlyException;
using Zel::String8;

/// An exporter's units and their mirror, frozen from the start or never.
struct Units {
  explicit Units(bool frozen) {
    mirrors->zelFrozenIs(frozen);
    roots->entityIs(mirrors);
    dir->statusIs("System");
    connect();
    unit = dir->status("System");
    mirror = mirrors->status("System");
    ear = Wiretap::listen<Wiretap::Ear>(mirror);
    dirEar = Wiretap::listen<Wiretap::DirEar>(mirrors);
  }
  void connect() {
    pair.emplace(0U, Zel::ConnectionLimits(), roots);
    pair->here->demuxer()->exportIs(dir);
    pair->settle();
  }

  const Ptr<Zel::Dir> roots = Zel::makeObject<Zel::Dir>();
  const Ptr<StatusDir> dir = statusDirFactory("units");
  const Ptr<StatusDir> mirrors = statusDirFactory("units");
  std::optional<Pair> pair;
  Ptr<Status> unit;
  Ptr<Status> mirror;
  Ptr<Wiretap::Ear> ear;
  Ptr<Wiretap::DirEar> dirEar;
};

/// The same happens to a mirror that is frozen and to one that is not.
struct FrozenMirrors : testing::Test {
  template <class Work>
  void each(Work&& work) {
    work(frozen);
    work(free);
    frozen.pair->settle();
    free.pair->settle();
    EXPECT_EQ(frozen.ear->heard, free.ear->heard);
    EXPECT_EQ(frozen.dirEar->heard, free.dirEar->heard);
    EXPECT_EQ(frozen.mirror->versionCounter(), free.mirror->versionCounter());
    EXPECT_EQ(frozen.mirror->readCounter(), free.mirror->readCounter());
    EXPECT_EQ(frozen.mirrors->versionCounter(), free.mirrors->versionCounter());
    EXPECT_EQ(frozen.pair->there->demuxer()->counts().refused, 0U);
    EXPECT_STREQ(frozen.pair->there->failure().charPtr(), "");
  }

  const GroupKey peers{Group::groupTypeBgp, "peers"};
  const GroupKey more{Group::groupTypeBgp, "more"};
  const Vexil::IntfId port{0x01010000, 3};
  Units frozen{true};
  Units free{false};
};

TEST_F(FrozenMirrors, FollowRecordsOfAllKinds) {
  const String8 longText(std::string(99999, 'x'));
  each([&](Units& units) {
    units.unit->stateIs(active);
    units.unit->genIdIs(7);
    units.unit->timeOfStateChangeIs(1.5);
    units.unit->profileNameIs("fast");
    units.unit->maintEnterInstanceIs(longText);
    units.unit->groupIs(peers, true);
    units.unit->groupIs(more, true);
    units.unit->historyIs(1.0, "one");
    units.unit->historyIs(2.0, longText);
    units.unit->intfsViolatingTrafficThresholdIs(port, true);
    units.dir->statusIs("other")->stateIs(active);
  });
  for (const Units* const units : {&frozen, &free}) {
    EXPECT_EQ(units->mirror->state(), active);
    EXPECT_EQ(units->mirror->genId(), 7U);
    EXPECT_EQ(units->mirror->maintEnterInstance(), longText);
    EXPECT_EQ(units->mirror->history(2.0), longText);
    EXPECT_TRUE(units->mirror->group(more));
    EXPECT_EQ(units->mirrors->status("other")->state(), active);
  }
  EXPECT_TRUE(frozen.mirrors->status("other")->zelIsMirrored());
  EXPECT_FALSE(free.mirrors->status("other")->zelIsMirrored());
  each([&](Units& units) {
    units.unit->groupIs(more, false);
    units.unit->groupDel(peers);
    units.unit->historyIs(1.0, "uno");
    units.unit->historyDel(2.0);
    units.dir->statusDel("other");
    units.unit->stateIs(failedExit);
  });
  EXPECT_EQ(frozen.mirror->groupMap().count(), 1U);
  EXPECT_EQ(frozen.mirror->history(1.0), "uno");
  EXPECT_EQ(frozen.mirrors->statusMap().count(), 1U);
}

TEST_F(FrozenMirrors, SweepWhatHasGoneMeanwhile) {
  each([&](Units& units) {
    units.unit->groupIs(peers, true);
    units.unit->groupIs(more, true);
    units.unit->historyIs(1.0, "one");
    units.unit->historyIs(std::numeric_limits<double>::quiet_NaN(), "never");
    units.dir->statusIs("other");
  });
  each([&](Units& units) {
    units.pair.reset();
    units.unit->groupDel(peers);
    units.unit->historyDelAll();
    units.dir->statusDel("other");
    units.dir->statusIs("new");
    units.connect();
  });
  EXPECT_EQ(frozen.mirror, frozen.mirrors->status("System"));
  EXPECT_EQ(frozen.mirror->groupMap().count(), 1U);
  EXPECT_EQ(frozen.mirror->historyMap().count(), 0U);
  EXPECT_FALSE(frozen.mirrors->status("other"));
  EXPECT_TRUE(frozen.mirrors->status("new"));
}

TEST_F(FrozenMirrors, RefuseANotifieeThatWrites) {
  frozen.ear->onHeard = [&](const std::string&) {
    EXPECT_EQ(messageOf<ReadOnlyException>([&] { frozen.mirror->stateIs(active); }),
              "read-only attribute: state of units/System");
  };
  frozen.unit->stateIs(failedExit);
  frozen.pair->settle();
  EXPECT_EQ(frozen.mirror->state(), failedExit);
  EXPECT_EQ(frozen.unit->state(), failedExit);
  EXPECT_THAT(frozen.ear->heard, ElementsAre("state"));
}

TEST_F(FrozenMirrors, SendNothingOfWhatTheyRefuse) {
  EXPECT_THROW(frozen.mirror->stateIs(failedExit), ReadOnlyException);
  EXPECT_THROW(frozen.mirrors->statusIs("mine"), ReadOnlyException);
  EXPECT_THROW(frozen.mirrors->statusDel("System"), ReadOnlyException);
  const auto written = frozen.pair->there->out()->bytesWritten();
  frozen.pair->settle();
  EXPECT_EQ(frozen.pair->there->out()->bytesWritten(), written);
  EXPECT_EQ(frozen.dir->status("System"), frozen.unit);
}

TEST(FrozenMirror, TakesWhatAMemberThatIsThereIsMadeWith) {
  using namespace Foreign;
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto dir = Zel::makeObject<OrderDir>("orders");
  const auto mirrors = Zel::makeObject<OrderDir>("orders");
  mirrors->zelFrozenIs(true);
  roots->entityIs(mirrors);
  const Ptr<Order> order = dir->orderIs("o", routine);
  std::optional<Pair> pair;
  const auto connect = [&] {
    pair.emplace(0U, Zel::ConnectionLimits(), roots);
    pair->here->demuxer()->exportIs(dir);
    pair->settle();
  };
  connect();
  const Ptr<Order> mirror = mirrors->order("o");
  ASSERT_TRUE(mirror);
  const unsigned version = mirror->versionCounter();
  pair.reset();
  order->urgencyIs(express);
  connect();
  EXPECT_EQ(mirrors->order("o"), mirror);
  EXPECT_EQ(mirror->urgency(), express);
  EXPECT_EQ(mirror->versionCounter(), version + 1);
  EXPECT_EQ(pair->there->demuxer()->counts().refused, 0U);
  EXPECT_STREQ(pair->there->failure().charPtr(), "");
}

/// Writes more than it is asked to.
struct Eager : Maintenance::MemberToGroup {
  using MemberToGroup::MemberToGroup;
  void groupIs(const GroupKey& key, bool value) override {
    MemberToGroup::groupIs(key, value);
    partOfDynamicUnitIs(!partOfDynamicUnit());
  }
};

TEST(FrozenMirror, RefusesAnOverrideTheRestAndTheConnectionStays) {
  const GroupKey peers(Group::groupTypeBgp, "peers");
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto member = Zel::makeObject<Maintenance::MemberToGroup>("m");
  const auto mirror = Zel::makeObject<Eager>("m");
  mirror->zelFrozenIs(true);
  roots->entityIs(mirror);
  Pair pair(0, Zel::ConnectionLimits(), roots);
  pair.here->demuxer()->exportIs(member);
  pair.settle();
  member->groupIs(peers, true);
  pair.settle();
  EXPECT_TRUE(mirror->group(peers));
  EXPECT_FALSE(mirror->partOfDynamicUnit());
  EXPECT_EQ(pair.there->demuxer()->counts().refused, 1U);
  EXPECT_STREQ(pair.there->failure().charPtr(), "");
  member->profileChangeCauseIs(Maintenance::ProfileChangeCause{1});
  pair.settle();
  EXPECT_EQ(mirror->profileChangeCause(), Maintenance::ProfileChangeCause{1});
}

} // namespace
