#include "Progress.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>

namespace Maintctl {

namespace {

using namespace std::chrono_literals;

constexpr auto untilFirst = 300ms;
constexpr auto between = 100ms;
constexpr const char* eraseLine = "\r\x1b[K";

} // namespace

Progress::Progress(std::string what, std::size_t whole)
    : what_(std::move(what)), whole_(whole), isTerminal_(isatty(STDERR_FILENO) != 0),
      next_(Clock::now() + untilFirst) {}

Progress::~Progress() {
  if (hasShown_) {
    std::cerr << eraseLine << std::flush;
  }
}

void Progress::look() {
  if (!isTerminal_ || Clock::now() < next_) {
    return;
  }
  next_ = Clock::now() + between;
  hasShown_ = true;
  std::cerr << eraseLine << what_ << ": ";
  if (whole_ != 0) {
    std::cerr << std::min<std::size_t>(100, done_ * 100 / whole_) << " %";
  } else {
    std::cerr << calls_ << " lines";
  }
  std::cerr << std::flush;
}

} // namespace Maintctl
