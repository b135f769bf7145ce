#include "Ends.h"

#include "support/Failure.h"

#include <Zel/ZelType>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// What programs written against the interface call, with the types that they call it with.

namespace {

using namespace Maintenance::Unit;
using Zel::EntityId;
using Zel::Name;
using Zel::Ptr;
using Zel::NboAttrLog::Demuxer;
using Zel::NboAttrLog::FlowOut;

class Signatures : public testing::Test {
protected:
  const Sender sender;
  const Ptr<Status> unit = statusFactory("u");
  const Ptr<Status::ZelNboAttrLogSa> adapter =
      Zel::makeObject<Status::ZelNboAttrLogSa>(AnEnd::Flags(), unit, 1U, sender.out(), nullptr);
};

TEST_F(Signatures, AnEntityIdComesWithAHandleOnItsDemuxer) {
  constexpr void (Zel::StreamAdapter::*operation)(const EntityId&, const Ptr<Demuxer>&, bool) =
      &Zel::StreamAdapter::doEntityIdIs;
  const EntityId id{12, 0};
  const Ptr<Demuxer> demuxer(&sender.demuxer());
  (adapter.ptr()->*operation)(id, demuxer, false);
  EXPECT_EQ(sender.demuxer().adapter(id), adapter.ptr());
  adapter->doEntityIdIs(EntityId{14, 0}, nullptr, true);
  EXPECT_EQ(adapter->entityId(), id);
}

TEST_F(Signatures, ARefusalTakesAHandleOnTheAttribute) {
  const Ptr<const Zel::ZelAttr> state(unit->fwkType()->attr("state"));
  EXPECT_EQ(Support::messageOf<Zel::ReadOnlyException>([&] { adapter->doThrowReadOnly(state); }),
            "read-only attribute: state of u");
  EXPECT_EQ(Support::messageOf<Zel::ReadOnlyException>([&] { adapter->doThrowReadOnly(nullptr); }),
            "read-only attribute: unknown of u");
}

TEST_F(Signatures, AnEntryOfADirectoryHoldsARootAndItsStatus) {
  const auto dir = Zel::makeObject<Zel::Dir>();
  dir->entityIs(unit);
  const Ptr<Zel::Dir::Entry> entry = dir->entry(Name("u"));
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->entity(), unit);
  EXPECT_EQ(entry->status(), Zel::Dir::present);
  entry->statusIs(3);
  EXPECT_EQ(dir->entry(Name("u"))->status(), Zel::Dir::loaded);
  EXPECT_FALSE(dir->entry(Name("other")));
  dir->entityIs(unit);
  EXPECT_EQ(dir->entry(Name("u")), entry);
  dir->entityDel(Name("u"));
  EXPECT_FALSE(dir->entry(Name("u")));
  EXPECT_FALSE(entry->entity());
  dir->entityIs(unit);
  EXPECT_EQ(dir->entry(Name("u"))->status(), Zel::Dir::present);
}

TEST_F(Signatures, WhatIsToBeAbortedStandsInAHashMap) {
  using Map = FlowOut::ZelPendingAbort;
  static_assert(std::is_same_v<Map, Zel::HashMap<Map::EntryType, Zel::AttributeId, bool>>);
  const Ptr<FlowOut> flowOut = adapter->flowOutIs(sender.out(), {}, false, Zel::attrIdFlowEnd);
  flowOut->pendingAbortIs(261, true);
  flowOut->pendingAbortIs(268, false);
  ASSERT_NE(flowOut->pendingAbort()[268], nullptr);
  EXPECT_FALSE(flowOut->pendingAbort()[268]->zelValue());
  flowOut->pendingAbortIs(268, true);
  EXPECT_TRUE(flowOut->pendingAbort()[268]->zelValue());
  EXPECT_EQ(flowOut->pendingAbort().count(), 2U);
  for (Map::Iterator at(flowOut->pendingAbort()); at; at.advance()) {
    flowOut->pendingAbortDel(at);
  }
  EXPECT_EQ(flowOut->pendingAbort().count(), 0U);
}

} // namespace
