// An entity with one id on several connections: a record that tells how far it has come is told to
// its adapters of all of them.

#include "Log.h"

#include <Zel/ValueCodec>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Group::GroupKey;
using testing::IsEmpty;

constexpr EntityId unified{3, 0};

std::string syncMode(unsigned mode) {
  return letter(unified, Zel::NboAttrLog::attrIdSyncMode, [&](Out& out) { out.put32(mode); });
}

std::string group(const GroupKey& key) {
  return letter(unified, Status::Attr::group, [&](Out& out) {
    Zel::encode(key, out);
    out.put8(1);
  });
}

/// Another connection, whose adapter for an entity comes later than itself.
struct Other {
  ~Other() { connection->close(); }

  void attach(const Ptr<Status>& entity, EntityId id) {
    adapter =
        entity->zelNboAttrLogSaIs(Flags(Adapter::flagWeakNotifiee), 1, connection->out(), nullptr);
    connection->demuxer()->adapterIs(adapter, id);
  }
  Briefs sent() const { return briefs(records(*connection)); }

  const Ptr<Connection> connection = Zel::makeObject<Connection>(Connection::End::first);
  Ptr<Zel::Entity::ZelNboAttrLogSa> adapter;
};

/// The connection that a record comes over, between one that came before it and one after it.
struct UnifiedIds : testing::Test {
  UnifiedIds() {
    reader.connection->demuxer()->adapterIs(reader.adapter, unified);
    first.attach(unit, unified);
    last.attach(unit, unified);
  }

  std::vector<Adapter::SyncMode> modes() const {
    return {first.adapter->syncMode(), reader.adapter->syncMode(), last.adapter->syncMode()};
  }

  Other first;
  Reader<Status> reader;
  Other last;
  const Ptr<Status> unit = reader.entity;
  const GroupKey kept{Group::groupTypeBgp, "kept"};
  const GroupKey gone{Group::groupTypeBgp, "gone"};
};

TEST_F(UnifiedIds, AModeIsTheModeOnAllConnections) {
  reader.feed(syncMode(Adapter::syncModeResync));
  EXPECT_EQ(modes(), std::vector(3, Adapter::syncModeResync));
  reader.feed(syncMode(Adapter::syncModeSynced));
  EXPECT_EQ(modes(), std::vector(3, Adapter::syncModeSynced));
  for (const Ptr<Adapter>& adapter :
       {Ptr<Adapter>(first.adapter), Ptr<Adapter>(reader.adapter), Ptr<Adapter>(last.adapter)}) {
    EXPECT_FALSE(adapter->hasFlag(Adapter::flagSyncFanOut | Adapter::flagReactorActive));
  }
  EXPECT_THAT(first.sent(), IsEmpty());
  EXPECT_THAT(reader.sent(), IsEmpty());
  EXPECT_THAT(last.sent(), IsEmpty());
}

TEST_F(UnifiedIds, AnotherEntityUnderTheIdAndAnotherIdOfTheEntityAreLeftAlone) {
  const auto stranger = statusFactory("stranger");
  Other other;
  other.attach(stranger, unified);
  Other apart;
  apart.attach(unit, {2, 0});
  reader.feed(syncMode(Adapter::syncModeResync));
  EXPECT_EQ(modes(), std::vector(3, Adapter::syncModeResync));
  EXPECT_EQ(other.adapter->syncMode(), Adapter::syncModeSynced);
  EXPECT_EQ(apart.adapter->syncMode(), Adapter::syncModeSynced);
}

TEST_F(UnifiedIds, WhatDoesNotComeAgainIsDeletedAndToldToTheOthers) {
  unit->groupIs(kept, true);
  unit->groupIs(gone, true);
  for (const Briefs& sent : {first.sent(), reader.sent(), last.sent()}) {
    EXPECT_EQ(sent, (Briefs{"260", "260"}));
  }
  reader.feed(syncMode(Adapter::syncModeResync));
  EXPECT_TRUE(unit->groupMap()[gone]->zelMarkedForDeletion());
  reader.feed(group(kept) + syncMode(Adapter::syncModeSynced));
  EXPECT_TRUE(unit->group(kept));
  EXPECT_FALSE(unit->group(gone));
  EXPECT_EQ(first.sent(), Briefs{"-260"});
  EXPECT_THAT(reader.sent(), IsEmpty());
  EXPECT_EQ(last.sent(), Briefs{"-260"});
}

TEST_F(UnifiedIds, AModeOpensNoTransactionThatHoldsChangesBack) {
  reader.feed(syncMode(Adapter::syncModeResync));
  EXPECT_EQ(reader.connection->demuxer()->flowIn(unified), nullptr);
  unit->groupIs(kept, true);
  EXPECT_EQ(first.sent(), Briefs{"260"});
  EXPECT_EQ(reader.sent(), Briefs{"260"});
  EXPECT_EQ(last.sent(), Briefs{"260"});
}

TEST_F(UnifiedIds, AConnectionThatIsClosedIsPassedOver) {
  last.connection->close();
  reader.feed(syncMode(Adapter::syncModeResync));
  EXPECT_EQ(first.adapter->syncMode(), Adapter::syncModeResync);
  EXPECT_EQ(reader.adapter->syncMode(), Adapter::syncModeResync);
  EXPECT_EQ(last.adapter->syncMode(), Adapter::syncModeSynced);
  EXPECT_EQ(reader.failure(), "");
}

} // namespace
