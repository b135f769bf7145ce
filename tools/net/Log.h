#pragma once

#include <Zel/Session>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Net {

using Level = Zel::LogLevel;
/// Takes lines for whoever runs the program; may be empty.
using Log = std::function<void(Level, const std::string&)>;

const char* levelName(Level level);
/// None if no level has that name.
std::optional<Level> levelOf(std::string_view name);

/// A time as it stands before a line: ISO 8601 to the millisecond, by the clock on the wall, which
/// is what who reads it has, and with its distance from UTC, as logs of other places are read too.
///
///     2026-11-22T10:25:08.123+01:00
std::string timeText(std::chrono::system_clock::time_point at);

/// A text of unknown origin on one line, with nothing in it that a terminal would act on: bytes
/// below space and above `~`, and backslashes, stand as `\xHH`.
std::string printable(std::string_view text);

} // namespace Net
