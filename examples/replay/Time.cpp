#include "Time.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace Replay {

namespace {

using namespace std::chrono;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Whether the text looks like the pattern, in which a 0 stands for any digit.
bool looksLike(std::string_view text, std::string_view pattern) {
  if (text.size() != pattern.size()) {
    return false;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (pattern[i] == '0' ? !isDigit(text[i]) : text[i] != pattern[i]) {
      return false;
    }
  }
  return true;
}

int number(std::string_view digits) {
  int value = 0;
  for (const char digit : digits) {
    value = value * 10 + (digit - '0');
  }
  return value;
}

} // namespace

std::optional<double> timeOfText(std::string_view text) {
  constexpr std::string_view whole = "0000-00-00T00:00:00";
  int millis = 0;
  if (looksLike(text.substr(0, whole.size()), whole) && text.size() > whole.size()) {
    if (!looksLike(text.substr(whole.size()), ".000")) {
      return std::nullopt;
    }
    millis = number(text.substr(whole.size() + 1));
    text = text.substr(0, whole.size());
  }
  if (!looksLike(text, whole)) {
    return std::nullopt;
  }
  const year_month_day day(year(number(text.substr(0, 4))),
                           month(static_cast<unsigned>(number(text.substr(5, 2)))),
                           std::chrono::day(static_cast<unsigned>(number(text.substr(8, 2)))));
  const int hour = number(text.substr(11, 2));
  const int minute = number(text.substr(14, 2));
  const int second = number(text.substr(17, 2));
  if (!day.ok() || hour > 23 || minute > 59 || second > 59) {
    return std::nullopt;
  }
  const auto time = sys_days(day) + hours(hour) + minutes(minute) + seconds(second);
  return static_cast<double>(time.time_since_epoch().count()) + millis / 1000.0;
}

std::string textOfTime(double time) {
  const sys_time<milliseconds> instant(milliseconds(std::llround(time * 1000)));
  const auto midnight = floor<days>(instant);
  const year_month_day day(midnight);
  const hh_mm_ss clock(instant - midnight);
  char text[64];
  int length = std::snprintf(
      text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d", int(day.year()), unsigned(day.month()),
      unsigned(day.day()), static_cast<int>(clock.hours().count()),
      static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
  if (clock.subseconds().count() != 0) {
    length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), ".%03d",
                            static_cast<int>(clock.subseconds().count()));
  }
  return std::string(text, static_cast<std::size_t>(length));
}

} // namespace Replay
