#include "Dumps.h"
#include "Ends.h"

#include "foreign/model/ProductAttrLog.h"

#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// The records in docs/wire-format.md do to a mirror what the document says.

namespace {

using namespace Maintenance::Unit;

class DocumentRead : public ::testing::Test {
protected:
  DocumentRead() { receiver.apply(records(dump("orphan"), dump("child"))); }

  void apply(const std::string& name) const {
    const auto before = receiver.counts().records;
    receiver.apply(dump(name));
    ASSERT_EQ(receiver.failure(), "");
    ASSERT_EQ(receiver.counts().records, before + 1) << name;
    ASSERT_EQ(receiver.counts().badValues, 0U) << name;
    ASSERT_EQ(receiver.counts().refused, 0U) << name;
  }
  Zel::Ptr<StatusDir> units() const { return receiver.mirror<StatusDir>("units"); }
  Zel::Ptr<Status> unit() const { return units()->status("System"); }
  /// The id under which an entity is known here.
  Zel::EntityId idOf(const Zel::Ptr<Zel::Entity>& entity) const {
    const Zel::Ptr<const Zel::NboAttrLog::Out> out = receiver.out();
    const Zel::Ptr<Zel::Entity::ZelNboAttrLogSa> adapter = entity->zelNboAttrLogSa(out);
    return adapter ? adapter->entityId() : Zel::EntityId{};
  }

  const Receiver receiver;
};

TEST_F(DocumentRead, RootAndMemberGetTheirIds) {
  EXPECT_EQ(idOf(units()), (Zel::EntityId{2, 0}));
  EXPECT_EQ(idOf(unit()), (Zel::EntityId{4, 0}));
  EXPECT_EQ(receiver.counts().records, 2U);
}

TEST_F(DocumentRead, AMemberGoes) {
  apply("child-deleted");
  EXPECT_FALSE(unit());
  EXPECT_EQ(receiver.demuxer().adapter({4, 0}), nullptr);
}

TEST_F(DocumentRead, SingleValues) {
  apply("fixed");
  EXPECT_EQ(unit()->genId(), 7U);
  apply("enumeration");
  EXPECT_EQ(unit()->state(), underMaintenance);
  apply("double");
  EXPECT_EQ(unit()->timeOfStateChange(), 1.5);
  apply("value");
  EXPECT_EQ(unit()->aggTrafficRate().outBitsRate(), 1000000ULL);
  EXPECT_EQ(unit()->aggTrafficRate().inBitsRate(), 1099511627776ULL);
  EXPECT_EQ(unit()->aggTrafficRate().statsUpdateTime(), -2.0);
}

TEST_F(DocumentRead, ATextChangesWithItsLastChunk) {
  apply("text");
  EXPECT_EQ(unit()->profileName(), "fast");
  apply("text-first");
  EXPECT_EQ(unit()->profileName(), "fast");
  apply("text-rest");
  EXPECT_EQ(unit()->profileName(), Zel::String8(std::string(40000, 'a')));
}

TEST_F(DocumentRead, AnAbortDropsWhatHasCome) {
  apply("text-first");
  apply("abort");
  apply("text-rest");
  EXPECT_EQ(unit()->profileName(), Zel::String8(std::string(7265, 'a')));
}

TEST_F(DocumentRead, Entries) {
  const Group::GroupKey peers(Group::groupTypeBgp, "peers");
  apply("keyed");
  EXPECT_TRUE(unit()->group(peers));
  apply("keyed-deleted");
  EXPECT_EQ(unit()->groupMap().count(), 0U);
  apply("keyed-text");
  EXPECT_EQ(unit()->history(1.5), "entered");
  EXPECT_EQ(unit()->historyMap().count(), 1U);
  apply("keyed-text-deleted");
  EXPECT_EQ(unit()->historyMap().count(), 0U);
}

TEST_F(DocumentRead, BetweenTheMarkersWhatDoesNotComeGoes) {
  apply("begin");
  EXPECT_TRUE(unit());
  apply("end");
  EXPECT_FALSE(unit());
}

TEST_F(DocumentRead, BetweenTheMarkersWhatComesStays) {
  const auto before = unit();
  apply("begin");
  apply("child");
  apply("end");
  EXPECT_EQ(unit(), before);
}

TEST_F(DocumentRead, OfTheCompoundRecordTheKnownPartsAreRead) {
  apply("compound");
  ASSERT_TRUE(units()->status("Linecard1"));
  EXPECT_EQ(idOf(units()->status("Linecard1")), (Zel::EntityId{8, 0}));
  apply("compound-deleted");
  EXPECT_FALSE(units()->status("Linecard1"));
  EXPECT_TRUE(unit());
}

TEST_F(DocumentRead, ASyncedRootIsTold) {
  EXPECT_NE(receiver.roots->entry("units")->status(), Zel::Dir::loaded);
  apply("sync-mode");
  EXPECT_EQ(receiver.roots->entry("units")->status(), Zel::Dir::loaded);
}

TEST_F(DocumentRead, ADerivedTypeIsMade) {
  const Receiver other;
  other.apply(dump("orphan-derived"));
  const auto milk = other.mirror<Foreign::Perishable>("");
  ASSERT_TRUE(milk);
  EXPECT_EQ(milk->sku(), "milk");
  EXPECT_NE(other.demuxer().adapter({2, 0}), nullptr);
}

} // namespace
