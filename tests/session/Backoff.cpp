#include <Zel/Backoff>
#include <Zel/Exception>

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

using Zel::Backoff;

TEST(Backoff, DoublesUpToItsLimitAndIsShortAgainAfterASuccess) {
  Backoff backoff(1, {1, 10, 2, 0});
  for (const double wait : {1.0, 2.0, 4.0, 8.0, 10.0, 10.0}) {
    EXPECT_EQ(backoff.next(), wait);
  }
  backoff.reset();
  EXPECT_EQ(backoff.next(), 1);
  EXPECT_EQ(backoff.next(), 2);
}

TEST(Backoff, WaitsAreSpreadOverTheLastPart) {
  double least = 1;
  double most = 0;
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    const double wait = Backoff(seed, {1, 1, 1, 0.25}).next();
    least = std::min(least, wait);
    most = std::max(most, wait);
  }
  EXPECT_GT(least, 0.75);
  EXPECT_LT(least, 0.76);
  EXPECT_GT(most, 0.99);
  EXPECT_LE(most, 1);
}

TEST(Backoff, NoWaitIsNothingEvenWhereAllOfItIsJitter) {
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    EXPECT_GT(Backoff(seed, {1, 1, 1, 1}).next(), 0);
  }
}

TEST(Backoff, TheSameSeedGivesTheSameWaitsAndAnotherOthers) {
  Backoff one(7);
  Backoff same(7);
  Backoff other(8);
  std::set<double> waits;
  for (int count = 0; count < 20; ++count) {
    const double wait = one.next();
    EXPECT_EQ(same.next(), wait);
    EXPECT_NE(other.next(), wait);
    EXPECT_LE(wait, 30);
    waits.insert(wait);
  }
  EXPECT_EQ(waits.size(), 20U);
}

TEST(Backoff, TimesThatMakeNoSenseAreRefused) {
  const auto messageOf = [](const Backoff::Times& times) {
    try {
      const Backoff backoff(1, times);
    } catch (const Zel::RangeException& failure) {
      return std::string(failure.message().charPtr());
    }
    return std::string();
  };
  const double nan = std::nan("");
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(messageOf({0, 1, 2, 0}), "back-off times out of order");
  EXPECT_EQ(messageOf({2, 1, 2, 0}), "back-off times out of order");
  EXPECT_EQ(messageOf({nan, 1, 2, 0}), "back-off times out of order");
  EXPECT_EQ(messageOf({1, nan, 2, 0}), "back-off times out of order");
  EXPECT_EQ(messageOf({1, infinity, 2, 0}), "back-off times out of order");
  EXPECT_EQ(messageOf({1, 1, 0.5, 0}), "back-off factor below 1");
  EXPECT_EQ(messageOf({1, 1, nan, 0}), "back-off factor below 1");
  EXPECT_EQ(messageOf({1, 1, 1, -0.1}), "back-off jitter outside of 0 to 1");
  EXPECT_EQ(messageOf({1, 1, 1, 1.1}), "back-off jitter outside of 0 to 1");
  EXPECT_EQ(messageOf({1, 1, 1, 1}), "");
}

} // namespace
