#include "Subject.h"

#include <limits>

namespace Conformance {

namespace {

/// Attributes of an object that have one value and can be written, with two notifiees on it.
class Singular : public testing::TestWithParam<Case> {
protected:
  const Subject& subject() const { return *GetParam().subject; }
  const Zel::AttrRow& row() const { return *GetParam().row; }
  AnyValue read() const { return GetParam().read(object); }
  unsigned version() const {
    return object.entity != nullptr ? object.entity->versionCounter() : 0;
  }
  unsigned reads() const { return object.entity != nullptr ? object.entity->readCounter() : 0; }
  /// What a counter moves by: nothing on an object without counters.
  unsigned one() const { return object.entity != nullptr ? 1 : 0; }

  const Object object = subject().make();
  const Listener first = subject().listen(object);
  const Listener second = subject().listen(object);
  const std::vector<Heard> once{{row().id, std::nullopt}};
};

TEST_P(Singular, IsReadAsItWasWrittenAndCountsAndTellsEachChangeOnce) {
  unsigned changes = 0;
  for (const AnyValue& sample : GetParam().samples()) {
    SCOPED_TRACE(testing::PrintToString(sample));
    const bool change = !(read() == sample);
    const unsigned versionBefore = version();
    const unsigned readsBefore = reads();

    row().write(object.at(), sample.at());

    EXPECT_EQ(reads(), readsBefore);
    EXPECT_EQ(version(), versionBefore + (change ? one() : 0));
    EXPECT_EQ(first.log->heard, change ? once : std::vector<Heard>());
    EXPECT_EQ(second.log->heard, first.log->heard);
    EXPECT_EQ(GetParam().typed().read(object.at()), sample);
    EXPECT_EQ(read(), sample);
    first.log->heard.clear();
    second.log->heard.clear();
    changes += change ? 1 : 0;
  }
  EXPECT_GE(changes, 1U);
}

TEST_P(Singular, IsSilentAndUncountedOnAnEqualWrite) {
  for (const AnyValue& sample : GetParam().samples()) {
    SCOPED_TRACE(testing::PrintToString(sample));
    row().write(object.at(), sample.at());
    first.log->heard.clear();
    const unsigned versionBefore = version();
    const unsigned readsBefore = reads();

    row().write(object.at(), sample.at());

    EXPECT_EQ(version(), versionBefore);
    EXPECT_EQ(reads(), readsBefore);
    EXPECT_TRUE(first.log->heard.empty());
  }
}

TEST_P(Singular, TakesNaNOverNaNForAChange) {
  const auto nan = nanOf(*row().value);
  if (!nan) {
    EXPECT_EQ(samplesOf(*row().value).front(), AnyValue(*row().value)); // equals itself
    return;
  }
  row().write(object.at(), nan->at());
  row().write(object.at(), nan->at());

  EXPECT_EQ(version(), 2 * one());
  EXPECT_EQ(first.log->heard.size(), 2U);
}

TEST_P(Singular, ReportsItsIdToANotifieeThatThrowsAndGoesOn) {
  first.log->throws = true;
  const AnyValue initial = read();
  const AnyValue& sample = GetParam().samples()[initial == GetParam().samples()[0] ? 1 : 0];

  row().write(object.at(), sample.at());

  EXPECT_EQ(read(), sample);
  EXPECT_EQ(version(), one());
  EXPECT_EQ(first.log->heard, once);
  EXPECT_EQ(first.log->failures, std::vector{row().id});
  EXPECT_EQ(second.log->heard, once);
  EXPECT_TRUE(second.log->failures.empty());
}

TEST_P(Singular, NamesItsOwnCallbackInTheRow) {
  row().tell(*first.notifiee);

  EXPECT_EQ(first.log->heard, once);
  EXPECT_TRUE(second.log->heard.empty());
  EXPECT_EQ(version(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Attributes, Singular, testing::ValuesIn(casesOf([](const auto& row) {
                           return row.kind == Zel::AttrKind::singular ||
                                  row.kind == Zel::AttrKind::counter;
                         })),
                         caseName);

class Counter : public Singular {};

TEST_P(Counter, MovesTheReadCounterAloneAndYieldsTheSum) {
  const unsigned readsBefore = reads();

  EXPECT_EQ(row().increment(object.at(), 5), 5U);
  EXPECT_EQ(row().increment(object.at(), 2), 7U);

  EXPECT_EQ(reads(), readsBefore + 2 * one());
  EXPECT_EQ(version(), 0U);
  EXPECT_EQ(first.log->heard.size(), 2U);
  EXPECT_EQ(read(), AnyValue::of(7U));
}

TEST_P(Counter, TellsNobodyOfAnIncrementByNothing) {
  const unsigned readsBefore = reads();

  EXPECT_EQ(row().increment(object.at(), 0), 0U);

  EXPECT_EQ(reads(), readsBefore + one());
  EXPECT_EQ(version(), 0U);
  EXPECT_TRUE(first.log->heard.empty());
}

TEST_P(Counter, WrapsAround) {
  EXPECT_EQ(row().increment(object.at(), std::numeric_limits<unsigned>::max()),
            std::numeric_limits<unsigned>::max());
  EXPECT_EQ(row().increment(object.at(), 1), 0U);
  EXPECT_EQ(read(), AnyValue::of(0U));
  EXPECT_EQ(first.log->heard.size(), 2U);
}

TEST_P(Counter, ReportsItsIdToANotifieeThatThrows) {
  first.log->throws = true;

  EXPECT_EQ(row().increment(object.at(), 1), 1U);

  EXPECT_EQ(first.log->failures, std::vector{row().id});
  EXPECT_EQ(second.log->heard, once);
}

INSTANTIATE_TEST_SUITE_P(Attributes, Counter, testing::ValuesIn(casesOf([](const auto& row) {
                           return row.kind == Zel::AttrKind::counter;
                         })),
                         caseName);

} // namespace

} // namespace Conformance
