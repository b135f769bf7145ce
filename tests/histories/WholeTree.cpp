#include "History.h"

#include <Zel/ZelType>

#include <gtest/gtest.h>

// All entity types of the library's model in one tree of roots.

namespace {

using Histories::History;
using Histories::Model;
using Histories::Mutations;
using Histories::Totals;
using Simulation::Link;
using Simulation::World;
using End = Zel::Connection::End;

constexpr const char* types[] = {
    "Maintenance::AgentInfo",
    "Maintenance::GroupToUnit",
    "Maintenance::GroupToUnitDir",
    "Maintenance::MaintenanceGroup::Config",
    "Maintenance::MaintenanceGroup::ConfigDir",
    "Maintenance::MemberToGroup",
    "Maintenance::Profile::Config",
    "Maintenance::Profile::ConfigDir",
    "Maintenance::Profile::DefaultProfile",
    "Maintenance::Unit::Config",
    "Maintenance::Unit::ConfigDir",
    "Maintenance::Unit::Input",
    "Maintenance::Unit::MergedInput",
    "Maintenance::Unit::MergedInputDir",
    "Maintenance::Unit::Status",
    "Maintenance::Unit::StatusDir",
    "MaintenanceUnitProfile::Config",
    "MaintenanceUnitProfile::ConfigDir",
};

/// Those that have an attribute which flows, and so can be changed.
using Rows = std::map<std::pair<std::string_view, std::string_view>, const Zel::AttrRow*>;

Rows flowingRows() {
  Rows rows;
  for (const char* const name : types) {
    const Zel::TypeTable& table = *Zel::ZelType::type(name)->table();
    Histories::forFlowingRows(table, [&](const Zel::AttrRow& row) {
      rows.emplace(std::pair(table.name, row.name), &row);
    });
  }
  return rows;
}

/// Whether the attribute's texts may be of any length.
bool isLongText(const Zel::AttrRow& row) {
  return row.value == &Zel::valueRecord<Zel::String8> &&
         (!row.isCollection() || row.kind == Zel::AttrKind::ordered);
}

void expectAllChanged(const Histories::AllMutations& mutations, std::uint64_t leastWrites,
                      std::uint64_t leastDeletions) {
  std::size_t texts = 0;
  for (const auto& [attribute, row] : flowingRows()) {
    SCOPED_TRACE(std::string(attribute.first) + " " + std::string(attribute.second));
    const auto at = mutations.find(attribute);
    ASSERT_NE(at, mutations.end());
    EXPECT_GE(at->second.writes, leastWrites);
    if (row->isCollection()) {
      EXPECT_GE(at->second.deletions, leastDeletions);
    }
    if (isLongText(*row)) {
      EXPECT_GT(at->second.longest, Zel::ConnectionLimits::smallestRing);
      ++texts;
    }
  }
  EXPECT_EQ(texts, 6U);
}

std::set<std::string_view> typesOf(const Zel::Dir& roots) {
  std::set<std::string_view> found;
  Histories::forEntities(roots, [&](Zel::Entity& entity, Histories::Path /*path*/) {
    found.insert(Histories::tableOf(entity).name);
  });
  return found;
}

class WholeTrees : public testing::TestWithParam<History::Over> {};

TEST_P(WholeTrees, HaveEveryAttributeOfEveryTypeChangedInHistories) {
  Totals totals;
  std::uint64_t seed = 1001;
  for (; totals.wholeTrees < 150; ++seed) {
    try {
      totals += History(seed, GetParam()).run();
    } catch (const std::exception& failure) {
      FAIL() << "seed " << seed << ": " << failure.what();
    }
  }
  EXPECT_LT(seed, 1001U + 150 * 8);
  expectAllChanged(totals.mutations, 50, 1);
}

INSTANTIATE_TEST_SUITE_P(Over, WholeTrees,
                         testing::Values(History::Over::connections, History::Over::sessions),
                         [](const testing::TestParamInfo<History::Over>& over) {
                           return over.param == History::Over::sessions ? "sessions"
                                                                        : "connections";
                         });

/// A tree, its mirror, and the link between them.
class Mirrored : public testing::Test {
protected:
  Mirrored() {
    for (const Zel::Ptr<Zel::Entity>& root : Histories::makeModelRoots()) {
      source.roots()->entityIs(root);
    }
    change(5000);
    EXPECT_EQ(typesOf(*source.roots()).size(), 18U);
    EXPECT_TRUE(world.settle());
  }

  void change(unsigned times) {
    for (unsigned done = 0; done < times;) {
      done += source.change(world.random(), own, {200000, 8}, deleted) ? 1 : 0;
    }
  }
  Link& linkTo(Model& mirror) {
    return world.linkIs({}, [this, &mirror](End end) {
      Zel::ConnectionLimits limits;
      limits.outCapacity = limits.inCapacity = Zel::ConnectionLimits::smallestRing;
      const bool isMirror = end == End::second;
      auto made = Zel::makeObject<Zel::Connection>(
          end, "peer", limits,
          isMirror
              ? Zel::Ptr<Zel::NboAttrLog::MountPolicy>(Zel::makeObject<Zel::NboAttrLog::DirMounts>(
                    mirror.roots(), Zel::StreamAdapter::Zel_BitSet()))
              : Zel::Ptr<Zel::NboAttrLog::MountPolicy>());
      for (const auto& [name, root] : source.roots()->entities()) {
        if (!isMirror) {
          made->demuxer()->exportIs(root);
        }
      }
      return made;
    });
  }
  void expectEqual(const Model& mirror) const {
    EXPECT_EQ(
        Histories::difference(Histories::dump(*source.roots()), Histories::dump(*mirror.roots())),
        "");
  }

  World world{7};
  Model source{0};
  const Histories::Ownership own{1, 1, 0};
  std::unordered_set<Histories::Path> deleted;
};

TEST_F(Mirrored, AWholeTreeThatChangesCostsAStalledReaderNoMoreThanAWalk) {
  Model mirror(1);
  Link& link = linkTo(mirror);
  ASSERT_TRUE(world.settle());
  expectEqual(mirror);
  link.stall(End::second, Simulation::Time{1} << 40);
  const Zel::Connection& writer = *link.connection(End::first);
  std::uint64_t written = 0;
  for (unsigned round = 0; round < 40; ++round) {
    change(1000);
    world.run(50);
    if (round == 20) { // all that can wait does
      written = writer.out()->bytesWritten();
    }
  }
  EXPECT_EQ(writer.out()->bytesWritten(), written);
  EXPECT_EQ(writer.out()->capacity(), Zel::ConnectionLimits::smallestRing);
  EXPECT_LE(writer.demuxer()->scheduled(), writer.demuxer()->adapters());
  expectAllChanged(source.mutations(), 200, 10);
  ASSERT_TRUE(world.settle());
  expectEqual(mirror);
  // What was changed forty thousand times has come once, and what has gone is said to have.
  Model fresh(2);
  const Link& walk = linkTo(fresh);
  ASSERT_TRUE(world.settle());
  expectEqual(fresh);
  const std::uint64_t whole = walk.connection(End::first)->out()->bytesWritten();
  EXPECT_LT(writer.out()->bytesWritten() - written, 2 * whole);
}

TEST_F(Mirrored, AWholeTreeThatIsCutInMidWalkIsBroughtInStepByTheNext) {
  Model mirror(1);
  Link& link = linkTo(mirror);
  unsigned cuts = 0;
  for (std::uint64_t bytes = 400; !link.isDown(); bytes += bytes / 4) {
    link.cutAfter(End::second, bytes);
    ASSERT_TRUE(world.settle());
    if (link.isUp()) {
      break; // the walk is shorter
    }
    ++cuts;
    change(100);
    link.reconnect();
  }
  EXPECT_GT(cuts, 12U);
  ASSERT_TRUE(world.settle());
  expectEqual(mirror);
  EXPECT_EQ(typesOf(*mirror.roots()), typesOf(*source.roots()));
}

} // namespace
