#include "Log.h"

namespace Net {

std::string printable(std::string_view text) {
  constexpr char digits[] = "0123456789abcdef";
  std::string line;
  line.reserve(text.size());
  for (const char byte : text) {
    if (byte >= ' ' && byte <= '~' && byte != '\\') {
      line += byte;
    } else {
      const auto number = static_cast<unsigned char>(byte);
      line += "\\x";
      line += digits[number / 16];
      line += digits[number % 16];
    }
  }
  return line;
}

} // namespace Net
