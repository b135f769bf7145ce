#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Replay {

/// The seconds of a time such as `2026-03-14T22:00:05` or `2026-03-14T22:00:05.250`, counted from
/// the beginning of 1970 by the journal's own clock, of whatever zone it is; none if the text is
/// anything else or names a day that does not exist.
///
/// The model's times are seconds since 1970 UTC, so the journal's clock should be of that zone.
std::optional<double> timeOfText(std::string_view text);

/// The same form again, with milliseconds only where there are some.
std::string textOfTime(double seconds);

} // namespace Replay
