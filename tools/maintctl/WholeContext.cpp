#include "WholeContext.h"

namespace Maintctl {

Device& WholeContext::device() {
  if (renewal_ == renewed && device_ != nullptr && !device_->isThere()) {
    references_.reset();
    device_ = nullptr;
    hasEnded_ = true;
  }
  if (device_ == nullptr) {
    device_ = deviceFor(options());
    references_.emplace(device_->dir());
    isRenewed_ = isRenewed_ || std::exchange(hasEnded_, false);
  }
  return *device_;
}

} // namespace Maintctl
