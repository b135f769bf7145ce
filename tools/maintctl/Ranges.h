#pragma once

#include <Zel/ValueRecord>

#include <string>

namespace Maintctl {

/// Holds each integer in a text against the range of its type, which the text form reads modulo
/// that. The text is a segment of a path or in the text form; what is neither is passed by, for
/// whoever reads it. Throws `Failure` with `exitBadValue` and the range; `place` says there what
/// the value is for.
void refuseOutOfRange(const std::string& text, bool isSegment, const Zel::ValueRecord& record,
                      const std::string& place);

/// Refuses a value with a string that cannot be sent to mirrors as a whole. A text that is all of
/// an attribute or an entry need not be.
void refuseTooLong(const Zel::ValueRecord& record, const void* value, const std::string& place);

/// Refuses what is no key for a new entry: an empty name, which no path leads to, a NaN, which
/// equals no key, and what cannot be sent.
void refuseUnfitKey(const Zel::ValueRecord& record, const void* key, const std::string& place);

} // namespace Maintctl
