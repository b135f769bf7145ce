#include "Utf8.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cwchar>

namespace Maintctl {

namespace {

constexpr char32_t strayByte = 0xdc00; // a byte that is no UTF-8 is added to it

struct Character {
  std::size_t bytes; ///< 0: no valid sequence
  char32_t point;
};

Character firstOf(std::string_view text) {
  const auto byteAt = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byteAt(0);
  if (lead < 0x80) {
    return {1, lead};
  }
  const std::size_t bytes = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
  if (lead < 0xc2 || lead > 0xf4 || text.size() < bytes) {
    return {0, 0};
  }
  char32_t point = lead & (0x7fU >> bytes);
  for (std::size_t at = 1; at < bytes; ++at) {
    if ((byteAt(at) & 0xc0) != 0x80) {
      return {0, 0};
    }
    point = point << 6 | (byteAt(at) & 0x3f);
  }
  constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = point >= 0xd800 && point <= 0xdfff;
  return {point < least[bytes] || isSurrogate || point > 0x10ffff ? 0 : bytes, point};
}

/// Control characters, ends of lines, and what turns the direction of what follows.
bool isHidden(char32_t point) {
  const auto isIn = [point](char32_t first, char32_t last) {
    return point >= first && point <= last;
  };
  return point < 0x20 || isIn(0x7f, 0x9f) || point == 0x61c || isIn(0x200e, 0x200f) ||
         isIn(0x2028, 0x202e) || isIn(0x2066, 0x2069) || point == 0xfeff;
}

/// The widths of characters are those of a UTF-8 locale, whatever the program's own is.
class Utf8Locale {
public:
  Utf8Locale() noexcept {
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    before_ = utf8 != nullptr ? uselocale(utf8) : nullptr;
  }
  Utf8Locale(const Utf8Locale&) = delete;
  Utf8Locale& operator=(const Utf8Locale&) = delete;
  ~Utf8Locale() {
    if (before_ != nullptr) {
      uselocale(before_);
    }
  }

private:
  locale_t before_ = nullptr;
};

std::size_t columnsOf(char32_t point) {
  const int columns = wcwidth(static_cast<wchar_t>(point));
  return columns < 0 ? 1
                     : static_cast<std::size_t>(columns); // one that the table does not have yet
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return byte >= ' ' && byte <= '~'; });
}

/// The bytes of a text that fit, and their columns.
std::pair<std::size_t, std::size_t> measured(std::string_view text, std::size_t most) {
  if (isAscii(text)) {
    const std::size_t fits = std::min(text.size(), most);
    return {fits, fits};
  }
  const Utf8Locale scope;
  std::size_t at = 0;
  std::size_t columns = 0;
  while (at < text.size()) {
    const Character next = firstOf(text.substr(at));
    const std::size_t wide = next.bytes == 0 ? 1 : columnsOf(next.point);
    if (columns + wide > most) {
      break;
    }
    columns += wide;
    at += std::max<std::size_t>(next.bytes, 1);
  }
  return {at, columns};
}

} // namespace

std::size_t shownBytes(std::string_view text) {
  if (text.empty()) {
    return 0;
  }
  const Character first = firstOf(text);
  return isHidden(first.point) ? 0 : first.bytes;
}

std::string shown(std::string_view text) {
  static constexpr std::string_view digits = "0123456789abcdef";
  if (isAscii(text)) {
    return std::string(text);
  }
  std::string result;
  while (!text.empty()) {
    if (const std::size_t bytes = shownBytes(text); bytes != 0) {
      result += text.substr(0, bytes);
      text.remove_prefix(bytes);
      continue;
    }
    for (std::size_t left = std::max<std::size_t>(firstOf(text).bytes, 1); left > 0; --left) {
      const auto byte = static_cast<unsigned char>(text.front());
      result.append({'\\', 'x', digits[byte >> 4], digits[byte & 15]});
      text.remove_prefix(1);
    }
  }
  return result;
}

std::wstring widened(std::string_view text) {
  std::wstring wide;
  while (!text.empty()) {
    const Character first = firstOf(text);
    const auto byte = static_cast<unsigned char>(text.front());
    wide += static_cast<wchar_t>(first.bytes != 0 ? first.point : strayByte + byte);
    text.remove_prefix(std::max<std::size_t>(first.bytes, 1));
  }
  return wide;
}

std::string narrowed(std::wstring_view wide) {
  std::string text;
  for (const wchar_t character : wide) {
    const auto point = static_cast<char32_t>(character);
    const auto add = [&](char32_t byte) { text += static_cast<char>(byte); };
    const auto addRest = [&](int bits) {
      for (; bits >= 0; bits -= 6) {
        add(0x80 | (point >> bits & 0x3f));
      }
    };
    if (point < 0x80) {
      add(point);
    } else if (point >= strayByte + 0x80 && point <= strayByte + 0xff) {
      add(point - strayByte);
    } else if (point < 0x800) {
      add(0xc0 | point >> 6);
      addRest(0);
    } else if (point < 0x10000) {
      add(0xe0 | point >> 12);
      addRest(6);
    } else {
      add(0xf0 | point >> 18);
      addRest(12);
    }
  }
  return text;
}

bool mayGoOn(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  const std::size_t whole = lead < 0xc2 || lead > 0xf4 ? 1
                            : lead >= 0xf0             ? 4
                            : lead >= 0xe0             ? 3
                                                       : 2;
  const bool goesOn = bytes.size() == 1 || (bytes.back() & 0xc0) == 0x80;
  return goesOn && bytes.size() < whole;
}

std::size_t columnsOf(std::string_view text) { return measured(text, text.npos).second; }

std::vector<std::string> wrapped(std::string_view text, std::size_t columns) {
  std::vector<std::string> lines;
  while (true) {
    const std::size_t fits = std::max<std::size_t>(measured(text, columns).first, 1);
    if (fits >= text.size()) {
      lines.emplace_back(text);
      return lines;
    }
    const std::size_t blank = text.rfind(' ', fits);
    const bool isParted = blank != text.npos && blank > 0;
    lines.emplace_back(text.substr(0, isParted ? blank : fits));
    text.remove_prefix(isParted ? blank + 1 : fits);
  }
}

std::string fitted(const std::string& text, std::size_t columns) {
  if (measured(text, columns).first == text.size()) {
    return text;
  }
  return columns == 0 ? "" : text.substr(0, measured(text, columns - 1).first) + "…";
}

} // namespace Maintctl
