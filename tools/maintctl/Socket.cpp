#include "Socket.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace Maintctl {

namespace {

constexpr const char* fileName = "maintctl.sock";

std::string environment(const char* name) {
  const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): one thread
  return value != nullptr ? value : "";
}

/// A client goes to the user's own server, if there is one; who serves makes it, but root the
/// device's.
std::string present(const SocketPlaces& places) {
  std::error_code none;
  const bool hasOwn = !places.own.empty() && std::filesystem::exists(places.own, none);
  return hasOwn ? places.own : places.system;
}

std::string fresh(const SocketPlaces& places) {
  if (places.isRoot) {
    return places.system;
  }
  if (places.own.empty()) {
    throw Failure(exitUsage, "serve has no place for its socket, as XDG_RUNTIME_DIR is not set: "
                             "maintctl --socket PATH serve");
  }
  return places.own;
}

} // namespace

SocketPlaces SocketPlaces::here() {
  SocketPlaces places;
  places.named = environment("MAINTCTL_SOCKET");
  if (const std::string folder = environment("XDG_RUNTIME_DIR"); folder.starts_with('/')) {
    places.own = folder + "/" + fileName;
  }
  places.system = std::string("/run/") + fileName;
  places.isRoot = geteuid() == 0;
  return places;
}

void settleSocket(Options& options, DefaultTree tree, const SocketPlaces& places) {
  if (options.isLocal) {
    if (!options.socket.empty()) {
      throw Failure(exitUsage, "--local is a tree of its own, --socket one of a server: leave out "
                               "one of them");
    }
    if (tree == DefaultTree::served) {
      throw Failure(exitUsage, "serve needs a socket, leave out --local");
    }
    return;
  }
  if (options.socket.empty()) {
    options.socket = places.named;
  }
  if (!options.socket.empty() || tree == DefaultTree::own) {
    return;
  }
  options.socket = tree == DefaultTree::served ? fresh(places) : present(places);
}

} // namespace Maintctl
