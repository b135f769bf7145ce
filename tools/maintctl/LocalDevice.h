#pragma once

#include "Device.h"

namespace Maintctl {

/// A tree in this process, with all the roots of a device, of which only the inputs hold something
/// at first: their sources.
class LocalDevice : public Device {
public:
  LocalDevice();

  const Zel::Ptr<Zel::Dir>& dir() const override { return dir_; }
  std::map<Zel::Name, Zel::String8> roots() override;
  void need(const Zel::Name& root, bool toWrite) override;
  void flush() override {}
  /// Nothing happens here but what this thread does, so it only asks.
  bool wait(const std::function<bool()>& isDone, double seconds) override;
  /// Throws `Failure`: there is nothing to compare with.
  Zel::Session::DigestResult verify(const Zel::Name& root) override;

private:
  const Zel::Ptr<Zel::Dir> dir_;
};

} // namespace Maintctl
