// Notifiees that destroy what a mutator works on.

#include <Zel/Attribute>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace Maintenance;
using Profile::Config;
using Profile::ConfigDir;
using Profile::configDirFactory;
using Profile::ProfileKey;
using Unit::Status;
using Unit::statusFactory;
using Zel::Ptr;
using Zel::String8;

ProfileKey bgp(const char* name) { return {Profile::profileTypeBgp, name}; }

struct DirListener : ConfigDir::Notifiee {
  void onConfig(const ProfileKey& key) override {
    names.push_back(key.name());
    if (const auto call = onCall) { // a copy: the call may replace it
      call();
    }
  }
  std::vector<String8> names;
  std::function<void()> onCall;
};

struct UnitListener : Status::Notifiee {
  void onGroup(const Group::GroupKey& key) override {
    names.push_back(key.name());
    if (const auto call = onCall) { // a copy: the call may replace it
      call();
    }
  }
  std::vector<String8> names;
  std::function<void()> onCall;
};

template <class Listener, class Owner>
Ptr<Listener> listen(const Ptr<Owner>& owner) {
  const auto listener = Zel::makeObject<Listener>();
  listener->isRegisteredNotifieeIs(true);
  listener->notifierIs(owner);
  return listener;
}

static_assert(!std::is_copy_constructible_v<UnitListener> &&
              !std::is_copy_assignable_v<UnitListener>);
static_assert(!std::is_copy_constructible_v<Status::ZelGroup> &&
              !std::is_copy_constructible_v<Status::ZelHistory>);

TEST(Reentrance, DeletingAllEndsWithAnOwnerWhoseLastHandleGoesMeanwhile) {
  auto profiles = configDirFactory("profiles");
  for (const char* const name : {"a", "b", "c"}) {
    profiles->configIs(bgp(name));
  }
  const auto listener = listen<DirListener>(profiles);
  listener->isWeakReferenceIs(true);
  listener->onCall = [&] { profiles = nullptr; };
  profiles->configDelAll();
  EXPECT_EQ(listener->names.size(), 3U);
  EXPECT_FALSE(listener->notifier());
}

TEST(Reentrance, AKeyMayDieWhileTheNotifieesOfAMemberAreTold) {
  const auto source = configDirFactory("source");
  const auto target = configDirFactory("target");
  const auto first = listen<DirListener>(target);
  const auto second = listen<DirListener>(target);
  first->onCall = [&] { source->configDelAll(); };
  const ProfileKey& borrowed = source->configIs(bgp("a long name of its own"))->key();
  target->configIs(borrowed);
  EXPECT_EQ(second->names, (std::vector<String8>{"a long name of its own"}));
}

TEST(Reentrance, AKeyMayDieWhileTheNotifieesOfAnEntryAreTold) {
  const auto source = statusFactory("source");
  const auto target = statusFactory("target");
  const auto first = listen<UnitListener>(target);
  const auto second = listen<UnitListener>(target);
  first->onCall = [&] { source->groupDelAll(); };
  source->groupIs(Group::GroupKey(Group::groupTypeBgp, "a long name of its own"), true);
  const Group::GroupKey& borrowed = Status::GroupMap::IteratorConst(source->groupMap())->zelKey();
  target->groupIs(borrowed, true);
  EXPECT_EQ(second->names, (std::vector<String8>{"a long name of its own"}));
}

TEST(Reentrance, AnIteratorOfAnotherCollectionDeletesNothing) {
  const auto one = statusFactory("one");
  const auto other = statusFactory("other");
  one->historyIs(1.0, "one");
  other->historyIs(1.0, "other");
  other->groupIs(Group::GroupKey(), true);
  Status::HistoryMap::Iterator line(other->historyMap());
  Status::GroupMap::Iterator group(other->groupMap());
  EXPECT_EQ(one->historyDel(line), String8());
  EXPECT_FALSE(one->groupDel(group));
  EXPECT_EQ(one->history(1.0), String8("one"));
  EXPECT_EQ(other->history(1.0), String8("other"));
  EXPECT_EQ(other->groupMap().count(), 1U);
  EXPECT_EQ(one->historyMap().count(), 1U);
}

TEST(Reentrance, TurningWeakOnTheLastCountLetsGo) {
  const auto listener = Zel::makeObject<UnitListener>();
  listener->notifierIs(statusFactory("unit"));
  ASSERT_TRUE(listener->notifier());
  listener->isWeakReferenceIs(true);
  EXPECT_FALSE(listener->notifier());
  EXPECT_TRUE(listener->isWeakReference());

  const auto registered = listen<UnitListener>(statusFactory("unit"));
  registered->isWeakReferenceIs(true);
  EXPECT_FALSE(registered->notifier());
}

TEST(Reentrance, AWeakOneThatLeavesAtZeroReferencesGivesItsNotifierUp) {
  struct Leaving : UnitListener {
    void onZeroReferences() override {
      hasNotificationActiveIs(false);
      notifierIs(nullptr);
    }
  };
  auto unit = statusFactory("unit");
  const auto leaving = listen<Leaving>(unit);
  leaving->isWeakReferenceIs(true);
  unit = nullptr;
  EXPECT_FALSE(leaving->notifier());
}

TEST(Reentrance, TheTableTellsOfAnErasureThatANotifieeUndoes) {
  const auto unit = statusFactory("unit");
  const Group::GroupKey key(Group::groupTypeBgp, "a");
  unit->groupIs(key, true);
  const auto listener = listen<UnitListener>(unit);
  bool again = true;
  listener->onCall = [&] {
    if (std::exchange(again, false)) {
      unit->groupIs(key, true);
    }
  };
  const auto* const row = Status::zelTable().row(Status::Attr::group);
  EXPECT_TRUE(row->collection->erase(unit.ptr(), &key));
  EXPECT_EQ(listener->names.size(), 2U);
  EXPECT_FALSE(row->collection->erase(statusFactory("other").ptr(), &key));
}

TEST(Reentrance, ANotifieeMayWriteToWhatItHearsOf) {
  struct Follower : Status::Notifiee {
    void onState() override { notifier()->timeOfStateChangeIs(7.5); }
  };
  const auto unit = statusFactory("unit");
  const auto follower = listen<Follower>(unit);
  unit->stateIs(Unit::active);
  EXPECT_EQ(unit->timeOfStateChange(), 7.5);
}

} // namespace
