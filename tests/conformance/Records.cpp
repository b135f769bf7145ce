#include <model/Unit.h>

#include <gtest/gtest.h>

namespace {

using namespace Maintenance::Unit;

TEST(Records, OfAValueTypeAreTheSameOnBothSidesOfTheLibrarysBoundary) {
  const Zel::TypeTable& status = Status::zelTable();
  EXPECT_EQ(status.row("state")->value, &Zel::valueRecord<State>);
  EXPECT_EQ(status.row("aggTrafficRate")->value, &Zel::valueRecord<TrafficRates>);
  EXPECT_EQ(status.row("group")->key, &Zel::valueRecord<Group::GroupKey>);
  EXPECT_EQ(status.row("genId")->value, &Zel::valueRecord<unsigned>);
}

} // namespace
