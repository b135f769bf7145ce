/// Looks at and changes the tree of a device, in this process or in a server. Begin with Commands.h
/// and Tree.h; each command stands in a file of its own.

#include "CommandLine.h"
#include "Guard.h"
#include "Output.h"
#include "Types.h"
#include "Utf8.h"
#include "WholeContext.h"

#include <unistd.h>

#include <csignal>
#include <iostream>

namespace {

using namespace Maintctl;

int runWords(const std::vector<std::string>& words, std::ostream& out) {
  Options options;
  const std::unique_ptr<Command> command = commandOf(words, options, out);
  if (command == nullptr) {
    return exitDone;
  }
  for (const std::string& file : options.types) {
    loadTypes(file);
  }
  WholeContext context(options, out);
  return command->run(context);
}

/// The exit status for what is being caught, with its message on standard error.
int complain() {
  const Failure failure = currentFailure();
  if (failure.code() != exitPipe) {
    std::cerr << "maintctl: " << shown(failure.what()) << '\n';
  }
  return failure.code();
}

} // namespace

int main(int argc, char** argv) {
  // A reader that goes away shows as a failed write.
  std::signal(SIGPIPE, SIG_IGN);
  std::ios::sync_with_stdio(false);
  Output out(STDOUT_FILENO, "the output");
  int status = exitDone;
  try {
    status = runWords({argv + std::min(argc, 1), argv + argc}, out);
  } catch (...) {
    const int flushed = [&] {
      try {
        out.flush(); // what was printed comes before the complaint
        return int{exitDone};
      } catch (...) {
        return int{currentFailure().code()};
      }
    }();
    status = complain();
    return flushed == exitPipe ? flushed : status;
  }
  try {
    out.flush();
  } catch (...) {
    return complain();
  }
  return status;
}
