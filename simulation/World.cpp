#include <simulation/World.h>

#include <algorithm>

namespace Simulation {

Link& World::linkIs(Link::Traits traits, Link::MakeEnd make) {
  links_.push_back(std::make_unique<Link>(traits, std::move(make)));
  return *links_.back();
}

World::Links World::all() const {
  Links links;
  for (const auto& link : links_) {
    links.push_back(link.get());
  }
  return links;
}

bool World::step(const Links& links) {
  ++now_;
  bool acted = false;
  for (Link* const link : links) {
    acted = link->step(random_, now_) || acted;
  }
  return acted;
}

void World::run(Time duration) {
  const Links links = all();
  for (const Time end = now_ + duration; now_ < end;) {
    step(links);
  }
}

bool World::settle(Time most) { return settle(all(), most); }
bool World::settle(Link& link, Time most) { return settle(Links{&link}, most); }

bool World::settle(const Links& links, Time most) {
  constexpr unsigned patience = 64; // steps without an event, which may be chance
  unsigned idle = 0;
  for (Time steps = 0; steps < most; ++steps) {
    if (std::all_of(links.begin(), links.end(), [](const Link* link) { return link->isQuiet(); })) {
      return true;
    }
    idle = step(links) ? 0 : idle + 1;
    if (idle >= patience) {
      std::optional<Time> first;
      for (const Link* const link : links) {
        const std::optional<Time> wakes = link->wakes();
        first = wakes && (!first || *wakes < *first) ? wakes : first;
      }
      now_ = first ? *first - 1 : now_;
      idle = 0;
    }
  }
  return false;
}

} // namespace Simulation
