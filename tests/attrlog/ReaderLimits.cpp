// How much a reader keeps for its peer, to the last byte and key.

#include "Log.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;
using Attr = Status::Attr;

Zel::ConnectionLimits partial(std::size_t bytes) {
  Zel::ConnectionLimits limits;
  limits.maxPartialText = bytes;
  return limits;
}

/// The first record of a text of twice as many bytes.
std::string begun(EntityId to, std::size_t bytes) {
  return texts(to, Attr::maintEnterInstance, String8(std::string(2 * bytes, 'x')), bytes).front();
}

std::string member(const char* name, EntityId id) {
  return letter(Reader<StatusDir>::id, StatusDir::Attr::status, [&](Out& out) {
    out.putString(name);
    out.putEntityId(id);
  });
}

TEST(ReaderLimits, APartialTextMayTakeAllOfThem) {
  Reader<Status> reader(0, partial(1000));
  reader.feed(begun(reader.id, 1000));
  EXPECT_EQ(reader.failure(), "");
  Reader<Status> other(0, partial(999));
  other.feed(begun(other.id, 1000));
  EXPECT_EQ(other.failure(), "unfinished texts of 1000 bytes, at most 999 are kept");
}

TEST(ReaderLimits, AnAbortedTextOfATransactionCountsNoMore) {
  Reader<StatusDir> reader(0, partial(1000));
  const EntityId a{4, 0};
  const EntityId b{6, 0};
  reader.feed(member("a", a) + member("b", b) + marker(a, Attr::history, 0));
  reader.feed(texts(a, Attr::history, String8(std::string(1200, 'x')), 600, 1.0).front());
  ASSERT_NE(reader.connection->demuxer()->flowIn(a), nullptr);
  reader.feed(marker(a, Attr::history, 1) + begun(b, 1000));
  EXPECT_NE(reader.connection->demuxer()->flowIn(a), nullptr);
  EXPECT_EQ(reader.failure(), "");
}

TEST(ReaderLimits, ATextThatEndsInATransactionLeavesItOpen) {
  Reader<Status> reader;
  reader.feed(marker(reader.id, Attr::history, 0));
  for (const std::string& one :
       texts(reader.id, Attr::history, String8(std::string(1200, 'x')), 600, 1.0)) {
    reader.feed(one);
  }
  EXPECT_EQ(reader.entity->history(1.0).length(), 1200);
  ASSERT_NE(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.flowIn()->transaction(), Attr::history);
  EXPECT_EQ(reader.flowIn()->iter(), nullptr);
  reader.feed(marker(reader.id, Attr::history, 2));
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.entity->historyMap().count(), 1U);
}

TEST(ReaderLimits, MembersAreKeysToo) {
  Zel::ConnectionLimits limits;
  limits.maxKeys = 1;
  Reader<StatusDir> reader(0, limits);
  reader.feed(member("a", {4, 0}) + member("a", {4, 0}));
  EXPECT_EQ(reader.failure(), "");
  reader.feed(member("b", {6, 0}));
  EXPECT_EQ(reader.failure(), "status of mirror: more keys than are kept for a peer");
  EXPECT_EQ(reader.entity->statusMap().count(), 1U);
}

} // namespace
