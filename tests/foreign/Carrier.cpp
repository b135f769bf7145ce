#include "Recorder.h"

#include <foreign/model/Carrier.h>

#include <gmock/gmock.h>

namespace Foreign {

namespace {

using testing::ElementsAre;

struct Recorder : Carrier::Notifiee {
  void onLoad(const SkuKey& key) override { heard.push_back(word("load", key.sku())); }
  void onTarget(Zone zone) override {
    heard.push_back(word("target", Zel::enumString(enumTable(zone), zone)));
  }
  void onUrgency() override { heard.emplace_back("urgency"); }
  void onIdle() override { heard.emplace_back("idle"); }
  Words heard;
};

/// Intercepts the notify operations, and one mutator.
class Interceptor : public Carrier {
public:
  using Carrier::Carrier;
  void loadNotify(const SkuKey& key) override {
    calls.push_back(word("load", key.sku()));
    if (passOn) {
      Carrier::loadNotify(key);
    }
  }
  void targetNotify(Zone zone) override {
    calls.push_back(word("target", Zel::enumString(enumTable(zone), zone)));
    Carrier::targetNotify(zone);
  }
  void idleIs(bool idle) override {
    calls.emplace_back("idle");
    Carrier::idleIs(idle && allowIdle);
  }
  using Carrier::loadDel;
  bool loadDel(LoadMap::Iterator& at) override {
    calls.emplace_back("del");
    return Carrier::loadDel(at);
  }
  Words calls;
  bool passOn = true;
  bool allowIdle = false;
};

TEST(ForeignCarrier, StartsIdleAndWithoutUrgency) {
  const auto carrier = Zel::makeObject<Carrier>("fork");
  EXPECT_EQ(carrier->urgency(), urgencyUnknown);
  EXPECT_TRUE(carrier->idle());
}

TEST(ForeignCarrier, KeepsOneTargetForEachZone) {
  const auto carrier = Zel::makeObject<Carrier>("fork");
  const auto recorder = listen<Recorder>(carrier);
  carrier->targetIs(frozen, SlotCode("A:1"));
  carrier->targetIs(frozen, SlotCode("A:2"));
  EXPECT_EQ(carrier->targetMap().count(), 1U);
  EXPECT_EQ(carrier->target(frozen), SlotCode("A:2"));
  EXPECT_EQ(carrier->targetDel(ambient), SlotCode());
  EXPECT_EQ(carrier->targetDel(frozen), SlotCode("A:2"));
  EXPECT_THAT(recorder->heard, ElementsAre("target frozen", "target frozen", "target frozen"));
  EXPECT_EQ(carrier->versionCounter(), 3U);
}

TEST(ForeignCarrier, MutatorsNotifyThroughTheVirtualSlot) {
  const auto carrier = Zel::makeObject<Interceptor>("fork");
  const auto recorder = listen<Recorder>(carrier);
  const SkuKey peas(frozen, "peas");
  carrier->loadIs(peas, true);
  carrier->targetIs(chilled, SlotCode("A:1"));
  EXPECT_TRUE(carrier->loadDel(peas));
  carrier->targetDel(chilled);
  EXPECT_THAT(carrier->calls,
              ElementsAre("load peas", "target chilled", "load peas", "target chilled"));
  EXPECT_EQ(recorder->heard, carrier->calls);
}

TEST(ForeignCarrier, AnOverrideMayKeepAChangeToItself) {
  const auto carrier = Zel::makeObject<Interceptor>("fork");
  const auto recorder = listen<Recorder>(carrier);
  carrier->passOn = false;
  carrier->loadIs(SkuKey(frozen, "peas"), true);
  EXPECT_THAT(carrier->calls, ElementsAre("load peas"));
  EXPECT_TRUE(recorder->heard.empty());
  EXPECT_EQ(carrier->versionCounter(), 1U);
}

TEST(ForeignCarrier, DeletingAllGoesThroughTheVirtualDeletion) {
  const auto carrier = Zel::makeObject<Interceptor>("fork");
  carrier->loadIs(SkuKey(frozen, "peas"), true);
  carrier->calls.clear();
  carrier->loadDelAll();
  EXPECT_THAT(carrier->calls, ElementsAre("del", "load peas"));
}

TEST(ForeignCarrier, TheTableReachesTheOverrides) {
  const auto carrier = Zel::makeObject<Interceptor>("fork");
  const auto recorder = listen<Recorder>(carrier);
  void* const owner = static_cast<Carrier*>(carrier.ptr());
  const bool value = false;
  carrier->idleIs(true); // the interceptor makes it false
  recorder->heard.clear();
  carrier->allowIdle = true;
  const bool idle = true;
  Carrier::zelTable().row("idle")->write(owner, &idle);
  const SkuKey peas(frozen, "peas");
  const auto& load = *Carrier::zelTable().row("load")->collection;
  load.write(owner, &peas, &value);
  EXPECT_TRUE(load.erase(owner, &peas));
  load.announce(owner, &peas);
  EXPECT_THAT(carrier->calls, ElementsAre("idle", "idle", "load peas", "load peas", "load peas"));
  EXPECT_THAT(recorder->heard, ElementsAre("idle", "load peas", "load peas", "load peas"));
}

} // namespace

} // namespace Foreign
