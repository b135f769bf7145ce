#pragma once

#include <stdexcept>
#include <string>

namespace Maintctl {

/// What the program ends with. Scripts rely on the numbers.
enum ExitCode : int {
  exitDone = 0,
  exitFailed = 1,    ///< what no other number stands for
  exitUsage = 2,     ///< the command line makes no sense
  exitNotFound = 3,  ///< nothing under the path
  exitBadValue = 4,  ///< a text that is no value of the attribute's type, or a bad line of a file
  exitRefused = 5,   ///< read-only, by the model or by the server, or no right to connect
  exitNoServer = 6,  ///< no server there, or the connection has ended
  exitTimeout = 7,   ///< `wait` or a server took too long
  exitDiffers = 8,   ///< `verify`: the mirror differs; `set --if`: the value does
  exitFile = 9,      ///< a file could not be read or written
  exitStopped = 130, ///< stopped by Ctrl-C
  exitPipe = 141,    ///< whoever read the output has gone; nothing is said
};

/// Ends a command with a message for the user, which tells what to do next where there is
/// something.
class Failure : public std::runtime_error {
public:
  Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  ExitCode code() const noexcept { return code_; }

private:
  ExitCode code_;
};

} // namespace Maintctl
