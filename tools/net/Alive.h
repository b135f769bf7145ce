#pragma once

#include <memory>

namespace Net {

/// A member of what hands itself to Asio's handlers. One that is queued already is called even
/// after it was cancelled, and finds out here whether its object is still there:
///
///     timer_.async_wait([this, alive = alive_.watch()](auto ended) {
///       if (!ended && !alive.expired()) { ... }
class Alive {
public:
  std::weak_ptr<void> watch() const noexcept { return token_; }

private:
  const std::shared_ptr<void> token_ = std::make_shared<char>();
};

} // namespace Net
