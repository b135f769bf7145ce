#include "GenericFixture.h"

#include <Zel/Activity>

#include <stdexcept>
#include <thread>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Unit::Status;

const GroupKey peers(Group::groupTypeBgp, "peers");
const GroupKey ports(Group::groupTypeInterface, "ports");
const char* const peersHeard =
    "260 Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})";

class Deferred : public testing::Test {
protected:
  const Ptr<Status> unit = Unit::statusFactory("System");
  Log log;
  Listener listener{log};
  Handle object = told(Zel::generic(unit), listener);
};

TEST_F(Deferred, TellsNothingUntilItIsRun) {
  Zel::DeferredNotification deferred;
  unit->stateIs(Unit::active);
  unit->stateIs(Unit::failedEnter);
  EXPECT_EQ(log, Log());
  EXPECT_EQ(deferred.waiting(), 1U);
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_EQ(log, Log{"262"});
  EXPECT_EQ(deferred.waiting(), 0U);
  EXPECT_EQ(deferred.run(), 0U);
  EXPECT_EQ(log, Log{"262"});
}

TEST_F(Deferred, TellsOfOneMemberByKeyAndOfSeveralAsOne) {
  Zel::DeferredNotification deferred;
  unit->groupIs(peers, true);
  deferred.run();
  EXPECT_EQ(log, Log{peersHeard});
  log.clear();
  for (int number = 0; number < 300; ++number) {
    unit->groupIs(GroupKey(Group::groupTypeBgp, Zel::String8(std::to_string(number))), true);
  }
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_EQ(log, Log{"260"});
  deferred.run();
  EXPECT_EQ(log, Log{"260"});
}

TEST_F(Deferred, TellsOfEachAttributeThatWaitsOnceInTheOrderOfIds) {
  Zel::DeferredNotification deferred;
  unit->genIdIs(7);
  unit->stateIs(Unit::active);
  unit->groupIs(peers, true);
  unit->genIdIs(8);
  deferred.run();
  EXPECT_EQ(log, (Log{peersHeard, "262", "274"}));
}

TEST_F(Deferred, ServesReactorsInTheOrderInWhichTheyFirstHadToHear) {
  const auto other = Unit::statusFactory("other");
  Listener second(log, "other ");
  const Handle generic = told(Zel::generic(other), second);
  Zel::DeferredNotification deferred;
  other->stateIs(Unit::active);
  unit->stateIs(Unit::active);
  other->stateIs(Unit::init);
  EXPECT_EQ(deferred.waiting(), 2U);
  EXPECT_EQ(deferred.run(), 2U);
  EXPECT_EQ(log, (Log{"other 262", "262"}));
}

TEST_F(Deferred, LetsTheReactorThatIsServedActAtOnce) {
  Zel::DeferredNotification deferred;
  listener.onCall = [&](Zel::GenericIfEntity&) {
    if (log.size() == 1) {
      unit->genIdIs(7);
    }
  };
  unit->stateIs(Unit::active);
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_EQ(log, (Log{"262", "274"}));
  EXPECT_EQ(deferred.waiting(), 0U);
}

TEST_F(Deferred, PutsWhatComesUpForOthersOffToTheNextRun) {
  const auto other = Unit::statusFactory("other");
  Listener second(log, "other ");
  const Handle generic = told(Zel::generic(other), second);
  Zel::DeferredNotification deferred;
  listener.onCall = [&](Zel::GenericIfEntity&) { other->stateIs(Unit::active); };
  unit->stateIs(Unit::active);
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_EQ(log, Log{"262"});
  EXPECT_EQ(deferred.waiting(), 1U);
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_EQ(log, (Log{"262", "other 262"}));
}

TEST_F(Deferred, PassesOverAReactorThatNobodyHoldsAnyMore) {
  Zel::DeferredNotification deferred;
  unit->stateIs(Unit::active);
  object = nullptr;
  EXPECT_EQ(unit->references(), 2U) << "the scheduler still holds it";
  EXPECT_EQ(deferred.run(), 0U);
  EXPECT_EQ(log, Log());
  EXPECT_EQ(unit->references(), 1U);
}

TEST_F(Deferred, PassesOverAReactorThatIsLetGoOfDuringTheRun) {
  Listener second(log, "second ");
  Handle other = told(Zel::generic(unit), second);
  Zel::DeferredNotification deferred;
  unit->stateIs(Unit::active);
  listener.onCall = [&](Zel::GenericIfEntity&) {
    unit->genIdIs(7); // which the other waits for as well, in the next run
    other = nullptr;
  };
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_EQ(log, (Log{"262", "274"}));
  EXPECT_EQ(deferred.run(), 0U);
  EXPECT_EQ(unit->references(), 2U);
}

TEST_F(Deferred, PassesOverAReactorThatIsOffOrAZombie) {
  Zel::DeferredNotification deferred;
  unit->stateIs(Unit::active);
  object->hasNotificationActiveIs(false);
  EXPECT_EQ(deferred.run(), 0U);
  object->hasNotificationActiveIs(true);
  unit->stateIs(Unit::init);
  object->zelMarkedForDeletionIs(true);
  EXPECT_EQ(deferred.run(), 0U);
  EXPECT_EQ(log, Log());
}

/// Throws at each change, and writes down what it is told of that.
class Failing : public Status::GenericIf_ {
public:
  Failing(const Ptr<Status>& object, Log& log) : GenericIf_(object, false), log_(log) {}
  void onAttribute(Zel::AttributeId /*id*/) override { throw std::runtime_error("no"); }
  using GenericIf_::onAttribute;
  void onNotificationException(Zel::AttributeId id) override {
    log_.push_back("exception " + std::to_string(id));
    if (rethrows) {
      throw;
    }
  }
  using GenericIf_::onNotificationException;

  bool rethrows = false;

private:
  Log& log_;
};

TEST_F(Deferred, TellsAReactorOfItsOwnFailureAndGoesOn) {
  object = nullptr;
  const auto failing = Zel::makeObject<Failing>(unit, log);
  const Handle second = told(Zel::generic(unit), listener);
  Zel::DeferredNotification deferred;
  unit->stateIs(Unit::active);
  EXPECT_EQ(deferred.run(), 2U);
  EXPECT_EQ(log, (Log{"exception 262", "262"}));
}

TEST_F(Deferred, PassesAFailureThatLeavesThatOnWhenAllAreServed) {
  object = nullptr;
  const auto failing = Zel::makeObject<Failing>(unit, log);
  failing->rethrows = true;
  const Handle second = told(Zel::generic(unit), listener);
  Zel::DeferredNotification deferred;
  unit->stateIs(Unit::active);
  EXPECT_THROW(deferred.run(), std::runtime_error);
  EXPECT_EQ(log, (Log{"exception 262", "262"}));
  EXPECT_EQ(deferred.waiting(), 0U);
}

TEST_F(Deferred, NestsAndEnds) {
  Zel::DeferredNotification outer;
  {
    Zel::DeferredNotification inner;
    EXPECT_EQ(Zel::ActivitySm::installed(), &inner);
    unit->stateIs(Unit::active);
    EXPECT_EQ(inner.waiting(), 1U);
  }
  EXPECT_EQ(Zel::ActivitySm::installed(), &outer);
  EXPECT_EQ(outer.waiting(), 0U);
  EXPECT_EQ(outer.run(), 0U) << "what waited in the inner one was dropped";
  EXPECT_EQ(log, Log());
}

TEST_F(Deferred, RunsWithinARun) {
  const auto other = Unit::statusFactory("other");
  Listener second(log, "other ");
  const Handle generic = told(Zel::generic(other), second);
  Zel::DeferredNotification deferred;
  listener.onCall = [&](Zel::GenericIfEntity&) {
    if (log.size() == 1) {
      other->stateIs(Unit::active);
      EXPECT_EQ(deferred.run(), 1U);
      unit->genIdIs(7);
    }
  };
  unit->stateIs(Unit::active);
  EXPECT_EQ(deferred.run(), 1U);
  EXPECT_EQ(log, (Log{"262", "other 262", "274"})) << "the outer one is served still";
}

TEST_F(Deferred, IsTheCallingThreadsAlone) {
  const Zel::DeferredNotification deferred;
  Zel::ActivitySm* seen = Zel::ActivitySm::installed();
  std::thread([&] { seen = Zel::ActivitySm::installed(); }).join();
  EXPECT_EQ(seen, nullptr);
}

TEST_F(Deferred, LeavesTypedNotifieesAsTheyAre) {
  const auto profile = Profile::defaultProfileFactory("default");
  const auto typed = Support::listen(profile, "typed", log);
  Zel::DeferredNotification deferred;
  profile->profileNameIs("mine");
  EXPECT_EQ(log, Log{"typed"});
  EXPECT_EQ(deferred.waiting(), 0U);
}

} // namespace
