#include "UnitWatch.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Replay::Test {

namespace {

using namespace Maintenance::Unit;

class Watches : public testing::Test {
protected:
  /// What was printed since the last look.
  std::string heard() {
    std::string text = out_.str();
    out_.str("");
    return text;
  }

  std::ostringstream out_;
  Log log_{out_};
  Zel::Ptr<StatusDir> units_ = statusDirFactory("units");
};

TEST_F(Watches, LeaveAUnitThatIsRemoved) {
  const auto watching = watch<UnitsWatch>(units_, log_);
  const Zel::Ptr<Status> first = units_->statusIs("A");
  EXPECT_EQ(first->zelNotifieeList().count(), 1U);
  EXPECT_EQ(heard(), "1970-01-01T00:00:00 unit A: added\n");

  units_->statusDel("A");
  EXPECT_EQ(heard(), "1970-01-01T00:00:00 unit A: removed\n");
  EXPECT_EQ(first->zelNotifieeList().count(), 0U);
  EXPECT_EQ(first->references(), 1U);
  first->stateIs(active);
  EXPECT_EQ(heard(), "");
}

TEST_F(Watches, BeginAnewOnAUnitThatComesBack) {
  const auto watching = watch<UnitsWatch>(units_, log_);
  const Zel::Ptr<Status> first = units_->statusIs("A");
  units_->statusDel("A");
  const Zel::Ptr<Status> second = units_->statusIs("A");
  heard();
  EXPECT_EQ(second->zelNotifieeList().count(), 1U);
  first->genIdIs(1);
  EXPECT_EQ(heard(), "");
  second->genIdIs(2);
  EXPECT_EQ(heard(), "1970-01-01T00:00:00 unit A: genId = 2\n");
}

TEST_F(Watches, GoWithTheirHandle) {
  auto watching = watch<UnitsWatch>(units_, log_);
  const Zel::Ptr<Status> unit = units_->statusIs("A");
  heard();
  watching = nullptr;
  EXPECT_EQ(units_->zelNotifieeList().count(), 0U);
  EXPECT_EQ(unit->zelNotifieeList().count(), 0U);
  EXPECT_EQ(units_->references(), 1U);
  EXPECT_EQ(unit->references(), 2U); // the directory's and this one
  unit->stateIs(active);
  units_->statusDel("A");
  EXPECT_EQ(heard(), "");
}

} // namespace

} // namespace Replay::Test
