#pragma once

#include "Line.h"

#include <Vexil/IntfId>
#include <Zel/Enumeration>
#include <Zel/Exception>

namespace Replay {

// Each takes one word and turns it into a value of the library, or throws `Mismatch`.

double takeTime(Line& line);

/// A name that is not empty. `what` says whose.
Zel::String8 takeName(Line& line, std::string_view what);

/// Decimal digits and nothing else. `what` says what they count.
unsigned takeNumber(Line& line, std::string_view what, unsigned least = 0);
unsigned long long takeRate(Line& line);

/// An interface's name. Its constructor is strict: it takes a name only as it would print it.
Vexil::IntfId takeInterface(Line& line);

/// Takes one of two words, of which the first puts something in and the second takes it out again,
/// and holds it against what is there. `what` names the thing. Yields whether it is the first word.
bool takeChange(Line& line, std::string_view in, std::string_view out, std::string_view what,
                bool isThere);

/// `what` and the names of an enumeration, "a state (init, active or ...)", out of the table that
/// the library keeps of it.
std::string oneOf(std::string_view what, const Zel::EnumTable& table);

/// An enumerator's name. `instance` is the library's conversion for `E`, such as `StateInstance`,
/// which throws `RangeException` on anything but exactly a name.
template <Zel::Enumeration E>
E takeEnumerator(Line& line, std::string_view what, E (*instance)(Zel::String8)) {
  const std::string expected = oneOf(what, enumTable(E()));
  const std::string& word = line.word(expected);
  try {
    return instance(Zel::String8(std::string_view(word)));
  } catch (const Zel::RangeException&) {
    throw Mismatch{expected, word};
  }
}

} // namespace Replay
