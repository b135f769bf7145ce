#include "Ends.h"
#include "Payload.h"

#include "support/Failure.h"

#include <gtest/gtest.h>

// Reading out of a ring of bytes: bounds, skipping, and writing over what is there.

namespace {

using Support::rangeFailure;
using Zel::ConnectionInSizeAnchor;

constexpr std::size_t capacity = 12;

TEST(Rings, SkippingGoesAroundTheEnd) {
  const auto ring = Zel::makeObject<Ring>(capacity);
  for (std::size_t place = 0; place < capacity; ++place) {
    for (std::size_t count = 0; count <= 8; ++count) {
      ring->put("01 02 03 04 05 06 07 08", place);
      ring->nextBytes(count);
      EXPECT_EQ(ring->place(), (place + count) % capacity);
      EXPECT_EQ(ring->left(), 8 - count);
      if (count < 8) {
        EXPECT_EQ(ring->next8(), count + 1);
      }
    }
    ring->put("01 02", place);
    EXPECT_EQ(rangeFailure([&] { ring->nextBytes(3); }), "record too short");
    EXPECT_EQ(ring->place(), place);
  }
}

TEST(Rings, CopyingGoesAroundTheEnd) {
  atEveryPlace("01 02 03 04 05", [](Ring& ring) {
    std::string bytes(4, '\0');
    ring.nextBytes(bytes.data(), bytes.size());
    EXPECT_EQ(hexOf(bytes), "01 02 03 04");
    EXPECT_EQ(rangeFailure([&] { ring.nextBytes(bytes.data(), 2); }), "record too short");
    EXPECT_EQ(ring.left(), 1U);
  });
}

TEST(Rings, AnAnchorBoundsWhatIsRead) {
  const auto ring = Zel::makeObject<Ring>(capacity);
  for (std::size_t place = 0; place < capacity; ++place) {
    for (std::size_t count = 0; count <= 8; ++count) {
      ring->put("01 02 03 04 05 06 07 08", place);
      const std::uint8_t* const limit = ring->limit();
      {
        const ConnectionInSizeAnchor anchor(*ring, count);
        EXPECT_EQ(ring->left(), count);
        EXPECT_EQ(static_cast<std::size_t>(ring->limit() - ring->begin()),
                  (place + count) % capacity);
        ring->nextBytes(count);
        EXPECT_EQ(rangeFailure([&] { ring->next8(); }), "record too short");
      }
      EXPECT_EQ(ring->limit(), limit);
      EXPECT_EQ(ring->left(), 8 - count);
    }
  }
}

TEST(Rings, AnchorsNestAndRestoreTheirOwnLimit) {
  atEveryPlace("01 02 03 04 05", [](Ring& ring) {
    {
      const ConnectionInSizeAnchor outer(ring, 4);
      {
        const ConnectionInSizeAnchor inner(ring, 2);
        EXPECT_EQ(ring.nextU16(), 0x0102);
        EXPECT_EQ(ring.left(), 0U);
      }
      EXPECT_EQ(ring.left(), 2U);
    }
    EXPECT_EQ(ring.left(), 3U);
  });
}

TEST(Rings, AnAnchorNeedsAsManyBytes) {
  atEveryPlace("01 02 03", [](Ring& ring) {
    const std::uint8_t* const limit = ring.limit();
    EXPECT_EQ(rangeFailure([&] { const ConnectionInSizeAnchor anchor(ring, 4); }),
              "record too short");
    EXPECT_EQ(ring.limit(), limit);
  });
}

TEST(Rings, AnAnchorRestoresWhenReadingFails) {
  atEveryPlace("01 02 03 04 05", [](Ring& ring) {
    EXPECT_EQ(rangeFailure([&] {
                const ConnectionInSizeAnchor anchor(ring, 3);
                static_cast<void>(ring.nextU32());
              }),
              "record too short");
    EXPECT_EQ(ring.left(), 5U);
    EXPECT_EQ(ring.nextU32(), 0x01020304U);
  });
}

TEST(Rings, AnEntityIdIsWrittenOverInPlace) {
  const Zel::EntityId other{0xa4a3a2a1, 0xb4b3b2b1};
  atEveryPlace("11 22 01 02 03 04 05 06 07 08 33", [&](Ring& ring) {
    const std::uint8_t* const start = ring.position();
    ring.nextBytes(2);
    const std::uint8_t* const place = ring.position();
    EXPECT_EQ(ring.nextEntityId(), (Zel::EntityId{0x04030201, 0x08070605}));
    ring.overwrite(place, &other, sizeof other);
    ring.positionIs(place);
    EXPECT_EQ(ring.nextEntityId(), other);
    EXPECT_EQ(ring.next8(), 0x33);
    ring.positionIs(start);
    EXPECT_EQ(ring.nextU16(), 0x1122);
  });
}

TEST(Rings, OneByteAlwaysStaysFree) {
  const Receiver receiver(0, {.inCapacity = 49152});
  const auto& in = receiver.connection->in();
  EXPECT_EQ(in->capacity(), 49152U);
  EXPECT_EQ(in->space().size(), 49151U);
  in->received(49151);
  EXPECT_EQ(in->size(), 49151U);
  EXPECT_TRUE(in->space().empty());
}

TEST(Rings, BelowTheSmallestSizeThereIsNone) {
  EXPECT_EQ(rangeFailure([] { Sender({.outCapacity = 49151}); }),
            "ring of 49151 bytes, smallest is 49152");
  EXPECT_EQ(rangeFailure([] { Sender({.inCapacity = 0}); }), "ring of 0 bytes, smallest is 49152");
}

} // namespace
