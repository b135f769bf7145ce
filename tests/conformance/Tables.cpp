#include "Expectations.h"
#include "Subject.h"

#include <gmock/gmock.h>

namespace Conformance {

namespace {

class Table : public testing::TestWithParam<const Subject*> {
protected:
  const Subject& subject() const { return *GetParam(); }
  const Zel::TypeTable& table() const { return *subject().table; }
  /// Fails the test if the type is not expected at all.
  ExpectedType expected() const {
    for (const ExpectedType& type : expectations()) {
      if (type.name == table().name) {
        return type;
      }
    }
    ADD_FAILURE() << "no expectation of " << table().name;
    return {};
  }
};

TEST_P(Table, HasExactlyTheRowsThatAreExpected) {
  const auto rows = expected().rows;
  ASSERT_EQ(table().rows.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Zel::AttrRow& row = table().rows[i];
    SCOPED_TRACE(rows[i].name);
    EXPECT_EQ(row.id, rows[i].id);
    EXPECT_EQ(row.name, rows[i].name);
    EXPECT_EQ(row.kind, rows[i].kind);
    EXPECT_EQ(row.options, rows[i].options);
    EXPECT_EQ(row.key != nullptr ? row.key->name : "", rows[i].key);
    EXPECT_EQ(row.value != nullptr ? row.value->name : "", rows[i].value);
    EXPECT_EQ(row.isCollection(), row.collection != nullptr);
  }
}

TEST_P(Table, TellsTheTypeItself) {
  EXPECT_EQ(table().kind, expected().kind);
  EXPECT_EQ(table().named, expected().named);
  EXPECT_EQ(table().size, subject().size);
  EXPECT_EQ(table().base != nullptr ? table().base().name : "", subject().base);
}

TEST_P(Table, FindsEachRowByIdAndByName) {
  for (const Zel::AttrRow* const row : subject().rows()) {
    EXPECT_EQ(table().row(row->id), row);
    EXPECT_EQ(table().row(row->name), row);
  }
  EXPECT_EQ(table().row(Zel::AttributeId{1000}), nullptr);
  EXPECT_EQ(table().row("noSuchAttribute"), nullptr);
}

TEST_P(Table, FindsItsOwnRowsByIdAtOnceAndNoOthers) {
  for (const Zel::AttrRow& row : table().rows) {
    EXPECT_EQ(table().ownRow(row.id), &row);
  }
  for (const Zel::AttributeId id : {1, 129, 257, 385, 1000, -1, -258}) {
    EXPECT_EQ(table().ownRow(id), nullptr) << id;
  }
  const bool hasKey = table().rows.back().id == Zel::fwkKeyId;
  EXPECT_EQ(table().ownRow(Zel::fwkKeyId), hasKey ? &table().rows.back() : nullptr);
}

TEST_P(Table, HasATypedAccessorForEachRowAndNoOther) {
  std::vector<Zel::AttributeId> ids;
  for (const Zel::AttrRow* const row : subject().rows()) {
    ids.push_back(row->id);
  }
  std::vector<Zel::AttributeId> typed;
  for (const auto& [id, access] : subject().typed) {
    typed.push_back(id);
  }
  EXPECT_THAT(typed, testing::UnorderedElementsAreArray(ids));
}

TEST_P(Table, NamesAnEntitysAttributesById) {
  const Object object = subject().make();
  EXPECT_EQ(object.entity != nullptr, table().kind == Zel::TypeKind::entity);
  if (object.entity == nullptr) {
    return;
  }
  for (const Zel::AttrRow* const row : subject().rows()) {
    EXPECT_EQ(object.entity->attributeString(row->id).view(), row->name);
  }
  EXPECT_EQ(object.entity->attributeString(Zel::zelHasAttrLogInterfaceId),
            "zelHasAttrLogInterface");
  EXPECT_EQ(object.entity->attributeString(1000), "unknown");
}

std::vector<const Subject*> all() {
  std::vector<const Subject*> pointers;
  for (const Subject& subject : subjects()) {
    pointers.push_back(&subject);
  }
  return pointers;
}

std::string typeName(const testing::TestParamInfo<const Subject*>& type) {
  return type.param->name;
}

INSTANTIATE_TEST_SUITE_P(Types, Table, testing::ValuesIn(all()), typeName);

TEST(Tables, OfAllExpectedTypesAreUnderTest) {
  std::vector<std::string_view> expected;
  for (const ExpectedType& type : expectations()) {
    expected.push_back(type.name);
  }
  std::vector<std::string_view> tested;
  for (const Subject& subject : subjects()) {
    tested.push_back(subject.table->name);
  }
  EXPECT_EQ(tested, expected);
}

} // namespace

} // namespace Conformance
