// A walk that has stopped in the midst of a collection, and may not go on for a while.

#include "Log.h"
#include "Pair.h"

#include "foreign/model/RackAttrLog.h"

#include <Zel/StateDigest>

#include <gmock/gmock.h>

namespace {

using namespace Wiretap;
using Foreign::Rack;
using Attr = Rack::Attr;
using testing::IsEmpty;

struct StoppedWalks : testing::Test {
  static constexpr unsigned keys = 1000;

  StoppedWalks() {
    for (unsigned i = 0; i < keys; ++i) {
      rack->reservationIs(String8(std::to_string(i) + std::string(100, 'x')), true);
    }
    rack->labelIs("en", "label");
    rack->noteIs(1.0, "note");
    rack->readingIs(2.0, 3.0);
    writer.worked();
    writer.adapter->doThis();
    writer.connection->service(1);
    sent = writer.sent();
  }
  auto flow() const { return writer.adapter->flowOut(); }
  Demuxer& demuxer() const { return *writer.connection->demuxer(); }
  /// Lets the flow do what it can; nothing flows out.
  void idle() {
    while (writer.connection->service()) {
    }
    EXPECT_THAT(writer.sent(), IsEmpty());
    EXPECT_EQ(demuxer().scheduled(), 0U);
    EXPECT_EQ(demuxer().parked(), 1U);
    ASSERT_TRUE(flow());
    EXPECT_EQ(flow()->attrId(), Attr::reservation);
    EXPECT_NE(flow()->bookmark(), nullptr);
  }
  /// Lets it end: every key goes once, between the markers of its collection.
  void goesOn() {
    for (std::string& one : writer.worked()) {
      sent.push_back(std::move(one));
    }
    EXPECT_FALSE(flow());
    Briefs expected = {"259", "begin 260", "end 260", "begin 261"};
    expected.insert(expected.end(), keys, "261");
    for (const char* const one :
         {"end 261", "begin 262", "262", "end 262", "263", "begin 264", "end 264", "266",
          "begin 267", "267", "end 267", "begin 268", "268", "end 268"}) {
      expected.emplace_back(one);
    }
    sent.resize(std::min(sent.size(), expected.size()));
    EXPECT_EQ(sent, expected);
  }

  Writer<Rack> writer{Zel::makeObject<Rack>("rack")};
  const Ptr<Rack> rack = writer.entity;
  Briefs sent;
};

TEST_F(StoppedWalks, GoOnWhereTheyWere) {
  ASSERT_EQ(flow()->attrId(), Attr::reservation);
  ASSERT_NE(flow()->bookmark(), nullptr);
  ASSERT_LT(sent.size(), keys / 2);
  goesOn();
}

TEST_F(StoppedWalks, WaitWhileTheAdapterIsMute) {
  writer.adapter->flagsIs(Adapter::flagMuted, true);
  idle();
  writer.adapter->flagsIs(Adapter::flagMuted, false);
  goesOn();
}

TEST_F(StoppedWalks, WaitWhileTheEntityIsNotAnnouncedAgain) {
  writer.adapter->flagsIs(Adapter::flagChildPending, true);
  idle();
  writer.adapter->flagsIs(Adapter::flagChildPending, false);
  goesOn();
}

TEST_F(StoppedWalks, OfAMirrorWaitWhileThePeerSendsTheSameCollection) {
  writer.adapter->flagsIs(Adapter::flagImported, true);
  const EntityId id = writer.adapter->entityId();
  feed(*writer.connection, marker(id, Attr::reservation, Adapter::attrTransactionBegin));
  idle();
  for (unsigned i = 0; i < keys; ++i) { // the peer has them all
    feed(*writer.connection, letter(id, Attr::reservation, [&](Out& out) {
      out.putString(String8(std::to_string(i) + std::string(100, 'x')));
      out.put8(1);
    }));
  }
  idle();
  feed(*writer.connection, marker(id, Attr::reservation, Adapter::attrTransactionEnd));
  EXPECT_EQ(rack->reservationMap().count(), keys);
  goesOn();
}

TEST_F(StoppedWalks, AreGivenUpForANewOne) {
  writer.adapter->flagsIs(Adapter::flagMuted, true);
  idle();
  writer.adapter->doThis(); // which frees the place where the first has stopped
  writer.adapter->flagsIs(Adapter::flagMuted, false);
  sent.clear();
  goesOn();
}

} // namespace
