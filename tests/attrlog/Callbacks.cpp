// What a program does inside the callbacks that records of a peer bring about.

#include "Ear.h"
#include "Pair.h"

#include <Zel/Exception>
#include <Zel/StateDigest>
#include <model/Unit.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Unit;

const Group::GroupKey peers(Group::groupTypeBgp, "peers");
const Group::GroupKey uplinks(Group::groupTypeInterface, "uplinks");

struct Callbacks : testing::Test {
  Callbacks() {
    dir->statusIs("System");
    unit = dir->status("System");
    pair.here->demuxer()->exportIs(dir);
    pair.settle();
    mirrors = pair.mirror<StatusDir>("units");
    mirror = mirrors->status("System");
    ear = Wiretap::listen<Wiretap::Ear>(mirror);
  }

  Pair pair;
  const Zel::Ptr<StatusDir> dir = statusDirFactory("units");
  Zel::Ptr<Status> unit;
  Zel::Ptr<StatusDir> mirrors;
  Zel::Ptr<Status> mirror;
  Zel::Ptr<Wiretap::Ear> ear;
};

TEST_F(Callbacks, MayCloseTheConnectionInTheMidstOfARecord) {
  ear->onHeard = [this](const std::string&) { pair.there->close("enough"); };
  unit->groupIs(peers, true);
  unit->stateIs(active);
  pair.settle();
  EXPECT_TRUE(mirror->group(peers));
  EXPECT_EQ(mirror->state(), init);
  EXPECT_EQ(pair.there->failure(), "enough");
  EXPECT_EQ(pair.there->demuxer()->adapters(), 0U);
}

TEST_F(Callbacks, MayDeleteTheEntityThatIsWrittenTo) {
  ear->onHeard = [this](const std::string&) { mirrors->statusDel("System"); };
  unit->groupIs(peers, true);
  pair.settle();
  EXPECT_TRUE(pair.there->isUp());
  EXPECT_FALSE(mirrors->status("System"));
  EXPECT_FALSE(dir->status("System")); // the deletion is the mirror's own, and goes back
}

TEST_F(Callbacks, MayCloseTheConnectionInTheMidstOfASweep) {
  mirror->groupIs(peers, true);
  mirror->groupIs(uplinks, true);
  pair.settle();
  const auto adapter = Pair::adapterOf(unit, pair.here);
  adapter->flagsIs(Zel::StreamAdapter::flagMuted, true);
  unit->groupDelAll(); // which the mirror hears nothing of
  adapter->flagsIs(Zel::StreamAdapter::flagMuted, false);
  ear->onHeard = [this](const std::string&) { pair.there->close(); };
  adapter->doThis();
  pair.settle();
  EXPECT_EQ(mirror->groupMap().count(), 1U);
}

TEST_F(Callbacks, FindThatServiceInsideOfServiceDoesNothing) {
  bool more = true;
  ear->onHeard = [&](const std::string&) { more = pair.there->service(); };
  unit->stateIs(active);
  pair.settle();
  EXPECT_FALSE(more);
  EXPECT_EQ(mirror->state(), active);
  EXPECT_EQ(pair.there->demuxer()->counts().badValues, 0U);
  EXPECT_TRUE(pair.there->isUp());
}

TEST_F(Callbacks, MayMakeAgainWhatASweepDeletes) {
  struct Keeper : StatusDir::Notifiee {
    using StatusDir::Notifiee::onStatus;
    void onStatus(Zel::Name name) override {
      if (!notifier()->status(name)) {
        notifier()->statusIs(name);
      }
    }
  };
  const auto keeper = Zel::makeObject<Keeper>();
  keeper->isRegisteredNotifieeIs(true);
  keeper->notifierIs(mirrors);
  const auto adapter = Pair::adapterOf(dir, pair.here);
  adapter->flagsIs(Zel::StreamAdapter::flagMuted, true);
  dir->statusDel("System");
  adapter->flagsIs(Zel::StreamAdapter::flagMuted, false);
  adapter->doThis();
  pair.settle();
  EXPECT_TRUE(pair.there->isUp());
  EXPECT_TRUE(mirrors->status("System"));
  EXPECT_FALSE(mirrors->status("System") == mirror);
}

TEST(CallbacksInAChain, ARefusalInItsMidstReachesTheMirrorBehind) {
  const auto dir = statusDirFactory("units");
  dir->statusIs("System");
  Pair first(Zel::StreamAdapter::flagReadOnly);
  first.here->demuxer()->exportIs(dir);
  first.settle();
  Pair second;
  second.here->demuxer()->exportIs(first.mirror<StatusDir>("units"));
  second.settle();
  const auto middle = first.mirror<StatusDir>("units")->status("System");
  const auto last = second.mirror<StatusDir>("units")->status("System");
  EXPECT_THROW(middle->genIdIs(5), Zel::ReadOnlyException);
  dir->status("System")->genIdIs(5); // comes to what stands in the middle already
  first.settle();
  second.settle();
  EXPECT_EQ(middle->genId(), 5U);
  EXPECT_EQ(last->genId(), 5U);
}

} // namespace
