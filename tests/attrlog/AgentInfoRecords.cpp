#include "Channel.h"
#include "Log.h"

#include <attrlog/MaintenanceAgentInfo.h>

// Records of the agent's information, byte for byte.

namespace {

using namespace Maintenance;
using namespace Wiretap;
using Noted = OnBootUnitAndReason;

struct AgentInfoRecords : testing::Test {
  const Channel<AgentInfo> channel{agentInfoFactory("agent")};
  const Zel::Ptr<AgentInfo>& agent = channel.original;
  const Zel::Ptr<AgentInfo>& mirror = channel.mirror;
};

TEST(AgentInfoRoot, FlowsItsAttributesInAscendingId) {
  const Sender sender;
  const auto agent = agentInfoFactory("agent");
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  sender.demuxer().exportIs(agent);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 4a 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 16 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 41 67 65 6e 74 49 6e 66 "
                  "6f 03 00 00 00 05 61 67 65 6e 74 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 20 02 00 00 00 00 00 00 00 "
                  "00 00 01 02 00 00 00 00 04 00 00 00 00 00 01 "
                  "00 00 00 00 03 "
                  "00 00 00 20 02 00 00 00 00 00 00 00 "
                  "00 00 01 03 00 00 00 00 04 00 00 00 00 00 01 "
                  "00 00 00 00 03 "
                  "00 00 00 1d 02 00 00 00 00 00 00 00 "
                  "00 00 01 04 00 00 00 00 01 00 00 00 00 00 01 "
                  "00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 05 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 34 02 00 00 00 00 00 00 00 "
                  "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 06 53 79 73 74 65 6d 00 00 00 06 53 79 73 74 65 6d 00 00 00 03 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 05 00 00 00 02 00 00 00 00 03 "
                  "00 00 00 1d 02 00 00 00 00 00 00 00 "
                  "00 00 01 06 00 00 00 00 01 00 00 00 00 00 01 "
                  "00 03"));
}

TEST_F(AgentInfoRecords, SingleValuesAreOfFixedSize) {
  agent->agentPidIs(4711);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 12 67 03");
  agent->restartCountIs(2);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  agent->restartCountInc(3);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 00 05 03");
  agent->onBootIs(true);
  channel.expectWritten("00 00 00 1d 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 00 00 00 00 01 00 00 00 00 00 01 "
                        "01 03");
  agent->readyIs(true);
  channel.expectWritten("00 00 00 1d 02 00 00 00 00 00 00 00 "
                        "00 00 01 06 00 00 00 00 01 00 00 00 00 00 01 "
                        "01 03");
  EXPECT_EQ(mirror->agentPid(), 4711U);
  EXPECT_EQ(mirror->restartCount(), 5U);
  EXPECT_TRUE(mirror->onBoot());
  EXPECT_TRUE(mirror->ready());
}

TEST_F(AgentInfoRecords, AValueStandsBehindItsNameAndIsDeletedByIt) {
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  channel.expectWritten(
      "00 00 00 34 02 00 00 00 00 00 00 00 "
      "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
      "00 00 00 06 53 79 73 74 65 6d 00 00 00 06 53 79 73 74 65 6d 00 00 00 03 03");
  EXPECT_EQ(mirror->onBootMaintEnter("System"), Noted("System", Unit::srcCli));
  agent->onBootMaintEnterDel("System");
  channel.expectWritten("00 00 00 26 02 00 00 00 00 00 00 00 "
                        "ff ff fe fb 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 06 53 79 73 74 65 6d 03");
  EXPECT_EQ(mirror->onBootMaintEnterMap().count(), 0U);
}

TEST_F(AgentInfoRecords, ANewReasonIsAnotherRecordOfTheSameName) {
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  agent->onBootMaintEnterIs(Noted("System", Unit::srcOnBoot));
  channel.expectWritten(
      "00 00 00 34 02 00 00 00 00 00 00 00 "
      "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
      "00 00 00 06 53 79 73 74 65 6d 00 00 00 06 53 79 73 74 65 6d 00 00 00 03 03 "
      "00 00 00 34 02 00 00 00 00 00 00 00 "
      "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
      "00 00 00 06 53 79 73 74 65 6d 00 00 00 06 53 79 73 74 65 6d 00 00 00 01 03");
  EXPECT_EQ(mirror->onBootMaintEnterMap().count(), 1U);
  EXPECT_EQ(mirror->onBootMaintEnter("System").reason(), Unit::srcOnBoot);
}

TEST_F(AgentInfoRecords, AnUnknownReasonIsPassedOver) {
  channel.receiver.apply(
      "00 00 00 34 02 00 00 00 00 00 00 00 "
      "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
      "00 00 00 06 53 79 73 74 65 6d 00 00 00 06 53 79 73 74 65 6d 00 00 00 04 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_EQ(channel.receiver.counts().badValues, 1U);
  EXPECT_EQ(mirror->onBootMaintEnterMap().count(), 0U);
  EXPECT_EQ(mirror->versionCounter(), 0U);
}

TEST_F(AgentInfoRecords, WhatIsGoneAtAResyncIsSwept) {
  agent->onBootMaintEnterIs(Noted("System", Unit::srcCli));
  channel.receiver.apply(channel.sender.written());
  mirror->newOnBootMaintEnter(Noted("Linecard1", Unit::srcOnBoot));
  channel.receiver.apply(
      "00 00 00 28 02 00 00 00 00 00 00 00 "
      "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
      "00 00 01 05 00 00 00 00 00 00 00 00 03 "
      "00 00 00 34 02 00 00 00 00 00 00 00 "
      "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
      "00 00 00 06 53 79 73 74 65 6d 00 00 00 06 53 79 73 74 65 6d 00 00 00 03 03 "
      "00 00 00 28 02 00 00 00 00 00 00 00 "
      "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
      "00 00 01 05 00 00 00 02 00 00 00 00 03");
  EXPECT_EQ(mirror->onBootMaintEnterMap().count(), 1U);
  EXPECT_EQ(mirror->onBootMaintEnter("System"), Noted("System", Unit::srcCli));
}

/// A note of `unitName` behind `key`.
std::string note(const char* key, const char* unitName) {
  return letter(Reader<AgentInfo>::id, AgentInfo::Attr::onBootMaintEnter, [&](Out& out) {
    out.putString(key);
    out.putString(unitName);
    out.put32(Unit::srcCli);
  });
}

TEST(AgentInfoNotes, BehindAnotherKeyAreKeptUnderTheirOwnName) {
  Reader<AgentInfo> reader;
  const auto attr = AgentInfo::Attr::onBootMaintEnter;
  reader.entity->newOnBootMaintEnter(Noted("System", Unit::srcOnBoot));
  reader.entity->newOnBootMaintEnter(Noted("Linecard1", Unit::srcOnBoot));
  reader.feed(marker(reader.id, attr, 0) + note("System", "Linecard1") +
              marker(reader.id, attr, 2));
  EXPECT_EQ(reader.failure(), "");
  EXPECT_EQ(reader.entity->onBootMaintEnterMap().count(), 1U);
  EXPECT_EQ(reader.entity->onBootMaintEnter("Linecard1"), Noted("Linecard1", Unit::srcCli));
}

TEST(AgentInfoNotes, CountAgainstTheLimitUnderTheirOwnName) {
  Zel::ConnectionLimits limits;
  limits.maxKeys = 2;
  Reader<AgentInfo> reader(0, limits);
  reader.feed(note("a", "a") + note("a", "b") + note("c", "a"));
  EXPECT_EQ(reader.failure(), "");
  reader.feed(note("a", "c"));
  EXPECT_EQ(reader.failure(), "onBootMaintEnter of mirror: more keys than are kept for a peer");
  EXPECT_EQ(reader.entity->onBootMaintEnterMap().count(), 2U);
}

} // namespace
