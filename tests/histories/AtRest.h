#pragma once

#include "Tree.h"

#include <simulation/Link.h>

#include <string>

/// What has to hold of the ends of links whenever everything has come to rest.
namespace Histories {

/// What an end has left to do, or why it cannot; empty if nothing is wrong.
std::string unrest(const Zel::Connection& connection);
/// The same of its adapters, which are to be those of all entities of its model and in the middle
/// of nothing.
std::string unrestOfAdapters(const Simulation::Link& link, Simulation::Link::End end,
                             const Zel::Dir& roots);
/// Whether each root of `some` has an equal one in `others`.
bool haveEqualDigests(const Zel::Dir& some, const Zel::Dir& others);

} // namespace Histories
