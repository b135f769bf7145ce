#include "Ends.h"

#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// What becomes of an adapter: made, switched off and on, given another entity, outliving its
// entity.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;
using Zel::StreamAdapter;
using Flags = AnEnd::Flags;
using Adapter = Status::ZelNboAttrLogSa;
using Notifiee = Adapter::ZelNboAttrLogSaAdapter_;

constexpr unsigned weak = StreamAdapter::flagWeakNotifiee;

class AdapterLife : public ::testing::Test {
protected:
  Ptr<Adapter> make(unsigned flags = weak) const {
    auto made = Zel::makeObject<Adapter>(Flags(flags), unit, 1U, sender.out(), nullptr);
    made->hasNotificationActiveIs(true);
    return made;
  }
  /// The adapter of a root that has been announced.
  Ptr<Adapter> announced() const {
    sender.announce(unit);
    return Zel::ptrCast<Adapter>(unit->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(out)));
  }
  /// The first of the unit's notifiees.
  Status::NotifieeConst* head() const { return unit->zelNotifieeList().head(); }
  bool writes() const {
    unit->genIdInc(1);
    return !sender.written().empty();
  }

  const Sender sender;
  const Ptr<Zel::NboAttrLog::Out> out = sender.out();
  Ptr<Status> unit = statusFactory("u");
};

TEST_F(AdapterLife, HearsOfNothingUntilItIsSwitchedOn) {
  const auto adapter = Zel::makeObject<Adapter>(Flags(weak), unit, 1U, out, nullptr);
  EXPECT_FALSE(adapter->hasNotificationActive());
  EXPECT_EQ(head(), nullptr);
  adapter->hasNotificationActiveIs(true);
  EXPECT_TRUE(adapter->hasNotificationActive());
  ASSERT_NE(head(), nullptr);
  EXPECT_TRUE(head()->hasNotificationActive());
}

TEST_F(AdapterLife, TheEntitysNotifieeStandsForTheAdapter) {
  const Ptr<Adapter> adapter = make();
  auto* const notifiee = static_cast<Notifiee*>(head());
  EXPECT_EQ(notifiee->zelReactorAdapter(), adapter.ptr());
  EXPECT_EQ(notifiee->zelReactor(), adapter);
  EXPECT_EQ(notifiee->zelRawReactor(), adapter.ptr());
  EXPECT_FALSE(notifiee->isStreamAdapter());
  EXPECT_TRUE(adapter->isStreamAdapter());
  EXPECT_TRUE(notifiee->isWeakReference());
  EXPECT_TRUE(notifiee->zel_bitSet().has(0x4000000));
  EXPECT_EQ(notifiee->notifier(), unit);
  EXPECT_EQ(adapter->notifier(), unit);
  EXPECT_EQ(adapter->zelNotifierEntity(), unit.ptr());
}

TEST_F(AdapterLife, StartsWithTheFlagsThatItIsGiven) {
  EXPECT_EQ(make(0x40)->zel_bitSet().word(), 0x4100040U);
  EXPECT_EQ(make(0xffffffff)->zel_bitSet().word() & 0x5700000U, 0x4100000U);
  EXPECT_EQ(make()->syncMode(), StreamAdapter::syncModeSynced);
  EXPECT_EQ(make()->entityId(), Zel::EntityId{});
  EXPECT_EQ(make()->nboAttrLogOut(), out);
  EXPECT_EQ(make()->streamDemuxer(), &sender.demuxer());
  EXPECT_FALSE(make()->flowOut());
  EXPECT_EQ(make()->channelEntry(), nullptr);
}

TEST_F(AdapterLife, AWeakOneDoesNotKeepItsEntity) {
  EXPECT_EQ(unit->references(), 1U);
  const Ptr<Adapter> adapter = make(weak);
  EXPECT_TRUE(adapter->isWeakReference());
  EXPECT_EQ(unit->references(), 1U);
}

TEST_F(AdapterLife, OneThatIsNotWeakDoes) {
  const Ptr<Adapter> adapter = make(0);
  EXPECT_FALSE(adapter->isWeakReference());
  EXPECT_EQ(unit->references(), 2U);
  adapter->notifierIs(nullptr);
  EXPECT_EQ(unit->references(), 1U);
}

TEST_F(AdapterLife, WithItsEntityItLeavesTheConnection) {
  const Ptr<Adapter> adapter = announced();
  const Ptr<Notifiee> notifiee(static_cast<Notifiee*>(head()));
  EXPECT_EQ(sender.demuxer().adapters(), 1U);
  unit = nullptr;
  EXPECT_EQ(sender.demuxer().adapters(), 0U);
  EXPECT_FALSE(adapter->notifier());
  EXPECT_EQ(adapter->zelNotifierEntity(), nullptr);
  EXPECT_FALSE(notifiee->notifier());
  EXPECT_FALSE(notifiee->hasNotificationActive());
  EXPECT_EQ(sender.written(), "");
}

TEST_F(AdapterLife, OfAMemberWithoutItsEntityThereIsNothingToSend) {
  const Ptr<Adapter> adapter = announced();
  adapter->flagsIs(StreamAdapter::flagMember, true);
  adapter->notifierIs(nullptr);
  adapter->onGenId();
  EXPECT_EQ(sender.written(), "");
  EXPECT_FALSE(adapter->notifier());
}

TEST_F(AdapterLife, WithoutItTheNotifieeReactsNoMore) {
  Ptr<Adapter> adapter = make();
  const Ptr<Notifiee> notifiee(static_cast<Notifiee*>(head()));
  adapter = nullptr;
  EXPECT_EQ(notifiee->zelReactorAdapter(), nullptr);
  EXPECT_FALSE(notifiee->zelReactor());
  EXPECT_EQ(notifiee->zelRawReactor(), nullptr);
  EXPECT_FALSE(notifiee->notifier());
  EXPECT_EQ(head(), nullptr);
  EXPECT_EQ(unit->references(), 1U);
  notifiee->onState();
  notifiee->onGroup(Group::GroupKey());
  notifiee->onNotificationException(262);
  notifiee->onZeroReferences();
  EXPECT_EQ(sender.written(), "");
}

TEST_F(AdapterLife, SwitchedOffItWritesNothing) {
  const Ptr<Adapter> adapter = announced();
  EXPECT_TRUE(writes());
  adapter->hasNotificationActiveIs(false);
  EXPECT_EQ(head(), nullptr);
  EXPECT_FALSE(writes());
  adapter->hasNotificationActiveIs(false);
  adapter->hasNotificationActiveIs(true);
  EXPECT_TRUE(writes());
}

TEST_F(AdapterLife, ItsNotifieeSwitchesItTo) {
  const Ptr<Adapter> adapter = announced();
  const Ptr<Notifiee> notifiee(static_cast<Notifiee*>(head()));
  notifiee->hasNotificationActiveIs(false);
  EXPECT_FALSE(adapter->hasNotificationActive());
  EXPECT_EQ(head(), nullptr);
  notifiee->hasNotificationActiveIs(true);
  EXPECT_TRUE(adapter->hasNotificationActive());
  EXPECT_EQ(head(), notifiee.ptr());
}

TEST_F(AdapterLife, AZombieStaysWithTheConnectionAndWritesNothing) {
  const Ptr<Adapter> adapter = announced();
  const Ptr<Notifiee> notifiee(static_cast<Notifiee*>(head()));
  adapter->zelDoZombieReactors(true);
  EXPECT_TRUE(adapter->zelMarkedForDeletion());
  EXPECT_TRUE(notifiee->zelMarkedForDeletion());
  EXPECT_FALSE(adapter->hasNotificationActive());
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(adapter->notifier(), unit);
  EXPECT_EQ(sender.demuxer().adapter({2, 0}), adapter.ptr());
  EXPECT_FALSE(writes());
  adapter->zelDoZombieReactors(true);
  EXPECT_TRUE(adapter->zelMarkedForDeletion());
}

TEST_F(AdapterLife, SwitchedOffItLeavesTheConnectionWithItsEntity) {
  const Ptr<Adapter> adapter = announced();
  EXPECT_EQ(unit->references(), 1U);
  adapter->hasNotificationActiveIs(false);
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(adapter->notifier()->name(), "u");
  sender.demuxer().createFlowOut(adapter, {}, false, 0); // which owes all, and never will again
  unit = nullptr;
  EXPECT_FALSE(adapter->notifier());
  EXPECT_EQ(sender.demuxer().adapters(), 0U);
  EXPECT_EQ(sender.written(), "");
  adapter->hasNotificationActiveIs(true);
  EXPECT_FALSE(adapter->notifier());
}

TEST_F(AdapterLife, ARecordForOneWhoseEntityEndedWhileItWasOffIsForNobody) {
  const Ptr<Adapter> adapter = announced();
  adapter->hasNotificationActiveIs(false);
  unit = nullptr;
  const Sender other; // which gives its first entity the same id
  const auto same = statusFactory("u");
  other.announce(same);
  same->genIdIs(1);
  sender.apply(other.written());
  EXPECT_EQ(sender.counts().unknownEntities, 1U);
  EXPECT_EQ(sender.failure(), "");
}

TEST_F(AdapterLife, BeforeItIsSwitchedOnItCountsNothing) {
  const auto adapter = Zel::makeObject<Adapter>(Flags(weak), unit, 1U, out, nullptr);
  EXPECT_EQ(unit->references(), 1U);
  unit = nullptr;
  EXPECT_FALSE(adapter->notifier());
}

TEST_F(AdapterLife, AZombieComesBack) {
  const Ptr<Adapter> adapter = announced();
  adapter->zelDoZombieReactors(true);
  adapter->zelDoZombieReactors(false);
  EXPECT_FALSE(adapter->zelMarkedForDeletion());
  ASSERT_NE(head(), nullptr);
  EXPECT_FALSE(head()->zelMarkedForDeletion());
  EXPECT_TRUE(writes());
  EXPECT_TRUE(adapter->hasNotificationActive());
  adapter->hasNotificationActiveIs(false);
  EXPECT_FALSE(writes());
}

TEST_F(AdapterLife, AZombieWithoutAnEntityIsOnlyMarked) {
  const Ptr<Adapter> adapter = make();
  adapter->notifierIs(nullptr);
  adapter->zelDoZombieReactors(true);
  EXPECT_TRUE(adapter->zelMarkedForDeletion());
  EXPECT_TRUE(adapter->hasNotificationActive());
}

TEST_F(AdapterLife, TheEntityThatItHasAlreadyOnlyEndsItsRegistration) {
  const Ptr<Adapter> adapter = make();
  adapter->isRegisteredNotifieeIs(true);
  EXPECT_TRUE(adapter->isRegisteredNotifiee());
  adapter->notifierIs(unit);
  EXPECT_FALSE(adapter->isRegisteredNotifiee());
  EXPECT_NE(head(), nullptr);
  EXPECT_EQ(unit->references(), 1U);
}

TEST_F(AdapterLife, AnotherEntityTakesThePlaceOfTheFirst) {
  const auto other = statusFactory("other");
  const Ptr<Adapter> adapter = announced();
  adapter->notifierIs(other);
  EXPECT_EQ(head(), nullptr);
  EXPECT_EQ(other->zelNotifieeList().head()->zelRawReactor(), adapter.ptr());
  EXPECT_EQ(adapter->notifier(), other);
  EXPECT_EQ(unit->references(), 1U);
  EXPECT_EQ(other->references(), 1U);
  EXPECT_FALSE(writes());
  other->genIdIs(5);
  EXPECT_NE(sender.written(), "");
}

TEST_F(AdapterLife, ItsWorkIsOfItsOwnClass) {
  const Ptr<Adapter> adapter = make();
  const auto flowOut = adapter->flowOutIs(out, Zel::ConnectDesc(), false, 261);
  const auto own = Zel::ptrCast<Adapter::FlowOut>(flowOut);
  ASSERT_TRUE(own);
  EXPECT_EQ(own->zelDirtyBitSet0().word(), 0xddfcU);
  EXPECT_EQ(own->streamAdapter(), adapter.ptr());
  EXPECT_FALSE(adapter->flowOut()); // the demuxer's doing
}

TEST_F(AdapterLife, TheDemuxerGivesItsWork) {
  const Ptr<Adapter> adapter = announced();
  EXPECT_TRUE(adapter->hasFlag(StreamAdapter::flagNoFlowOut));
  sender.demuxer().createFlowOut(adapter, {}, false, 0x7fffffff);
  EXPECT_FALSE(adapter->hasFlag(StreamAdapter::flagNoFlowOut));
  ASSERT_TRUE(adapter->flowOut());
  EXPECT_EQ(adapter->flowOut()->zelDirtyBitSet0().word(), 0x2204U);
  EXPECT_EQ(sender.written(), "");
  EXPECT_FALSE(adapter->flowOut());
  EXPECT_TRUE(adapter->hasFlag(StreamAdapter::flagNoFlowOut));
}

TEST_F(AdapterLife, WithoutStreamingOrMutedItWritesNothing) {
  const Ptr<Adapter> adapter = announced();
  for (const unsigned flag :
       {StreamAdapter::flagMuted, StreamAdapter::flagChildPending, StreamAdapter::flagSyncFanOut}) {
    adapter->flagsIs(flag, true);
    EXPECT_FALSE(writes()) << flag;
    adapter->flagsIs(flag, false);
    EXPECT_TRUE(writes()) << flag;
  }
  adapter->flagsIs(StreamAdapter::flagStreaming, false);
  EXPECT_FALSE(writes());
  adapter->flagsIs(StreamAdapter::flagStreaming, true);
  EXPECT_TRUE(writes());
  adapter->notificationDisabledDueToMsgChannelIs(true);
  EXPECT_FALSE(writes());
}

TEST_F(AdapterLife, AFailureOfACallbackTakesTheConnectionDown) {
  announced();
  try {
    throw std::runtime_error("no luck");
  } catch (const std::exception&) {
    head()->onNotificationException(262);
  }
  EXPECT_EQ(sender.failure(), "change of attribute 262 lost: no luck");
}

} // namespace
