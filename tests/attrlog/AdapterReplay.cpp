#include "Ends.h"

#include "support/Failure.h"

#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// Notifications that are replayed by id, and what a sync mode starts.

namespace {

using namespace Maintenance::Unit;
using Zel::AttributeId;
using Zel::Ptr;
using Zel::StreamAdapter;
using Calls = std::vector<std::string>;

/// An adapter that writes down what it is told.
class Told : public Status::ZelNboAttrLogSa {
public:
  using ZelNboAttrLogSa::ZelNboAttrLogSa;

  void onUnitType() override { calls.push_back("unitType"); }
  void onGroup(const Group::GroupKey& key) override { call("group", key.name()); }
  void onProfileName() override { calls.push_back("profileName"); }
  void onState() override { calls.push_back("state"); }
  void onReason() override { calls.push_back("reason"); }
  void onTimeOfStateChange() override { calls.push_back("timeOfStateChange"); }
  void onOnBootMaintExitTime() override { calls.push_back("onBootMaintExitTime"); }
  void onHistorySize() override { calls.push_back("historySize"); }
  void onHistory(const double& time) override {
    calls.push_back("history " + std::to_string(time));
  }
  void onMaintEnterInstance() override { calls.push_back("maintEnterInstance"); }
  void onMaintExitInstance() override { calls.push_back("maintExitInstance"); }
  void onAggTrafficRate() override { calls.push_back("aggTrafficRate"); }
  void onIntfsViolatingTrafficThreshold(Vexil::IntfId key) override {
    call("intfs", stringValue(key));
  }
  void onTotalIntfTrafficViolations() override { calls.push_back("totalIntfTrafficViolations"); }
  void onGenId() override { calls.push_back("genId"); }
  void handleAttrTransaction(AttributeId attr, AttrTransactionType type, unsigned n) override {
    calls.push_back(std::to_string(attr) + " " + std::to_string(type) + " " + std::to_string(n));
  }

  Calls taken() { return std::exchange(calls, {}); }

  Calls calls;

protected:
  ~Told() override = default;

private:
  void call(const char* name, const Zel::String8& key) {
    calls.push_back(name + std::string(" ") + key.charPtr());
  }
};

class AdapterReplay : public ::testing::Test {
protected:
  AdapterReplay() { told->hasNotificationActiveIs(true); }

  const Sender sender;
  const Ptr<Status> unit = statusFactory("u");
  const Ptr<Told> told = Zel::makeObject<Told>(AnEnd::Flags(StreamAdapter::flagWeakNotifiee), unit,
                                               1U, sender.out(), nullptr);
};

TEST_F(AdapterReplay, OfASingleValueByItsId) {
  const std::initializer_list<std::pair<AttributeId, std::string>> rows = {
      {259, "unitType"},
      {261, "profileName"},
      {262, "state"},
      {263, "reason"},
      {264, "timeOfStateChange"},
      {265, "onBootMaintExitTime"},
      {267, "historySize"},
      {269, "maintEnterInstance"},
      {270, "maintExitInstance"},
      {271, "aggTrafficRate"},
      {273, "totalIntfTrafficViolations"},
      {274, "genId"},
  };
  for (const auto& [attr, name] : rows) {
    told->doNotification(attr, nullptr);
    EXPECT_EQ(told->taken(), Calls{name});
    told->doNotification(-attr, nullptr);
    EXPECT_EQ(told->taken(), Calls{}) << -attr;
  }
}

TEST_F(AdapterReplay, OfACollectionByItsIdOrTheNegatedOneWithTheKey) {
  Group::GroupKey group(Group::groupTypeBgp, "peers");
  double time = 1.5;
  Vexil::IntfId intf("Vlan1");
  for (const AttributeId sign : {1, -1}) {
    told->doNotification(260 * sign, &group);
    told->doNotification(268 * sign, &time);
    told->doNotification(272 * sign, &intf);
    EXPECT_EQ(told->taken(), (Calls{"group peers", "history 1.500000", "intfs Vlan1"}));
  }
}

TEST_F(AdapterReplay, OfAnyOtherIdNothing) {
  for (const AttributeId attr :
       {0, 5, 135, 144, 154, 257, 258, 266, 275, 387, 2147483647, -2147483647, -258, -266, -275}) {
    told->doNotification(attr, nullptr);
    EXPECT_EQ(told->taken(), Calls{}) << attr;
  }
}

TEST_F(AdapterReplay, ANotificationReachesTheSameCallbacks) {
  unit->stateIs(active);
  unit->groupIs(Group::GroupKey(Group::groupTypeBgp, "peers"), true);
  unit->profileNameIs("fast");
  EXPECT_EQ(told->taken(), (Calls{"state", "group peers", "profileName"}));
}

TEST_F(AdapterReplay, WithoutItsEntityNothingIsReplayed) {
  told->notifierIs(nullptr);
  unit->stateIs(active);
  EXPECT_EQ(told->taken(), Calls{});
}

TEST_F(AdapterReplay, OfProfilesAndDirectories) {
  namespace Profile = Maintenance::Profile;
  const auto profile = Profile::defaultProfileFactory("p");
  sender.announce(profile);
  const auto adapter = profile->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(sender.out()));
  adapter->doNotification(258, nullptr);
  EXPECT_EQ(sender.written(), "");
  adapter->doNotification(259, nullptr);
  EXPECT_EQ(sender.written(), plain("00 00 00 20 02 00 00 00 00 00 00 00 "
                                    "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 00 00 00 00 03"));

  const auto dir = statusDirFactory("d");
  sender.announce(dir);
  const auto dirs = dir->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(sender.out()));
  Zel::Name key("x");
  dirs->doNotification(-258, &key); // there is none: the deletion once more
  EXPECT_EQ(sender.written(),
            plain("00 00 00 21 04 00 00 00 00 00 00 00 ff ff fe fe 01 00 00 00 00 "
                  "00 00 00 00 00 01 00 00 00 01 78 03"));
}

TEST_F(AdapterReplay, WhileARecordIsAppliedASyncModeStartsOrEndsAllCollections) {
  told->syncModeIs(StreamAdapter::syncModeResync);
  EXPECT_EQ(told->syncMode(), StreamAdapter::syncModeResync);
  EXPECT_EQ(told->taken(), Calls{});
  told->flagsIs(StreamAdapter::flagReactorActive, true);
  told->syncModeIs(StreamAdapter::syncModeResync);
  EXPECT_EQ(told->taken(), (Calls{"260 0 0", "268 0 0", "272 0 0"}));
  told->syncModeIs(StreamAdapter::syncModeSynced);
  EXPECT_EQ(told->taken(), (Calls{"260 2 0", "268 2 0", "272 2 0"}));
  EXPECT_EQ(told->syncMode(), StreamAdapter::syncModeSynced);
}

TEST_F(AdapterReplay, AnAdapterMadeWhileARecordIsAppliedEndsThemToo) {
  unit->historyIs(1.0, "stale");
  unit->historyIs(2.0, "sent");
  unit->historyMap()[1.0]->zelMarkedForDeletionIs(true);
  const Sender other;
  const auto made = Zel::makeObject<Status::ZelNboAttrLogSa>(
      AnEnd::Flags(StreamAdapter::flagWeakNotifiee | StreamAdapter::flagReactorActive), unit, 1U,
      other.out(), nullptr);
  EXPECT_EQ(unit->historyMap().count(), 1U);
  EXPECT_EQ(unit->history(2.0), "sent");
}

TEST_F(AdapterReplay, OnlyTwoNumbersAreSyncModes) {
  EXPECT_EQ(StreamAdapter::SyncModeInstance(1), StreamAdapter::syncModeSynced);
  EXPECT_EQ(StreamAdapter::SyncModeInstance(2), StreamAdapter::syncModeResync);
  for (const unsigned number : {0U, 3U, 4294967295U}) {
    EXPECT_EQ(Support::rangeFailure([&] { StreamAdapter::SyncModeInstance(number); }), "SyncMode");
  }
}

} // namespace
