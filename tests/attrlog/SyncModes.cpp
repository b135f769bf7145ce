// Records that tell how far an entity has come, and records that are given from outside.

#include "Ear.h"
#include "Log.h"

#include <attrlog/Mapping.h>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using testing::IsEmpty;

std::string syncMode(EntityId to, unsigned mode) {
  return letter(to, Zel::NboAttrLog::attrIdSyncMode, [&](Out& out) { out.put32(mode); });
}

TEST(SyncModes, SyncedMakesTheRootLoaded) {
  Reader<StatusDir> reader;
  EXPECT_EQ(reader.roots->entry("mirror")->status(), Zel::Dir::present);
  reader.feed(syncMode(reader.id, Adapter::syncModeResync));
  EXPECT_EQ(reader.roots->entry("mirror")->status(), Zel::Dir::present);
  reader.feed(syncMode(reader.id, Adapter::syncModeSynced));
  EXPECT_EQ(reader.roots->entry("mirror")->status(), Zel::Dir::loaded);
  EXPECT_FALSE(reader.adapter->hasFlag(Adapter::flagReactorActive));
  EXPECT_THAT(reader.sent(), IsEmpty());
}

TEST(SyncModes, AnotherNumberIsABadValue) {
  Reader<StatusDir> reader;
  reader.feed(syncMode(reader.id, 3) + syncMode(reader.id, 0));
  EXPECT_EQ(reader.counts().badValues, 2U);
  EXPECT_EQ(reader.failure(), "");
}

TEST(SyncModes, OfAnEntityWithAnIdOfThisConnectionAloneTellNoOther) {
  Reader<Status> reader;
  const Group::GroupKey peers(Group::groupTypeBgp, "peers");
  reader.entity->groupIs(peers, true);
  reader.feed(syncMode(reader.id, Adapter::syncModeResync));
  EXPECT_EQ(reader.adapter->syncMode(), Adapter::syncModeSynced);
  EXPECT_FALSE(reader.entity->groupMap()[peers]->zelMarkedForDeletion());
}

TEST(SyncModes, WhereNobodyMountsRootsNobodyIsTold) {
  Writer<StatusDir> writer(Zel::makeObject<StatusDir>("units"));
  const EntityId id = writer.adapter->entityId();
  Wiretap::feed(*writer.connection, syncMode(id, Adapter::syncModeResync));
  Wiretap::feed(*writer.connection, syncMode(id, Adapter::syncModeSynced));
  EXPECT_EQ(writer.connection->demuxer()->counts().records, 2U);
  EXPECT_EQ(writer.connection->failure(), "");
  EXPECT_FALSE(writer.has(Adapter::flagReactorActive));
}

/// Gives a record to the adapter without letting it be applied; yields what is left to read of it.
template <class T>
std::size_t leftOf(Reader<T>& reader, const std::string& bytes) {
  const auto in = Zel::makeObject<Zel::NboAttrLog::In>(nullptr, std::size_t{4096});
  std::memcpy(in->space().data(), bytes.data(), bytes.size());
  in->received(bytes.size());
  Zel::NboAttrLog::Record record;
  EXPECT_TRUE(in->recordIs(record));
  reader.adapter->handleAttrDeserialization(record.header.attrId, {},
                                            static_cast<unsigned>(record.payload), in);
  return in->left();
}

struct FromOutside : testing::Test {
  void give(const std::string& bytes) { left = leftOf(reader, bytes); }

  Reader<StatusDir> reader;
  const Ptr<StatusDir> dir = reader.entity;
  std::size_t left = 0;
};

TEST_F(FromOutside, AMembersRecordIsReadToItsKeyAndTheMemberAnnounced) {
  dir->newStatus("System");
  const auto member = [](const char* name) {
    return letter(Reader<StatusDir>::id, 258, [&](Out& out) {
      out.putString(name);
      out.putEntityId({4, 0});
    });
  };
  give(member("System"));
  EXPECT_EQ(left, sizeof(EntityId));
  EXPECT_EQ(reader.sent(), Briefs{"258"});
  give(member("other")); // which is not here
  EXPECT_EQ(reader.sent(), Briefs{"-258"});
  EXPECT_FALSE(dir->status("other"));
}

TEST_F(FromOutside, AMembersDeletionDeletesNobody) {
  dir->newStatus("System");
  give(letter(Reader<StatusDir>::id, -258, [](Out& out) { out.putString("System"); }));
  EXPECT_EQ(left, 0U);
  EXPECT_TRUE(dir->status("System"));
  EXPECT_EQ(reader.sent(), Briefs{"258"});
}

TEST_F(FromOutside, ARightIsNotAskedFor) {
  reader.adapter->flagsIs(Adapter::flagRemoteReadOnly, true);
  give(letter(Reader<StatusDir>::id, -258, [](Out& out) { out.putString("System"); }));
  EXPECT_EQ(reader.sent(), Briefs{"-258"});
}

TEST(FromOutsideOfInputs, APriorityIsReadAndNotApplied) {
  Reader<MergedInputDir> reader;
  reader.entity->newUnit("u", srcOnBoot);
  const std::string member = letter(reader.id, 258, [](Out& out) {
    out.putString("u");
    out.put32(srcCli);
    out.putEntityId({4, 0});
  });
  EXPECT_EQ(leftOf(reader, member), sizeof(EntityId));
  EXPECT_EQ(reader.sent(), Briefs{"258"});
  EXPECT_EQ(reader.entity->unit("u")->priority(), srcOnBoot);

  Reader<Input> input;
  EXPECT_EQ(leftOf(input, letter(input.id, 258, [](Out& out) { out.put32(srcCli); })), 0U);
  EXPECT_EQ(input.sent(), Briefs{"258"});
  EXPECT_EQ(input.entity->priority(), srcUnknown);
}

TEST(FromOutsideOfTexts, AnEntryIsReadToItsKeyAndWhatIsHereIsPassedOn) {
  Reader<Status> reader;
  reader.entity->historyIs(7.0, "fast");
  EXPECT_EQ(reader.sent(), Briefs{"268"});
  const std::string entry = texts(reader.id, Status::Attr::history, "loose", 100, 7.0)[0];
  EXPECT_EQ(leftOf(reader, entry), sizeof(std::uint32_t) + 5); // the text stays where it is
  EXPECT_EQ(reader.sent(), Briefs{"268"});
  EXPECT_EQ(reader.entity->history(7.0), "fast");
  EXPECT_EQ(leftOf(reader, texts(reader.id, Status::Attr::history, "loose", 100, 8.0)[0]), 9U);
  EXPECT_EQ(reader.sent(), Briefs{"-268"}); // there is none here
  EXPECT_EQ(reader.entity->historyMap().count(), 1U);
}

TEST(FromOutsideOfMembers, KeysAndValuesAreReadAndWhatIsHereIsPassedOn) {
  using namespace Maintenance;
  Reader<MemberToGroup> reader;
  const std::string profile = letter(reader.id, 259, [](Out& out) {
    out.put32(Profile::profileTypeUnit);
    out.put32(Profile::profileTypeBgp);
    out.putString("p");
  });
  EXPECT_EQ(leftOf(reader, profile), 0U);
  EXPECT_EQ(reader.sent(), Briefs{"-259"}); // there is none here
  EXPECT_EQ(leftOf(reader, letter(reader.id, 260, [](Out& out) { out.put32(9); })), 0U);
  EXPECT_EQ(reader.sent(), Briefs{"260"});
  EXPECT_EQ(reader.counts().unknownEnums, 1U);
  EXPECT_EQ(leftOf(reader, letter(reader.id, 261, [](Out& out) { out.put8(1); })), 0U);
  EXPECT_EQ(reader.sent(), Briefs{"261"});
  EXPECT_EQ(reader.entity->profileChangeCause(), initialCreation);
  EXPECT_FALSE(reader.entity->partOfDynamicUnit());
  EXPECT_EQ(reader.entity->versionCounter(), 0U);
}

} // namespace
