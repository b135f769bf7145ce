#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace Maintctl::Test {

/// A variable of the environment that is as before when the object goes.
class Variable {
public:
  explicit Variable(const char* name) : name_(name) {
    if (const char* const value = std::getenv(name)) {
      before_ = value;
    }
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { *this = before_ ? before_->c_str() : nullptr; }

  /// Null takes it away.
  void operator=(const char* value) const {
    value != nullptr ? setenv(name_, value, 1) : unsetenv(name_);
  }

private:
  const char* const name_;
  std::optional<std::string> before_;
};

} // namespace Maintctl::Test
