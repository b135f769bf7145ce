#include "Swarm.h"

#include <string_view>

namespace Histories {

namespace {

struct Row {
  Doing doing;
  std::string_view name;
  unsigned times; ///< out of 16 it belongs to a swarm
};

constexpr Row rows[] = {
    {Doing::number, "number", 10},
    {Doing::increment, "increment", 8},
    {Doing::text, "text", 10},
    {Doing::longText, "long text", 8},
    {Doing::entry, "entry", 12},
    {Doing::entryDelete, "entry deleted", 10},
    {Doing::entryClear, "entries cleared", 6},
    {Doing::member, "member", 13},
    {Doing::memberDelete, "member deleted", 10},
    {Doing::memberClear, "members cleared", 6},
    {Doing::strangeEnum, "strange enumerator", 8},
    {Doing::longKey, "long key", 8},
    {Doing::writeOn, "write on", 8},
    {Doing::writeFrozen, "write frozen", 10},
    {Doing::stall, "stall", 8},
    {Doing::cut, "cut", 9},
    {Doing::cutAfter, "cut after", 8},
    {Doing::reconnect, "reconnect", 11},
    {Doing::rash, "rash", 8},
    {Doing::half, "half open", 6},
    {Doing::silence, "silence", 5},
    {Doing::newRoot, "new root", 8},
    {Doing::withdraw, "withdraw", 6},
    {Doing::stranger, "stranger", 6},
    {Doing::chain, "chain", 8},
    {Doing::roomy, "roomy", 8},
    {Doing::sluggish, "sluggish", 8},
    {Doing::readOnly, "read-only", 4},
    {Doing::healthy, "healthy", 8},
    {Doing::allRoots, "all roots", 4},
    {Doing::onlyChild, "only child", 4},
};
static_assert(std::size(rows) == doings);

} // namespace

Swarm::Swarm(Simulation::Random& random) {
  if (random.chance(1, 16)) {
    may_.set();
    may_.reset(static_cast<std::size_t>(Doing::onlyChild));
    return;
  }
  for (const Row& row : rows) {
    may_[static_cast<std::size_t>(row.doing)] = random.chance(row.times, 16);
  }
  if (!may(Doing::number) && !may(Doing::entry) && !may(Doing::member)) {
    may_.set(static_cast<std::size_t>(Doing::number));
  }
}

std::string Swarm::told() const {
  std::string names;
  for (const Row& row : rows) {
    if (may(row.doing)) {
      names += (names.empty() ? "" : ", ") + std::string(row.name);
    }
  }
  return names;
}

} // namespace Histories
