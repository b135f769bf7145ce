#include "support/OneAtATime.h"
#include "support/Ordering.h"

#include <Vexil/IntfId>

#include <gtest/gtest.h>

#include <iomanip>
#include <random>
#include <sstream>

namespace {

using Support::expectEqual;
using Support::expectLess;
using Vexil::IntfId;

TEST(IntfId, IsTwoWordsAndThoseOfNoneAreZero) {
  static_assert(sizeof(IntfId) == 8);
  static_assert(IntfId().first() == 0 && IntfId().second() == 0);
  static_assert(IntfId(1, 2).first() == 1 && IntfId(1, 2).second() == 2);
  expectEqual(IntfId(), IntfId(0, 0));
}

TEST(IntfId, ItsKindIsTheTopByte) {
  static_assert(IntfId::none == 0 && IntfId::ethernet == 1 && IntfId::portChannel == 2 &&
                IntfId::loopback == 3 && IntfId::vlan == 4 && IntfId::management == 5);
  static_assert(IntfId(0x04010000, 100).kind() == IntfId::vlan);
  static_assert(IntfId(0xffffffff, 0).kind() == 255);
  EXPECT_EQ(IntfId().kind(), IntfId::none);
}

TEST(IntfId, TheFirstWordDecidesBeforeTheSecondUnsigned) {
  expectLess(IntfId(1, 0xffffffff), IntfId(2, 0));
  expectLess(IntfId(1, 1), IntfId(1, 2));
  expectLess(IntfId(0x7fffffff, 0), IntfId(0x80000000, 0));
  expectLess(IntfId(0, 0x7fffffff), IntfId(0, 0x80000000));
  expectEqual(IntfId(3, 4), IntfId(3, 4));
}

TEST(IntfId, InterfacesAreInTheOrderOfKindAndNumbers) {
  char const* const names[] = {"none",        "Ethernet2",   "Ethernet10",    "Ethernet1/2",
                               "Ethernet2/1", "Ethernet2/2", "Ethernet1/1/1", "Port-Channel1",
                               "Loopback0",   "Vlan1",       "Management1"};
  for (std::size_t at = 1; at < std::size(names); ++at) {
    SCOPED_TRACE(names[at]);
    expectLess(IntfId(names[at - 1]), IntfId(names[at]));
  }
}

TEST(IntfId, ItsHashIsTheOneAtATimeHashOfBothWords) {
  std::mt19937_64 random(31);
  for (int round = 0; round < 1000; ++round) {
    IntfId const id(static_cast<unsigned>(random()), static_cast<unsigned>(random()));
    unsigned const described = Support::OneAtATime()
                                   .add(Support::bytesOf(id.first()))
                                   .add(Support::bytesOf(id.second()))
                                   .end();
    ASSERT_EQ(id.hash(), described) << "round " << round;
  }
}

TEST(IntfId, ItsHashNeverChanges) {
  EXPECT_EQ(IntfId().hash(), 0U);
  EXPECT_EQ(IntfId("Ethernet1").hash(), 0x2269b0b1U);
  EXPECT_EQ(IntfId("Ethernet3/1").hash(), 0x31c538bcU);
  EXPECT_EQ(IntfId("Management7/8/9").hash(), 0xf9c28651U);
  EXPECT_EQ(IntfId(0xffffffff, 0xffffffff).hash(), 0x39229c66U);
}

TEST(IntfId, AStreamGetsTheNameWhateverItsFormat) {
  std::ostringstream out;
  out << std::hex << std::setw(40) << std::setfill('*') << IntfId("Ethernet3/10");
  EXPECT_EQ(out.str(), "Ethernet3/10");
}

} // namespace
