#pragma once

#include <Zel/PtrInterface>

namespace Bench {

/// Sets the process-wide switch of the reference words for its own lifetime.
class Switch {
public:
  explicit Switch(bool on) noexcept : before_(Zel::VFPtrInterface::enableThreadSafePointers) {
    Zel::VFPtrInterface::enableThreadSafePointers = on;
  }
  ~Switch() { Zel::VFPtrInterface::enableThreadSafePointers = before_; }
  Switch(const Switch&) = delete;
  Switch& operator=(const Switch&) = delete;

private:
  const bool before_;
};

} // namespace Bench
