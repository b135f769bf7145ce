#include "GenericSide.h"

namespace Conformance {

namespace {

using Support::messageOf;

constexpr auto noSuchOp = static_cast<Op::OpId>(99);

/// Attributes that have one value, through a generic object.
class GenericReadable : public GenericSide {
protected:
  AnyValue read() { return unpack(op(Op::opRead), *row().value); }
  bool writable() const { return row().write != nullptr; }
};

TEST_P(GenericReadable, IsReadWithItsInitialValueAndCountsOneRead) {
  const unsigned readsBefore = reads();
  const Generic result = op(Op::opRead);

  EXPECT_EQ(reads(), readsBefore + one());
  EXPECT_EQ(version(), 0U);
  EXPECT_EQ(unpack(result, *row().value), typed().initial);
  EXPECT_EQ(unpack(result, *row().value), typed().read(owner()));
  EXPECT_FALSE(result->isConst());
  EXPECT_TRUE(sealedOp(Op::opRead)->isConst());
}

TEST_P(GenericReadable, YieldsACopyThatChangesNothing) {
  const Generic result = op(Op::opRead);
  const Zel::ValueRecord& record = *row().value;
  const std::vector<AnyValue>& samples = samplesOf(record);
  const AnyValue& other = samples[samples[0] == typed().initial ? 1 : 0];
  record.assign(result->voidPtrIs(Zel::Ptr<const Zel::ZelType>(record.type())), other.at());

  EXPECT_EQ(unpack(result, record), other);
  EXPECT_EQ(read(), typed().initial);
}

TEST_P(GenericReadable, IsFoundByNameWhichIsCountedOnItsDescriptor) {
  const Zel::ZelAttr& byName = *type().attr(row().name);
  const unsigned looks = byName.readCounter();

  EXPECT_EQ(generic->attributeId(Zel::String8(row().name)), row().id);
  EXPECT_EQ(sealed->attributeId(Zel::String8(row().name)), row().id);

  EXPECT_EQ(byName.readCounter(), looks + 2);
  EXPECT_EQ(generic->attributeString(row().id).view(), row().name);
  EXPECT_EQ(reads(), 0U);
}

TEST_P(GenericReadable, TakesNoIndexWhateverTheOperation) {
  const Generic index = pack(AnyValue::of(1U));
  const std::string message = "attribute takes no index: " + attribute();
  for (const Op::OpId id :
       {Op::opRead, Op::opCount, Op::opVersion, Op::opExists, noSuchOp, Op::opDelete}) {
    SCOPED_TRACE(id);
    EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] { op(id, index); }), message);
  }
  const AnyValue value(*row().value);
  EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] { op(Op::opWrite, index, pack(value)); }),
            message);
  EXPECT_EQ(read(), typed().initial);
}

TEST_P(GenericReadable, HasTheOperationsOfItsKindAndNoOthers) {
  std::vector<Op::OpId> missing = {Op::opCount,  Op::opVersion, Op::opExists,
                                   Op::opEquals, noSuchOp,      Op::opDelete};
  if (!writable()) {
    missing.push_back(Op::opWrite);
  }
  for (const Op::OpId id : missing) {
    EXPECT_EQ(messageOf<Zel::OpNotSupportedException>(
                  [&] { op(id, nullptr, pack(AnyValue(*row().value))); }),
              "operation " + std::to_string(id) + " not supported on " + attribute());
  }
  EXPECT_EQ(read(), typed().initial);
  EXPECT_EQ(version(), 0U);
}

TEST_P(GenericReadable, CannotBeChangedThroughAConstObject) {
  const Generic value = pack(AnyValue(*row().value));
  expectRefusedOnConst(Op::opWrite, nullptr, value);
  expectRefusedOnConst(Op::opWrite, pack(AnyValue::of(1U)), value);
  expectRefusedOnConst(Op::opWrite);
  expectRefusedOnConst(Op::opDelete);
  EXPECT_EQ(unpack(sealedOp(Op::opRead), *row().value), typed().initial);
}

bool isReadable(const Zel::AttrRow& row) { return !row.isCollection(); }

INSTANTIATE_TEST_SUITE_P(Attributes, GenericReadable, testing::ValuesIn(casesOf(isReadable)),
                         caseName);

/// Those that can be written.
class GenericWritable : public GenericReadable {};

TEST_P(GenericWritable, IsReadAsItWasWrittenOnBothSidesAndToldOnce) {
  const bool told = row().flows();
  unsigned changes = 0;
  for (const AnyValue& sample : GetParam().samples()) {
    SCOPED_TRACE(testing::PrintToString(sample));
    const bool change = !(read() == sample);
    const unsigned versionBefore = version();
    const unsigned readsBefore = reads();

    EXPECT_EQ(op(Op::opWrite, nullptr, pack(sample)), nullptr);

    EXPECT_EQ(version(), versionBefore + (change ? one() : 0));
    EXPECT_EQ(reads(), readsBefore);
    expectHeard(change && told ? std::vector<Heard>{{row().id, std::nullopt}}
                               : std::vector<Heard>());
    EXPECT_EQ(typed().read(owner()), sample);
    EXPECT_EQ(read(), sample);
    changes += change ? 1 : 0;
  }
  EXPECT_GE(changes, 1U);
}

TEST_P(GenericWritable, IsSilentAndUncountedOnAnEqualWrite) {
  for (const AnyValue& sample : GetParam().samples()) {
    SCOPED_TRACE(testing::PrintToString(sample));
    const Generic value = pack(sample);
    op(Op::opWrite, nullptr, value);
    expectHeard(row().flows() && !(sample == typed().initial && version() == 0)
                    ? std::vector<Heard>{{row().id, std::nullopt}}
                    : std::vector<Heard>());
    const unsigned versionBefore = version();
    const unsigned readsBefore = reads();

    op(Op::opWrite, nullptr, value);

    EXPECT_EQ(version(), versionBefore);
    EXPECT_EQ(reads(), readsBefore);
    expectHeard({});
    EXPECT_EQ(unpack(value, *row().value), sample);
  }
}

TEST_P(GenericWritable, IsToldToBothSidesWhereverItIsWritten) {
  const std::vector<AnyValue>& samples = GetParam().samples();
  const AnyValue& sample = samples[samples[0] == typed().initial ? 1 : 0];
  row().write(owner(), sample.at());

  expectHeard(row().flows() ? std::vector<Heard>{{row().id, std::nullopt}} : std::vector<Heard>());
  EXPECT_EQ(read(), sample);
}

TEST_P(GenericWritable, WantsAValueOfItsOwnType) {
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite); }),
            "argument missing or of the wrong type: " + attribute());
  const Stranger stranger = strangerTo(*row().value);
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { op(Op::opWrite, nullptr, stranger.value); }),
            "argument missing or of the wrong type: " + stranger.name);

  EXPECT_EQ(read(), typed().initial);
  EXPECT_EQ(version(), 0U);
  expectHeard({});
}

INSTANTIATE_TEST_SUITE_P(Attributes, GenericWritable,
                         testing::ValuesIn(casesOf([](const Zel::AttrRow& row) {
                           return row.write != nullptr;
                         })),
                         caseName);

} // namespace

} // namespace Conformance
