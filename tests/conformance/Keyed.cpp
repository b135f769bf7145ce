#include "Keyed.h"

#include <gmock/gmock.h>

#include <limits>

namespace Conformance {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(Keyed, AddsAnAbsentKeyCountsOnceAndTellsIt) {
  unsigned count = 0;
  for (const Entry& entry : entries()) {
    SCOPED_TRACE(testing::PrintToString(entry.key));
    EXPECT_FALSE(ops().exists(object.at(), entry.key.at()));
    const unsigned mapVersion = ops().version(object.at());
    const unsigned readsBefore = reads();

    write(entry.key, entry.value);

    EXPECT_EQ(reads(), readsBefore);
    EXPECT_EQ(ops().count(object.at()), ++count);
    EXPECT_EQ(version(), count * one());
    EXPECT_EQ(ops().version(object.at()), mapVersion + 1);
    EXPECT_TRUE(ops().exists(object.at(), entry.key.at()));
    EXPECT_EQ(read(entry.key), entry.value);
    EXPECT_EQ(GetParam().typed().lookUp(object.at(), entry.key.at()), entry.value);
    expectTold(entry.key);
  }
  EXPECT_GE(count, 3U);
}

TEST_P(Keyed, AddsAnAbsentKeyWithADefaultValueToo) {
  const Entry entry = entries().front();
  write(entry.key, AnyValue(*row().value));

  EXPECT_EQ(ops().count(object.at()), 1U);
  EXPECT_TRUE(ops().exists(object.at(), AnyValue(*row().key).at()));
  EXPECT_EQ(version(), one());
  expectTold(AnyValue(*row().key));
}

TEST_P(Keyed, IsSilentAndUncountedOnAnEqualWrite) {
  const Entry entry = entries().back();
  write(entry.key, entry.value);
  heardKeys();

  write(entry.key, entry.value);

  EXPECT_EQ(ops().count(object.at()), 1U);
  EXPECT_EQ(version(), one());
  EXPECT_THAT(heardKeys(), IsEmpty());
}

TEST_P(Keyed, OverwritesTheValueOfAKeyInPlace) {
  for (const Entry& entry : entries()) {
    SCOPED_TRACE(testing::PrintToString(entry.key));
    write(entry.key, entry.value);
    heardKeys();
    const unsigned mapVersion = ops().version(object.at());
    const unsigned count = ops().count(object.at());
    const unsigned before = version();

    write(entry.key, entry.other);

    EXPECT_EQ(ops().version(object.at()), mapVersion);
    EXPECT_EQ(ops().count(object.at()), count);
    EXPECT_EQ(version(), before + one());
    EXPECT_EQ(read(entry.key), entry.other);
    EXPECT_EQ(GetParam().typed().lookUp(object.at(), entry.key.at()), entry.other);
    expectTold(entry.key);
  }
}

TEST_P(Keyed, ReadsADefaultForAnAbsentKeyAndCreatesNothing) {
  const unsigned readsBefore = reads();
  const AnyValue key = entries().back().key;

  EXPECT_EQ(read(key), AnyValue(*row().value));
  EXPECT_EQ(reads(), readsBefore + one());
  EXPECT_EQ(GetParam().typed().lookUp(object.at(), key.at()), AnyValue(*row().value));
  EXPECT_EQ(reads(), readsBefore + 2 * one());
  EXPECT_EQ(ops().count(object.at()), 0U);
  EXPECT_EQ(version(), 0U);
}

TEST_P(Keyed, ErasesOneKeyCountsOnceAndTellsIt) {
  const auto all = entries();
  for (const Entry& entry : all) {
    write(entry.key, entry.value);
  }
  heardKeys();
  const unsigned before = version();
  const unsigned mapVersion = ops().version(object.at());

  EXPECT_TRUE(ops().erase(object.at(), all[1].key.at()));

  EXPECT_EQ(version(), before + one());
  EXPECT_EQ(ops().version(object.at()), mapVersion + 1);
  EXPECT_EQ(ops().count(object.at()), all.size() - 1);
  EXPECT_FALSE(ops().exists(object.at(), all[1].key.at()));
  EXPECT_EQ(read(all[0].key), all[0].value);
  EXPECT_EQ(read(all[2].key), all[2].value);
  expectTold(all[1].key);

  EXPECT_FALSE(ops().erase(object.at(), all[1].key.at()));
  EXPECT_EQ(version(), before + one());
  EXPECT_THAT(heardKeys(), IsEmpty());
}

TEST_P(Keyed, TakesOneKeyAndYieldsWhatItHeld) {
  const auto all = entries();
  for (const Entry& entry : all) {
    write(entry.key, entry.value);
  }
  heardKeys();
  const unsigned before = version();
  const auto take = [&](const AnyValue& key) {
    return AnyValue(*row().value, [&](void* to) { ops().take(object.at(), key.at(), to); });
  };

  EXPECT_EQ(take(all[1].key), all[1].value);

  EXPECT_EQ(version(), before + one());
  EXPECT_FALSE(ops().exists(object.at(), all[1].key.at()));
  expectTold(all[1].key);
  EXPECT_EQ(take(all[1].key), AnyValue(*row().value));
  EXPECT_EQ(version(), before + one());
  EXPECT_THAT(heardKeys(), IsEmpty());
}

TEST_P(Keyed, ErasesAllKeysOneByOne) {
  const auto all = entries();
  std::vector<AnyValue> keys;
  for (std::size_t i = all.size(); i-- > 0;) {
    write(all[i].key, all[i].value);
    keys.insert(keys.begin(), all[i].key);
  }
  heardKeys();
  const unsigned before = version();

  ops().eraseAll(object.at());

  EXPECT_EQ(ops().count(object.at()), 0U);
  EXPECT_EQ(version(), before + all.size() * one());
  if (silent()) {
    EXPECT_THAT(heardKeys(), IsEmpty());
  } else if (row().kind == Zel::AttrKind::ordered) {
    EXPECT_EQ(heardKeys(), keys);
  } else {
    EXPECT_THAT(heardKeys(), testing::UnorderedElementsAreArray(keys));
  }
  ops().eraseAll(object.at());
  EXPECT_EQ(version(), before + all.size() * one());
}

TEST_P(Keyed, AnnouncesAnyKeyWithoutAChange) {
  const AnyValue key = entries()[1].key;

  ops().announce(object.at(), key.at());

  EXPECT_EQ(version(), 0U);
  EXPECT_EQ(reads(), 0U);
  EXPECT_EQ(ops().count(object.at()), 0U);
  expectTold(key);
}

TEST_P(Keyed, ReportsItsIdToANotifieeThatThrowsAndGoesOn) {
  const Entry entry = entries()[1];
  if (silent()) {
    EXPECT_EQ(ops().tellKey, nullptr);
    return;
  }
  first.log->throws = true;
  write(entry.key, entry.value);
  write(entry.key, entry.other);
  ops().erase(object.at(), entry.key.at());

  EXPECT_THAT(first.log->failures, ElementsAre(row().id, row().id, row().id));
  EXPECT_EQ(second.log->heard.size(), 3U);
  EXPECT_EQ(version(), 3 * one());
}

INSTANTIATE_TEST_SUITE_P(Attributes, Keyed, testing::ValuesIn(casesOf(isOfPlainValues)), caseName);

class NaNKeyed : public Keyed {};

TEST_P(NaNKeyed, AddsANewEntryForANaNKeyEachTimeAndLosesAllTogether) {
  const AnyValue nan = AnyValue::of(std::numeric_limits<double>::quiet_NaN());
  const Entry entry = entries().back();
  write(nan, entry.value);
  write(entry.key, entry.value);
  write(nan, entry.value);

  EXPECT_EQ(ops().count(object.at()), 3U);
  EXPECT_FALSE(ops().exists(object.at(), nan.at()));
  EXPECT_EQ(read(nan), AnyValue(*row().value));
  EXPECT_FALSE(ops().erase(object.at(), nan.at()));
  EXPECT_EQ(version(), 3 * one());
  EXPECT_EQ(heardKeys().size(), 3U);

  ops().eraseAll(object.at());
  EXPECT_EQ(ops().count(object.at()), 0U);
  EXPECT_EQ(version(), 6 * one());
  EXPECT_EQ(heardKeys().size(), 3U);
}

INSTANTIATE_TEST_SUITE_P(Attributes, NaNKeyed, testing::ValuesIn(casesOf([](const auto& row) {
                           return row.kind == Zel::AttrKind::ordered && row.key->name == "F64";
                         })),
                         caseName);

} // namespace

} // namespace Conformance
