#include "Channel.h"

#include "foreign/model/OrderAttrLog.h"
#include "foreign/model/RackAttrLog.h"

#include <gtest/gtest.h>

// Records of entities of another model, byte for byte.

namespace {

using namespace Foreign;

class CarrierRecords : public ::testing::Test {
protected:
  Channel<Carrier> channel{Zel::makeObject<Carrier>("c")};
  const Zel::Ptr<Carrier>& carrier = channel.original;
  const Zel::Ptr<Carrier>& mirror = channel.mirror;
};

TEST_F(CarrierRecords, ASetOfValuesWithAttributes) {
  const SkuKey key(chilled, "milk");
  carrier->loadIs(key, true);
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 00 00 00 04 6d 69 6c 6b 01 03");
  EXPECT_TRUE(mirror->load(key));
  carrier->loadDel(key);
  channel.expectWritten("00 00 00 28 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 00 00 00 04 6d 69 6c 6b 03");
  EXPECT_EQ(mirror->loadMap().count(), 0U);
}

TEST_F(CarrierRecords, ValuesByEnumerator) {
  carrier->targetIs(frozen, SlotCode("A:1"));
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 41 00 00 00 01 03");
  EXPECT_EQ(mirror->target(frozen).code(), "A:1");
  carrier->targetDel(frozen);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  EXPECT_EQ(mirror->targetMap().count(), 0U);
}

TEST_F(CarrierRecords, AnEnumerationWithVirtualAccess) {
  carrier->urgencyIs(express);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  EXPECT_EQ(mirror->urgency(), express);
}

TEST_F(CarrierRecords, ABoolIsOfFixedSize) {
  carrier->idleIs(false);
  channel.expectWritten("00 00 00 1d 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 00 00 00 00 01 00 00 00 00 00 01 "
                        "00 03");
  EXPECT_FALSE(mirror->idle());
  carrier->idleIs(true);
  channel.expectWritten("00 00 00 1d 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 00 00 00 00 01 00 00 00 00 00 01 "
                        "01 03");
  EXPECT_TRUE(mirror->idle());
}

class DepotRecords : public ::testing::Test {
protected:
  Channel<Depot> channel{Zel::makeObject<Depot>("d")};
  const Zel::Ptr<Depot>& depot = channel.original;
  const Zel::Ptr<Depot>& mirror = channel.mirror;
};

TEST_F(DepotRecords, AValueThatBringsItsKey) {
  depot->alarmIs(Alarm("t1", express));
  channel.expectWritten("00 00 00 2c 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 74 31 00 00 00 02 74 31 00 00 00 02 03");
  EXPECT_EQ(mirror->alarm("t1"), Alarm("t1", express));
  depot->alarmDel("t1");
  channel.expectWritten("00 00 00 22 02 00 00 00 00 00 00 00 "
                        "ff ff fe fc 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 74 31 03");
  EXPECT_EQ(mirror->alarmMap().count(), 0U);
}

TEST_F(DepotRecords, SingleValues) {
  depot->pidIs(4711);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 12 67 03");
  depot->restartsInc(3);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 00 03 03");
  depot->openIs(true);
  channel.expectWritten("00 00 00 1d 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 00 00 00 00 01 00 00 00 00 00 01 "
                        "01 03");
  EXPECT_EQ(mirror->pid(), 4711U);
  EXPECT_EQ(mirror->restarts(), 3U);
  EXPECT_TRUE(mirror->open());
}

class OrderRecords : public ::testing::Test {
protected:
  Channel<Order> channel{Zel::makeObject<Order>("o", express)};
  const Zel::Ptr<Order>& order = channel.original;
  const Zel::Ptr<Order>& mirror = channel.mirror;
};

TEST_F(OrderRecords, TheRootIsMadeWithBothArguments) {
  channel.expectWritten("");
  EXPECT_EQ(mirror->name(), "o");
  EXPECT_EQ(mirror->urgency(), express);
}

TEST_F(OrderRecords, AConstructorArgumentThatChanges) {
  order->urgencyIs(routine);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 03");
  EXPECT_EQ(mirror->urgency(), routine);
}

TEST_F(OrderRecords, NumbersByText) {
  order->itemIs("milk", 12);
  channel.expectWritten("00 00 00 28 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 04 6d 69 6c 6b 00 00 00 0c 03");
  EXPECT_EQ(mirror->item("milk"), 12U);
  order->itemDel("milk");
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "ff ff fe fc 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 04 6d 69 6c 6b 03");
  EXPECT_EQ(mirror->itemMap().count(), 0U);
}

} // namespace
