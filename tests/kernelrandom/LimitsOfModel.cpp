#include "SmallStack.h"
#include "Tracking.h"

#include <model/Profile/ConfigDir.h>
#include <model/Profile/DefaultProfile.h>
#include <model/Unit/StatusDir.h>

#include <string>
#include <vector>

namespace {

using namespace KernelRandom;
using namespace Maintenance::Profile;
using Maintenance::Unit::StatusDir;
using Maintenance::Unit::statusDirFactory;

Zel::String8 nameOf(unsigned number) { return Zel::String8("unit" + std::to_string(number)); }

struct Listener : DefaultProfile::Notifiee {
  inline static unsigned living = 0;
  inline static unsigned calls = 0;
  Listener() { ++living; }
  ~Listener() override { --living; }
  void onProfileName() override { ++calls; }
};

std::vector<Zel::Ptr<Listener>> listenersOn(const Zel::Ptr<DefaultProfile>& profile, bool weak) {
  std::vector<Zel::Ptr<Listener>> listeners(million);
  for (auto& listener : listeners) {
    listener = Zel::makeObject<Listener>();
    listener->isRegisteredNotifieeIs(true);
    listener->notifierIs(profile);
    listener->isWeakReferenceIs(weak);
  }
  return listeners;
}

TEST(LimitsOfModel, AMillionNotifieesHearOfAChangeAndGoInTheOrderOfTheList) {
  const auto profile = defaultProfileFactory("profile");
  auto listeners = listenersOn(profile, false);
  const auto& list = profile->zelNotifieeList();
  EXPECT_EQ(list.count(), million);
  EXPECT_EQ(profile->references(), million + 1);
  Listener::calls = 0;
  onSmallStack([&] { profile->profileNameIs("other"); });
  EXPECT_EQ(Listener::calls, million);
  onSmallStack([&] {
    for (auto& listener : listeners) {
      listener = nullptr;
    }
  });
  EXPECT_EQ(Listener::living, 0U);
  EXPECT_EQ(list.count(), 0U);
  EXPECT_EQ(list.version(), 2 * million);
  EXPECT_EQ(list.head(), nullptr);
  EXPECT_EQ(list.tail(), nullptr);
  EXPECT_EQ(profile->references(), 1U);
}

TEST(LimitsOfModel, AnEntityLeavesAMillionWeakNotifieesBehind) {
  auto profile = defaultProfileFactory("profile");
  auto listeners = listenersOn(profile, true);
  EXPECT_EQ(profile->references(), 1U);
  onSmallStack([&] { profile = nullptr; });
  for (const auto& listener : listeners) {
    ASSERT_EQ(listener->notifier(), nullptr);
    ASSERT_EQ(listener->notifierLink(), nullptr);
    ASSERT_EQ(listener->references(), 1U);
  }
  listeners.clear();
  EXPECT_EQ(Listener::living, 0U);
}

TEST(LimitsOfModel, AnEntityLeavesAMillionWeakNotifieesBehindThatAreOff) {
  auto profile = defaultProfileFactory("profile");
  auto listeners = listenersOn(profile, true);
  for (const auto& listener : listeners) {
    listener->hasNotificationActiveIs(false);
  }
  EXPECT_EQ(profile->zelNotifieeList().count(), 0U);
  EXPECT_EQ(profile->zelNotifieeList().tail(), nullptr);
  EXPECT_EQ(listeners.front()->notifier(), profile);
  onSmallStack([&] { profile = nullptr; });
  for (const auto& listener : listeners) {
    ASSERT_EQ(listener->notifier(), nullptr);
    ASSERT_EQ(listener->notifierLink(), nullptr);
  }
  listeners.clear();
  EXPECT_EQ(Listener::living, 0U);
}

TEST(LimitsOfModel, AMillionProfilesAreMadeFoundAndDeletedUnderAWalk) {
  const Tracking tracking;
  auto directory = configDirFactory("profiles");
  const auto keyOf = [](unsigned number) {
    return ProfileKey(static_cast<ProfileType>(number % 4), nameOf(number / 4));
  };
  for (unsigned number = 0; number < million; ++number) {
    directory->configIs(keyOf(number));
  }
  ASSERT_EQ(directory->configMap().count(), million);
  for (unsigned number = 0; number < million; ++number) {
    const auto profile = directory->config(keyOf(number));
    ASSERT_TRUE(profile && profile->zelKey() == keyOf(number));
  }
  EXPECT_EQ(directory->config(keyOf(million)), nullptr);
  EXPECT_EQ(directory->versionCounter(), million);
  EXPECT_EQ(directory->readCounter(), million + 1);

  unsigned steps = 0;
  for (ConfigDir::ConfigMap::Iterator at(directory->configMap()); at; at.advance()) {
    if (steps++ % 2 == 0) {
      ASSERT_EQ(directory->configDel(at), at.ptr());
    }
  }
  EXPECT_EQ(steps, million);
  ASSERT_EQ(directory->configMap().count(), million / 2);
  EXPECT_EQ(tracking.living(), million / 2 + 1);

  const Zel::Ptr<Config> kept = ConfigDir::ConfigMap::Iterator(directory->configMap()).ptr();
  onSmallStack([&] { directory = nullptr; });
  EXPECT_EQ(tracking.living(), 1U);
  EXPECT_EQ(kept->references(), 1U);
  EXPECT_EQ(kept->parent(), nullptr);
}

TEST(LimitsOfModel, AMillionUnitsAreMadeFoundAndDeletedUnderAWalk) {
  auto directory = statusDirFactory("units");
  for (unsigned number = 0; number < million; ++number) {
    ASSERT_EQ(directory->statusIs(nameOf(number))->references(), 2U);
  }
  ASSERT_EQ(directory->statusMap().count(), million);
  for (unsigned number = 0; number < million; ++number) {
    const auto unit = directory->status(nameOf(number));
    ASSERT_TRUE(unit && unit->name() == nameOf(number));
  }
  EXPECT_EQ(directory->status("System"), nullptr);
  EXPECT_EQ(directory->versionCounter(), million);

  unsigned steps = 0;
  for (StatusDir::StatusMap::Iterator at(directory->statusMap()); at; at.advance()) {
    if (steps++ % 4 != 0) {
      ASSERT_EQ(directory->statusDel(at), at.ptr());
      ASSERT_EQ(at->references(), 1U);
    }
  }
  EXPECT_EQ(steps, million);
  ASSERT_EQ(directory->statusMap().count(), million / 4);

  const Zel::Ptr<Maintenance::Unit::Status> kept =
      StatusDir::StatusMap::Iterator(directory->statusMap()).ptr();
  onSmallStack([&] { directory = nullptr; });
  EXPECT_EQ(kept->references(), 1U);
  EXPECT_EQ(kept->parent(), nullptr);
}

} // namespace
