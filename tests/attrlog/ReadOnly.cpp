// Who may write over a connection without a session: a mirror that may not is told so when it has
// written, and is as before with the next walk; a peer that may not is refused.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include "support/Failure.h"

#include <foreign/model/Rack.h>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using Group::GroupKey;
using Support::messageOf;
using testing::ElementsAre;
using testing::IsEmpty;
using Zel::Ptr;
using Zel::ReadOnlyException;
using Zel::StreamAdapter;
using Flags = Zel::PtrInterface::NotifieeConst::Zel_BitSet;

struct ReadOnly : testing::Test {
  ReadOnly() {
    dir->statusIs("System")->stateIs(active);
    unit = dir->status("System");
    unit->groupIs(peers, true);
    unit->historyIs(1.0, "line");
    unit->profileNameIs("fast");
    unit->intfsViolatingTrafficThresholdIs(port, true);
    pair.here->demuxer()->exportIs(dir);
    pair.settle();
    mirrors = pair.mirror<StatusDir>("units");
    mirror = mirrors->status("System");
    ear = Wiretap::listen<Wiretap::Ear>(mirror);
    exporter = Wiretap::listen<Wiretap::Ear>(unit);
  }
  /// The exporter sends all that it has once more.
  void walkAgain() {
    pair.settle();
    dir->zelNboAttrLogSa(pair.here->out())->doThis();
    pair.settle();
  }
  /// The text of a refusal.
  template <class Work>
  static std::string refusal(Work&& work) {
    return messageOf<ReadOnlyException>(std::forward<Work>(work));
  }

  const GroupKey peers{Group::groupTypeBgp, "peers"};
  const Vexil::IntfId port{0x01010000, 3};
  Pair pair{StreamAdapter::flagReadOnly};
  const Ptr<StatusDir> dir = statusDirFactory("units");
  Ptr<Status> unit;
  Ptr<StatusDir> mirrors;
  Ptr<Status> mirror;
  Ptr<Wiretap::Ear> ear;
  Ptr<Wiretap::Ear> exporter;
};

TEST_F(ReadOnly, AMirrorFollowsItsExporter) {
  unit->stateIs(underMaintenance);
  pair.settle();
  EXPECT_EQ(mirror->state(), underMaintenance);
  EXPECT_EQ(pair.there->demuxer()->counts().refused, 0U);
}

TEST_F(ReadOnly, AValueIsRefusedToWhoWritesItAndStandsUntilItIsSentAgain) {
  EXPECT_EQ(refusal([&] { mirror->stateIs(failedExit); }),
            "read-only attribute: state of units/System");
  pair.settle();
  EXPECT_EQ(mirror->state(), failedExit);
  EXPECT_THAT(ear->heard, IsEmpty());
  walkAgain();
  EXPECT_EQ(mirror->state(), active);
  EXPECT_THAT(ear->heard, ElementsAre("state"));
  EXPECT_EQ(unit->state(), active);
  EXPECT_THAT(exporter->heard, IsEmpty());
  EXPECT_STREQ(pair.there->failure().charPtr(), "");
}

TEST_F(ReadOnly, ACounterAndATextAreToo) {
  EXPECT_EQ(refusal([&] { mirror->genIdInc(5); }), "read-only attribute: genId of units/System");
  EXPECT_EQ(refusal([&] { mirror->profileNameIs("slow"); }),
            "read-only attribute: profileName of units/System");
  EXPECT_EQ(refusal([&] { mirror->maintEnterInstanceIs(Zel::String8(std::string(99999, 'x'))); }),
            "read-only attribute: maintEnterInstance of units/System");
  walkAgain();
  EXPECT_EQ(mirror->genId(), 0U);
  EXPECT_EQ(mirror->profileName(), "fast");
  EXPECT_EQ(mirror->maintEnterInstance(), "");
}

TEST_F(ReadOnly, AnEntryThatWasAddedGoesAgain) {
  EXPECT_EQ(refusal([&] { mirror->groupIs(GroupKey(Group::groupTypeBgp, "mine"), true); }),
            "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { mirror->historyIs(2.0, "mine"); }),
            "read-only attribute: history of units/System");
  EXPECT_EQ(mirror->groupMap().count(), 2U);
  walkAgain();
  EXPECT_EQ(mirror->groupMap().count(), 1U);
  EXPECT_TRUE(mirror->group(peers));
  EXPECT_EQ(mirror->historyMap().count(), 1U);
  EXPECT_THAT(ear->heard, ElementsAre("group mine", "history 2"));
}

TEST_F(ReadOnly, AnEntryThatWasChangedOrDeletedComesBack) {
  EXPECT_EQ(refusal([&] { mirror->groupDel(peers); }),
            "read-only attribute: group of units/System");
  EXPECT_EQ(refusal([&] { mirror->historyIs(1.0, "mine"); }),
            "read-only attribute: history of units/System");
  EXPECT_EQ(refusal([&] { mirror->intfsViolatingTrafficThresholdIs(port, false); }),
            "read-only attribute: intfsViolatingTrafficThreshold of units/System");
  walkAgain();
  EXPECT_TRUE(mirror->group(peers));
  EXPECT_EQ(mirror->history(1.0), "line");
  EXPECT_TRUE(mirror->intfsViolatingTrafficThreshold(port));
  EXPECT_THAT(exporter->heard, IsEmpty());
}

TEST_F(ReadOnly, AMemberThatWasMadeGoesAgain) {
  EXPECT_EQ(refusal([&] { mirrors->statusIs("mine"); }), "read-only attribute: status of units");
  EXPECT_TRUE(mirrors->status("mine"));
  walkAgain();
  EXPECT_FALSE(mirrors->status("mine"));
  EXPECT_TRUE(mirrors->status("System") == mirror);
  EXPECT_FALSE(dir->status("mine"));
  EXPECT_THAT(ear->heard, IsEmpty());
}

TEST_F(ReadOnly, AMemberThatWasDeletedComesBackWhole) {
  EXPECT_EQ(refusal([&] { mirrors->statusDel("System"); }), "read-only attribute: status of units");
  walkAgain();
  const auto again = mirrors->status("System");
  ASSERT_TRUE(again);
  EXPECT_EQ(again->state(), active);
  EXPECT_TRUE(again->group(peers));
  EXPECT_EQ(again->history(1.0), "line");
  unit->genIdIs(9);
  pair.settle();
  EXPECT_EQ(again->genId(), 9U);
  EXPECT_EQ(mirror->genId(), 0U); // which somebody holds, and is no mirror any more
}

TEST_F(ReadOnly, ARefusalDuringAResyncIsOneToo) {
  for (int i = 0; i < 3000; ++i) {
    unit->historyIs(i, Zel::String8(std::string(1000, 'x')));
  }
  pair.settle();
  unit->zelNboAttrLogSa(pair.here->out())->doThis();
  const auto id = mirror->zelNboAttrLogSa(pair.there->out())->entityId();
  const Zel::NboAttrLog::FlowIn* flow = nullptr;
  do { // so far that the history's first marker has come, and its end has not
    ASSERT_TRUE(pair.here->service(1) || pair.here->wantsWrite());
    Pair::move(*pair.here, *pair.there);
    pair.there->service();
    flow = pair.there->demuxer()->flowIn(id);
  } while (flow == nullptr || flow->aid() != Status::Attr::history);
  EXPECT_TRUE(flow->isTransaction());
  EXPECT_EQ(refusal([&] { mirror->historyIs(-5.0, "mine"); }),
            "read-only attribute: history of units/System");
  walkAgain();
  EXPECT_EQ(mirror->historyMap().count(), 3000U);
  EXPECT_EQ(mirror->history(-5.0), "");
}

TEST_F(ReadOnly, RefusalsWithAFullBufferAreRefusals) {
  Wiretap::fill(*pair.there, 0);
  EXPECT_EQ(refusal([&] { mirror->stateIs(failedExit); }),
            "read-only attribute: state of units/System");
  EXPECT_EQ(refusal([&] { mirror->groupDel(peers); }),
            "read-only attribute: group of units/System");
  EXPECT_EQ(pair.there->out()->freeSpace(), 0U);
  walkAgain();
  EXPECT_EQ(mirror->state(), active);
  EXPECT_TRUE(mirror->group(peers));
  EXPECT_EQ(pair.there->demuxer()->scheduled() + pair.there->demuxer()->parked(), 0U);
}

// A program that decides otherwise.

struct Lenient : Zel::NboAttrLog::DirMounts {
  using DirMounts::DirMounts;
  bool mayWrite(const StreamAdapter& adapter) override {
    asked.emplace_back(adapter.zelNotifierEntity()->fullName().view());
    return true;
  }
  std::vector<std::string> asked;
};

TEST(ReadOnlyPolicy, MayLetAWritePass) {
  const auto roots = Zel::makeObject<Zel::Dir>();
  const auto policy = Zel::makeObject<Lenient>(roots, Flags(StreamAdapter::flagReadOnly));
  const auto here = Zel::makeObject<Zel::Connection>(Zel::Connection::End::first);
  const auto there = Zel::makeObject<Zel::Connection>(Zel::Connection::End::second, "here",
                                                      Zel::ConnectionLimits(), policy);
  const auto unit = statusFactory("System");
  here->demuxer()->exportIs(unit);
  const auto settle = [&] {
    while (here->service() || there->service() || Pair::move(*here, *there) != 0 ||
           Pair::move(*there, *here) != 0) {
    }
  };
  settle();
  const auto mirror = Zel::ptrCast<Status>(roots->entity("System"));
  mirror->stateIs(active);
  settle();
  EXPECT_EQ(unit->state(), active);
  EXPECT_THAT(policy->asked, ElementsAre("System"));
  here->close();
  there->close();
}

// The other end.

struct ReadOnlyPeer : testing::Test {
  ReadOnlyPeer() {
    unit->groupIs(peers, true);
    pair.here->demuxer()->exportIs(dir, Flags(StreamAdapter::flagRemoteReadOnly));
    pair.settle();
    mirrors = pair.mirror<StatusDir>("units");
  }
  std::uint64_t refused() const { return pair.here->demuxer()->counts().refused; }

  const GroupKey peers{Group::groupTypeBgp, "peers"};
  Pair pair;
  const Ptr<StatusDir> dir = statusDirFactory("units");
  const Ptr<Status> unit = dir->statusIs("System");
  Ptr<StatusDir> mirrors;
};

TEST_F(ReadOnlyPeer, WritesOfItAreCountedAndChangeNothing) {
  const auto mirror = mirrors->status("System");
  mirror->stateIs(active);
  mirror->groupDel(peers);
  mirror->historyIs(1.0, "mine");
  mirrors->statusIs("mine");
  pair.settle();
  EXPECT_EQ(refused(), 4U);
  EXPECT_EQ(unit->state(), init);
  EXPECT_TRUE(unit->group(peers));
  EXPECT_EQ(unit->historyMap().count(), 0U);
  EXPECT_EQ(dir->statusMap().count(), 1U);
  mirrors->statusDel("System");
  pair.settle();
  EXPECT_TRUE(dir->status("System") == unit);
  EXPECT_EQ(refused(), 5U);
  EXPECT_TRUE(pair.here->isUp());
}

} // namespace
