#include <Zel/BitSet>
#include <Zel/Exception>
#include <Zel/HashMap>
#include <Zel/RbTreeMap>
#include <model/Profile.h>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

namespace {

using Maintenance::Profile::ConfigDir;
using Maintenance::Profile::configDirFactory;
using Maintenance::Profile::ProfileKey;
using Maintenance::Profile::ProfileType;
using Maintenance::Unit::Status;
using Maintenance::Unit::statusFactory;
using Zel::Ptr;
using Zel::String8;

ProfileKey bgp(const char* name) { return {Maintenance::Profile::profileTypeBgp, name}; }
Group::GroupKey group(const char* name) { return {Group::groupTypeBgp, name}; }

/// Hears the groups and the history of a unit.
struct Listener : Status::Notifiee {
  void onGroup(const Group::GroupKey& key) override {
    groups.push_back(key.name());
    if (const auto call = onCall) { // a copy: the call may replace it
      call(key);
    }
  }
  void onHistory(const double& time) override { times.push_back(time); }

  std::vector<String8> groups;
  std::vector<double> times;
  std::function<void(const Group::GroupKey&)> onCall;
};

struct KeyedCollections : testing::Test {
  KeyedCollections() {
    listener->isRegisteredNotifieeIs(true);
    listener->notifierIs(unit);
  }
  const Ptr<Status> unit = statusFactory("unit");
  const Ptr<Listener> listener = Zel::makeObject<Listener>();
};

TEST_F(KeyedCollections, AnEqualValueIsSilent) {
  unit->groupIs(group("a"), true);
  unit->groupIs(group("a"), true);
  EXPECT_EQ(unit->versionCounter(), 1U);
  EXPECT_EQ(listener->groups, (std::vector<String8>{"a"}));
  unit->groupIs(group("a"), false);
  EXPECT_EQ(unit->versionCounter(), 2U);
  EXPECT_EQ(unit->groupMap().mapVersion(), 1U);
}

TEST_F(KeyedCollections, DeletingAMissingKeyYieldsTheDefault) {
  EXPECT_FALSE(unit->groupDel(group("a")));
  EXPECT_EQ(unit->historyDel(1.0), String8());
  Status::GroupMap::Iterator end(unit->groupMap());
  EXPECT_FALSE(unit->groupDel(end));
  EXPECT_EQ(unit->versionCounter(), 0U);
  EXPECT_EQ(listener->groups.size() + listener->times.size(), 0U);
}

TEST_F(KeyedCollections, DeletionYieldsTheValueAndTellsOnce) {
  unit->groupIs(group("a"), true);
  listener->groups.clear();
  EXPECT_TRUE(unit->groupDel(group("a")));
  EXPECT_EQ(unit->versionCounter(), 2U);
  EXPECT_EQ(listener->groups, (std::vector<String8>{"a"}));
}

TEST_F(KeyedCollections, DeletingAllTellsEachKeyInIterationOrder) {
  std::vector<String8> order;
  for (const char* const name : {"a", "b", "c", "d", "e"}) {
    unit->groupIs(group(name), true);
  }
  for (Status::GroupMap::IteratorConst at(unit->groupMap()); at; at.advance()) {
    order.push_back(at->zelKey().name());
  }
  listener->groups.clear();
  const unsigned version = unit->versionCounter();
  unit->groupDelAll();
  EXPECT_EQ(listener->groups, order);
  EXPECT_EQ(unit->versionCounter(), version + 5);
  EXPECT_EQ(unit->groupMap().count(), 0U);
  unit->groupDelAll();
  EXPECT_EQ(unit->versionCounter(), version + 5);
}

TEST_F(KeyedCollections, ANotifieeMayDeleteTheNextKeyWhileAllAreDeleted) {
  std::vector<String8> order;
  for (const char* const name : {"a", "b", "c", "d", "e"}) {
    unit->groupIs(group(name), true);
  }
  for (Status::GroupMap::IteratorConst at(unit->groupMap()); at; at.advance()) {
    order.push_back(at->zelKey().name());
  }
  listener->groups.clear();
  listener->onCall = [&](const Group::GroupKey& key) {
    if (key.name() == order[1]) {
      listener->onCall = nullptr;
      unit->groupDel(Group::GroupKey(Group::groupTypeBgp, order[2]));
    }
  };
  unit->groupDelAll();
  EXPECT_EQ(listener->groups, order);
  EXPECT_EQ(unit->groupMap().count(), 0U);
}

TEST_F(KeyedCollections, ANotifieeMayDeleteTheEntryItIsToldOf) {
  listener->onCall = [&](const Group::GroupKey& key) {
    listener->onCall = nullptr;
    unit->groupDel(key);
  };
  unit->groupIs(group("a"), true);
  EXPECT_EQ(listener->groups, (std::vector<String8>{"a", "a"}));
  EXPECT_EQ(unit->groupMap().count(), 0U);
  EXPECT_EQ(unit->versionCounter(), 2U);
}

TEST_F(KeyedCollections, AMemberDeletedUnderAnIteratorGivesWayToTheNextInOrder) {
  for (const char* const name : {"a", "b", "c", "d", "e"}) {
    unit->groupIs(group(name), true);
  }
  std::vector<String8> order;
  for (Status::GroupMap::IteratorConst at(unit->groupMap()); at; at.advance()) {
    order.push_back(at->zelKey().name());
  }
  for (std::size_t victim = 0; victim < 5; ++victim) {
    Status::GroupMap::IteratorConst at(unit->groupMap(),
                                       Group::GroupKey(Group::groupTypeBgp, order[victim]));
    ASSERT_EQ(at->zelKey().name(), order[victim]);
    unit->groupDel(at->zelKey());
    EXPECT_EQ(at->zelKey().name(), order[victim]); // pinned
    at.advance();
    if (victim == 4) {
      EXPECT_FALSE(at);
    } else {
      EXPECT_EQ(at->zelKey().name(), order[victim + 1]);
    }
    unit->groupIs(Group::GroupKey(Group::groupTypeBgp, order[victim]), true);
  }
}

TEST_F(KeyedCollections, ADeletedMemberIsNotDeletedAgainThroughItsIterator) {
  unit->groupIs(group("a"), true);
  Status::GroupMap::Iterator at(unit->groupMap());
  EXPECT_TRUE(unit->groupDel(at));
  const unsigned version = unit->versionCounter();
  EXPECT_FALSE(unit->groupDel(at));
  unit->groupIs(group("a"), true);
  EXPECT_FALSE(unit->groupDel(at));
  EXPECT_TRUE(unit->group(group("a")));
  EXPECT_EQ(unit->versionCounter(), version + 1);
}

TEST_F(KeyedCollections, AnnouncingAKeyCountsNothing) {
  unit->groupNotify(group("z"));
  EXPECT_EQ(listener->groups, (std::vector<String8>{"z"}));
  EXPECT_EQ(unit->versionCounter(), 0U);
  EXPECT_EQ(unit->readCounter(), 0U);
}

TEST_F(KeyedCollections, MakingAnEntryByHandCountsAndTellsNothing) {
  const auto entry = unit->newGroup(group("a"), true);
  EXPECT_EQ(entry->references(), 2U);
  EXPECT_EQ(unit->versionCounter(), 0U);
  EXPECT_EQ(listener->groups.size(), 0U);
  EXPECT_THROW(unit->newGroup(group("a"), false), Zel::NameInUseException);
  EXPECT_TRUE(unit->group(group("a")));
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_EQ(unit->groupMap().mapVersion(), 1U);
}

TEST_F(KeyedCollections, ReadsCountWhetherTheKeyIsThereOrNot) {
  EXPECT_FALSE(unit->group(group("a")));
  EXPECT_EQ(unit->history(1.0), String8());
  EXPECT_EQ(unit->readCounter(), 2U);
}

TEST(InstantiatingCollections, ASecondInsertionCountsAndTellsNobody) {
  const auto profiles = configDirFactory("profiles");
  struct Silent : ConfigDir::Notifiee {
    void onConfig(const ProfileKey& /*key*/) override { ++calls; }
    int calls = 0;
  };
  const auto silent = Zel::makeObject<Silent>();
  silent->isRegisteredNotifieeIs(true);
  silent->notifierIs(profiles);
  const auto first = profiles->configIs(bgp("a"));
  const auto second = profiles->configIs(bgp("a"));
  EXPECT_EQ(first, second);
  EXPECT_EQ(profiles->versionCounter(), 2U);
  EXPECT_EQ(silent->calls, 1);
}

TEST(InstantiatingCollections, ADuplicateByHandChangesNothing) {
  const auto profiles = configDirFactory("profiles");
  const auto old = profiles->newConfig(bgp("a"));
  EXPECT_THROW(profiles->newConfig(bgp("a")), Zel::NameInUseException);
  EXPECT_EQ(profiles->config(bgp("a")), old);
  EXPECT_EQ(profiles->configMap().count(), 1U);
  EXPECT_EQ(profiles->configMap().mapVersion(), 1U);
  EXPECT_EQ(profiles->versionCounter(), 0U);
}

TEST(InstantiatingCollections, AMemberThatLeftPinsNothing) {
  const auto profiles = configDirFactory("profiles");
  std::vector<Ptr<Maintenance::Profile::Config>> all;
  for (int i = 0; i < 100; ++i) {
    all.push_back(profiles->newConfig(bgp(std::to_string(i).c_str())));
  }
  for (auto& config : all) {
    EXPECT_EQ(config->references(), 2U);
    profiles->configDel(config->key());
    EXPECT_EQ(config->references(), 1U);
  }
}

TEST(OrderedCollections, IterateInAscendingOrder) {
  const auto unit = statusFactory("unit");
  for (const double time : {2.0, 1.0, 3.0}) {
    unit->historyIs(time, "x");
  }
  std::vector<double> times;
  for (Status::HistoryMap::IteratorConst at(unit->historyMap()); at; at.advance()) {
    times.push_back(at->zelKey());
  }
  EXPECT_EQ(times, (std::vector<double>{1.0, 2.0, 3.0}));
}

TEST(OrderedCollections, AnIteratorStandsOnTheKeyOrTheNextGreater) {
  const auto unit = statusFactory("unit");
  for (const double time : {1.0, 2.0, 4.0}) {
    unit->historyIs(time, "x");
  }
  const auto at = [&](double key) {
    Status::HistoryMap::IteratorConst found(unit->historyMap(), key);
    return found ? found->zelKey() : -1.0;
  };
  EXPECT_EQ(at(2.0), 2.0);
  EXPECT_EQ(at(2.5), 4.0);
  EXPECT_EQ(at(0.0), 1.0);
  EXPECT_EQ(at(5.0), -1.0);
}

TEST(OrderedCollections, AnEntryByHandTakesThePlaceOfTheOld) {
  const auto unit = statusFactory("unit");
  unit->historyIs(1.0, "old");
  const unsigned version = unit->historyMap().treeVersion();
  const auto old = Status::HistoryMap::Iterator(unit->historyMap()).ptr();
  unit->newHistory(1.0, "new");
  EXPECT_EQ(unit->history(1.0), String8("new"));
  EXPECT_EQ(unit->historyMap().count(), 1U);
  EXPECT_EQ(unit->historyMap().treeVersion(), version + 1);
  EXPECT_EQ(old->references(), 1U);
  EXPECT_FALSE(Status::HistoryMap::isLinked(old.ptr()));
}

TEST(OrderedCollections, StartWithVersionOne) {
  const auto unit = statusFactory("unit");
  EXPECT_EQ(unit->historyMap().treeVersion(), 1U);
  unit->historyIs(1.0, "x");
  EXPECT_EQ(unit->historyMap().treeVersion(), 2U);
  unit->historyDel(1.0);
  EXPECT_EQ(unit->historyMap().treeVersion(), 3U);
}

TEST(OrderedCollections, AFinishedIteratorStaysAtTheEnd) {
  const auto unit = statusFactory("unit");
  unit->historyIs(1.0, "x");
  Status::HistoryMap::IteratorConst at(unit->historyMap());
  at.advance();
  unit->historyIs(2.0, "y");
  at.advance();
  EXPECT_FALSE(at);
}

TEST(OrderedCollections, NotANumberIsAddedButNeverFound) {
  const auto unit = statusFactory("unit");
  const double nan = std::numeric_limits<double>::quiet_NaN();
  unit->historyIs(nan, "a");
  unit->historyIs(nan, "b");
  unit->historyIs(1.0, "c");
  EXPECT_EQ(unit->historyMap().count(), 3U);
  EXPECT_EQ(unit->history(nan), String8());
  EXPECT_EQ(unit->historyDel(nan), String8());
  unit->historyDelAll();
  EXPECT_EQ(unit->historyMap().count(), 0U);
}

/// An entry keyed by an enumeration.
class ByType : public Zel::MapEntry<ByType, ProfileType, bool> {
  using MapEntry::MapEntry;
};

TEST(HashMaps, AnEnumerationIsSpreadByItsReversedNumber) {
  Zel::HashMap<ByType, ProfileType, bool> map;
  for (unsigned type = 0; type < 4; ++type) {
    EXPECT_EQ(Zel::indexHash(static_cast<ProfileType>(type)), Zel::bitReverse(type));
    const auto entry = Zel::makeObject<ByType>(static_cast<ProfileType>(type), true);
    map.newMemberG(entry, &entry->zelKey());
  }
  EXPECT_EQ(map.buckets(), 16U);
  std::vector<std::pair<int, int>> order;
  for (Zel::HashMap<ByType, ProfileType, bool>::IteratorConst at(map); at; at.advance()) {
    order.emplace_back(at->zelKey(), at.bucket());
  }
  EXPECT_EQ(order, (std::vector<std::pair<int, int>>{{0, 0}, {2, 4}, {1, 8}, {3, 12}}));
}

TEST(HashMaps, AllocateAtTheFirstInsertionAndDoubleWhenFull) {
  const auto profiles = configDirFactory("profiles");
  const auto& map = profiles->configMap();
  EXPECT_EQ(map.buckets(), 0U);
  for (int i = 0; i < 16; ++i) {
    profiles->configIs(bgp(std::to_string(i).c_str()));
  }
  EXPECT_EQ(map.buckets(), 16U);
  profiles->configIs(bgp("16"));
  EXPECT_EQ(map.buckets(), 32U);
  EXPECT_EQ(map.mapVersion(), 17U);
}

TEST(HashMaps, AnIteratorStartedAtAKeyStandsOnItAndOneBehindTheLastIsAtTheEnd) {
  const auto profiles = configDirFactory("profiles");
  ProfileKey last;
  for (int i = 0; i < 50; ++i) {
    profiles->configIs(bgp(std::to_string(i).c_str()));
  }
  for (ConfigDir::ConfigMap::IteratorConst at(profiles->configMap()); at; at.advance()) {
    last = at->key();
    EXPECT_EQ(ConfigDir::ConfigMap::IteratorConst(profiles->configMap(), last).ptr(), at.ptr());
  }
  profiles->configDel(last);
  const ConfigDir::ConfigMap::IteratorConst behind(profiles->configMap(), last);
  EXPECT_FALSE(behind);
  EXPECT_EQ(behind.version(), 0U);
  const auto empty = configDirFactory("empty");
  EXPECT_FALSE(ConfigDir::ConfigMap::IteratorConst(empty->configMap(), last));
  EXPECT_EQ(ConfigDir::ConfigMap::IteratorConst(empty->configMap()).bucket(), -1);
}

TEST(HashMaps, HaveOneVtableForEachTypeInTheProcess) {
  // The library's object, seen through a map that it made, is the one that this program gets.
  const Zel::HashMapVTableGeneric* const own = ConfigDir::ConfigMap::zelVTable();
  EXPECT_EQ(own, configDirFactory("profiles")->configMap().vtable());
  EXPECT_EQ(own, configDirFactory("others")->configMap().vtable());
  EXPECT_NE(own, statusFactory("unit")->groupMap().vtable());
}

TEST(BitSets, SetAndResetTheirPositions) {
  Zel::BitSet<29, unsigned> bits;
  bits.set(0);
  bits.set(28);
  EXPECT_EQ(bits.word(), 0x10000001U);
  EXPECT_TRUE(bits.test(28));
  bits.reset(28);
  EXPECT_EQ(bits.word(), 1U);
}

TEST(BitSetDeathTest, APositionOutsideFailsTheAssertion) {
  Zel::BitSet<29, unsigned> bits;
  EXPECT_DEATH(bits.set(29), "Zel/BitSet:37: assertion \"pos>=0 && pos<bits\" failed");
  EXPECT_DEATH(bits.set(-1), "Zel/BitSet:37: assertion \"pos>=0 && pos<bits\" failed");
  EXPECT_DEATH(bits.reset(29), "Zel/BitSet:.*assertion \"pos>=0 && pos<bits\" failed");
}

/// An iterator that knows its collection's base alone.
class Strep : public Zel::BaseCollection::StrepIterator {
public:
  Strep(const Zel::BaseCollection& collection, Zel::PtrInterface* current)
      : StrepIterator(&collection, current) {}
  Zel::PtrInterface* current() const { return current_; }
};

struct AnyCollection : Zel::BaseCollection {};

TEST(BaseCollection, AnIteratorHoldsACountOnItsMemberUntilItIsDropped) {
  const AnyCollection collection;
  const auto member = statusFactory("member");
  Strep at(collection, member.ptr());
  collection.iteratorSpaceCopy(at);
  EXPECT_EQ(member->references(), 2U);
  collection.iteratorDelete(at);
  EXPECT_EQ(member->references(), 1U);
  EXPECT_EQ(at.current(), nullptr);
  EXPECT_EQ(at.collection(), &collection);
  collection.iteratorSpaceCopy(at); // at the end
  collection.iteratorDelete(at);
  EXPECT_EQ(at.current(), nullptr);
}

} // namespace
