#pragma once

#include "Random.h"

#include <gtest/gtest.h>

#include <functional>
#include <pthread.h>

namespace KernelRandom {

/// Members of a collection at its limit. A teardown that recursed once for each would take more
/// stack than any thread here has.
inline constexpr unsigned million = scaled(1'000'000, 5);

/// Runs `work` to its end in a thread whose stack is too small for deep recursion.
inline void onSmallStack(std::function<void()> work) {
  constexpr std::size_t stack = sanitized ? 512 * 1024 : 128 * 1024;
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, stack), 0);
  const auto run = [](void* work_) -> void* {
    (*static_cast<std::function<void()>*>(work_))();
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  pthread_attr_destroy(&attributes);
}

} // namespace KernelRandom
