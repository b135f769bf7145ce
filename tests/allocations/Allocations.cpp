// What must not allocate does not: the program replaces the global allocator by a counting one.

#include <Zel/Notification>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;

void* counted(std::size_t size) {
  ++allocations;
  if (void* const storage = std::malloc(size)) {
    return storage;
  }
  throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) { return counted(size); }
void* operator new[](std::size_t size) { return counted(size); }
void operator delete(void* storage) noexcept { std::free(storage); }
void operator delete[](void* storage) noexcept { std::free(storage); }
void operator delete(void* storage, std::size_t /*size*/) noexcept { std::free(storage); }
void operator delete[](void* storage, std::size_t /*size*/) noexcept { std::free(storage); }

namespace {

using namespace Maintenance;
using Zel::Ptr;

/// Number of allocations that `work` makes.
template <class Work>
std::size_t allocationsOf(Work&& work) {
  const std::size_t before = allocations;
  work();
  return allocations - before;
}

struct Listener : Unit::Status::Notifiee {
  void onState() override { ++calls; }
  void onGroup(const Group::GroupKey& /*key*/) override { ++calls; }
  int calls = 0;
};

struct Allocations : testing::Test {
  void listen(std::size_t count) {
    while (listeners.size() < count) {
      listeners.push_back(Zel::makeObject<Listener>());
      listeners.back()->isRegisteredNotifieeIs(true);
      listeners.back()->notifierIs(unit);
    }
  }

  const Ptr<Unit::Status> unit = Unit::statusFactory("unit");
  std::vector<Ptr<Listener>> listeners;
};

TEST_F(Allocations, TheCounterCounts) {
  EXPECT_EQ(allocationsOf([] { Zel::makeObject<Listener>(); }), 1U);
  EXPECT_EQ(allocationsOf([] { Unit::statusFactory("other"); }), 2U);
}

TEST_F(Allocations, CopyingAHandleMakesNone) {
  EXPECT_EQ(allocationsOf([&] {
              const Ptr<Unit::Status> copy = unit;
              const Zel::Name name = unit->name();
            }),
            0U);
}

TEST_F(Allocations, AMutatorWithoutNotifieesMakesNone) {
  const Zel::String8 text = "a text that was made before";
  EXPECT_EQ(allocationsOf([&] {
              unit->stateIs(Unit::active);
              unit->stateIs(Unit::active);
              unit->profileNameIs(text);
              unit->aggTrafficRateIs(Unit::TrafficRates());
              unit->timeOfStateChangeIs(5.0);
              unit->genIdInc(3);
            }),
            0U);
  EXPECT_EQ(unit->versionCounter(), 3U);
}

TEST_F(Allocations, NotifyingUpToEightMakesNone) {
  for (std::size_t count = 1; count <= 8; ++count) {
    listen(count);
    EXPECT_EQ(allocationsOf([&] {
                unit->stateIs(unit->state() == Unit::active ? Unit::init : Unit::active);
                unit->groupNotify(Group::GroupKey());
              }),
              0U)
        << count;
    EXPECT_EQ(listeners.front()->calls, 2 * static_cast<int>(count));
  }
}

TEST_F(Allocations, NotifyingNineMakesOne) {
  listen(9);
  EXPECT_EQ(allocationsOf([&] { unit->stateIs(Unit::active); }), 1U);
}

TEST_F(Allocations, LookingUpAndIteratingMakesNone) {
  const auto profiles = Profile::configDirFactory("profiles");
  for (int i = 0; i < 100; ++i) {
    profiles->configIs(
        Profile::ProfileKey(Profile::profileTypeBgp, Zel::String8(std::to_string(i))));
    unit->historyIs(i, "line");
  }
  const Profile::ProfileKey key(Profile::profileTypeBgp, "50");
  const Profile::ProfileKey missing(Profile::profileTypeBgp, "nobody");
  int seen = 0;
  EXPECT_EQ(allocationsOf([&] {
              seen += profiles->config(key) ? 1 : 0;
              seen += profiles->config(missing) ? 1 : 0;
              seen += unit->history(50.0).empty() ? 0 : 1;
              profiles->configIs(key);
              for (Profile::ConfigDir::ConfigMap::IteratorConst at(profiles->configMap()); at;
                   at.advance()) {
                ++seen;
              }
              for (Unit::Status::HistoryMap::IteratorConst at(unit->historyMap()); at;
                   at.advance()) {
                ++seen;
              }
            }),
            0U);
  EXPECT_EQ(seen, 202);
}

TEST_F(Allocations, AMemberCostsOneAndItsRemovalNone) {
  const auto profiles = Profile::configDirFactory("profiles");
  const Profile::ProfileKey first(Profile::profileTypeBgp, "first");
  const Profile::ProfileKey key(Profile::profileTypeBgp, "key");
  profiles->configIs(first); // makes the table
  EXPECT_EQ(allocationsOf([&] { profiles->configIs(key); }), 1U);
  EXPECT_EQ(allocationsOf([&] { profiles->configDel(key); }), 0U);
  EXPECT_EQ(allocationsOf([&] { unit->historyIs(1.0, "short"); }), 2U);
  EXPECT_EQ(allocationsOf([&] { unit->historyDel(1.0); }), 0U);
}

} // namespace
