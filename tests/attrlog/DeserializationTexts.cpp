// Texts that arrive in several records, and members that a peer announces.

#include "Ear.h"
#include "Log.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using testing::ElementsAre;
using testing::IsEmpty;

String8 text(std::size_t length, char of = 'x') { return String8(std::string(length, of)); }

struct DeserializationTexts : testing::Test {
  Reader<Status> reader;
  const Ptr<Status> unit = reader.entity;
  const Ptr<Ear> ear = listen<Ear>(unit);
};

TEST_F(DeserializationTexts, AShortOneNeedsNoFlowIn) {
  reader.feed(texts(reader.id, Attr::profileName, "fast", 100)[0]);
  EXPECT_EQ(unit->profileName(), "fast");
  EXPECT_EQ(reader.flowIn(), nullptr);
  reader.feed(texts(reader.id, Attr::profileName, "", 100)[0]);
  EXPECT_EQ(unit->profileName(), "");
  EXPECT_THAT(ear->heard, ElementsAre("profileName", "profileName"));
}

TEST_F(DeserializationTexts, OneInThreeRecordsIsOneChangeAfterTheThird) {
  const auto letters = texts(reader.id, Attr::profileName, "fast and loose", 5);
  ASSERT_EQ(letters.size(), 3U);
  reader.feed(letters[0]);
  ASSERT_NE(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.flowIn()->aid(), Attr::profileName);
  EXPECT_FALSE(reader.flowIn()->isTransaction());
  reader.feed(letters[1]);
  EXPECT_EQ(unit->profileName(), "");
  EXPECT_THAT(ear->heard, IsEmpty());
  reader.feed(letters[2]);
  EXPECT_EQ(unit->profileName(), "fast and loose");
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_THAT(ear->heard, ElementsAre("profileName"));
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST_F(DeserializationTexts, OtherRecordsMayComeBetweenItsOwn) {
  const auto letters = texts(reader.id, Attr::maintEnterInstance, "enter::System::1", 8);
  reader.feed(letters[0]);
  reader.feed(letter(reader.id, Attr::state, [](Out& out) { out.put32(1); }));
  reader.feed(letters[1]);
  EXPECT_EQ(unit->maintEnterInstance(), "enter::System::1");
  EXPECT_EQ(unit->state(), active);
}

TEST_F(DeserializationTexts, AnAbortDropsWhatHasCome) {
  const auto letters = texts(reader.id, Attr::profileName, "fast and loose", 5);
  reader.feed(letters[0]);
  reader.feed(letters[1]);
  reader.feed(marker(reader.id, Attr::profileName, Adapter::attrTransactionAbort));
  EXPECT_EQ(reader.flowIn(), nullptr);
  reader.feed(texts(reader.id, Attr::profileName, "new", 5)[0]);
  EXPECT_EQ(unit->profileName(), "new");
  EXPECT_THAT(ear->heard, ElementsAre("profileName"));
}

TEST_F(DeserializationTexts, AMarkerForOneThatIsNotUnderWayEndsThere) {
  reader.feed(texts(reader.id, Attr::profileName, "fast and loose", 5)[0]);
  reader.feed(marker(reader.id, Attr::maintExitInstance, Adapter::attrTransactionAbort));
  reader.feed(marker(reader.id, Attr::maintExitInstance, Adapter::attrTransactionEnd));
  reader.feed(marker(reader.id, Attr::maintExitInstance, Adapter::attrTransactionBegin));
  ASSERT_NE(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.flowIn()->aid(), Attr::profileName);
  EXPECT_NE(reader.flowIn()->iter(), nullptr);
}

TEST_F(DeserializationTexts, ASecondOneInPartsEndsTheConnectionAndNotTheProcess) {
  reader.feed(texts(reader.id, Attr::profileName, "fast and loose", 5)[0]);
  reader.feed(texts(reader.id, Attr::maintEnterInstance, "fast and loose", 5)[0]);
  EXPECT_EQ(reader.failure(), "malformed record: maintEnterInstance goes on where another text is "
                              "under way");
  EXPECT_EQ(unit->profileName(), "");
}

// Entries whose value is a text.

TEST_F(DeserializationTexts, AnEntryInThreeRecordsIsOneChange) {
  const auto letters = texts(reader.id, Attr::history, "fast and loose", 5, 7.0);
  ASSERT_EQ(letters.size(), 3U);
  reader.feed(letters[0]);
  ASSERT_NE(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.flowIn()->aid(), Attr::history);
  EXPECT_EQ(*static_cast<double*>(reader.flowIn()->idx()), 7.0);
  reader.feed(letters[1]);
  EXPECT_EQ(unit->historyMap().count(), 0U);
  reader.feed(letters[2]);
  EXPECT_EQ(unit->history(7.0), "fast and loose");
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_THAT(ear->heard, ElementsAre("history 7"));
}

TEST_F(DeserializationTexts, AnEntryLosesItsMark) {
  unit->historyIs(7.0, "fast");
  unit->historyMap()[7.0]->zelMarkedForDeletionIs(true);
  reader.feed(texts(reader.id, Attr::history, "fast", 100, 7.0)[0]);
  EXPECT_FALSE(unit->historyMap()[7.0]->zelMarkedForDeletion());
  unit->historyMap()[7.0]->zelMarkedForDeletionIs(true);
  for (const std::string& one : texts(reader.id, Attr::history, "fast", 2, 7.0)) {
    EXPECT_TRUE(unit->historyMap()[7.0]->zelMarkedForDeletion());
    reader.feed(one);
  }
  EXPECT_FALSE(unit->historyMap()[7.0]->zelMarkedForDeletion());
}

TEST_F(DeserializationTexts, AWholeEntryMayComeBetweenTheRecordsOfAnother) {
  const auto letters = texts(reader.id, Attr::history, "fast and loose", 8, 7.0);
  reader.feed(letters[0]);
  reader.feed(texts(reader.id, Attr::history, "whole", 100, 3.0)[0]);
  EXPECT_EQ(unit->history(3.0), "whole");
  ASSERT_NE(reader.flowIn(), nullptr);
  reader.feed(letters[1]);
  EXPECT_EQ(unit->history(7.0), "fast and loose");
}

TEST_F(DeserializationTexts, ASecondEntryInPartsEndsTheConnection) {
  reader.feed(texts(reader.id, Attr::history, "fast and loose", 8, 7.0)[0]);
  reader.feed(texts(reader.id, Attr::history, "fast and loose", 8, 3.0)[0]);
  EXPECT_EQ(reader.failure(), "malformed record: history goes on where another text is under way");
  EXPECT_EQ(unit->historyMap().count(), 0U);
}

TEST_F(DeserializationTexts, AnAbortedEntryLeavesTheTransactionOpen) {
  unit->historyIs(1.0, "old");
  reader.sent();
  reader.feed(marker(reader.id, Attr::history, Adapter::attrTransactionBegin));
  reader.feed(texts(reader.id, Attr::history, "fast and loose", 8, 7.0)[0]);
  reader.feed(marker(reader.id, Attr::history, Adapter::attrTransactionAbort));
  ASSERT_NE(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.flowIn()->iter(), nullptr);
  EXPECT_EQ(reader.flowIn()->idx(), nullptr);
  EXPECT_EQ(reader.flowIn()->aid(), Attr::history);
  EXPECT_TRUE(reader.adapter->handlingFlowInFor(Attr::history));
  EXPECT_TRUE(unit->historyMap()[1.0]->zelMarkedForDeletion());
  reader.feed(marker(reader.id, Attr::history, Adapter::attrTransactionEnd));
  EXPECT_EQ(unit->historyMap().count(), 0U);
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST(DeserializationLimits, PartialTextIsBounded) {
  Zel::ConnectionLimits limits;
  limits.maxPartialText = 50000;
  Reader<Status> reader(0, limits);
  const auto letters = texts(reader.id, Attr::profileName, text(100000), 20000);
  reader.feed(letters[0]);
  reader.feed(letters[1]);
  EXPECT_EQ(reader.failure(), "");
  reader.feed(letters[2]);
  EXPECT_EQ(reader.failure(), "unfinished texts of 60000 bytes, at most 50000 are kept");
  EXPECT_EQ(reader.entity->profileName(), "");
}

// Members.

struct DeserializationMembers : testing::Test {
  static std::string member(const char* key, EntityId id) {
    return letter(
        Reader<StatusDir>::id, StatusDir::Attr::status,
        [&](Out& out) {
          out.putString(key);
          out.putEntityId(id);
        },
        Zel::NboAttrLog::childRecordTag);
  }
  static std::string genId(EntityId to, unsigned number) {
    return letter(to, Attr::genId, [&](Out& out) { out.put32(number); });
  }
  Demuxer& demuxer() const { return *reader.connection->demuxer(); }

  Reader<StatusDir> reader;
  const Ptr<StatusDir> dir = reader.entity;
  const Ptr<DirEar> ear = listen<DirEar>(dir);
};

TEST_F(DeserializationMembers, ANewOneIsMadeAndHearsItsRecords) {
  reader.feed(member("System", {4, 0}) + genId({4, 0}, 7));
  ASSERT_TRUE(dir->status("System"));
  EXPECT_EQ(dir->status("System")->genId(), 7U);
  EXPECT_THAT(ear->heard, ElementsAre("System"));
  EXPECT_EQ(demuxer().adapters(), 2U);
  EXPECT_THAT(reader.sent(), IsEmpty());
  const auto adapter = reader.adapter->statusNboAttrLogAdapter(dir->status("System"));
  ASSERT_TRUE(adapter);
  EXPECT_EQ(adapter->entityId(), (EntityId{4, 0}));
  EXPECT_FALSE(adapter->hasFlag(Adapter::flagChildPending));
  dir->status("System")->stateIs(active);
  const auto seen = records(*reader.connection);
  ASSERT_EQ(briefs(seen), Briefs{"262"});
  EXPECT_EQ(seen[0].entity, (EntityId{4, 0}));
}

TEST_F(DeserializationMembers, OneThatIsThereUnderTheSameIdStaysAndLosesItsMark) {
  reader.feed(member("System", {4, 0}));
  const auto before = dir->status("System");
  const auto adapter = reader.adapter->statusNboAttrLogAdapter(before);
  adapter->flagsIs(Adapter::flagChildPending, true);
  reader.feed(member("System", {4, 0}));
  EXPECT_TRUE(dir->status("System") == before);
  EXPECT_FALSE(adapter->hasFlag(Adapter::flagChildPending));
  EXPECT_TRUE(reader.adapter->statusNboAttrLogAdapter(before) == adapter);
  EXPECT_THAT(ear->heard, ElementsAre("System"));
}

TEST_F(DeserializationMembers, OneThatIsThereWithoutAnAdapterIsAttached) {
  const Ptr<Status> before = dir->newStatus("System");
  before->historyIs(1.0, "kept");
  reader.feed(member("System", {4, 0}) + genId({4, 0}, 7));
  EXPECT_TRUE(dir->status("System") == before);
  EXPECT_EQ(before->genId(), 7U);
  EXPECT_EQ(before->history(1.0), "kept");
  EXPECT_THAT(ear->heard, IsEmpty());
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST_F(DeserializationMembers, AnotherOfTheSameNameTakesItsPlace) {
  reader.feed(member("System", {4, 0}) + genId({4, 0}, 7));
  const auto before = dir->status("System");
  reader.feed(member("System", {6, 0}) + genId({6, 0}, 8));
  const auto after = dir->status("System");
  ASSERT_TRUE(after);
  EXPECT_FALSE(after == before);
  EXPECT_EQ(before->genId(), 7U);
  EXPECT_EQ(after->genId(), 8U);
  EXPECT_THAT(ear->heard, ElementsAre("System", "System", "System")); // came, went, came
  EXPECT_EQ(demuxer().adapters(), 2U);
  reader.feed(genId({4, 0}, 9));
  EXPECT_EQ(reader.counts().unknownEntities, 1U);
  EXPECT_EQ(before->genId(), 7U);
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST_F(DeserializationMembers, OneThatThisEndHasAnnouncedTooTakesTheExportersId) {
  dir->statusIs("System");
  const auto mine = reader.adapter->statusNboAttrLogAdapter(dir->status("System"));
  EXPECT_TRUE(demuxer().isOwnId(mine->entityId()));
  EXPECT_EQ(reader.sent(), Briefs{"258"});
  const auto before = dir->status("System");
  reader.feed(member("System", {4, 0}) + genId({4, 0}, 7));
  EXPECT_TRUE(dir->status("System") == before);
  EXPECT_EQ(before->genId(), 7U);
  EXPECT_EQ(mine->entityId(), (EntityId{4, 0}));
}

TEST_F(DeserializationMembers, AnIdThatMayNotBeGivenEndsTheConnection) {
  for (const EntityId id : {EntityId{0, 0}, Zel::orphanEntityId, EntityId{2, 0x80000000}}) {
    Reader<StatusDir> other;
    other.feed(member("System", id));
    EXPECT_EQ(other.failure(), "change of attribute 258 lost: malformed record: a member's id");
  }
}

TEST_F(DeserializationMembers, ADeletionOfOneIsSilentTowardsThePeer) {
  reader.feed(member("System", {4, 0}));
  reader.feed(letter(reader.id, -258, [](Out& out) { out.putString("System"); }));
  EXPECT_FALSE(dir->status("System"));
  EXPECT_EQ(demuxer().adapters(), 1U);
  reader.feed(letter(reader.id, -258, [](Out& out) { out.putString("System"); }));
  EXPECT_EQ(reader.counts().refused + reader.counts().badValues, 0U);
  EXPECT_THAT(ear->heard, ElementsAre("System", "System"));
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST_F(DeserializationMembers, TheRecordIsReadAgainUnderTheDirectorysId) {
  const std::string bytes = member("System", {4, 0});
  const auto space = reader.connection->inputSpace();
  reader.feed(bytes);
  EntityId there;
  std::memcpy(&there, space.data() + bytes.size() - 1 - sizeof there, sizeof there);
  EXPECT_EQ(there, reader.id);
}

} // namespace
