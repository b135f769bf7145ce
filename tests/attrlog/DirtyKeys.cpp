#include "Ends.h"

#include "foreign/model/ProductAttrLog.h"

#include <attrlog/MaintenanceAgentInfo.h>
#include <attrlog/MaintenanceGroup.h>
#include <attrlog/MaintenanceUnitProfile.h>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

#include <limits>

// The keys that an adapter owes, and what else makes it owe something.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;
using FlowOut = Status::ZelNboAttrLogSa::FlowOut;

template <class T>
Ptr<typename T::ZelNboAttrLogSa::FlowOut> cleanOf(const Ptr<T>& entity) {
  const auto out = Zel::makeObject<Zel::NboAttrLog::Out>(65536U);
  return Zel::makeObject<typename T::ZelNboAttrLogSa::FlowOut>(
      out, entity->zelNboAttrLogSaIs({}, 1, out, nullptr), Zel::ConnectDesc(), false, 0x7fffffff);
}

class DirtyKeys : public ::testing::Test {
protected:
  const Ptr<Status> unit = statusFactory("u");
  const Ptr<FlowOut> flowOut = cleanOf(unit);
  const Group::GroupKey key{Group::groupTypeBgp, "a"};
};

TEST_F(DirtyKeys, OneMarkedTwiceIsThereOnce) {
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
  flowOut->zelIsGroupDirtyIs(key, true);
  flowOut->zelIsGroupDirtyIs(key, true);
  EXPECT_EQ(flowOut->zelIsGroupDirtyMap().count(), 1U);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
}

TEST_F(DirtyKeys, PresenceCountsAndNotTheMark) {
  flowOut->zelIsGroupDirtyIs(key, false);
  EXPECT_EQ(flowOut->zelIsGroupDirtyMap().count(), 1U);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  EXPECT_FALSE(flowOut->zelIsGroupDirtyMap()[key]->zelValue());
  flowOut->zelIsGroupDirtyIs(key, true);
  EXPECT_TRUE(flowOut->zelIsGroupDirtyMap()[key]->zelValue());
  flowOut->zelIsGroupDirtyIs(key, false);
  EXPECT_FALSE(flowOut->zelIsGroupDirtyMap()[key]->zelValue());
}

TEST_F(DirtyKeys, DeletingTellsWhetherItWasThere) {
  EXPECT_FALSE(flowOut->zelIsGroupDirtyDel(key));
  flowOut->zelIsGroupDirtyIs(key, true);
  EXPECT_TRUE(flowOut->zelIsGroupDirtyDel(key));
  EXPECT_FALSE(flowOut->zelIsGroupDirtyDel(key));
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
}

TEST_F(DirtyKeys, DeletingByIteratorDoesNothingAtTheEnd) {
  flowOut->zelIsGroupDirtyIs(key, true);
  FlowOut::ZelIsGroupDirtyMap::Iterator at(flowOut->zelIsGroupDirtyMap());
  EXPECT_TRUE(flowOut->zelIsGroupDirtyDel(at));
  at.advance();
  EXPECT_FALSE(flowOut->zelIsGroupDirtyDel(at));
  EXPECT_EQ(flowOut->zelIsGroupDirtyMap().count(), 0U);
  flowOut->zelIsHistoryDirtyIs(1.0, true);
  FlowOut::ZelIsHistoryDirtyMap::Iterator time(flowOut->zelIsHistoryDirtyMap());
  EXPECT_TRUE(flowOut->zelIsHistoryDirtyDel(time));
  EXPECT_EQ(flowOut->zelIsHistoryDirtyMap().count(), 0U);
}

TEST_F(DirtyKeys, ANewRecordIsInTheTable) {
  const auto made = flowOut->newZelIsGroupDirty(key, true);
  EXPECT_EQ(made->zelKey(), key);
  EXPECT_TRUE(made->zelValue());
  EXPECT_EQ(flowOut->zelIsGroupDirtyMap()[key], made.ptr());
  EXPECT_EQ(flowOut->newZelIsHistoryDirty(2.0, false)->zelKey(), 2.0);
  EXPECT_EQ(flowOut->zelIsHistoryDirtyMap().count(), 1U);
}

TEST_F(DirtyKeys, TimesComeOutInAscendingOrder) {
  for (const double time : {3.0, -1.0, 2.0, 0.5}) {
    flowOut->zelIsHistoryDirtyIs(time, true);
  }
  std::vector<double> times;
  for (FlowOut::ZelIsHistoryDirtyMap::Iterator at(flowOut->zelIsHistoryDirtyMap()); at;
       at.advance()) {
    times.push_back(at.ptr()->zelKey());
  }
  EXPECT_EQ(times, (std::vector<double>{-1.0, 0.5, 2.0, 3.0}));
}

TEST_F(DirtyKeys, OtherKeysComeOutInTheOrderOfTheirCollection) {
  for (unsigned port = 1; port <= 40; ++port) {
    const Vexil::IntfId intf(0x01010000, port);
    unit->intfsViolatingTrafficThresholdIs(intf, true);
    flowOut->zelIsIntfsViolatingTrafficThresholdDirtyIs(Vexil::IntfId(0x01010000, 41 - port), true);
  }
  FlowOut::ZelIsIntfsViolatingTrafficThresholdDirtyMap::Iterator dirty(
      flowOut->zelIsIntfsViolatingTrafficThresholdDirtyMap());
  Status::IntfsViolatingTrafficThresholdMap::Iterator at(unit->intfsViolatingTrafficThresholdMap());
  unsigned count = 0;
  for (; at && dirty; at.advance(), dirty.advance(), ++count) {
    EXPECT_EQ(dirty.ptr()->zelKey(), at.ptr()->zelKey());
  }
  EXPECT_EQ(count, 40U);
  EXPECT_FALSE(at);
  EXPECT_FALSE(dirty);
}

TEST_F(DirtyKeys, AKeyThatEqualsNothingIsKeptOnce) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  flowOut->zelIsHistoryDirtyIs(none, true);
  flowOut->zelIsHistoryDirtyIs(none, true);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  EXPECT_TRUE(flowOut->zelIsHistoryDirtyDel(none));
  EXPECT_FALSE(flowOut->zelIsHistoryDirtyDel(none));
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
}

TEST_F(DirtyKeys, EachTableMakesItOweSomething) {
  flowOut->zelIsHistoryDirtyIs(1.0, true);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  flowOut->zelIsHistoryDirtyDel(1.0);
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
  flowOut->zelIsIntfsViolatingTrafficThresholdDirtyIs(Vexil::IntfId(1, 2), true);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  flowOut->zelIsIntfsViolatingTrafficThresholdDirtyDel(Vexil::IntfId(1, 2));
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
}

TEST_F(DirtyKeys, OfDirectoriesAndDerivedTypes) {
  const auto profiles = cleanOf(Maintenance::Profile::configDirFactory("d"));
  const Maintenance::Profile::ProfileKey profile(Maintenance::Profile::profileTypeBgp, "p");
  profiles->zelIsConfigDirtyIs(profile, true);
  EXPECT_TRUE(profiles->hasDirtyAttributes());
  EXPECT_TRUE(profiles->zelIsConfigDirtyDel(profile));
  EXPECT_FALSE(profiles->hasDirtyAttributes());

  const auto units = cleanOf(statusDirFactory("d"));
  units->zelIsStatusDirtyIs("u", true);
  EXPECT_TRUE(units->hasDirtyAttributes());
  EXPECT_TRUE(units->zelIsStatusDirtyDel("u"));
  EXPECT_FALSE(units->hasDirtyAttributes());

  const auto milk = cleanOf(Zel::makeObject<Foreign::Perishable>("milk"));
  milk->zelIsSupplierDirtyIs("s", true);
  EXPECT_TRUE(milk->hasDirtyAttributes());
  EXPECT_TRUE(milk->zelIsSupplierDirtyDel("s"));
  milk->zelIsBatchDirtyIs("b", true);
  EXPECT_TRUE(milk->hasDirtyAttributes());
  EXPECT_TRUE(milk->zelIsBatchDirtyDel("b"));
  EXPECT_FALSE(milk->hasDirtyAttributes());
}

TEST_F(DirtyKeys, OfConfiguredUnitsAndInputs) {
  const auto config = cleanOf(configFactory("u"));
  config->zelIsGroupDirtyIs(key, true);
  EXPECT_TRUE(config->hasDirtyAttributes());
  EXPECT_TRUE(config->zelIsGroupDirtyDel(key));
  EXPECT_FALSE(config->hasDirtyAttributes());

  const auto configured = cleanOf(configDirFactory("d"));
  configured->zelIsConfigDirtyIs("u", true);
  EXPECT_TRUE(configured->hasDirtyAttributes());
  EXPECT_TRUE(configured->zelIsConfigDirtyDel("u"));
  EXPECT_FALSE(configured->hasDirtyAttributes());

  const auto input = cleanOf(inputFactory("i"));
  input->zelIsUnitDirtyIs("u", true);
  EXPECT_TRUE(input->hasDirtyAttributes());
  EXPECT_EQ(input->zelIsUnitDirtyMap().count(), 1U);
  EXPECT_TRUE(input->zelIsUnitDirtyDel("u"));
  EXPECT_FALSE(input->hasDirtyAttributes());

  const auto merged = cleanOf(mergedInputDirFactory("d"));
  merged->zelIsUnitDirtyIs("u", true);
  EXPECT_TRUE(merged->hasDirtyAttributes());
  EXPECT_TRUE(merged->zelIsUnitDirtyDel("u"));
  EXPECT_FALSE(merged->hasDirtyAttributes());
}

TEST_F(DirtyKeys, OfGroupsUnitProfilesAndTheAgent) {
  using namespace Maintenance;
  const auto group = cleanOf(MaintenanceGroup::configFactory("g", {}));
  const Profile::ProfileKey profile(Profile::profileTypeBgp, "p");
  group->zelIsProfileDirtyIs(profile, true);
  EXPECT_TRUE(group->hasDirtyAttributes());
  EXPECT_TRUE(group->zelIsProfileDirtyDel(profile));
  EXPECT_FALSE(group->hasDirtyAttributes());

  const auto groups = cleanOf(MaintenanceGroup::configDirFactory("d"));
  groups->zelIsMaintenanceGroupDirtyIs({}, true);
  EXPECT_TRUE(groups->hasDirtyAttributes());
  EXPECT_TRUE(groups->zelIsMaintenanceGroupDirtyDel({}));
  EXPECT_FALSE(groups->hasDirtyAttributes());

  const auto unitProfiles = cleanOf(MaintenanceUnitProfile::configDirFactory("d"));
  unitProfiles->zelIsConfigDirtyIs("p", true);
  EXPECT_TRUE(unitProfiles->hasDirtyAttributes());
  EXPECT_TRUE(unitProfiles->zelIsConfigDirtyDel("p"));
  EXPECT_FALSE(unitProfiles->hasDirtyAttributes());

  const auto agent = cleanOf(agentInfoFactory("a"));
  agent->zelIsOnBootMaintEnterDirtyIs("u", true);
  EXPECT_TRUE(agent->hasDirtyAttributes());
  EXPECT_EQ(agent->zelIsOnBootMaintEnterDirtyMap().count(), 1U);
  EXPECT_TRUE(agent->zelIsOnBootMaintEnterDirtyDel("u"));
  EXPECT_FALSE(agent->hasDirtyAttributes());
}

TEST_F(DirtyKeys, WhatConcernsNoAttributeIsOwedToo) {
  flowOut->pendingAbortIs(261, true);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  EXPECT_EQ(flowOut->pendingAbort().count(), 1U);
  flowOut->pendingAbortIs(261, true);
  EXPECT_EQ(flowOut->pendingAbort().count(), 1U);
  flowOut->pendingAbortDel(261);
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
  flowOut->pendingAbortIs(268, true);
  FlowOut::ZelPendingAbort::Iterator at(flowOut->pendingAbort());
  flowOut->pendingAbortDel(at);
  at.advance();
  EXPECT_FALSE(at);
  flowOut->pendingAbortDel(at);
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
}

TEST_F(DirtyKeys, AdaptersThatWaitComeOutInTheOrderTheyCame) {
  const auto out = Zel::makeObject<Zel::NboAttrLog::Out>(65536U);
  const auto other = statusFactory("other");
  const Ptr<Zel::StreamAdapter> first = unit->zelNboAttrLogSaIs({}, 1, out, nullptr);
  const Ptr<Zel::StreamAdapter> second = other->zelNboAttrLogSaIs({}, 1, out, nullptr);
  flowOut->forwardRefEnq(first);
  flowOut->forwardRefEnq(second);
  EXPECT_TRUE(flowOut->hasDirtyAttributes());
  EXPECT_EQ(flowOut->forwardRefDeq(), first);
  EXPECT_EQ(flowOut->forwardRefDeq(), second);
  EXPECT_FALSE(flowOut->forwardRefDeq());
  flowOut->forwardRefIs(7, first);
  flowOut->forwardRefIs(7, second);
  flowOut->forwardRefDel(6);
  EXPECT_EQ(flowOut->forwardRefDeq(), second);
  flowOut->forwardRefIs(7, first);
  flowOut->forwardRefDel(7);
  EXPECT_FALSE(flowOut->hasDirtyAttributes());
}

TEST_F(DirtyKeys, SettersStoreWhatTheyAreGiven) {
  flowOut->attrIdIs(268);
  flowOut->outstandingKeysIs(1);
  flowOut->outstandingKeysInc(4);
  flowOut->zelDataBitsIs(0x14);
  EXPECT_EQ(flowOut->attrId(), 268);
  EXPECT_EQ(flowOut->outstandingKeys(), 5U);
  EXPECT_EQ(flowOut->zelDataBits(), 0x14);
  EXPECT_TRUE(flowOut->hasDataBit(FlowOut::dataBitSuspended));
  EXPECT_TRUE(flowOut->hasDataBit(FlowOut::dataBitEndDeferred));
  flowOut->dataBitIs(FlowOut::dataBitSuspended, false);
  EXPECT_EQ(flowOut->zelDataBits(), 4);
}

} // namespace
