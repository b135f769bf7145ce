#include "GenericSide.h"

namespace Conformance {

namespace {

using Support::messageOf;

/// Collections of plain values through a generic object.
class GenericKeyed : public GenericSide {
protected:
  struct Entry {
    AnyValue key;
    AnyValue value;
    AnyValue other;
  };

  bool ownKey() const { return row().kind == Zel::AttrKind::ownKey; }
  bool silent() const { return (row().options & Zel::silent) != 0; }

  /// Keys in ascending order, each with two values that differ.
  std::vector<Entry> entries() const {
    const std::vector<AnyValue>& values = samplesOf(*row().value);
    std::vector<Entry> all;
    if (ownKey()) {
      for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
        all.push_back({typed().keyOfValue(values[i]), values[i], values[i + 1]});
      }
      return all;
    }
    for (const AnyValue& key : samplesOf(*row().key)) {
      all.push_back({key, values[1], values[0]});
    }
    return all;
  }

  /// A collection of values that bring their key takes no other.
  Generic write(const AnyValue& key, const AnyValue& value) {
    return op(Op::opWrite, ownKey() ? nullptr : pack(key), pack(value));
  }
  AnyValue read(const AnyValue& key) { return unpack(op(Op::opRead, pack(key)), *row().value); }

  void expectTold(const AnyValue& key) {
    expectHeard(silent() ? std::vector<Heard>() : std::vector<Heard>{{row().id, key}});
  }
  void expectUnchanged(unsigned count) {
    EXPECT_EQ(numberOp(Op::opCount), count);
    expectHeard({});
  }
};

TEST_P(GenericKeyed, IsReadAsItWasWrittenOnBothSidesAndToldOnce) {
  unsigned count = 0;
  for (const Entry& entry : entries()) {
    SCOPED_TRACE(testing::PrintToString(entry.key));
    const unsigned readsBefore = reads();
    EXPECT_FALSE(boolOp(Op::opExists, entry.key));

    EXPECT_EQ(write(entry.key, entry.value), nullptr);

    EXPECT_EQ(reads(), readsBefore);
    EXPECT_EQ(version(), (2 * count + 1) * one());
    EXPECT_TRUE(boolOp(Op::opExists, entry.key));
    EXPECT_EQ(typed().lookUp(owner(), entry.key.at()), entry.value);
    EXPECT_EQ(reads(), readsBefore + one());
    EXPECT_EQ(read(entry.key), entry.value);
    EXPECT_EQ(reads(), readsBefore + 2 * one());
    expectTold(entry.key);

    write(entry.key, entry.other);
    EXPECT_EQ(version(), (2 * count + 2) * one());
    EXPECT_EQ(typed().lookUp(owner(), entry.key.at()), entry.other);
    EXPECT_EQ(read(entry.key), entry.other);
    expectTold(entry.key);
    ++count;
  }
  EXPECT_GE(count, 3U);
  EXPECT_EQ(numberOp(Op::opCount), count);
}

TEST_P(GenericKeyed, IsSilentAndUncountedOnAnEqualWrite) {
  const Entry entry = entries().back();
  write(entry.key, entry.value);
  expectTold(entry.key);

  write(entry.key, entry.value);

  EXPECT_EQ(version(), one());
  expectUnchanged(1);
}

TEST_P(GenericKeyed, CountsMembersAndTheirComingAndGoingWhateverTheArguments) {
  const std::vector<Entry> all = entries();
  const unsigned versionBefore = numberOp(Op::opVersion);
  const unsigned readsBefore = reads();
  EXPECT_EQ(versionBefore, row().collection->version(owner()));

  write(all[0].key, all[0].value);
  write(all[1].key, all[1].value);
  EXPECT_EQ(numberOp(Op::opCount), 2U);
  EXPECT_EQ(numberOp(Op::opVersion), versionBefore + 2);
  write(all[1].key, all[1].other);
  EXPECT_EQ(numberOp(Op::opVersion), versionBefore + 2);

  const Stranger stranger = strangerTo(*row().key);
  const auto counted = op(Op::opCount, stranger.value, stranger.value);
  EXPECT_EQ(unpack(counted, Zel::valueRecord<unsigned>), AnyValue::of(2U));
  const auto versioned = op(Op::opVersion, pack(all[0].key), stranger.value);
  EXPECT_EQ(unpack(versioned, Zel::valueRecord<unsigned>), AnyValue::of(versionBefore + 2));
  EXPECT_FALSE(counted->isConst());
  EXPECT_TRUE(sealedOp(Op::opCount)->isConst());
  EXPECT_TRUE(sealedOp(Op::opExists, pack(all[0].key))->isConst());
  EXPECT_EQ(reads(), readsBefore);
}

TEST_P(GenericKeyed, ReadsADefaultForAnAbsentKey) {
  const AnyValue key = entries()[1].key;
  const AnyValue nothing(*row().value);

  EXPECT_EQ(read(key), nothing);
  EXPECT_EQ(reads(), one());
  EXPECT_FALSE(boolOp(Op::opExists, key));
  EXPECT_EQ(unpack(op(Op::opDelete, pack(key)), *row().value), nothing);
  EXPECT_EQ(version(), 0U);
  expectUnchanged(0);
}

TEST_P(GenericKeyed, DeletesOneKeyAndYieldsWhatItHeld) {
  for (const Entry& entry : entries()) {
    write(entry.key, entry.value);
    expectTold(entry.key);
  }
  const Entry gone = entries()[1];
  const unsigned count = numberOp(Op::opCount);
  const unsigned versionBefore = version();
  const unsigned readsBefore = reads();

  const Generic held = op(Op::opDelete, pack(gone.key), strangerTo(*row().key).value);

  EXPECT_EQ(unpack(held, *row().value), gone.value);
  EXPECT_FALSE(held->isConst());
  EXPECT_EQ(version(), versionBefore + one());
  EXPECT_EQ(reads(), readsBefore);
  expectTold(gone.key);
  EXPECT_FALSE(boolOp(Op::opExists, gone.key));
  EXPECT_EQ(typed().lookUp(owner(), gone.key.at()), AnyValue(*row().value));
  EXPECT_EQ(read(entries()[2].key), entries()[2].value);
  EXPECT_EQ(numberOp(Op::opCount), count - 1);
}

TEST_P(GenericKeyed, WantsAKeyOfItsOwnType) {
  const Entry entry = entries()[1];
  const std::string keyName =
      ownKey() ? std::string(attr().keyAttrName().view()) : std::string("zel_index");
  const Stranger stranger = strangerTo(*row().key);
  std::vector<Op::OpId> operations = {Op::opRead, Op::opExists, Op::opDelete};
  if (!ownKey()) {
    operations.push_back(Op::opWrite);
  }
  for (const Op::OpId id : operations) {
    SCOPED_TRACE(id);
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(id, nullptr, pack(entry.value)); }),
              "argument missing or of the wrong type: " + keyName);
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(id, stranger.value, pack(entry.value)); }),
              "argument missing or of the wrong type: " + stranger.name);
  }
  expectUnchanged(0);
}

TEST_P(GenericKeyed, WantsAValueOfItsOwnType) {
  const GenericConst key = ownKey() ? nullptr : pack(entries()[1].key);
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite, key); }),
            "argument missing or of the wrong type: " + attribute());
  const Stranger stranger = strangerTo(*row().value);
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite, key, stranger.value); }),
            "argument missing or of the wrong type: " + stranger.name);
  if (ownKey()) {
    const Entry entry = entries()[1];
    EXPECT_EQ(messageOf<Zel::BadIndexAttrException>(
                  [&] { op(Op::opWrite, pack(entry.key), pack(entry.value)); }),
              "attribute takes no index: " + attribute());
  }
  expectUnchanged(0);
}

TEST_P(GenericKeyed, HasNoOtherOperations) {
  const Entry entry = entries()[1];
  for (const Op::OpId id : {Op::opEquals, static_cast<Op::OpId>(4), static_cast<Op::OpId>(-1),
                            static_cast<Op::OpId>(130)}) {
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                  [&] { op(id, pack(entry.key), pack(entry.value)); }),
              "operation " + std::to_string(id) + " not supported on " + attribute());
  }
  expectUnchanged(0);
}

TEST_P(GenericKeyed, CannotBeChangedThroughAConstObject) {
  const Entry entry = entries()[1];
  write(entry.key, entry.value);
  expectTold(entry.key);

  expectRefusedOnConst(Op::opWrite, pack(entry.key), pack(entry.other));
  expectRefusedOnConst(Op::opWrite);
  expectRefusedOnConst(Op::opDelete, pack(entry.key));
  expectRefusedOnConst(Op::opDelete);

  const Generic held = sealedOp(Op::opRead, pack(entry.key));
  EXPECT_TRUE(held->isConst());
  EXPECT_EQ(unpack(held, *row().value), entry.value);
  expectUnchanged(1);
}

INSTANTIATE_TEST_SUITE_P(Attributes, GenericKeyed, testing::ValuesIn(casesOf([](const auto& row) {
                           return row.isCollection() && row.kind != Zel::AttrKind::instantiating;
                         })),
                         caseName);

} // namespace

} // namespace Conformance
