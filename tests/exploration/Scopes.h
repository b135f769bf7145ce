#pragma once

#include "Plot.h"

namespace Exploration {

/// Plots that belong together, under a name.
struct Scope {
  std::string name;
  std::string what; ///< it is about
  std::vector<Plot> plots;
};

const std::vector<Scope>& scopes();
/// Null if there is none of the name.
const Scope* scopeOf(const std::string& name);

} // namespace Exploration
