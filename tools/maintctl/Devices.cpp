#include "Commands.h"
#include "LocalDevice.h"
#include "RemoteDevice.h"

namespace Maintctl {

std::unique_ptr<Device> deviceFor(const Options& options) {
  if (!options.socket.empty()) {
    RemoteDevice::Settings settings;
    settings.path = options.socket;
    settings.timeout = options.timeout;
    settings.isStopped = options.isTyped;
    return std::make_unique<RemoteDevice>(settings);
  }
  return std::make_unique<LocalDevice>();
}

} // namespace Maintctl
