#include "Ends.h"

#include "foreign/model/ProductAttrLog.h"
#include "support/Failure.h"

#include <Zel/MsgChannel>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// An entity's adapters: how one is found, made and taken out.

namespace {

using namespace Maintenance::Unit;
using Zel::Ptr;
using Zel::StreamAdapter;
using Flags = AnEnd::Flags;
using Adapter = Zel::Entity::ZelNboAttrLogSa;
using Out = Zel::NboAttrLog::Out;

Ptr<Adapter> find(const Ptr<Zel::Entity>& entity, const Ptr<const Out>& out) {
  return entity->zelNboAttrLogSa(out);
}

class AdapterSearch : public ::testing::Test {
protected:
  Ptr<Adapter> on(const Sender& end) const {
    return unit->zelNboAttrLogSaIs(Flags(StreamAdapter::flagWeakNotifiee), 1, end.out(), nullptr);
  }

  const Sender one;
  const Sender two;
  const Ptr<Status> unit = statusFactory("u");
};

TEST_F(AdapterSearch, FindsTheOneOfTheConnection) {
  EXPECT_FALSE(find(unit, one.out()));
  const Ptr<Adapter> first = on(one);
  const Ptr<Adapter> second = on(two);
  EXPECT_NE(first, second);
  EXPECT_EQ(find(unit, one.out()), first);
  EXPECT_EQ(find(unit, two.out()), second);
  const Ptr<const Status> readable = unit;
  EXPECT_EQ(readable->zelNboAttrLogSa(Ptr<const Out>(one.out())), Ptr<const Adapter>(first));
}

TEST_F(AdapterSearch, WithoutAConnectionFindsOneWithAUnifiedIdOnAChannel) {
  const Ptr<Adapter> first = on(one);
  EXPECT_FALSE(find(unit, nullptr));
  one.demuxer().adapterIs(first, {3, 0});
  EXPECT_FALSE(find(unit, nullptr));
  one.out()->carriesChannelIs(true);
  EXPECT_EQ(find(unit, nullptr), first);
  one.demuxer().adapterIs(first, {2, 0});
  EXPECT_FALSE(find(unit, nullptr));
}

TEST_F(AdapterSearch, PassesOtherNotifieesOver) {
  const auto listener = Zel::makeObject<Status::Notifiee>();
  listener->isRegisteredNotifieeIs(true);
  listener->notifierIs(unit);
  EXPECT_FALSE(find(unit, one.out()));
  const Ptr<Adapter> first = on(one);
  EXPECT_EQ(find(unit, one.out()), first);
}

TEST_F(AdapterSearch, EndsWhereAConnectionHasNoDemuxer) {
  const Ptr<Out> alone = Zel::makeObject<Out>(65536U);
  const Ptr<Adapter> own =
      unit->zelNboAttrLogSaIs(Flags(StreamAdapter::flagWeakNotifiee), 1, alone, nullptr);
  EXPECT_EQ(find(unit, alone), own);
  // The adapter that was made last stands first.
  const Ptr<Adapter> first = on(one);
  EXPECT_FALSE(find(unit, alone));
}

TEST_F(AdapterSearch, LooksAUnifiedIdUpInTheConnection) {
  const Ptr<Adapter> second = on(two);
  const Ptr<Adapter> first = on(one);
  two.demuxer().adapterIs(second, {3, 0});
  one.demuxer().adapterIs(first, {3, 0});
  second->hasNotificationActiveIs(false); // out of the list
  EXPECT_EQ(find(unit, two.out()), second);
  one.demuxer().adapterIs(first, {2, 0});
  EXPECT_FALSE(find(unit, two.out()));
}

TEST_F(AdapterSearch, GoesOnWhereTheUnifiedIdIsAnothers) {
  const Ptr<Adapter> second = on(two);
  const Ptr<Adapter> first = on(one);
  const auto other = statusFactory("other");
  two.demuxer().exportIs(other);
  two.demuxer().adapterIs(find(other, two.out()), {3, 0});
  one.demuxer().adapterIs(first, {3, 0});
  EXPECT_EQ(find(unit, two.out()), second);
}

TEST_F(AdapterSearch, ForAChannelFindsASecondOneThatServesTheSame) {
  const auto entry = Zel::makeObject<Zel::MsgChannel::Constrainer::ZelEntry>();
  const Ptr<Adapter> first = on(one);
  const Ptr<Adapter> second = on(two);
  const auto secondOf = [&] { return unit->zelNboAttrLogSaForMsgChannel(first); };
  EXPECT_FALSE(secondOf());
  two.out()->carriesChannelIs(true);
  EXPECT_FALSE(secondOf()); // its id is of this connection alone
  two.demuxer().adapterIs(second, {3, 0});
  EXPECT_EQ(secondOf(), second);
  first->msgChannelIs(entry.ptr());
  EXPECT_FALSE(secondOf());
  second->msgChannelIs(entry.ptr());
  EXPECT_EQ(secondOf(), second);
  EXPECT_FALSE(unit->zelNboAttrLogSaForMsgChannel(second)); // never the same one
}

TEST_F(AdapterSearch, EntitiesOfTheseTypesHaveTheInterface) {
  EXPECT_TRUE(unit->zelHasAttrLogInterface());
  EXPECT_TRUE(Zel::makeObject<Foreign::Perishable>("p")->zelHasAttrLogInterface());
}

TEST_F(AdapterSearch, WithoutAConnectionNoneIsMade) {
  EXPECT_EQ(Support::rangeFailure(
                [&] { static_cast<void>(unit->zelNboAttrLogSaIs({}, 1, nullptr, nullptr)); }),
            "null ValidPtr");
  EXPECT_EQ(unit->zelNotifieeList().head(), nullptr);
}

TEST_F(AdapterSearch, OneThatIsThereIsTakenAgainWithTheNewFlags) {
  const Ptr<Adapter> first = on(one);
  EXPECT_EQ(first->zel_bitSet().word(), 0x4100040U); // streaming, no FlowOut, weak
  const Ptr<Adapter> again = unit->zelNboAttrLogSaIs(Flags(0x8840), 1, one.out(), nullptr);
  EXPECT_EQ(again, first);
  EXPECT_EQ(first->zel_bitSet().word(), 0x4108840U);
  static_cast<void>(unit->zelNboAttrLogSaIs(Flags(0x40), 1, one.out(), nullptr));
  EXPECT_EQ(first->zel_bitSet().word(), 0x4100040U);
  // Bits that are the adapter's own stay as they are.
  static_cast<void>(unit->zelNboAttrLogSaIs(Flags(0x05700040), 1, one.out(), nullptr));
  EXPECT_EQ(first->zel_bitSet().word(), 0x4100040U);
}

TEST_F(AdapterSearch, AMutedOneIsMutedByItsFlags) {
  one.announce(unit);
  unit->genIdIs(1);
  EXPECT_NE(one.written(), "");
  static_cast<void>(unit->zelNboAttrLogSaIs(
      Flags(StreamAdapter::flagWeakNotifiee | StreamAdapter::flagMuted), 1, one.out(), nullptr));
  unit->genIdIs(2);
  EXPECT_EQ(one.written(), "");
}

TEST_F(AdapterSearch, OneOfAnotherClassIsReplaced) {
  const auto milk = Zel::makeObject<Foreign::Perishable>("milk");
  const Ptr<Adapter> ofBase = Zel::makeObject<Foreign::Product::ZelNboAttrLogSa>(
      Flags(StreamAdapter::flagWeakNotifiee), Ptr<Foreign::Product>(milk), 1U, one.out(), nullptr);
  ofBase->hasNotificationActiveIs(true);
  one.demuxer().adapterIs(ofBase, one.demuxer().newEntityId());
  EXPECT_EQ(find(milk, one.out()), ofBase);
  const Ptr<Adapter> made =
      milk->zelNboAttrLogSaIs(Flags(StreamAdapter::flagWeakNotifiee), 1, one.out(), nullptr);
  EXPECT_NE(made, ofBase);
  EXPECT_TRUE(Zel::ptrCast<Foreign::Perishable::ZelNboAttrLogSa>(made));
  EXPECT_EQ(one.demuxer().adapters(), 0U); // the former is out, the new one has no id yet
}

TEST_F(AdapterSearch, OneThatIsTakenOutIsYielded) {
  one.announce(unit);
  const Ptr<Adapter> first = find(unit, one.out());
  EXPECT_EQ(one.demuxer().adapter({2, 0}), first.ptr());
  EXPECT_EQ(unit->zelNboAttrLogSaDel(one.out()), first);
  EXPECT_EQ(one.demuxer().adapter({2, 0}), nullptr);
  EXPECT_EQ(one.demuxer().adapters(), 0U);
}

TEST_F(AdapterSearch, WhereThereIsNoneNoneIsTakenOut) {
  one.announce(unit);
  EXPECT_FALSE(unit->zelNboAttrLogSaDel(two.out()));
  EXPECT_EQ(one.demuxer().adapters(), 1U);
}

TEST_F(AdapterSearch, WithoutADemuxerNoneIsTakenOut) {
  const Ptr<Out> alone = Zel::makeObject<Out>(65536U);
  const Ptr<Adapter> own =
      unit->zelNboAttrLogSaIs(Flags(StreamAdapter::flagWeakNotifiee), 1, alone, nullptr);
  EXPECT_FALSE(unit->zelNboAttrLogSaDel(alone));
}

} // namespace
