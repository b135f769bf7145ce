#pragma once

#include <Zel/PtrInterface>

namespace KernelRandom {

/// Follows the counted objects that are made while it stands.
class Tracking {
public:
  Tracking() : before_(Zel::PtrTrack::count()) { Zel::ptrifTrackOn_ = true; }
  Tracking(const Tracking&) = delete;
  Tracking& operator=(const Tracking&) = delete;
  ~Tracking() { Zel::ptrifTrackOn_ = false; }

  std::size_t living() const { return Zel::PtrTrack::count() - before_; }

private:
  const std::size_t before_;
};

} // namespace KernelRandom
