#include "Dumps.h"
#include "Ends.h"

#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// A record is read alike wherever in it the ring ends.

namespace {

using namespace Maintenance::Unit;

constexpr std::size_t capacity = 49152;

/// Records for nobody, of `size` bytes together.
std::string filler(std::size_t size) {
  std::string hex;
  while (size != 0) {
    const std::size_t length = size > 20000 ? 16384 : size;
    char text[16];
    std::snprintf(text, sizeof text, "%02zx %02zx", length / 256, length % 256);
    hex += std::string("00 00 ") + text + " fe 00 00 00 00 00 00 00 " +
           "00 00 01 06 01 00 00 00 00 00 00 00 00 00 01 ";
    hex += length > 28 ? "5a * " + std::to_string(length - 28) + " 03 " : "03 ";
    size -= length;
  }
  return plain(hex);
}

/// A mirror of the unit, of whose next record the ring's end cuts off the first `cut` bytes.
class Cut {
public:
  explicit Cut(std::size_t cut) {
    const std::string start = records(dump("orphan"), dump("child"));
    receiver.apply(start);
    receiver.apply(filler(capacity - cut - bytesOf(start).size()));
    EXPECT_EQ(place(receiver.connection->inputSpace().data()), (capacity - cut) % capacity);
    EXPECT_EQ(receiver.failure(), "");
  }

  std::size_t place(const std::uint8_t* at) const {
    return static_cast<std::size_t>(at - receiver.connection->in()->begin());
  }
  Zel::Ptr<StatusDir> units() const { return receiver.mirror<StatusDir>("units"); }
  Zel::Ptr<Status> unit() const { return units()->status("System"); }

  const Receiver receiver{0, {.inCapacity = capacity}};
};

/// Applies the record with every cut, and looks at what it did.
template <class Look>
void atEveryCut(const std::string& hex, Look&& look) {
  const std::size_t size = bytesOf(hex).size();
  for (std::size_t cut = 0; cut <= size; ++cut) {
    SCOPED_TRACE(cut);
    const Cut at(cut);
    const auto counts = at.receiver.counts();
    at.receiver.apply(hex);
    EXPECT_EQ(at.receiver.failure(), "");
    EXPECT_EQ(at.receiver.counts().records, counts.records + 1);
    EXPECT_EQ(at.receiver.counts().badValues, 0U);
    look(at);
    // What comes next begins where the record has ended.
    at.receiver.apply(dump("fixed"));
    EXPECT_EQ(at.unit()->genId(), 7U);
  }
}

TEST(WrappedRecords, OfASingleValue) {
  atEveryCut(dump("value"), [](const Cut& at) {
    EXPECT_EQ(at.unit()->aggTrafficRate().outBitsRate(), 1000000ULL);
    EXPECT_EQ(at.unit()->aggTrafficRate().inBitsRate(), 1099511627776ULL);
    EXPECT_EQ(at.unit()->aggTrafficRate().statsUpdateTime(), -2.0);
  });
}

TEST(WrappedRecords, OfAText) {
  atEveryCut(dump("text"), [](const Cut& at) { EXPECT_EQ(at.unit()->profileName(), "fast"); });
}

TEST(WrappedRecords, OfAnEntry) {
  atEveryCut(dump("keyed"), [](const Cut& at) {
    EXPECT_TRUE(at.unit()->group(Group::GroupKey(Group::groupTypeBgp, "peers")));
  });
}

TEST(WrappedRecords, OfAnEntryThatIsAText) {
  atEveryCut(dump("keyed-text"),
             [](const Cut& at) { EXPECT_EQ(at.unit()->history(1.5), "entered"); });
}

TEST(WrappedRecords, OfAMarker) {
  atEveryCut(dump("begin"), [](const Cut& at) {
    const auto* const flow = at.receiver.demuxer().flowIn({2, 0});
    ASSERT_NE(flow, nullptr);
    EXPECT_EQ(flow->aid(), 258);
    EXPECT_TRUE(flow->isTransaction());
    at.receiver.apply(dump("child"));
    at.receiver.apply(dump("end"));
  });
}

TEST(WrappedRecords, OfARoot) {
  const std::string root =
      "00 00 00 4c 01 00 00 00 00 00 00 00 00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 01 "
      "00 00 00 1c 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 55 6e 69 74 3a 3a 53 74 61 74 75 73 44 "
      "69 72 03 00 00 00 01 72 04 06 00 00 00 00 00 00 00 03";
  atEveryCut(root, [](const Cut& at) {
    const auto made = at.receiver.mirror<StatusDir>("r");
    ASSERT_TRUE(made);
    ASSERT_NE(at.receiver.demuxer().adapter({6, 0}), nullptr);
    EXPECT_EQ(at.receiver.demuxer().adapter({6, 0})->zelNotifierEntity(), made.ptr());
  });
}

TEST(WrappedRecords, OfAMemberWhoseIdIsOverwritten) {
  const std::string member =
      "00 00 00 29 02 00 00 00 00 00 00 00 00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
      "00 00 00 01 6d 06 00 00 00 00 00 00 00 03";
  for (std::size_t cut = 0; cut <= 41; ++cut) {
    SCOPED_TRACE(cut);
    const Cut at(cut);
    at.receiver.apply(member);
    ASSERT_TRUE(at.units()->status("m"));
    ASSERT_NE(at.receiver.demuxer().adapter({6, 0}), nullptr);
    EXPECT_EQ(at.receiver.demuxer().adapter({6, 0})->zelNotifierEntity(),
              at.units()->status("m").ptr());
    // The directory's id stands where the member's was; nothing else has changed.
    const auto& in = *at.receiver.connection->in();
    const std::uint8_t* const start = in.begin() + (capacity - cut) % capacity;
    std::string ring;
    for (std::size_t i = 0; i < 41; ++i) {
      ring += static_cast<char>(*in.advanced(start, i));
    }
    EXPECT_EQ(hexOf(ring),
              plain("00 00 00 29 02 00 00 00 00 00 00 00 00 00 01 02 01 00 00 00 00 00 00 00 97 00 "
                    "01 00 00 00 01 6d 02 00 00 00 00 00 00 00 03"));
  }
}

TEST(WrappedRecords, OfTheCompoundKind) {
  atEveryCut(dump("compound"), [](const Cut& at) {
    ASSERT_TRUE(at.units()->status("Linecard1"));
    ASSERT_NE(at.receiver.demuxer().adapter({8, 0}), nullptr);
  });
  atEveryCut(
      plain("00 00 00 36 02 00 00 00 00 00 00 00 ff ff ff 70 01 00 00 00 00 00 00 00 00 00 01 "
            "00 0c 00 00 ff ff fe fe 00 00 00 63 00 00 00 06 6e 6f 62 6f 64 79 5a 5a 5a 5a 03"),
      [](const Cut& at) { EXPECT_TRUE(at.unit()); });
}

TEST(WrappedRecords, ChunksOfALongText) {
  for (const unsigned cut : {1U, 4U, 5U, 26U, 27U, 28U, 30U, 31U, 32U, 1000U, 32766U, 32767U}) {
    SCOPED_TRACE(cut);
    const Cut at(cut);
    at.receiver.apply(dump("text-first"));
    at.receiver.apply(dump("text-rest"));
    EXPECT_EQ(at.unit()->profileName(), Zel::String8(std::string(40000, 'a')));
  }
}

TEST(WrappedRecords, BytesThatComeOneByOne) {
  const Receiver receiver;
  for (const char byte : bytesOf(records(dump("orphan"), dump("child"), dump("keyed-text")))) {
    receiver.apply(hexOf({&byte, 1}));
  }
  EXPECT_EQ(receiver.mirror<StatusDir>("units")->status("System")->history(1.5), "entered");
  EXPECT_EQ(receiver.counts().records, 3U);
}

} // namespace
