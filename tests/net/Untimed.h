#pragma once

#include <regex>
#include <string>

namespace TestNet {

/// What `watch` prints, without the times.
inline std::string untimed(const std::string& lines) {
  static const std::regex time(
      "(^|\\n)(# |)[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\\.[0-9]{3}[-+][0-9:]{5} ");
  static const std::regex number(",\"time\":[0-9]{10}\\.[0-9]+");
  return std::regex_replace(std::regex_replace(lines, time, "$1$2"), number, "");
}

} // namespace TestNet
