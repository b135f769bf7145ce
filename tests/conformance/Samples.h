#pragma once

#include <support/AnyValue.h>

#include <optional>
#include <vector>

namespace Conformance {

using Support::AnyValue;

/// Distinct values of a type, the default first; two at least, and three of a type that is used as
/// a key, in ascending order. Fails on a type that is not known here.
const std::vector<AnyValue>& samplesOf(const Zel::ValueRecord& record);

/// A value that does not equal itself, of the types that have one.
std::optional<AnyValue> nanOf(const Zel::ValueRecord& record);

} // namespace Conformance
