#pragma once

#include "Commands.h"

#include <string>

namespace Maintctl {

/// Where a user has sockets, where the words of a command name none.
struct SocketPlaces {
  std::string named;  ///< by `MAINTCTL_SOCKET`; empty if by nobody
  std::string own;    ///< in `XDG_RUNTIME_DIR`; empty if the user has no such folder
  std::string system; ///< the device's
  bool isRoot = false;

  /// Those of who runs the program.
  static SocketPlaces here();
};

/// Completes `options.socket` for a command that acts on such a tree: the path of its server, or
/// empty if it is one of its own. Throws `Failure` with `exitUsage` where the options contradict
/// each other, or a server is to be made and there is no place for it.
void settleSocket(Options& options, DefaultTree tree, const SocketPlaces& places);

} // namespace Maintctl
