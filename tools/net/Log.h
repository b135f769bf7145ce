#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace Net {

/// Takes lines for whoever runs the program; may be empty.
using Log = std::function<void(const std::string&)>;

/// A text of unknown origin on one line, with nothing in it that a terminal would act on: bytes
/// below space and above `~`, and backslashes, stand as `\xHH`.
std::string printable(std::string_view text);

} // namespace Net
