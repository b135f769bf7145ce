#pragma once

#include <support/AnyValue.h>

#include <optional>
#include <vector>

namespace Conformance {

using Support::AnyValue;

/// Distinct values of a type, the default first; two at least if the type has as many, and three of
/// a type that is used as a key, in ascending order. Fails on a type that is not known here.
const std::vector<AnyValue>& samplesOf(const Zel::ValueRecord& record);

/// One of very many keys of a type, each number another; no sample is among them. Fails on a type
/// that is not known here to be used as a key.
AnyValue numberedKey(const Zel::ValueRecord& record, unsigned number);

/// A value that does not equal itself, of the types that have one.
std::optional<AnyValue> nanOf(const Zel::ValueRecord& record);

} // namespace Conformance
