#include "Recorder.h"

#include <foreign/model/Rack.h>

#include <gmock/gmock.h>

#include <limits>

namespace Foreign {

namespace {

using testing::ElementsAre;

struct Recorder : Rack::Notifiee {
  void onAllowedZone(Zone zone) override {
    heard.push_back(word("allowedZone", Zel::enumString(enumTable(zone), zone)));
  }
  void onLabel(Zel::Name language) override { heard.push_back(word("label", language)); }
  void onSpace(Zone zone) override {
    heard.push_back(word("space", Zel::enumString(enumTable(zone), zone)));
  }
  void onReading(const double& time) override { times.push_back(time); }
  void onFootprint() override { heard.emplace_back("footprint"); }
  void onSlot() override { heard.emplace_back("slot"); }
  Words heard;
  std::vector<double> times;
};

class ForeignRack : public testing::Test {
protected:
  const Zel::Ptr<Rack> rack = Zel::makeObject<Rack>("north");
  const Zel::Ptr<Recorder> recorder = listen<Recorder>(rack);
};

TEST_F(ForeignRack, ASetKeyedByAnEnumerationRunsInTheOrderOfReversedNumbers) {
  for (Zone zone : {hazardous, frozen, chilled, ambient}) {
    rack->allowedZoneIs(zone, true);
  }
  std::vector<Zone> order;
  for (Rack::AllowedZoneMap::IteratorConst at(rack->allowedZoneMap()); at; at.advance()) {
    order.push_back(at->zelKey());
  }
  EXPECT_THAT(order, ElementsAre(ambient, frozen, chilled, hazardous));
  recorder->heard.clear();
  rack->allowedZoneDelAll();
  EXPECT_THAT(recorder->heard, ElementsAre("allowedZone ambient", "allowedZone frozen",
                                           "allowedZone chilled", "allowedZone hazardous"));
  EXPECT_EQ(rack->versionCounter(), 8U);
}

TEST_F(ForeignRack, ANumberOutsideTheEnumerationIsAKeyLikeAnyOther) {
  const auto odd = static_cast<Zone>(-7);
  rack->allowedZoneIs(odd, true);
  EXPECT_TRUE(rack->allowedZone(odd));
  EXPECT_TRUE(rack->allowedZoneDel(odd));
  EXPECT_THAT(recorder->heard, ElementsAre("allowedZone Zone(-7)", "allowedZone Zone(-7)"));
}

TEST_F(ForeignRack, DeletingThroughAnIteratorLeavesItOnTheEntry) {
  rack->allowedZoneIs(ambient, true);
  rack->allowedZoneIs(frozen, false);
  Rack::AllowedZoneMap::Iterator at(rack->allowedZoneMap());
  EXPECT_TRUE(rack->allowedZoneDel(at));
  EXPECT_EQ(at->zelKey(), ambient);
  EXPECT_FALSE(rack->allowedZoneDel(at)); // it has left already
  EXPECT_EQ(rack->versionCounter(), 3U);
  at.advance();
  ASSERT_TRUE(at);
  EXPECT_EQ(at->zelKey(), frozen);
  EXPECT_FALSE(rack->allowedZoneDel(at));
  EXPECT_EQ(rack->allowedZoneMap().count(), 0U);
  EXPECT_EQ(rack->versionCounter(), 4U);
}

TEST_F(ForeignRack, AMapKeyedByNameYieldsWhatItHeld) {
  rack->labelIs("en", "North");
  rack->labelIs("de", "Nord");
  EXPECT_EQ(rack->labelDel("en"), "North");
  EXPECT_EQ(rack->labelDel("en"), "");
  EXPECT_EQ(rack->label("de"), "Nord");
  EXPECT_THAT(recorder->heard, ElementsAre("label en", "label de", "label en"));
}

TEST_F(ForeignRack, AMapOfValuesComparesThemWhole) {
  Dimensions free(100, false, 2.0, frozen);
  rack->spaceIs(frozen, free);
  rack->spaceIs(frozen, free);
  free.weightIs(3.0);
  rack->spaceIs(frozen, free);
  EXPECT_THAT(recorder->heard, ElementsAre("space frozen", "space frozen"));
  EXPECT_EQ(rack->space(frozen).weight(), 3.0);
  EXPECT_EQ(rack->space(ambient), Dimensions());
  EXPECT_EQ(rack->spaceMap().count(), 1U);
  EXPECT_EQ(rack->spaceDel(frozen), free);
  EXPECT_EQ(rack->versionCounter(), 3U);
}

TEST_F(ForeignRack, AValueIsChangedOnTheCopyAtHandAndWrittenBack) {
  Dimensions copy = rack->footprint();
  copy.widthIs(800);
  EXPECT_EQ(rack->footprint().width(), 0U);
  rack->footprintIs(copy);
  rack->footprintIs(copy);
  rack->slotIs(SlotCode("A:1"));
  EXPECT_EQ(rack->footprint().width(), 800U);
  EXPECT_EQ(rack->slot().code(), "A:1");
  EXPECT_THAT(recorder->heard, ElementsAre("footprint", "slot"));
}

TEST_F(ForeignRack, AnOrderedMapOfNumbersRunsInAscendingOrder) {
  rack->readingIs(3.0, -1.5);
  rack->readingIs(1.0, -2.5);
  rack->readingIs(2.0, 0.0);
  rack->readingIs(2.0, 0.0);
  std::vector<double> values;
  for (Rack::ReadingMap::IteratorConst at(rack->readingMap()); at; at.advance()) {
    values.push_back(at->zelValue());
  }
  EXPECT_THAT(values, ElementsAre(-2.5, 0.0, -1.5));
  EXPECT_EQ(rack->readingDel(3.0), -1.5);
  EXPECT_EQ(rack->readingDel(3.0), 0.0);
  rack->readingDelAll();
  EXPECT_THAT(recorder->times, ElementsAre(3.0, 1.0, 2.0, 3.0, 1.0, 2.0));
  EXPECT_EQ(rack->versionCounter(), 6U);
}

TEST_F(ForeignRack, ANaNReadingIsAChangeEachTime) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  rack->readingIs(1.0, nan);
  rack->readingIs(1.0, nan);
  EXPECT_THAT(recorder->times, ElementsAre(1.0, 1.0));
  EXPECT_EQ(rack->readingMap().count(), 1U);
}

TEST_F(ForeignRack, NewInAHashMapRefusesAKeyThatIsThereAndInATreeReplaces) {
  rack->newLabel("en", "North");
  EXPECT_THROW(rack->newLabel("en", "South"), Zel::NameInUseException);
  EXPECT_EQ(rack->label("en"), "North");
  rack->newNote(1.0, "first");
  rack->newNote(1.0, "second");
  EXPECT_EQ(rack->note(1.0), "second");
  EXPECT_EQ(rack->noteMap().count(), 1U);
  EXPECT_EQ(rack->versionCounter(), 0U);
  EXPECT_TRUE(recorder->heard.empty());
}

TEST_F(ForeignRack, NotifieesAreToldInTheOrderOfTheirRegistration) {
  struct Numbered : Rack::Notifiee {
    void onPicks() override { order->push_back(number); }
    std::vector<int>* order = nullptr;
    int number = 0;
  };
  std::vector<int> order;
  const auto one = listen<Numbered>(rack);
  const auto two = listen<Numbered>(rack);
  one->order = two->order = &order;
  one->number = 1;
  two->number = 2;
  EXPECT_EQ(rack->picksInc(1), 1U);
  one->isRegisteredNotifieeIs(false);
  one->isRegisteredNotifieeIs(true);
  EXPECT_EQ(rack->picksInc(1), 2U);
  EXPECT_THAT(order, ElementsAre(1, 2, 2, 1));
}

} // namespace

} // namespace Foreign
