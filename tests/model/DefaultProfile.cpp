#include <model/Profile.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Profile;

struct Recorder : DefaultProfile::Notifiee {
  void onProfileName() override { heard.push_back(notifier()->profileName()); }
  std::vector<Zel::String8> heard;
};

TEST(DefaultProfile, TellsARegisteredNotifieeOncePerRealChange) {
  auto const profile = defaultProfileFactory("default");
  auto const recorder = Zel::makeObject<Recorder>();
  recorder->isRegisteredNotifieeIs(true);
  recorder->notifierIs(profile);

  profile->profileNameIs("a");
  profile->profileNameIs("a");
  profile->profileNameIs("b");

  EXPECT_EQ(recorder->heard, (std::vector<Zel::String8>{"a", "b"}));
  EXPECT_EQ(profile->versionCounter(), 2U);
}

} // namespace
