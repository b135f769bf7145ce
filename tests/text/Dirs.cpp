#include "Texts.h"

#include <Zel/Dir>
#include <model/Profile.h>

#include <thread>

namespace {

using namespace TestText;
using Maintenance::Unit::statusDirFactory;
using Zel::Dir;
using Zel::Entity;
using Zel::Name;
using Zel::Ptr;

TEST(DirOfRoots, FindsThemByName) {
  const auto dir = Zel::makeObject<Dir>();
  const auto units = statusDirFactory("units");
  dir->entityIs(units);
  EXPECT_EQ(dir->entity("units"), units);
  EXPECT_FALSE(dir->entity("other"));
  EXPECT_FALSE(dir->entity(""));
}

TEST(DirOfRoots, RefusesAnEntityThatHasAParent) {
  const auto dir = Zel::makeObject<Dir>();
  const auto units = statusDirFactory("units");
  const Ptr<Entity> unit = Zel::Ptr<Maintenance::Unit::Status>(units->statusIs("System"));
  EXPECT_EQ(Support::messageOf<Zel::RangeException>([&] { dir->entityIs(unit); }),
            "no root entity: System");
  EXPECT_TRUE(dir->entities().empty());
}

TEST(DirOfRoots, IsInTheOrderOfTheirNames) {
  const auto dir = Zel::makeObject<Dir>();
  for (const char* const name : {"b", "", "a", "\xff", "ab"}) {
    dir->entityIs(statusDirFactory(name));
  }
  std::vector<std::string> names;
  for (const auto& [name, root] : dir->entities()) {
    EXPECT_EQ(root->name(), name);
    names.emplace_back(name.view());
  }
  EXPECT_EQ(names, (std::vector<std::string>{"", "a", "ab", "b", "\xff"}));
}

TEST(DirOfRoots, KeepsThemAlive) {
  const auto dir = Zel::makeObject<Dir>();
  dir->entityIs(statusDirFactory("units"));
  EXPECT_EQ(dir->entity("units")->references(), 2U);
  const Ptr<Entity> units = dir->entityDel("units");
  EXPECT_EQ(units->references(), 1U);
  EXPECT_FALSE(dir->entity("units"));
  EXPECT_FALSE(dir->entityDel("units"));
}

TEST(DirOfRoots, HoldsOneOfAName) {
  const auto dir = Zel::makeObject<Dir>();
  const auto units = statusDirFactory("units");
  dir->entityIs(units);
  dir->entityIs(units);
  EXPECT_EQ(dir->entities().size(), 1U);
  EXPECT_EQ(Support::messageOf<Zel::NameInUseException>(
                [&] { dir->entityIs(statusDirFactory("units")); }),
            "units");
  EXPECT_EQ(dir->entity("units"), units);
}

TEST(DirOfRoots, TakesNoNull) {
  EXPECT_EQ(Support::rangeFailure([] { Zel::makeObject<Dir>()->entityIs(nullptr); }),
            "no root entity");
}

TEST(ActiveDir, IsThatOfTheInnermostScope) {
  EXPECT_FALSE(Dir::active());
  const auto outer = Zel::makeObject<Dir>();
  const auto inner = Zel::makeObject<Dir>();
  {
    const Dir::Active first(outer);
    EXPECT_EQ(Dir::active(), outer);
    {
      const Dir::Active second(inner);
      EXPECT_EQ(Dir::active(), inner);
      const Dir::Active none(nullptr);
      EXPECT_FALSE(Dir::active());
    }
    EXPECT_EQ(Dir::active(), outer);
  }
  EXPECT_FALSE(Dir::active());
}

TEST(ActiveDir, IsKeptAliveByItsScope) {
  const Dir::Active scope(Zel::makeObject<Dir>());
  EXPECT_EQ(Dir::active()->references(), 2U);
}

TEST(ActiveDir, IsOneForEachThread) {
  const Dir::Active scope(Zel::makeObject<Dir>());
  bool isNull = false;
  std::thread([&] { isNull = !Dir::active(); }).join();
  EXPECT_TRUE(isNull);
}

} // namespace
