#include "Dumps.h"
#include "Payload.h"

#include "support/Failure.h"

#include <attrlog/MaintenanceAgentInfo.h>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

#include <limits>

// The bytes of each type of value: written, and read by the constructor that reads a stream.

namespace {

using Maintenance::Profile::ProfileKey;
using namespace Maintenance::Unit;
using Support::rangeFailure;

/// A value is these bytes, and is read back from them wherever they lie in the ring, to the last
/// one and no further. From fewer it is not read.
template <class V>
void expectBytes(const V& value, std::string_view hex) {
  EXPECT_EQ(payloadOf([&](const auto& out) { out << value; }), plain(hex));
  atEveryPlace(hex, [&](Ring& ring) {
    EXPECT_TRUE(V(&ring, Zel::StreamBogon{}) == value) << "at " << ring.place();
    EXPECT_EQ(ring.left(), 0U);
  });
  const auto ring = ringOf(std::string(hex) + " 5a");
  EXPECT_TRUE(V(ring.ptr(), Zel::StreamBogon{}) == value);
  EXPECT_EQ(ring->left(), 1U);
  const std::string bytes = bytesOf(hex);
  for (std::size_t count = 0; count < bytes.size(); ++count) {
    const auto cut = ringOf(hexOf(bytes.substr(0, count)));
    EXPECT_EQ(rangeFailure([&] { V(cut.ptr(), Zel::StreamBogon{}); }), "record too short");
  }
}

TEST(Values, AProfileKey) {
  expectBytes(ProfileKey(Maintenance::Profile::profileTypeUnit, "y"), dump("value-profile-key"));
  expectBytes(ProfileKey(), "00 00 00 00 00 00 00 00");
}

TEST(Values, AGroupKey) {
  expectBytes(Group::GroupKey(Group::groupTypeInterface, "x"), dump("value-group-key"));
  expectBytes(Group::GroupKey(Group::groupTypeBgp, "ab"), "00 00 00 01 00 00 00 02 61 62");
}

TEST(Values, AnInterface) {
  expectBytes(Vexil::IntfId("Ethernet3/1"), dump("value-intf-id"));
  expectBytes(Vexil::IntfId(0xfedcba98, 0x76543210), "fe dc ba 98 76 54 32 10");
}

TEST(Values, TrafficRatesOfAnyNumbers) {
  TrafficRates rates;
  rates.outBitsRateIs(1);
  rates.inBitsRateIs(2);
  rates.statsUpdateTimeIs(1.0);
  expectBytes(rates, dump("value-traffic-rates"));
  rates.outBitsRateIs(std::numeric_limits<unsigned long long>::max());
  rates.inBitsRateIs(0x0102030405060708);
  rates.statsUpdateTimeIs(-std::numeric_limits<double>::infinity());
  expectBytes(rates, "ff ff ff ff ff ff ff ff 01 02 03 04 05 06 07 08 ff f0 00 00 00 00 00 00");
}

TEST(Values, AStageManagersKeyWithoutItsComputedText) {
  StageMgrInstKey key;
  key.unitNameIs("L1");
  key.genIdIs(9);
  expectBytes(key, dump("value-stage-mgr-inst-key"));
  // A generation of 0, and a name that the text could not tell from its separator.
  key.unitNameIs("a#b");
  key.genIdIs(0);
  expectBytes(key, "00 00 00 03 61 23 62 00 00 00 00");
}

TEST(Values, AUnitTakenIntoMaintenanceOnBootAndTheReason) {
  using Noted = Maintenance::OnBootUnitAndReason;
  expectBytes(Noted("L1", srcOnBootCli), "00 00 00 02 4c 31 00 00 00 02");
  expectBytes(Noted(), "00 00 00 00 00 00 00 00");
  const auto unknown = ringOf("00 00 00 00 00 00 00 04");
  EXPECT_EQ(rangeFailure([&] { Noted(unknown.ptr(), Zel::StreamBogon{}); }), "InputSrc");
}

template <class V>
void expectNoBytes() {
  EXPECT_EQ(payloadOf([](const auto& out) { out << V(); }), "");
  const auto ring = ringOf("01 02 03");
  EXPECT_TRUE(V(ring.ptr(), Zel::StreamBogon{}) == V());
  EXPECT_EQ(ring->left(), 3U);
  const auto empty = ringOf("");
  EXPECT_TRUE(V(empty.ptr(), Zel::StreamBogon{}) == V());
}

TEST(Values, ThoseOfConstantsTakeNoByte) {
  expectNoBytes<BuiltinUnitName>();
  expectNoBytes<MaintenanceStageClasses>();
  expectNoBytes<MaintenanceStageList>();
}

TEST(Values, AnUnknownEnumeratorInsideOfOneIsARangeFailure) {
  for (const char* number : {"00 00 00 04", "ff ff ff ff", "80 00 00 00"}) {
    const auto profile = ringOf(std::string(number) + " 00 00 00 00");
    EXPECT_EQ(rangeFailure([&] { ProfileKey(profile.ptr(), Zel::StreamBogon{}); }), "ProfileType");
    const auto group = ringOf(std::string(number) + " 00 00 00 00");
    EXPECT_EQ(rangeFailure([&] { Group::GroupKey(group.ptr(), Zel::StreamBogon{}); }), "GroupType");
  }
}

TEST(Values, AStringInsideOfOneIsOfLimitedLength) {
  const std::string longest(16000, 'k');
  const ProfileKey key(Maintenance::Profile::profileTypeBgp, Zel::String8(longest));
  const std::string hex = "00 00 00 01 00 00 3e 80 6b * 16000";
  EXPECT_EQ(payloadOf([&](const auto& out) { out << key; }), hex);
  const auto ring = ringOf(hex);
  EXPECT_EQ(ProfileKey(ring.ptr(), Zel::StreamBogon{}), key);

  const ProfileKey tooLong(Maintenance::Profile::profileTypeBgp, Zel::String8(longest + "k"));
  EXPECT_EQ(rangeFailure([&] { payloadOf([&](const auto& out) { out << tooLong; }); }),
            "string of 16001 bytes where at most 16000 are sent");
  const auto above = ringOf("00 00 00 01 00 00 3e 81 6b * 16001");
  EXPECT_EQ(rangeFailure([&] { ProfileKey(above.ptr(), Zel::StreamBogon{}); }), "string too long");
}

TEST(Values, ALengthFromOutsideAllocatesNothing) {
  const auto ring = ringOf("00 00 00 01 ff ff ff ff 00");
  EXPECT_EQ(rangeFailure([&] { ProfileKey(ring.ptr(), Zel::StreamBogon{}); }), "string too long");
}

} // namespace
