#pragma once

#include <gtest/gtest.h>

namespace Support {

/// Expects that each of the six comparisons tells that `less` comes before `greater`.
template <class V>
void expectLess(const V& less, const V& greater) {
  EXPECT_TRUE(less < greater);
  EXPECT_FALSE(greater < less);
  EXPECT_TRUE(less <= greater);
  EXPECT_FALSE(greater <= less);
  EXPECT_TRUE(greater > less);
  EXPECT_FALSE(less > greater);
  EXPECT_TRUE(greater >= less);
  EXPECT_FALSE(less >= greater);
  EXPECT_FALSE(less == greater);
  EXPECT_FALSE(greater == less);
  EXPECT_TRUE(less != greater);
  EXPECT_TRUE(greater != less);
}

/// Expects that each of the six comparisons tells that two values are equal.
template <class V>
void expectEqual(const V& one, const V& other) {
  EXPECT_TRUE(one == other);
  EXPECT_FALSE(one != other);
  EXPECT_FALSE(one < other);
  EXPECT_FALSE(other < one);
  EXPECT_FALSE(one > other);
  EXPECT_FALSE(other > one);
  EXPECT_TRUE(one <= other);
  EXPECT_TRUE(other <= one);
  EXPECT_TRUE(one >= other);
  EXPECT_TRUE(other >= one);
}

} // namespace Support
