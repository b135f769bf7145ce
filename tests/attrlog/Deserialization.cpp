// What a record does to the entity that it is for.

#include "Ear.h"
#include "Log.h"

#include "support/Failure.h"

#include <Zel/MsgChannel>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;
using Group::GroupKey;
using testing::ElementsAre;
using testing::IsEmpty;

struct Deserialization : testing::Test {
  template <class Payload>
  void arrives(AttributeId attr, Payload&& payload) {
    reader.feed(letter(reader.id, attr, payload));
  }
  void number(AttributeId attr, std::uint32_t value) {
    arrives(attr, [&](Out& out) { out.put32(value); });
  }
  static void put(Out& out, const GroupKey& key) { Zel::encode(key, out); }

  Reader<Status> reader;
  const Ptr<Status> unit = reader.entity;
  const Ptr<Ear> ear = listen<Ear>(unit);
};

TEST_F(Deserialization, ARecordGoesThroughTheMutator) {
  const unsigned version = unit->versionCounter();
  number(Attr::state, failedExit);
  EXPECT_EQ(unit->state(), failedExit);
  EXPECT_EQ(unit->versionCounter(), version + 1);
  number(Attr::state, failedExit);
  EXPECT_EQ(unit->versionCounter(), version + 1);
  EXPECT_THAT(ear->heard, ElementsAre("state"));
  EXPECT_FALSE(reader.adapter->hasFlag(Adapter::flagReactorActive));
  EXPECT_THAT(reader.sent(), IsEmpty()); // no echo
  unit->stateIs(active);
  EXPECT_EQ(reader.sent(), Briefs{"262"});
}

TEST_F(Deserialization, EachPlainKindIsRead) {
  number(Attr::unitType, builtin);
  number(Attr::reason, srcCli);
  arrives(Attr::timeOfStateChange, [](Out& out) { Zel::appendWire(out, 12.5); });
  arrives(Attr::onBootMaintExitTime, [](Out& out) { Zel::appendWire(out, -1.0); });
  number(Attr::historySize, 0xffffffff);
  TrafficRates rates;
  rates.outBitsRateIs(1ULL << 40);
  rates.statsUpdateTimeIs(3.5);
  arrives(Attr::aggTrafficRate, [&](Out& out) { Zel::encode(rates, out); });
  number(Attr::totalIntfTrafficViolations, 7);
  number(Attr::genId, 8);
  EXPECT_EQ(unit->unitType(), builtin);
  EXPECT_EQ(unit->reason(), srcCli);
  EXPECT_EQ(unit->timeOfStateChange(), 12.5);
  EXPECT_EQ(unit->onBootMaintExitTime(), -1.0);
  EXPECT_EQ(unit->historySize(), 0xffffffff);
  EXPECT_EQ(unit->aggTrafficRate(), rates);
  EXPECT_EQ(unit->totalIntfTrafficViolations(), 7U);
  EXPECT_EQ(unit->genId(), 8U);
  EXPECT_THAT(ear->heard,
              ElementsAre("unitType", "reason", "timeOfStateChange", "onBootMaintExitTime",
                          "historySize", "aggTrafficRate", "totalIntfTrafficViolations", "genId"));
  EXPECT_EQ(reader.counts().records, 9U);
  EXPECT_EQ(reader.failure(), "");
}

TEST_F(Deserialization, AnUnknownEnumeratorOfASingularIsCountedAndKept) {
  number(Attr::state, 99);
  EXPECT_EQ(static_cast<int>(unit->state()), 99);
  EXPECT_EQ(reader.counts().unknownEnums, 1U);
  number(Attr::reason, 0xffffffff);
  EXPECT_EQ(static_cast<int>(unit->reason()), -1);
  EXPECT_EQ(reader.counts().unknownEnums, 2U);
  EXPECT_EQ(reader.counts().badValues, 0U);
}

TEST_F(Deserialization, AnUnknownEnumeratorInAKeyIsARangeFailureAndSkipped) {
  arrives(Attr::group, [](Out& out) {
    out.put32(9);
    out.putString("peers");
    out.put8(1);
  });
  number(Attr::genId, 8);
  EXPECT_EQ(unit->groupMap().count(), 0U);
  EXPECT_EQ(reader.counts().unknownEnums, 0U);
  EXPECT_EQ(reader.counts().badValues, 1U);
  EXPECT_EQ(unit->genId(), 8U);
}

TEST_F(Deserialization, AnUnknownAttributeIsTheBasesAndSkipped) {
  number(Attr::genId + 1, 1);
  number(Attr::defaultHistorySize, 1);
  number(Attr::unitName, 1);
  number(200, 1);
  number(-Attr::state, 1);
  number(144, 1); // this type is no directory
  EXPECT_EQ(reader.counts().unknownAttributes, 6U);
  EXPECT_THAT(ear->heard, IsEmpty());
  EXPECT_EQ(reader.failure(), "");
}

TEST_F(Deserialization, ARecordForNobodyIsCounted) {
  reader.feed(letter(EntityId{4, 0}, Attr::state, [](Out& out) { out.put32(1); }));
  EXPECT_EQ(reader.counts().unknownEntities, 1U);
  EXPECT_THAT(ear->heard, IsEmpty());
}

TEST_F(Deserialization, AKeyedRecordWritesTheEntryAndTakesItsMark) {
  const GroupKey peers(Group::groupTypeBgp, "peers");
  const auto arrive = [&](bool value) {
    arrives(Attr::group, [&](Out& out) {
      put(out, peers);
      out.put8(value ? 1 : 0);
    });
  };
  arrive(true);
  EXPECT_TRUE(unit->group(peers));
  unit->groupMap()[peers]->zelMarkedForDeletionIs(true);
  arrive(true); // though nothing changes
  EXPECT_FALSE(unit->groupMap()[peers]->zelMarkedForDeletion());
  arrive(false);
  EXPECT_FALSE(unit->group(peers));
  EXPECT_EQ(unit->groupMap().count(), 1U);
  EXPECT_THAT(ear->heard, ElementsAre("group peers", "group peers"));
}

TEST_F(Deserialization, TheMarkGoesWhenTheMutatorHasRun) {
  const GroupKey peers(Group::groupTypeBgp, "peers");
  unit->groupIs(peers, false);
  unit->groupMap()[peers]->zelMarkedForDeletionIs(true);
  bool wasMarked = false;
  ear->onHeard = [&](const std::string&) {
    wasMarked = unit->groupMap()[peers]->zelMarkedForDeletion();
  };
  arrives(Attr::group, [&](Out& out) {
    put(out, peers);
    out.put8(1);
  });
  EXPECT_TRUE(wasMarked);
  EXPECT_FALSE(unit->groupMap()[peers]->zelMarkedForDeletion());
}

TEST_F(Deserialization, ADeletionOfWhatIsNotThereDoesNotFail) {
  const GroupKey peers(Group::groupTypeBgp, "peers");
  arrives(-Attr::group, [&](Out& out) { put(out, peers); });
  arrives(-Attr::history, [](Out& out) { Zel::appendWire(out, 1.0); });
  EXPECT_EQ(reader.counts().badValues + reader.counts().refused, 0U);
  EXPECT_THAT(ear->heard, IsEmpty());
  unit->groupIs(peers, true);
  unit->historyIs(1.0, "line");
  arrives(-Attr::group, [&](Out& out) { put(out, peers); });
  arrives(-Attr::history, [](Out& out) { Zel::appendWire(out, 1.0); });
  EXPECT_EQ(unit->groupMap().count() + unit->historyMap().count(), 0U);
  EXPECT_EQ(reader.sent(), (Briefs{"260", "268"})); // of the local writes alone
}

TEST_F(Deserialization, ARecordDuringARecordBreaksARuleAndEndsTheConnection) {
  reader.adapter->flagsIs(Adapter::flagReactorActive, true);
  EXPECT_EQ(Support::messageOf<Zel::InternalException>(
                [&] { reader.adapter->handleAttrDeserialization(Attr::state, {}, 4, nullptr); }),
            "entity reactor is already active");
  number(Attr::state, 1);
  EXPECT_EQ(reader.failure(), "a record could not be applied: entity reactor is already active");
  EXPECT_EQ(reader.counts().refused, 0U);
  EXPECT_EQ(unit->state(), init);
}

TEST_F(Deserialization, AWriteWithoutTheRightIsRefused) {
  reader.adapter->flagsIs(Adapter::flagRemoteReadOnly, true);
  EXPECT_EQ(Support::messageOf<Zel::InternalException>(
                [&] { reader.adapter->handleAttrDeserialization(Attr::state, {}, 4, nullptr); }),
            "write-update from readonly proxy: mirror peerName: somebody");
  EXPECT_FALSE(reader.adapter->hasFlag(Adapter::flagReactorActive));
  number(Attr::state, 1);
  arrives(-Attr::history, [](Out& out) { Zel::appendWire(out, 1.0); });
  EXPECT_EQ(reader.counts().refused, 2U);
  EXPECT_EQ(unit->state(), init);
  EXPECT_THAT(ear->heard, IsEmpty());
  EXPECT_TRUE(reader.connection->isUp());
}

TEST_F(Deserialization, AShortRecordLeavesFlagAndReadingAsTheyWere) {
  arrives(Attr::state, [](Out& out) { out.put8(1); });
  arrives(Attr::aggTrafficRate, [](Out& out) { out.put64(1); });
  EXPECT_EQ(reader.counts().badValues, 2U);
  EXPECT_FALSE(reader.adapter->hasFlag(Adapter::flagReactorActive));
  number(Attr::genId, 3);
  EXPECT_EQ(unit->genId(), 3U);
}

TEST_F(Deserialization, ARecordReachesTheOtherConnections) {
  const auto other = Zel::makeObject<Connection>(Connection::End::first, "third");
  other->demuxer()->exportIs(unit);
  while (other->service()) {
  }
  taken(*other);
  number(Attr::state, 1);
  reader.feed(texts(reader.id, Attr::profileName, "fast", 100)[0]);
  arrives(Attr::group, [&](Out& out) {
    put(out, GroupKey(Group::groupTypeBgp, "peers"));
    out.put8(1);
  });
  EXPECT_EQ(briefs(records(*other)), (Briefs{"262", "261", "260"}));
  EXPECT_THAT(reader.sent(), IsEmpty());
  other->close();
}

TEST_F(Deserialization, WithoutAConnectionNothingHappens) {
  const auto adapter =
      Zel::makeObject<Status::ZelNboAttrLogSa>(Flags(), unit, 1U, nullptr, nullptr);
  adapter->flagsIs(Adapter::flagReactorActive, true);
  adapter->handleAttrDeserialization(Attr::state, {}, 4, nullptr);
  EXPECT_TRUE(adapter->hasFlag(Adapter::flagReactorActive));
}

// With a record given from outside: it is read, and this end's value passed on.

TEST_F(Deserialization, ARecordFromOutsideIsReadAndOnlyPassedOn) {
  unit->stateIs(active);
  unit->groupIs(GroupKey(Group::groupTypeBgp, "peers"), true);
  reader.sent();
  const auto in = Zel::makeObject<Zel::NboAttrLog::In>(nullptr, std::size_t{4096});
  const auto give = [&](const std::string& bytes) {
    std::memcpy(in->space().data(), bytes.data(), bytes.size());
    in->received(bytes.size());
    Zel::NboAttrLog::Record record;
    ASSERT_TRUE(in->recordIs(record));
    reader.adapter->handleAttrDeserialization(record.header.attrId, {},
                                              static_cast<unsigned>(record.payload), in);
    EXPECT_EQ(in->left(), record.header.attrId == Attr::profileName ? 8U : 0U);
    in->recordDone();
  };
  give(letter(reader.id, Attr::state, [](Out& out) { out.put32(failedEnter); }));
  EXPECT_EQ(unit->state(), active);
  const auto seen = records(*reader.connection);
  ASSERT_EQ(briefs(seen), Briefs{"262"});
  EXPECT_EQ(seen[0].payload.back(), active);
  give(letter(reader.id, Attr::group, [&](Out& out) {
    put(out, GroupKey(Group::groupTypeBgp, "peers"));
    out.put8(0);
  }));
  give(letter(reader.id, -Attr::group,
              [&](Out& out) { put(out, GroupKey(Group::groupTypeBgp, "others")); }));
  EXPECT_TRUE(unit->group(GroupKey(Group::groupTypeBgp, "peers")));
  EXPECT_EQ(reader.sent(), (Briefs{"260", "-260"}));
  give(texts(reader.id, Attr::profileName, "fast", 100)[0]); // the chunk is not looked at
  EXPECT_EQ(unit->profileName(), "");
  EXPECT_EQ(reader.sent(), Briefs{"261"});
}

} // namespace
