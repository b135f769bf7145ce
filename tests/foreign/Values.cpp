#include <foreign/model/Values.h>

#include <Zel/Exception>
#include <Zel/HashMap>

#include <gtest/gtest.h>

#include <limits>

namespace Foreign {

namespace {

TEST(ForeignValues, KeysOrderByTheFirstFieldAndThenByTheSecond) {
  EXPECT_LT(SkuKey(ambient, "z"), SkuKey(chilled, "a"));
  EXPECT_LT(SkuKey(chilled, "a"), SkuKey(chilled, "b"));
  EXPECT_FALSE(SkuKey(chilled, "a") < SkuKey(chilled, "a"));
  EXPECT_LT(TourKey(ambient, 1), TourKey(ambient, std::numeric_limits<unsigned>::max()));
  EXPECT_LT(TourKey(static_cast<Zone>(-1), 5), TourKey(ambient, 0));
  EXPECT_LT(Alarm("door", routine), Alarm("door", express));
  EXPECT_LT(Alarm("door", express), Alarm("smoke", routine));
}

TEST(ForeignValues, TheHashOfAKeyDependsOnBothFields) {
  EXPECT_EQ(SkuKey(frozen, "peas").hash(), SkuKey(frozen, "peas").hash());
  EXPECT_NE(SkuKey(frozen, "peas").hash(), SkuKey(chilled, "peas").hash());
  EXPECT_NE(SkuKey(frozen, "peas").hash(), SkuKey(frozen, "peat").hash());
  EXPECT_NE(TourKey(frozen, 1).hash(), TourKey(chilled, 1).hash());
  EXPECT_NE(TourKey(frozen, 1).hash(), TourKey(frozen, 2).hash());
}

TEST(ForeignValues, AnEnumeratorHashesToItsNumber) {
  EXPECT_EQ(Zel::keyHash(hazardous), 9U);
  EXPECT_EQ(Zel::indexHash(hazardous), 0x90000000U);
}

TEST(ForeignValues, EnumerationsConvertThroughTheirTable) {
  const Zel::EnumTable zones = enumTable(Zone());
  EXPECT_EQ(Zel::enumInstance(zones, 9), hazardous);
  EXPECT_EQ(Zel::enumInstance(zones, "frozen"), frozen);
  EXPECT_EQ(Zel::enumString(zones, chilled), "chilled");
  EXPECT_EQ(Zel::enumString(zones, 3), "Zone(3)");
  try {
    Zel::enumInstance(zones, 3);
    FAIL();
  } catch (const Zel::RangeException& failure) {
    EXPECT_EQ(failure.message(), "Zone");
  }
}

TEST(ForeignValues, AComputedArgumentIsTakenApartAndPutTogether) {
  SlotCode slot("B:17");
  EXPECT_EQ(slot.aisle(), "B");
  EXPECT_EQ(slot.shelf(), 17U);
  slot.shelfIs(3);
  EXPECT_EQ(slot.code(), "B:3");
  slot.codeIs("");
  EXPECT_EQ(slot, SlotCode("B:3"));
}

TEST(ForeignValues, ABadComputedArgumentChangesNothing) {
  SlotCode slot("B:17");
  for (const char* bad : {"C", "C:", "C:x", "C:1x", "C:99999999999"}) {
    EXPECT_THROW(slot.codeIs(bad), Zel::RangeException) << bad;
    EXPECT_EQ(slot, SlotCode("B:17"));
  }
}

TEST(ForeignValues, RecordsOfForeignTypesBearTheirNames) {
  EXPECT_EQ(Zel::valueRecord<Zone>.name, "Foreign::Zone");
  EXPECT_EQ(Zel::valueRecord<Dimensions>.name, "Foreign::Dimensions");
  EXPECT_EQ(Zel::valueRecord<Dimensions>.size, sizeof(Dimensions));
  EXPECT_EQ(Zel::valueRecord<Dimensions>.alignment, alignof(double));
}

} // namespace

} // namespace Foreign
