#pragma once

#include <Zel/TypeTable>

#include <string>

/// Times in the model are seconds since the beginning of 1970, UTC.
namespace Maintctl {

/// A time as people read it: local, with its zone, with milliseconds where there are some.
/// What is below 10^8 or no time that a calendar has is the bare number: it counts from elsewhere.
std::string timeText(double seconds);
/// Whether a number is a time, as far as its name tells.
bool isTime(const Zel::AttrRow& row);

} // namespace Maintctl
