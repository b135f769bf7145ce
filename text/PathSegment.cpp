#include <text/Path.h>

#include <Zel/ValueBuilder>
#include <text/Value.h>

#include <charconv>

namespace Zel {

namespace {

constexpr std::string_view specialInPath = "/%";
constexpr std::string_view specialInValue = "/%,";

std::string escaped(std::string_view text, std::string_view special) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string result;
  for (const char character : text) {
    if (special.find(character) == std::string_view::npos) {
      result += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      result += {'%', digits[byte >> 4], digits[byte & 15]};
    }
  }
  return result;
}

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '%') {
      result += text[at];
      continue;
    }
    const std::string_view digits = text.substr(at + 1, 2);
    unsigned char byte = 0;
    const char* const end = digits.data() + digits.size();
    const auto parsed = std::from_chars(digits.data(), end, byte, 16);
    if (digits.size() != 2 || parsed.ec != std::errc() || parsed.ptr != end) {
      throwRangeException("bad escape in " + String8(text));
    }
    result += static_cast<char>(byte);
    at += 2;
  }
  return result;
}

/// Whether the texts of a type that has no table stand in quotes: its default tells.
bool isQuoted(const ValueRecord& record) {
  ValueSlot value(record);
  TextBuffer text;
  appendValue(text, record, value.at());
  return text.view().starts_with('\'');
}

/// The text of a value with its quotes taken off; of one with a table what it stores, joined by
/// commas.
std::string bareText(const ValueRecord& record, const void* value) {
  std::string text;
  if (record.table != nullptr) {
    bool isFirst = true;
    for (const AttrRow& row : record.table().rows) {
      if (isStored(row)) {
        ValueSlot field(*row.value, [&](void* at) { row.read(value, at); });
        text += isFirst ? "" : ",";
        text += escaped(bareText(*row.value, field.at()), specialInValue);
        isFirst = false;
      }
    }
    return text;
  }
  const String8 whole = textOf(record, value);
  if (!isQuoted(record)) {
    return std::string(whole.view());
  }
  String8::IteratorConst first(whole);
  const String8::IteratorConst last(whole, static_cast<int>(whole.length()));
  TextReader in(first, last);
  return std::string(in.quoted(text));
}

void readBare(std::string_view text, const ValueRecord& record, void* fresh) {
  if (record.table == nullptr) {
    const String8 bare(text);
    readWhole(isQuoted(record) ? valueToStrep(bare) : bare, record, fresh);
    return;
  }
  ValueBuilder builder(record, record.table(), fresh);
  std::string_view rest = text;
  bool hasRest = true;
  bool storesNothing = true;
  for (const AttrRow& row : record.table().rows) {
    if (!isStored(row)) {
      continue;
    }
    if (!hasRest) {
      throwRangeException("too few attributes in " + String8(text));
    }
    const std::size_t comma = rest.find(',');
    const std::string part = unescaped(rest.substr(0, comma));
    builder.take(row, [&](void* at) { readBare(part, *row.value, at); });
    hasRest = comma != std::string_view::npos;
    rest.remove_prefix(hasRest ? comma + 1 : rest.size());
    storesNothing = false;
  }
  if (storesNothing ? !text.empty() : hasRest) {
    throwRangeException("too many attributes in " + String8(text));
  }
  builder.finish();
}

} // namespace

String8 pathSegment(const ValueRecord& record, const void* key) {
  const std::string text = bareText(record, key);
  return String8(record.table != nullptr ? text : escaped(text, specialInPath));
}

void readPathSegment(std::string_view segment, const ValueRecord& record, void* to) {
  ValueSlot fresh(record);
  readBare(record.table != nullptr ? std::string(segment) : unescaped(segment), record, fresh.at());
  record.assign(to, fresh.at());
}

} // namespace Zel
