#include "History.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>

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
               "       [--counts]\n"
               "of sessions are every second seed's histories if nothing else is said\n";
  return 2;
}

/// Runs histories of consecutive seeds, and tells what they went through.
int simulate(const char* program, std::uint64_t first, std::uint64_t count, bool isTraced,
             bool isCounted, std::optional<History::Over> over) {
  for (const int number : {SIGABRT, SIGSEGV, SIGFPE, SIGBUS, SIGILL}) {
    std::signal(number, crashed);
  }
  std::function<void(const std::string&)> told;
  if (isTraced) {
    told = [](const std::string& what) { std::cout << what << std::endl; };
  }
  Totals totals;
  const auto start = std::chrono::steady_clock::now();
  for (std::uint64_t seed = first; seed < first + count; ++seed) {
    seedAtWork = static_cast<std::sig_atomic_t>(seed);
    try {
      totals += History(seed, over.value_or(History::overOf(seed)), told).run();
    } catch (const std::exception& failure) {
      std::cerr << "seed " << seed << ": " << failure.what() << "\nreplay: " << program
                << " --seeds 1 --first " << seed << " --trace"
                << (over == History::Over::sessions      ? " --over sessions"
                    : over == History::Over::connections ? " --over connections"
                                                         : "")
                << "\n";
      return 1;
    }
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  std::cout << totals.histories << " histories, " << totals.changes << " changes, " << totals.cuts
            << " cuts, " << totals.bytes << " bytes, " << totals.strangers << " records of no use, "
            << totals.refusals << " refused writes, " << totals.roundsOwing << " of "
            << totals.rounds << " rounds without room, " << totals.wholeTrees << " whole trees, "
            << taken.count() << " s\n";
  if (isCounted) {
    for (const auto& [attribute, done] : totals.mutations) {
      std::cout << attribute.first << " " << attribute.second << ": " << done.writes << " writes, "
                << done.deletions << " deletions";
      if (done.longest != 0) {
        std::cout << ", texts up to " << done.longest << " bytes";
      }
      std::cout << "\n";
    }
  }
  return totals.histories == count ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  std::uint64_t first = 1;
  std::uint64_t count = 0;
  bool isTraced = false;
  bool isCounted = false;
  std::optional<History::Over> over;
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (option == "--trace") {
      isTraced = true;
    } else if (option == "--counts") {
      isCounted = true;
    } else if (option == "--over" && i + 1 < argc &&
               (argv[i + 1] == std::string("sessions") ||
                argv[i + 1] == std::string("connections"))) {
      over = argv[++i] == std::string("sessions") ? History::Over::sessions
                                                  : History::Over::connections;
    } else if ((option == "--seeds" || option == "--first") && i + 1 < argc) {
      char* end = nullptr;
      const std::uint64_t number = std::strtoull(argv[++i], &end, 10);
      if (*end != '\0' || end == argv[i]) {
        return usage(argv[0]);
      }
      (option == "--seeds" ? count : first) = number;
    } else {
      return usage(argv[0]);
    }
  }
  return argc > 1 ? (count != 0 ? simulate(argv[0], first, count, isTraced, isCounted, over)
                                : usage(argv[0]))
                  : RUN_ALL_TESTS();
}
