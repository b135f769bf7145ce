#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Maintctl {

/// The name that was probably meant: the one that the fewest slips of the hand lead away from, if
/// they are few for its length, or the only one that goes on from `typed`; empty if there is none.
std::string nearest(std::string_view typed, const std::vector<std::string>& names);

/// "a, b and c"; with `last` "or", "a, b or c".
std::string listOf(const std::vector<std::string>& names, std::string_view last = "and");

/// What to put behind a complaint about `typed`: ", did you mean state?"; else `lead` and all the
/// names if they are few; else `otherwise`.
std::string hint(std::string_view typed, const std::vector<std::string>& names,
                 std::string_view lead, std::string_view otherwise);

} // namespace Maintctl
