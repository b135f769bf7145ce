#include "sockets/Processes.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sched.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#include <utility>

namespace Bench::Sockets {

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double processorTime() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void fail(const std::string& why) {
  std::fprintf(stderr, "%s\n", why.c_str());
  std::_Exit(1);
}

void placeIs(Place place) {
  const long count = sysconf(_SC_NPROCESSORS_ONLN);
  cpu_set_t places;
  CPU_ZERO(&places);
  for (int number = 0; number < count; ++number) {
    const bool isTaken =
        place == Place::any || (place == Place::first ? number == 0 : number + 1 == count);
    if (isTaken) {
      CPU_SET(static_cast<unsigned>(number), &places);
    }
  }
  if (sched_setaffinity(0, sizeof places, &places) != 0) {
    fail(std::string("sched_setaffinity: ") + std::strerror(errno));
  }
}

Pair::Pair() {
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends_) != 0) {
    fail(std::string("socketpair: ") + std::strerror(errno));
  }
  const int size = 1 << 20; // which the kernel cuts to what it allows
  for (const int end : ends_) {
    setsockopt(end, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
  }
}

Pair::~Pair() {
  for (const int end : ends_) {
    if (end >= 0) {
      close(end);
    }
  }
}

int Pair::keep(int kept) {
  if (const int other = std::exchange(ends_[1 - kept], -1); other >= 0) {
    close(other);
  }
  return ends_[kept];
}

int Pair::writerEnd() { return keep(0); }
int Pair::readerEnd() { return keep(1); }

void writeAll(int socket, const void* bytes, std::size_t count) {
  const char* at = static_cast<const char*>(bytes);
  while (count != 0) {
    const ssize_t done = send(socket, at, count, MSG_NOSIGNAL);
    if (done < 0) {
      fail(std::string("send: ") + std::strerror(errno));
    }
    at += done;
    count -= static_cast<std::size_t>(done);
  }
}

std::size_t readSome(int socket, void* to, std::size_t room) {
  const ssize_t done = read(socket, to, room);
  if (done <= 0) {
    fail(done == 0 ? std::string("the peer has gone")
                   : std::string("read: ") + std::strerror(errno));
  }
  return static_cast<std::size_t>(done);
}

void readAll(int socket, void* to, std::size_t count) {
  for (char* at = static_cast<char*>(to); count != 0;) {
    const std::size_t done = readSome(socket, at, count);
    at += done;
    count -= done;
  }
}

void Board::endedAt(double time) {
  for (double seen = ended; seen < time && !ended.compare_exchange_weak(seen, time);) {
  }
}

SharedBoard::SharedBoard() {
  void* const page =
      mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (page == MAP_FAILED) {
    fail(std::string("mmap: ") + std::strerror(errno));
  }
  board_ = new (page) Board;
}

SharedBoard::~SharedBoard() { munmap(board_, sizeof(Board)); }

void pause() {
  siginfo_t ended{};
  if (waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid != 0 &&
      (ended.si_code != CLD_EXITED || ended.si_status != 0)) {
    fail("the other process ended with status " + std::to_string(ended.si_status));
  }
  usleep(200);
}

namespace {

pid_t forked(const std::function<void()>& work) {
  const pid_t id = fork();
  if (id < 0) {
    fail(std::string("fork: ") + std::strerror(errno));
  }
  if (id == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL); // who waits for a process that has failed waits for ever
    work();
    std::_Exit(0);
  }
  return id;
}

} // namespace

Process::Process(const std::function<void()>& work) : id_(forked(work)) {}

Process::~Process() {
  int status = 0;
  if (waitpid(id_, &status, 0) != id_ || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    fail("the other process ended with status " + std::to_string(status));
  }
}

} // namespace Bench::Sockets
