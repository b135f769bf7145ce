#include "History.h"

#include <gtest/gtest.h>

namespace {

using Histories::History;
using Histories::Totals;

/// Runs a hundred histories; a failing one says how to see it alone.
Totals histories(std::uint64_t first, History::Over over) {
  Totals totals;
  for (std::uint64_t seed = first; seed < first + 100; ++seed) {
    try {
      totals += History(seed, over).run();
    } catch (const std::exception& failure) {
      ADD_FAILURE() << "seed " << seed << ": " << failure.what()
                    << "\nreplay: test-histories --seeds 1 --first " << seed << " --trace --over "
                    << (over == History::Over::sessions ? "sessions" : "connections");
      break;
    }
  }
  return totals;
}

class Seeds : public testing::TestWithParam<std::uint64_t> {};

/// What happens in them is checked inside; here, that enough did.
TEST_P(Seeds, ModelsAgreeWheneverEverythingHasComeToRest) {
  const Totals totals = histories(GetParam(), History::Over::connections);
  EXPECT_EQ(totals.histories, 100U);
  EXPECT_GT(totals.changes, 40000U);
  EXPECT_GT(totals.cuts, 50U);
  EXPECT_GT(totals.bytes, 2000000U);
  EXPECT_GT(totals.strangers, 30U);
  EXPECT_GT(totals.roundsOwing, 500U);
}

std::string firstSeed(const testing::TestParamInfo<std::uint64_t>& first) {
  return std::to_string(first.param);
}

INSTANTIATE_TEST_SUITE_P(Of, Seeds, testing::Values(1, 101, 201, 301), firstSeed);

TEST(SeedsOverSessions, ModelsAgreeAndAllMountsAreLive) {
  const Totals totals = histories(1, History::Over::sessions);
  EXPECT_EQ(totals.histories, 100U);
  EXPECT_GT(totals.changes, 40000U);
  EXPECT_GT(totals.cuts, 50U);
  EXPECT_GT(totals.bytes, 2000000U);
  EXPECT_GT(totals.strangers, 30U);
  EXPECT_GT(totals.refusals, 2U);
  EXPECT_GT(totals.roundsOwing, 500U);
}

TEST(History, IsTheSameForTheSameSeed) {
  const auto run = [](std::uint64_t seed) {
    std::string told;
    const Totals totals = History(seed, History::overOf(seed), [&](const std::string& what) {
                            told += what + "\n";
                          }).run();
    return told + std::to_string(totals.bytes);
  };
  EXPECT_EQ(run(11), run(11));
  EXPECT_NE(run(11), run(12));
}

} // namespace
