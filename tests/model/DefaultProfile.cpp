#include "Listeners.h"

#include <stdexcept>

namespace {

using namespace Maintenance::Profile;
using namespace TestModel;
using Zel::String8;

struct DefaultProfiles : testing::Test {
  Ptr<DefaultProfileListener> listener(std::string label = "") {
    return listen<DefaultProfileListener>(profile, log, std::move(label));
  }

  const Ptr<DefaultProfile> profile = defaultProfileFactory("default");
  Log log;
};

TEST_F(DefaultProfiles, TheFactoryMakesOneWithOneReferenceAndNothingElse) {
  EXPECT_EQ(profile->references(), 1U);
  EXPECT_EQ(profile->name(), "default");
  EXPECT_FALSE(profile->parent());
  EXPECT_EQ(profile->parentAttrId(), 0);
  EXPECT_EQ(profile->versionCounter(), 0U);
  EXPECT_EQ(profile->readCounter(), 0U);
  EXPECT_EQ(profile->zelNotifieeList().count(), 0U);
  EXPECT_EQ(defaultProfileFactory("")->name(), "");
}

TEST_F(DefaultProfiles, ANewOneHasTheEmptyNameAndItsConstants) {
  EXPECT_EQ(profile->profileName(), "");
  EXPECT_EQ(&profile->profileName().data(), &String8::nullStringData_);
  EXPECT_EQ(profile->systemDefaultProfileName(), "#DEFAULTPROFILE");
  EXPECT_EQ(profile->reservedProfileName(), "default");
}

TEST_F(DefaultProfiles, EachAccessorMovesTheReadCounterByOne) {
  expectMoves(*profile, 0, 1, [&] { profile->profileName(); });
  expectMoves(*profile, 0, 1, [&] { profile->systemDefaultProfileName(); });
  expectMoves(*profile, 0, 1, [&] { profile->reservedProfileName(); });
}

TEST_F(DefaultProfiles, TellARegisteredNotifieeOncePerRealChange) {
  const auto listener = this->listener();
  expectMoves(*profile, 1, 0, [&] { profile->profileNameIs("a"); });
  expectMoves(*profile, 0, 0, [&] { profile->profileNameIs("a"); });
  expectMoves(*profile, 1, 0, [&] { profile->profileNameIs("b"); });
  EXPECT_EQ(log, Log({"onProfileName", "onProfileName"}));
  EXPECT_EQ(profile->profileName(), "b");
}

TEST_F(DefaultProfiles, TheEmptyNameIsNoChangeOfANewOne) {
  const auto listener = this->listener();
  expectMoves(*profile, 0, 0, [&] { profile->profileNameIs(""); });
  EXPECT_EQ(log, Log());
}

TEST_F(DefaultProfiles, TheTwoConstantsAreTakenLikeAnyOtherText) {
  const auto listener = this->listener();
  for (const char* const name : {"default", "#DEFAULTPROFILE", "other", "", "\n"}) {
    SCOPED_TRACE(name);
    log.clear();
    expectMoves(*profile, 1, 0, [&] { profile->profileNameIs(name); });
    EXPECT_EQ(profile->profileName(), name);
    EXPECT_EQ(log, Log({"onProfileName"}));
  }
}

TEST_F(DefaultProfiles, AChangeSharesTheTextAndAnEqualWriteKeepsTheOldOne) {
  const String8 first = "text";
  const String8 second = "text";
  profile->profileNameIs(first);
  profile->profileNameIs(second);
  EXPECT_EQ(&profile->profileName().data(), &first.data());
}

TEST_F(DefaultProfiles, ItsOwnNameIsNoChange) {
  profile->profileNameIs("text");
  const auto listener = this->listener();
  expectMoves(*profile, 0, 1, [&] { profile->profileNameIs(profile->profileName()); });
  EXPECT_EQ(log, Log());
}

TEST_F(DefaultProfiles, NotifieesFindTheNewValueCountedAlready) {
  const auto listener = this->listener();
  bool called = false;
  listener->onCall = [&] {
    called = true;
    EXPECT_EQ(profile->profileName(), "a");
    EXPECT_EQ(profile->versionCounter(), 1U);
  };
  profile->profileNameIs("a");
  EXPECT_TRUE(called);
}

TEST_F(DefaultProfiles, ANotifieeThatThrowsIsToldTheIdAndTheNextIsCalled) {
  const auto first = listener("first ");
  const auto second = listener("second ");
  first->onCall = [] { throw std::runtime_error("refused"); };
  EXPECT_NO_THROW(profile->profileNameIs("a"));
  EXPECT_EQ(log, Log({"first onProfileName", "first exception 259", "second onProfileName"}));
  EXPECT_EQ(profile->profileName(), "a");
  EXPECT_EQ(profile->versionCounter(), 1U);
}

TEST_F(DefaultProfiles, AnUnregisteredNotifieeHearsNothing) {
  const auto silent = Zel::makeObject<DefaultProfileListener>(log);
  silent->notifierIs(profile);
  profile->profileNameIs("a");
  EXPECT_EQ(log, Log());
}

TEST(DefaultProfile, ItsEndIsToldToAWeakNotifiee) {
  Log log;
  auto profile = defaultProfileFactory("default");
  const auto listener = listen<DefaultProfileListener>(profile, log);
  listener->isWeakReferenceIs(true);
  profile = nullptr;
  EXPECT_EQ(log, Log({"zero"}));
  EXPECT_FALSE(listener->notifier());
}

TEST(DefaultProfile, ANotifieeThatThrowsAtItsEndIsToldTheIdOfThat) {
  Log log;
  auto profile = defaultProfileFactory("default");
  const auto listener = listen<DefaultProfileListener>(profile, log);
  listener->isWeakReferenceIs(true);
  listener->onCall = [] { throw std::runtime_error("refused"); };
  profile = nullptr;
  EXPECT_EQ(log, Log({"zero", "exception 5"}));
}

TEST(DefaultProfile, ItNamesItsAttributesAndAsksItsBaseForTheRest) {
  const auto profile = defaultProfileFactory("default");
  EXPECT_EQ(profile->attributeString(258), "systemDefaultProfileName");
  EXPECT_EQ(profile->attributeString(259), "profileName");
  EXPECT_EQ(profile->attributeString(260), "reservedProfileName");
  EXPECT_EQ(profile->attributeString(0), "fwkKey");
  EXPECT_EQ(profile->attributeString(154), "zelHasAttrLogInterface");
  for (const int id : {-259, -1, 2, 257, 261, 386}) {
    EXPECT_EQ(profile->attributeString(id), "unknown") << id;
  }
  EXPECT_EQ(profile->readCounter(), 0U);
}

} // namespace
