#include <Zel/Exception>
#include <Zel/Trace>

#include <gtest/gtest.h>

#include <sstream>
#include <type_traits>

namespace {

using Zel::Exception;
using Zel::Expect;
using Zel::String8;

template <class Failure>
Exception::IdBitArray idsOf() {
  return Failure("message").ids();
}

TEST(Exceptions, CarryTheIdsOfTheirClassAndItsBases) {
  EXPECT_EQ(idsOf<Exception>(), Exception::IdBitArray().add(0));
  EXPECT_EQ(idsOf<Zel::InternalException>(), Exception::IdBitArray().add(0).add(11));
  EXPECT_EQ(idsOf<Zel::RangeException>(), Exception::IdBitArray().add(0).add(12));
  EXPECT_EQ(idsOf<Zel::NameInUseException>(), Exception::IdBitArray().add(0).add(16));
  EXPECT_EQ(idsOf<Zel::AttrLogRecordException>(), Exception::IdBitArray().add(0).add(48));
  EXPECT_EQ(idsOf<Zel::EntityIdUnavailableException>(), Exception::IdBitArray().add(0).add(48));
}

TEST(Exceptions, KeepTheIdsThatTheThrowerGives) {
  const Zel::RangeException failure("message", Exception::IdBitArray().add(20));
  EXPECT_EQ(failure.ids(), Exception::IdBitArray().add(20).add(12).add(0));
  EXPECT_FALSE(failure.ids().has(11));
}

TEST(Exceptions, ShareTheirMessageWhenCopied) {
  const Zel::RangeException failure("message");
  const Zel::RangeException copy = failure;
  EXPECT_EQ(&copy.message().data(), &failure.message().data());
  EXPECT_STREQ(copy.what(), "message");
  static_assert(std::is_nothrow_copy_constructible_v<Zel::RangeException>);
}

template <class Failure, class Throw>
void expectThrown(Throw&& raise) {
  try {
    raise();
    FAIL() << "nothing thrown";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.message(), String8("text"));
  }
}

TEST(Exceptions, AreThrownByTheFreeOperations) {
  expectThrown<Zel::RangeException>([] { Zel::throwRangeException("text"); });
  expectThrown<Zel::RangeException>([] { Zel::throwRangeException(String8("text")); });
  expectThrown<Zel::InternalException>([] { Zel::throwInternalException("text"); });
  expectThrown<Zel::InternalException>([] { Zel::throwInternalException(String8("text")); });
}

TEST(Exceptions, AreCaughtAsTheirBaseAndAsStdExceptionAcrossTheLibrary) {
  EXPECT_THROW(Zel::throwRangeException("text"), Exception);
  EXPECT_THROW(Zel::throwInternalException("text"), std::exception);
}

TEST(ExpectScopes, NestAndEndWithTheirScopeAlsoOnAnException) {
  EXPECT_FALSE(Expect::expects(12));
  {
    const Expect outer(12);
    try {
      const Expect inner(16);
      EXPECT_TRUE(Expect::expects(12));
      EXPECT_TRUE(Expect::expects(16));
      throw 1;
    } catch (int) {
      EXPECT_FALSE(Expect::expects(16));
    }
    EXPECT_TRUE(Expect::expects(12));
  }
  EXPECT_FALSE(Expect::expects(12));
}

/// Restores the trace output when a test ends.
struct Trace : testing::Test {
  Trace() { Zel::traceStreamIs(&out); }
  ~Trace() override {
    Zel::traceStreamIs(nullptr);
    Zel::coverageStream_ = nullptr;
  }

  /// Runs a trace point of level 5 and yields how many flags it looked at.
  unsigned point(Zel::TraceFacility& facility) {
    const unsigned before = facility.reads();
    Zel::tracePoint(&facility, 5, "Mapping", 23, "winningProfile", [&](std::ostream& text) {
      ++built;
      text << 1.0 / 3.0;
    });
    return facility.reads() - before;
  }

  std::ostringstream out;
  int built = 0;
};

TEST_F(Trace, IsOffByDefaultAndBuildsNothing) {
  auto& facility = Zel::TraceFacility::named("TestOff");
  EXPECT_EQ(point(facility), 1U);
  facility.onIs(true);
  EXPECT_EQ(point(facility), 2U);
  EXPECT_EQ(built, 0);
  EXPECT_EQ(out.str(), "");
}

TEST_F(Trace, WritesOneLineWhenFacilityAndLevelAreOn) {
  auto& facility = Zel::TraceFacility::named("TestOn");
  facility.onIs(true);
  facility.levelIs(5, true);
  EXPECT_EQ(point(facility), 2U);
  EXPECT_EQ(out.str(), "TestOn/5 Mapping:23 winningProfile [<unknown>] winningProfile: "
                       "0.333333333333\n");
}

TEST_F(Trace, FeedsTheCoverageStreamWhateverTheLevels) {
  std::ostringstream coverage;
  Zel::coverageStream_ = &coverage;
  EXPECT_EQ(point(Zel::TraceFacility::named("TestCoverage")), 1U);
  EXPECT_EQ(built, 1);
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(coverage.str(), "TestCoverage/5 Mapping:23 winningProfile [<unknown>] "
                            "winningProfile: 0.333333333333\n");
}

TEST_F(Trace, HandlesOfOneNameShareTheFacility) {
  const Zel::TraceHandle first("TestShared", false);
  const Zel::TraceHandle second("TestShared", true);
  EXPECT_EQ(first.facility(), second.facility());
  EXPECT_EQ(first.facility(), &Zel::TraceFacility::named("TestShared"));
  EXPECT_TRUE(first.facility()->on());
  EXPECT_FALSE(first.facility()->level(5));
}

TEST_F(Trace, KnowsTheLevelsFromZeroToNine) {
  auto& facility = Zel::TraceFacility::named("TestLevels");
  facility.levelIs(9, true);
  EXPECT_TRUE(facility.level(9));
  EXPECT_FALSE(facility.level(10));
  EXPECT_FALSE(facility.level(-1));
  EXPECT_THROW(facility.levelIs(10, true), Zel::RangeException);
}

TEST_F(Trace, IsNotOfExceptions) {
  std::ostringstream coverage;
  Zel::coverageStream_ = &coverage;
  EXPECT_THROW(Zel::throwRangeException("unexpected"), Zel::RangeException);
  EXPECT_EQ(coverage.str(), "");
}

} // namespace
