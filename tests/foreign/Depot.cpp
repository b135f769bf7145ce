#include "Recorder.h"

#include <foreign/model/Depot.h>

#include <gmock/gmock.h>

namespace Foreign {

namespace {

using testing::ElementsAre;

struct Recorder : Depot::Notifiee {
  void onAlarm(Zel::String8 sensor) override { heard.push_back(word("alarm", sensor)); }
  void onRestarts() override { heard.emplace_back("restarts"); }
  Words heard;
};

class ForeignDepot : public testing::Test {
protected:
  const Zel::Ptr<Depot> depot = Zel::makeObject<Depot>("depot");
  const Zel::Ptr<Recorder> recorder = listen<Recorder>(depot);
};

TEST_F(ForeignDepot, AnEqualAlarmTwiceIsToldOnce) {
  depot->alarmIs(Alarm("door", routine));
  depot->alarmIs(Alarm("door", routine));
  EXPECT_THAT(recorder->heard, ElementsAre("alarm door"));
  EXPECT_EQ(depot->versionCounter(), 1U);
}

TEST_F(ForeignDepot, AnAlarmOfAKnownSensorTakesThePlaceOfTheOld) {
  depot->alarmIs(Alarm("door", routine));
  const unsigned mapVersion = depot->alarmMap().mapVersion();
  depot->alarmIs(Alarm("door", express));
  EXPECT_EQ(depot->alarmMap().count(), 1U);
  EXPECT_EQ(depot->alarmMap().mapVersion(), mapVersion);
  EXPECT_EQ(depot->alarm("door"), Alarm("door", express));
  EXPECT_THAT(recorder->heard, ElementsAre("alarm door", "alarm door"));
  EXPECT_EQ(depot->versionCounter(), 2U);
}

TEST_F(ForeignDepot, AnAbsentSensorYieldsADefaultAlarmAndTellsNobody) {
  EXPECT_EQ(depot->alarm("door"), Alarm());
  EXPECT_EQ(depot->alarmDel("door"), Alarm());
  EXPECT_TRUE(recorder->heard.empty());
  EXPECT_EQ(depot->versionCounter(), 0U);
  EXPECT_EQ(depot->readCounter(), 1U);
}

TEST_F(ForeignDepot, DeletionYieldsTheWholeAlarm) {
  depot->alarmIs(Alarm("door", express));
  EXPECT_EQ(depot->alarmDel("door"), Alarm("door", express));
  EXPECT_EQ(depot->alarmMap().count(), 0U);
  EXPECT_THAT(recorder->heard, ElementsAre("alarm door", "alarm door"));
}

TEST_F(ForeignDepot, NewAlarmRefusesASensorThatIsThere) {
  depot->newAlarm(Alarm("door", routine));
  EXPECT_THROW(depot->newAlarm(Alarm("door", express)), Zel::NameInUseException);
  EXPECT_EQ(depot->alarm("door"), Alarm("door", routine));
  EXPECT_EQ(depot->versionCounter(), 0U);
}

TEST_F(ForeignDepot, AnAlarmThatANotifieeTakesOutIsStillToldToTheNext) {
  struct Remover : Depot::Notifiee {
    void onAlarm(Zel::String8 sensor) override {
      if (depot->alarmMap()[sensor] != nullptr) {
        depot->alarmDel(sensor);
      }
    }
    Depot* depot = nullptr;
  };
  const auto remover = listen<Remover>(depot);
  remover->depot = depot.ptr();
  const auto last = listen<Recorder>(depot);
  depot->alarmIs(Alarm("door", routine));
  EXPECT_EQ(depot->alarmMap().count(), 0U);
  EXPECT_THAT(last->heard, ElementsAre("alarm door", "alarm door"));
  EXPECT_EQ(depot->versionCounter(), 2U);
}

TEST_F(ForeignDepot, CountsRestartsAsReads) {
  EXPECT_EQ(depot->restartsInc(3), 3U);
  EXPECT_EQ(depot->restartsInc(0), 3U);
  EXPECT_EQ(depot->readCounter(), 2U);
  EXPECT_EQ(depot->versionCounter(), 0U);
  depot->restartsIs(3);
  EXPECT_EQ(depot->versionCounter(), 0U);
  EXPECT_THAT(recorder->heard, ElementsAre("restarts"));
}

} // namespace

} // namespace Foreign
