#pragma once

#include "Tree.h"

#include <simulation/Random.h>

#include <algorithm>
#include <map>
#include <optional>

namespace Histories {

/// Which model of a chain may write what: each attribute, or each key of it, has one writer. It
/// changes hands only while nothing is on its way, but for one case: when a link is cut, or carries
/// a root no more, the models behind it lose what they own to the model before it, which has no use
/// for what they had sent. They may be let go on with it until the link is made anew: they have to
/// stop when they hear.
class Ownership {
public:
  Ownership(std::uint64_t seed, unsigned models, std::optional<unsigned> onlyWriter,
            bool writesOn = false)
      : seed_(seed), models_(models), onlyWriter_(onlyWriter), last_(models - 1),
        on_(writesOn ? last_ : 0) {}

  /// The owner of an attribute, or of one key of it.
  unsigned owner(Path entity, Zel::AttributeId attr, std::uint64_t key) const {
    const std::uint64_t whole = hash(entity, attr);
    return isWhole(entity, attr) ? pick(whole) : pick(simulationHash(whole ^ key));
  }
  /// Whether the owner owns all keys.
  bool isWhole(Path entity, Zel::AttributeId attr) const { return (hash(entity, attr) & 1) != 0; }
  /// The owner of a directory's members.
  unsigned directoryOwner(Path entity, Zel::AttributeId attr) const {
    return pick(hash(entity, attr));
  }

  /// The link behind this model has been cut. The next one may go on, and with `all` those behind
  /// it.
  void cutBehind(unsigned model, bool all) {
    last_ = std::min(last_, model);
    on_ = all ? on_ : std::min(on_, model + 1);
  }
  /// It carries a root no more.
  void cutBehind(unsigned model, bool all, Path root) {
    Of& its = of(root);
    its.last = std::min(its.last, model);
    its.on = all ? its.on : std::min(its.on, model + 1);
  }
  /// It is going to be made anew, or to carry all roots again.
  void joinBehind(unsigned model) {
    on_ = std::min(on_, model);
    for (auto& [root, its] : roots_) {
      its.on = std::min(its.on, model);
    }
  }
  /// Nobody may write to a root.
  void closedIs(Path root) { of(root).isClosed = true; }

  /// What a model owns of a root, as this is told by owners; nothing if it may not write there.
  std::optional<Ownership> in(Path root, unsigned model) const {
    const auto at = roots_.find(root);
    const unsigned last = at != roots_.end() ? std::min(last_, at->second.last) : last_;
    const unsigned on = at != roots_.end() ? std::min(on_, at->second.on) : on_;
    if ((at != roots_.end() && at->second.isClosed) || (model > last && model > on)) {
      return std::nullopt;
    }
    Ownership own(*this);
    own.last_ = model <= last ? last : models_ - 1;
    return own;
  }
  /// The last model that may write anything, and the last that may write all that it ever could.
  unsigned last() const { return std::max(last_, on_); }
  unsigned lastOfAll() const {
    unsigned last = last_;
    for (const auto& [root, its] : roots_) {
      last = std::min(last, its.last);
    }
    return last;
  }

private:
  static std::uint64_t simulationHash(std::uint64_t number) {
    return Simulation::Random::mixed(number);
  }
  std::uint64_t hash(Path entity, Zel::AttributeId attr) const {
    return simulationHash(seed_ ^ (entity + static_cast<std::uint64_t>(attr)));
  }
  unsigned pick(std::uint64_t number) const {
    return std::min(onlyWriter_.value_or(static_cast<unsigned>((number >> 8) % models_)), last_);
  }

  struct Of {
    unsigned last;
    unsigned on;
    bool isClosed = false;
  };
  Of& of(Path root) { return roots_.try_emplace(root, Of{models_ - 1, models_ - 1}).first->second; }

  std::uint64_t seed_;
  unsigned models_;
  std::optional<unsigned> onlyWriter_;
  unsigned last_;
  unsigned on_; // the last model that goes on with what it has lost
  std::map<Path, Of> roots_;
};

} // namespace Histories
