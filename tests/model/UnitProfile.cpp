#include "Listeners.h"

#include <stdexcept>

namespace {

using namespace MaintenanceUnitProfile;
using namespace TestModel;
using Maintenance::Profile::ProfileKey;
using Maintenance::Profile::profileTypeUnit;
using ProfileConfig = Maintenance::Profile::Config;

const ProfileKey careful(profileTypeUnit, "careful");

struct UnitProfile : testing::Test {
  const Ptr<Config> profile = configFactory("careful");
  Log log;
};

TEST_F(UnitProfile, ANewOneHasItsDefaultsAndTheKeyOfAUnitProfile) {
  EXPECT_EQ(profile->references(), 1U);
  EXPECT_EQ(profile->versionCounter(), 0U);
  EXPECT_EQ(profile->readCounter(), 0U);
  EXPECT_EQ(profile->name(), "");
  EXPECT_EQ(profile->profileName(), "careful");
  EXPECT_EQ(profile->onBootDuration(), 300U);
  EXPECT_EQ(profile->minOnBootDuration(), 300U);
  EXPECT_EQ(profile->maxOnBootDuration(), 3600U);
  EXPECT_FALSE(profile->onBootEnabled());
  EXPECT_EQ(profile->key(), careful);
  EXPECT_EQ(profile->key().type(), 3);
  EXPECT_EQ(profile->fwkKey(), careful);
  EXPECT_FALSE(profile->parent());
}

TEST_F(UnitProfile, ItsNameStandsThereTwiceAsOneText) {
  EXPECT_EQ(&profile->profileName().data(), &profile->key().name().data());
}

TEST_F(UnitProfile, EachAccessorMovesTheReadCounterByOne) {
  expectMoves(*profile, 0, 1, [&] { profile->profileName(); });
  expectMoves(*profile, 0, 1, [&] { profile->onBootDuration(); });
  expectMoves(*profile, 0, 1, [&] { profile->minOnBootDuration(); });
  expectMoves(*profile, 0, 1, [&] { profile->maxOnBootDuration(); });
  expectMoves(*profile, 0, 1, [&] { profile->onBootEnabled(); });
  expectMoves(*profile, 0, 1, [&] { profile->key(); });
}

TEST_F(UnitProfile, AnyDurationIsStored) {
  const auto listener = listen<UnitProfileListener>(profile, log);
  for (const unsigned duration : {1U, 100000U, 0U, 4294967295U, 299U, 3601U}) {
    expectMoves(*profile, 1, 0, [&] { profile->onBootDurationIs(duration); });
    EXPECT_EQ(profile->onBootDuration(), duration);
  }
  EXPECT_EQ(log, Log(6, "onOnBootDuration"));
}

TEST_F(UnitProfile, AnEqualWriteIsNoChange) {
  const auto listener = listen<UnitProfileListener>(profile, log);
  expectMoves(*profile, 0, 0, [&] {
    profile->onBootDurationIs(300);
    profile->onBootEnabledIs(false);
  });
  EXPECT_EQ(log, Log());
  expectMoves(*profile, 1, 0, [&] { profile->onBootEnabledIs(true); });
  EXPECT_TRUE(profile->onBootEnabled());
  EXPECT_EQ(log, Log({"onOnBootEnabled"}));
}

TEST_F(UnitProfile, ANotifieeOfTheBaseAloneIsNotTold) {
  const auto before = listen<UnitProfileListener>(profile, log, "first ");
  const auto base = listen<ConfigListener>(profile, log, "base ");
  const auto behind = listen<UnitProfileListener>(profile, log, "last ");
  EXPECT_EQ(profile->zelNotifieeList().count(), 3U);
  profile->onBootDurationIs(600);
  profile->onBootEnabledIs(true);
  EXPECT_EQ(log, Log({"first onOnBootDuration", "last onOnBootDuration", "first onOnBootEnabled",
                      "last onOnBootEnabled"}));
  EXPECT_EQ(base->notifier(), Ptr<ProfileConfig>(profile));
}

TEST_F(UnitProfile, ANotifieeThatThrowsIsToldTheIdAndTheNextIsCalled) {
  const auto first = listen<UnitProfileListener>(profile, log, "first ");
  const auto second = listen<UnitProfileListener>(profile, log, "second ");
  first->onCall = [] { throw std::runtime_error("refused"); };
  profile->onBootDurationIs(301);
  profile->onBootEnabledIs(true);
  EXPECT_EQ(log, Log({"first onOnBootDuration", "first exception 387", "second onOnBootDuration",
                      "first onOnBootEnabled", "first exception 390", "second onOnBootEnabled"}));
}

TEST_F(UnitProfile, ItsNotifieeTakesAPlainProfileForNoNotifier) {
  const auto plain = Zel::makeObject<ProfileConfig>(careful);
  const auto listener = listen<UnitProfileListener>(plain, log);
  EXPECT_FALSE(listener->notifier());
  EXPECT_EQ(plain->zelNotifieeList().count(), 0U);
  EXPECT_EQ(plain->references(), 1U);
  listener->notifierIs(profile);
  EXPECT_EQ(listener->notifier(), profile);
  listener->notifier()->onBootEnabledIs(true);
  EXPECT_EQ(log, Log({"onOnBootEnabled"}));
}

TEST_F(UnitProfile, ItNamesItsAttributesAndThoseOfItsBase) {
  EXPECT_EQ(profile->attributeString(386), "profileName");
  EXPECT_EQ(profile->attributeString(387), "onBootDuration");
  EXPECT_EQ(profile->attributeString(388), "minOnBootDuration");
  EXPECT_EQ(profile->attributeString(389), "maxOnBootDuration");
  EXPECT_EQ(profile->attributeString(390), "onBootEnabled");
  EXPECT_EQ(profile->attributeString(258), "key");
  EXPECT_EQ(profile->attributeString(0), "fwkKey");
  EXPECT_EQ(profile->attributeString(154), "zelHasAttrLogInterface");
  for (const int id : {-386, -1, 2, 257, 259, 385, 391}) {
    EXPECT_EQ(profile->attributeString(id), "unknown") << id;
  }
}

TEST(UnitProfileEnds, AreToldToWeakNotifieesOfBothClasses) {
  Log log;
  auto profile = configFactory("careful");
  const auto own = listen<UnitProfileListener>(profile, log, "own ");
  const auto base = listen<ConfigListener>(profile, log, "base ");
  own->isWeakReferenceIs(true);
  base->isWeakReferenceIs(true);
  profile = nullptr;
  EXPECT_EQ(log, Log({"own zero", "base zero"}));
  EXPECT_FALSE(own->notifier());
  EXPECT_FALSE(base->notifier());
}

TEST(UnitProfiles, AMemberOfTheDirectoryHasAnEmptyNameAndIsFoundByItsProfileName) {
  const auto profiles = configDirFactory("unit profiles");
  const auto made = profiles->configIs("careful");
  EXPECT_EQ(made->name(), "");
  EXPECT_EQ(made->key(), careful);
  EXPECT_EQ(profiles->config("careful"), made);
  EXPECT_FALSE(profiles->config(""));
  EXPECT_EQ(profiles->configIs("")->profileName(), "");
}

TEST(UnitProfiles, AreOfOneDirectoryAloneAndNotOfThePlainOne) {
  const auto unitProfiles = configDirFactory("unit profiles");
  const auto plain = Maintenance::Profile::configDirFactory("profiles");
  unitProfiles->configIs("careful");
  EXPECT_FALSE(plain->config(careful));
  EXPECT_NE(Ptr<ProfileConfig>(plain->configIs(careful)),
            Ptr<ProfileConfig>(unitProfiles->config("careful")));
}

} // namespace
