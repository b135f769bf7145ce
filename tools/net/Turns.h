#pragma once

#include "Alive.h"

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

/// Sessions over Unix sockets, on Asio. All of it belongs to the one thread that runs the
/// `io_context`, as do the entities.
namespace Net {

class Driver;

/// Gives the sessions of a program their turns. In a turn each reads what its socket has, up to a
/// budget, and applies it; then each writes what it owes by then. So what one peer changes leaves
/// for all others in the same turn, many small changes leave together, and a peer that says a lot
/// has one budget for each of the others'.
///
/// Sockets that become ready, and deadlines of sessions, begin a turn. A program that changes
/// entities at any other time says so:
///
///     unit->stateIs(Maintenance::Unit::active);
///     turns.soon();
class Turns {
public:
  explicit Turns(asio::io_context& io);
  Turns(const Turns&) = delete;
  Turns& operator=(const Turns&) = delete;
  /// Ends the sessions that are left.
  ~Turns();

  asio::io_context& io() const noexcept { return io_; }
  /// Seconds of a clock that does not go back, as sessions are told.
  static double now();

  /// Asks for a turn; any number of times before it for the same one.
  void soon();
  /// Is called at the end of each turn; may be empty.
  void afterEachIs(std::function<void()> after) { after_ = std::move(after); }
  /// How many there have been.
  std::uint64_t count() const noexcept { return count_; }

private:
  friend class Driver;

  void driverIs(std::shared_ptr<Driver> driver);
  void driverDel(const Driver& driver);
  void run();
  void timerIs();

  asio::io_context& io_;
  asio::steady_timer timer_;
  std::vector<std::shared_ptr<Driver>> drivers_;
  std::function<void()> after_;
  std::uint64_t count_ = 0;
  bool isSoon_ = false;
  const Alive alive_;
};

} // namespace Net
