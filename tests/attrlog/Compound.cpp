#include "Dumps.h"
#include "Ends.h"

#include "foreign/model/OrderAttrLog.h"

#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// Records that a reader walks by offsets, which newer peers may send.

namespace {

using namespace Maintenance::Unit;

/// A record for the entity (2, 0) with attribute 144, or -144.
std::string compound(bool isGone, std::string_view payload) {
  const std::string bytes = bytesOf(payload);
  std::string record = bytesOf("00 00 00 00 02 00 00 00 00 00 00 00");
  record[3] = static_cast<char>(28 + bytes.size());
  record += bytesOf(isGone ? "ff ff ff 70" : "00 00 00 90");
  return hexOf(record + bytesOf("01 00 00 00 00 00 00 00 00 00 01") + bytes + "\x03");
}

/// A mirror of a directory of units with a unit "System".
class Compound : public ::testing::Test {
protected:
  Compound() { receiver.apply(records(dump("orphan"), dump("child"))); }

  void apply(bool isGone, std::string_view payload) const {
    receiver.apply(compound(isGone, payload));
    EXPECT_EQ(receiver.failure(), "");
    EXPECT_EQ(receiver.counts().records, 3U);
  }
  Zel::Ptr<StatusDir> units() const { return receiver.mirror<StatusDir>("units"); }
  bool knows(unsigned id) const { return receiver.demuxer().adapter({id, 0}) != nullptr; }

  const Receiver receiver;
};

TEST_F(Compound, TheIdFollowsTheKeyIfNoPlaceIsTold) {
  apply(false, "00 08 00 00 00 00 01 02 ff ff ff ff 00 00 00 01 61 06 00 00 00 00 00 00 00");
  EXPECT_TRUE(units()->status("a"));
  EXPECT_TRUE(knows(6));
}

TEST_F(Compound, WhatLiesBetweenKeyAndIdIsSkipped) {
  apply(false, "00 08 00 13 00 00 01 02 ff ff ff ff 00 00 00 01 61 5a 5a 06 00 00 00 00 00 00 00");
  EXPECT_TRUE(units()->status("a"));
  EXPECT_TRUE(knows(6));
}

TEST_F(Compound, OtherIdsInTheListArePassedOver) {
  apply(false, "00 10 00 00 00 00 01 2c ff ff fe d4 00 00 01 02 00 00 00 00 00 00 00 01 61 "
               "06 00 00 00 00 00 00 00");
  EXPECT_TRUE(units()->status("a"));
}

TEST_F(Compound, TheReadingOfTheListEndsAtTheCollection) {
  // Behind it stands what would be the deletion of "System".
  apply(false, "00 10 00 00 00 00 01 02 ff ff fe fe 5a 5a 5a 5a 00 00 00 00 00 00 00 06 "
               "53 79 73 74 65 6d 06 00 00 00 00 00 00 00");
  EXPECT_TRUE(units()->status("System"));
  EXPECT_TRUE(knows(6));
}

TEST_F(Compound, ADeletionWithOtherIdsBehindItIsReadAtItsOffset) {
  apply(true, "00 10 00 00 ff ff fe fe 00 00 01 02 00 00 01 2c 00 00 00 06 53 79 73 74 65 6d");
  EXPECT_FALSE(units()->status("System"));
}

TEST_F(Compound, TheListAndNotTheRecordsOwnIdTellsWhichOfTheTwoItIs) {
  apply(false, "00 08 00 00 ff ff fe fe 00 00 00 06 53 79 73 74 65 6d");
  EXPECT_FALSE(units()->status("System"));
}

TEST_F(Compound, AMemberAnnouncedUnderTheNegativeId) {
  apply(true, "00 08 00 00 00 00 01 02 ff ff ff ff 00 00 00 01 61 06 00 00 00 00 00 00 00");
  EXPECT_TRUE(units()->status("a"));
}

TEST_F(Compound, WithoutTheCollectionItIsPassedOver) {
  apply(false, "00 08 00 00 00 00 01 2c 00 00 00 00");
  EXPECT_EQ(receiver.counts().unknownAttributes, 1U);
  EXPECT_EQ(units()->statusMap().count(), 1U);
}

TEST_F(Compound, WithoutTheCollectionANegativeOneHasNoNumber) {
  apply(true, "00 08 00 00 00 00 01 2c");
  EXPECT_EQ(receiver.counts().unknownAttributes, 1U);
  EXPECT_EQ(receiver.counts().badValues, 0U);
}

TEST_F(Compound, WithoutTheCollectionAPositiveOneLosesItsNumber) {
  apply(false, "00 08 00 00 00 00 01 2c 00 00 00");
  EXPECT_EQ(receiver.counts().badValues, 1U);
  EXPECT_EQ(receiver.counts().unknownAttributes, 0U);
}

TEST_F(Compound, AnEmptyListHoldsNoCollection) {
  apply(false, "00 04 00 00 00 00 00 00");
  EXPECT_EQ(receiver.counts().unknownAttributes, 1U);
}

TEST_F(Compound, OffsetsOutsideOfThePayloadAreBadValues) {
  apply(false, "00 64 00 00 00 00 01 02 00 00 00 00 00 00 00 01 61 06 00 00 00 00 00 00 00");
  EXPECT_EQ(receiver.counts().badValues, 1U);
  EXPECT_EQ(units()->statusMap().count(), 1U);
}

TEST_F(Compound, AnIdBehindThePayloadIsABadValue) {
  apply(false, "00 08 00 64 00 00 01 02 00 00 00 00 00 00 00 01 61 06 00 00 00 00 00 00 00");
  EXPECT_EQ(receiver.counts().badValues, 1U);
  EXPECT_EQ(units()->statusMap().count(), 1U);
}

TEST_F(Compound, AnIdInsideOfTheKeyIsABadValue) {
  apply(false, "00 08 00 0e 00 00 01 02 00 00 00 00 00 00 00 01 61 06 00 00 00 00 00 00 00");
  EXPECT_EQ(receiver.counts().badValues, 1U);
  EXPECT_EQ(units()->statusMap().count(), 1U);
}

TEST_F(Compound, AListCutShortIsABadValue) {
  apply(false, "00 0a 00 00 00 00 01 2c 00 00");
  EXPECT_EQ(receiver.counts().badValues, 1U);
}

TEST_F(Compound, WhatIsNoDirectoryKnowsNone) {
  // The unit's first collection has the id 260.
  receiver.apply(plain("00 00 00 28 04 00 00 00 00 00 00 00 00 00 00 90 01 00 00 00 00 00 00 00 00 "
                       "00 01 00 08 00 00 00 00 01 04 00 00 00 00 03"));
  EXPECT_EQ(receiver.counts().unknownAttributes, 1U);
}

TEST(CompoundArguments, AreReadBetweenKeyAndId) {
  const Receiver receiver;
  receiver.apply("00 00 00 41 01 00 00 00 00 00 00 00 00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                 "01 00 00 00 11 46 6f 72 65 69 67 6e 3a 3a 4f 72 64 65 72 44 69 72 "
                 "03 00 00 00 01 64 04 02 00 00 00 00 00 00 00 03");
  receiver.apply(compound(false, "00 08 00 18 00 00 01 02 00 00 00 00 00 00 00 01 6f 00 00 00 02 "
                                 "5a 5a 5a 06 00 00 00 00 00 00 00"));
  EXPECT_EQ(receiver.failure(), "");
  const auto order = receiver.mirror<Foreign::OrderDir>("d")->order("o");
  ASSERT_TRUE(order);
  EXPECT_EQ(order->urgency(), Foreign::express);
  EXPECT_NE(receiver.demuxer().adapter({6, 0}), nullptr);
}

} // namespace
