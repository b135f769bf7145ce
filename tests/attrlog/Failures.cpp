// What throws at one end stays there, and what is broken ends the connection and nothing else.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include <foreign/model/Carrier.h>

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using testing::ElementsAre;

struct Failures : testing::Test {
  Failures() {
    pair.here->demuxer()->exportIs(dir);
    pair.settle();
    mirrors = pair.mirror<StatusDir>("units");
    mirror = mirrors->status("System");
  }

  Pair pair;
  const Ptr<StatusDir> dir = statusDirFactory("units");
  const Ptr<Status> unit = dir->statusIs("System");
  Ptr<StatusDir> mirrors;
  Ptr<Status> mirror;
};

TEST_F(Failures, ANotifieeOfAMirrorThatThrowsDisturbsNobody) {
  const auto first = listen<Ear>(mirror);
  first->onHeard = [](const std::string&) { throw std::runtime_error("mine"); };
  const auto second = listen<Ear>(mirror);
  unit->stateIs(active);
  unit->groupIs(Group::GroupKey(Group::groupTypeBgp, "peers"), true);
  unit->historyIs(1.0, "line");
  pair.settle();
  EXPECT_THAT(first->heard, ElementsAre("state", "exception 262", "group peers", "exception 260",
                                        "history 1", "exception 268"));
  EXPECT_THAT(second->heard, ElementsAre("state", "group peers", "history 1"));
  EXPECT_EQ(mirror->state(), active);
  EXPECT_TRUE(pair.there->isUp());
  EXPECT_EQ(pair.there->demuxer()->counts().badValues, 0U);
  EXPECT_EQ(pair.there->demuxer()->counts().refused, 0U);
  mirror->genIdIs(3); // and it writes still
  pair.settle();
  EXPECT_EQ(unit->genId(), 3U);
}

TEST_F(Failures, ANotifieeOfAMirrorThatThrowsInASweepDisturbsNobody) {
  for (const char* const name : {"a", "b", "c"}) {
    unit->groupIs(Group::GroupKey(Group::groupTypeBgp, name), true);
  }
  pair.settle();
  const auto ear = listen<Ear>(mirror);
  ear->onHeard = [](const std::string&) { throw std::runtime_error("mine"); };
  const auto id = mirror->zelNboAttrLogSa(pair.there->out())->entityId();
  feed(*pair.there, marker(id, 260, 0) + marker(id, 260, 2));
  EXPECT_EQ(mirror->groupMap().count(), 0U);
  EXPECT_TRUE(pair.there->isUp());
}

TEST_F(Failures, ANotifieeThatDeletesTheMemberDuringItsRecordDisturbsNobody) {
  const auto ear = listen<Ear>(mirror);
  ear->onHeard = [&](const std::string&) { mirrors->statusDel("System"); };
  mirror = nullptr;
  unit->stateIs(active);
  pair.settle();
  EXPECT_FALSE(mirrors->status("System"));
  EXPECT_FALSE(dir->status("System"));
  EXPECT_TRUE(pair.here->isUp() && pair.there->isUp());
}

TEST_F(Failures, ANotifieeThatDeletesTheMemberDuringASweepDisturbsNobody) {
  for (const char* const name : {"a", "b", "c"}) {
    unit->groupIs(Group::GroupKey(Group::groupTypeBgp, name), true);
  }
  pair.settle();
  const auto id = mirror->zelNboAttrLogSa(pair.there->out())->entityId();
  const auto ear = listen<Ear>(mirror);
  ear->isWeakReferenceIs(true);
  ear->onHeard = [&](const std::string&) { mirrors->statusDel("System"); };
  mirror = nullptr;
  feed(*pair.there, marker(id, 260, 0) + marker(id, 260, 2));
  pair.settle();
  EXPECT_FALSE(mirrors->status("System"));
  EXPECT_TRUE(pair.there->isUp());
}

/// When the first member goes, makes the other one anew.
struct Remaker : StatusDir::Notifiee {
  using StatusDir::Notifiee::onStatus;
  void onStatus(Zel::Name unit) override {
    if (made || notifier()->status(unit)) {
      return;
    }
    const Ptr<StatusDir> dir(const_cast<StatusDir*>(notifier().ptr()));
    const Zel::Name other = unit == Zel::Name("System") ? "other" : "System";
    made = dir->status(other);
    dir->statusDel(other);
    made = dir->statusIs(other);
  }
  Ptr<Status> made;
};

TEST_F(Failures, AMemberThatIsMadeAnewDuringASweepStays) {
  dir->statusIs("other");
  pair.settle();
  const auto id = mirrors->zelNboAttrLogSa(pair.there->out())->entityId();
  const auto remaker = listen<Remaker>(mirrors);
  feed(*pair.there, marker(id, 258, 0) + marker(id, 258, 2));
  ASSERT_TRUE(remaker->made);
  EXPECT_EQ(mirrors->statusMap().count(), 1U);
  EXPECT_EQ(mirrors->status(remaker->made->name()), remaker->made);
}

TEST_F(Failures, ANotifieeThatClosesTheConnectionDuringARecordDisturbsNobody) {
  const auto ear = listen<Ear>(mirror);
  ear->onHeard = [&](const std::string&) { pair.there->close("enough"); };
  unit->stateIs(active);
  unit->genIdIs(5);
  pair.settle();
  EXPECT_EQ(mirror->state(), active);
  EXPECT_EQ(mirror->genId(), 0U);
  EXPECT_STREQ(pair.there->failure().charPtr(), "enough");
  EXPECT_EQ(pair.there->demuxer()->adapters(), 0U);
  mirror->genIdIs(6);
  EXPECT_EQ(unit->genId(), 5U);
}

TEST_F(Failures, ALocalNotifieeThatThrowsDoesNotStopTheRecord) {
  const auto ear = listen<Ear>(unit);
  ear->onHeard = [](const std::string&) { throw std::runtime_error("mine"); };
  unit->stateIs(active);
  pair.settle();
  EXPECT_THAT(ear->heard, ElementsAre("state", "exception 262"));
  EXPECT_EQ(mirror->state(), active);
}

TEST_F(Failures, AMirrorThatDiesWithItsConnectionUpIsForgotten) {
  pair.roots->entityDel("units");
  mirrors = nullptr;
  mirror = nullptr;
  EXPECT_EQ(pair.there->demuxer()->adapters(), 0U);
  unit->stateIs(active);
  dir->statusIs("other");
  pair.settle();
  EXPECT_EQ(pair.there->demuxer()->counts().unknownEntities, 2U);
  EXPECT_TRUE(pair.there->isUp());
}

TEST_F(Failures, AnExportedRootThatDiesIsForgotten) {
  Pair other;
  auto root = statusFactory("root");
  other.here->demuxer()->exportIs(root);
  other.settle();
  fill(*other.here, 0);
  root->stateIs(active);
  EXPECT_EQ(other.here->demuxer()->scheduled(), 1U);
  root = nullptr;
  EXPECT_EQ(other.here->demuxer()->adapters(), 0U);
  EXPECT_EQ(other.here->demuxer()->scheduled(), 0U);
  other.settle();
  EXPECT_EQ(other.mirror<Status>("root")->state(), init);
}

TEST_F(Failures, MalformedBytesEndTheConnectionAndLeaveTheMirrorWhole) {
  unit->stateIs(active);
  pair.settle();
  std::string bytes = letter(EntityId{2, 0}, 262, [](Out& out) { out.put32(1); });
  bytes.back() = 7; // the closing token
  feed(*pair.there, bytes);
  EXPECT_STREQ(pair.there->failure().charPtr(), "malformed record: its tokens are 1 and 7");
  EXPECT_EQ(mirror->state(), active);
  EXPECT_TRUE(mirrors->status("System") == mirror);
  mirror->stateIs(init);
  EXPECT_EQ(mirror->state(), init);
}

// A mutator of a program's own that fails.

struct Fragile : Foreign::Carrier {
  using Carrier::Carrier;
  void urgencyIs(Foreign::Urgency urgency) override {
    if (fail) {
      fail();
    }
    Carrier::urgencyIs(urgency);
  }
  std::function<void()> fail;
};

/// Mirrors the only root in an entity that is there.
struct MountOfOne : Zel::NboAttrLog::MountPolicy {
  explicit MountOfOne(Ptr<Zel::Entity> taken) : entity(std::move(taken)) {}
  Mount mount(const Ptr<Zel::Entity>& /*fresh*/) override { return {entity, {}}; }
  const Ptr<Zel::Entity> entity;
};

struct FailingMutators : testing::Test {
  FailingMutators() {
    here->demuxer()->exportIs(carrier);
    settle();
  }
  ~FailingMutators() override {
    here->close();
    there->close();
  }
  void settle() {
    while (here->service() || there->service() || Pair::move(*here, *there) != 0 ||
           Pair::move(*there, *here) != 0) {
    }
  }
  /// Two records arrive, and the first one's mutator throws this.
  template <class Failure>
  void throws(Failure failure) {
    mirror->fail = [=] { throw failure; };
    carrier->urgencyIs(Foreign::express);
    carrier->idleIs(false);
    settle();
  }
  const Demuxer::Counts& counts() const { return there->demuxer()->counts(); }

  const Ptr<Foreign::Carrier> carrier = Zel::makeObject<Foreign::Carrier>("fork");
  const Ptr<Fragile> mirror = Zel::makeObject<Fragile>("fork");
  const Ptr<Connection> here = Zel::makeObject<Connection>(Connection::End::first);
  const Ptr<Connection> there =
      Zel::makeObject<Connection>(Connection::End::second, "here", Zel::ConnectionLimits(),
                                  Zel::makeObject<MountOfOne>(mirror));
};

TEST_F(FailingMutators, ARefusalIsCounted) {
  throws(Zel::ReadOnlyException("not yours"));
  EXPECT_EQ(counts().refused, 1U);
  EXPECT_STREQ(there->failure().charPtr(), "");
  EXPECT_FALSE(mirror->idle());
}

TEST_F(FailingMutators, ABadValueIsCounted) {
  throws(Zel::RangeException("too urgent"));
  EXPECT_EQ(counts().badValues, 1U);
  EXPECT_STREQ(there->failure().charPtr(), "");
  EXPECT_FALSE(mirror->idle());
}

TEST_F(FailingMutators, ABrokenRuleEndsTheConnection) {
  throws(Zel::InternalException("broken"));
  there->service();
  EXPECT_EQ(counts().refused + counts().badValues, 0U);
  EXPECT_STREQ(there->failure().charPtr(), "a record could not be applied: broken");
  EXPECT_EQ(there->demuxer()->adapters(), 0U);
  EXPECT_EQ(mirror->urgency(), Foreign::urgencyUnknown);
  EXPECT_TRUE(mirror->idle());
}

} // namespace
