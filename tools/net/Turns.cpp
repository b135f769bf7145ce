#include "Turns.h"

#include "Driver.h"

#include <asio/post.hpp>

#include <algorithm>
#include <chrono>

namespace Net {

Turns::Turns(asio::io_context& io) : io_(io), timer_(io) {}

Turns::~Turns() {
  for (const std::shared_ptr<Driver>& driver : std::exchange(drivers_, {})) {
    driver->turnsGone();
  }
}

double Turns::now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void Turns::driverIs(std::shared_ptr<Driver> driver) {
  drivers_.push_back(std::move(driver));
  soon();
}

void Turns::driverDel(const Driver& driver) {
  std::erase_if(drivers_, [&](const std::shared_ptr<Driver>& one) { return one.get() == &driver; });
}

void Turns::soon() {
  if (!std::exchange(isSoon_, true)) {
    asio::post(io_, [this, alive = alive_.watch()] {
      if (!alive.expired()) {
        run();
      }
    });
  }
}

void Turns::run() {
  isSoon_ = false;
  ++count_;
  // Callbacks may add sessions and end some.
  const std::vector<std::shared_ptr<Driver>> drivers = drivers_;
  const double at = now();
  bool more = false;
  const auto each = [&](bool (Driver::*part)(double)) {
    for (const std::shared_ptr<Driver>& driver : drivers) {
      try {
        more = (driver.get()->*part)(at) || more;
      } catch (const std::exception& failure) { // one peer's trouble, such as no memory for it
        driver->session()->close(at, failure.what());
      }
    }
  };
  each(&Driver::take);
  each(&Driver::give);
  for (const std::shared_ptr<Driver>& driver : drivers) {
    if (!driver->isFinished_ && !driver->session()->isUp()) {
      driver->finish();
      more = true; // mirrors have become stale, which may have changed something
    }
  }
  if (more) {
    soon();
  }
  timerIs();
  if (after_) {
    const std::function<void()> after = after_; // which may set another
    after();
  }
}

void Turns::timerIs() {
  double next = Zel::Session::never;
  for (const std::shared_ptr<Driver>& driver : drivers_) {
    next = std::min(next, driver->session()->deadline());
  }
  if (next == Zel::Session::never) {
    timer_.cancel();
    return;
  }
  const std::chrono::duration<double> left(std::max(0.0, next - now()));
  timer_.expires_after(std::chrono::duration_cast<std::chrono::nanoseconds>(left) +
                       std::chrono::milliseconds(1)); // not a moment before
  timer_.async_wait([this, alive = alive_.watch()](const asio::error_code& ended) {
    if (!ended && !alive.expired()) {
      soon();
    }
  });
}

} // namespace Net
