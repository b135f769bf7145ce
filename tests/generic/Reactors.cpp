#include "ReactorFixture.h"

#include <Zel/NotificationException>

#include <stdexcept>

namespace {

using namespace TestGeneric;
using namespace Maintenance;
using Group::GroupKey;
using Unit::Status;

const GroupKey peers(Group::groupTypeBgp, "peers");
const char* const peersText =
    "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})";

TEST_F(Reactor, HearsOfEverySingularAttribute) {
  Unit::TrafficRates rates;
  rates.inBitsRateIs(1);
  unit->unitTypeIs(Unit::builtin);
  unit->profileNameIs("drain");
  unit->stateIs(Unit::active);
  unit->reasonIs(Unit::srcCli);
  unit->timeOfStateChangeIs(1.0);
  unit->onBootMaintExitTimeIs(1.0);
  unit->historySizeIs(1);
  unit->maintEnterInstanceIs("a");
  unit->maintExitInstanceIs("b");
  unit->aggTrafficRateIs(rates);
  unit->totalIntfTrafficViolationsIs(1);
  unit->genIdIs(1);
  unit->totalIntfTrafficViolationsInc(1);
  unit->genIdInc(1);
  EXPECT_EQ(log, (Log{"259", "261", "262", "263", "264", "265", "267", "269", "270", "271", "273",
                      "274", "273", "274"}));
}

TEST_F(Reactor, HearsOfEveryMemberWithItsKey) {
  unit->groupIs(peers, true);
  unit->historyIs(2.5, "line");
  unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId("Vlan7"), true);
  unit->groupIs(peers, false);
  unit->groupDel(peers);
  unit->groupNotify(peers);
  const std::string group = std::string("260 ") + peersText;
  EXPECT_EQ(log, (Log{group, "268 2.5", "272 'Vlan7'", group, group, group}));
}

TEST_F(Reactor, HearsOfACollectionAsAWholeThroughItsAdapter) {
  adapter()->onGroup();
  adapter()->onHistory();
  adapter()->onIntfsViolatingTrafficThreshold();
  EXPECT_EQ(log, (Log{"260", "268", "272"}));
  adapter()->onGroupzelImmediate();
  EXPECT_EQ(log.size(), 3U);
}

TEST_F(Reactor, HearsOfWhatDirectoriesDo) {
  const auto profiles = Profile::configDirFactory("profiles");
  const auto units = Unit::statusDirFactory("units");
  const auto profile = Profile::defaultProfileFactory("default");
  Listener others(log);
  const Handle objects[] = {told(Zel::generic(profiles), others), told(Zel::generic(units), others),
                            told(Zel::generic(profile), others)};
  profiles->configIs(Profile::ProfileKey(Profile::profileTypeBgp, "drain"));
  units->statusIs("System");
  profile->profileNameIs("mine");
  EXPECT_EQ(log, (Log{"258 Value('Maintenance::Profile::ProfileKey', ** {'type': "
                      "'profileTypeBgp', 'name': 'drain'})",
                      "258 'System'", "259"}));
  EXPECT_EQ(objects[0]->references(), 1U);
}

TEST_F(Reactor, HearsOfAWriteBeforeItReturnsAndOnceForEachObject) {
  Listener second(log, "second ");
  const Handle other = told(Zel::generic(unit, true), second);
  Zel::writeAttribute(object, 262, Unit::active);
  EXPECT_EQ(log, (Log{"262", "second 262"}));
}

TEST_F(Reactor, HearsThoughItIsConstAndThenItsKeysAre) {
  bool isConst = true;
  class KeyListener : public Zel::GenericIfEntity::Listener {
  public:
    explicit KeyListener(bool& isConst) : isConst_(isConst) {}
    void onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId /*id*/) override {}
    void onAttribute(Zel::GenericIfEntity& /*object*/, Zel::AttributeId /*id*/,
                     const Ptr<const GenericIf>& key) override {
      isConst_ = key->isConst();
    }

  private:
    bool& isConst_;
  } keys(isConst);
  dynamic_cast<Zel::GenericIfEntity&>(*object).listenerIs(&keys);
  unit->groupIs(peers, true);
  EXPECT_FALSE(isConst);
  const Handle constant = Zel::generic(unit, true);
  dynamic_cast<Zel::GenericIfEntity&>(*constant).listenerIs(&keys);
  unit->groupIs(peers, false);
  EXPECT_TRUE(isConst);
}

TEST_F(Reactor, ClonesWithASubscriptionOfItsOwn) {
  Listener second(log, "clone ");
  const Handle clone = object->clone();
  unit->stateIs(Unit::active);
  EXPECT_EQ(log, Log{"262"}) << "the listener is not passed on";
  told(clone, second);
  object = nullptr;
  unit->stateIs(Unit::init);
  EXPECT_EQ(log, (Log{"262", "clone 262"}));
}

TEST_F(Reactor, CostsOnePlaceInTheListAndOneCountOnTheEntity) {
  EXPECT_EQ(listed(), 1U);
  EXPECT_EQ(unit->references(), 2U);
  EXPECT_EQ(object->references(), 1U);
  EXPECT_FALSE(object->isRegisteredNotifiee());
  EXPECT_FALSE(object->isWeakReference());
  EXPECT_EQ(object->notifier(), unit);
  EXPECT_TRUE(object->hasNotificationActive());
  const Ptr<Adapter> made = adapter();
  EXPECT_TRUE(made->isRegisteredNotifiee());
  EXPECT_TRUE(made->isWeakReference());
  EXPECT_TRUE(made->hasNotificationActive());
  EXPECT_EQ(made->notifier(), unit);
  const Handle second = object->clone();
  EXPECT_EQ(listed(), 2U);
  EXPECT_EQ(unit->references(), 3U);
}

TEST_F(Reactor, IsWhatItsAdapterReactsFor) {
  const Ptr<Adapter> made = adapter();
  EXPECT_EQ(made->zelReactor(), object);
  EXPECT_EQ(made->zelRawReactor(), object.ptr());
  EXPECT_EQ(made->zelReactorAdapter(), object);
  EXPECT_EQ(Ptr<const Adapter>(made)->zelReactorAdapter(), object);
  EXPECT_FALSE(made->isStreamAdapter());
  EXPECT_EQ(object->references(), 1U);
  EXPECT_EQ(object->zelReactor(), object);
}

TEST_F(Reactor, StandsBehindStreamAdaptersInTheList) {
  const auto profile = Profile::defaultProfileFactory("default");
  Listener generic(log, "generic ");
  const Handle first = told(Zel::generic(profile), generic);
  const auto mirror = Support::mirror(profile, "mirror", log);
  profile->profileNameIs("mine");
  EXPECT_EQ(log, (Log{"mirror", "generic 259"}));
}

/// Throws, and writes down what it is told of that.
class Failing : public Status::GenericIf_ {
public:
  Failing(const Ptr<Status>& object, Log& log) : GenericIf_(object, false), log_(log) {}
  void onAttribute(Zel::AttributeId /*id*/) override { throw std::runtime_error("no"); }
  using GenericIf_::onAttribute;
  void onNotificationException(Zel::AttributeId id) override {
    log_.push_back("exception " + std::to_string(id));
  }
  using GenericIf_::onNotificationException;

private:
  Log& log_;
};

TEST_F(Reactor, ThatThrowsIsToldToTheHandlerAndKeepsNobodyFromHearing) {
  object = nullptr;
  const auto failing = Zel::makeObject<Failing>(unit, log);
  const Handle second = told(Zel::generic(unit), listener);
  static const Zel::PtrInterface* thrower;
  static Zel::AttributeId attribute;
  Zel::notificationExceptionHandlerIs([](Zel::PtrInterface::NotifieeConst& notifiee,
                                         Zel::AttributeId id, const std::exception_ptr& failure) {
    thrower = &notifiee;
    attribute = id;
    EXPECT_THROW(std::rethrow_exception(failure), std::runtime_error);
  });
  unit->stateIs(Unit::active);
  Zel::notificationExceptionHandlerIs(nullptr);
  EXPECT_EQ(log, Log{"262"}) << "not through the reactor's own operation";
  EXPECT_EQ(thrower, failing.ptr());
  EXPECT_EQ(attribute, 262);
  EXPECT_EQ(unit->state(), Unit::active);
}

TEST_F(Reactor, TellsAClassOfTheProgramsOwn) {
  class Own : public Status::GenericIf_ {
  public:
    Own(const Ptr<Status>& object, Log& log) : GenericIf_(object, true), log_(log) {}
    void onAttribute(Zel::AttributeId id) override { log_.push_back(std::to_string(id)); }
    void onAttribute(Zel::AttributeId id, Ptr<const GenericIf>& key) override {
      log_.push_back(std::to_string(id) + ' ' + textOf(key));
    }

  private:
    Log& log_;
  };
  object = nullptr;
  const auto own = Zel::makeObject<Own>(unit, log);
  unit->stateIs(Unit::active);
  unit->groupIs(peers, true);
  EXPECT_EQ(log, (Log{"262", std::string("260 ") + peersText}));
}

} // namespace
