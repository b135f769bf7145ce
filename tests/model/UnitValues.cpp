#include <model/Unit/Constants.h>
#include <model/Unit/TrafficRates.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace Maintenance::Unit;

template <class V>
concept Ordered = requires(const V& a, const V& b) {
  a < b;
};
template <class V>
concept Hashed = requires(const V& value) {
  value.hash();
};

template <class V>
void checkConstants() {
  static_assert(std::is_empty_v<V> && std::is_default_constructible_v<V>);
  static_assert(!Ordered<V> && !Hashed<V>);
  const V one;
  const V other;
  EXPECT_TRUE(one == other);
  EXPECT_FALSE(one != other);
  EXPECT_TRUE(one == one);
}

TEST(UnitConstants, TheBuiltinUnitsHaveTheirNamesAndAnyTwoAreEqual) {
  checkConstants<BuiltinUnitName>();
  const Zel::Name system = BuiltinUnitName().system();
  const Zel::Name linecard = BuiltinUnitName().linecard();
  EXPECT_EQ(system, "System");
  EXPECT_EQ(linecard, "Linecard");
  EXPECT_EQ(BuiltinUnitName::Attr::system, 2);
  EXPECT_EQ(BuiltinUnitName::Attr::linecard, 3);
}

TEST(UnitConstants, TheStageClassesHaveTheirNamesAndAnyTwoAreEqual) {
  checkConstants<MaintenanceStageClasses>();
  const Zel::Name enter = MaintenanceStageClasses().maintEnterClass();
  const Zel::Name exit = MaintenanceStageClasses().maintExitClass();
  EXPECT_EQ(enter, "maintEnter");
  EXPECT_EQ(exit, "maintExit");
  EXPECT_EQ(MaintenanceStageClasses::Attr::maintEnterClass, 2);
  EXPECT_EQ(MaintenanceStageClasses::Attr::maintExitClass, 3);
}

TEST(UnitConstants, TheStagesHaveTheirNamesAndAnyTwoListsAreEqual) {
  checkConstants<MaintenanceStageList>();
  EXPECT_EQ(MaintenanceStageList().bgpStage(), "bgp");
  EXPECT_EQ(MaintenanceStageList().rateMonStage(), "ratemon");
  EXPECT_EQ(MaintenanceStageList::Attr::bgpStage, 2);
  EXPECT_EQ(MaintenanceStageList::Attr::rateMonStage, 3);
}

TrafficRates rates(unsigned long long out, unsigned long long in, double time) {
  TrafficRates made;
  made.outBitsRateIs(out);
  made.inBitsRateIs(in);
  made.statsUpdateTimeIs(time);
  return made;
}

void expectEqual(const TrafficRates& a, const TrafficRates& b, bool equal) {
  EXPECT_EQ(a == b, equal);
  EXPECT_EQ(b == a, equal);
  EXPECT_EQ(a != b, !equal);
  EXPECT_EQ(b != a, !equal);
}

TEST(TrafficRates, ANewSampleIsAllZero) {
  static_assert(!Ordered<TrafficRates> && !Hashed<TrafficRates>);
  static_assert(
      !std::is_constructible_v<TrafficRates, unsigned long long, unsigned long long, double>);
  const TrafficRates sample;
  EXPECT_EQ(sample.outBitsRate(), 0U);
  EXPECT_EQ(sample.inBitsRate(), 0U);
  EXPECT_EQ(sample.statsUpdateTime(), 0.0);
  EXPECT_FALSE(std::signbit(sample.statsUpdateTime()));
}

TEST(TrafficRates, EachMemberIsSetByItselfAtFullWidth) {
  const unsigned long long most = std::numeric_limits<unsigned long long>::max();
  TrafficRates sample;
  sample.outBitsRateIs(most);
  expectEqual(sample, rates(most, 0, 0), true);
  sample.inBitsRateIs(most - 1);
  expectEqual(sample, rates(most, most - 1, 0), true);
  sample.statsUpdateTimeIs(1e300);
  EXPECT_EQ(sample.outBitsRate(), most);
  EXPECT_EQ(sample.inBitsRate(), most - 1);
  EXPECT_EQ(sample.statsUpdateTime(), 1e300);
}

TEST(TrafficRates, SamplesAreEqualIfAllThreeMembersAre) {
  const TrafficRates sample = rates(1, 2, 3.5);
  expectEqual(sample, sample, true);
  expectEqual(sample, rates(1, 2, 3.5), true);
  expectEqual(sample, rates(9, 2, 3.5), false);
  expectEqual(sample, rates(1, 9, 3.5), false);
  expectEqual(sample, rates(1, 2, 9), false);
  expectEqual(sample, rates(2, 1, 3.5), false);
}

TEST(TrafficRates, TheTimeComparesAsAFloatingValue) {
  const TrafficRates never = rates(1, 2, std::numeric_limits<double>::quiet_NaN());
  EXPECT_FALSE(never == never); // NOLINT(misc-redundant-expression)
  EXPECT_TRUE(never != never);  // NOLINT(misc-redundant-expression)
  expectEqual(rates(1, 2, 0.0), rates(1, 2, -0.0), true);
}

} // namespace
