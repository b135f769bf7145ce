#include "Listeners.h"

namespace {

using namespace Maintenance::Profile;
using namespace TestModel;

const ProfileKey key(profileTypeBgp, "drain");

TEST(ProfileConfig, ANewOneHasItsKeyAndAnEmptyEntityName) {
  const auto config = Zel::makeObject<Config>(key);
  EXPECT_EQ(config->references(), 1U);
  EXPECT_EQ(config->name(), "");
  EXPECT_TRUE(config->key() == key);
  EXPECT_TRUE(config->fwkKey() == key);
  EXPECT_EQ(&config->key().name().data(), &key.name().data());
  EXPECT_FALSE(config->parent());
  EXPECT_EQ(config->parentAttrId(), 0);
  EXPECT_EQ(config->versionCounter(), 0U);
}

TEST(ProfileConfig, EachAccessorMovesTheReadCounterByOne) {
  const auto config = Zel::makeObject<Config>(key);
  expectMoves(*config, 0, 1, [&] { config->key(); });
  expectMoves(*config, 0, 1, [&] { config->fwkKey(); });
}

TEST(ProfileConfig, ItsEndIsToldToAWeakNotifiee) {
  Log log;
  auto config = Zel::makeObject<Config>(key);
  const auto listener = listen<ConfigListener>(config, log);
  listener->isWeakReferenceIs(true);
  config = nullptr;
  EXPECT_EQ(log, Log({"zero"}));
  EXPECT_FALSE(listener->notifier());
}

TEST(ProfileConfig, ItNamesItsAttributesAndAsksItsBaseForTheRest) {
  const auto config = Zel::makeObject<Config>(key);
  EXPECT_EQ(config->attributeString(258), "key");
  EXPECT_EQ(config->attributeString(0), "fwkKey");
  EXPECT_EQ(config->attributeString(154), "zelHasAttrLogInterface");
  for (const int id : {-258, -1, 2, 257, 259, 386}) {
    EXPECT_EQ(config->attributeString(id), "unknown") << id;
  }
  EXPECT_EQ(config->readCounter(), 0U);
}

} // namespace
