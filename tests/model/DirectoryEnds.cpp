#include "Directories.h"

#include <stdexcept>

namespace {

using namespace TestModel;

/// A directory of five members, held by one handle that a test lets go of.
template <class D>
struct DirectoryEnds : Directory<D> {
  DirectoryEnds() {
    this->fill(5);
    held = D::read(*this->dir, D::key(2));
  }

  void end() { this->dir = nullptr; }

  Ptr<typename D::Member> held;
};
TYPED_TEST_SUITE(DirectoryEnds, AllDirectories, DirectoryNames);

TYPED_TEST(DirectoryEnds, AMemberHeldElsewhereLivesOnWithoutAParent) {
  EXPECT_EQ(this->held->parent(), this->dir);
  this->end();
  EXPECT_FALSE(this->held->parent());
  EXPECT_EQ(this->held->parentAttrId(), 258);
  EXPECT_EQ(this->held->references(), 1U);
  EXPECT_TRUE(TypeParam::keyOf(*this->held) == TypeParam::key(2));
}

TYPED_TEST(DirectoryEnds, AnotherDirectoryMakesAMemberOfItsOwnForTheSameKey) {
  this->end();
  const auto other = TypeParam::make("other");
  const auto member = TypeParam::is(*other, TypeParam::key(2));
  EXPECT_NE(member.ptr(), this->held.ptr());
  EXPECT_FALSE(this->held->parent());
}

TYPED_TEST(DirectoryEnds, AWeakNotifieeHearsOfTheEndAndThenOfEachMember) {
  const auto listener = this->listener();
  listener->isWeakReferenceIs(true);
  Log expected{"zero"};
  const Log members = this->allHeard();
  expected.insert(expected.end(), members.begin(), members.end());
  this->end();
  EXPECT_EQ(this->log, expected);
  EXPECT_EQ(members.size(), 5U);
  EXPECT_FALSE(listener->notifier());
}

TYPED_TEST(DirectoryEnds, MembersAreGoneWithoutParentWhenAWeakNotifieeIsTold) {
  const auto listener = this->listener();
  listener->isWeakReferenceIs(true);
  unsigned told = 0;
  listener->onCall = [&] {
    const auto ending = listener->notifier();
    ASSERT_TRUE(ending);
    const unsigned left = TypeParam::map(*ending).count();
    EXPECT_EQ(left, 5 - told);
    const bool found = static_cast<bool>(TypeParam::read(*ending, TypeParam::key(2)));
    EXPECT_EQ(static_cast<bool>(this->held->parent()), found);
    ++told;
  };
  this->end();
  EXPECT_EQ(told, 6U);
  EXPECT_FALSE(this->held->parent());
}

TYPED_TEST(DirectoryEnds, ANotifieeThatLeavesAtTheEndHearsOfNoMember) {
  const auto listener = this->listener();
  listener->isWeakReferenceIs(true);
  listener->onCall = [&] { listener->notifierIs(nullptr); };
  this->end();
  EXPECT_EQ(this->log, Log({"zero"}));
  EXPECT_FALSE(listener->notifier());
  EXPECT_FALSE(this->held->parent());
}

TYPED_TEST(DirectoryEnds, ANotifieeThatHasGoneBeforeHearsNothing) {
  auto listener = this->listener();
  listener->isWeakReferenceIs(true);
  listener = nullptr;
  this->end();
  EXPECT_EQ(this->log, Log());
  EXPECT_FALSE(this->held->parent());
}

TYPED_TEST(DirectoryEnds, ACountedNotifieeKeepsTheDirectoryAndItsEndEndsIt) {
  auto listener = this->listener();
  this->end();
  EXPECT_EQ(this->log, Log());
  ASSERT_TRUE(this->held->parent());
  EXPECT_EQ(this->held->parent(), listener->notifier());
  listener = nullptr;
  EXPECT_EQ(this->log, Log());
  EXPECT_FALSE(this->held->parent());
}

TYPED_TEST(DirectoryEnds, ACountedNotifieeThatLetsGoHearsNothing) {
  const auto listener = this->listener();
  this->end();
  listener->notifierIs(nullptr);
  EXPECT_EQ(this->log, Log());
  EXPECT_FALSE(this->held->parent());
}

TYPED_TEST(DirectoryEnds, AWeakNotifieeHearsOfAnEndThatACountedOneBringsAbout) {
  auto counted = this->listener("counted ");
  const auto weak = this->listener("weak ");
  weak->isWeakReferenceIs(true);
  Log expected{"weak zero"};
  for (const std::string& member : this->allHeard()) {
    expected.push_back(joined("weak ", member));
  }
  this->end();
  EXPECT_EQ(this->log, Log());
  counted = nullptr;
  EXPECT_EQ(this->log, expected);
}

TYPED_TEST(DirectoryEnds, ANotifieeThatThrowsDoesNotStopTheEnd) {
  const auto first = this->listener("first ");
  const auto second = this->listener("second ");
  first->isWeakReferenceIs(true);
  second->isWeakReferenceIs(true);
  first->onCall = [] { throw std::runtime_error("refused"); };
  Log expected{"first zero", "first exception 5", "second zero"};
  for (const std::string& member : this->allHeard()) {
    expected.insert(expected.end(),
                    {joined("first ", member), "first exception 258", joined("second ", member)});
  }
  this->end();
  EXPECT_EQ(this->log, expected);
}

TYPED_TEST(DirectoryEnds, AMemberThatANotifieePutsInMeanwhileIsLeftWithoutAParentToo) {
  const auto listener = this->listener();
  listener->isWeakReferenceIs(true);
  std::vector<Ptr<typename TypeParam::Member>> added;
  bool nested = false;
  listener->onCall = [&] {
    if (nested || this->log.back() == "zero") {
      return;
    }
    nested = true;
    auto& ending = *listener->notifier();
    const int number = 100 + static_cast<int>(added.size());
    added.push_back(TypeParam::is(ending, TypeParam::key(added.size() < 20 ? number : 119)));
    nested = false;
  };
  this->end();
  ASSERT_GE(added.size(), 5U);
  for (const auto& member : added) {
    EXPECT_FALSE(member->parent());
  }
}

TYPED_TEST(DirectoryEnds, NothingIsLeftBehind) {
  Zel::ptrifTrackOn_ = true;
  const std::size_t before = Zel::PtrTrack::count();
  {
    const auto made = TypeParam::make("other");
    for (int number = 0; number < 1000; ++number) {
      TypeParam::is(*made, TypeParam::key(number));
    }
    EXPECT_EQ(Zel::PtrTrack::count(), before + 1001);
    TypeParam::del(*made, TypeParam::key(500));
    EXPECT_EQ(Zel::PtrTrack::count(), before + 1000);
  }
  EXPECT_EQ(Zel::PtrTrack::count(), before);
  Zel::ptrifTrackOn_ = false;
}

} // namespace
