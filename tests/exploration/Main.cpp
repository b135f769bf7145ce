#include "Scopes.h"
#include "Search.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iostream>

namespace {

using namespace Exploration;

struct Scope {
  std::string name;
  std::vector<Plot> plots;
};

int usage(const char* program) {
  std::cerr << "usage: " << program
            << " --scope NAME [--full | --estimate] [--all FILE] | --scopes | --replay 'START: "
               "STEPS' [--trace]\n"
               "--full takes all orders, --all goes on behind failures and writes them to FILE\n";
  return 2;
}

std::string replayText(const Failure& failure) {
  return failure.start + ": " + text(failure.steps);
}

/// Tells about how many histories a scope has, for who thinks about running it.
int estimate(const Scope& scope) {
  constexpr unsigned samples = 2000;
  Simulation::Random random(1);
  double all = 0;
  for (const Plot& plot : scope.plots) {
    Search search(plot, {});
    for (unsigned i = 0; i < samples; ++i) {
      all += search.guess(random) / samples;
    }
  }
  std::cout << scope.name << ": about " << all << " histories\n";
  return 0;
}

int explore(const Scope& scope, bool isFull, const std::string& file) {
  Found total;
  std::ofstream all(file);
  SearchOptions options;
  options.isReduced = !isFull;
  options.failed = [&](const Failure& failure) {
    if (!file.empty()) {
      all << replayText(failure) << "\n";
      return true;
    }
    std::cerr << failure.why << "\nreplay: scripts/explore --replay '" << replayText(failure)
              << "'\n";
    return false;
  };
  const auto start = std::chrono::steady_clock::now();
  bool isWhole = true;
  std::size_t plots = 0;
  options.reached = [&](double part) {
    std::cerr << scope.name << ": plot " << plots << " of " << scope.plots.size() << ", "
              << 100 * part << " %\n";
  };
  for (const Plot& plot : scope.plots) {
    ++plots;
    Search search(plot, options);
    isWhole = search.run();
    total += search.found();
    if (!isWhole) {
      break;
    }
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  std::cout << scope.name << ": " << scope.plots.size() << " plots, " << total.histories
            << " histories of up to " << total.deepest << " steps, " << total.left
            << " left as explored, " << total.steps << " steps taken, " << total.refused
            << " refused writes, " << total.failures << " failures, " << taken.count() << " s\n";
  return isWhole && total.failures == 0 ? 0 : 1;
}

int replayOf(const std::string& words, bool isTraced) {
  const std::size_t at = words.find(": ");
  if (at == std::string::npos) {
    std::cerr << "a start, a colon and steps\n";
    return 2;
  }
  try {
    replay(words.substr(0, at), stepsOf(words.substr(at + 2)), [&](const std::string& what) {
      if (isTraced) {
        std::cout << what << std::endl;
      }
    });
  } catch (const std::invalid_argument& failure) {
    std::cerr << failure.what() << "\n";
    return 2;
  } catch (const Broken& broken) {
    std::cerr << broken.what() << "\n";
    return 1;
  }
  std::cout << "holds\n";
  return 0;
}

} // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc == 1) {
    return RUN_ALL_TESTS();
  }
  std::string scope;
  std::string steps;
  std::string file;
  bool isFull = false;
  bool isEstimate = false;
  bool isTraced = false;
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (option == "--full") {
      isFull = true;
    } else if (option == "--estimate") {
      isEstimate = true;
    } else if (option == "--trace") {
      isTraced = true;
    } else if (i + 1 < argc && option == "--scope") {
      scope = argv[++i];
    } else if (i + 1 < argc && option == "--replay") {
      steps = argv[++i];
    } else if (i + 1 < argc && option == "--all") {
      file = argv[++i];
    } else {
      return usage(argv[0]);
    }
  }
  if (!steps.empty()) {
    return replayOf(steps, isTraced);
  }
  std::ifstream in(scope);
  if (!in) {
    return usage(argv[0]);
  }
  try {
    const Scope read{scope.substr(scope.rfind('/') + 1), scopeOf(in)};
    return isEstimate ? estimate(read) : explore(read, isFull, file);
  } catch (const std::invalid_argument& failure) {
    std::cerr << scope << ": " << failure.what() << "\n";
    return 2;
  }
}
