#include "support/Slot.h"

#include "foreign/model/ProductAttrLog.h"

#include <Zel/Demuxer>
#include <attrlog/MaintenanceAgentInfo.h>
#include <attrlog/MaintenanceGroup.h>
#include <attrlog/MaintenanceUnitProfile.h>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// The order of the virtual operations of adapters and of what they owe. Those of all notifiees take
// the places up to 27.

namespace {

using Support::slotOf;
using Zel::AttributeId;
using Zel::StreamAdapter;
namespace Log = Zel::NboAttrLog;

TEST(AdapterSlots, ThoseOfAllNotifieesComeFirst) {
  EXPECT_EQ(slotOf(&StreamAdapter::isStreamAdapter), 9);
  EXPECT_EQ(slotOf(&StreamAdapter::notifierIs), 13);
  EXPECT_EQ(slotOf(&StreamAdapter::onZeroReferences), 23);
  EXPECT_EQ(slotOf(&StreamAdapter::actsm), 27);
}

TEST(AdapterSlots, ThenThoseOfStreamAdapters) {
  EXPECT_EQ(slotOf(&StreamAdapter::handleSyncMode), 28);
  EXPECT_EQ(slotOf(&StreamAdapter::handleAttrFlowOut), 29);
  EXPECT_EQ(slotOf(&StreamAdapter::freeResyncState), 30);
  EXPECT_EQ(slotOf(&StreamAdapter::zelOnInit), 31);
  EXPECT_EQ(slotOf(&StreamAdapter::zelInstantiateSerialize), 32);
  EXPECT_EQ(slotOf<const Log::Demuxer* (StreamAdapter::*)() const>(&StreamAdapter::streamDemuxer),
            33);
  EXPECT_EQ(slotOf<Log::Demuxer* (StreamAdapter::*)()>(&StreamAdapter::streamDemuxer), 34);
  EXPECT_EQ(
      slotOf<const Zel::Entity* (StreamAdapter::*)() const>(&StreamAdapter::zelNotifierEntity), 35);
  EXPECT_EQ(slotOf<Zel::Entity* (StreamAdapter::*)()>(&StreamAdapter::zelNotifierEntity), 36);
  EXPECT_EQ(slotOf(&StreamAdapter::doSerializeOrphan), 37);
  EXPECT_EQ(slotOf(&StreamAdapter::handleAttrDeserialization), 38);
  EXPECT_EQ(slotOf(&StreamAdapter::handleAttrTransaction), 39);
  EXPECT_EQ(slotOf(&StreamAdapter::doAssignEntityId), 40);
  EXPECT_EQ(slotOf(&StreamAdapter::flowOutIs), 41);
  EXPECT_EQ(slotOf(&StreamAdapter::realEntityId), 42);
  EXPECT_EQ(slotOf(&StreamAdapter::doNotification), 43);
  EXPECT_EQ(slotOf(&StreamAdapter::audit), 44);
  EXPECT_EQ(slotOf(&StreamAdapter::entityIdInitializedIs), 45);
  EXPECT_EQ(slotOf(&StreamAdapter::syncModeIs), 46);
  EXPECT_EQ(slotOf(&StreamAdapter::entityIdIs), 47);
  EXPECT_EQ(slotOf(&StreamAdapter::streamDemuxerIs), 48);
  EXPECT_EQ(slotOf(&StreamAdapter::filterDel), 49);
  EXPECT_EQ(slotOf(&StreamAdapter::filterIs), 50);
  EXPECT_EQ(slotOf(&StreamAdapter::msgChannelIs), 51);
  EXPECT_EQ(slotOf(&StreamAdapter::notificationDisabledDueToMsgChannelIs), 52);
  EXPECT_EQ(slotOf(&StreamAdapter::zelDoZombieReactors), 53);
  EXPECT_EQ(slotOf(&StreamAdapter::doRemountSelf), 54);
  EXPECT_EQ(slotOf(&StreamAdapter::setFilter), 55);
}

constexpr std::ptrdiff_t firstOwn = 56;

/// The place behind the last operation of a class.
template <class Base>
std::ptrdiff_t endOf() {
  struct Probe : Base {
    using Base::Base;
    virtual void probe() {}
  };
  static_assert(sizeof(Probe) == sizeof(Base));
  return slotOf(&Probe::probe);
}

TEST(AdapterSlots, ThenTheCallbacksOfAUnitInAscendingId) {
  using A = Maintenance::Unit::Status::ZelNboAttrLogSa;
  EXPECT_EQ(slotOf(&A::onUnitType), firstOwn);
  EXPECT_EQ(slotOf(&A::onGroup), firstOwn + 1);
  EXPECT_EQ(slotOf(&A::onProfileName), firstOwn + 2);
  EXPECT_EQ(slotOf(&A::onState), firstOwn + 3);
  EXPECT_EQ(slotOf(&A::onReason), firstOwn + 4);
  EXPECT_EQ(slotOf(&A::onTimeOfStateChange), firstOwn + 5);
  EXPECT_EQ(slotOf(&A::onOnBootMaintExitTime), firstOwn + 6);
  EXPECT_EQ(slotOf(&A::onHistorySize), firstOwn + 7);
  EXPECT_EQ(slotOf(&A::onHistory), firstOwn + 8);
  EXPECT_EQ(slotOf(&A::onMaintEnterInstance), firstOwn + 9);
  EXPECT_EQ(slotOf(&A::onMaintExitInstance), firstOwn + 10);
  EXPECT_EQ(slotOf(&A::onAggTrafficRate), firstOwn + 11);
  EXPECT_EQ(slotOf(&A::onIntfsViolatingTrafficThreshold), firstOwn + 12);
  EXPECT_EQ(slotOf(&A::onTotalIntfTrafficViolations), firstOwn + 13);
  EXPECT_EQ(slotOf(&A::onGenId), firstOwn + 14);
  EXPECT_EQ(endOf<A>(), firstOwn + 15);
}

TEST(AdapterSlots, ThenTheCallbackOfADirectoryOrAProfile) {
  using namespace Maintenance;
  EXPECT_EQ(slotOf(&Unit::StatusDir::ZelNboAttrLogSa::onStatus), firstOwn);
  EXPECT_EQ(endOf<Unit::StatusDir::ZelNboAttrLogSa>(), firstOwn + 1);
  EXPECT_EQ(slotOf(&Profile::ConfigDir::ZelNboAttrLogSa::onConfig), firstOwn);
  EXPECT_EQ(endOf<Profile::ConfigDir::ZelNboAttrLogSa>(), firstOwn + 1);
  EXPECT_EQ(slotOf(&Profile::DefaultProfile::ZelNboAttrLogSa::onProfileName), firstOwn);
  EXPECT_EQ(endOf<Profile::DefaultProfile::ZelNboAttrLogSa>(), firstOwn + 1);
  EXPECT_EQ(endOf<Profile::Config::ZelNboAttrLogSa>(), firstOwn);
}

TEST(AdapterSlots, ThenTheCallbacksOfConfiguredUnitsAndInputs) {
  using namespace Maintenance::Unit;
  EXPECT_EQ(slotOf(&Config::ZelNboAttrLogSa::onUnitType), firstOwn);
  EXPECT_EQ(slotOf(&Config::ZelNboAttrLogSa::onGroup), firstOwn + 1);
  EXPECT_EQ(slotOf(&Config::ZelNboAttrLogSa::onProfileName), firstOwn + 2);
  EXPECT_EQ(endOf<Config::ZelNboAttrLogSa>(), firstOwn + 3);
  EXPECT_EQ(slotOf(&ConfigDir::ZelNboAttrLogSa::onConfig), firstOwn);
  EXPECT_EQ(endOf<ConfigDir::ZelNboAttrLogSa>(), firstOwn + 1);
  EXPECT_EQ(slotOf(&Input::ZelNboAttrLogSa::onPriority), firstOwn);
  EXPECT_EQ(slotOf(&Input::ZelNboAttrLogSa::onUnit), firstOwn + 1);
  EXPECT_EQ(endOf<Input::ZelNboAttrLogSa>(), firstOwn + 2);
  EXPECT_EQ(slotOf(&MergedInput::ZelNboAttrLogSa::onPriority), firstOwn);
  EXPECT_EQ(endOf<MergedInput::ZelNboAttrLogSa>(), firstOwn + 1);
  EXPECT_EQ(slotOf(&MergedInputDir::ZelNboAttrLogSa::onUnit), firstOwn);
  EXPECT_EQ(endOf<MergedInputDir::ZelNboAttrLogSa>(), firstOwn + 1);
}

TEST(AdapterSlots, ThenTheCallbacksOfGroupsUnitProfilesAndTheAgent) {
  using namespace Maintenance;
  EXPECT_EQ(slotOf(&MaintenanceGroup::Config::ZelNboAttrLogSa::onProfile), firstOwn);
  EXPECT_EQ(endOf<MaintenanceGroup::Config::ZelNboAttrLogSa>(), firstOwn + 1);
  EXPECT_EQ(slotOf(&MaintenanceGroup::ConfigDir::ZelNboAttrLogSa::onMaintenanceGroup), firstOwn);
  EXPECT_EQ(endOf<MaintenanceGroup::ConfigDir::ZelNboAttrLogSa>(), firstOwn + 1);
  EXPECT_EQ(slotOf(&MaintenanceUnitProfile::Config::ZelNboAttrLogSa::onOnBootDuration), firstOwn);
  EXPECT_EQ(slotOf(&MaintenanceUnitProfile::Config::ZelNboAttrLogSa::onOnBootEnabled),
            firstOwn + 1);
  EXPECT_EQ(endOf<MaintenanceUnitProfile::Config::ZelNboAttrLogSa>(), firstOwn + 2);
  EXPECT_EQ(slotOf(&MaintenanceUnitProfile::ConfigDir::ZelNboAttrLogSa::onConfig), firstOwn);
  EXPECT_EQ(endOf<MaintenanceUnitProfile::ConfigDir::ZelNboAttrLogSa>(), firstOwn + 1);
  using A = AgentInfo::ZelNboAttrLogSa;
  EXPECT_EQ(slotOf(&A::onAgentPid), firstOwn);
  EXPECT_EQ(slotOf(&A::onRestartCount), firstOwn + 1);
  EXPECT_EQ(slotOf(&A::onOnBoot), firstOwn + 2);
  EXPECT_EQ(slotOf(&A::onOnBootMaintEnter), firstOwn + 3);
  EXPECT_EQ(slotOf(&A::onReady), firstOwn + 4);
  EXPECT_EQ(endOf<A>(), firstOwn + 5);
}

TEST(AdapterSlots, OfADerivedTypeThoseOfItsBaseComeFirst) {
  using A = Foreign::Perishable::ZelNboAttrLogSa;
  EXPECT_EQ(slotOf(&A::onPrice), firstOwn);
  EXPECT_EQ(slotOf(&A::onSupplier), firstOwn + 1);
  EXPECT_EQ(slotOf(&A::onShelfLife), firstOwn + 2);
  EXPECT_EQ(slotOf(&A::onBatch), firstOwn + 3);
  EXPECT_EQ(slotOf(&A::onRecalled), firstOwn + 4);
  EXPECT_EQ(slotOf(&A::onSold), firstOwn + 5);
  EXPECT_EQ(endOf<A>(), firstOwn + 6);
}

TEST(AdapterSlots, OfWhatIsOwed) {
  using Log::FlowOut;
  EXPECT_EQ(slotOf(&FlowOut::hasDirtyAttributes), 7);
  EXPECT_EQ(slotOf<void (FlowOut::*)(unsigned)>(&FlowOut::forwardRefDel), 8);
  EXPECT_EQ(slotOf<void (FlowOut::*)(FlowOut::ForwardRefs::iterator&)>(&FlowOut::forwardRefDel), 9);
  EXPECT_EQ(slotOf(&FlowOut::forwardRefNotify), 10);
  EXPECT_EQ(slotOf(&FlowOut::forwardRefEnq), 11);
  EXPECT_EQ(slotOf(&FlowOut::forwardRefDeq), 12);
  EXPECT_EQ(slotOf(&FlowOut::forwardRefIs), 13);
  EXPECT_EQ(slotOf(&FlowOut::attrIdIs), 14);
  EXPECT_EQ(slotOf(&FlowOut::bookmarkIs), 15);
  EXPECT_EQ(slotOf(&FlowOut::entityIdStatusIs), 16);
  EXPECT_EQ(slotOf(&FlowOut::entityIdSeqnoIs), 17);
  EXPECT_EQ(slotOf(&FlowOut::valueIterIs), 18);
  EXPECT_EQ(slotOf(&FlowOut::valueIterKeyIs), 19);
  EXPECT_EQ(slotOf(&FlowOut::outstandingKeysInc), 20);
  EXPECT_EQ(slotOf(&FlowOut::outstandingKeysIs), 21);
  EXPECT_EQ(slotOf(&FlowOut::zelDataBitsIs), 22);
  EXPECT_EQ(slotOf(&FlowOut::indIs), 23);
  EXPECT_EQ(slotOf(&FlowOut::entityVersionIs), 24);
  EXPECT_EQ(slotOf<void (FlowOut::*)(AttributeId)>(&FlowOut::pendingAbortDel), 25);
  EXPECT_EQ(
      slotOf<void (FlowOut::*)(FlowOut::ZelPendingAbort::Iterator&)>(&FlowOut::pendingAbortDel),
      26);
  EXPECT_EQ(slotOf(&FlowOut::pendingAbortNotify), 27);
  EXPECT_EQ(slotOf(&FlowOut::pendingAbortIs), 28);
  EXPECT_EQ(slotOf(&FlowOut::streamAdapterIs), 29);
}

TEST(AdapterFlags, StandAtTheirBits) {
  EXPECT_EQ(StreamAdapter::flagReadOnly, 0x4U);
  EXPECT_EQ(StreamAdapter::flagRemoteReadOnly, 0x8U);
  EXPECT_EQ(StreamAdapter::flagReactorActive, 0x10U);
  EXPECT_EQ(StreamAdapter::flagChildPending, 0x20U);
  EXPECT_EQ(StreamAdapter::flagWeakNotifiee, 0x40U);
  EXPECT_EQ(StreamAdapter::flagMuted, 0x100U);
  EXPECT_EQ(StreamAdapter::flagSyncFanOut, 0x2000U);
  EXPECT_EQ(StreamAdapter::flagNoFlowOut, 0x100000U);
  EXPECT_EQ(StreamAdapter::flagScheduledFlowOut, 0x400000U);
  EXPECT_EQ(StreamAdapter::flagAnnounced, 0x2000000U);
  EXPECT_EQ(StreamAdapter::flagStreaming, 0x4000000U);
  EXPECT_EQ(StreamAdapter::flagForceFlowOut, 0x8000000U);
  EXPECT_EQ(StreamAdapter::flagsOfOne, 0x3c30U);
  EXPECT_EQ(Log::FlowOut::dataBitSuspended, 16);
  EXPECT_EQ(Log::FlowOut::dataBitEndDeferred, 4);
  EXPECT_EQ(Zel::attrIdFlowEnd, 0x7fffffff);
}

} // namespace
