#pragma once

#include <simulation/Link.h>

namespace Simulation {

/// Drives a link by hand, in the place of a `World`: what happens next, and at which end, is said
/// by whoever has it. Bytes move by whole records, and nothing happens by itself.
///
///     Simulation::Link link({}, makeEnd);
///     const Simulation::Hand hand(link);
///     root->stateIs(active);
///     hand.send(End::first);    // what is written is on its way
///     hand.receive(End::second) // and the first record of it there
///
/// Stalls and cuts of the link itself are a world's, and do not happen here.
class Hand {
public:
  using End = Link::End;

  explicit Hand(Link& link) noexcept : link_(&link) {}

  /// Bytes of the record that arrives next at an end; 0 if none is on its way, or the end has heard
  /// that the link is cut.
  std::size_t next(End to) const;
  /// Puts all that an end has written on its way. It is lost once either end has heard of a cut.
  void send(End from) const;
  /// The next record arrives and is applied. Of what the end owes nothing is written.
  void receive(End to) const;
  /// Gives an end time. With a budget of 0 it says what it has to say beside the log, and with 1
  /// one of the entities that it owes anything of is seen to.
  void service(End end, std::size_t budget) const;
  /// An end hears that the link is cut, which it is from the first to hear of it on: what is on its
  /// way to this one is lost, and the other may receive some of what is on its way there until it
  /// hears too.
  void hear(End end) const;

private:
  Link* link_;
};

} // namespace Simulation
