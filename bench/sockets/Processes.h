#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <sys/types.h>

/// What the programs of this folder have in common: two processes and what lies between them. None
/// of it knows the library.
namespace Bench::Sockets {

/// What a program measures, by name: each yields the nanoseconds that one piece of work takes, or
/// the number that its name says.
using Operations = std::map<std::string, std::function<double()>>;
Operations operations();

/// Seconds of a clock that all processes share.
double now();

/// Seconds of processor time that the calling process has had.
double processorTime();

/// Ends the process with a line on standard error.
[[noreturn]] void fail(const std::string& why);

/// Where a process runs: writers on the first CPU and readers on the last, or the scheduler
/// decides.
enum class Place : std::uint8_t { first, last, any };
void placeIs(Place place);

/// A connected pair of stream sockets, of which each process keeps one end.
class Pair {
public:
  Pair();
  ~Pair();
  Pair(const Pair&) = delete;
  Pair& operator=(const Pair&) = delete;

  /// The two ends. Taking one closes the other.
  int writerEnd();
  int readerEnd();

private:
  int keep(int kept);

  int ends_[2] = {-1, -1};
};

/// Writes all of it; ends the process if that fails.
void writeAll(int socket, const void* bytes, std::size_t count);
/// Reads what is there, at least one byte; ends the process if the peer has gone.
std::size_t readSome(int socket, void* to, std::size_t room);
/// Reads all of it.
void readAll(int socket, void* to, std::size_t count);

/// What two processes tell each other beside the sockets.
struct Board {
  std::atomic<bool> writerReady{false};
  std::atomic<unsigned> readersReady{0};
  std::atomic<bool> isOver{false};
  std::atomic<double> started{0};
  std::atomic<double> ended{0};
  std::atomic<double> writerTime{0}; // of processors, while it measured
  std::atomic<double> readerTime{0};
  std::atomic<std::uint64_t> bytes{0};  // that were measured
  std::atomic<std::uint64_t> digest{0}; // of what the writer has in the end
  std::atomic<std::uint64_t> sent{0};   // bytes in all; told last

  /// The time of the last who ends counts.
  void endedAt(double time);
};

/// A board that processes forked later share.
class SharedBoard {
public:
  SharedBoard();
  ~SharedBoard();
  SharedBoard(const SharedBoard&) = delete;
  SharedBoard& operator=(const SharedBoard&) = delete;
  Board& operator*() const { return *board_; }
  Board* operator->() const { return board_; }

private:
  Board* board_;
};

/// Waits, without a wake-up that anybody would have to pay for. Ends the process if one that it has
/// made has failed meanwhile.
template <class Condition>
void waitFor(const Condition& isTrue);
void pause();

template <class Condition>
void waitFor(const Condition& isTrue) {
  while (!isTrue()) {
    pause();
  }
}

/// A process that runs `work` and ends. What the other processes have is still theirs.
class Process {
public:
  explicit Process(const std::function<void()>& work);
  /// Waits for its end, which fails this process too if it was none in order.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

private:
  const pid_t id_;
};

} // namespace Bench::Sockets
