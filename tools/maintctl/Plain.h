#pragma once

#include "Table.h"

#include <Zel/TypeTable>

#include <string>
#include <vector>

/// Values as people read them, which do not read back: no quotes, times of day, rates with their
/// unit. Of the types, names of attributes are all that is known.
namespace Maintctl {

/// A value; of one with attributes each with its name.
std::string plainText(const Zel::ValueRecord& record, const void* value);
/// The value of an attribute, which may be a time or a rate by its name.
std::string plainText(const void* owner, const Zel::AttrRow& row);
/// A key, as it may be typed but for `/`.
std::string plainKey(const Zel::ValueRecord& record, const void* key);

/// "1.5 Gbit/s".
std::string rateText(unsigned long long bits);

/// The colour of an enumerator: what goes wrong is red, what is at work green, what is out of
/// service yellow, what is on its way cyan.
Cell::Colour colourOf(std::string_view enumerator);

} // namespace Maintctl
