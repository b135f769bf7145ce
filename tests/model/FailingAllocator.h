#pragma once

#include <cstddef>
#include <new>

namespace TestModel {

/// Allocations of the whole program since it began.
std::size_t allocations();

/// While it lives, the allocation of this number from now on, counted from 0, throws
/// `std::bad_alloc`; all others succeed.
class FailingAllocation {
public:
  explicit FailingAllocation(std::size_t number);
  ~FailingAllocation();
  FailingAllocation(FailingAllocation const&) = delete;
  FailingAllocation& operator=(FailingAllocation const&) = delete;
};

/// Does `work` with its first allocation failing, then with its second, and so on until it goes
/// through; after each failure `check` looks at what is left behind. Yields the number of failures.
template <class Work, class Check>
std::size_t failEachAllocation(Work&& work, Check&& check) {
  for (std::size_t number = 0;; ++number) {
    try {
      FailingAllocation const failing(number);
      work();
      return number;
    } catch (std::bad_alloc const&) {
      check();
    }
  }
}

} // namespace TestModel
