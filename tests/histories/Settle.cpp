#include "History.h"
#include "Rest.h"

/// How everything comes to rest.
namespace Histories {

void History::settle() {
  tell("settling");
  announceAll();
  for (unsigned hop = 0; hop < hops_.size(); ++hop) {
    offerAgain(hop);
  }
  world_.random() = random_.fork();
  const bool heals = swarm_.may(Doing::healthy) && random_.chance(3, 4);
  if (heals) {
    heal();
  }
  const Simulation::Time start = world_.now();
  bool isQuiet = false;
  for (bool waits = !heals || !mayBeRash(); !isQuiet; waits = true) {
    if (waits) {
      rest();
    }
    isQuiet = !rootsExport() && waits;
    // The ends nearest to the source first, as the others follow from them.
    for (unsigned hop = 0; hop < hops_.size(); ++hop) {
      if (!hops_[hop].link->isUp()) {
        reconnect(hop);
        isQuiet = false;
      }
    }
  }
  if (heals) {
    const auto most = static_cast<double>(*restUntil_ - start);
    totals_.restUsed = std::max(totals_.restUsed, static_cast<double>(world_.now() - start) / most);
    restUntil_.reset();
    for (Link* const link : links_) {
      link->healthyIs(false);
    }
  }
}

/// No more trouble and no more writes: from now on steps are counted.
void History::heal() {
  std::uint64_t state = 0;
  std::size_t roots = 0;
  for (const Model& model : models_) {
    state += walkBytes(*model.roots());
    roots = std::max(roots, model.roots()->entities().size());
  }
  std::vector<Link*> links;
  for (const Hop& hop : hops_) {
    hop.watch->healed();
    links.push_back(hop.link);
  }
  for (Link* const link : links_) {
    link->healthyIs(true);
  }
  const Simulation::Time most = restBound(links, state, roots);
  restUntil_ = world_.now() + most;
  ++totals_.healed;
  tell("all is well, and at rest in " + std::to_string(most) + " steps");
}

/// Everything, or one link, comes to rest.
void History::rest(Link* link) {
  constexpr Simulation::Time ever = Simulation::Time{1} << 24; // steps; stalls are passed over
  const Simulation::Time most = !restUntil_                  ? ever
                                : *restUntil_ > world_.now() ? *restUntil_ - world_.now()
                                                             : 0;
  if (!(link != nullptr ? world_.settle(*link, most) : world_.settle(most))) {
    broken("does not come to rest" + (restUntil_ ? " in the steps that it has" : std::string()));
  }
  for (const Hop& hop : hops_) {
    hop.watch->look();
  }
}

void History::announceAll() {
  for (const Hop& hop : hops_) {
    for (const End end : {End::first, End::second}) {
      if (hop.link->connection(end)->isUp()) {
        hop.link->connection(end)->demuxer()->announcingIs(true);
      }
    }
  }
}

/// What models behind this link have sent has arrived before this one hears anew what they sent it
/// to change. Between sessions that need not be.
void History::settleBehind(unsigned hop) {
  if (mayBeRash()) {
    return;
  }
  announceAll();
  for (unsigned next = hop + 1; next < hops_.size(); ++next) {
    rest(hops_[next].link);
  }
}

void History::reconnect(unsigned hop) {
  cutsNote();
  settleBehind(hop);
  cutsNote();
  ownership_.joinBehind(hop);
  tell("link " + std::to_string(hop) + ": reconnects");
  hops_[hop].watch->ended();
  hops_[hop].link->reconnect();
}

} // namespace Histories
