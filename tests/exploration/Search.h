#pragma once

#include "Chain.h"

#include <simulation/Random.h>

#include <functional>
#include <set>

namespace Exploration {

/// What a search went through.
struct Found {
  std::uint64_t histories = 0; ///< that came to their end
  std::uint64_t steps = 0;     ///< taken for them, those taken again included
  std::uint64_t left = 0;      ///< histories left where all that could go on had been explored
  std::size_t deepest = 0;     ///< steps of the longest history
  std::uint64_t refused = 0;   ///< writes, over all histories
  std::uint64_t failures = 0;

  Found& operator+=(const Found& other);
};

/// One history that has failed.
struct Failure {
  std::string start;
  Steps steps;
  std::string why;
};

/// How a search goes, and who hears of what.
struct SearchOptions {
  /// Whether of all orders of the same steps that differ in steps at different models only, one is
  /// enough.
  bool isReduced = true;
  /// Hears of each failure; whether to go on.
  std::function<bool(const Failure&)> failed;
  /// Hears of each history that has come to its end, and of what the models hold then, as text.
  std::function<void(const Steps&, const std::string&)> ended;
  /// Hears now and then how far the search has come, from 0 to 1: a guess, as if all that goes on
  /// from a state were alike.
  std::function<void(double)> reached;
};

/// Goes through all histories of a plot, one after the other: the search goes back by starting
/// anew.
class Search {
public:
  Search(const Plot& plot, SearchOptions options);

  /// False if whoever heard of a failure did not want to go on.
  bool run();
  const Found& found() const noexcept { return found_; }
  /// Follows one history, drawn by chance, and yields how many there would be if everywhere there
  /// were as many ways to go on as along it. The mean over many is how many there are.
  double guess(Simulation::Random& random);

private:
  /// A state on the way.
  struct Place {
    Steps sleeping; ///< steps whose histories from here on have been explored
    Steps open;     ///< steps to go on with
    std::size_t next = 0;
  };

  void again();
  bool arrive(Steps sleeping);
  double progress() const;
  bool fail(const std::string& why);
  unsigned reach(unsigned models) const;
  unsigned closure(unsigned models, unsigned active, const Steps& enabled) const;
  Steps persistent(const Steps& enabled) const;
  Steps sleepingBehind(const Place& place) const;
  Steps taken() const;

  const Plot plot_;
  const SearchOptions options_;
  Found found_;
  std::vector<Place> places_;
  std::unique_ptr<Chain> chain_; // null while it is to be brought to the last place anew
};

/// Takes the steps of a history. Throws `Broken`, and `std::invalid_argument` where a step cannot
/// happen. `told` hears of each.
void replay(const std::string& start, const Steps& steps,
            const std::function<void(const std::string&)>& told = {});

} // namespace Exploration
