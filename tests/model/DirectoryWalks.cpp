#include "Directories.h"

#include "support/OneAtATime.h"

#include <algorithm>
#include <random>
#include <set>

namespace {

using namespace TestModel;

template <class D>
using DirectoryWalks = Directory<D>;
TYPED_TEST_SUITE(DirectoryWalks, AllDirectories, DirectoryNames);

TYPED_TEST(DirectoryWalks, RunByReversedHashWhateverTheHistory) {
  std::mt19937_64 random(22);
  std::vector<int> numbers(200);
  for (int number = 0; number < 200; ++number) {
    numbers[static_cast<std::size_t>(number)] = number;
  }
  std::shuffle(numbers.begin(), numbers.end(), random);
  for (const int number : numbers) {
    TypeParam::is(*this->dir, TypeParam::key(number));
  }
  for (int number = 0; number < 200; number += 3) {
    TypeParam::del(*this->dir, TypeParam::key(number));
  }

  std::vector<std::pair<unsigned, std::string>> expected;
  for (int number = 0; number < 200; ++number) {
    if (number % 3 != 0) {
      const auto key = TypeParam::key(number);
      expected.emplace_back(Support::reversed(key.hash()), joined("on ", textOf(key)));
    }
  }
  std::sort(expected.begin(), expected.end());
  Log order;
  for (const auto& [hash, text] : expected) {
    order.push_back(text);
  }
  EXPECT_EQ(this->allHeard(), order);
}

TYPED_TEST(DirectoryWalks, DeletingUnderTheIteratorGoesOnToTheNext) {
  this->fill(20);
  const auto listener = this->listener();
  const Log all = this->allHeard();
  const Counters counters(*this->dir);
  typename TypeParam::Map::Iterator at(TypeParam::map(*this->dir));
  for (; at; at.advance()) {
    const auto member = at.ptr();
    EXPECT_EQ(TypeParam::del(*this->dir, at), member);
    EXPECT_EQ(at.ptr(), member) << "the iterator stays";
    EXPECT_FALSE(member->parent());
  }
  EXPECT_EQ(this->log, all);
  EXPECT_EQ(counters.changes(), 20U);
  EXPECT_EQ(TypeParam::map(*this->dir).count(), 0U);
}

TYPED_TEST(DirectoryWalks, NothingIsDeletedAtTheEndNorTwiceAtOnePlace) {
  this->fill(3);
  typename TypeParam::Map::Iterator at(TypeParam::map(*this->dir));
  EXPECT_TRUE(TypeParam::del(*this->dir, at));
  const auto listener = this->listener();
  expectMoves(*this->dir, 0, 0, [&] { EXPECT_FALSE(TypeParam::del(*this->dir, at)); });
  typename TypeParam::Map::Iterator end;
  expectMoves(*this->dir, 0, 0, [&] { EXPECT_FALSE(TypeParam::del(*this->dir, end)); });
  EXPECT_EQ(this->log, Log());
  EXPECT_EQ(TypeParam::map(*this->dir).count(), 2U);
}

TYPED_TEST(DirectoryWalks, AMemberDeletedByHandIsWalkedOver) {
  this->fill(20);
  const Log all = this->allHeard();
  Log walked;
  typename TypeParam::Map::Iterator at(TypeParam::map(*this->dir));
  for (; at; at.advance()) {
    walked.push_back(joined("on ", textOf(TypeParam::keyOf(*at))));
    TypeParam::del(*this->dir, TypeParam::keyOf(*at));
  }
  EXPECT_EQ(walked, all);
}

TYPED_TEST(DirectoryWalks, DeletingAllTellsOfEachKeyInTheOrderOfIteration) {
  this->fill(20);
  const auto listener = this->listener();
  const Log all = this->allHeard();
  expectMoves(*this->dir, 20, 0, [&] { TypeParam::delAll(*this->dir); });
  EXPECT_EQ(this->log, all);
  EXPECT_EQ(all.size(), 20U);
  EXPECT_EQ(TypeParam::map(*this->dir).count(), 0U);
}

TYPED_TEST(DirectoryWalks, DeletingAllOfNothingDoesNothing) {
  const auto listener = this->listener();
  expectMoves(*this->dir, 0, 0, [&] { TypeParam::delAll(*this->dir); });
  EXPECT_EQ(this->log, Log());
}

TYPED_TEST(DirectoryWalks, AMemberHeldElsewhereOutlivesTheDeletionOfAllWithoutAParent) {
  this->fill(5);
  const auto held = TypeParam::read(*this->dir, TypeParam::key(3));
  TypeParam::delAll(*this->dir);
  EXPECT_FALSE(held->parent());
  EXPECT_EQ(held->references(), 1U);
  EXPECT_TRUE(TypeParam::keyOf(*held) == TypeParam::key(3));
}

TYPED_TEST(DirectoryWalks, ANotifieeThatDeletesTheNextKeyMeanwhileTellsOfItOnce) {
  this->fill(20);
  const auto listener = this->listener();
  const Log all = this->allHeard();
  bool nested = false;
  listener->onCall = [&] {
    typename TypeParam::Map::Iterator first(TypeParam::map(*this->dir));
    if (!nested && first) {
      nested = true;
      TypeParam::del(*this->dir, first);
      nested = false;
    }
  };
  expectMoves(*this->dir, 20, 0, [&] { TypeParam::delAll(*this->dir); });
  EXPECT_EQ(this->log, all);
}

TYPED_TEST(DirectoryWalks, ANotifieeThatDeletesAllMeanwhileTellsOfEachKeyOnce) {
  this->fill(20);
  const auto listener = this->listener();
  const Log all = this->allHeard();
  listener->onCall = [&] { TypeParam::delAll(*this->dir); };
  TypeParam::delAll(*this->dir);
  EXPECT_EQ(this->log, all);
}

TEST(Profiles, ThatDifferOnlyInTheirTypeAreDifferent) {
  using namespace Maintenance::Profile;
  const auto dir = configDirFactory("profiles");
  std::set<Config*> members;
  for (unsigned type = 0; type < 4; ++type) {
    members.insert(dir->configIs(ProfileKey(ProfileTypeInstance(type), "same")).ptr());
  }
  EXPECT_EQ(members.size(), 4U);
  EXPECT_EQ(dir->configMap().count(), 4U);
  EXPECT_EQ(dir->versionCounter(), 4U);
  dir->configDel(ProfileKey(profileTypeBgp, "same"));
  EXPECT_FALSE(dir->config(ProfileKey(profileTypeBgp, "same")));
  EXPECT_TRUE(dir->config(ProfileKey(profileTypeInterface, "same")));
}

TEST(Units, AreKeyedByTheNameOfTheirStatusWhichMayBeAnyText) {
  const auto dir = Maintenance::Unit::statusDirFactory("units");
  for (const Zel::Name& name : {Zel::Name(""), Zel::Name("System"), Zel::Name("a/b%"),
                                Zel::Name(std::string_view("a\0b", 3)), Zel::Name("a")}) {
    const auto status = dir->statusIs(name);
    EXPECT_EQ(status->name(), name);
    EXPECT_EQ(status->unitName(), name);
    EXPECT_EQ(status, dir->status(name));
  }
  EXPECT_EQ(dir->statusMap().count(), 5U);
}

TEST(Profiles, AKeyThatLivesInTheMemberItselfIsGoodForItsDeletion) {
  using namespace Maintenance::Profile;
  const auto dir = configDirFactory("profiles");
  Log log;
  const auto listener = listen<ConfigDirListener>(dir, log);
  const ProfileKey& inside = dir->configIs(ProfileKey(profileTypeUnit, "inside"))->key();
  dir->configDel(inside);
  EXPECT_EQ(log, Log({"on 3:inside", "on 3:inside"}));
}

} // namespace
