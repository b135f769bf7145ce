#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace Bench::Sockets {

/// A measurement that yields several figures at once. Each run of it gives each figure once: asking
/// for one again makes another run.
class Together {
public:
  using Figures = std::map<std::string, double>;

  explicit Together(std::function<Figures()> run) : run_(std::move(run)) {}

  /// The figure of this name, which every run yields.
  double operator[](const std::string& name) {
    if (left_.count(name) == 0) {
      left_ = run_();
    }
    const double value = left_.at(name);
    left_.erase(name);
    return value;
  }

private:
  const std::function<Figures()> run_;
  Figures left_;
};

} // namespace Bench::Sockets
