#include "Subject.h"

#include <gmock/gmock.h>

#include <limits>

namespace Conformance {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Collections of plain values: keyed, ordered and with their own key, told and silent.
class Keyed : public testing::TestWithParam<Case> {
protected:
  /// One key with two values that differ, neither of which need be the type's default.
  struct Entry {
    AnyValue key;
    AnyValue value;
    AnyValue other;
  };

  Keyed() {
    if (subject().listen) {
      first = subject().listen(object);
      second = subject().listen(object);
    }
  }

  const Subject& subject() const { return *GetParam().subject; }
  const Zel::AttrRow& row() const { return *GetParam().row; }
  const Zel::CollectionOps& ops() const { return *row().collection; }
  unsigned version() const {
    return object.entity != nullptr ? object.entity->versionCounter() : 0;
  }
  unsigned reads() const { return object.entity != nullptr ? object.entity->readCounter() : 0; }
  unsigned one() const { return object.entity != nullptr ? 1 : 0; }
  bool silent() const { return (row().options & Zel::silent) != 0; }

  AnyValue read(const AnyValue& key) const {
    return AnyValue(*row().value, [&](void* to) { ops().read(object.at(), key.at(), to); });
  }
  void write(const AnyValue& key, const AnyValue& value) {
    ops().write(object.at(), key.at(), value.at());
  }

  /// The sample keys in ascending order, each with values.
  std::vector<Entry> entries() const {
    const std::vector<AnyValue>& values = samplesOf(*row().value);
    std::vector<Entry> all;
    if (const auto& keyOf = GetParam().typed().keyOfValue) {
      for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
        EXPECT_EQ(keyOf(values[i]), keyOf(values[i + 1]));
        all.push_back({keyOf(values[i]), values[i], values[i + 1]});
      }
      return all;
    }
    for (const AnyValue& key : samplesOf(*row().key)) {
      all.push_back({key, values[1], values[0]});
    }
    return all;
  }

  /// What is heard of keys by each notifiee, since the last look.
  std::vector<AnyValue> heardKeys() {
    std::vector<AnyValue> keys;
    if (first.log == nullptr) {
      return keys;
    }
    for (const Heard& heard : first.log->heard) {
      EXPECT_EQ(heard.id, row().id);
      EXPECT_TRUE(heard.key.has_value());
      keys.push_back(heard.key.value());
    }
    EXPECT_EQ(second.log->heard.size(), keys.size());
    first.log->heard.clear();
    second.log->heard.clear();
    return keys;
  }

  /// The same where it must be this one key, or nothing on a silent collection.
  void expectTold(const AnyValue& key) {
    EXPECT_EQ(heardKeys(), silent() ? std::vector<AnyValue>() : std::vector{key});
  }

  const Object object = subject().make();
  Listener first{nullptr, nullptr};
  Listener second{nullptr, nullptr};
};

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

TEST_P(Keyed, NamesItsOwnCallbacksInTheRow) {
  const AnyValue key = entries()[1].key;
  EXPECT_EQ(ops().tellKey == nullptr, silent());
  EXPECT_EQ(ops().tell == nullptr, silent());
  EXPECT_EQ(row().tell, nullptr);
  if (silent()) {
    return;
  }
  ops().tellKey(*first.notifiee, key.at());
  ops().tell(*first.notifiee);

  EXPECT_THAT(first.log->heard, ElementsAre(Heard{row().id, key}, Heard{row().id, std::nullopt}));
  EXPECT_TRUE(second.log->heard.empty());
}

TEST_P(Keyed, HasNoOperationsOfAnInstantiatingOne) {
  EXPECT_EQ(ops().create, nullptr);
  EXPECT_EQ(ops().member, nullptr);
  EXPECT_TRUE(ops().arguments.empty());
  EXPECT_EQ(row().read, nullptr);
  EXPECT_EQ(row().write, nullptr);
  EXPECT_EQ(row().increment, nullptr);
  EXPECT_TRUE(row().flows());
}

INSTANTIATE_TEST_SUITE_P(Attributes, Keyed, testing::ValuesIn(casesOf([](const auto& row) {
                           return row.isCollection() && row.kind != Zel::AttrKind::instantiating;
                         })),
                         caseName);

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
