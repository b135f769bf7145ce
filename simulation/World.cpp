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

void World::step(const Links& links, Random& random, Time now) {
  for (Link* const link : links) {
    link->step(random, now);
  }
}

void World::run(Time duration) {
  const Links links = all();
  for (const Time end = now_ + duration; now_ < end;) {
    step(links, random_, ++now_);
  }
}

bool World::settle(Time most) { return settleAll(all(), most); }
bool World::settle(Link& link, Time most) { return settleAll({&link}, most); }

bool World::settleAll(const Links& links, Time most) {
  for (Time steps = 0; steps < most; ++steps) {
    if (std::all_of(links.begin(), links.end(), [](const Link* link) { return link->isQuiet(); })) {
      return true;
    }
    step(links, random_, ++now_);
  }
  return false;
}

} // namespace Simulation
