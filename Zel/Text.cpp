#include <Zel/Text>

#include <string>

namespace Zel {

namespace {

using Position = String8::IteratorConst;

bool isSpace(unsigned char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

bool atEnd(const Position& first, const Position& last) {
  return first.position() >= last.position();
}

[[noreturn]] void expected(const char* what, const Position& first) {
  throwRangeException(format("expected %s at column %d", what, first.position()));
}

int hexDigit(unsigned char byte) {
  if (byte >= '0' && byte <= '9') {
    return byte - '0';
  }
  if (byte >= 'a' && byte <= 'f') {
    return byte - 'a' + 10;
  }
  if (byte >= 'A' && byte <= 'F') {
    return byte - 'A' + 10;
  }
  return -1;
}

/// The byte that an escape stands for; `first` is behind the backslash.
char escapedByte(Position& first, const Position& last) {
  if (atEnd(first, last)) {
    expected("an escaped character", first);
  }
  const unsigned char byte = *first;
  switch (byte) {
  case '\\':
  case '\'':
  case '"':
    ++first;
    return static_cast<char>(byte);
  case 'n':
    ++first;
    return '\n';
  case 't':
    ++first;
    return '\t';
  case 'r':
    ++first;
    return '\r';
  case 'x': {
    ++first;
    int value = 0;
    for (int digit = 0; digit < 2; ++digit, ++first) {
      const int nibble = atEnd(first, last) ? -1 : hexDigit(*first);
      if (nibble < 0) {
        expected("a hexadecimal digit", first);
      }
      value = value * 16 + nibble;
    }
    return static_cast<char>(value);
  }
  default:
    expected("an escaped character", first);
  }
}

} // namespace

String8 valueToStrep(const String8& text) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string quoted = "'";
  for (const char character : text.view()) {
    const auto byte = static_cast<unsigned char>(character);
    switch (byte) {
    case '\'':
    case '\\':
      quoted += '\\';
      quoted += character;
      break;
    case '\n':
      quoted += "\\n";
      break;
    case '\t':
      quoted += "\\t";
      break;
    case '\r':
      quoted += "\\r";
      break;
    default:
      if (byte < 0x20 || byte == 0x7f) {
        quoted += "\\x";
        quoted += digits[byte >> 4];
        quoted += digits[byte & 15];
      } else {
        quoted += character;
      }
    }
  }
  quoted += '\'';
  return String8(quoted);
}

String8 sequenceToValue(Position& first, const Position& last, String8* /*selector*/) {
  needString(first, last, " ");
  if (atEnd(first, last) || (*first != '\'' && *first != '"')) {
    expected("a quoted text", first);
  }
  const unsigned char quote = *first;
  ++first;
  std::string text;
  while (true) {
    if (atEnd(first, last)) {
      expected("the closing quote", first);
    }
    const unsigned char byte = *first;
    ++first;
    if (byte == quote) {
      return String8(text);
    }
    text += byte == '\\' ? escapedByte(first, last) : static_cast<char>(byte);
  }
}

void needString(Position& first, const Position& last, const char* pattern) {
  for (const char* at = pattern; *at != '\0'; ++at) {
    if (*at == ' ') {
      while (!atEnd(first, last) && isSpace(*first)) {
        ++first;
      }
    } else if (!atEnd(first, last) && *first == static_cast<unsigned char>(*at)) {
      ++first;
    } else {
      expected(format("\"%s\"", pattern).charPtr(), first);
    }
  }
}

void throwJunk(const Position& first, const String8& text) {
  throw RangeException(format("junk at column %lld deserializing %s",
                              static_cast<long long>(first.position()), text.charPtr()));
}

} // namespace Zel
