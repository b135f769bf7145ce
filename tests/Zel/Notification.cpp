#include "support/Recorder.h"

#include <Zel/Exception>
#include <Zel/Notification>
#include <model/Unit.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <stdexcept>

namespace {

using Maintenance::Profile::DefaultProfile;
using Maintenance::Profile::defaultProfileFactory;
using Maintenance::Unit::Status;
using Maintenance::Unit::statusFactory;
using Support::listen;
using Support::Log;
using Support::Recorder;
using Zel::Ptr;

struct Notification : testing::Test {
  const Ptr<DefaultProfile> profile = defaultProfileFactory("default");
  Log log;
};

TEST_F(Notification, AnEqualValueCountsNothingAndCallsNobody) {
  const auto listener = listen(profile, "a", log);
  profile->profileNameIs("x");
  log.clear();
  const unsigned version = profile->versionCounter();
  const unsigned reads = profile->readCounter();
  profile->profileNameIs("x");
  EXPECT_EQ(profile->versionCounter(), version);
  EXPECT_EQ(profile->readCounter(), reads);
  EXPECT_EQ(log, Log{});
}

TEST_F(Notification, ASelfAssignmentDoesNothing) {
  const auto listener = listen(profile, "a", log);
  profile->profileNameIs("x");
  log.clear();
  profile->profileNameIs(profile->profileName());
  EXPECT_EQ(profile->versionCounter(), 1U);
  EXPECT_EQ(log, Log{});
}

TEST_F(Notification, IncrementByZeroReadsAndTellsNobody) {
  const auto unit = statusFactory("unit");
  unit->genIdIs(7);
  struct Loud : Status::Notifiee {
    void onGenId() override { FAIL() << "called"; }
  };
  const auto loud = Zel::makeObject<Loud>();
  loud->isRegisteredNotifieeIs(true);
  loud->notifierIs(unit);
  const unsigned version = unit->versionCounter();
  const unsigned reads = unit->readCounter();
  EXPECT_EQ(unit->genIdInc(0), 7U);
  EXPECT_EQ(unit->readCounter(), reads + 1);
  EXPECT_EQ(unit->versionCounter(), version);
}

TEST_F(Notification, AChangeWithoutNotifieesCountsOneVersion) {
  profile->profileNameIs("x");
  EXPECT_EQ(profile->versionCounter(), 1U);
  EXPECT_EQ(profile->readCounter(), 0U);
}

TEST_F(Notification, AThrowingNotifieeIsToldAndTheNextIsCalled) {
  const auto first = listen(profile, "a", log);
  const auto second = listen(profile, "b", log);
  first->onCall = [] { throw std::runtime_error("refused"); };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a", "a exception 259", "b"}));
  EXPECT_EQ(profile->profileName(), Zel::String8("x"));
  EXPECT_EQ(profile->versionCounter(), 1U);
}

TEST_F(Notification, AnythingThrownIsCaught) {
  const auto first = listen(profile, "a", log);
  first->onCall = [] { throw 42; };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a", "a exception 259"}));
}

TEST_F(Notification, AnExceptionFromTheExceptionHandlerLeavesTheMutator) {
  const auto first = listen(profile, "a", log);
  const auto second = listen(profile, "b", log);
  first->onCall = [] { throw 1; };
  first->onException = [] { throw std::runtime_error("twice"); };
  EXPECT_THROW(profile->profileNameIs("x"), std::runtime_error);
  EXPECT_EQ(log, (Log{"a", "a exception 259"}));
  EXPECT_EQ(profile->profileName(), Zel::String8("x"));
  EXPECT_EQ(second->references(), 1U);
}

TEST_F(Notification, CallbacksAreExpectedToThrowAndTheHandlerIsNot) {
  const auto first = listen(profile, "a", log);
  first->onCall = [&] {
    log.push_back(Zel::Expect::expects(0) ? "expected" : "unexpected");
    throw 1;
  };
  first->onException = [&] { log.push_back(Zel::Expect::expects(0) ? "expected" : "unexpected"); };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a", "expected", "a exception 259", "unexpected"}));
}

TEST_F(Notification, ALaterNotifieeWithoutAnotherOwnerIsSkippedAndReleased) {
  const auto first = listen(profile, "a", log);
  auto second = listen(profile, "b", log);
  const auto third = listen(profile, "c", log);
  first->onCall = [&] {
    second->isRegisteredNotifieeIs(false);
    second = nullptr;
  };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a", "b gone", "c"}));
}

TEST_F(Notification, ALaterNotifieeWithAnotherOwnerIsStillCalled) {
  const auto first = listen(profile, "a", log);
  const auto second = listen(profile, "b", log);
  first->onCall = [&] { second->isRegisteredNotifieeIs(false); };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a", "b"}));
  profile->profileNameIs("y");
  EXPECT_EQ(log, (Log{"a", "b", "a"}));
}

TEST_F(Notification, TheFirstIsCalledEvenIfOnlyTheLoopHoldsIt) {
  const auto loud = listen(profile, "a", log);
  Zel::notifyAll(profile->zelNotifieeList(), 259, [&](DefaultProfile::NotifieeConst& notifiee) {
    EXPECT_EQ(notifiee.references(), 2U);
    notifiee.onProfileName();
  });
  EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(Notification, ANotifieeThatDropsItselfIsKeptUntilItsCallbackEnds) {
  auto first = listen(profile, "a", log);
  first->onCall = [&] {
    first->notifierIs(nullptr);
    first = nullptr;
    log.push_back("still here");
  };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a", "still here", "a gone"}));
}

TEST_F(Notification, ANotifieeRegisteredFromACallbackHearsNothingOfThisChange) {
  Ptr<Recorder> late;
  const auto first = listen(profile, "a", log);
  first->onCall = [&] {
    if (!late) {
      late = listen(profile, "late", log);
    }
  };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a"}));
  profile->profileNameIs("y");
  EXPECT_EQ(log, (Log{"a", "a", "late"}));
}

TEST_F(Notification, ANestedChangeRunsALoopOfItsOwn) {
  const auto first = listen(profile, "a", log);
  const auto second = listen(profile, "b", log);
  first->onCall = [&] { profile->profileNameIs("y"); };
  second->onCall = [&] { log.push_back(std::string(profile->profileName().view())); };
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"a", "a", "b", "y", "b", "y"}));
  EXPECT_EQ(profile->versionCounter(), 2U);
}

TEST_F(Notification, AStreamAdapterRegisteredLastIsCalledFirst) {
  const auto a = listen(profile, "a", log);
  const auto b = listen(profile, "b", log);
  const auto c = listen(profile, "c", log);
  const auto m = Support::mirror(profile, "m", log);
  const auto n = Support::mirror(profile, "n", log);
  profile->profileNameIs("x");
  EXPECT_EQ(log, (Log{"n", "m", "a", "b", "c"}));
}

TEST_F(Notification, ManyNotifieesAreCalledInOrder) {
  std::vector<Ptr<Recorder>> all;
  Log expected;
  for (int i = 0; i < 20; ++i) {
    all.push_back(listen(profile, std::to_string(i), log));
    expected.push_back(std::to_string(i));
  }
  profile->profileNameIs("x");
  EXPECT_EQ(log, expected);
}

TEST_F(Notification, ADoubleSetToNanTwiceNotifiesTwice) {
  struct Counter : Status::Notifiee {
    void onTimeOfStateChange() override { ++calls; }
    int calls = 0;
  };
  const auto unit = statusFactory("unit");
  const auto counter = Zel::makeObject<Counter>();
  counter->isRegisteredNotifieeIs(true);
  counter->notifierIs(unit);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  unit->timeOfStateChangeIs(nan);
  unit->timeOfStateChangeIs(nan);
  EXPECT_EQ(counter->calls, 2);
  unit->timeOfStateChangeIs(-0.0);
  unit->timeOfStateChangeIs(0.0);
  EXPECT_EQ(counter->calls, 3);
  EXPECT_EQ(unit->versionCounter(), 3U);
}

TEST_F(Notification, ZeroReferencesTellTheNotifieesWhileTheEntityIsWhole) {
  Log order;
  auto* const raw = new DefaultProfile("dying");
  struct Weak : Recorder {
    using Recorder::Recorder;
    void onZeroReferences() override {
      Recorder::onZeroReferences();
      seen = notifier()->profileName();
    }
    Zel::String8 seen;
  };
  const auto weak = Zel::makeObject<Weak>("w", order);
  weak->isRegisteredNotifieeIs(true);
  weak->notifierIs(Ptr<DefaultProfile>(raw));
  weak->isWeakReferenceIs(true);
  raw->profileNameIs("last");
  order.clear();
  raw->referencesDec();
  EXPECT_EQ(order, (Log{"w zero"}));
  EXPECT_EQ(weak->seen, Zel::String8("last"));
  EXPECT_FALSE(weak->notifier());
}

} // namespace
