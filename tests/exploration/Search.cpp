#include "Search.h"

#include <algorithm>
#include <iterator>

namespace Exploration {

namespace {

/// A history that has not ended by then never will.
constexpr std::size_t mostSteps = 5000;

bool has(const Steps& steps, const Step& step) {
  return std::find(steps.begin(), steps.end(), step) != steps.end();
}

unsigned bitsOf(const Steps& steps) {
  unsigned models = 0;
  for (const Step& step : steps) {
    models |= footprint(step);
  }
  return models;
}

} // namespace

Found& Found::operator+=(const Found& other) {
  histories += other.histories;
  steps += other.steps;
  left += other.left;
  deepest = std::max(deepest, other.deepest);
  refused += other.refused;
  failures += other.failures;
  return *this;
}

Search::Search(const Plot& plot, SearchOptions options)
    : plot_(plot), options_(std::move(options)) {}

bool Search::run() {
  chain_ = std::make_unique<Chain>(plot_);
  if (!arrive({})) {
    return false;
  }
  for (std::uint64_t turns = 0; !places_.empty();) {
    Place& place = places_.back();
    if (options_.reached && ++turns % (1U << 17) == 0) {
      options_.reached(progress());
    }
    if (place.next == place.open.size()) {
      places_.pop_back();
      chain_ = nullptr;
      continue;
    }
    ++place.next;
    if (!chain_) {
      again();
    }
    Steps sleeping = sleepingBehind(place);
    try {
      chain_->take(place.open[place.next - 1]);
      ++found_.steps;
    } catch (const Broken& broken) {
      if (!fail(broken.what())) {
        return false;
      }
      continue;
    }
    if (!arrive(std::move(sleeping))) {
      return false;
    }
  }
  return true;
}

double Search::guess(Simulation::Random& random) {
  double histories = 1;
  places_.clear();
  chain_ = std::make_unique<Chain>(plot_);
  for (bool goesOn = arrive({}); goesOn && chain_;) {
    Place& place = places_.back();
    histories *= static_cast<double>(place.open.size());
    place.next = static_cast<std::size_t>(random.below(place.open.size())) + 1;
    Steps sleeping = sleepingBehind(place);
    chain_->take(place.open[place.next - 1]);
    goesOn = arrive(std::move(sleeping));
  }
  return histories;
}

/// Brings a new chain to the place that the search has gone back to.
void Search::again() {
  chain_ = std::make_unique<Chain>(plot_);
  for (std::size_t i = 0; i + 1 < places_.size(); ++i) {
    chain_->take(places_[i].open[places_[i].next - 1]);
    ++found_.steps;
  }
}

/// What has been explored behind the step that is taken now: all that was before it, as far as it
/// happens elsewhere.
Steps Search::sleepingBehind(const Place& place) const {
  Steps sleeping;
  if (!options_.isReduced) {
    return sleeping;
  }
  const Step& step = place.open[place.next - 1];
  for (const Step& other : place.sleeping) {
    if (areIndependent(step, other)) {
      sleeping.push_back(other);
    }
  }
  for (std::size_t i = 0; i + 1 < place.next; ++i) {
    if (areIndependent(step, place.open[i])) {
      sleeping.push_back(place.open[i]);
    }
  }
  return sleeping;
}

/// The chain is in a state that the search has not been in on this way.
bool Search::arrive(Steps sleeping) {
  const Steps enabled = chain_->enabled();
  found_.deepest = std::max(found_.deepest, places_.size());
  try {
    if (enabled.empty()) {
      chain_->finish();
      if (chain_->isAtRest()) {
        chain_->checkAtEnd();
      }
      ++found_.histories;
      found_.refused += chain_->refused();
      if (options_.ended) {
        options_.ended(taken(), chain_->dump());
      }
      chain_ = nullptr;
      return true;
    }
    if (places_.size() > mostSteps) {
      throw Broken("does not come to rest");
    }
    if (chain_->isAtRest()) {
      chain_->check();
    }
  } catch (const Broken& broken) {
    return fail(broken.what());
  }
  Place place{std::move(sleeping), {}, 0};
  const auto without = [&](const Steps& steps) {
    Steps rest;
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(rest),
                 [&](const Step& step) { return !has(place.sleeping, step); });
    return rest;
  };
  place.open = without(options_.isReduced ? persistent(enabled) : enabled);
  const unsigned awake = reach(bitsOf(without(enabled)));
  const bool isHopeless = // a step sleeps to the end, as nothing happens any more where it does
      std::any_of(place.sleeping.begin(), place.sleeping.end(),
                  [&](const Step& step) { return (footprint(step) & awake) == 0; });
  if (isHopeless || place.open.empty()) {
    ++found_.left;
    chain_ = nullptr;
    return true;
  }
  places_.push_back(std::move(place));
  return true;
}

/// All models at which something may yet happen, of those at which something can now, and those
/// that these may make something possible at.
unsigned Search::reach(unsigned models) const {
  for (unsigned before = 0; before != models;) {
    before = models;
    for (unsigned link = 0; link + 1 < chain_->models(); ++link) {
      for (const unsigned model : {link, link + 1}) {
        if ((models >> (2 * link + 1 - model) & 1) != 0 && chain_->awaits(model, link)) {
          models |= 1U << model;
        }
      }
    }
  }
  return models;
}

/// The models on which it may depend what can happen next at these: what is enabled there, and no
/// step elsewhere adds to that.
unsigned Search::closure(unsigned models, unsigned active, const Steps& enabled) const {
  for (unsigned before = 0; before != models;) {
    before = models;
    for (unsigned link = 0; link + 1 < chain_->models(); ++link) {
      for (const unsigned model : {link, link + 1}) {
        const unsigned other = 1U << (2 * link + 1 - model);
        if ((models >> model & 1) != 0 && (active & other) != 0 && chain_->awaits(model, link)) {
          models |= other;
        }
      }
    }
    for (const Step& step : enabled) {
      if ((footprint(step) & models) != 0) {
        models |= footprint(step);
      }
    }
  }
  return models;
}

/// The steps of as few models as can do without the others for now.
Steps Search::persistent(const Steps& enabled) const {
  const unsigned active = reach(bitsOf(enabled));
  Steps fewest = enabled;
  for (unsigned model = 0; model < chain_->models(); ++model) {
    const unsigned models = closure(1U << model, active, enabled);
    Steps steps;
    std::copy_if(enabled.begin(), enabled.end(), std::back_inserter(steps),
                 [&](const Step& step) { return (footprint(step) & models) != 0; });
    if (!steps.empty() && steps.size() < fewest.size()) {
      fewest = std::move(steps);
    }
  }
  return fewest;
}

double Search::progress() const {
  double done = 0;
  double share = 1;
  for (const Place& place : places_) {
    share /= static_cast<double>(place.open.size());
    done += share * static_cast<double>(place.next == 0 ? 0 : place.next - 1);
  }
  return done;
}

Steps Search::taken() const {
  Steps steps;
  for (const Place& place : places_) {
    steps.push_back(place.open[place.next - 1]);
  }
  return steps;
}

bool Search::fail(const std::string& why) {
  chain_ = nullptr;
  ++found_.failures;
  return !options_.failed || options_.failed({startText(plot_), taken(), why});
}

void replay(const std::string& start, const Steps& steps,
            const std::function<void(const std::string&)>& told) {
  Plot plot = startOf(start);
  for (const Step& step : steps) {
    if (step.model >= plot.models() || step.link >= plot.links.size()) {
      throw std::invalid_argument("no such model: " + text(step));
    }
    if (step.kind == Step::Kind::write) {
      plot.programs[step.model].push_back(step.what);
    }
  }
  std::vector<bool> isCut(plot.links.size());
  for (const Step& step : steps) {
    if (step.kind == Step::Kind::reconnect) {
      isCut[step.link] = false;
    } else if (step.kind == Step::Kind::hear && !isCut[step.link]) {
      isCut[step.link] = true;
      ++plot.cuts[step.link];
    }
  }
  Chain chain(plot);
  for (const Step& step : steps) {
    if (!has(chain.enabled(), step)) {
      throw std::invalid_argument("cannot happen here: " + text(step));
    }
    if (told) {
      told(text(step));
    }
    chain.take(step);
    if (chain.isAtRest()) {
      chain.check();
    }
  }
  chain.finish();
  if (chain.isAtRest()) {
    chain.checkAtEnd();
  }
}

} // namespace Exploration
