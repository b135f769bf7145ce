#include "Channel.h"

#include "foreign/model/RackAttrLog.h"

#include <gtest/gtest.h>

#include <cmath>

// The kinds of collections and values that the model of the library has not, byte for byte.

namespace {

using namespace Foreign;

class RackRecords : public ::testing::Test {
protected:
  Channel<Rack> channel{Zel::makeObject<Rack>("r")};
  const Zel::Ptr<Rack>& rack = channel.original;
  const Zel::Ptr<Rack>& mirror = channel.mirror;
};

TEST_F(RackRecords, AnEnumeration) {
  rack->zoneIs(hazardous);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 09 03");
  EXPECT_EQ(mirror->zone(), hazardous);
}

TEST_F(RackRecords, ASetOfEnumerators) {
  rack->allowedZoneIs(frozen, true);
  channel.expectWritten("00 00 00 21 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 01 03");
  EXPECT_TRUE(mirror->allowedZone(frozen));
  rack->allowedZoneDel(frozen);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "ff ff fe fc 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  EXPECT_EQ(mirror->allowedZoneMap().count(), 0U);
}

TEST_F(RackRecords, ASetOfTexts) {
  rack->reservationIs("bob", true);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 62 6f 62 01 03");
  EXPECT_TRUE(mirror->reservation("bob"));
  rack->reservationDel("bob");
  channel.expectWritten("00 00 00 23 02 00 00 00 00 00 00 00 "
                        "ff ff fe fb 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 62 6f 62 03");
  EXPECT_EQ(mirror->reservationMap().count(), 0U);
}

TEST_F(RackRecords, TextsInAHashCollection) {
  rack->labelIs("en", "heavy");
  channel.expectWritten("00 00 00 2b 02 00 00 00 00 00 00 00 "
                        "00 00 01 06 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 65 6e 00 00 00 05 68 65 61 76 79 03");
  EXPECT_EQ(mirror->label("en"), "heavy");
  rack->labelIs("en", "");
  channel.expectWritten("00 00 00 26 02 00 00 00 00 00 00 00 "
                        "00 00 01 06 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 65 6e 00 00 00 00 03");
  EXPECT_EQ(mirror->label("en"), "");
  EXPECT_EQ(mirror->labelMap().count(), 1U);
  rack->labelDel("en");
  channel.expectWritten("00 00 00 22 02 00 00 00 00 00 00 00 "
                        "ff ff fe fa 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 65 6e 03");
  EXPECT_EQ(mirror->labelMap().count(), 0U);
}

TEST_F(RackRecords, AValueWithAttributes) {
  rack->footprintIs(Dimensions(300, true, 0.5, frozen));
  channel.expectWritten("00 00 00 2d 02 00 00 00 00 00 00 00 "
                        "00 00 01 07 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 01 2c 01 3f e0 00 00 00 00 00 00 00 00 00 02 03");
  EXPECT_EQ(mirror->footprint(), Dimensions(300, true, 0.5, frozen));
}

TEST_F(RackRecords, ValuesWithAttributesByEnumerator) {
  rack->spaceIs(chilled, Dimensions(300, true, 0.5, frozen));
  channel.expectWritten("00 00 00 31 02 00 00 00 00 00 00 00 "
                        "00 00 01 08 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 00 00 01 2c 01 3f e0 00 00 00 00 00 00 00 00 00 02 03");
  EXPECT_EQ(mirror->space(chilled), Dimensions(300, true, 0.5, frozen));
  rack->spaceDel(chilled);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "ff ff fe f8 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 03");
  EXPECT_EQ(mirror->spaceMap().count(), 0U);
}

TEST_F(RackRecords, ADouble) {
  rack->temperatureIs(-0.0);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "00 00 01 0a 01 00 00 00 00 00 00 00 00 00 01 "
                        "80 00 00 00 00 00 00 00 03");
  EXPECT_TRUE(std::signbit(mirror->temperature()));
  EXPECT_EQ(mirror->temperature(), 0.0);
}

TEST_F(RackRecords, TextsInATree) {
  rack->noteIs(-1.0, "n");
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 0b 01 00 00 00 00 00 00 00 00 00 01 "
                        "bf f0 00 00 00 00 00 00 00 00 00 01 6e 03");
  EXPECT_EQ(mirror->note(-1.0), "n");
  rack->noteDel(-1.0);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "ff ff fe f5 01 00 00 00 00 00 00 00 00 00 01 "
                        "bf f0 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->noteMap().count(), 0U);
}

TEST_F(RackRecords, DoublesInATree) {
  rack->readingIs(2.0, 4.0);
  channel.expectWritten("00 00 00 2c 02 00 00 00 00 00 00 00 "
                        "00 00 01 0c 01 00 00 00 00 00 00 00 00 00 01 "
                        "40 00 00 00 00 00 00 00 40 10 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->reading(2.0), 4.0);
  rack->readingDel(2.0);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "ff ff fe f4 01 00 00 00 00 00 00 00 00 00 01 "
                        "40 00 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->readingMap().count(), 0U);
}

TEST_F(RackRecords, AnUnsignedLongLongIsVariable) {
  rack->serialIs(18446744073709551615ULL);
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "00 00 01 0d 01 00 00 00 00 00 00 00 00 00 01 "
                        "ff ff ff ff ff ff ff ff 03");
  EXPECT_EQ(mirror->serial(), 18446744073709551615ULL);
}

TEST_F(RackRecords, OfAValueItsStoredAttributesAlone) {
  rack->slotIs(SlotCode("B:7"));
  channel.expectWritten("00 00 00 25 02 00 00 00 00 00 00 00 "
                        "00 00 01 0e 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 42 00 00 00 07 03");
  EXPECT_EQ(mirror->slot().code(), "B:7");
}

TEST_F(RackRecords, ACounterIsOfFixedSize) {
  rack->picksInc(5);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 0f 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 00 05 03");
  EXPECT_EQ(mirror->picks(), 5U);
}

} // namespace
