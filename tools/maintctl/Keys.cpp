#include "Keys.h"

#include "Utf8.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace Maintctl {

namespace {

constexpr std::array handled = {SIGINT, SIGQUIT, SIGTSTP, SIGHUP, SIGTERM, SIGWINCH};
constexpr int noByte = -1;
constexpr int stopped = -2;

volatile std::sig_atomic_t caught = 0;                // the last one that came
std::array<struct sigaction, handled.size()> actions; // of the program, outside

sigset_t allSignals() {
  sigset_t all;
  sigemptyset(&all);
  for (const int signal : handled) {
    sigaddset(&all, signal);
  }
  return all;
}

} // namespace

Keys::Keys(int file, Terminal terminal) : file_(file), terminal_(std::move(terminal)) {
  const sigset_t all = allSignals();
  sigprocmask(SIG_BLOCK, &all, &before_);
  struct sigaction action = {};
  action.sa_handler = [](int signal) { caught = signal; };
  action.sa_mask = all;
  for (std::size_t at = 0; at < handled.size(); ++at) {
    sigaction(handled[at], &action, &actions[at]);
  }
}

Keys::~Keys() {
  for (std::size_t at = 0; at < handled.size(); ++at) {
    sigaction(handled[at], &actions[at], nullptr);
  }
  sigprocmask(SIG_SETMASK, &before_, nullptr);
}

/// What the program would have done, with the terminal put right for as long.
void Keys::act(int signal) const {
  if (signal == SIGWINCH) {
    terminal_(resized);
    return;
  }
  for (std::size_t at = 0; at < handled.size(); ++at) {
    if (handled[at] != signal) {
      continue;
    }
    terminal_(release);
    struct sigaction mine;
    sigaction(signal, &actions[at], &mine);
    raise(signal);
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    sigset_t blocked;
    sigprocmask(SIG_UNBLOCK, &one, &blocked); // here it acts: SIGTSTP returns once it goes on
    sigprocmask(SIG_SETMASK, &blocked, nullptr);
    sigaction(signal, &mine, nullptr);
    terminal_(takeBack);
  }
}

int Keys::awaitByte() {
  while (true) {
    pollfd ready = {file_, POLLIN, 0};
    caught = 0;
    const int count = ppoll(&ready, 1, nullptr, &before_);
    if (count < 0 && errno == EINTR) {
      if (caught == SIGINT) {
        return stopped;
      }
      if (caught != 0) {
        act(caught);
      }
      continue;
    }
    unsigned char byte = 0;
    const ssize_t got = count < 0 ? -1 : read(file_, &byte, 1);
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) {
      continue;
    }
    return got == 1 ? byte : noByte;
  }
}

int Keys::nextByte() {
  if (pending_.empty()) {
    return awaitByte();
  }
  const auto byte = static_cast<unsigned char>(pending_.front());
  pending_.erase(0, 1);
  return byte;
}

Keys::Result Keys::next(wchar_t& to) {
  std::string bytes;
  do {
    const int byte = nextByte();
    if (byte == stopped) {
      return interrupted;
    }
    if (byte == noByte) {
      break;
    }
    bytes += static_cast<char>(byte);
  } while (mayGoOn(bytes));
  if (bytes.empty()) {
    return ended;
  }
  const std::wstring wide = widened(bytes);
  to = wide.front();
  pending_.insert(0, bytes, narrowed(wide.substr(0, 1)).size());
  return key;
}

} // namespace Maintctl
