#include "Directories.h"

#include "support/Failure.h"

#include <stdexcept>

namespace {

using namespace TestModel;

template <class D>
using Directories = Directory<D>;
TYPED_TEST_SUITE(Directories, AllDirectories, DirectoryNames);

TYPED_TEST(Directories, TheFactoryMakesAnEmptyOneWithOneReferenceAndNothingElse) {
  auto& made = *this->dir;
  EXPECT_EQ(made.references(), 1U);
  EXPECT_EQ(made.name(), "directory");
  EXPECT_FALSE(made.parent());
  EXPECT_EQ(made.parentAttrId(), 0);
  EXPECT_EQ(made.versionCounter(), 0U);
  EXPECT_EQ(made.readCounter(), 0U);
  EXPECT_EQ(TypeParam::map(made).count(), 0U);
}

TYPED_TEST(Directories, AReadMovesTheReadCounterWhetherItHitsOrNot) {
  const auto k = TypeParam::key(1);
  expectMoves(*this->dir, 0, 1, [&] { EXPECT_FALSE(TypeParam::read(*this->dir, k)); });
  const auto member = TypeParam::is(*this->dir, k);
  expectMoves(*this->dir, 0, 1, [&] { EXPECT_EQ(member, TypeParam::read(*this->dir, k)); });
}

TYPED_TEST(Directories, ANewKeyIsCountedAndToldOnce) {
  const auto listener = this->listener();
  expectMoves(*this->dir, 1, 0, [&] {
    const auto member = TypeParam::is(*this->dir, TypeParam::key(1));
    EXPECT_TRUE(TypeParam::keyOf(*member) == TypeParam::key(1));
    EXPECT_EQ(member->parent(), this->dir);
    EXPECT_EQ(member->parentAttrId(), 258);
  });
  EXPECT_EQ(this->log, Log({this->heard(1)}));
  EXPECT_EQ(TypeParam::map(*this->dir).count(), 1U);
}

TYPED_TEST(Directories, AKeyThatIsThereIsCountedButNotTold) {
  const auto first = TypeParam::is(*this->dir, TypeParam::key(1));
  const auto listener = this->listener();
  const unsigned mapVersion = TypeParam::map(*this->dir).mapVersion();
  expectMoves(*this->dir, 1, 0,
              [&] { EXPECT_EQ(TypeParam::is(*this->dir, TypeParam::key(1)), first); });
  EXPECT_EQ(this->log, Log());
  EXPECT_EQ(TypeParam::map(*this->dir).mapVersion(), mapVersion);
}

TYPED_TEST(Directories, ANewMemberIsWholeWhenNotifieesAreTold) {
  const auto listener = this->listener();
  listener->onCall = [&] {
    const auto member = TypeParam::read(*this->dir, TypeParam::key(1));
    ASSERT_TRUE(member);
    EXPECT_EQ(member->parent(), this->dir);
    EXPECT_EQ(this->dir->versionCounter(), 1U);
  };
  TypeParam::is(*this->dir, TypeParam::key(1));
  EXPECT_EQ(this->log, Log({this->heard(1)}));
}

TYPED_TEST(Directories, AMemberThatANotifieeDeletesIsYieldedAllTheSame) {
  const auto listener = this->listener();
  listener->onCall = [&] {
    listener->onCall = nullptr;
    TypeParam::del(*this->dir, TypeParam::key(1));
  };
  const auto member = TypeParam::is(*this->dir, TypeParam::key(1));
  EXPECT_TRUE(TypeParam::keyOf(*member) == TypeParam::key(1));
  EXPECT_FALSE(member->parent());
  EXPECT_FALSE(TypeParam::read(*this->dir, TypeParam::key(1)));
  EXPECT_EQ(this->log, Log({this->heard(1), this->heard(1)}));
  EXPECT_EQ(this->dir->versionCounter(), 2U);
}

TYPED_TEST(Directories, AMemberMadeByTheBareOperationIsNeitherCountedNorTold) {
  const auto listener = this->listener();
  expectMoves(*this->dir, 0, 0, [&] {
    const auto member = TypeParam::add(*this->dir, TypeParam::key(1));
    ASSERT_TRUE(member);
    EXPECT_TRUE(TypeParam::keyOf(*member) == TypeParam::key(1));
    EXPECT_EQ(member->parent(), this->dir);
    EXPECT_EQ(member->parentAttrId(), 258);
    EXPECT_EQ(member->references(), 2U);
  });
  EXPECT_EQ(this->log, Log());
  EXPECT_EQ(TypeParam::map(*this->dir).count(), 1U);
}

TYPED_TEST(Directories, TheBareOperationOnAKeyThatIsThereChangesNothing) {
  const auto member = TypeParam::is(*this->dir, TypeParam::key(1));
  const auto listener = this->listener();
  const unsigned mapVersion = TypeParam::map(*this->dir).mapVersion();
  expectMoves(*this->dir, 0, 0, [&] {
    EXPECT_EQ(Support::messageOf<Zel::NameInUseException>(
                  [&] { TypeParam::add(*this->dir, TypeParam::key(1)); }),
              "key is in the collection already");
  });
  EXPECT_EQ(TypeParam::map(*this->dir).mapVersion(), mapVersion);
  EXPECT_EQ(TypeParam::map(*this->dir).count(), 1U);
  EXPECT_EQ(member, TypeParam::read(*this->dir, TypeParam::key(1)));
  EXPECT_EQ(member->parent(), this->dir);
  EXPECT_EQ(this->log, Log());
}

TYPED_TEST(Directories, TheMemberOfAFailedInsertionDies) {
  TypeParam::is(*this->dir, TypeParam::key(1));
  Zel::ptrifTrackOn_ = true;
  const std::size_t before = Zel::PtrTrack::count();
  EXPECT_THROW(TypeParam::add(*this->dir, TypeParam::key(1)), Zel::NameInUseException);
  EXPECT_EQ(Zel::PtrTrack::count(), before);
  Zel::ptrifTrackOn_ = false;
}

TYPED_TEST(Directories, ARemovedMemberHasNoParentAndIsNotFound) {
  const auto member = TypeParam::is(*this->dir, TypeParam::key(1));
  const auto listener = this->listener();
  expectMoves(*this->dir, 1, 0, [&] {
    EXPECT_EQ(TypeParam::del(*this->dir, TypeParam::key(1)).ptr(), member.ptr());
  });
  EXPECT_FALSE(member->parent());
  EXPECT_EQ(member->parentAttrId(), 258);
  EXPECT_FALSE(TypeParam::read(*this->dir, TypeParam::key(1)));
  EXPECT_EQ(this->log, Log({this->heard(1)}));
  EXPECT_EQ(TypeParam::map(*this->dir).count(), 0U);
}

TYPED_TEST(Directories, NotifieesFindTheMemberGoneWithoutParentAndCounted) {
  const auto member = TypeParam::is(*this->dir, TypeParam::key(1));
  const auto listener = this->listener();
  listener->onCall = [&] {
    EXPECT_FALSE(TypeParam::read(*this->dir, TypeParam::key(1)));
    EXPECT_FALSE(member->parent());
    EXPECT_EQ(this->dir->versionCounter(), 2U);
  };
  TypeParam::del(*this->dir, TypeParam::key(1));
  EXPECT_EQ(this->log, Log({this->heard(1)}));
}

TYPED_TEST(Directories, ADeletedMemberMayLiveInTheResultAlone) {
  TypeParam::is(*this->dir, TypeParam::key(1));
  const auto listener = this->listener();
  const auto gone = TypeParam::del(*this->dir, TypeParam::key(1));
  ASSERT_TRUE(gone);
  EXPECT_EQ(gone->references(), 1U);
  EXPECT_TRUE(TypeParam::keyOf(*gone) == TypeParam::key(1));
}

TYPED_TEST(Directories, DeletingAMissingKeyDoesNothing) {
  TypeParam::is(*this->dir, TypeParam::key(1));
  const auto listener = this->listener();
  const unsigned mapVersion = TypeParam::map(*this->dir).mapVersion();
  expectMoves(*this->dir, 0, 0,
              [&] { EXPECT_FALSE(TypeParam::del(*this->dir, TypeParam::key(2))); });
  EXPECT_EQ(this->log, Log());
  EXPECT_EQ(TypeParam::map(*this->dir).mapVersion(), mapVersion);
}

TYPED_TEST(Directories, AKeyComesBackAsAnotherMember) {
  const auto first = TypeParam::is(*this->dir, TypeParam::key(1));
  TypeParam::del(*this->dir, TypeParam::key(1));
  const auto second = TypeParam::is(*this->dir, TypeParam::key(1));
  EXPECT_NE(first.ptr(), second.ptr());
  EXPECT_FALSE(first->parent());
  EXPECT_EQ(second->parent(), this->dir);
}

TYPED_TEST(Directories, ANotificationIsSentWithoutAnyChange) {
  const auto listener = this->listener();
  expectMoves(*this->dir, 0, 0, [&] { TypeParam::notify(*this->dir, TypeParam::key(1)); });
  EXPECT_EQ(this->log, Log({this->heard(1)}));
}

TYPED_TEST(Directories, ANotifieeThatThrowsIsToldTheIdAndTheNextIsCalled) {
  const auto first = this->listener("first ");
  const auto second = this->listener("second ");
  first->onCall = [] { throw std::runtime_error("refused"); };
  TypeParam::is(*this->dir, TypeParam::key(1));
  TypeParam::del(*this->dir, TypeParam::key(1));
  const std::string told = joined("first ", this->heard(1));
  const std::string next = joined("second ", this->heard(1));
  EXPECT_EQ(this->log, Log({told, "first exception 258", next, told, "first exception 258", next}));
  EXPECT_EQ(this->dir->versionCounter(), 2U);
}

TYPED_TEST(Directories, AFailureThatANotifieeDoesNotSwallowLeavesTheMemberInPlace) {
  struct Stubborn : TypeParam::Listener {
    using TypeParam::Listener::Listener;
    void onNotificationException(Zel::AttributeId /*id*/) override { throw; }
  };
  const auto first = listen<Stubborn>(this->dir, this->log, "first ");
  const auto second = this->listener("second ");
  first->onCall = [] { throw std::runtime_error("refused"); };
  EXPECT_THROW(TypeParam::is(*this->dir, TypeParam::key(1)), std::runtime_error);
  EXPECT_EQ(this->log, Log({joined("first ", this->heard(1))}));
  EXPECT_EQ(this->dir->versionCounter(), 1U);
  EXPECT_TRUE(TypeParam::read(*this->dir, TypeParam::key(1)));
}

TYPED_TEST(Directories, TheyNameTheirAttributeAndAskTheirBaseForTheRest) {
  const auto& made = *this->dir;
  EXPECT_EQ(made.attributeString(258), TypeParam::attribute);
  EXPECT_EQ(made.attributeString(0), "fwkKey");
  EXPECT_EQ(made.attributeString(154), "zelHasAttrLogInterface");
  for (const int id : {-258, -1, 2, 257, 259, 386}) {
    EXPECT_EQ(made.attributeString(id), "unknown") << id;
  }
  EXPECT_EQ(made.readCounter(), 0U);
}

} // namespace
