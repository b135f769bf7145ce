#include "Times.h"

#include <Zel/Text>

#include <cmath>
#include <cstdio>
#include <ctime>

namespace Maintctl {

namespace {

constexpr double firstSecond = 1e8;
constexpr double lastSecond = 253402300799; // of the year 9999

std::string localText(double seconds, bool hasMillis) {
  const double rounded = hasMillis ? std::round(seconds * 1000) / 1000 : std::floor(seconds);
  const auto whole = static_cast<std::time_t>(std::floor(rounded));
  tzset();
  std::tm parts = {};
  localtime_r(&whole, &parts);
  char day[32];
  char zone[32];
  char millis[8] = "";
  std::strftime(day, sizeof day, "%Y-%m-%d %H:%M:%S", &parts);
  std::strftime(zone, sizeof zone, " %Z", &parts);
  if (hasMillis) {
    const auto fraction = std::lround((rounded - static_cast<double>(whole)) * 1000);
    std::snprintf(millis, sizeof millis, ".%03d", static_cast<int>(fraction));
  }
  return std::string(day) + millis + zone;
}

} // namespace

std::string timeText(double seconds) {
  if (!(seconds >= firstSecond && seconds < lastSecond)) { // not a number either
    return Zel::valueToStrep(seconds).charPtr();
  }
  return localText(seconds, std::round(seconds * 1000) != std::floor(seconds) * 1000);
}

bool isTime(const Zel::AttrRow& row) {
  return row.value != nullptr && row.value->name == Zel::valueName<double>() &&
         (row.name.find("time") != row.name.npos || row.name.find("Time") != row.name.npos);
}

} // namespace Maintctl
