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

TEST(MergedUnitInput, TakesNameAndPriorityFromTheFactory) {
  const auto merged = mergedInputFactory("System", srcOnBoot);
  EXPECT_EQ(merged->references(), 1U);
  EXPECT_EQ(merged->name(), "System");
  EXPECT_EQ(merged->versionCounter(), 0U);
  expectMoves(*merged, 0, 1, [&] { EXPECT_EQ(merged->unitName(), "System"); });
  expectMoves(*merged, 0, 1, [&] { EXPECT_EQ(merged->fwkKey(), "System"); });
  expectMoves(*merged, 0, 1, [&] { EXPECT_EQ(merged->priority(), srcOnBoot); });
}

TEST(MergedUnitInput, ALowerSourceTakesThePlaceOfAHigherOne) {
  const auto merged = mergedInputFactory("System", srcCli);
  Log log;
  const auto hearer = listen<MergedInputListener>(merged, log);
  for (const InputSrc source : {srcOnBootCli, srcOnBoot, srcUnknown, srcCli}) {
    expectMoves(*merged, 1, 0, [&] { merged->priorityIs(source); });
    EXPECT_EQ(merged->priority(), source);
  }
  expectMoves(*merged, 0, 0, [&] { merged->priorityIs(srcCli); });
  EXPECT_EQ(log.size(), 4U);
}

struct MergedUnitInputs : testing::Test {
  const Ptr<MergedInputDir> dir = mergedInputDirFactory("merged");
  Log log;
};

TEST_F(MergedUnitInputs, AHitSetsThePriorityOnTheMemberAndStaysSilentItself) {
  const auto hearer = listen<MergedInputDirListener>(dir, log, "dir ");
  const auto member = dir->unitIs("a", srcCli);
  EXPECT_EQ(member->priority(), srcCli);
  EXPECT_EQ(log, Log({"dir on a"}));
  EXPECT_EQ(dir->versionCounter(), 1U);

  const auto memberHearer = listen<MergedInputListener>(dir->unit("a"), log, "member ");
  const Counters counters(*member);
  log.clear();
  expectMoves(*dir, 1, 0, [&] { EXPECT_EQ(dir->unitIs("a", srcOnBoot), member); });
  EXPECT_EQ(member->priority(), srcOnBoot);
  EXPECT_EQ(counters.changes(), 1U);
  EXPECT_EQ(log, Log({"member onPriority"}));
}

TEST_F(MergedUnitInputs, AHitWithTheSamePriorityCountsOnTheDirectoryAlone) {
  const auto member = dir->unitIs("a", srcCli);
  const auto hearer = listen<MergedInputListener>(dir->unit("a"), log);
  const Counters counters(*member);
  expectMoves(*dir, 1, 0, [&] { EXPECT_EQ(dir->unitIs("a", srcCli), member); });
  EXPECT_EQ(counters.changes(), 0U);
  EXPECT_EQ(log, Log());
}

TEST_F(MergedUnitInputs, TheMembersNotifieesHearBeforeTheDirectoryCounts) {
  dir->unitIs("a", srcCli);
  const auto hearer = listen<MergedInputListener>(dir->unit("a"), log);
  unsigned seen = 99;
  hearer->onCall = [&] { seen = dir->versionCounter(); };
  dir->unitIs("a", srcOnBoot);
  EXPECT_EQ(seen, 1U);
  EXPECT_EQ(dir->versionCounter(), 2U);
}

TEST_F(MergedUnitInputs, AMemberThatIsDeletedWhileItIsUpdatedIsYieldedAllTheSame) {
  dir->unitIs("a", srcCli);
  const auto hearer = listen<MergedInputListener>(dir->unit("a"), log);
  hearer->onCall = [&] { dir->unitDel("a"); };
  const auto member = dir->unitIs("a", srcOnBoot);
  EXPECT_EQ(member->priority(), srcOnBoot);
  EXPECT_FALSE(member->parent());
  EXPECT_FALSE(dir->unit("a"));
  EXPECT_EQ(dir->versionCounter(), 3U);
}

TEST_F(MergedUnitInputs, AMemberMadeByTheBareOperationHasItsPriority) {
  const auto member = dir->newUnit("a", srcOnBootCli);
  EXPECT_EQ(member->priority(), srcOnBootCli);
  EXPECT_EQ(member->unitName(), "a");
  EXPECT_EQ(member->parent(), dir);
  EXPECT_EQ(member->parentAttrId(), 258);
  EXPECT_EQ(dir->versionCounter(), 0U);
}

TEST_F(MergedUnitInputs, AreNotFilledFromInputs) {
  const auto input = inputFactory("cli");
  input->priorityIs(srcCli);
  input->unitIs("a", true);
  EXPECT_EQ(dir->unitMap().count(), 0U);
}

} // namespace
