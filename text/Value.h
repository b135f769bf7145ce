#pragma once

#include <Zel/ValueRecord>

#include <iosfwd>

/// The texts of values and enumerations, written and read back from what their tables tell. A value
/// is an address and the record of its type. What is stored in it, and no more, makes its text:
///
///     Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})
///
/// A type whose attributes are all constants has the empty text, but its readers take none but the
/// whole frame with nothing between the braces.
///
/// White space may stand before and after each token. Attributes may come in any order; one that is
/// missing keeps its default, of one that comes twice the last stands. A derived attribute that is
/// a constructor argument is read and dropped, all other derived attributes are unknown names.
///
/// A type of its own has its functions from here, one line each:
///
///     using Position = Zel::String8::IteratorConst;
///     Slot::Slot(Position& first, const Position& last) { Zel::readInto(first, last, *this); }
///     Zel::String8 valueToStrep(const Slot& value) { return Zel::textOf(value); }
///     std::ostream& operator<<(std::ostream& out, const Slot& value) {
///       return Zel::printText(out, value);
///     }
///
/// Enumerations: see `text/EnumerationText.h`.
namespace Zel {

/// Appends the text of the value.
ZEL_API void appendValue(TextBuffer& out, const ValueRecord& record, const void* value);

/// Reads a value into the one at `to`, which has been constructed and is replaced as a whole; it
/// stays as it was on a failure. Throws `RangeException`, and what constructor and mutators throw.
ZEL_API void readValue(TextReader& in, const ValueRecord& record, void* to);

/// Reads into a value that still has its defaults, in place: a failure leaves some of it read.
ZEL_API void readFreshValue(TextReader& in, const ValueRecord& record, void* to);

/// The same from a whole text: throws `RangeException` on anything left over.
ZEL_API void readWhole(const String8& text, const ValueRecord& record, void* fresh);

ZEL_API String8 textOf(const ValueRecord& record, const void* value);

/// Writes the text as it is; width and fill do not apply.
ZEL_API std::ostream& printText(std::ostream& out, const ValueRecord& record, const void* value);

template <class V>
String8 textOf(const V& value) {
  return textOf(valueRecord<V>, &value);
}

template <class V>
std::ostream& printText(std::ostream& out, const V& value) {
  return printText(out, valueRecord<V>, &value);
}

/// What a type's constructor from two positions does.
template <class V>
void readInto(String8::IteratorConst& first, const String8::IteratorConst& last, V& fresh) {
  TextReader in(first, last);
  readFreshValue(in, valueRecord<V>, &fresh);
}

/// Reads the quoted name of an enumerator. Throws `RangeException`.
template <Enumeration E>
E enumeratorFrom(String8::IteratorConst& first, const String8::IteratorConst& last) {
  E value{};
  readInto(first, last, value);
  return value;
}

} // namespace Zel
