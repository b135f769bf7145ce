#include "Dumps.h"
#include "Ends.h"

#include "foreign/model/OrderAttrLog.h"

#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// Records whose framing is right and whose values are not: they are passed over, and counted.

namespace {

using namespace Maintenance::Unit;

class BadValues : public ::testing::Test {
protected:
  BadValues() { receiver.apply(records(dump("orphan"), dump("child"))); }

  /// A record for the unit.
  void apply(std::string_view attr, std::string_view payload) const {
    const std::string bytes = bytesOf(payload);
    const std::size_t length = bytes.size() + 28;
    std::string record = bytesOf("00 00 00 00 04 00 00 00 00 00 00 00");
    record[2] = static_cast<char>(length / 256);
    record[3] = static_cast<char>(length % 256);
    receiver.apply(hexOf(record + bytesOf(attr) + bytesOf("01 00 00 00 00 00 00 00 00 00 01") +
                         bytes + "\x03"));
  }
  void expectPassedOver(std::string_view attr, std::string_view payload) const {
    const auto before = receiver.counts().badValues;
    const unsigned version = unit()->versionCounter();
    apply(attr, payload);
    EXPECT_EQ(receiver.failure(), "");
    EXPECT_EQ(receiver.counts().badValues, before + 1) << payload;
    EXPECT_EQ(unit()->versionCounter(), version);
    receiver.apply(dump("fixed")); // the next record is read
    EXPECT_EQ(unit()->genId(), 7U);
    unit()->genIdIs(0);
  }
  Zel::Ptr<Status> unit() const { return receiver.mirror<StatusDir>("units")->status("System"); }

  const Receiver receiver;
};

TEST_F(BadValues, SingleValuesCutShort) {
  expectPassedOver("00 00 01 06", "00 00 00");
  expectPassedOver("00 00 01 06", "");
  expectPassedOver("00 00 01 08", "3f f8 00 00 00 00 00");
  expectPassedOver("00 00 01 0f", "00 * 23");
}

TEST_F(BadValues, EntriesCutShortInTheKeyOrTheValue) {
  expectPassedOver("00 00 01 04", "00 00 00 01 00 00 00 01");
  expectPassedOver("00 00 01 04", "00 00 00 01 00 00 00 01 61");
  expectPassedOver("00 00 01 10", "01 02 00 00 00 03 00 01");
  expectPassedOver("00 00 01 0c", "3f f0 00 00 00 00 00");
  expectPassedOver("00 00 01 0c", "3f f0 00 00 00 00 00 00 00 00 00");
}

TEST_F(BadValues, DeletionsCutShort) {
  expectPassedOver("ff ff fe fc", "00 00 00 01 00 00 00 02 61");
  expectPassedOver("ff ff fe f0", "01 02 00 00 00 03 00");
  expectPassedOver("ff ff fe f4", "3f f0 00 00 00 00 00");
}

TEST_F(BadValues, AnUnknownEnumeratorInAKey) {
  expectPassedOver("00 00 01 04", "00 00 00 03 00 00 00 01 61 01");
  expectPassedOver("00 00 01 04", "ff ff ff ff 00 00 00 01 61 01");
  expectPassedOver("ff ff fe fc", "00 00 00 03 00 00 00 01 61");
  EXPECT_EQ(unit()->groupMap().count(), 0U);
  EXPECT_EQ(receiver.counts().unknownEnums, 0U);
}

TEST_F(BadValues, AStringAboveTheLimitInAKey) {
  expectPassedOver("00 00 01 04", "00 00 00 01 00 00 3e 81 61 * 16001 01");
  apply("00 00 01 04", "00 00 00 01 00 00 3e 80 61 * 16000 01");
  EXPECT_EQ(receiver.failure(), "");
  EXPECT_TRUE(
      unit()->group(Group::GroupKey(Group::groupTypeBgp, Zel::String8(std::string(16000, 'a')))));
}

TEST_F(BadValues, AnUnknownEnumeratorByItselfIsTaken) {
  apply("00 00 01 06", "00 00 00 63");
  EXPECT_EQ(unit()->state(), static_cast<State>(99));
  apply("00 00 01 07", "80 00 00 00");
  EXPECT_EQ(static_cast<int>(unit()->reason()), -2147483647 - 1);
  EXPECT_EQ(receiver.counts().unknownEnums, 2U);
  EXPECT_EQ(receiver.counts().badValues, 0U);
}

TEST_F(BadValues, BytesBehindAValueAreNotLookedAt) {
  apply("00 00 01 06", "00 00 00 03 5a 5a");
  EXPECT_EQ(unit()->state(), underMaintenance);
  apply("00 00 01 04", "00 00 00 01 00 00 00 01 61 01 5a");
  EXPECT_TRUE(unit()->group(Group::GroupKey(Group::groupTypeBgp, "a")));
  EXPECT_EQ(receiver.counts().badValues, 0U);
}

TEST_F(BadValues, ATrueThatIsNotOneIsTrue) {
  apply("00 00 01 04", "00 00 00 01 00 00 00 01 61 ff");
  EXPECT_TRUE(unit()->group(Group::GroupKey(Group::groupTypeBgp, "a")));
}

TEST_F(BadValues, ARootIsMadeOfGoodArgumentsOnly) {
  // An order with an urgency of 7.
  receiver.apply("00 00 00 42 01 00 00 00 00 00 00 00 00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                 "01 00 00 00 0e 46 6f 72 65 69 67 6e 3a 3a 4f 72 64 65 72 "
                 "03 00 00 00 01 6f 00 00 00 07 04 06 00 00 00 00 00 00 00 03");
  EXPECT_EQ(receiver.counts().badValues, 1U);
  EXPECT_FALSE(receiver.roots->entity("o"));
  EXPECT_EQ(receiver.failure(), "");
}

TEST_F(BadValues, AWriterSaysWhoseStringIsTooLong) {
  const Sender sender;
  const auto written = statusFactory("u");
  sender.announce(written);
  const Group::GroupKey longest(Group::groupTypeBgp, Zel::String8(std::string(16000, 'a')));
  written->groupIs(longest, true);
  EXPECT_EQ(sender.written(),
            plain("00 00 3e a5 02 00 00 00 00 00 00 00 00 00 01 04 01 00 00 00 00 00 00 00 00 00 "
                  "01 00 00 00 01 00 00 3e 80 61 * 16000 01 03"));
  const Group::GroupKey longer(Group::groupTypeBgp, Zel::String8(std::string(16001, 'a')));
  written->groupIs(longer, true); // which does not fail
  EXPECT_TRUE(written->group(longer));
  EXPECT_EQ(sender.failure(), "group of u: string of 16001 bytes where at most 16000 are sent");
}

TEST_F(BadValues, TwoOfTheLongestStringsAreOneRecord) {
  const Sender sender;
  const auto depot = Zel::makeObject<Foreign::Depot>("d");
  sender.announce(depot);
  depot->alarmIs(Foreign::Alarm(Zel::String8(std::string(16000, 'a')), Foreign::express));
  EXPECT_EQ(sender.written(),
            plain("00 00 7d 28 02 00 00 00 00 00 00 00 00 00 01 04 01 00 00 00 00 00 00 00 00 00 "
                  "01 00 00 3e 80 61 * 16000 00 00 3e 80 61 * 16000 00 00 00 02 03"));
}

} // namespace
