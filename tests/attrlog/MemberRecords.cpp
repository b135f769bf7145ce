#include "Channel.h"

#include "foreign/model/OrderAttrLog.h"
#include "foreign/model/ProductAttrLog.h"

#include <gtest/gtest.h>

// Records that announce members, and what follows under their ids, byte for byte.

namespace {

using namespace Foreign;

class OrderDirRecords : public ::testing::Test {
protected:
  Channel<OrderDir> channel{Zel::makeObject<OrderDir>("d")};
  const Zel::Ptr<OrderDir>& dir = channel.original;
  const Zel::Ptr<OrderDir>& mirror = channel.mirror;
};

TEST_F(OrderDirRecords, AMemberIsMadeWithItsFurtherArgument) {
  dir->orderIs("o", express);
  channel.expectWritten("00 00 00 2d 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 01 6f 00 00 00 02 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->order("o")->urgency(), express);
  dir->order("o")->urgencyIs(routine);
  channel.expectWritten("00 00 00 20 04 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 03");
  EXPECT_EQ(mirror->order("o")->urgency(), routine);
  dir->orderDel("o");
  channel.expectWritten("00 00 00 21 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 6f 03");
  EXPECT_FALSE(mirror->order("o"));
}

TEST_F(OrderDirRecords, EachMemberGetsAnId) {
  dir->orderIs("a", routine);
  dir->orderIs("b", express);
  channel.expectWritten("00 00 00 2d 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 01 61 00 00 00 01 04 00 00 00 00 00 00 00 03 "
                        "00 00 00 2d 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 01 62 00 00 00 02 06 00 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->orderMap().count(), 2U);
}

class ProductDirRecords : public ::testing::Test {
protected:
  Channel<ProductDir> channel{Zel::makeObject<ProductDir>("d")};
  const Zel::Ptr<ProductDir>& dir = channel.original;
  const Zel::Ptr<ProductDir>& mirror = channel.mirror;
};

TEST_F(ProductDirRecords, AMemberByAValueWithAttributes) {
  const SkuKey key(chilled, "milk");
  dir->productIs(key);
  channel.expectWritten("00 00 00 30 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 01 00 00 00 04 6d 69 6c 6b 04 00 00 00 00 00 00 00 03");
  ASSERT_TRUE(mirror->product(key));
  dir->product(key)->priceIs(1.0);
  channel.expectWritten("00 00 00 24 04 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "3f f0 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->product(key)->price(), 1.0);
  dir->product(key)->supplierIs("s", true);
  channel.expectWritten("00 00 00 22 04 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 73 01 03");
  EXPECT_TRUE(mirror->product(key)->supplier("s"));
  dir->productDel(key);
  channel.expectWritten("00 00 00 28 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 00 00 00 04 6d 69 6c 6b 03");
  EXPECT_FALSE(mirror->product(key));
}

class PerishableDirRecords : public ::testing::Test {
protected:
  Channel<PerishableDir> channel{Zel::makeObject<PerishableDir>("d")};
  const Zel::Ptr<PerishableDir>& dir = channel.original;
  const Zel::Ptr<PerishableDir>& mirror = channel.mirror;
};

TEST_F(PerishableDirRecords, AMemberOfADerivedType) {
  dir->perishableIs("milk");
  channel.expectWritten("00 00 00 2c 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 04 6d 69 6c 6b 04 00 00 00 00 00 00 00 03");
  const auto milk = dir->perishable("milk");
  const auto copy = mirror->perishable("milk");
  ASSERT_TRUE(copy);
  milk->priceIs(0.5);
  channel.expectWritten("00 00 00 24 04 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "3f e0 00 00 00 00 00 00 03");
  milk->supplierIs("s", false);
  channel.expectWritten("00 00 00 22 04 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 73 00 03");
  milk->shelfLifeIs(14);
  channel.expectWritten("00 00 00 20 04 00 00 00 00 00 00 00 "
                        "00 00 01 83 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 00 0e 03");
  milk->batchIs("b", 9);
  channel.expectWritten("00 00 00 25 04 00 00 00 00 00 00 00 "
                        "00 00 01 85 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 62 00 00 00 09 03");
  milk->recalledIs(true);
  channel.expectWritten("00 00 00 1d 04 00 00 00 00 00 00 00 "
                        "00 00 01 86 00 00 00 00 01 00 00 00 00 00 01 "
                        "01 03");
  milk->soldInc(2);
  channel.expectWritten("00 00 00 20 04 00 00 00 00 00 00 00 "
                        "00 00 01 87 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  milk->batchDel("b");
  channel.expectWritten("00 00 00 21 04 00 00 00 00 00 00 00 "
                        "ff ff fe 7b 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 62 03");
  milk->supplierDel("s");
  channel.expectWritten("00 00 00 21 04 00 00 00 00 00 00 00 "
                        "ff ff fe fc 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 73 03");
  EXPECT_EQ(copy->price(), 0.5);
  EXPECT_EQ(copy->supplierMap().count(), 0U);
  EXPECT_EQ(copy->shelfLife(), 14U);
  EXPECT_EQ(copy->batchMap().count(), 0U);
  EXPECT_TRUE(copy->recalled());
  EXPECT_EQ(copy->sold(), 2U);
}

} // namespace
