#pragma once

#include "Tree.h"

#include <simulation/Random.h>

#include <algorithm>
#include <optional>

namespace Histories {

/// Which model of a chain may write what: each attribute, or each key of it, has one writer. It
/// changes hands only while nothing is on its way, but for one case: when a link is cut, the models
/// behind it lose what they own to the model before it, which has no use for what they had sent.
class Ownership {
public:
  Ownership(std::uint64_t seed, unsigned models, std::optional<unsigned> onlyWriter)
      : seed_(seed), models_(models), onlyWriter_(onlyWriter), last_(models - 1) {}

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
  /// The link behind this model has been cut.
  void cutBehind(unsigned model) { last_ = std::min(last_, model); }
  /// The last model that may write.
  unsigned last() const { return last_; }

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

  std::uint64_t seed_;
  unsigned models_;
  std::optional<unsigned> onlyWriter_;
  unsigned last_;
};

} // namespace Histories
