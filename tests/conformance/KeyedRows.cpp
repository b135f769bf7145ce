#include "Keyed.h"

#include <gmock/gmock.h>

namespace Conformance {

namespace {

using testing::ElementsAre;

/// What the row of a collection of plain values names.
class KeyedRow : public Keyed {};

TEST_P(KeyedRow, NamesItsOwnCallbacksInTheRow) {
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

TEST_P(KeyedRow, HasAPlaceForAPendingKeyInEachNotifiee) {
  EXPECT_EQ(ops().pending == nullptr, silent());
  if (silent()) {
    return;
  }
  const Zel::PendingSlot slot = ops().pending(*first.notifiee);
  const Zel::PendingSlot other = ops().pending(*second.notifiee);
  EXPECT_NE(slot.lastKey, other.lastKey);
  EXPECT_NE(slot.count, other.count);
  EXPECT_EQ(ops().pending(*first.notifiee).lastKey, slot.lastKey);
  EXPECT_EQ(*slot.count, 0);
  EXPECT_TRUE(row().key->equal(slot.lastKey, AnyValue(*row().key).at()));

  write(entries()[1].key, entries()[1].value); // mutators leave it to reactors
  EXPECT_EQ(*slot.count, 0);
  EXPECT_TRUE(row().key->equal(slot.lastKey, AnyValue(*row().key).at()));
}

TEST_P(KeyedRow, HasNoOperationsOfAnInstantiatingOne) {
  EXPECT_EQ(ops().create, nullptr);
  EXPECT_EQ(ops().member, nullptr);
  EXPECT_EQ(ops().takeMember, nullptr);
  EXPECT_EQ(ops().iteration.member, nullptr);
  EXPECT_EQ(ops().memberTable, nullptr);
  EXPECT_TRUE(ops().arguments.empty());
  EXPECT_EQ(row().read, nullptr);
  EXPECT_EQ(row().write, nullptr);
  EXPECT_EQ(row().increment, nullptr);
  EXPECT_TRUE(row().flows());
}

INSTANTIATE_TEST_SUITE_P(Attributes, KeyedRow, testing::ValuesIn(casesOf(isOfPlainValues)),
                         caseName);

} // namespace

} // namespace Conformance
