// Records that tell how far an entity has come, and records that are given from outside.

#include "Ear.h"
#include "Log.h"

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
  EXPECT_EQ(reader.roots->status("mirror"), Zel::Dir::present);
  reader.feed(syncMode(reader.id, Adapter::syncModeResync));
  EXPECT_EQ(reader.roots->status("mirror"), Zel::Dir::present);
  reader.feed(syncMode(reader.id, Adapter::syncModeSynced));
  EXPECT_EQ(reader.roots->status("mirror"), Zel::Dir::loaded);
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

struct FromOutside : testing::Test {
  /// Gives a record to the adapter without letting it be applied.
  void give(const std::string& bytes) {
    const auto in = Zel::makeObject<Zel::NboAttrLog::In>(nullptr, std::size_t{4096});
    std::memcpy(in->space().data(), bytes.data(), bytes.size());
    in->received(bytes.size());
    Zel::NboAttrLog::Record record;
    ASSERT_TRUE(in->recordIs(record));
    reader.adapter->handleAttrDeserialization(record.header.attrId, {},
                                              static_cast<unsigned>(record.payload), in);
    left = in->left();
  }

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

} // namespace
