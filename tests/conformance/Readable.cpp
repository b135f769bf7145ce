#include "Subject.h"

namespace Conformance {

namespace {

/// All attributes that have one value.
class Readable : public testing::TestWithParam<Case> {};

TEST_P(Readable, ReadsTheInitialValueFromANewObject) {
  const auto [subject, row] = GetParam();
  const Object object = subject->make();

  EXPECT_EQ(GetParam().read(object), *GetParam().typed().initial);
  EXPECT_EQ(GetParam().typed().read(object.at()), *GetParam().typed().initial);
}

TEST_P(Readable, CountsOneReadAndNoChange) {
  const auto [subject, row] = GetParam();
  const Object object = subject->make();
  if (object.entity == nullptr) {
    EXPECT_NE(subject->table->kind, Zel::TypeKind::entity);
    return;
  }
  const unsigned reads = object.entity->readCounter();

  GetParam().read(object);
  EXPECT_EQ(object.entity->readCounter(), reads + 1);
  GetParam().typed().read(object.at());
  EXPECT_EQ(object.entity->readCounter(), reads + 2);
  EXPECT_EQ(object.entity->versionCounter(), 0U);
}

TEST_P(Readable, OffersTheOperationsOfItsKindAndNoOthers) {
  const Zel::AttrRow& row = *GetParam().row;
  const bool flowing = row.kind == Zel::AttrKind::singular || row.kind == Zel::AttrKind::counter;
  const bool member =
      row.kind == Zel::AttrKind::valueMember || row.kind == Zel::AttrKind::computedMember;

  EXPECT_EQ(row.write != nullptr, flowing || member);
  EXPECT_EQ(row.increment != nullptr, row.kind == Zel::AttrKind::counter);
  EXPECT_EQ(row.tell != nullptr, flowing);
  EXPECT_EQ(row.flows(), flowing);
  EXPECT_EQ(row.collection, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Attributes, Readable,
                         testing::ValuesIn(casesOf([](const Zel::AttrRow& row) {
                           return !row.isCollection();
                         })),
                         caseName);

/// Members of values that can be set on the copy at hand.
class ValueMember : public testing::TestWithParam<Case> {};

TEST_P(ValueMember, IsReadAsItWasWritten) {
  const auto [subject, row] = GetParam();
  for (const AnyValue& sample : GetParam().samples()) {
    SCOPED_TRACE(testing::PrintToString(sample));
    const Object object = subject->make();
    row->write(object.at(), sample.at());

    EXPECT_EQ(GetParam().typed().read(object.at()), sample);
    EXPECT_EQ(GetParam().read(object), sample);
  }
}

TEST_P(ValueMember, LeavesTheOtherMembersAsTheyWere) {
  const auto [subject, row] = GetParam();
  if (row->kind == Zel::AttrKind::computedMember) {
    EXPECT_EQ(row->options, Zel::constructorArgument); // it is worked out from the others
    return;
  }
  const Object object = subject->make();
  row->write(object.at(), GetParam().samples().back().at());

  for (const Zel::AttrRow* const other : subject->rows()) {
    if (other != row && other->kind == Zel::AttrKind::valueMember) {
      const Case member{subject, other};
      EXPECT_EQ(member.read(object), *member.typed().initial) << other->name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Attributes, ValueMember,
                         testing::ValuesIn(casesOf([](const Zel::AttrRow& row) {
                           return row.kind == Zel::AttrKind::valueMember ||
                                  row.kind == Zel::AttrKind::computedMember;
                         })),
                         caseName);

} // namespace

} // namespace Conformance
