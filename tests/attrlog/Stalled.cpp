// A reader that stalls costs the writer a mark for each attribute and key that changes, and no
// more, however much changes. The program replaces the global allocator by one that counts what
// lives.

#include "Ear.h"
#include "Log.h"
#include "Pair.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

// What has been allocated and not freed.
std::ptrdiff_t livingObjects = 0;
std::ptrdiff_t livingBytes = 0;

} // namespace

void* operator new(std::size_t size) {
  void* const storage = std::malloc(size);
  if (storage == nullptr) {
    throw std::bad_alloc();
  }
  ++livingObjects;
  livingBytes += static_cast<std::ptrdiff_t>(malloc_usable_size(storage));
  return storage;
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* storage) noexcept {
  if (storage != nullptr) {
    --livingObjects;
    livingBytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(storage));
    std::free(storage);
  }
}
void operator delete[](void* storage) noexcept { operator delete(storage); }
void operator delete(void* storage, std::size_t /*size*/) noexcept { operator delete(storage); }
void operator delete[](void* storage, std::size_t /*size*/) noexcept { operator delete(storage); }

namespace {

using namespace Maintenance::Unit;
using Group::GroupKey;
using testing::UnorderedElementsAre;
using Zel::Ptr;
using Zel::String8;

struct Stalled : testing::Test {
  static constexpr std::size_t count = 1000;

  Stalled() {
    for (std::size_t i = 0; i < count; ++i) {
      units.push_back(Ptr<Status>(dir->statusIs(String8("unit" + std::to_string(i)))));
    }
    pair.here->demuxer()->exportIs(dir);
    pair.settle();
    mirrors = pair.mirror<StatusDir>("units");
    Wiretap::fill(*pair.here, 0);
    written = pair.here->out()->bytesWritten();
  }
  /// One change of each unit, the `round`th.
  void change(unsigned round) {
    for (const Ptr<Status>& unit : units) {
      switch (round % 7) {
      case 0:
        unit->stateIs(round % 2 == 0 ? active : underMaintenance);
        break;
      case 1:
        unit->genIdIs(round + 1);
        break;
      case 2:
        unit->timeOfStateChangeIs(round + 1);
        break;
      case 3:
        unit->groupIs(peers, (round & 8) != 0);
        unit->groupIs(peers, (round & 8) == 0);
        break;
      case 4:
        unit->historyIs(7.0, round % 2 == 0 ? one : other);
        break;
      case 5:
        unit->profileNameIs(round % 2 == 0 ? one : other);
        break;
      default:
        unit->intfsViolatingTrafficThresholdIs(port, true);
        unit->intfsViolatingTrafficThresholdDel(port);
      }
    }
  }

  const GroupKey peers{Group::groupTypeBgp, "peers"};
  const Vexil::IntfId port{0x01010000, 3};
  const String8 one = "one text of some length";
  const String8 other = "another one of some length";
  Pair pair{0, Wiretap::rings(Zel::ConnectionLimits::smallestRing)};
  const Ptr<StatusDir> dir = statusDirFactory("units");
  std::vector<Ptr<Status>> units;
  Ptr<StatusDir> mirrors;
  std::uint64_t written = 0;
};

TEST_F(Stalled, ReadersCostNoMoreHoweverMuchChanges) {
  for (unsigned round = 0; round < 28; ++round) {
    change(round); // each attribute has been touched, and every entry is there
  }
  const std::ptrdiff_t objects = livingObjects;
  const std::ptrdiff_t bytes = livingBytes;
  unsigned round = 28;
  for (; round < 1036; ++round) {
    change(round);
  }
  EXPECT_EQ(livingObjects, objects);
  EXPECT_EQ(livingBytes, bytes);
  EXPECT_EQ(pair.here->out()->bytesWritten(), written);
  EXPECT_EQ(pair.here->out()->capacity(), Zel::ConnectionLimits::smallestRing);
  EXPECT_EQ(pair.here->demuxer()->scheduled(), count);

  // The reader resumes: each attribute once, with the newest value, and nothing else.
  std::vector<Ptr<Wiretap::Ear>> ears;
  for (const Ptr<Status>& unit : units) {
    ears.push_back(Wiretap::listen<Wiretap::Ear>(mirrors->status(unit->name())));
  }
  const std::uint64_t records = pair.here->out()->recordsWritten();
  pair.settle();
  EXPECT_EQ(pair.here->out()->recordsWritten(), records + 7 * count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto mirror = mirrors->status(units[i]->name());
    ASSERT_THAT(ears[i]->heard, UnorderedElementsAre("state", "genId", "timeOfStateChange",
                                                     "group peers", "history 7", "profileName"))
        << i; // and a deletion of what was never there
    ASSERT_EQ(mirror->state(), units[i]->state());
    ASSERT_EQ(mirror->genId(), units[i]->genId());
    ASSERT_EQ(mirror->timeOfStateChange(), units[i]->timeOfStateChange());
    ASSERT_EQ(mirror->group(peers), units[i]->group(peers));
    ASSERT_EQ(mirror->history(7.0), units[i]->history(7.0));
    ASSERT_EQ(mirror->profileName(), units[i]->profileName());
    ASSERT_EQ(mirror->intfsViolatingTrafficThresholdMap().count(), 0U);
  }
  EXPECT_EQ(pair.here->demuxer()->scheduled() + pair.here->demuxer()->parked(), 0U);
  EXPECT_EQ(pair.here->out()->capacity(), Zel::ConnectionLimits::smallestRing);
}

TEST_F(Stalled, AMarkIsFreedWhenItHasBeenWorkedOff) {
  change(0);
  pair.settle();
  change(7);
  pair.settle();
  const std::ptrdiff_t objects = livingObjects;
  const std::ptrdiff_t bytes = livingBytes;
  Wiretap::fill(*pair.here, 0);
  change(14);
  EXPECT_EQ(livingObjects, objects + static_cast<std::ptrdiff_t>(count)); // a FlowOut each
  EXPECT_LE(livingBytes - bytes, 400 * static_cast<std::ptrdiff_t>(count));
  pair.settle();
  EXPECT_EQ(livingObjects, objects);
  EXPECT_EQ(livingBytes, bytes);
}

TEST_F(Stalled, ATransferPinsOneTextAndItsSuccessorsNone) {
  const Ptr<Status> unit = units[0];
  const auto text = [](char of) { return String8(std::string(1000000, of)); };
  unit->profileNameIs(text('a'));
  const std::ptrdiff_t bytes = livingBytes;
  for (int i = 0; i < 100; ++i) {
    unit->profileNameIs(text(static_cast<char>('b' + i % 20)));
    ASSERT_LT(livingBytes, bytes + 10000) << i; // the one that is the newest
  }
  pair.settle();
  EXPECT_TRUE(mirrors->status(unit->name())->profileName() == unit->profileName());
}

TEST_F(Stalled, MembersThatComeAndGoCostNothing) {
  dir->statusIs("guest");
  dir->statusDel("guest");
  const std::ptrdiff_t objects = livingObjects;
  for (int i = 0; i < 10000; ++i) {
    dir->statusIs("guest")->stateIs(active);
    dir->statusDel("guest");
  }
  EXPECT_EQ(livingObjects, objects);
  const std::uint64_t records = pair.here->out()->recordsWritten();
  pair.settle();
  EXPECT_EQ(pair.here->out()->recordsWritten(), records + 1);
  EXPECT_FALSE(mirrors->status("guest"));
  EXPECT_EQ(mirrors->statusMap().count(), count);
}

} // namespace
