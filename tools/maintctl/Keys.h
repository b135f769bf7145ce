#pragma once

#include <signal.h>

#include <functional>
#include <string>

namespace Maintctl {

/// The keys of a terminal, read character by character. While there is an object, signals that a
/// terminal sends wait until the next key is waited for, and are dealt with there: a line editor
/// can be interrupted at no other place. At most one at a time.
class Keys {
public:
  /// What is to be done to the terminal: 0 puts it right for other programs, 1 takes it back, 2 is
  /// for a new size.
  enum Change { release, takeBack, resized };
  using Terminal = std::function<void(Change)>;

  Keys(int file, Terminal terminal);
  Keys(const Keys&) = delete;
  Keys& operator=(const Keys&) = delete;
  ~Keys();

  enum Result { key, interrupted, ended };
  /// Waits for one. A byte that belongs to no character is one, see `widened`. Is interrupted by
  /// SIGINT; a signal that ends the program does so when the terminal has been put right.
  Result next(wchar_t& to);

private:
  int nextByte();
  int awaitByte();
  void act(int signal) const;

  const int file_;
  const Terminal terminal_;
  sigset_t before_;     // the signals that were blocked
  std::string pending_; // bytes that have been read too far
};

} // namespace Maintctl
