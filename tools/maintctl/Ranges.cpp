#include "Ranges.h"

#include "Failure.h"
#include "Words.h"

#include <Zel/TypeTable>
#include <Zel/ValueBuilder>
#include <text/Path.h>
#include <text/Value.h>

#include <charconv>
#include <cmath>
#include <optional>

namespace Maintctl {

namespace {

using Zel::AttrRow;
using Zel::String8;
using Zel::TextReader;
using Zel::ValueRecord;
using Zel::ValueSlot;

/// The greatest number of an unsigned integer's type; none of all others.
std::optional<unsigned long long> greatest(const ValueRecord& record) {
  if (record.name == Zel::valueName<unsigned>()) {
    return std::numeric_limits<unsigned>::max();
  }
  if (record.name == Zel::valueName<unsigned long long>()) {
    return std::numeric_limits<unsigned long long>::max();
  }
  return {};
}

/// Looks through a text for its integers, along the attributes of the type.
class Ranges {
public:
  Ranges(const std::string& text, const std::string& place) : text_(text), place_(place) {}

  void segment(std::string_view part, const ValueRecord& record, const std::string& name) const {
    if (record.table == nullptr) {
      integer(part, record, name);
      return;
    }
    for (const AttrRow& row : record.table().rows) {
      if (Zel::isStored(row)) {
        const std::size_t comma = std::min(part.find(','), part.size());
        String8 field; // within a value, `,` is escaped as in a path
        Zel::readPathSegment(part.substr(0, comma), Zel::valueRecord<String8>, &field);
        segment(field.view(), *row.value, std::string(row.name));
        part.remove_prefix(std::min(comma + 1, part.size()));
      }
    }
  }

  void form(TextReader& in, const ValueRecord& record, const std::string& name) const {
    if (record.table != nullptr) {
      frame(in, record);
      return;
    }
    in.skipSpace();
    if (greatest(record)) {
      const std::string number = integerOf(in);
      integer(number, record, name);
    } else {
      ValueSlot passedBy(record);
      Zel::readFreshValue(in, record, passedBy.at());
    }
  }

private:
  void frame(TextReader& in, const ValueRecord& record) const {
    std::string scratch;
    in.need(" Value");
    in.need(" (");
    in.quoted(scratch);
    for (const char* const token : {" ,", " **", " { "}) {
      in.need(token);
    }
    while (!in.skip("}")) {
      const std::string name(in.quoted(scratch));
      in.need(" : ");
      const AttrRow* const row = record.table().row(name);
      if (row == nullptr || row->value == nullptr) {
        return; // no such attribute
      }
      form(in, *row->value, name);
      in.skipSpace();
      if (in.skip(",")) {
        in.skipSpace();
      }
    }
    in.need(" )");
  }

  static std::string integerOf(TextReader& in) {
    std::string number = in.skip("-") ? "-" : "";
    while (!in.atEnd() && in.peek() >= '0' && in.peek() <= '9') {
      number += static_cast<char>(in.peek());
      in.skip(number.substr(number.size() - 1));
    }
    return number;
  }

  void integer(std::string_view part, const ValueRecord& record, const std::string& name) const {
    const auto most = greatest(record);
    part.remove_prefix(std::min(part.find_first_not_of(" \t\n\v\f\r"), part.size()));
    const bool isNegative = part.starts_with('-');
    part.remove_prefix(isNegative ? 1 : 0);
    if (!most || part.empty() || part.find_first_not_of("0123456789") != std::string_view::npos) {
      return;
    }
    unsigned long long number = 0;
    const auto [end, failure] = std::from_chars(part.data(), part.data() + part.size(), number);
    if (failure != std::errc() || number > *most || (isNegative && number != 0)) {
      throw Failure(exitBadValue, "bad value " + printable(text_) + " for " + place_ + ": " +
                                      (name.empty() ? "it" : name) + " is from 0 to " +
                                      std::to_string(*most));
    }
  }

  const std::string& text_;
  const std::string& place_;
};

/// The bytes of a type that is one string; none of all others.
std::optional<std::string_view> stringOf(const ValueRecord& record, const void* value) {
  if (record.name == Zel::valueName<String8>()) {
    return static_cast<const String8*>(value)->view();
  }
  if (record.name == Zel::valueName<Zel::Name>()) {
    return static_cast<const Zel::Name*>(value)->view();
  }
  return {};
}

/// Calls `use` with each part of a value that has no attributes.
template <class Use>
void forParts(const ValueRecord& record, const void* value, const Use& use) {
  if (record.table == nullptr) {
    use(record, value);
    return;
  }
  for (const AttrRow& row : record.table().rows) {
    if (Zel::isStored(row)) {
      ValueSlot field(*row.value, [&](void* to) { row.read(value, to); });
      forParts(*row.value, field.at(), use);
    }
  }
}

} // namespace

void refuseOutOfRange(const std::string& text, bool isSegment, const ValueRecord& record,
                      const std::string& place) {
  const Ranges ranges(text, place);
  const Zel::Expect otherwise(Zel::exceptionId);
  try {
    if (isSegment) {
      String8 plain(text);
      if (record.table == nullptr) { // else each part is escaped
        Zel::readPathSegment(text, Zel::valueRecord<String8>, &plain);
      }
      ranges.segment(plain.view(), record, "");
      return;
    }
    const String8 whole(text);
    String8::IteratorConst first(whole);
    const String8::IteratorConst last(whole, static_cast<int>(whole.length()));
    TextReader in(first, last);
    ranges.form(in, record, "");
  } catch (const Zel::Exception&) { // no value at all: said by the reader
  }
}

void refuseTooLong(const ValueRecord& record, const void* value, const std::string& place) {
  forParts(record, value, [&](const ValueRecord& of, const void* part) {
    const auto text = stringOf(of, part);
    if (text && text->size() > Zel::maxWholeString) {
      throw Failure(exitBadValue, "a string of " + std::to_string(text->size()) + " bytes for " +
                                      printable(place) +
                                      ": a name, or a part of a value, has at most " +
                                      std::to_string(Zel::maxWholeString));
    }
  });
}

void refuseUnfitKey(const ValueRecord& record, const void* key, const std::string& place) {
  refuseTooLong(record, key, place);
  if (const auto text = stringOf(record, key); text && text->empty()) {
    throw Failure(exitBadValue, "an empty key for " + place + ": name what is to be made");
  }
  forParts(record, key, [&](const ValueRecord& of, const void* part) {
    if (of.name == Zel::valueName<double>() && std::isnan(*static_cast<const double*>(part))) {
      throw Failure(exitBadValue,
                    "nan is no key for " + place + ": it equals nothing, so nobody would find it");
    }
  });
}

} // namespace Maintctl
