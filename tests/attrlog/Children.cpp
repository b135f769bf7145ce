// How members of a directory are announced and taken back.

#include "Log.h"

#include <foreign/model/Order.h>
#include <foreign/model/OrderAttrLog.h>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using FlowOut = Zel::NboAttrLog::FlowOut;
using testing::IsEmpty;

const Briefs wholeUnit = {"259", "begin 260", "end 260",   "261",       "262",     "263",
                          "264", "265",       "267",       "begin 268", "end 268", "269",
                          "270", "271",       "begin 272", "end 272",   "273",     "274"};

struct Children : testing::Test {
  auto flow() const { return writer.adapter->flowOut(); }
  std::size_t dirty() const { return flow()->zelIsStatusDirtyMap().count(); }
  Demuxer& demuxer() const { return *writer.connection->demuxer(); }
  EntityId idOf(const char* unit) const {
    const auto adapter = writer.adapter->statusNboAttrLogAdapter(dir->status(unit));
    return adapter ? adapter->entityId() : EntityId{};
  }
  static EntityId idIn(const Seen& seen) {
    EntityId id;
    std::memcpy(&id, seen.payload.data() + seen.payload.size() - sizeof id, sizeof id);
    return id;
  }

  Writer<StatusDir> writer{statusDirFactory("units")};
  const Ptr<StatusDir> dir = writer.entity;
};

TEST_F(Children, AMarkedOneThatIsToldOfAgainWithRoomGoesOnceAndAtOnce) {
  writer.freeIs(0);
  dir->statusIs("System");
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.sent(), IsEmpty()); // but from here on there is room
  dir->statusNotify("System");
  EXPECT_EQ(dirty(), 0U);
  EXPECT_EQ(writer.sent(), Briefs{"258"});
  EXPECT_THAT(briefs(writer.seenWorked(), writer.adapter->entityId()), IsEmpty());
}

TEST_F(Children, AMemberIsItsKeyAndItsIdUnderATag) {
  dir->statusIs("System");
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"258"});
  EXPECT_EQ(seen[0].entity, writer.adapter->entityId());
  EXPECT_EQ(seen[0].tag, 151U);
  EXPECT_EQ(hex(seen[0].payload.substr(0, 10)), "0000000653797374656d");
  EXPECT_EQ(seen[0].payload.size(), 18U);
  EXPECT_EQ(idIn(seen[0]), idOf("System"));
  EXPECT_EQ(idIn(seen[0]), (EntityId{4, 0}));
  EXPECT_FALSE(flow());
  EXPECT_THAT(writer.worked(), IsEmpty()); // one that has just been made holds nothing
}

TEST_F(Children, ItsDeletionIsTheKeyAlone) {
  dir->statusIs("System");
  writer.sent();
  dir->statusDel("System");
  const auto seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"-258"});
  EXPECT_EQ(hex(seen[0].payload), "0000000653797374656d");
  EXPECT_EQ(demuxer().adapters(), 1U);
}

TEST_F(Children, FurtherArgumentsStandBetweenKeyAndId) {
  Writer<Foreign::OrderDir> orders(Zel::makeObject<Foreign::OrderDir>("orders"));
  orders.entity->orderIs("o1", Foreign::express);
  const auto seen = orders.seen();
  ASSERT_EQ(briefs(seen), Briefs{"258"});
  EXPECT_EQ(hex(seen[0].payload.substr(0, 10)), "000000026f3100000002");
  EXPECT_EQ(idIn(seen[0]), (EntityId{4, 0}));
}

TEST_F(Children, OneThatMayHoldValuesIsSentWhole) {
  dir->newStatus("System")->genIdIs(7);
  dir->statusNotify("System");
  EXPECT_EQ(writer.sent(), Briefs{"258"});
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), wholeUnit);
  EXPECT_EQ(seen[0].entity, idOf("System"));
}

TEST_F(Children, RoomForAnyRecordIsWhatCounts) {
  writer.freeIs(32768);
  dir->statusIs("System");
  EXPECT_FALSE(flow());
  EXPECT_EQ(writer.sent(), Briefs{"258"});
  writer.freeIs(32767);
  dir->statusIs("Linecard1");
  ASSERT_TRUE(flow());
  EXPECT_EQ(flow()->attrId(), StatusDir::Attr::status);
  EXPECT_EQ(dirty(), 1U);
  dir->statusDel("System");
  EXPECT_EQ(dirty(), 2U);
  EXPECT_THAT(writer.sent(), IsEmpty());
  const auto seen = writer.seenWorked();
  // In the order of the table, the new member followed by all of it.
  EXPECT_THAT(briefs(seen, writer.adapter->entityId()),
              testing::UnorderedElementsAre("258", "-258"));
  EXPECT_EQ(briefs(seen, idOf("Linecard1")), wholeUnit);
}

TEST_F(Children, AChangeOfOneThatIsNotAnnouncedYetComesBehindItsRecord) {
  writer.freeIs(1000);
  dir->statusIs("System")->stateIs(active);
  const auto seen = writer.seenWorked();
  Briefs expected = {"258"};
  expected.insert(expected.end(), wholeUnit.begin(), wholeUnit.end());
  EXPECT_EQ(briefs(seen), expected);
  EXPECT_EQ(hex(seen[5].payload), "00000001");
}

TEST_F(Children, AWalkAnnouncesEachMemberAndSendsItWhole) {
  for (const char* const name : {"a", "b", "c"}) {
    dir->statusIs(name);
  }
  writer.worked();
  writer.adapter->doThis();
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen, writer.adapter->entityId()),
            (Briefs{"begin 258", "258", "258", "258", "end 258"}));
  for (const char* const name : {"a", "b", "c"}) {
    EXPECT_EQ(briefs(seen, idOf(name)), wholeUnit) << name;
  }
  EXPECT_EQ(seen.size(), 5U + 3 * wholeUnit.size());
}

TEST_F(Children, AMemberThatGoesDuringTheWalkIsADeletion) {
  for (const char* const name : {"a", "b", "c"}) {
    dir->statusIs(name);
  }
  writer.worked();
  writer.adapter->doThis();
  writer.freeIs(Out::maxRecordSize + 4096 + 40 + 41 - 1); // for one
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(258), 0);   // as the last step does, done or not
  ASSERT_NE(flow()->bookmark(), nullptr);
  const auto first = writer.seen();
  EXPECT_EQ(briefs(first), (Briefs{"begin 258", "258"}));
  const Zel::Name sent(String8(first[1].payload.substr(4, 1)));
  dir->statusDel(sent);
  EXPECT_EQ(dirty(), 1U);
  EXPECT_EQ(briefs(writer.seenWorked(), writer.adapter->entityId()),
            (Briefs{"258", "258", "end 258", "-258"}));
}

// Entity ids that are not to be had.

TEST_F(Children, WithoutEntityIdsAMemberWaitsAndTheFlowIsSuspended) {
  demuxer().announcingIs(false);
  dir->statusIs("System")->genIdIs(5);
  ASSERT_TRUE(flow());
  EXPECT_EQ(flow()->attrId(), StatusDir::Attr::status);
  EXPECT_EQ(dirty(), 1U);
  EXPECT_TRUE(flow()->hasDirtyAttributes());
  EXPECT_TRUE(flow()->hasDataBit(FlowOut::dataBitSuspended));
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(258), 258);
  EXPECT_TRUE(flow()->hasDataBit(FlowOut::dataBitSuspended));
  EXPECT_EQ(dirty(), 1U);
  EXPECT_THAT(writer.worked(), IsEmpty());
  EXPECT_EQ(demuxer().parked(), 1U);
  demuxer().announcingIs(true);
  EXPECT_EQ(demuxer().parked(), 0U);
  const auto seen = writer.seenWorked();
  Briefs expected = {"258"};
  expected.insert(expected.end(), wholeUnit.begin(), wholeUnit.end());
  EXPECT_EQ(briefs(seen), expected);
  EXPECT_FALSE(flow());
}

TEST_F(Children, WithoutEntityIdsAWalkStaysAtTheSameMember) {
  dir->statusIs("a");
  writer.worked();
  demuxer().announcingIs(false);
  for (const char* const name : {"b", "c", "d", "e"}) {
    dir->newStatus(name);
  }
  std::vector<std::string> keys;
  for (StatusDir::StatusMap::IteratorConst at(dir->statusMap()); at; at.advance()) {
    keys.emplace_back(at->name().view());
  }
  writer.adapter->doThis();
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(0), 258);
  ASSERT_NE(flow()->bookmark(), nullptr);
  const std::string stopped(static_cast<Zel::Name*>(flow()->bookmark())->view());
  EXPECT_EQ(stopped, keys[0] == "a" ? keys[1] : keys[0]);
  EXPECT_EQ(writer.adapter->handleAttrFlowOut(258), 258);
  EXPECT_EQ(static_cast<Zel::Name*>(flow()->bookmark())->view(), stopped);
  demuxer().announcingIs(true);
  const auto seen = writer.seenWorked();
  std::vector<std::string> announced;
  for (const Seen& one : seen) {
    if (one.attr == 258) {
      announced.push_back(one.payload.substr(4, 1));
    }
  }
  EXPECT_EQ(announced, keys);
  const Briefs own = briefs(seen, writer.adapter->entityId());
  EXPECT_EQ(own.front(), "begin 258");
  EXPECT_EQ(own.back(), "end 258");
}

// The gate.

TEST_F(Children, TheGateDropsWhatIsPendingOrMutedAndHoldsBackWhatIsReceived) {
  const auto silent = [&](unsigned flag, bool value, const char* name) {
    writer.adapter->flagsIs(flag, value);
    dir->statusIs(name);
    writer.adapter->flagsIs(flag, !value);
    EXPECT_THAT(writer.worked(), IsEmpty()) << flag;
    EXPECT_EQ(idOf(name), EntityId{}) << flag;
  };
  silent(Adapter::flagChildPending, true, "a");
  silent(Adapter::flagMuted, true, "b");
  silent(Adapter::flagStreaming, false, "c");
  silent(Adapter::flagSyncFanOut, true, "d");
  feed(*writer.connection, marker(writer.adapter->entityId(), 258, 0));
  dir->statusIs("e");
  EXPECT_THAT(writer.worked(), IsEmpty());
  EXPECT_EQ(idOf("e"), EntityId{});
  EXPECT_EQ(dirty(), 1U);
}

TEST_F(Children, AnAdapterOfAMemberTakesItsDirectorysFlagsButThoseOfOne) {
  writer.adapter->flagsIs(Adapter::flagRemoteReadOnly | Adapter::flagMuted, true);
  writer.adapter->flagsIs(Adapter::flagMuted, false);
  dir->statusIs("System");
  const auto adapter = writer.adapter->statusNboAttrLogAdapter(dir->status("System"));
  ASSERT_TRUE(adapter);
  EXPECT_TRUE(adapter->hasFlag(Adapter::flagRemoteReadOnly));
  EXPECT_TRUE(adapter->hasFlag(Adapter::flagMember));
  EXPECT_FALSE(adapter->hasFlag(Adapter::flagChildPending));
  EXPECT_TRUE(writer.adapter->statusNboAttrLogAdapterDel(dir->status("System")) == adapter);
  EXPECT_FALSE(writer.adapter->statusNboAttrLogAdapter(dir->status("System")));
  EXPECT_FALSE(writer.adapter->statusNboAttrLogAdapterDel(nullptr));
}

TEST_F(Children, ADirectorySaysWhetherKnownMembersAreAnnouncedAgain) {
  dir->statusIs("System");
  writer.sent();
  dir->statusNotify("System");
  EXPECT_EQ(writer.sent(), Briefs{"258"});
  writer.worked();
  writer.adapter->flagsIs(Adapter::flagAnnounced, true);
  dir->statusNotify("System");
  EXPECT_THAT(writer.sent(), IsEmpty());
  dir->statusIs("Linecard1");
  EXPECT_EQ(writer.sent(), Briefs{"258"});
}

} // namespace
