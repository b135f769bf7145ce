#include "Listeners.h"

#include "support/Failure.h"
#include "support/OneAtATime.h"

#include <algorithm>
#include <random>
#include <stdexcept>

namespace {

using namespace TestModel;
using Maintenance::Unit::Status;

// The two collections of true and false under common names.

struct Groups {
  using Key = Group::GroupKey;
  using Map = Status::GroupMap;
  static constexpr Zel::AttributeId id = 260;
  static constexpr char const* attribute = "group";
  static constexpr char const* callback = "onGroup ";

  static Key key(int number) {
    return Key(Group::groupTypeBgp, Zel::String8(std::to_string(number)));
  }
  static Map const& map(Status const& unit) { return unit.groupMap(); }
  static bool read(Status const& unit, Key const& key) { return unit.group(key); }
  static void is(Status& unit, Key const& key, bool value) { unit.groupIs(key, value); }
  static bool del(Status& unit, Key const& key) { return unit.groupDel(key); }
  static bool del(Status& unit, Map::Iterator& at) { return unit.groupDel(at); }
  static void delAll(Status& unit) { unit.groupDelAll(); }
  static auto add(Status& unit, Key const& key, bool value) { return unit.newGroup(key, value); }
  static void notify(Status& unit, Key const& key) { unit.groupNotify(key); }
};

struct Interfaces {
  using Key = Vexil::IntfId;
  using Map = Status::IntfsViolatingTrafficThresholdMap;
  static constexpr Zel::AttributeId id = 272;
  static constexpr char const* attribute = "intfsViolatingTrafficThreshold";
  static constexpr char const* callback = "onIntfsViolatingTrafficThreshold ";

  static Key key(int number) { return Key(0x01010000, static_cast<unsigned>(number)); }
  static Map const& map(Status const& unit) { return unit.intfsViolatingTrafficThresholdMap(); }
  static bool read(Status const& unit, Key key) { return unit.intfsViolatingTrafficThreshold(key); }
  static void is(Status& unit, Key key, bool value) {
    unit.intfsViolatingTrafficThresholdIs(key, value);
  }
  static bool del(Status& unit, Key key) { return unit.intfsViolatingTrafficThresholdDel(key); }
  static bool del(Status& unit, Map::Iterator& at) {
    return unit.intfsViolatingTrafficThresholdDel(at);
  }
  static void delAll(Status& unit) { unit.intfsViolatingTrafficThresholdDelAll(); }
  static auto add(Status& unit, Key key, bool value) {
    return unit.newIntfsViolatingTrafficThreshold(key, value);
  }
  static void notify(Status& unit, Key key) { unit.intfsViolatingTrafficThresholdNotify(key); }
};

struct Names {
  template <class C>
  static std::string GetName(int /*index*/) {
    return C::attribute;
  }
};

template <class C>
struct UnitSets : testing::Test {
  static std::string heard(int number) { return joined(C::callback, textOf(C::key(number))); }

  Ptr<StatusListener> listener(std::string label = "") {
    return listen<StatusListener>(unit, log, std::move(label));
  }
  void is(int number, bool value) { C::is(*unit, C::key(number), value); }
  bool del(int number) { return C::del(*unit, C::key(number)); }
  bool read(int number) { return C::read(*unit, C::key(number)); }
  typename C::Map const& map() { return C::map(*unit); }

  /// What a notifiee hears when all keys go, in the order of iteration.
  Log allHeard() {
    Log all;
    for (typename C::Map::IteratorConst at(map()); at; at.advance()) {
      all.push_back(joined(C::callback, textOf(at->zelKey())));
    }
    return all;
  }

  Ptr<Status> const unit = Maintenance::Unit::statusFactory("unit");
  Log log;
};
using BothSets = testing::Types<Groups, Interfaces>;
TYPED_TEST_SUITE(UnitSets, BothSets, Names);

TYPED_TEST(UnitSets, AMissingKeyReadsFalseAndMovesTheReadCounterByOne) {
  expectMoves(*this->unit, 0, 1, [&] { EXPECT_FALSE(this->read(1)); });
  this->is(1, true);
  expectMoves(*this->unit, 0, 1, [&] { EXPECT_TRUE(this->read(1)); });
}

TYPED_TEST(UnitSets, ANewKeyIsCountedAndToldWhateverItHolds) {
  auto const listener = this->listener();
  expectMoves(*this->unit, 1, 0, [&] { this->is(1, true); });
  expectMoves(*this->unit, 1, 0, [&] { this->is(2, false); });
  EXPECT_EQ(this->log, Log({this->heard(1), this->heard(2)}));
  EXPECT_TRUE(this->read(1));
  EXPECT_FALSE(this->read(2));
  EXPECT_EQ(this->map().count(), 2U);
  EXPECT_NE(this->map()[TypeParam::key(2)], nullptr);
}

TYPED_TEST(UnitSets, AnEqualValueIsSilent) {
  this->is(1, true);
  this->is(2, false);
  auto const listener = this->listener();
  expectMoves(*this->unit, 0, 0, [&] {
    this->is(1, true);
    this->is(2, false);
  });
  EXPECT_EQ(this->log, Log());
}

TYPED_TEST(UnitSets, AnotherValueIsWrittenIntoTheSameEntry) {
  this->is(1, true);
  auto const* const entry = this->map()[TypeParam::key(1)];
  unsigned const mapVersion = this->map().mapVersion();
  auto const listener = this->listener();
  expectMoves(*this->unit, 1, 0, [&] { this->is(1, false); });
  EXPECT_EQ(this->log, Log({this->heard(1)}));
  EXPECT_EQ(this->map()[TypeParam::key(1)], entry);
  EXPECT_EQ(this->map().mapVersion(), mapVersion);
  EXPECT_FALSE(this->read(1));
}

TYPED_TEST(UnitSets, ADeletionYieldsWhatWasHeld) {
  this->is(1, true);
  this->is(2, false);
  auto const listener = this->listener();
  expectMoves(*this->unit, 1, 0, [&] { EXPECT_TRUE(this->del(1)); });
  expectMoves(*this->unit, 1, 0, [&] { EXPECT_FALSE(this->del(2)); });
  EXPECT_EQ(this->log, Log({this->heard(1), this->heard(2)}));
  EXPECT_EQ(this->map().count(), 0U);
}

TYPED_TEST(UnitSets, DeletingAMissingKeyDoesNothing) {
  this->is(1, true);
  auto const listener = this->listener();
  expectMoves(*this->unit, 0, 0, [&] { EXPECT_FALSE(this->del(2)); });
  EXPECT_EQ(this->log, Log());
}

TYPED_TEST(UnitSets, NotifieesFindTheChangeDoneAndCounted) {
  auto const listener = this->listener();
  std::vector<std::pair<unsigned, bool>> found;
  listener->onCall = [&] {
    found.emplace_back(this->unit->versionCounter(), this->map()[TypeParam::key(1)] != nullptr);
  };
  this->is(1, false);
  this->is(1, true);
  this->del(1);
  EXPECT_EQ(found, (std::vector<std::pair<unsigned, bool>>{{1, true}, {2, true}, {3, false}}));
}

TYPED_TEST(UnitSets, TheBareInsertionIsNeitherCountedNorTold) {
  auto const listener = this->listener();
  expectMoves(*this->unit, 0, 0, [&] {
    auto const entry = TypeParam::add(*this->unit, TypeParam::key(1), true);
    ASSERT_TRUE(entry);
    EXPECT_TRUE(entry->zelKey() == TypeParam::key(1));
    EXPECT_TRUE(entry->zelValue());
    EXPECT_EQ(entry->references(), 2U);
  });
  EXPECT_EQ(this->log, Log());
  EXPECT_TRUE(this->read(1));
}

TYPED_TEST(UnitSets, TheBareInsertionOfAKeyThatIsThereChangesNothing) {
  this->is(1, false);
  auto const listener = this->listener();
  unsigned const mapVersion = this->map().mapVersion();
  expectMoves(*this->unit, 0, 0, [&] {
    EXPECT_EQ(Support::messageOf<Zel::NameInUseException>(
                  [&] { TypeParam::add(*this->unit, TypeParam::key(1), true); }),
              "key is in the collection already");
  });
  EXPECT_FALSE(this->read(1));
  EXPECT_EQ(this->map().count(), 1U);
  EXPECT_EQ(this->map().mapVersion(), mapVersion);
  EXPECT_EQ(this->log, Log());
}

TYPED_TEST(UnitSets, DeletingUnderTheIteratorYieldsWhatWasHeldAndGoesOn) {
  for (int number = 0; number < 20; ++number) {
    this->is(number, number % 2 == 0);
  }
  auto const listener = this->listener();
  Log const all = this->allHeard();
  Counters const counters(*this->unit);
  for (typename TypeParam::Map::Iterator at(this->map()); at; at.advance()) {
    auto const entry = at.ptr();
    EXPECT_EQ(TypeParam::del(*this->unit, at), entry->zelValue());
    EXPECT_EQ(at.ptr(), entry) << "the iterator stays";
  }
  EXPECT_EQ(this->log, all);
  EXPECT_EQ(counters.changes(), 20U);
}

TYPED_TEST(UnitSets, NothingIsDeletedAtTheEndNorTwiceAtOnePlace) {
  this->is(1, true);
  typename TypeParam::Map::Iterator at(this->map());
  EXPECT_TRUE(TypeParam::del(*this->unit, at));
  auto const listener = this->listener();
  expectMoves(*this->unit, 0, 0, [&] { EXPECT_FALSE(TypeParam::del(*this->unit, at)); });
  typename TypeParam::Map::Iterator end;
  expectMoves(*this->unit, 0, 0, [&] { EXPECT_FALSE(TypeParam::del(*this->unit, end)); });
  EXPECT_EQ(this->log, Log());
}

TYPED_TEST(UnitSets, DeletingAllTellsOfEachKeyInTheOrderOfIteration) {
  for (int number = 0; number < 20; ++number) {
    this->is(number, false);
  }
  auto const listener = this->listener();
  Log const all = this->allHeard();
  EXPECT_EQ(all.size(), 20U);
  expectMoves(*this->unit, 20, 0, [&] { TypeParam::delAll(*this->unit); });
  EXPECT_EQ(this->log, all);
  expectMoves(*this->unit, 0, 0, [&] { TypeParam::delAll(*this->unit); });
  EXPECT_EQ(this->log, all);
}

TYPED_TEST(UnitSets, ANotifieeThatDeletesTheNextKeyMeanwhileTellsOfItOnce) {
  for (int number = 0; number < 20; ++number) {
    this->is(number, true);
  }
  auto const listener = this->listener();
  Log const all = this->allHeard();
  bool nested = false;
  listener->onCall = [&] {
    typename TypeParam::Map::Iterator first(this->map());
    if (!nested && first) {
      nested = true;
      TypeParam::del(*this->unit, first);
      nested = false;
    }
  };
  expectMoves(*this->unit, 20, 0, [&] { TypeParam::delAll(*this->unit); });
  EXPECT_EQ(this->log, all);
}

TYPED_TEST(UnitSets, ANotifieeMayDeleteTheKeyThatIsBeingTold) {
  auto const first = this->listener("first ");
  auto const second = this->listener("second ");
  first->onCall = [&] {
    first->onCall = nullptr;
    EXPECT_TRUE(this->del(1));
  };
  expectMoves(*this->unit, 2, 0, [&] { this->is(1, true); });
  EXPECT_EQ(this->log, Log({joined("first ", this->heard(1)), joined("first ", this->heard(1)),
                            joined("second ", this->heard(1)), joined("second ", this->heard(1))}));
  EXPECT_EQ(this->map().count(), 0U);
}

TYPED_TEST(UnitSets, ANotificationIsSentWithoutAnyChange) {
  auto const listener = this->listener();
  expectMoves(*this->unit, 0, 0, [&] { TypeParam::notify(*this->unit, TypeParam::key(1)); });
  EXPECT_EQ(this->log, Log({this->heard(1)}));
}

TYPED_TEST(UnitSets, ANotifieeThatThrowsIsToldTheIdAndTheNextIsCalled) {
  auto const first = this->listener("first ");
  auto const second = this->listener("second ");
  first->onCall = [] { throw std::runtime_error("refused"); };
  this->is(1, true);
  EXPECT_EQ(this->log, Log({joined("first ", this->heard(1)),
                            joined("first exception ", std::to_string(TypeParam::id)),
                            joined("second ", this->heard(1))}));
  EXPECT_TRUE(this->read(1));
}

TYPED_TEST(UnitSets, RunByReversedHashWhateverTheHistory) {
  std::mt19937_64 random(25);
  std::vector<int> numbers(100);
  for (std::size_t at = 0; at < numbers.size(); ++at) {
    numbers[at] = static_cast<int>(at);
  }
  std::shuffle(numbers.begin(), numbers.end(), random);
  std::vector<std::pair<unsigned, std::string>> sorted;
  for (int const number : numbers) {
    this->is(number, true);
    sorted.emplace_back(Support::reversed(TypeParam::key(number).hash()), this->heard(number));
  }
  std::sort(sorted.begin(), sorted.end());
  Log expected;
  for (auto const& [hash, text] : sorted) {
    expected.push_back(text);
  }
  EXPECT_EQ(this->allHeard(), expected);
}

} // namespace
