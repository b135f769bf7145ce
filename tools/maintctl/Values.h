#pragma once

#include <Zel/ValueRecord>

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace Maintctl {

/// The text form. What is not to be shown on a terminal is escaped in it, which reads back.
std::string textForm(const Zel::ValueRecord& record, const void* value);

/// Reads a value from the text form or, where that would need quotes or a frame, from the bare text
/// that would stand in a path: `active` for `'active'`, `System` for `'System'`, `1,2,0.5` for
/// traffic rates. `fresh` has been constructed. Throws `Failure` with `exitBadValue`; `place` says
/// there what the value is for.
void readText(const std::string& text, const Zel::ValueRecord& record, void* fresh,
              const std::string& place);

/// The same with the segment of a key.
void readKey(const std::string& segment, const Zel::ValueRecord& record, void* fresh,
             const std::string& place);

/// The segment of a key as it stands in a path. What would need quotes in a shell or a script, or
/// is not to be shown on a terminal, is escaped too, which the library reads as well.
std::string segmentOf(const Zel::ValueRecord& record, const void* key);

/// Escapes that in a path or a segment that the library has printed.
std::string escaped(std::string_view path);

/// Truths and numbers as such, of values with attributes an object, all else a string without the
/// quotes of the text form. Numbers that are none or infinite are strings: JSON has no other way.
nlohmann::json jsonOf(const Zel::ValueRecord& record, const void* value);

/// One line of JSON. Bytes that are no UTF-8 are replaced by U+FFFD.
std::string lineOf(const nlohmann::json& json);

/// The names of an enumeration, or of the truths; empty for all other types.
std::vector<std::string> namesOf(const Zel::ValueRecord& record);

} // namespace Maintctl
