#pragma once

#include "sockets/Driver.h"

namespace Bench::Sockets {

/// Makes a notifiee of a unit.
template <class T, class... Arguments>
Zel::Ptr<T> listener(const Zel::Ptr<Maintenance::Unit::Status>& unit, Arguments&&... arguments) {
  const auto made = Zel::makeObject<T>(std::forward<Arguments>(arguments)...);
  made->isRegisteredNotifieeIs(true);
  made->notifierIs(unit);
  return made;
}

/// A mirror of the units that takes their changes, each of them.
class Reader {
public:
  /// Is there when the mount is live.
  Reader(int socket, const SharedBoard& board);
  /// Puts a notifiee that counts on every unit.
  void listen();
  /// Reads all changes of so many rounds, and no record more.
  void run(std::size_t rounds);
  /// Reads little at a time and pauses, until the others are done; then it gets what it has missed.
  void runSlowly(std::size_t rounds);

private:
  std::uint64_t records() const;

  Mirror mirror_;
  const SharedBoard& board_;
  std::unique_ptr<Units> units_;
  std::uint64_t applied_ = 0;
  std::uint64_t heard_ = 0;
  std::vector<Zel::Ptr<Maintenance::Unit::Status::Notifiee>> recorders_;
};

} // namespace Bench::Sockets
