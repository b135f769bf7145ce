#include "Commands.h"
#include "LocalDevice.h"

namespace Maintctl {

std::unique_ptr<Device> deviceFor(const Options& options) {
  if (!options.socket.empty()) {
    throw Failure(exitNoServer,
                  "this program was built without sockets and cannot reach " + options.socket);
  }
  return std::make_unique<LocalDevice>();
}

} // namespace Maintctl
