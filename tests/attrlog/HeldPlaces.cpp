// A place in a text or in a collection that a flow holds: a run begins where it is told to all the
// same, and nobody else takes the place for his own.

#include "Log.h"

#include <Zel/StateDigest>

#include <gmock/gmock.h>

namespace {

using namespace Maintenance;
using namespace Wiretap;
using Attr = Unit::Status::Attr;
using testing::IsEmpty;

struct HeldPlaces : testing::Test {
  AttributeId run(AttributeId start) { return writer.adapter->handleAttrFlowOut(start); }
  auto flow() const { return writer.adapter->flowOut(); }
  auto marks() const { return flow()->zelDirtyBitSet0(); }

  Writer<Unit::Status> writer{Unit::statusFactory("System")};
  const Ptr<Unit::Status> unit = writer.entity;
};

struct HeldTexts : HeldPlaces {
  HeldTexts() {
    unit->maintEnterInstanceIs(text);
    EXPECT_EQ(writer.sent(), Briefs{"269+"});
  }
  /// The place is where the first record has ended.
  void expectHeld() const {
    ASSERT_TRUE(flow());
    EXPECT_EQ(flow()->attrId(), Attr::maintEnterInstance);
    ASSERT_NE(flow()->valueIter(), nullptr);
    const auto* const place = static_cast<String8::IteratorConst*>(flow()->valueIter());
    EXPECT_EQ(place->rest(), text.view().substr(32735));
  }

  const String8 text{std::string(40000, 'x') + std::string(30000, 'y')};
};

TEST_F(HeldTexts, ARunBeginsAtItsStart) {
  marks().zelIsStateDirtyIs(true);
  marks().zelIsGenIdDirtyIs(true);
  EXPECT_EQ(run(Attr::genId), 0);
  EXPECT_EQ(writer.sent(), Briefs{"274"});
  expectHeld();
  EXPECT_EQ(run(Attr::state), Attr::reason);
  EXPECT_EQ(writer.sent(), Briefs{"262"});
  expectHeld();
  EXPECT_EQ(run(0), Attr::unitType);
  EXPECT_EQ(run(Attr::unitType), Attr::group);
  EXPECT_EQ(run(266), 0);
  EXPECT_EQ(run(275), 0);
  EXPECT_THAT(writer.sent(), IsEmpty());
  expectHeld();
  EXPECT_EQ(writer.worked(), (Briefs{"269+", "269"}));
  EXPECT_FALSE(flow());
}

TEST_F(HeldTexts, AnotherTextWaitsForThePlace) {
  marks().zelIsMaintExitInstanceDirtyIs(true);
  EXPECT_EQ(run(Attr::maintExitInstance), Attr::aggTrafficRate);
  EXPECT_THAT(writer.sent(), IsEmpty()); // what is left of the one text is nothing of the other
  EXPECT_EQ(marks().word(), 0x400U | 0x800U | 0x4U | 0x200U | 0x2000U);
  expectHeld();
  const auto seen = writer.seenWorked();
  EXPECT_EQ(briefs(seen), (Briefs{"269+", "269", "270"}));
  EXPECT_EQ(hex(seen.back().payload), "00000000");
}

TEST_F(HeldTexts, SoDoCollections) {
  writer.freeIs(5000);
  unit->historyIs(1.0, "line");
  unit->groupIs(Group::GroupKey(Group::groupTypeBgp, "peers"), true);
  taken(*writer.connection);
  for (const AttributeId attr : {Attr::group, Attr::history}) {
    EXPECT_EQ(run(attr), attr == Attr::group ? Attr::profileName : Attr::maintEnterInstance);
    EXPECT_THAT(writer.sent(), IsEmpty()) << attr;
    expectHeld();
  }
  EXPECT_EQ(writer.worked(), (Briefs{"269+", "269", "260", "268"}));
}

TEST_F(HeldTexts, AMuteAdapterIsDoneAndKeepsThePlace) {
  for (const unsigned flag : {Adapter::flagMuted, Adapter::flagChildPending}) {
    writer.adapter->flagsIs(flag, true);
    EXPECT_TRUE(writer.adapter->zelHandleMaintEnterInstanceSerialize());
    EXPECT_EQ(run(Attr::maintEnterInstance), Attr::maintExitInstance); // as a text is owed
    EXPECT_EQ(run(Attr::genId), 0);
    EXPECT_EQ(marks().word(), 0x4U | 0x200U | 0x2000U); // no text is owed, all else is synced
    expectHeld();
    while (writer.connection->service()) {
    }
    EXPECT_EQ(writer.connection->demuxer()->parked(), 1U);
    EXPECT_THAT(writer.sent(), IsEmpty());
    expectHeld();
    writer.adapter->flagsIs(flag, false);
  }
  EXPECT_EQ(writer.worked(), (Briefs{"269+", "269"}));
  EXPECT_FALSE(flow());
}

TEST_F(HeldTexts, AMuteAdapterGoesOnToWhatElseIsOwed) {
  marks().zelIsGenIdDirtyIs(true);
  writer.adapter->flagsIs(Adapter::flagMuted, true);
  EXPECT_EQ(run(Attr::maintEnterInstance), Attr::maintExitInstance);
  writer.adapter->flagsIs(Adapter::flagMuted, false);
  EXPECT_EQ(writer.worked(), (Briefs{"269+", "269", "274"}));
}

TEST_F(HeldTexts, ANewerTextGivesThePlaceUp) {
  marks().zelIsGenIdDirtyIs(true);
  EXPECT_EQ(run(Attr::genId), 0);
  unit->maintEnterInstanceIs("short");
  EXPECT_EQ(writer.worked(), (Briefs{"274", "abort 269", "269"}));
}

struct HeldWalks : HeldPlaces {
  static constexpr unsigned keys = 1000;

  HeldWalks() {
    for (unsigned i = 0; i < keys; ++i) {
      unit->groupIs(Group::GroupKey(Group::groupTypeBgp, String8(std::to_string(i) + filler)),
                    true);
    }
    unit->historyIs(1.0, "line");
    writer.worked();
    writer.adapter->doThis();
    writer.connection->service(1);
    sent = writer.sent();
    expectHeld();
  }
  void expectHeld() const {
    ASSERT_TRUE(flow());
    EXPECT_EQ(flow()->attrId(), Attr::group);
    EXPECT_NE(flow()->bookmark(), nullptr);
  }

  const std::string filler = std::string(100, 'x');
  Briefs sent;
};

TEST_F(HeldWalks, ARunBeginsAtItsStart) {
  EXPECT_EQ(run(Attr::state), Attr::reason);
  EXPECT_EQ(writer.sent(), Briefs{"262"});
  expectHeld();
  EXPECT_EQ(run(0), Attr::group);
  EXPECT_EQ(run(266), 0);
  EXPECT_EQ(run(Attr::genId), 0);
  EXPECT_EQ(writer.sent(), Briefs{"274"});
  expectHeld();
}

TEST_F(HeldWalks, AnotherCollectionWaitsForThePlace) {
  EXPECT_EQ(run(Attr::history), Attr::maintEnterInstance);
  EXPECT_EQ(run(Attr::maintEnterInstance), Attr::maintExitInstance);
  EXPECT_EQ(run(Attr::intfsViolatingTrafficThreshold), Attr::totalIntfTrafficViolations);
  EXPECT_THAT(writer.sent(), IsEmpty());
  expectHeld();
  for (std::string& one : writer.worked()) {
    sent.push_back(std::move(one));
  }
  Briefs expected = {"259", "begin 260"};
  expected.insert(expected.end(), keys, "260");
  for (const char* const one :
       {"end 260", "261", "262", "263", "264", "265", "267", "begin 268", "268", "end 268", "269",
        "270", "271", "begin 272", "end 272", "273", "274"}) {
    expected.emplace_back(one);
  }
  EXPECT_EQ(sent, expected);
  EXPECT_FALSE(flow());
}

TEST_F(HeldWalks, AMuteAdapterIsDoneAndKeepsThePlace) {
  writer.adapter->flagsIs(Adapter::flagMuted, true);
  EXPECT_TRUE(writer.adapter->zelHandleGroupSerializeColl());
  EXPECT_EQ(run(Attr::group), Attr::profileName); // as more is owed than the collection
  expectHeld();
  writer.adapter->flagsIs(Adapter::flagMuted, false);
  const Briefs rest = writer.worked();
  EXPECT_EQ(std::count(sent.begin(), sent.end(), "260") +
                std::count(rest.begin(), rest.end(), "260"),
            keys);
  EXPECT_EQ(std::count(rest.begin(), rest.end(), "end 260"), 1);
}

} // namespace
