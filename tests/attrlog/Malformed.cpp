// Records that no writer makes end the connection, say why, and change nothing; and what a root may
// not be.

#include "Log.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace Maintenance::Unit;
using namespace Wiretap;

/// A change of the generation, with some bytes written over.
std::string changed(std::size_t place, std::initializer_list<unsigned char> over) {
  std::string bytes =
      letter(Reader<Status>::id, Status::Attr::genId, [](Out& out) { out.put32(7); });
  std::copy(over.begin(), over.end(), bytes.begin() + static_cast<std::ptrdiff_t>(place));
  return bytes;
}

struct Malformed : testing::Test {
  void expectEnd(const std::string& bytes, const std::string& why) const {
    Reader<Status> reader;
    reader.feed(bytes);
    EXPECT_EQ(reader.failure(), why.empty() ? "" : "malformed record: " + why);
    EXPECT_EQ(reader.entity->genId(), why.empty() ? 7U : 0U);
    EXPECT_EQ(reader.connection->isUp(), why.empty());
  }
};

TEST_F(Malformed, WithNothingWrittenOverItIsApplied) { expectEnd(changed(0, {}), ""); }

TEST_F(Malformed, ALengthThatIsNone) {
  expectEnd(changed(0, {0, 0, 0, 27}), "length 27");
  expectEnd(changed(0, {0, 0, 0x80, 0}), "length 32768");
}

TEST_F(Malformed, ASizeThatIsNotThePayloads) {
  expectEnd(changed(16, {2}), "a payload of 4 bytes that is told as 2, 0");
  expectEnd(changed(17, {0, 0, 0, 4}), "a payload of 4 bytes that is told as 1, 4");
  expectEnd(changed(16, {0, 0, 0, 0, 5}), "a payload of 4 bytes that is told as 0, 5");
  expectEnd(changed(16, {0, 0, 0, 0, 4}), "");
}

TEST_F(Malformed, AFieldWithAnotherNumber) {
  expectEnd(changed(21, {0, 0, 0, 7}), "tag 7");
  expectEnd(changed(25, {1}), "reserved flag 1");
  expectEnd(changed(12, {0x80, 0, 0, 0}), "attribute id -2147483648");
  expectEnd(changed(26, {0}), "its tokens are 0 and 3");
}

std::string root(const char* type, const char* name, EntityId id, std::uint8_t section = 1) {
  return letter(Zel::orphanEntityId, Zel::NboAttrLog::attrIdOrphan, [&](Out& out) {
    out.put8(section);
    out.putString(type);
    out.put8(Zel::NboAttrLog::payloadSectionArgs);
    out.putString(name);
    out.put8(Zel::NboAttrLog::payloadSectionEntityId);
    out.putEntityId(id);
  });
}

struct MalformedRoots : Malformed {
  void expectRootEnd(const std::string& bytes, const std::string& why) const {
    Reader<Status> reader;
    reader.feed(bytes);
    EXPECT_EQ(reader.failure(), "malformed record: " + why);
    EXPECT_EQ(reader.roots->entities().size(), 1U);
    EXPECT_EQ(reader.connection->demuxer()->adapters(), 1U);
    EXPECT_FALSE(reader.connection->service());
    EXPECT_EQ(reader.connection->demuxer()->adapters(), 0U);
  }
  static constexpr const char* type = "Maintenance::Unit::Status";
};

TEST_F(MalformedRoots, UnderAnIdOrAsAnotherRecord) {
  const auto nothing = [](Out&) {};
  expectRootEnd(letter(Reader<Status>::id, Zel::NboAttrLog::attrIdOrphan, nothing),
                "a root under an id");
  expectRootEnd(letter(Zel::orphanEntityId, Status::Attr::genId, nothing), "a root under an id");
}

TEST_F(MalformedRoots, InOtherSections) {
  expectRootEnd(root(type, "b", {4, 0}, 2), "a root's sections");
}

TEST_F(MalformedRoots, UnderAnIdThatIsNotThePeersToGive) {
  expectRootEnd(root(type, "b", {0, 0}), "a root's id");
  expectRootEnd(root(type, "b", Zel::orphanEntityId), "a root's id");
  expectRootEnd(root(type, "b", {2, 0x80000000}), "a root's id");
  expectRootEnd(root(type, "b", Reader<Status>::id), "a root under an id in use");
}

TEST_F(MalformedRoots, AUnifiedIdIsAnybodysToGive) {
  Reader<Status> reader;
  reader.feed(root(type, "b", {3, 0x80000000}));
  EXPECT_EQ(reader.failure(), "");
  EXPECT_TRUE(reader.roots->entity("b"));
}

TEST_F(MalformedRoots, OneOfAnUnknownTypeIsPassedOver) {
  Reader<Status> reader;
  reader.feed(root("Maintenance::Unit::Nothing", "b", {4, 0}));
  EXPECT_EQ(reader.counts().unknownTypes, 1U);
  EXPECT_FALSE(reader.roots->entity("b"));
  EXPECT_EQ(reader.failure(), "");
}

TEST_F(MalformedRoots, OneOfAnotherTypeThanWhatHasItsNameIsRefused) {
  Reader<Status> reader;
  reader.feed(root("Maintenance::Unit::StatusDir", "mirror", {4, 0}));
  EXPECT_EQ(reader.counts().refused, 1U);
  EXPECT_EQ(reader.roots->entity("mirror"), Ptr<Zel::Entity>(reader.entity));
  EXPECT_EQ(reader.failure(), "");
}

TEST_F(MalformedRoots, OneMoreThanIsKeptEndsTheConnection) {
  Zel::ConnectionLimits limits;
  limits.maxEntities = 2;
  Reader<Status> reader(0, limits);
  reader.feed(root(type, "b", {4, 0}));
  EXPECT_EQ(reader.failure(), "");
  reader.feed(root(type, "c", {6, 0}));
  EXPECT_EQ(reader.failure(), "more entities than are kept for a peer");
  EXPECT_FALSE(reader.roots->entity("c"));
}

// A root is announced outside of any schedule, whether or not there is room.

TEST(RootWithoutRoom, MakesTheRingGrowByWhatItTakes) {
  Writer<Status> writer(statusFactory("one"));
  writer.freeIs(5);
  const std::size_t before = writer.connection->out()->capacity();
  const auto other = writer.connection->demuxer()->exportIs(statusFactory("other"));
  const std::size_t after = writer.connection->out()->capacity();
  const std::vector<Seen> seen = writer.seen();
  ASSERT_EQ(briefs(seen), Briefs{"root"});
  EXPECT_EQ(after, before - 5 + seen[0].bytes.size() + Out::maxRecordSize);
  EXPECT_EQ(seen[0].payload.substr(seen[0].payload.size() - sizeof(EntityId)),
            std::string("\4\0\0\0\0\0\0\0", sizeof(EntityId)));
}

} // namespace
