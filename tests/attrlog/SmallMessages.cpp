// A sending half that sends smaller records than it could: texts come in more of them.

#include "Log.h"

#include <gmock/gmock.h>

namespace {

using namespace Maintenance;
using namespace Wiretap;
using Unit::Status;

class SmallOut : public Out {
public:
  using Out::Out;
  std::size_t maxMessageSize() const override { return 1000; }
};

/// Most bytes of a text in one record: a byte less than the limit, without what is no text.
constexpr std::size_t most = 999 - Zel::NboAttrLog::recordOverhead - sizeof(std::uint32_t);

/// A text whose every byte tells its place.
String8 longText(std::size_t length) {
  std::string text(length, ' ');
  for (std::size_t i = 0; i < length; ++i) {
    text[i] = static_cast<char>('a' + i % 23);
  }
  return String8(text);
}

template <class T>
struct SmallWriter {
  explicit SmallWriter(const Ptr<T>& sent) : entity(sent) {
    adapter = entity->zelNboAttrLogSaIs(Flags(Adapter::flagWeakNotifiee), 1, out, nullptr);
    connection->demuxer()->adapterIs(adapter, Reader<T>::id);
  }
  ~SmallWriter() { connection->close(); }
  SmallWriter(const SmallWriter&) = delete;
  SmallWriter& operator=(const SmallWriter&) = delete;

  std::string taken() const {
    std::string bytes;
    for (auto piece = out->pending(); !piece.empty(); piece = out->pending()) {
      bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
      out->consumed(piece.size());
    }
    return bytes;
  }

  /// Takes up room until exactly `free` bytes are left.
  void freeIs(std::size_t free) const {
    while (out->freeSpace() > free) {
      const std::size_t length = std::min<std::size_t>(out->freeSpace() - free, 30000);
      const std::string bytes(length - Zel::NboAttrLog::recordOverhead, '.');
      out->nextHeaderIs(MsgHeader::variable(nobody, 258));
      out->tokenIs(Zel::NboAttrLog::transactBegin);
      out->putBytes(bytes.data(), bytes.size());
      out->tokenIs(Zel::NboAttrLog::transactEnd);
    }
  }

  const Ptr<Connection> connection = Zel::makeObject<Connection>(Connection::End::first);
  const Ptr<Out> out = Zel::makeObject<SmallOut>(connection.ptr(), std::size_t{65536});
  const Ptr<T> entity;
  Ptr<Zel::Entity::ZelNboAttrLogSa> adapter;
};

std::vector<std::size_t> sizes(const std::vector<Seen>& seen) {
  std::vector<std::size_t> result;
  for (const Seen& one : seen) {
    result.push_back(one.bytes.size());
  }
  return result;
}

struct SmallTexts : testing::Test {
  SmallWriter<Profile::DefaultProfile> writer{Profile::defaultProfileFactory("default")};
  Reader<Profile::DefaultProfile> reader;
};

TEST_F(SmallTexts, OneThatFitsIsOneRecord) {
  writer.entity->profileNameIs(longText(most));
  const auto seen = parsed(writer.taken());
  EXPECT_EQ(briefs(seen), Briefs{"259"});
  EXPECT_EQ(sizes(seen), std::vector<std::size_t>{999});
  EXPECT_FALSE(writer.adapter->flowOut());
}

TEST_F(SmallTexts, OneByteMoreIsTwoRecords) {
  writer.entity->profileNameIs(longText(most + 1));
  std::string bytes = writer.taken();
  EXPECT_EQ(briefs(parsed(bytes)), Briefs{"259+"});
  writer.connection->service();
  bytes += writer.taken();
  EXPECT_EQ(briefs(parsed(bytes)), (Briefs{"259+", "259"}));
  EXPECT_EQ(sizes(parsed(bytes)), (std::vector<std::size_t>{999, 33}));
  reader.feed(bytes);
  EXPECT_TRUE(reader.entity->profileName() == longText(most + 1));
}

TEST_F(SmallTexts, ALongOneIsReadWhole) {
  const String8 text = longText(5000);
  writer.entity->profileNameIs(text);
  std::string bytes = writer.taken();
  writer.connection->service();
  EXPECT_FALSE(writer.adapter->flowOut());
  bytes += writer.taken();
  EXPECT_EQ(sizes(parsed(bytes)),
            (std::vector<std::size_t>{999, 999, 999, 999, 999, 5000 - 5 * most + 32}));
  reader.feed(bytes);
  EXPECT_TRUE(reader.entity->profileName() == text);
  EXPECT_EQ(reader.flowIn(), nullptr);
  EXPECT_EQ(reader.failure(), "");
}

TEST_F(SmallTexts, TheFlowGoesOnWithRoomForOneRecordOfTheLimit) {
  writer.entity->profileNameIs(longText(3000));
  writer.taken();
  writer.freeIs(999);
  writer.connection->service();
  EXPECT_EQ(briefs(parsed(writer.taken())), Briefs());
  writer.freeIs(1000);
  writer.adapter->handleAttrFlowOut(Profile::DefaultProfile::Attr::profileName);
  EXPECT_EQ(briefs(parsed(writer.taken())), Briefs{"259+"});
}

struct SmallEntries : testing::Test {
  static constexpr std::size_t fit = most - sizeof(double);

  SmallWriter<Status> writer{Unit::statusFactory("System")};
  Reader<Status> reader;
};

TEST_F(SmallEntries, TheKeyIsInEachRecord) {
  const String8 text = longText(2 * fit + 1);
  writer.entity->historyIs(2.5, text);
  std::string bytes = writer.taken();
  writer.connection->service();
  bytes += writer.taken();
  EXPECT_EQ(briefs(parsed(bytes)), (Briefs{"268+", "268+", "268"}));
  EXPECT_EQ(sizes(parsed(bytes)), (std::vector<std::size_t>{999, 999, 41}));
  reader.feed(bytes);
  EXPECT_TRUE(reader.entity->history(2.5) == text);
  EXPECT_EQ(reader.failure(), "");
}

TEST_F(SmallEntries, TheFlowGoesOnWithRoomForOneRecordOfTheLimit) {
  writer.entity->historyIs(2.5, longText(3000));
  writer.taken();
  writer.freeIs(999);
  writer.adapter->handleAttrFlowOut(Status::Attr::history);
  EXPECT_EQ(briefs(parsed(writer.taken())), Briefs());
  writer.freeIs(1000);
  writer.adapter->handleAttrFlowOut(Status::Attr::history);
  EXPECT_EQ(briefs(parsed(writer.taken())), Briefs{"268+"});
}

TEST_F(SmallEntries, OneThatFitsIsOneRecord) {
  writer.entity->historyIs(2.5, longText(fit));
  EXPECT_EQ(sizes(parsed(writer.taken())), std::vector<std::size_t>{999});
  EXPECT_FALSE(writer.adapter->flowOut());
}

} // namespace
