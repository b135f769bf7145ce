#pragma once

#include <Zel/ValueRecord>

#include <utility>

namespace Zel {

/// Does something at the end of its scope, on exceptions too. It must not throw.
template <class Action>
class Finally {
public:
  explicit Finally(Action action) : action_(std::move(action)) {}
  ~Finally() { action_(); }
  Finally(const Finally&) = delete;
  Finally& operator=(const Finally&) = delete;

private:
  const Action action_;
};

/// Whether two keys are the same one: those that equal nothing, such as NaN, are taken for one.
inline bool isSameKey(const ValueRecord& type, const void* a, const void* b) {
  return type.equal(a, b) || (!type.equal(a, a) && !type.equal(b, b));
}

} // namespace Zel
