#include "Log.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace Net {

namespace {

constexpr std::array<const char*, 4> levelNames = {"error", "warning", "info", "debug"};

} // namespace

const char* levelName(Level level) { return levelNames[static_cast<std::size_t>(level)]; }

std::optional<Level> levelOf(std::string_view name) {
  for (std::size_t at = 0; at < levelNames.size(); ++at) {
    if (levelNames[at] == name) {
      return static_cast<Level>(at);
    }
  }
  return {};
}

std::string timeText(std::chrono::system_clock::time_point at) {
  const auto second = std::chrono::floor<std::chrono::seconds>(at);
  const std::time_t time = std::chrono::system_clock::to_time_t(second);
  std::tm local = {};
  ::localtime_r(&time, &local);
  char text[64];
  const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
  const long minutes = local.tm_gmtoff / 60;
  std::snprintf(
      text + length, sizeof text - length, ".%03d%c%02ld:%02ld",
      static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(at - second).count()),
      minutes < 0 ? '-' : '+', std::abs(minutes) / 60, std::abs(minutes) % 60);
  return text;
}

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
