#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

/// Bytes as people write them: pairs of hex digits between blanks, and `61 * 300` for three hundred
/// times the same.

/// Throws `std::invalid_argument` on anything else.
inline std::string bytesOf(std::string_view text) {
  std::string bytes;
  bool repeats = false;
  while (true) {
    const std::size_t begin = text.find_first_not_of(" \n");
    if (begin == text.npos) {
      return bytes;
    }
    text.remove_prefix(begin);
    const std::size_t length = std::min(text.find_first_of(" \n"), text.size());
    const std::string word(text.substr(0, length));
    text.remove_prefix(length);
    std::size_t read = 0;
    if (word == "*" && !bytes.empty() && !repeats) {
      repeats = true;
    } else if (repeats) {
      bytes.append(std::stoul(word, &read) - 1, bytes.back());
      repeats = false;
    } else {
      bytes += static_cast<char>(std::stoul(word, &read, 16));
      read = word.size() == 2 ? read : 0;
    }
    if (word != "*" && read != word.size()) {
      throw std::invalid_argument("no bytes: " + word);
    }
  }
}

/// The other way round. Ten or more of the same are put together.
inline std::string hexOf(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    const std::size_t end = std::min(bytes.find_first_not_of(bytes[i], i), bytes.size());
    text += text.empty() ? "" : " ";
    text += {digits[byte >> 4], digits[byte & 15]};
    if (end - i > 9) {
      text += " * " + std::to_string(end - i);
      i = end;
    } else {
      ++i;
    }
  }
  return text;
}

/// The same bytes in the one form that `hexOf` gives them.
inline std::string plain(std::string_view text) { return hexOf(bytesOf(text)); }

inline std::string_view viewOf(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}
