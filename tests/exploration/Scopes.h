#pragma once

#include "Plot.h"

#include <iosfwd>

namespace Exploration {

/// Reads the plots of a scope. A scope is a text of blocks with an empty line between them; lines
/// that begin with `#` are remarks. Of a block,
///
/// - `start WORDS` is as `startOf` takes it
/// - `A WRITE...` is what a model's program writes, in this order; or, with `writes`, what it
///   chooses from
/// - `writes N`: there are up to so many writes, of all models together, of those to choose from,
/// in
///   each order at each model, and the same one twice too
/// - `cuts N...`: how often each link is cut, at most
/// - `anew last`: links are made anew at the end, in one of the ways
///
/// All that there is of fewer writes and cuts belongs to it. Throws `std::invalid_argument`.
std::vector<Plot> scopeOf(std::istream& text);

} // namespace Exploration
