#include "Listeners.h"

namespace {

using namespace Maintenance::Unit;
using namespace TestModel;

struct UnitInput : testing::Test {
  const Ptr<Input> input = inputFactory("cli");
  Log log;
};

TEST_F(UnitInput, TheFactoryMakesOneWithOneReferenceOfAnUnknownSourceWithoutUnits) {
  EXPECT_EQ(input->references(), 1U);
  EXPECT_EQ(input->name(), "cli");
  EXPECT_EQ(input->versionCounter(), 0U);
  EXPECT_EQ(input->readCounter(), 0U);
  EXPECT_EQ(input->priority(), srcUnknown);
  EXPECT_EQ(input->unitMap().count(), 0U);
}

TEST_F(UnitInput, EachRealChangeOfThePriorityIsCountedAndToldOnce) {
  const auto hearer = listen<InputListener>(input, log);
  expectMoves(*input, 0, 0, [&] { input->priorityIs(srcUnknown); });
  expectMoves(*input, 1, 0, [&] { input->priorityIs(srcCli); });
  expectMoves(*input, 0, 0, [&] { input->priorityIs(srcCli); });
  expectMoves(*input, 1, 0, [&] { input->priorityIs(srcOnBoot); });
  EXPECT_EQ(log, Log({"onPriority", "onPriority"}));
  EXPECT_EQ(input->priority(), srcOnBoot);
}

TEST_F(UnitInput, FalseUnderANameThatIsNotThereAddsIt) {
  const auto hearer = listen<InputListener>(input, log);
  expectMoves(*input, 1, 0, [&] { input->unitIs("System", false); });
  EXPECT_EQ(input->unitMap().count(), 1U);
  EXPECT_FALSE(input->unit("System"));
  expectMoves(*input, 1, 0, [&] { input->unitIs("System", true); });
  EXPECT_TRUE(input->unit("System"));
  EXPECT_TRUE(input->unitDel("System"));
  expectMoves(*input, 0, 0, [&] { EXPECT_FALSE(input->unitDel("System")); });
  EXPECT_EQ(input->unitMap().count(), 0U);
  EXPECT_EQ(log, Log({"onUnit System", "onUnit System", "onUnit System"}));
}

TEST_F(UnitInput, AnyTextNamesAUnit) {
  for (const char* const name : {"", "a/b", "no such unit"}) {
    input->unitIs(name, true);
    EXPECT_TRUE(input->unit(name));
  }
  EXPECT_EQ(input->unitMap().count(), 3U);
  input->unitDelAll();
  EXPECT_EQ(input->unitMap().count(), 0U);
}

} // namespace
