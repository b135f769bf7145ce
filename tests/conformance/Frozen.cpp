// Every attribute of every entity names itself where it refuses a write.

#include "Subject.h"

#include "support/Failure.h"

#include <gtest/gtest.h>

namespace Conformance {

namespace {

class Frozen : public testing::TestWithParam<Case> {
protected:
  /// What the attribute says of itself.
  template <class Work>
  void expectRefusal(Work&& work) {
    EXPECT_EQ(Support::messageOf<Zel::ReadOnlyException>(work),
              "read-only attribute: " + std::string(GetParam().row->name) + " of " +
                  std::string(object.entity->fullName().view()));
  }

  const Object object = GetParam().subject->make();
};

TEST_P(Frozen, RefusesByItsOwnNameAndTakesByItsOwnId) {
  if (object.entity == nullptr) {
    EXPECT_NE(GetParam().subject->table->kind, Zel::TypeKind::entity);
    return;
  }
  const Zel::AttrRow& row = *GetParam().row;
  const auto permitted = [&](auto&& work) {
    const Zel::WritePermission permission(*object.entity, row.id);
    work();
  };
  const auto each = [&](auto&& work) {
    expectRefusal(work);
    permitted(work);
  };
  object.entity->zelFrozenIs(true);
  if (!row.isCollection()) {
    const AnyValue initial = GetParam().read(object);
    const auto& samples = GetParam().samples();
    const AnyValue& sample = samples[initial == samples[0] ? 1 : 0];
    each([&] { row.write(object.at(), sample.at()); });
    EXPECT_EQ(GetParam().read(object), sample);
    if (row.increment != nullptr) {
      each([&] { row.increment(object.at(), 1); });
    }
    return;
  }
  const Zel::CollectionOps& ops = *row.collection;
  const auto& keyOf = GetParam().typed().keyOfValue;
  const AnyValue key = keyOf ? keyOf(samplesOf(*row.value)[0]) : samplesOf(*row.key)[1];
  if (ops.create != nullptr) {
    std::vector<const void*> arguments;
    for (const Zel::ValueRecord* const record : ops.arguments) {
      arguments.push_back(samplesOf(*record).at(1).at());
    }
    each([&] { ops.create(object.at(), key.at(), arguments.data()); });
  } else {
    each([&] { ops.write(object.at(), key.at(), samplesOf(*row.value)[0].at()); });
    each([&] { ops.write(object.at(), key.at(), samplesOf(*row.value)[1].at()); });
  }
  EXPECT_EQ(ops.count(object.at()), 1U);
  expectRefusal([&] { ops.eraseAll(object.at()); });
  each([&] { ops.erase(object.at(), key.at()); });
  EXPECT_EQ(ops.count(object.at()), 0U);
}

INSTANTIATE_TEST_SUITE_P(Attributes, Frozen, testing::ValuesIn(casesOf([](const auto& row) {
                           return row.isCollection() || row.kind == Zel::AttrKind::singular ||
                                  row.kind == Zel::AttrKind::counter;
                         })),
                         caseName);

} // namespace

} // namespace Conformance
