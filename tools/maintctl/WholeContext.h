#pragma once

#include "Commands.h"

namespace Maintctl {

/// Makes the device when it is asked for. References in values resolve in its tree.
class WholeContext : public Context {
public:
  /// Whether a device whose connection has ended is made anew when it is next asked for. Not for
  /// scripts: their lines are meant for one server.
  enum Renewal { lasting, renewed };

  WholeContext(const Options& options, std::ostream& out, Renewal renewal = lasting)
      : Context(options, out), renewal_(renewal) {}
  ~WholeContext() = default;

  Device& device() override;
  /// Whether that has happened since this was last asked.
  bool takeRenewed() { return std::exchange(isRenewed_, false); }

private:
  const Renewal renewal_;
  std::unique_ptr<Device> device_;
  std::optional<Zel::Dir::Active> references_;
  bool hasEnded_ = false;
  bool isRenewed_ = false;
};

} // namespace Maintctl
