#include "Recorder.h"

#include <foreign/model/PickPlan.h>

#include <gmock/gmock.h>

namespace Foreign {

namespace {

using testing::ElementsAre;

struct TourRecorder : Tour::Notifiee {
  void onMetres() override { heard.emplace_back("metres"); }
  void onComplete() override { heard.emplace_back("complete"); }
  void onHelper(Zel::String8 name) override { heard.push_back(word("helper", name)); }
  void onStop(const SkuKey& key) override { heard.push_back(word("stop", key.sku())); }
  void onMark(const SkuKey& key) override { heard.push_back(word("mark", key.sku())); }
  void onZeroReferences() override { heard.emplace_back("end"); }
  Words heard;
};

struct PlanRecorder : PickPlan::Notifiee {
  void onTour(const TourKey& key) override { heard.push_back(key); }
  std::vector<TourKey> heard;
};

TEST(ForeignTour, ItsCallbacksStandDirectlyBehindThoseOfTheRoot) {
  EXPECT_FALSE((std::is_base_of_v<Zel::Entity::NotifieeConst, Tour::NotifieeConst>));
  const auto tour = Zel::makeObject<Tour>(TourKey(chilled, 1));
  const auto recorder = listen<TourRecorder>(tour);
  EXPECT_EQ(recorder->notifier(), tour);
  EXPECT_TRUE(recorder->name().empty()); // no entity, no name
}

TEST(ForeignTour, TellsItsChangesWithoutAnyCounter) {
  const auto tour = Zel::makeObject<Tour>(TourKey(chilled, 1));
  const auto recorder = listen<TourRecorder>(tour);
  EXPECT_EQ(tour->metresInc(0), 0U);
  EXPECT_EQ(tour->metresInc(5), 5U);
  tour->metresIs(5);
  tour->completeIs(true);
  tour->completeIs(true);
  tour->helperIs("Ann", false);
  EXPECT_FALSE(tour->helperDel("Ann"));
  EXPECT_THAT(recorder->heard, ElementsAre("metres", "complete", "helper Ann", "helper Ann"));
}

TEST(ForeignTour, MakesMembersOnceWithAndWithoutNotifiees) {
  const auto tour = Zel::makeObject<Tour>(TourKey(chilled, 1));
  const auto recorder = listen<TourRecorder>(tour);
  const SkuKey peas(frozen, "peas");
  const auto stop = tour->stopIs(peas);
  const auto mark = tour->markIs(peas);
  EXPECT_EQ(tour->stopIs(peas), stop);
  EXPECT_EQ(tour->markIs(peas), mark);
  EXPECT_EQ(stop->key(), peas);
  EXPECT_EQ(mark->fwkKey(), peas);
  EXPECT_EQ(tour->markDel(peas), mark);
  EXPECT_EQ(tour->markDel(peas), nullptr);
  EXPECT_THROW(tour->newStop(peas), Zel::NameInUseException);
  EXPECT_THAT(recorder->heard, ElementsAre("stop peas", "mark peas", "mark peas"));
}

TEST(ForeignTour, AStopTellsItsOwnNotifiees) {
  struct Recorder : Stop::Notifiee {
    void onUrgent() override { heard.push_back(notifier()->urgent()); }
    std::vector<bool> heard;
  };
  const auto stop = Zel::makeObject<Stop>(SkuKey());
  const auto recorder = listen<Recorder>(stop);
  stop->urgentIs(true);
  stop->urgentIs(true);
  stop->urgentIs(false);
  EXPECT_THAT(recorder->heard, ElementsAre(true, false));
}

TEST(ForeignTour, GoesDownWithItsMembersTellingOfEach) {
  auto tour = Zel::makeObject<Tour>(TourKey(chilled, 1));
  tour->markIs(SkuKey(frozen, "peas"));
  const auto stop = Zel::Ptr<Stop>(tour->stopIs(SkuKey(frozen, "ice")));
  const auto recorder = listen<TourRecorder>(tour);
  recorder->isWeakReferenceIs(true);
  tour = nullptr;
  EXPECT_THAT(recorder->heard, ElementsAre("end", "stop ice", "mark peas"));
  EXPECT_EQ(stop->references(), 1U);
  EXPECT_EQ(recorder->notifier(), nullptr);
}

TEST(ForeignPickPlan, HoldsToursByAValueOfTwoFields) {
  const auto plan = Zel::makeObject<PickPlan>();
  const auto recorder = listen<PlanRecorder>(plan);
  const auto one = plan->tourIs(TourKey(chilled, 1));
  const auto two = plan->tourIs(TourKey(chilled, 2));
  EXPECT_FALSE(one == two);
  EXPECT_EQ(plan->tourIs(TourKey(chilled, 1)), one);
  plan->tourNotify(TourKey(frozen, 9));
  PickPlan::TourMap::Iterator at(plan->tourMap(), TourKey(chilled, 2));
  EXPECT_EQ(plan->tourDel(at), two);
  EXPECT_EQ(plan->tourDel(at), nullptr);
  EXPECT_THAT(recorder->heard, ElementsAre(TourKey(chilled, 1), TourKey(chilled, 2),
                                           TourKey(frozen, 9), TourKey(chilled, 2)));
}

TEST(ForeignPickSet, YieldsADefaultKeyWithoutCandidates) {
  EXPECT_EQ(Zel::makeObject<PickSet>()->winner(), SkuKey());
}

TEST(ForeignPickSet, TheGreatestSkuWinsWhateverItsZoneAndItsBool) {
  const auto set = Zel::makeObject<PickSet>();
  set->candidateIs(SkuKey(hazardous, "a"), true);
  set->candidateIs(SkuKey(ambient, "b"), false);
  EXPECT_EQ(set->winner(), SkuKey(ambient, "b"));
  EXPECT_FALSE(set->candidateDel(SkuKey(ambient, "b")));
  EXPECT_EQ(set->winner(), SkuKey(hazardous, "a"));
}

TEST(ForeignPickSet, OverwritesTheBoolOfAPresentKeyInPlace) {
  const auto set = Zel::makeObject<PickSet>();
  const SkuKey key(ambient, "a");
  set->candidateIs(key, false);
  const auto* const entry = set->candidateMap()[key];
  set->candidateIs(key, true);
  EXPECT_EQ(set->candidateMap()[key], entry);
  EXPECT_TRUE(set->candidate(key));
  EXPECT_EQ(set->candidateMap().mapVersion(), 1U);
  set->candidateNotify(key);
  EXPECT_EQ(set->candidateMap().mapVersion(), 1U);
  EXPECT_TRUE(set->candidateDel(key));
  EXPECT_FALSE(set->candidateDel(key));
}

} // namespace

} // namespace Foreign
