#pragma once

#include "Time.h"

#include <ostream>

namespace Replay {

/// Where notifications are printed, one line each. A notification carries no time of its own, so
/// the log knows that of the line which is being replayed.
class Log {
public:
  explicit Log(std::ostream& out) : out_(out) {}

  void nowIs(double time) { now_ = time; }

  void line(std::string_view subject, std::string_view what) {
    out_ << textOfTime(now_) << ' ' << subject << ": " << what << '\n';
  }

private:
  std::ostream& out_;
  double now_ = 0;
};

} // namespace Replay
