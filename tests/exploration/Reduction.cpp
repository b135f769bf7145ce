#include "Scopes.h"
#include "Search.h"

#include <Places.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

// What the search leaves out is an order of steps of which another is taken.

namespace {

using namespace Exploration;

/// What happened at each model, in order: all that tells histories apart.
std::string orders(const Steps& steps, std::size_t models) {
  std::string all;
  for (unsigned model = 0; model < models; ++model) {
    Steps of;
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(of),
                 [&](const Step& step) { return (footprint(step) >> model & 1) != 0; });
    all += text(of) + "; ";
  }
  return all;
}

/// How often there was each of them, and where it ended.
using Ends = std::map<std::string, std::pair<std::string, unsigned>>;

Ends endsOf(const Plot& plot, bool isReduced) {
  Ends ends;
  SearchOptions options;
  options.isReduced = isReduced;
  options.failed = [](const Failure& failure) {
    ADD_FAILURE() << failure.why << " " << failure.start << ": " << text(failure.steps);
    return false;
  };
  options.ended = [&](const Steps& steps, const std::string& state) {
    auto& [is, times] = ends[orders(steps, plot.models())];
    EXPECT_TRUE(times == 0 || is == state) << text(steps);
    is = state;
    ++times;
  };
  Search search(plot, options);
  EXPECT_TRUE(search.run());
  return ends;
}

/// Of all orders at each model, the reduced search takes each once, and ends as the full one does.
void compare(const Plot& plot) {
  const Ends all = endsOf(plot, false);
  const Ends reduced = endsOf(plot, true);
  EXPECT_EQ(all.size(), reduced.size());
  for (const auto& [orders, end] : all) {
    const auto at = reduced.find(orders);
    ASSERT_NE(at, reduced.end()) << orders;
    EXPECT_EQ(at->second.first, end.first) << orders;
    EXPECT_EQ(at->second.second, 1U) << orders;
  }
}

Plot plotOf(const std::string& start, std::vector<std::vector<Write>> programs,
            std::vector<unsigned> cuts) {
  Plot plot = startOf(start);
  plot.programs = std::move(programs);
  plot.cuts = std::move(cuts);
  return plot;
}

TEST(Reduction, LeavesOutNoOrderOfWritesAndACutOfTwoModels) {
  compare(plotOf("sessions live rw -", {{"make:a"}, {}}, {1}));
}

TEST(Reduction, LeavesOutNoOrderOfWritesOfThreeModels) {
  compare(plotOf("sessions live rw,rw make:a", {{"urge:a:1"}, {"item:a:p:1"}, {"make:b"}}, {0, 0}));
}

TEST(Reduction, LeavesOutNoOrderOfAMountFromNothing) {
  compare(plotOf("sessions fresh rw -", {{"make:a"}, {}}, {0}));
}

TEST(Exploration, TakesTheSameStepsEachTime) {
  const Plot plot = plotOf("sessions live rw make:a", {{"urge:a:1"}, {}}, {1});
  const auto run = [&] {
    std::string all;
    SearchOptions options;
    options.ended = [&](const Steps& steps, const std::string& state) {
      all += text(steps) + state;
    };
    Search(plot, options).run();
    return all;
  };
  const std::string once = run();
  EXPECT_FALSE(once.empty());
  EXPECT_EQ(run(), once);
}

TEST(Exploration, AStepThatCannotHappenIsNotReplayed) {
  EXPECT_THROW(replay("sessions live rw -", stepsOf("A>B")), std::invalid_argument);
  EXPECT_THROW(replay("sessions live rw -", stepsOf("C.make:a")), std::invalid_argument);
  EXPECT_THROW(stepsOf("A?B"), std::invalid_argument);
  EXPECT_THROW(startOf("sessions live"), std::invalid_argument);
  EXPECT_THROW(replay("sessions live rw -", stepsOf("A.mak:a")), std::invalid_argument);
  replay("sessions live rw -", stepsOf("A.make:a A>B"));
}

TEST(Exploration, StepsAreReadAsTheyAreWritten) {
  const std::string words = "A.make:a A>B B>A B~C C~B B!C C!B B=C";
  EXPECT_EQ(text(stepsOf(words)), words);
  const std::string start = "connections fresh rw,ro make:a,item:a:p:1";
  EXPECT_EQ(startText(startOf(start)), start);
}

/// Where ends are not equal, the history is told and replays.
TEST(Exploration, AFailureIsAHistoryThatReplays) {
  // Both sides write the same attribute at once, which nothing settles.
  const Plot plot = plotOf("sessions live rw make:a", {{"urge:a:1"}, {"urge:a:2"}}, {0});
  std::vector<Failure> failures;
  SearchOptions options;
  options.failed = [&](const Failure& failure) {
    failures.push_back(failure);
    return true;
  };
  Search search(plot, options);
  EXPECT_TRUE(search.run());
  ASSERT_EQ(failures.size(), 1U);
  EXPECT_EQ(failures[0].start, "sessions live rw make:a");
  EXPECT_EQ(orders(failures[0].steps, 2), "A.urge:a:1 B>A; B.urge:a:2 A>B; ");
  EXPECT_EQ(search.found().histories, 2U);
  EXPECT_THROW(replay(failures[0].start, failures[0].steps), Broken);
}

/// Each was found by the explorer in code that lacked a mending.
TEST(Exploration, HistoriesThatHaveFailedOnceHold) {
  std::ifstream in(EXPLORATION_HISTORIES);
  unsigned histories = 0;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') {
      const std::size_t at = line.find(": ");
      ASSERT_NE(at, std::string::npos) << line;
      EXPECT_NO_THROW(replay(line.substr(0, at), stepsOf(line.substr(at + 2)))) << line;
      ++histories;
    }
  }
  EXPECT_GE(histories, 2U);
}

TEST(Exploration, AScopeHoldsAllThatThereIsOfFewerWritesAndCuts) {
  const auto count = [](const std::string& text) {
    std::istringstream in(text);
    return scopeOf(in).size();
  };
  EXPECT_EQ(count("start sessions live rw -\nA make:a make:b\nB make:c\ncuts 2\n"), 3 * 3 * 2U);
  EXPECT_EQ(count("start sessions live rw -\nA make:a make:b\nB make:c\nwrites 2\n"), 1 + 3 + 7U);
  EXPECT_EQ(count("# none\n\nstart sessions live rw -\n\n\nstart sessions fresh ro -\n"), 2U);
  EXPECT_THROW(count("start sessions live rw -\nC make:a\n"), std::invalid_argument);
  EXPECT_THROW(count("start sessions live rw -\ncuts 1 1\n"), std::invalid_argument);
  EXPECT_THROW(count("A make:a\n"), std::invalid_argument);
}

} // namespace
