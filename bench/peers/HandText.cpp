#include "peers/HandText.h"

#include <array>

namespace Bench {

namespace {

constexpr std::string_view begin = "Value('Maintenance::Profile::ProfileKey', ** {'type': '";
constexpr std::string_view between = "', 'name': '";
constexpr std::string_view end = "'})";
constexpr std::array<std::string_view, 4> types = {"profileTypeNone", "profileTypeBgp",
                                                   "profileTypeInterface", "profileTypeUnit"};
constexpr std::string_view digits = "0123456789abcdef";

/// Whether a byte stands for itself between quotes.
constexpr std::array<bool, 256> isPlain = [] {
  std::array<bool, 256> plain{};
  for (std::size_t byte = 0x20; byte < plain.size(); ++byte) {
    plain[byte] = byte != 0x7f && byte != '\'' && byte != '\\';
  }
  return plain;
}();

char* put(char* to, std::string_view text) { return to + text.copy(to, text.size()); }

char* putEscaped(char* to, unsigned char byte) {
  *to++ = '\\';
  switch (byte) {
  case '\n':
    *to++ = 'n';
    break;
  case '\t':
    *to++ = 't';
    break;
  case '\r':
    *to++ = 'r';
    break;
  case '\'':
  case '\\':
    *to++ = static_cast<char>(byte);
    break;
  default:
    *to++ = 'x';
    *to++ = digits[byte >> 4];
    *to++ = digits[byte & 0xf];
  }
  return to;
}

bool take(std::string_view& text, std::string_view expected) {
  if (text.substr(0, expected.size()) != expected) {
    return false;
  }
  text.remove_prefix(expected.size());
  return true;
}

/// Reads what an escape stands for, behind the backslash.
bool takeEscaped(std::string_view& text, std::string& to) {
  if (text.empty()) {
    return false;
  }
  const char kind = text.front();
  text.remove_prefix(1);
  switch (kind) {
  case 'n':
    to += '\n';
    return true;
  case 't':
    to += '\t';
    return true;
  case 'r':
    to += '\r';
    return true;
  case '\'':
  case '\\':
    to += kind;
    return true;
  case 'x':
    break;
  default:
    return false;
  }
  const std::size_t high = text.empty() ? digits.npos : digits.find(text[0]);
  const std::size_t low = text.size() < 2 ? digits.npos : digits.find(text[1]);
  if (high == digits.npos || low == digits.npos) {
    return false;
  }
  to += static_cast<char>(high << 4 | low);
  text.remove_prefix(2);
  return true;
}

} // namespace

std::size_t HandText::print(const HandProfile& profile, char* to) {
  char* at = put(to, begin);
  at = put(at, types[static_cast<std::size_t>(profile.type)]);
  at = put(at, between);
  for (const char byte : profile.name) {
    const auto unsignedByte = static_cast<unsigned char>(byte);
    if (isPlain[unsignedByte]) [[likely]] {
      *at++ = byte;
    } else {
      at = putEscaped(at, unsignedByte);
    }
  }
  return static_cast<std::size_t>(put(at, end) - to);
}

std::string HandText::print(const HandProfile& profile) {
  std::string text(space(profile.name.size()), '\0');
  text.resize(print(profile, text.data()));
  return text;
}

bool HandText::parse(std::string_view text, HandProfile& to) {
  if (!take(text, begin)) {
    return false;
  }
  const std::string_view name = text.substr(0, text.find('\''));
  to.type = -1;
  for (std::size_t i = 0; i < types.size(); ++i) {
    if (types[i] == name) {
      to.type = static_cast<int>(i);
    }
  }
  text.remove_prefix(name.size());
  if (to.type < 0 || !take(text, between)) {
    return false;
  }
  to.name.clear();
  for (;;) {
    std::size_t plain = 0;
    while (plain < text.size() && text[plain] != '\'' && text[plain] != '\\') {
      ++plain;
    }
    to.name.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty() || text.front() == '\'') {
      return text == end;
    }
    text.remove_prefix(1);
    if (!takeEscaped(text, to.name)) {
      return false;
    }
  }
}

} // namespace Bench
