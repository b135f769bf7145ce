#include "Directories.h"
#include "FailingAllocator.h"

namespace {

using namespace Maintenance;
using namespace TestModel;

template <class D>
using FailedAllocations = Directory<D>;
TYPED_TEST_SUITE(FailedAllocations, AllDirectories, DirectoryNames);

/// Expects that the directory stands as it did after `count` insertions.
template <class D>
void expectUnchanged(typename D::Dir const& dir, unsigned count, unsigned version) {
  EXPECT_EQ(D::map(dir).count(), count);
  EXPECT_EQ(D::map(dir).mapVersion(), count);
  EXPECT_EQ(dir.versionCounter(), version);
}

// The map allocates its table at the first insertion and a larger one at the seventeenth.

TYPED_TEST(FailedAllocations, LeaveADirectoryAsItWasBeforeTheBareInsertion) {
  auto& made = *this->dir;
  TypeParam::is(*TypeParam::make("other"), TypeParam::key(0)); // what is made once per process
  std::size_t failures = 0;
  for (int number = 0; number < 40; ++number) {
    auto const key = TypeParam::key(number);
    auto const before = static_cast<unsigned>(number);
    failures += failEachAllocation([&] { TypeParam::add(made, key); },
                                   [&] {
                                     expectUnchanged<TypeParam>(made, before, 0);
                                     EXPECT_FALSE(TypeParam::read(made, key));
                                   });
  }
  EXPECT_EQ(failures, 40 * TypeParam::allocations + 3) << "the members, and three tables";
  expectUnchanged<TypeParam>(made, 40, 0);
}

TYPED_TEST(FailedAllocations, LeaveADirectoryAsItWasBeforeTheCountedInsertion) {
  auto& made = *this->dir;
  for (int number = 0; number < 40; ++number) {
    auto const key = TypeParam::key(number);
    auto const before = static_cast<unsigned>(number);
    failEachAllocation([&] { TypeParam::is(made, key); },
                       [&] {
                         expectUnchanged<TypeParam>(made, before, before);
                         EXPECT_FALSE(TypeParam::read(made, key));
                       });
  }
  expectUnchanged<TypeParam>(made, 40, 40);
}

TEST(FailedAllocation, LeaveTheCollectionsOfAUnitAsTheyWere) {
  auto const unit = Unit::statusFactory("unit");
  Group::GroupKey const group(Group::groupTypeBgp, "peers");
  Vexil::IntfId const interface("Vlan1");
  Zel::String8 const line = "line";
  auto const check = [&](unsigned version) {
    return [&unit, version] { EXPECT_EQ(unit->versionCounter(), version); };
  };
  EXPECT_EQ(failEachAllocation([&] { unit->groupIs(group, true); }, check(0)), 2U);
  EXPECT_EQ(failEachAllocation([&] { unit->historyIs(1.0, line); }, check(1)), 1U);
  EXPECT_EQ(failEachAllocation([&] { unit->intfsViolatingTrafficThresholdIs(interface, true); },
                               check(2)),
            2U);
  EXPECT_EQ(failEachAllocation([&] { unit->groupIs(group, false); }, check(3)), 0U);
  EXPECT_EQ(unit->versionCounter(), 4U);
}

TEST(FailedAllocation, CannotBefallWhatMakesNone) {
  Profile::ProfileKey const key(Profile::profileTypeBgp, "a name of more than a few bytes");
  Profile::ProfileKey const other(Profile::profileTypeBgp, "a name of more than a few byteS");
  auto const dir = Profile::configDirFactory("profiles");
  dir->configIs(key);
  std::size_t const before = allocations();
  bool const ordered = key == other || other < key;
  unsigned const hash = key.hash();
  bool const found = static_cast<bool>(dir->config(key)) && !dir->config(other);
  std::size_t const after = allocations();
  EXPECT_EQ(after - before, 0U);
  EXPECT_TRUE(ordered);
  EXPECT_NE(hash, other.hash());
  EXPECT_TRUE(found);
}

} // namespace
