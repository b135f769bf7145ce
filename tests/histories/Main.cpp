#include "History.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

using Histories::History;
using Histories::Totals;

/// The seed at work, told where a history takes the process down.
volatile std::sig_atomic_t seedAtWork = 0;

extern "C" void crashed(int number) {
  std::cerr << "seed " << seedAtWork << " crashed\n";
  std::signal(number, SIG_DFL);
  std::raise(number);
}

int usage(const char* program) {
  std::cerr << "usage: " << program
            << " --seeds COUNT [--first SEED] [--trace] [--over connections|sessions]\n"
               "       [--counts]\n       "
            << program
            << " --input FILE [--trace]\n"
               "of sessions are every second seed's histories if nothing else is said\n";
  return 2;
}

/// What there is to say of many histories, a line for each, for scripts/simulate to add up: a
/// number and what it is of; of a branch also how many seeds are enough.
void report(const Totals& totals) {
  std::cout << totals.histories << " histories\n"
            << totals.wholeTrees << " of the whole tree\n"
            << totals.changes << " changes\n"
            << totals.cuts << " cuts\n"
            << totals.bytes << " bytes\n"
            << totals.strangers << " records of no use\n"
            << totals.refusals << " refused writes\n"
            << totals.rounds << " rounds\n"
            << totals.roundsOwing << " rounds without room\n"
            << totals.healed << " times all became well\n"
            << "most " << totals.restUsed << " of the steps for rest\n";
  for (const Histories::BranchRow& row : Histories::branchRows()) {
    std::cout << "branch " << totals.sometimes.times(row.branch) << " " << row.enough << " "
              << row.name << "\n";
  }
}

void countsTell(const Histories::AllMutations& mutations) {
  for (const auto& [attribute, done] : mutations) {
    std::cout << attribute.first << " " << attribute.second << ": " << done.writes << " writes, "
              << done.deletions << " deletions";
    if (done.longest != 0) {
      std::cout << ", texts up to " << done.longest << " bytes";
    }
    std::cout << "\n";
  }
}

std::function<void(const std::string&)> tracer(bool isTraced) {
  if (!isTraced) {
    return {};
  }
  return [](const std::string& what) { std::cout << what << std::endl; };
}

/// Which histories are run.
struct Run {
  std::uint64_t first = 1;
  std::uint64_t count = 0;
  std::optional<History::Over> over;
  std::string input;
  bool isTraced = false;
  bool isCounted = false;
};

/// The history that the bytes of a file decide, as the fuzz harness runs it, and the branches that
/// it comes to.
int replay(const Run& run) {
  std::ifstream file(run.input, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file) {
    std::cerr << "cannot read " << run.input << "\n";
    return 2;
  }
  History history = Histories::historyOf(
      {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, tracer(run.isTraced));
  try {
    history.run();
  } catch (const std::exception& failure) {
    std::cerr << run.input << ": " << failure.what() << "\n";
    return 1;
  }
  for (const Histories::BranchRow& row : Histories::branchRows()) {
    if (history.reached().has(row.branch)) {
      std::cout << row.name << "\n";
    }
  }
  return 0;
}

/// Runs histories of consecutive seeds, and tells what they went through.
int simulate(const char* program, const Run& run) {
  for (const int number : {SIGABRT, SIGSEGV, SIGFPE, SIGBUS, SIGILL}) {
    std::signal(number, crashed);
  }
  Totals totals;
  for (std::uint64_t seed = run.first; seed < run.first + run.count; ++seed) {
    seedAtWork = static_cast<std::sig_atomic_t>(seed);
    try {
      totals += History(seed, run.over.value_or(History::overOf(seed)), tracer(run.isTraced)).run();
    } catch (const std::exception& failure) {
      std::cerr << "seed " << seed << ": " << failure.what() << "\nreplay: " << program
                << " --seeds 1 --first " << seed << " --trace"
                << (run.over == History::Over::sessions      ? " --over sessions"
                    : run.over == History::Over::connections ? " --over connections"
                                                             : "")
                << "\n";
      return 1;
    }
  }
  report(totals);
  if (run.isCounted) {
    countsTell(totals.mutations);
  }
  return totals.histories == run.count ? 0 : 1;
}

bool isNumber(const char* text, std::uint64_t& number) {
  char* end = nullptr;
  number = std::strtoull(text, &end, 10);
  return *end == '\0' && end != text;
}

/// Whether the words say which histories are to be run.
bool read(int argc, char** argv, Run& run) {
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    const char* const value = i + 1 < argc ? argv[i + 1] : "";
    if (option == "--trace") {
      run.isTraced = true;
    } else if (option == "--counts") {
      run.isCounted = true;
    } else if (option == "--over" && value == std::string("sessions")) {
      run.over = History::Over::sessions;
      ++i;
    } else if (option == "--over" && value == std::string("connections")) {
      run.over = History::Over::connections;
      ++i;
    } else if (option == "--input" && *value != '\0') {
      run.input = value;
      ++i;
    } else if ((option == "--seeds" && isNumber(value, run.count)) ||
               (option == "--first" && isNumber(value, run.first))) {
      ++i;
    } else {
      return false;
    }
  }
  return run.count != 0 || !run.input.empty();
}

} // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  Run run;
  if (argc == 1) {
    return RUN_ALL_TESTS();
  }
  if (!read(argc, argv, run)) {
    return usage(argv[0]);
  }
  return run.input.empty() ? simulate(argv[0], run) : replay(run);
}
