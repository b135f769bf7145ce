#pragma once

#include <simulation/Link.h>

#include <memory>
#include <vector>

namespace Simulation {

/// Links under one clock and one source of random numbers: with the same seed and the same calls,
/// the same happens, byte by byte. See `simulation/Link.h` for how it is used.
class World {
public:
  explicit World(std::uint64_t seed) noexcept : random_(seed) {}
  World(const World&) = delete;
  World& operator=(const World&) = delete;
  ~World() = default;

  /// Random numbers, for what a test does of its own besides.
  Random& random() noexcept { return random_; }
  Time now() const noexcept { return now_; }

  /// Makes a link. It lives as long as the world; links go in the order in which they came.
  Link& linkIs(Link::Traits traits, Link::MakeEnd make);

  /// Lets this much time pass.
  void run(Time duration);
  /// Lets time pass until all links that are up have nothing to move and nobody anything to do, and
  /// no end of one that was cut is still to hear of it. Time in which everything waits for a stall
  /// to end is passed over. False if that does not come within `most` steps.
  bool settle(Time most = 1 << 24);
  /// The same for one link, while nothing happens on the others.
  bool settle(Link& link, Time most = 1 << 24);

private:
  using Links = std::vector<Link*>;

  bool step(const Links& links);
  bool settle(const Links& links, Time most);
  Links all() const;

  Random random_;
  Time now_ = 0;
  std::vector<std::unique_ptr<Link>> links_;
};

} // namespace Simulation
